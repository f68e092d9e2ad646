#include "linkrequests_p.h"

#include "qprotocolstruct.h"

#include <QtCore/QTimer>

#include <limits>
#include <utility>

namespace telorlink {

PendingRequests::PendingRequests(QObject *owner)
    : m_owner(owner)
    , m_timer(new QTimer(owner))
{
    m_timer->setSingleShot(true);
    // A coarse timer may fire a little early; deadlines are kept to the millisecond.
    m_timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(m_timer, &QTimer::timeout, owner, [this] { expire(); });
    m_clock.start();
}

void PendingRequests::add(quint32 sequence, QObject *context, Callback callback, int timeoutMs)
{
    Request &request = m_requests[sequence];
    request.context = context;
    request.hasContext = context != nullptr;
    request.callback = std::move(callback);
    if (timeoutMs >= 0) {
        request.deadline = m_deadlines.emplace(m_clock.elapsed() + timeoutMs, sequence);
        request.hasDeadline = true;
        if (request.deadline == m_deadlines.begin())
            arm();
    }
}

bool PendingRequests::contains(quint32 sequence) const
{
    return m_requests.count(sequence) != 0;
}

int PendingRequests::size() const
{
    return int(m_requests.size());
}

PendingRequests::Request PendingRequests::take(std::map<quint32, Request>::iterator it)
{
    Request taken = std::move(it->second);
    m_requests.erase(it);
    if (taken.hasDeadline) {
        m_deadlines.erase(taken.deadline);
        taken.hasDeadline = false;
    }
    return taken;
}

void PendingRequests::call(Request &request, const QProtocolStruct &answer, bool timedOut)
{
    if (request.hasContext && !request.context)
        return;
    if (request.callback)
        request.callback(answer, timedOut);
}

bool PendingRequests::complete(quint32 sequence, const QProtocolStruct &answer, bool *ownerAlive)
{
    *ownerAlive = true;
    const auto it = m_requests.find(sequence);
    if (it == m_requests.end())
        return false;
    Request request = take(it);
    const QPointer<QObject> alive(m_owner);
    call(request, answer, false);
    *ownerAlive = !alive.isNull();
    return true;
}

bool PendingRequests::failAll()
{
    const QPointer<QObject> alive(m_owner);
    while (!m_requests.empty()) {
        Request lost = take(m_requests.begin());
        call(lost, QProtocolStruct(), true);
        if (!alive)
            return false;
    }
    arm();
    return true;
}

bool PendingRequests::cancel(quint32 sequence)
{
    const auto it = m_requests.find(sequence);
    if (it == m_requests.end())
        return false;
    take(it);
    arm();
    return true;
}

void PendingRequests::clear()
{
    m_timer->stop();
    m_requests.clear();
    m_deadlines.clear();
}

void PendingRequests::arm()
{
    if (m_deadlines.empty()) {
        m_timer->stop();
        return;
    }
    const qint64 wait = qMax<qint64>(0, m_deadlines.begin()->first - m_clock.elapsed());
    m_timer->start(int(qMin<qint64>(wait, std::numeric_limits<int>::max())));
}

void PendingRequests::expire()
{
    const QPointer<QObject> alive(m_owner);
    const qint64 now = m_clock.elapsed();
    while (!m_deadlines.empty() && m_deadlines.begin()->first <= now) {
        Request expired = take(m_requests.find(m_deadlines.begin()->second));
        call(expired, QProtocolStruct(), true);
        if (!alive)
            return;
    }
    arm();
}

} // namespace telorlink
