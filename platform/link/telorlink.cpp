#include "telorlink.h"

#include "linkframes_p.h"
#include "linkrequests_p.h"
#include "telorframereader.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTimer>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpSocket>

#include <limits>
#include <utility>

namespace {

constexpr qint64 ReadPiece = 64 * 1024;
constexpr qint64 SocketReadBuffer = 1024 * 1024;
constexpr qint32 LastSequence = std::numeric_limits<qint32>::max();

} // namespace

class TELORLink::Private
{
public:
    explicit Private(TELORLink *q)
        : q(q)
        , reconnectTimer(new QTimer(q))
        , pending(q)
    {
        reconnectTimer->setSingleShot(true);
        source = qint32(QCoreApplication::applicationPid() & LastSequence);
        do
            session = qint32(QRandomGenerator::global()->generate() & quint32(LastSequence));
        while (session == 0);
    }

    void startAttempt();
    // Ends the connection or attempt under way; pending requests end as timed out and
    // disconnected() is emitted if a connection was up. Returns false if the link was
    // destroyed by a receiver meanwhile.
    bool drop(bool graceful);
    void onConnected(QTcpSocket *socket);
    void onError(QTcpSocket *socket, QAbstractSocket::SocketError error);
    void reportError(QTcpSocket *socket);
    void onUnconnected(QTcpSocket *socket);
    void onReadyRead(QTcpSocket *socket);
    void scheduleReconnect();

    qint32 nextSequence();
    // Sends with fresh routing words; returns the sequence, 0 if nothing was sent.
    quint32 sendStamped(const QProtocolStruct &message);

    TELORLink *const q;
    QTimer *const reconnectTimer;
    QString host;
    quint16 port = 0;
    bool wanted = false;
    bool autoReconnect = true;
    int firstDelay = 100;
    int longestDelay = 5000;
    int nextDelay = 100;
    QTcpSocket *socket = nullptr;
    bool up = false;
    bool errorReported = false; // for the attempt or connection under way
    bool keepBackoff = false;   // the last connection ended on a bad frame from the server
    QString peer;
    TELORFrameReader reader;
    qint64 maxSendQueue = DefaultMaxSendQueue;
    qint32 source = 0;
    qint32 session = 0;
    qint32 lastSequence = 0;
    telorlink::PendingRequests pending;
    int signalDepth = 0; // inside a signal of a socket
};

void TELORLink::Private::startAttempt()
{
    telorlink::retireSocket(socket, q, false);
    socket = new QTcpSocket(q);
    errorReported = false;
    QTcpSocket *const s = socket;
    s->setReadBufferSize(SocketReadBuffer);
    QObject::connect(s, &QTcpSocket::connected, q, [this, s] { onConnected(s); });
    QObject::connect(s, &QTcpSocket::readyRead, q, [this, s] { onReadyRead(s); });
    QObject::connect(s, &QAbstractSocket::errorOccurred, q,
                     [this, s](QAbstractSocket::SocketError error) { onError(s, error); });
    QObject::connect(s, &QAbstractSocket::stateChanged, q, [this, s](QAbstractSocket::SocketState state) {
        if (state == QAbstractSocket::UnconnectedState)
            onUnconnected(s);
    });
    s->connectToHost(host, port);
}

bool TELORLink::Private::drop(bool graceful)
{
    reconnectTimer->stop();
    QTcpSocket *const s = std::exchange(socket, nullptr);
    telorlink::retireSocket(s, q, graceful);
    reader.clear();
    if (!std::exchange(up, false))
        return true;
    const QPointer<TELORLink> alive(q);
    if (!pending.failAll())
        return false;
    Q_EMIT q->disconnected();
    return !alive.isNull();
}

void TELORLink::Private::onConnected(QTcpSocket *s)
{
    const telorlink::SignalDepth depth(signalDepth, q);
    if (s != socket)
        return;
    up = true;
    errorReported = false;
    // A server that sends a bad frame on every connection is not hammered: after such a
    // close the delay keeps growing until a connection ends otherwise.
    if (!std::exchange(keepBackoff, false))
        nextDelay = firstDelay;
    reader.clear();
    peer = telorlink::peerName(s->peerAddress(), s->peerPort());
    Q_EMIT q->connected();
}

void TELORLink::Private::onError(QTcpSocket *s, QAbstractSocket::SocketError error)
{
    const telorlink::SignalDepth depth(signalDepth, q);
    if (s != socket || error == QAbstractSocket::RemoteHostClosedError)
        return;
    reportError(s);
}

void TELORLink::Private::reportError(QTcpSocket *s)
{
    // Qt announces a failed attempt sometimes before and sometimes after the state change
    // that ends it; each attempt and each connection is reported once.
    if (errorReported)
        return;
    errorReported = true;
    const QString server = QStringLiteral("%1:%2").arg(host).arg(port);
    const QString message = up ? QStringLiteral("connection to %1 broke: %2").arg(server, s->errorString())
                               : QStringLiteral("cannot connect to %1: %2").arg(server, s->errorString());
    Q_EMIT q->errorOccurred(message);
}

void TELORLink::Private::onUnconnected(QTcpSocket *s)
{
    const telorlink::SignalDepth depth(signalDepth, q);
    if (s != socket)
        return;
    const QPointer<TELORLink> alive(q);
    if (up && s->bytesAvailable() > 0) {
        // What arrived before the close is still delivered.
        onReadyRead(s);
        if (!alive || s != socket)
            return;
    }
    if (!up && s->error() != QAbstractSocket::UnknownSocketError) {
        reportError(s);
        if (!alive || s != socket)
            return;
    }
    if (!drop(false))
        return;
    // A receiver of disconnected() may have connected again or stopped the link.
    if (!socket && wanted && autoReconnect)
        scheduleReconnect();
}

void TELORLink::Private::scheduleReconnect()
{
    reconnectTimer->start(nextDelay);
    nextDelay = int(qMin<qint64>(qint64(nextDelay) * 2, longestDelay));
}

void TELORLink::Private::onReadyRead(QTcpSocket *s)
{
    const telorlink::SignalDepth depth(signalDepth, q);
    const QPointer<TELORLink> linkAlive(q);
    while (s == socket && up && s->bytesAvailable() > 0) {
        const bool ok = reader.append(s->read(ReadPiece));
        while (reader.hasFrame()) {
            const QByteArray bytes = reader.takeFrame();
            QProtocolStruct frame;
            frame.setPacket(bytes);
            const telorlink::Route route = telorlink::routeOf(bytes);
            bool alive = true;
            const bool matched = route.source == source && route.session == session
                && pending.complete(quint32(route.sequence), frame, &alive);
            if (!alive)
                return;
            if (!matched)
                Q_EMIT q->frameReceived(frame);
            // A receiver may have closed the link, connected anew or destroyed it.
            if (!linkAlive || s != socket)
                return;
        }
        if (!ok) {
            const QString message = QStringLiteral("closing %1: %2").arg(peer, reader.errorString());
            qWarning().noquote() << QStringLiteral("TELORLink: ") + message;
            keepBackoff = true;
            Q_EMIT q->errorOccurred(message);
            if (linkAlive && s == socket)
                s->abort(); // the state change ends the connection and plans the next attempt
            return;
        }
    }
}

qint32 TELORLink::Private::nextSequence()
{
    do
        lastSequence = lastSequence >= LastSequence ? 1 : lastSequence + 1;
    while (pending.contains(quint32(lastSequence)));
    return lastSequence;
}

quint32 TELORLink::Private::sendStamped(const QProtocolStruct &message)
{
    if (!up || !socket)
        return 0;
    QByteArray frame = telorlink::frameOf(message);
    if (frame.isEmpty())
        return 0;
    const qint64 waiting = socket->bytesToWrite();
    if (waiting > 0 && waiting + frame.size() > maxSendQueue) {
        Q_EMIT q->errorOccurred(
            QStringLiteral("send queue %1 bytes above the limit %2").arg(waiting + frame.size()).arg(maxSendQueue));
        return 0;
    }
    const qint32 sequence = nextSequence();
    telorlink::stampRoute(frame, {source, session, sequence});
    if (socket->write(frame) != frame.size())
        return 0;
    return quint32(sequence);
}

TELORLink::TELORLink(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{
    qRegisterMetaType<QProtocolStruct>();
    connect(d->reconnectTimer, &QTimer::timeout, this, [this] {
        if (d->wanted && !d->socket)
            d->startAttempt();
    });
}

TELORLink::~TELORLink()
{
    d->reconnectTimer->stop();
    d->pending.clear();
    if (d->signalDepth > 0) {
        // Destroyed by a receiver of one of our signals: the socket that emitted it is
        // still at work and is deleted by the event loop instead.
        d->socket = nullptr;
        telorlink::releaseChildren(this);
    }
    if (QTcpSocket *s = std::exchange(d->socket, nullptr)) {
        QObject::disconnect(s, nullptr, this, nullptr);
        s->abort();
        delete s;
    }
}

void TELORLink::connectToServer(const QString &host, quint16 port)
{
    d->wanted = false;
    if (!d->drop(false))
        return;
    d->host = host;
    d->port = port;
    d->wanted = true;
    d->nextDelay = d->firstDelay;
    d->startAttempt();
}

void TELORLink::disconnectFromServer()
{
    d->wanted = false;
    d->drop(true);
}

bool TELORLink::isConnected() const
{
    return d->up;
}

bool TELORLink::waitForConnected(int msecs)
{
    if (d->up)
        return true;
    if (!d->wanted)
        return false;
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(this, &TELORLink::connected, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    connect(this, &TELORLink::errorOccurred, &loop, [this, &loop] {
        if (!d->autoReconnect)
            loop.quit();
    });
    const QPointer<TELORLink> alive(this);
    timer.start(qMax(0, msecs));
    loop.exec();
    return alive && d->up;
}

void TELORLink::setAutoReconnect(bool on)
{
    d->autoReconnect = on;
    if (!on)
        d->reconnectTimer->stop();
}

bool TELORLink::autoReconnect() const
{
    return d->autoReconnect;
}

void TELORLink::setReconnectDelays(int firstMs, int longestMs)
{
    d->firstDelay = qMax(1, firstMs);
    d->longestDelay = qMax(d->firstDelay, longestMs);
    d->nextDelay = d->firstDelay;
}

int TELORLink::firstReconnectDelay() const
{
    return d->firstDelay;
}

int TELORLink::longestReconnectDelay() const
{
    return d->longestDelay;
}

void TELORLink::setMaxBodyLength(qint64 bytes)
{
    d->reader.setMaxBodyLength(bytes);
}

qint64 TELORLink::maxBodyLength() const
{
    return d->reader.maxBodyLength();
}

void TELORLink::setMaxSendQueue(qint64 bytes)
{
    d->maxSendQueue = qMax<qint64>(0, bytes);
}

qint64 TELORLink::maxSendQueue() const
{
    return d->maxSendQueue;
}

qint64 TELORLink::sendQueue() const
{
    return d->socket && d->up ? d->socket->bytesToWrite() : 0;
}

qint32 TELORLink::source() const
{
    return d->source;
}

qint32 TELORLink::session() const
{
    return d->session;
}

QString TELORLink::serverName() const
{
    return QStringLiteral("%1:%2").arg(d->host).arg(d->port);
}

bool TELORLink::send(const QProtocolStruct &message)
{
    return d->sendStamped(message) != 0;
}

quint32 TELORLink::request(const QProtocolStruct &query, QObject *context, AnswerCallback callback, int timeoutMs)
{
    const quint32 sequence = d->sendStamped(query);
    if (sequence == 0)
        return 0;
    d->pending.add(sequence, context, std::move(callback), timeoutMs);
    return sequence;
}

bool TELORLink::requestBlocking(const QProtocolStruct &query, QProtocolStruct *answer, int timeoutMs)
{
    QEventLoop loop;
    bool done = false;
    bool answered = false;
    const quint32 sequence = request(
        query, &loop,
        [&](const QProtocolStruct &reply, bool timedOut) {
            done = true;
            answered = !timedOut;
            if (answered && answer)
                *answer = reply;
            loop.quit();
        },
        timeoutMs);
    if (sequence == 0)
        return false;
    const QPointer<TELORLink> alive(this);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    while (!done && alive) {
        loop.exec();
        // Leaving for any other reason (an application that exits) gives the request up.
        if (!done) {
            if (alive)
                cancelRequest(sequence);
            break;
        }
    }
    return answered;
}

bool TELORLink::cancelRequest(quint32 sequence)
{
    return d->pending.cancel(sequence);
}

int TELORLink::pendingRequests() const
{
    return d->pending.size();
}
