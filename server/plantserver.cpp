#include "plantserver.h"
#include "plantserver_p.h"

#include "abstractparameterbase.h"
#include "archivestore.h"
#include "paraminfolist.h"
#include "paraminfoquery.h"
#include "paramsubscriptionquery.h"
#include "paramsubscriptionresult.h"
#include "paramvaluesquery.h"
#include "paramvaluesresult.h"
#include "qcontainerpacket.h"

using namespace plantserver;

PlantServer::PlantServer(const Plant &plant, ArchiveStore *store, const Options &options, QObject *parent)
    : QObject(parent)
    , m_plant(plant)
    , m_store(store)
    , m_options(options)
    , m_tree(new ParamGroupItem)
{
    if (m_options.tickMs <= 0)
        m_options.tickMs = 250;
    m_options.valuesPerPiece = std::max(1, m_options.valuesPerPiece);
    m_options.eventsPerPiece = std::max(1, m_options.eventsPerPiece);
    m_options.piecesPerTick = std::max(1, m_options.piecesPerTick);
    if (!m_options.start.isValid())
        m_options.start = QDateTime::currentDateTimeUtc();
    m_startMs = m_options.start.toMSecsSinceEpoch();
    m_simulation.reset(new PlantSimulation(m_plant, m_options.seed));
    const QList<unsigned int> ids = m_simulation->ids();
    m_knownIds = QSet<unsigned int>(ids.begin(), ids.end());
    *m_tree = m_plant.rootItem;
}

PlantServer::~PlantServer()
{
    // Handles go before the parameters they watch.
    m_subscribers.clear();
    m_simulation.reset();
}

qint64 PlantServer::nowMs() const
{
    return m_startMs + m_tick * m_options.tickMs;
}

QDateTime PlantServer::now() const
{
    return QDateTime::fromMSecsSinceEpoch(nowMs(), Qt::UTC);
}

void PlantServer::logLine(const QString &line)
{
    Q_EMIT log(line);
}

bool PlantServer::start(QString *error)
{
    if (!m_store->open(error))
        return false;

    const QByteArray stored = m_store->groupTree();
    if (!stored.isEmpty()) {
        std::unique_ptr<ParamGroupItem> tree(new ParamGroupItem);
        QContainerPacket packet(stored);
        if (tree->read(packet)) {
            m_tree = std::move(tree);
            logLine(QStringLiteral("group tree: the stored tree is in use"));
        } else {
            logLine(QStringLiteral("group tree: the stored tree does not read; the plant file's is in use"));
        }
    }

    // Backfill: the drivers run from start - history on, and what lies after the newest
    // stored time is stored, so a restart fills only the gap.
    const qint64 lastStored = m_store->lastTime();
    m_storedUntilMs = lastStored;
    m_simulation->setNextEventNumber(m_store->lastEventNumber() + 1);
    const qint64 steps = m_options.historyMs / m_options.tickMs;
    PlantStep batch;
    qint64 storedValues = 0;
    qint64 storedEvents = 0;
    for (qint64 k = -steps; k <= 0; ++k) {
        const qint64 t = m_startMs + k * m_options.tickMs;
        const PlantStep step = m_simulation->step(t);
        m_simulation->dropFlags();
        if (t <= lastStored)
            continue;
        batch.values += step.values;
        batch.events += step.events;
        if (batch.values.size() >= 20000 || k == 0) {
            storedValues += batch.values.size();
            storedEvents += batch.events.size();
            if (!m_store->append(batch.values, batch.events)) {
                if (error)
                    *error = QStringLiteral("cannot write the archive");
                return false;
            }
            batch = PlantStep();
        }
    }
    const qint64 pruneBefore = nowMs() - m_options.retainMs;
    m_store->prune(pruneBefore);
    m_store->flush();
    logLine(QStringLiteral("archive: %1 values and %2 events backfilled").arg(storedValues).arg(storedEvents));
    return true;
}

void PlantServer::connectionOpened(quint64 connection)
{
    m_connections.insert(connection);
    logLine(QStringLiteral("connection %1: opened").arg(connection));
}

void PlantServer::connectionClosed(quint64 connection)
{
    int dropped = 0;
    for (auto it = m_subscribers.begin(); it != m_subscribers.end();) {
        if (it->first.first == connection) {
            it = m_subscribers.erase(it);
            ++dropped;
        } else {
            ++it;
        }
    }
    for (auto it = m_pending.begin(); it != m_pending.end();) {
        if (it->second->connection == connection)
            it = m_pending.erase(it);
        else
            ++it;
    }
    const auto sameConnection = [connection](const EventSubscriber &s) { return s.connection == connection; };
    m_eventSubscribers.erase(std::remove_if(m_eventSubscribers.begin(), m_eventSubscribers.end(), sameConnection),
                             m_eventSubscribers.end());
    m_statisticsSubscribers.erase(
        std::remove_if(m_statisticsSubscribers.begin(), m_statisticsSubscribers.end(), sameConnection),
        m_statisticsSubscribers.end());
    if (m_connections.remove(connection))
        logLine(QStringLiteral("connection %1: closed, %2 subscriptions dropped").arg(connection).arg(dropped));
}

void PlantServer::receive(quint64 connection, const QProtocolStruct &frame)
{
    if (!m_connections.contains(connection))
        connectionOpened(connection);
    qint32 service = 0;
    qint32 message = 0;
    qint32 type = 0;
    const QByteArray packet = frame.packet();
    if (!identityOf(packet, &service, &message, &type)) {
        logLine(QStringLiteral("connection %1: ignored a frame of %2 bytes, shorter than a header")
                    .arg(connection)
                    .arg(packet.size()));
        return;
    }
    if (type == 1 && service == 2) {
        switch (message) {
        case 1:
            answerDescriptions(connection, frame);
            return;
        case 8:
        case 10:
        case 11:
        case 12:
        case 13:
        case 14:
            groupEdit(connection, frame, message);
            return;
        default:
            break;
        }
    } else if (type == 1 && service == 3) {
        switch (message) {
        case 1:
            subscribe(connection, frame);
            return;
        case 7:
            archiveQuery(connection, frame);
            return;
        case 8:
            answerValues(connection, frame);
            return;
        case 10:
            archiveCancel(connection, frame);
            return;
        case 12:
            eventsQuery(connection, frame);
            return;
        case 15:
            intervalQuery(connection, frame);
            return;
        case 16:
            eventsCancel(connection, frame);
            return;
        case 18:
        case 19:
            eventSubscription(connection, frame, false, message == 19);
            return;
        case 20:
            readedQuery(connection, frame);
            return;
        case 21:
        case 22:
            eventSubscription(connection, frame, true, message == 22);
            return;
        default:
            break;
        }
    }
    logLine(QStringLiteral("connection %1: ignored message %2,%3,%4 that this server does not serve")
                .arg(connection)
                .arg(service)
                .arg(message)
                .arg(type));
}

void PlantServer::answerDescriptions(quint64 connection, const QProtocolStruct &frame)
{
    ParamInfoQuery query;
    query.setPacket(frame);
    if (!query.read()) {
        logLine(QStringLiteral("connection %1: ignored a description query that does not read").arg(connection));
        return;
    }
    ParamInfoList list;
    list.replyTo(query);
    list.params = m_plant.descriptions();
    list.rootItem = *m_tree;
    list.eventTypes = m_plant.eventTypes;
    list.rawData = m_plant.tagBlock();
    Q_EMIT sendFrame(connection, list.write());
}

void PlantServer::answerValues(quint64 connection, const QProtocolStruct &frame)
{
    ParamValuesQuery query;
    query.setPacket(frame);
    if (!query.read()) {
        logLine(QStringLiteral("connection %1: ignored a value query without a client token").arg(connection));
        return;
    }
    ParamValuesResult result;
    result.replyTo(query);
    {
        QContainerPacket records(&result.data);
        for (const unsigned int id : qAsConst(query.ids)) {
            const QSharedPointer<AbstractParameterBase> object = m_simulation->object(id);
            if (!object)
                continue;
            result.ids.append(id);
            records << static_cast<qint32>(id);
            // The asking client has seen nothing: the record is a full one.
            object->write(records, true);
        }
    }
    result.dateTime = now();
    result.parent = query.parent;
    Q_EMIT sendFrame(connection, result.write());
}

void PlantServer::subscribe(quint64 connection, const QProtocolStruct &frame)
{
    ParamSubscriptionQuery query(nullptr);
    query.setPacket(frame);
    if (!query.read() || !query.parent()) {
        logLine(QStringLiteral("connection %1: ignored a subscription without a client token").arg(connection));
        return;
    }
    const SubscriberKey key(connection, query.parent());
    if (query.ids.isEmpty()) {
        m_subscribers.erase(key);
        return;
    }
    if (m_subscribers.find(key) == m_subscribers.end()) {
        int mine = 0;
        for (const auto &entry : m_subscribers)
            mine += entry.first.first == connection;
        if (mine >= MaxSubscriptions) {
            logLine(QStringLiteral("connection %1: refused a subscription beyond %2").arg(connection).arg(MaxSubscriptions));
            return;
        }
    }
    Subscriber &subscriber = m_subscribers[key];
    subscriber.queryPacket = frame.packet();
    // The query is the whole wish: watches of identifiers no longer wished go, and a
    // handle whose refresh wish changed is built anew.
    for (auto it = subscriber.watches.begin(); it != subscriber.watches.end();) {
        if (!query.ids.contains(it->first))
            it = subscriber.watches.erase(it);
        else
            ++it;
    }
    for (const int id : qAsConst(query.ids)) {
        const QSharedPointer<AbstractParameterBase> object = m_simulation->object(static_cast<unsigned int>(id));
        if (!object)
            continue;
        const bool refresh = query.refreshIds.contains(id);
        Watch &watch = subscriber.watches[id];
        if (!watch.handle || watch.refresh != refresh) {
            watch.handle.reset(new ParamBasePtr(object.data(), refresh));
            watch.refresh = refresh;
            watch.field = object->valueType() == 4;
        }
    }
    const QByteArray first = subscriptionResult(key, subscriber, true);
    if (!first.isEmpty())
        Q_EMIT sendFrame(connection, first);
}

QByteArray PlantServer::subscriptionResult(const SubscriberKey &key, Subscriber &subscriber, bool everything)
{
    ParamSubscriptionQuery query(nullptr);
    query.setPacket(subscriber.queryPacket);
    query.read();

    ParamSubscriptionResult result;
    result.replyTo(query);
    {
        QContainerPacket records(&result.data);
        for (auto &entry : subscriber.watches) {
            Watch &watch = entry.second;
            if (!everything && !watch.handle->changed())
                continue;
            result.ids.append(entry.first);
            if (watch.field) {
                // A field lowers its cells' flags as it writes them, so one subscriber would
                // take the changes from the next: every subscriber gets the whole field.
                watch.handle->getParam()->write(records, true);
            } else {
                watch.handle->write(records);
            }
            watch.handle->dropFlag();
        }
    }
    if (result.ids.isEmpty())
        return QByteArray();
    result.dateTime = now();
    result.setParent(key.second);
    return result.write();
}

void PlantServer::append(const PlantStep &step)
{
    // A run that starts again at an earlier time than the archive holds does not store
    // its ticks twice.
    if (nowMs() <= m_storedUntilMs)
        return;
    if (!m_store->append(step.values, step.events))
        logLine(QStringLiteral("archive: tick %1 could not be stored").arg(m_tick));
}

void PlantServer::tick()
{
    ++m_tick;
    const PlantStep step = m_simulation->step(nowMs());
    append(step);
    for (auto &entry : m_subscribers) {
        const QByteArray packet = subscriptionResult(entry.first, entry.second, false);
        if (!packet.isEmpty())
            Q_EMIT sendFrame(entry.first.first, packet);
    }
    m_simulation->dropFlags();
    if (!step.events.isEmpty())
        sendLiveEvents(step.events);
    sendPendingPieces(m_options.piecesPerTick);
    const qint64 pruneEvery = std::max<qint64>(1, 60000 / m_options.tickMs);
    if (m_tick % pruneEvery == 0)
        m_store->prune(nowMs() - m_options.retainMs);
}

bool PlantServer::flush()
{
    return m_store->flush();
}
