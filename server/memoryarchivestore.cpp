#include "memoryarchivestore.h"

#include <QtCore/QDateTime>

#include <algorithm>

ArchiveStore::~ArchiveStore() = default;

namespace {

ArchiveValue toArchiveValue(const StoredValue &v)
{
    return ArchiveValue(QDateTime::fromMSecsSinceEpoch(v.timeMs, Qt::UTC), v.value, v.state);
}

/** The first index whose time is at least @p timeMs. */
int lowerBound(const QList<StoredValue> &list, qint64 timeMs)
{
    return int(std::lower_bound(list.begin(), list.end(), timeMs,
                                [](const StoredValue &v, qint64 t) { return v.timeMs < t; })
               - list.begin());
}

/** The first index whose time is above @p timeMs. */
int upperBound(const QList<StoredValue> &list, qint64 timeMs)
{
    return int(std::upper_bound(list.begin(), list.end(), timeMs,
                                [](qint64 t, const StoredValue &v) { return t < v.timeMs; })
               - list.begin());
}

} // namespace

bool MemoryArchiveStore::open(QString *)
{
    return true;
}

bool MemoryArchiveStore::append(const QList<StoredValue> &values, const QList<StoredEvent> &events)
{
    for (const StoredValue &v : values) {
        QList<StoredValue> &list = m_values[v.id];
        list.insert(upperBound(list, v.timeMs), v);
        m_lastTime = std::max(m_lastTime, v.timeMs);
    }
    for (const StoredEvent &e : events) {
        m_events.insert(e.number, e);
        m_lastTime = std::max(m_lastTime, e.event.dateTime.toMSecsSinceEpoch());
    }
    return true;
}

qint64 MemoryArchiveStore::countValues(unsigned int id, qint64 fromMs, qint64 toMs)
{
    const QList<StoredValue> list = m_values.value(id);
    return std::max(0, upperBound(list, toMs) - lowerBound(list, fromMs));
}

QList<ArchiveValue> MemoryArchiveStore::values(unsigned int id, qint64 fromMs, qint64 toMs, qint64 offset, int limit)
{
    const QList<StoredValue> list = m_values.value(id);
    QList<ArchiveValue> result;
    const int end = upperBound(list, toMs);
    for (qint64 i = lowerBound(list, fromMs) + std::max<qint64>(offset, 0); i < end && result.size() < limit; ++i)
        result.append(toArchiveValue(list.at(int(i))));
    return result;
}

bool MemoryArchiveStore::valueBefore(unsigned int id, qint64 timeMs, ArchiveValue *value)
{
    const QList<StoredValue> list = m_values.value(id);
    const int index = lowerBound(list, timeMs) - 1;
    if (index < 0)
        return false;
    *value = toArchiveValue(list.at(index));
    return true;
}

QList<StoredEvent> MemoryArchiveStore::events(qint64 fromMs, qint64 toMs, qint64 offset, int limit)
{
    QList<StoredEvent> inRange;
    for (const StoredEvent &e : qAsConst(m_events)) {
        const qint64 t = e.event.dateTime.toMSecsSinceEpoch();
        if (t >= fromMs && t <= toMs)
            inRange.append(e);
    }
    std::stable_sort(inRange.begin(), inRange.end(), [](const StoredEvent &a, const StoredEvent &b) {
        return a.event.dateTime < b.event.dateTime;
    });
    return inRange.mid(int(std::min<qint64>(std::max<qint64>(offset, 0), inRange.size())), limit);
}

qint64 MemoryArchiveStore::countEvents(qint64 fromMs, qint64 toMs)
{
    qint64 count = 0;
    for (const StoredEvent &e : qAsConst(m_events)) {
        const qint64 t = e.event.dateTime.toMSecsSinceEpoch();
        count += t >= fromMs && t <= toMs;
    }
    return count;
}

QHash<unsigned short, int> MemoryArchiveStore::eventCounts(qint64 fromMs, qint64 toMs)
{
    QHash<unsigned short, int> counts;
    for (const StoredEvent &e : qAsConst(m_events)) {
        const qint64 t = e.event.dateTime.toMSecsSinceEpoch();
        if (t >= fromMs && t <= toMs)
            ++counts[e.event.typeId];
    }
    return counts;
}

QList<StoredEvent> MemoryArchiveStore::setReaded(const QList<qint64> &numbers, bool readed)
{
    QList<StoredEvent> changed;
    for (const qint64 number : numbers) {
        auto it = m_events.find(number);
        if (it == m_events.end() || it->readed == readed)
            continue;
        it->readed = readed;
        changed.append(*it);
    }
    return changed;
}

qint64 MemoryArchiveStore::lastEventNumber()
{
    return m_events.isEmpty() ? 0 : m_events.lastKey();
}

qint64 MemoryArchiveStore::lastTime()
{
    return m_lastTime;
}

bool MemoryArchiveStore::prune(qint64 beforeMs)
{
    for (auto it = m_values.begin(); it != m_values.end(); ++it)
        it->erase(it->begin(), it->begin() + lowerBound(*it, beforeMs));
    for (auto it = m_events.begin(); it != m_events.end();) {
        if (it->event.dateTime.toMSecsSinceEpoch() < beforeMs)
            it = m_events.erase(it);
        else
            ++it;
    }
    return true;
}

bool MemoryArchiveStore::flush()
{
    return true;
}

bool MemoryArchiveStore::saveGroupTree(const QByteArray &record)
{
    m_tree = record;
    return true;
}

QByteArray MemoryArchiveStore::groupTree()
{
    return m_tree;
}
