#ifndef TELORLINKSERVER_H
#define TELORLINKSERVER_H

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QScopedPointer>
#include <QtNetwork/QHostAddress>

#include "qprotocolstructmetatype.h"
#include "telorlink5_export.h"

class QProtocolStruct;

/**
 * @brief The server end of the link: accepts TCP connections and exchanges frames on them.
 *
 * Every accepted connection gets a number that is never reused during the life of the
 * server object (they count up from 1). Each received frame is announced by
 * frameReceived() with the number of its connection, as an untyped QProtocolStruct that
 * holds the frame bytes through `setPacket()`; the receiver reads a typed message from it
 * with `setPacket(frame)` and `read()`, and answers with `replyTo()`, `write()` and send().
 *
 * Faults close one connection and leave the others alone. Each such close writes one
 * warning line that names the peer and the reason:
 * - a received body-length word that is negative or above maxBodyLength():
 *   "TELORLinkServer: closing 127.0.0.1:40312: body length 2147483647 above the limit 67108864";
 * - a peer that does not read what is sent to it, so that its send queue would pass
 *   maxSendQueue(): "TELORLinkServer: closing 127.0.0.1:40312: send queue 70000 bytes above the limit 65536";
 * - a connection beyond maxConnections(), which is closed at once and never announced:
 *   "TELORLinkServer: refusing 127.0.0.1:40312: 16 connections open, the limit".
 * A peer that closes its end, and a connection the application closes, log nothing.
 *
 * Frames that were whole before a bad length word, or before the peer closed its end, are
 * still delivered, in order, before the connection ends. A receiver of any signal may
 * send, close connections or destroy the server; the socket that is still emitting is
 * then deleted by the event loop. The server has no thread of its own: everything happens
 * in the event loop of the thread that owns the object.
 */
class TELORLINK5_EXPORT TELORLinkServer : public QObject
{
    Q_OBJECT
public:
    /** Default of setMaxSendQueue(): 64 MiB. */
    static constexpr qint64 DefaultMaxSendQueue = 64 * 1024 * 1024;
    /** Default of setMaxConnections(). */
    static constexpr int DefaultMaxConnections = 1024;

    /** A server that does not listen yet, owned by @p parent as any QObject. */
    explicit TELORLinkServer(QObject *parent = nullptr);
    /** Closes every connection at once, without clientDisconnected(). */
    ~TELORLinkServer() override;

    /**
     * Starts listening. Port 0 picks a free port; serverPort() tells which. Returns false,
     * with errorString() saying why, when the address cannot be bound or the server
     * listens already.
     */
    bool listen(const QHostAddress &address = QHostAddress::LocalHost, quint16 port = 0);
    /** True between a successful listen() and close(). */
    bool isListening() const;
    /** The port listened on; 0 when not listening. */
    quint16 serverPort() const;
    /** The address listened on; null when not listening. */
    QHostAddress serverAddress() const;
    /** Why the last listen() failed. */
    QString errorString() const;
    /**
     * Stops listening and closes every connection as disconnectClient() does, emitting
     * clientDisconnected() for each. listen() may be called again afterwards.
     */
    void close();

    /**
     * The largest body a received header may announce, for connections accepted from now
     * on and for those open; default 64 MiB (TELORFrameReader::DefaultMaxBodyLength).
     */
    void setMaxBodyLength(qint64 bytes);
    /** The largest body a received header may announce; see setMaxBodyLength(). */
    qint64 maxBodyLength() const;
    /**
     * The most bytes a connection may have waiting to be sent. A send that would pass it
     * closes the connection, unless nothing is waiting yet: a single frame larger than the
     * limit still goes to a peer that keeps up. Default 64 MiB.
     */
    void setMaxSendQueue(qint64 bytes);
    /** The most bytes a connection may have waiting; see setMaxSendQueue(). */
    qint64 maxSendQueue() const;
    /** The most connections open at once; more are refused. Default 1024, at least 1. */
    void setMaxConnections(int connections);
    /** The most connections open at once; see setMaxConnections(). */
    int maxConnections() const;

    /** The numbers of the open connections, in ascending order. */
    QList<quint64> connections() const;
    /** "127.0.0.1:40312" for an open connection; empty for an unknown number. */
    QString peerName(quint64 connection) const;
    /** The bytes waiting to be sent on a connection; 0 for an unknown number. */
    qint64 sendQueue(quint64 connection) const;

    /**
     * Sends a message on one connection. The bytes sent are `message.packet()`, the bytes
     * of its last `write()` or `setPacket()`, unchanged, routing words included. A message
     * without a packet is written here only when it is a plain QProtocolStruct (a header
     * without a body); a derived message must be written by its owner first, since a copy
     * made through the base would lose its body. Returns false, sending nothing, for an
     * unknown connection, for a message with nothing to send or a packet that is not one
     * whole frame, and when the send closes the connection for its full send queue.
     */
    bool send(quint64 connection, const QProtocolStruct &message);
    /** Sends frame bytes as they are, with the same checks and result as send(). */
    bool sendFrame(quint64 connection, const QByteArray &frame);
    /** Sends a message on every open connection, as send() does on each. */
    void sendToAll(const QProtocolStruct &message);
    /**
     * Closes a connection: what is waiting is still written, for a few seconds at most.
     * clientDisconnected() is emitted before this returns. Unknown numbers are ignored.
     */
    void disconnectClient(quint64 connection);

Q_SIGNALS:
    /** A connection was accepted. */
    void clientConnected(quint64 connection);
    /**
     * A connection ended, whoever closed it; emitted once for every connection announced
     * by clientConnected(), except when the server object is destroyed.
     */
    void clientDisconnected(quint64 connection);
    /** A whole frame arrived; @p frame holds its bytes as its packet and is not read yet. */
    void frameReceived(quint64 connection, const QProtocolStruct &frame);

private:
    class Private;
    QScopedPointer<Private> d;
};

#endif // TELORLINKSERVER_H
