// Event subscriptions, read states and group edits.

#include "plantserver.h"
#include "plantserver_p.h"

#include "archivestore.h"
#include "eventsdaydata.h"
#include "eventsreadedquery.h"
#include "eventstatisticssubscription.h"
#include "eventstatisticssubscriptioncancel.h"
#include "eventstructwithreaded.h"
#include "eventsubscription.h"
#include "eventsubscriptioncancel.h"
#include "grouptreeeditor.h"
#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"
#include "qcontainerpacket.h"

using namespace plantserver;

namespace {
constexpr qint64 DayMs = qint64(24) * 3600 * 1000;
}

void PlantServer::eventSubscription(quint64 connection, const QProtocolStruct &frame, bool statistics, bool cancel)
{
    // The four messages share one body; any of them reads the token.
    EventSubscription message(nullptr);
    message.setPacket(frame);
    message.read();
    QList<EventSubscriber> &list = statistics ? m_statisticsSubscribers : m_eventSubscribers;
    const QObject *token = message.parent();
    int index = -1;
    for (int i = 0; i < list.size() && index < 0; ++i) {
        if (list.at(i).connection == connection && list.at(i).token == token)
            index = i;
    }
    const QString what = statistics ? QStringLiteral("statistics") : QStringLiteral("event");
    if (cancel) {
        if (index >= 0)
            list.removeAt(index);
        logLine(QStringLiteral("connection %1: %2 subscription cancelled").arg(connection).arg(what));
        return;
    }
    if (index < 0) {
        int mine = 0;
        for (const EventSubscriber &s : qAsConst(list))
            mine += s.connection == connection;
        if (mine >= MaxSubscriptions) {
            logLine(QStringLiteral("connection %1: refused an %2 subscription beyond %3")
                        .arg(connection)
                        .arg(what)
                        .arg(MaxSubscriptions));
            return;
        }
        list.append(EventSubscriber());
        index = list.size() - 1;
    }
    EventSubscriber &subscriber = list[index];
    subscriber.connection = connection;
    subscriber.token = token;
    subscriber.queryPacket = frame.packet();
    if (statistics)
        Q_EMIT sendFrame(connection, this->statistics(subscriber));
}

QByteArray PlantServer::statistics(const EventSubscriber &subscriber)
{
    EventStatisticsSubscription query(nullptr);
    query.setPacket(subscriber.queryPacket);
    query.read();
    const qint64 now = nowMs();
    const qint64 dayStart = now - (((now % DayMs) + DayMs) % DayMs);
    EventsDayData day;
    day.replyTo(query);
    day.parent = qint64(reinterpret_cast<quintptr>(subscriber.token));
    day.day = QDateTime::fromMSecsSinceEpoch(dayStart, Qt::UTC).date();
    day.dayValues = m_store->eventCounts(dayStart, now);
    return day.write();
}

void PlantServer::sendLiveEvents(const QList<StoredEvent> &events)
{
    for (const EventSubscriber &subscriber : qAsConst(m_eventSubscribers)) {
        QProtocolStruct query;
        query.setPacket(subscriber.queryPacket);
        query.read();
        const QProtocolHeader route = query.getHeader();
        for (const StoredEvent &stored : events) {
            EventStruct event = stored.event;
            event.setRoute(route.source, route.session, route.sequence);
            Q_EMIT sendFrame(subscriber.connection, event.write());
        }
    }
    const QList<EventSubscriber> statisticsSubscribers = m_statisticsSubscribers;
    for (const EventSubscriber &subscriber : statisticsSubscribers)
        Q_EMIT sendFrame(subscriber.connection, statistics(subscriber));
}

void PlantServer::readedQuery(quint64 connection, const QProtocolStruct &frame)
{
    EventsReadedQuery query;
    query.setPacket(frame);
    query.read();
    QList<qint64> numbers;
    for (const int id : qAsConst(query.ids))
        numbers.append(id);
    const QList<StoredEvent> changed = m_store->setReaded(numbers, query.readed);
    logLine(QStringLiteral("connection %1: %2 of %3 events marked %4")
                .arg(connection)
                .arg(changed.size())
                .arg(numbers.size())
                .arg(query.readed ? QStringLiteral("read") : QStringLiteral("unread")));
    QSet<quint64> receivers{connection};
    for (const EventSubscriber &s : qAsConst(m_eventSubscribers))
        receivers.insert(s.connection);
    for (const StoredEvent &e : changed) {
        EventStructWithReaded message(e.event, e.readed);
        message.replyTo(query);
        const QByteArray packet = message.write();
        for (const quint64 receiver : qAsConst(receivers))
            Q_EMIT sendFrame(receiver, packet);
    }
}

void PlantServer::groupEdit(quint64 connection, const QProtocolStruct &frame, int messageId)
{
    GroupTreeEditor editor(*m_tree, m_knownIds);
    QString reason;
    bool applied = false;
    bool readable = true;
    QByteArray packet;
    QString what;
    if (messageId == 8) {
        ParamGroupInfo message(8);
        message.setPacket(frame);
        readable = message.read();
        applied = readable && editor.create(message, &reason);
        packet = message.packet();
        what = QStringLiteral("group created in \"%1\"").arg(message.path);
    } else if (messageId == 10) {
        ParamGroupInsertParametersInfo message;
        message.setPacket(frame);
        readable = message.read();
        applied = readable && editor.insertParameters(message, &reason);
        packet = message.packet();
        what = QStringLiteral("%1 parameters inserted in \"%2\"").arg(message.params.size()).arg(message.path);
    } else if (messageId == 14) {
        ParamGroupRemoveParametersInfo message;
        message.setPacket(frame);
        readable = message.read();
        applied = readable && editor.removeParameters(message, &reason);
        packet = message.packet();
        what = QStringLiteral("parameters removed from %1 groups").arg(message.removed.size());
    } else {
        ParamGroupCopyPasteRemoveInfo message(messageId);
        message.setPacket(frame);
        message.read(); // this message's reader reports nothing; the edit checks what it holds
        if (messageId == 11)
            applied = editor.copy(message, &reason);
        else if (messageId == 12)
            applied = editor.paste(message, &reason);
        else
            applied = editor.remove(message, &reason);
        packet = message.packet();
        what = QStringLiteral("group \"%1\" %2 \"%3\"")
                   .arg(messageId == 12 ? message.item.tagValue(QStringLiteral("name")) : message.what,
                        messageId == 11   ? QStringLiteral("copied from")
                            : messageId == 12 ? QStringLiteral("pasted into")
                                              : QStringLiteral("removed from"),
                        message.path);
    }
    if (!readable) {
        logLine(QStringLiteral("connection %1: ignored a group message %2 that does not read").arg(connection).arg(messageId));
        return;
    }
    if (!applied) {
        logLine(QStringLiteral("connection %1: group edit refused: %2").arg(connection).arg(reason));
        return;
    }
    QByteArray record;
    {
        QContainerPacket out(&record);
        m_tree->write(out);
    }
    if (!m_store->saveGroupTree(record))
        logLine(QStringLiteral("archive: the group tree could not be stored"));
    logLine(QStringLiteral("connection %1: %2").arg(connection).arg(what));
    passOn(connection, packet);
}

void PlantServer::passOn(quint64 sender, const QByteArray &packet)
{
    QList<quint64> receivers = m_connections.values();
    std::sort(receivers.begin(), receivers.end());
    for (const quint64 connection : qAsConst(receivers)) {
        if (connection != sender)
            Q_EMIT sendFrame(connection, packet);
    }
}
