#ifndef TELORLINK_H
#define TELORLINK_H

#include <QtCore/QObject>
#include <QtCore/QScopedPointer>
#include <QtCore/QString>

#include <functional>

#include "qprotocolstructmetatype.h"
#include "telorlink5_export.h"

class QProtocolStruct;

/**
 * @brief The client end of the link: one TCP connection to a server, with frames both ways.
 *
 * connectToServer() connects and, unless setAutoReconnect(false) was called, keeps
 * connecting: after a failed attempt or a lost connection it tries again after 100 ms,
 * then after twice as long each time up to 5 s (setReconnectDelays()); a connection that
 * is made resets the delay, unless the one before it was closed for a bad frame from the
 * server: then the delay keeps growing, so that such a server is not hammered. connected() is emitted for every connection made: that is the
 * moment for an application to send its subscriptions again, for instance the queries of
 * `ClientParamSubscription::allQueries()`; the link itself resends nothing.
 *
 * Every message sent gets routing words: the link's own source() and session(), and a
 * fresh sequence number, counting up from 1. A server answers with `replyTo()`, which
 * copies them, so request() can match the answer to its query.
 *
 * Received frames that answer no pending request are emitted by frameReceived() as
 * untyped QProtocolStruct objects holding the frame bytes through `setPacket()`; the
 * application reads a typed message from one with `setPacket(frame)` and `read()`.
 *
 * A received body-length word that is negative or above maxBodyLength() closes the
 * connection with one warning line that names the server and the reason, e.g.
 * "TELORLink: closing 127.0.0.1:5555: body length -1 is negative", and
 * errorOccurred() with the same text after "TELORLink: "; reconnection then applies.
 *
 * A receiver of any signal, and a request's callback, may send, connect, disconnect or
 * destroy the link. The link has no thread of its own: everything happens in the event
 * loop of the thread that owns the object, and only requestBlocking() and
 * waitForConnected() run a local one.
 */
class TELORLINK5_EXPORT TELORLink : public QObject
{
    Q_OBJECT
public:
    /**
     * Called once for each request(): with the answer and false when it came, or with an
     * empty message and true when no answer came in time or the connection was lost first.
     */
    using AnswerCallback = std::function<void(const QProtocolStruct &answer, bool timedOut)>;

    /** Default of setMaxSendQueue(): 64 MiB. */
    static constexpr qint64 DefaultMaxSendQueue = 64 * 1024 * 1024;

    /** A link with no connection yet, owned by @p parent as any QObject. */
    explicit TELORLink(QObject *parent = nullptr);
    /** Drops the connection at once; pending requests are forgotten without a call. */
    ~TELORLink() override;

    /**
     * Connects to @p host (a name or an address) and @p port, dropping any connection or
     * attempt under way first (with disconnected() if one was up). Returns at once; see
     * connected(), errorOccurred() and waitForConnected().
     */
    void connectToServer(const QString &host, quint16 port);
    /**
     * Closes the connection, still writing what waits to be sent for a few seconds at most,
     * and stops reconnecting. Pending requests end as timed out; disconnected() is emitted
     * before this returns if a connection was up.
     */
    void disconnectFromServer();
    /** True while a connection is up. */
    bool isConnected() const;
    /**
     * Runs a local event loop until a connection is up or @p msecs have passed. Returns
     * whether a connection is up. Returns false at once when connectToServer() was not
     * called, and early when an attempt fails while reconnection is off.
     */
    bool waitForConnected(int msecs);

    /** Whether to connect again after a failed attempt or a lost connection; default on. */
    void setAutoReconnect(bool on);
    /** Whether the link connects again by itself; see setAutoReconnect(). */
    bool autoReconnect() const;
    /** First and longest delay between attempts, in milliseconds; default 100 and 5000. */
    void setReconnectDelays(int firstMs, int longestMs);
    /** The delay before the first new attempt, in milliseconds. */
    int firstReconnectDelay() const;
    /** The longest delay between attempts, in milliseconds. */
    int longestReconnectDelay() const;

    /** The largest body a received header may announce; default 64 MiB. */
    void setMaxBodyLength(qint64 bytes);
    /** The largest body a received header may announce; see setMaxBodyLength(). */
    qint64 maxBodyLength() const;
    /**
     * The most bytes that may wait to be sent. A send that would pass it is refused (the
     * connection stays), unless nothing is waiting yet. Default 64 MiB.
     */
    void setMaxSendQueue(qint64 bytes);
    /** The most bytes that may wait to be sent; see setMaxSendQueue(). */
    qint64 maxSendQueue() const;
    /** The bytes waiting to be sent; 0 while no connection is up. */
    qint64 sendQueue() const;

    /** The link's source word: the process id, as a 31-bit number. */
    qint32 source() const;
    /** The link's session word: chosen at random for each link object, never 0. */
    qint32 session() const;
    /** The host and port given to connectToServer(), as "host:port". */
    QString serverName() const;

    /**
     * Sends a message with fresh routing words. The bytes sent are a copy of
     * `message.packet()`, the bytes of its last `write()`, with words 6 to 8 replaced by
     * source(), session() and the next sequence number; the message itself is not changed.
     * A plain QProtocolStruct that was never written is written as a copy (a header without
     * a body); a derived message must be written by its owner first, since a copy made
     * through the base would lose its body. Returns false, sending nothing, when no
     * connection is up, when the message has nothing to send or its packet is not one whole
     * frame, and when the send queue is full.
     */
    bool send(const QProtocolStruct &message);

    /**
     * Sends @p query as send() does and waits for its answer without blocking: the first
     * received frame whose words 6 to 8 equal those the query was sent with goes to
     * @p callback, once, and is NOT emitted by frameReceived(). Later frames with the same
     * words (the further pieces of an archive result, the updates of a subscription) are
     * no longer matched and go to frameReceived().
     *
     * If no answer came within @p timeoutMs (a negative value waits without limit), or the
     * connection is lost first, @p callback is called with an empty message and true.
     * The callback is not called when @p context is destroyed first; a null @p context
     * ties it to nothing. The callback may send, request, or destroy the link.
     *
     * Returns the sequence number of the query, never 0; 0 when it could not be sent, and
     * then the callback is never called.
     */
    quint32 request(const QProtocolStruct &query, QObject *context, AnswerCallback callback, int timeoutMs);

    /**
     * Sends @p query and runs a local event loop until its answer comes (as request()
     * matches it), @p timeoutMs pass, or the connection is lost. Returns true with the
     * answer in @p answer (if not null) when it came; false otherwise, leaving @p answer
     * alone. For command-line tools; applications use request().
     */
    bool requestBlocking(const QProtocolStruct &query, QProtocolStruct *answer, int timeoutMs);

    /** Forgets a pending request without calling its callback. False for an unknown one. */
    bool cancelRequest(quint32 sequence);
    /** The number of requests waiting for their answer. */
    int pendingRequests() const;

Q_SIGNALS:
    /** A connection is up: the first, or a new one after a reconnection. */
    void connected();
    /** A connection that was up has ended, for whatever reason. */
    void disconnected();
    /**
     * Something went wrong, in words: an attempt that failed ("cannot connect to
     * localhost:5555: Connection refused"), a connection that broke, a bad frame, a send
     * queue that is full. A server that closes the connection normally is not an error.
     */
    void errorOccurred(const QString &message);
    /** A whole frame arrived that answers no pending request; not read yet. */
    void frameReceived(const QProtocolStruct &frame);

private:
    class Private;
    QScopedPointer<Private> d;
};

#endif // TELORLINK_H
