// Archive and event queries: answers in pieces, the first at once and the rest with the
// following ticks, so that a cancel can still stop them.

#include "plantserver.h"
#include "plantserver_p.h"

#include "archiveparamdata.h"
#include "archivequery.h"
#include "archivequerycancel.h"
#include "archiveresult.h"
#include "archivestore.h"
#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsintervaldata.h"
#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "intervalquery.h"

#include <algorithm>

using namespace plantserver;

namespace {
constexpr qint64 DayMs = qint64(24) * 3600 * 1000;
constexpr int MaxDays = 62;
} // namespace

bool PlantServer::addPending(std::unique_ptr<Pending> pending)
{
    int mine = 0;
    for (const auto &entry : m_pending)
        mine += entry.second->connection == pending->connection;
    if (mine >= MaxPendingAnswers) {
        logLine(QStringLiteral("connection %1: refused a query beyond %2 unfinished answers")
                    .arg(pending->connection)
                    .arg(MaxPendingAnswers));
        return false;
    }
    const quint64 number = m_nextPending++;
    Pending &stored = *pending;
    m_pending.emplace(number, std::move(pending));
    const QByteArray first = nextPiece(stored);
    const quint64 connection = stored.connection;
    if (stored.nextPiece > stored.piecesCount)
        m_pending.erase(number);
    Q_EMIT sendFrame(connection, first);
    return true;
}

void PlantServer::sendPendingPieces(int budget)
{
    while (budget > 0 && !m_pending.empty()) {
        // Round robin: one piece of each unfinished answer in turn, oldest first.
        for (auto it = m_pending.begin(); it != m_pending.end() && budget > 0;) {
            Pending &pending = *it->second;
            const QByteArray piece = nextPiece(pending);
            const quint64 connection = pending.connection;
            if (pending.nextPiece > pending.piecesCount)
                it = m_pending.erase(it);
            else
                ++it;
            --budget;
            Q_EMIT sendFrame(connection, piece);
        }
    }
}

QByteArray PlantServer::nextPiece(Pending &pending)
{
    const int number = pending.nextPiece++;
    if (pending.kind == Pending::Events) {
        EventsQuery query(0, nullptr);
        query.setPacket(pending.queryPacket);
        query.read();
        EventsArchiveResult result;
        result.replyTo(query);
        result.parent = qint64(reinterpret_cast<quintptr>(pending.token));
        result.value1 = pending.queryTag;
        result.value2 = number;
        result.value3 = pending.piecesCount;
        const QList<StoredEvent> events = m_store->events(pending.fromMs, pending.toMs, pending.offset,
                                                          m_options.eventsPerPiece);
        pending.offset += events.size();
        for (const StoredEvent &e : events)
            result.events.append(e.event);
        return result.write();
    }

    ArchiveQuery query(nullptr);
    query.setPacket(pending.queryPacket);
    query.read();
    ArchiveResult result;
    result.replyTo(query);
    result.setParent(pending.token);
    result.setPiecesCount(pending.piecesCount);
    result.setPieceNumber(number);
    result.setIdQuery(pending.idQuery);
    const auto seriesOf = [&](unsigned int id) {
        ArchiveParamData *series = result.getParam(id);
        if (!series) {
            series = new ArchiveParamData;
            series->id = int(id);
            series->auxValue = m_simulation->valueType(id);
            result.setParam(int(id), series);
        }
        return series;
    };
    if (number == 1) {
        // The first piece names every parameter, with the value in force at the begin.
        for (const unsigned int id : qAsConst(pending.ids)) {
            ArchiveParamData *series = seriesOf(id);
            ArchiveValue before;
            if (m_store->valueBefore(id, pending.fromMs, &before))
                series->data.append(before);
        }
    }
    int room = m_options.valuesPerPiece;
    while (room > 0 && pending.paramIndex < pending.ids.size()) {
        const unsigned int id = pending.ids.at(pending.paramIndex);
        const qint64 left = pending.counts.at(pending.paramIndex) - pending.offset;
        if (left <= 0) {
            ++pending.paramIndex;
            pending.offset = 0;
            continue;
        }
        const int take = int(std::min<qint64>(left, room));
        const QList<ArchiveValue> values = m_store->values(id, pending.fromMs, pending.toMs, pending.offset, take);
        seriesOf(id)->data += values;
        room -= take;
        pending.offset += take;
        if (values.size() < take) {
            // Pruned meanwhile: this parameter has nothing more.
            ++pending.paramIndex;
            pending.offset = 0;
        }
    }
    return result.write();
}

void PlantServer::archiveQuery(quint64 connection, const QProtocolStruct &frame)
{
    ArchiveQuery query(nullptr);
    query.setPacket(frame);
    query.read();
    std::unique_ptr<Pending> pending(new Pending);
    pending->kind = Pending::Archive;
    pending->connection = connection;
    pending->token = query.parent();
    pending->queryPacket = frame.packet();
    pending->idQuery = m_nextQueryId++;
    if (!query.isValid()) {
        // Answered all the same, with one empty piece, so that the client is not left waiting.
        logLine(QStringLiteral("connection %1: archive query %2 is not valid; answered empty")
                    .arg(connection)
                    .arg(pending->idQuery));
        addPending(std::move(pending));
        return;
    }
    pending->fromMs = query.fromBegin ? Earliest : msOf(query.beginTime, Earliest);
    pending->toMs = query.toEnd ? nowMs() : msOf(query.endTime, nowMs());
    QList<unsigned int> ids;
    for (const unsigned int id : query.getIds()) {
        if (m_knownIds.contains(id))
            ids.append(id);
    }
    std::sort(ids.begin(), ids.end());
    qint64 total = 0;
    for (const unsigned int id : qAsConst(ids)) {
        const qint64 count = m_store->countValues(id, pending->fromMs, pending->toMs);
        pending->counts.append(count);
        total += count;
    }
    pending->ids = ids;
    pending->piecesCount = int(std::max<qint64>(1, (total + m_options.valuesPerPiece - 1) / m_options.valuesPerPiece));
    addPending(std::move(pending));
}

void PlantServer::archiveCancel(quint64 connection, const QProtocolStruct &frame)
{
    ArchiveQueryCancel cancel(static_cast<const QObject *>(nullptr));
    cancel.setPacket(frame);
    cancel.read();
    int dropped = 0;
    for (auto it = m_pending.begin(); it != m_pending.end();) {
        const Pending &p = *it->second;
        if (p.kind == Pending::Archive && p.connection == connection && p.token == cancel.sender()) {
            it = m_pending.erase(it);
            ++dropped;
        } else {
            ++it;
        }
    }
    logLine(QStringLiteral("connection %1: archive query cancelled, %2 unfinished answers dropped")
                .arg(connection)
                .arg(dropped));
}

void PlantServer::eventsQuery(quint64 connection, const QProtocolStruct &frame)
{
    EventsQuery query(0, nullptr);
    query.setPacket(frame);
    query.read();
    const qint64 from = query.fromBegin ? Earliest : msOf(query.beginPoint, Earliest);
    const qint64 to = query.toEnd ? nowMs() : msOf(query.endPoint, nowMs());
    if (query.isValid() && query.type() == 3) {
        // Day statistics: one message per day of the span, at most the last MaxDays days.
        const qint64 last = std::min(to, nowMs());
        qint64 dayStart = std::max(from, last - (MaxDays - 1) * DayMs);
        dayStart -= ((dayStart % DayMs) + DayMs) % DayMs;
        for (; dayStart <= last; dayStart += DayMs) {
            EventsDayData day;
            day.replyTo(query);
            day.parent = qint64(reinterpret_cast<quintptr>(query.parent));
            day.value1 = query.queryTag;
            day.day = QDateTime::fromMSecsSinceEpoch(dayStart, Qt::UTC).date();
            day.dayValues = m_store->eventCounts(std::max(dayStart, from), std::min(dayStart + DayMs - 1, to));
            Q_EMIT sendFrame(connection, day.write());
        }
        return;
    }
    std::unique_ptr<Pending> pending(new Pending);
    pending->kind = Pending::Events;
    pending->connection = connection;
    pending->token = query.parent;
    pending->queryPacket = frame.packet();
    pending->queryTag = query.queryTag;
    if (!query.isValid()) {
        logLine(QStringLiteral("connection %1: event query is not valid; answered empty").arg(connection));
        pending->fromMs = 1;
        pending->toMs = 0;
    } else {
        pending->fromMs = from;
        pending->toMs = to;
        const qint64 total = m_store->countEvents(from, to);
        pending->piecesCount =
            int(std::max<qint64>(1, (total + m_options.eventsPerPiece - 1) / m_options.eventsPerPiece));
    }
    addPending(std::move(pending));
}

void PlantServer::eventsCancel(quint64 connection, const QProtocolStruct &frame)
{
    EventsQueryCancel cancel(nullptr);
    cancel.setPacket(frame);
    cancel.read();
    int dropped = 0;
    for (auto it = m_pending.begin(); it != m_pending.end();) {
        const Pending &p = *it->second;
        if (p.kind == Pending::Events && p.connection == connection && p.token == cancel.parent) {
            it = m_pending.erase(it);
            ++dropped;
        } else {
            ++it;
        }
    }
    logLine(QStringLiteral("connection %1: event query cancelled, %2 unfinished answers dropped")
                .arg(connection)
                .arg(dropped));
}

void PlantServer::intervalQuery(quint64 connection, const QProtocolStruct &frame)
{
    IntervalQuery query(15);
    query.setPacket(frame);
    query.read();
    const qint64 from = msOf(query.begin, Earliest);
    const qint64 to = msOf(query.end, nowMs());
    EventsIntervalData answer;
    answer.replyTo(query);
    const qint64 count = m_store->countEvents(from, to);
    answer.value1 = int(std::min<qint64>(count, 0x7FFFFFFF));
    if (count > 0) {
        const QList<StoredEvent> first = m_store->events(from, to, 0, 1);
        const QList<StoredEvent> last = m_store->events(from, to, count - 1, 1);
        if (!first.isEmpty())
            answer.begin = first.first().event.dateTime;
        if (!last.isEmpty())
            answer.end = last.first().event.dateTime;
    }
    Q_EMIT sendFrame(connection, answer.write());
}
