#include "linkframes_p.h"

#include "qprotocolstruct.h"

#include <QtCore/QTimer>
#include <QtCore/QtEndian>
#include <QtNetwork/QAbstractSocket>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>

#include <typeinfo>

namespace telorlink {

namespace {

constexpr int BodyLengthOffset = 16;
constexpr int RouteOffset = 20;
// How long a socket that closes gracefully may take to write what it holds.
constexpr int GracefulCloseMs = 5000;

} // namespace

bool isFrame(const QByteArray &bytes)
{
    if (bytes.size() < QProtocolStruct::HeaderSize)
        return false;
    const qint32 length = qFromBigEndian<qint32>(bytes.constData() + BodyLengthOffset);
    return length >= 0 && qint64(length) == qint64(bytes.size()) - QProtocolStruct::HeaderSize;
}

Route routeOf(const QByteArray &frame)
{
    Route route;
    if (frame.size() < QProtocolStruct::HeaderSize)
        return route;
    const char *raw = frame.constData() + RouteOffset;
    route.source = qFromBigEndian<qint32>(raw);
    route.session = qFromBigEndian<qint32>(raw + 4);
    route.sequence = qFromBigEndian<qint32>(raw + 8);
    return route;
}

void stampRoute(QByteArray &frame, const Route &route)
{
    if (frame.size() < QProtocolStruct::HeaderSize)
        return;
    char words[12];
    qToBigEndian<qint32>(route.source, words);
    qToBigEndian<qint32>(route.session, words + 4);
    qToBigEndian<qint32>(route.sequence, words + 8);
    frame.replace(RouteOffset, int(sizeof words), words, int(sizeof words));
}

QByteArray frameOf(const QProtocolStruct &message)
{
    QByteArray bytes = message.packet();
    if (bytes.isEmpty() && typeid(message) == typeid(QProtocolStruct)) {
        QProtocolStruct copy(message);
        bytes = copy.write();
    }
    return isFrame(bytes) ? bytes : QByteArray();
}

QString peerName(const QHostAddress &address, quint16 port)
{
    bool isIPv4 = false;
    const quint32 ipv4 = address.toIPv4Address(&isIPv4);
    if (isIPv4)
        return QStringLiteral("%1:%2").arg(QHostAddress(ipv4).toString()).arg(port);
    if (address.protocol() == QAbstractSocket::IPv6Protocol)
        return QStringLiteral("[%1]:%2").arg(address.toString()).arg(port);
    return QStringLiteral("%1:%2").arg(address.toString()).arg(port);
}

void retireSocket(QAbstractSocket *socket, const QObject *owner, bool graceful)
{
    if (!socket)
        return;
    QObject::disconnect(socket, nullptr, owner, nullptr);
    if (!graceful || socket->state() != QAbstractSocket::ConnectedState || socket->bytesToWrite() == 0) {
        socket->abort();
        socket->deleteLater();
        return;
    }
    QObject::connect(socket, &QAbstractSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(GracefulCloseMs, socket, [socket] {
        socket->abort();
        socket->deleteLater();
    });
    socket->disconnectFromHost();
}

void releaseChildren(QObject *owner)
{
    const QObjectList children = owner->children();
    for (QObject *child : children) {
        if (auto *socket = qobject_cast<QAbstractSocket *>(child)) {
            QObject::disconnect(socket, nullptr, owner, nullptr);
            socket->abort();
        } else if (auto *server = qobject_cast<QTcpServer *>(child)) {
            QObject::disconnect(server, nullptr, owner, nullptr);
            server->close();
        } else {
            continue;
        }
        child->setParent(nullptr);
        child->deleteLater();
    }
}

} // namespace telorlink
