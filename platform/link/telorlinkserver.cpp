#include "telorlinkserver.h"

#include "linkframes_p.h"
#include "telorframereader.h"

#include <QtCore/QDebug>
#include <QtCore/QPointer>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <map>
#include <memory>

namespace {

// Bytes taken from a socket in one piece, and what Qt may hold for us in between: the
// frame reader takes everything, so neither bounds a frame, only the bytes in flight.
constexpr qint64 ReadPiece = 64 * 1024;
constexpr qint64 SocketReadBuffer = 1024 * 1024;

struct Connection
{
    QTcpSocket *socket = nullptr;
    TELORFrameReader reader;
    QString peer;
};

} // namespace

class TELORLinkServer::Private
{
public:
    explicit Private(TELORLinkServer *q)
        : q(q)
        , server(new QTcpServer(q))
    {
    }

    Connection *find(quint64 id) const
    {
        const auto it = connections.find(id);
        return it == connections.end() ? nullptr : it->second.get();
    }

    void accept();
    void readFrom(quint64 id);
    // Takes a connection out of the table and retires its socket; emits clientDisconnected().
    void remove(quint64 id, bool graceful);
    // Closes a connection for a fault, with its one log line.
    void closeFaulty(quint64 id, const QString &reason);

    TELORLinkServer *const q;
    QTcpServer *const server;
    std::map<quint64, std::unique_ptr<Connection>> connections;
    quint64 lastId = 0;
    qint64 maxBodyLength = TELORFrameReader::DefaultMaxBodyLength;
    qint64 maxSendQueue = DefaultMaxSendQueue;
    int maxConnections = DefaultMaxConnections;
    int signalDepth = 0; // inside a signal of a socket or of the listening server
};

void TELORLinkServer::Private::accept()
{
    const telorlink::SignalDepth depth(signalDepth, q);
    const QPointer<TELORLinkServer> alive(q);
    while (server->hasPendingConnections()) {
        QTcpSocket *socket = server->nextPendingConnection();
        if (!socket)
            return;
        const QString peer = telorlink::peerName(socket->peerAddress(), socket->peerPort());
        if (int(connections.size()) >= maxConnections) {
            qWarning().noquote() << QStringLiteral("TELORLinkServer: refusing %1: %2 connections open, the limit")
                                        .arg(peer)
                                        .arg(maxConnections);
            telorlink::retireSocket(socket, q, false);
            continue;
        }
        const quint64 id = ++lastId;
        auto connection = std::make_unique<Connection>();
        connection->socket = socket;
        connection->peer = peer;
        connection->reader.setMaxBodyLength(maxBodyLength);
        socket->setReadBufferSize(SocketReadBuffer);
        connections.emplace(id, std::move(connection));
        QObject::connect(socket, &QTcpSocket::readyRead, q, [this, id] { readFrom(id); });
        QObject::connect(socket, &QTcpSocket::disconnected, q, [this, id] {
            const telorlink::SignalDepth depth(signalDepth, q);
            const QPointer<TELORLinkServer> alive(q);
            readFrom(id); // what arrived before the close is still delivered
            if (alive)
                remove(id, false);
        });
        Q_EMIT q->clientConnected(id);
        if (!alive)
            return;
    }
}

void TELORLinkServer::Private::readFrom(quint64 id)
{
    const telorlink::SignalDepth depth(signalDepth, q);
    const QPointer<TELORLinkServer> alive(q);
    Connection *connection = find(id);
    while (connection && connection->socket->bytesAvailable() > 0) {
        const bool ok = connection->reader.append(connection->socket->read(ReadPiece));
        while (connection->reader.hasFrame()) {
            QProtocolStruct frame;
            frame.setPacket(connection->reader.takeFrame());
            Q_EMIT q->frameReceived(id, frame);
            // A receiver may close this connection or destroy the server.
            if (!alive)
                return;
            connection = find(id);
            if (!connection)
                return;
        }
        if (!ok) {
            closeFaulty(id, connection->reader.errorString());
            return;
        }
    }
}

void TELORLinkServer::Private::remove(quint64 id, bool graceful)
{
    const auto it = connections.find(id);
    if (it == connections.end())
        return;
    std::unique_ptr<Connection> connection = std::move(it->second);
    connections.erase(it);
    telorlink::retireSocket(connection->socket, q, graceful);
    Q_EMIT q->clientDisconnected(id);
}

void TELORLinkServer::Private::closeFaulty(quint64 id, const QString &reason)
{
    const Connection *connection = find(id);
    if (!connection)
        return;
    qWarning().noquote() << QStringLiteral("TELORLinkServer: closing %1: %2").arg(connection->peer, reason);
    remove(id, false);
}

TELORLinkServer::TELORLinkServer(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{
    qRegisterMetaType<QProtocolStruct>();
    connect(d->server, &QTcpServer::newConnection, this, [this] { d->accept(); });
}

TELORLinkServer::~TELORLinkServer()
{
    if (d->signalDepth > 0) {
        // Destroyed by a receiver of one of our signals: the socket or server that emitted
        // it is still at work and is deleted by the event loop instead.
        d->connections.clear();
        telorlink::releaseChildren(this);
        return;
    }
    QObject::disconnect(d->server, nullptr, this, nullptr);
    for (auto &entry : d->connections) {
        QTcpSocket *socket = entry.second->socket;
        QObject::disconnect(socket, nullptr, this, nullptr);
        socket->abort();
        delete socket;
    }
    d->connections.clear();
}

bool TELORLinkServer::listen(const QHostAddress &address, quint16 port)
{
    return d->server->listen(address, port);
}

bool TELORLinkServer::isListening() const
{
    return d->server->isListening();
}

quint16 TELORLinkServer::serverPort() const
{
    return d->server->serverPort();
}

QHostAddress TELORLinkServer::serverAddress() const
{
    return d->server->serverAddress();
}

QString TELORLinkServer::errorString() const
{
    return d->server->errorString();
}

void TELORLinkServer::close()
{
    d->server->close();
    // Each removal emits a signal whose receiver may change the table: take one at a time.
    const QPointer<TELORLinkServer> alive(this);
    while (alive && !d->connections.empty())
        d->remove(d->connections.begin()->first, true);
}

void TELORLinkServer::setMaxBodyLength(qint64 bytes)
{
    TELORFrameReader probe;
    probe.setMaxBodyLength(bytes);
    d->maxBodyLength = probe.maxBodyLength();
    for (auto &entry : d->connections)
        entry.second->reader.setMaxBodyLength(d->maxBodyLength);
}

qint64 TELORLinkServer::maxBodyLength() const
{
    return d->maxBodyLength;
}

void TELORLinkServer::setMaxSendQueue(qint64 bytes)
{
    d->maxSendQueue = qMax<qint64>(0, bytes);
}

qint64 TELORLinkServer::maxSendQueue() const
{
    return d->maxSendQueue;
}

void TELORLinkServer::setMaxConnections(int connections)
{
    d->maxConnections = qMax(1, connections);
}

int TELORLinkServer::maxConnections() const
{
    return d->maxConnections;
}

QList<quint64> TELORLinkServer::connections() const
{
    QList<quint64> ids;
    ids.reserve(int(d->connections.size()));
    for (const auto &entry : d->connections)
        ids.append(entry.first);
    return ids;
}

QString TELORLinkServer::peerName(quint64 connection) const
{
    const Connection *c = d->find(connection);
    return c ? c->peer : QString();
}

qint64 TELORLinkServer::sendQueue(quint64 connection) const
{
    const Connection *c = d->find(connection);
    return c ? c->socket->bytesToWrite() : 0;
}

bool TELORLinkServer::send(quint64 connection, const QProtocolStruct &message)
{
    if (!d->find(connection))
        return false;
    const QByteArray frame = telorlink::frameOf(message);
    return !frame.isEmpty() && sendFrame(connection, frame);
}

bool TELORLinkServer::sendFrame(quint64 connection, const QByteArray &frame)
{
    Connection *c = d->find(connection);
    if (!c || !telorlink::isFrame(frame))
        return false;
    const qint64 waiting = c->socket->bytesToWrite();
    if (waiting > 0 && waiting + frame.size() > d->maxSendQueue) {
        d->closeFaulty(connection, QStringLiteral("send queue %1 bytes above the limit %2")
                                       .arg(waiting + frame.size())
                                       .arg(d->maxSendQueue));
        return false;
    }
    return c->socket->write(frame) == frame.size();
}

void TELORLinkServer::sendToAll(const QProtocolStruct &message)
{
    const QByteArray frame = telorlink::frameOf(message);
    if (frame.isEmpty())
        return;
    // A send may close a connection (and so emit a signal): walk a copy of the numbers.
    const QPointer<TELORLinkServer> alive(this);
    const QList<quint64> ids = connections();
    for (quint64 id : ids) {
        if (!alive)
            return;
        sendFrame(id, frame);
    }
}

void TELORLinkServer::disconnectClient(quint64 connection)
{
    d->remove(connection, true);
}
