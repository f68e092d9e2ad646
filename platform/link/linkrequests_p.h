#ifndef LINKREQUESTS_P_H
#define LINKREQUESTS_P_H

// Private to the link library: the requests of a client link that wait for their answer.

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QtGlobal>

#include <functional>
#include <map>

class QObject;
class QProtocolStruct;
class QTimer;

namespace telorlink {

/**
 * The pending requests of one link, by sequence number, each with its callback, the
 * context that must still live for the callback to be called, and its deadline.
 *
 * A callback may do anything, destroying the link that owns this object included: every
 * operation that calls callbacks returns false when the owner is gone, and then touches
 * nothing more.
 */
class PendingRequests
{
public:
    using Callback = std::function<void(const QProtocolStruct &answer, bool timedOut)>;

    /** Its timer is a child of @p owner, which also owns this object. */
    explicit PendingRequests(QObject *owner);

    /** Adds a request; a negative @p timeoutMs waits without limit. */
    void add(quint32 sequence, QObject *context, Callback callback, int timeoutMs);
    bool contains(quint32 sequence) const;
    int size() const;

    /**
     * Completes the request @p sequence with @p answer, if it is pending. Returns whether
     * it was; @p ownerAlive tells afterwards whether the owner still exists.
     */
    bool complete(quint32 sequence, const QProtocolStruct &answer, bool *ownerAlive);
    /** Ends every request as timed out. Returns false if the owner was destroyed meanwhile. */
    bool failAll();
    /** Forgets a request without calling it. Returns whether it was pending. */
    bool cancel(quint32 sequence);
    /** Forgets every request without calling any. */
    void clear();

private:
    struct Request
    {
        QPointer<QObject> context;
        bool hasContext = false;
        Callback callback;
        std::multimap<qint64, quint32>::iterator deadline;
        bool hasDeadline = false;
    };

    Request take(std::map<quint32, Request>::iterator it);
    void arm();
    void expire();
    static void call(Request &request, const QProtocolStruct &answer, bool timedOut);

    QObject *const m_owner;
    QTimer *const m_timer;
    QElapsedTimer m_clock;
    std::map<quint32, Request> m_requests;
    std::multimap<qint64, quint32> m_deadlines;
};

} // namespace telorlink

#endif // LINKREQUESTS_P_H
