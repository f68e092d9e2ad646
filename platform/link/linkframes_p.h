#ifndef LINKFRAMES_P_H
#define LINKFRAMES_P_H

// Private helpers of the link library, shared by the client and the server: frame checks,
// the routing words inside frame bytes, peer names and the retirement of a socket.

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

class QAbstractSocket;
class QHostAddress;
class QObject;
class QProtocolStruct;

namespace telorlink {

/** The routing words of a frame: source, session, sequence. */
struct Route
{
    qint32 source = 0;
    qint32 session = 0;
    qint32 sequence = 0;
};

/** True when @p bytes are one whole frame: a header whose body-length word counts the rest. */
bool isFrame(const QByteArray &bytes);

/** The routing words of a frame; zeros for bytes shorter than a header. */
Route routeOf(const QByteArray &frame);

/** Overwrites the routing words of a frame in place; bytes shorter than a header stay as they are. */
void stampRoute(QByteArray &frame, const Route &route);

/**
 * The bytes that send a message: its packet when it has one, and else, for a plain
 * QProtocolStruct only, the bytes a copy of it writes. Empty when there is nothing to send:
 * a derived message that was never written (a copy through the base would lose its body),
 * or a packet that is not one whole frame.
 */
QByteArray frameOf(const QProtocolStruct &message);

/** "127.0.0.1:40312", "[::1]:40312"; an IPv4 address seen through IPv6 reads as IPv4. */
QString peerName(const QHostAddress &address, quint16 port);

/**
 * Takes a socket out of service: disconnects it from @p owner, then either drops it at once
 * (@p graceful false) or lets it write what it still holds and close, giving up after a few
 * seconds. The socket deletes itself later in both cases; its parent stays, so it is
 * deleted with the parent at the latest.
 */
void retireSocket(QAbstractSocket *socket, const QObject *owner, bool graceful);

} // namespace telorlink

#endif // LINKFRAMES_P_H
