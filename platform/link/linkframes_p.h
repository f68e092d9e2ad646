#ifndef LINKFRAMES_P_H
#define LINKFRAMES_P_H

// Private helpers of the link library, shared by the client and the server: frame checks,
// the routing words inside frame bytes, peer names and the retirement of a socket.

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

class QAbstractSocket;
class QHostAddress;
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

/**
 * Counts how deep the owner is inside a signal of one of its sockets or its listening
 * server, so that a destructor run from a receiver of such a signal knows it must not
 * delete the object that is still emitting.
 */
class SignalDepth
{
public:
    SignalDepth(int &depth, QObject *owner)
        : m_depth(depth)
        , m_owner(owner)
    {
        ++m_depth;
    }
    ~SignalDepth()
    {
        if (m_owner) // the count went with an owner that a receiver destroyed
            --m_depth;
    }
    SignalDepth(const SignalDepth &) = delete;
    SignalDepth &operator=(const SignalDepth &) = delete;

private:
    int &m_depth;
    QPointer<QObject> m_owner;
};

/**
 * For a destructor that runs inside a signal of a socket or server of @p owner: takes
 * every socket and listening server out of @p owner, closed and disconnected from it, and
 * leaves their deletion to the event loop that is running, so that the one still emitting
 * outlives its signal.
 */
void releaseChildren(QObject *owner);

} // namespace telorlink

#endif // LINKFRAMES_P_H
