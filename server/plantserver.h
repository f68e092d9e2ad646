#ifndef PLANTSERVER_H
#define PLANTSERVER_H

#include "plant.h"
#include "plantsimulation.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <map>
#include <memory>
#include <utility>

class ArchiveStore;
class ParamBasePtr;
class QProtocolStruct;

/**
 * @brief The request handler of the plant server, independent of any transport.
 *
 * The transport hands over connections and received frames; the server answers through
 * the signal sendFrame() with packets written by the library's own message classes, each
 * addressed with replyTo() to the request it answers. tick() moves the plant by one step.
 *
 * What it answers, by message identity (service, message, type):
 *
 * | Request | Answer |
 * |---|---|
 * | 2,1,1 `ParamInfoQuery` | `ParamInfoList`: descriptions, group tree, event catalogue; `rawData` holds the tag block |
 * | 3,8,1 `ParamValuesQuery` | `ParamValuesResult` with a full record of every known identifier asked for |
 * | 3,1,1 `ParamSubscriptionQuery` | replaces the wish of (connection, token); at once a `ParamSubscriptionResult` with every record, then each tick the changed ones. No identifiers: the subscription ends |
 * | 3,7,1 `ArchiveQuery` | `ArchiveResult` pieces; the first at once, the rest in the following ticks |
 * | 3,10,1 `ArchiveQueryCancel` | drops the pieces not yet sent of that token's queries |
 * | 3,12,1 `EventsQuery` | type 3: one `EventsDayData` per day; other types: `EventsArchiveResult` pieces |
 * | 3,16,1 `EventsQueryCancel` | drops the event pieces not yet sent of that token |
 * | 3,15,1 `IntervalQuery` | `EventsIntervalData`: first and last event time in the interval, `value1` the count |
 * | 3,20,1 `EventsReadedQuery` | sets the read state of the events numbered `ids`; each changed event goes as `EventStructWithReaded` to the asking connection and to every event subscriber |
 * | 3,18,1 / 3,19,1 event subscription and cancel | live `EventStruct` messages (3,17,3) carrying the subscription's route words |
 * | 3,21,1 / 3,22,1 statistics subscription and cancel | an `EventsDayData` of today's counts at once and after every tick with new events |
 * | 2,8,1 `ParamGroupInfo` (create), 2,11/12/13,1 `ParamGroupCopyPasteRemoveInfo` (copy, paste, remove), 2,10,1 insert, 2,14,1 remove parameters | applied to the tree, stored, passed on unchanged to every other connection |
 *
 * Anything else, a frame that does not read, or a request that cannot be served, is
 * ignored with a log line. Nothing a client sends makes the server hold more than the
 * bounds below, per connection.
 *
 * Time. The simulated time of tick n is start + n x tick. start() backfills the archive
 * with the history before start; ticks are the caller's (a timer in the process, direct
 * calls in tests).
 */
class PlantServer : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        quint64 seed = 1;
        QDateTime start;
        qint64 tickMs = 250;
        qint64 historyMs = 3600 * 1000;
        qint64 retainMs = qint64(7) * 24 * 3600 * 1000;
        int valuesPerPiece = 5000;
        int eventsPerPiece = 1000;
        int piecesPerTick = 16;
    };

    /** Bounds per connection. */
    static constexpr int MaxSubscriptions = 256;
    static constexpr int MaxPendingAnswers = 16;

    /** A server of @p plant that keeps its archive in @p store, which it does not own. */
    PlantServer(const Plant &plant, ArchiveStore *store, const Options &options, QObject *parent = nullptr);
    ~PlantServer() override;

    /**
     * Opens the store, takes the stored group tree if there is one, backfills the history
     * and prunes what is older than the retention. False with @p error on failure.
     */
    bool start(QString *error);

    /** A transport connection opened. */
    void connectionOpened(quint64 connection);
    /** A frame with a packet arrived on @p connection. */
    void receive(quint64 connection, const QProtocolStruct &frame);
    /** A connection closed: everything it asked for is dropped. */
    void connectionClosed(quint64 connection);
    /** Moves the plant one tick and sends what it produced. */
    void tick();
    /** Makes the archive durable. */
    bool flush();

    /** The simulated time of the current tick. */
    QDateTime now() const;
    qint64 tickNumber() const { return m_tick; }
    const Plant &plant() const { return m_plant; }
    const ParamGroupItem &groupTree() const { return *m_tree; }
    PlantSimulation &simulation() { return *m_simulation; }

    /** Counts, for tests and the fuzz target. */
    int connectionCount() const { return m_connections.size(); }
    int subscriptionCount() const { return int(m_subscribers.size()); }
    int pendingAnswerCount() const { return int(m_pending.size()); }
    int eventSubscriptionCount() const { return m_eventSubscribers.size() + m_statisticsSubscribers.size(); }

Q_SIGNALS:
    /** Send @p frame, a whole packet, on @p connection. */
    void sendFrame(quint64 connection, const QByteArray &frame);
    /** One line for the server's log. */
    void log(const QString &line);

private:
    struct Watch;
    struct Subscriber;
    struct Pending;
    struct EventSubscriber
    {
        quint64 connection = 0;
        const QObject *token = nullptr;
        QByteArray queryPacket;
    };

    using SubscriberKey = std::pair<quint64, const QObject *>;

    // Descriptions, values, subscriptions.
    void answerDescriptions(quint64 connection, const QProtocolStruct &frame);
    void answerValues(quint64 connection, const QProtocolStruct &frame);
    void subscribe(quint64 connection, const QProtocolStruct &frame);
    QByteArray subscriptionResult(const SubscriberKey &key, Subscriber &subscriber, bool everything);

    // Archive and event queries.
    void archiveQuery(quint64 connection, const QProtocolStruct &frame);
    void archiveCancel(quint64 connection, const QProtocolStruct &frame);
    void eventsQuery(quint64 connection, const QProtocolStruct &frame);
    void eventsCancel(quint64 connection, const QProtocolStruct &frame);
    void intervalQuery(quint64 connection, const QProtocolStruct &frame);
    bool addPending(std::unique_ptr<Pending> pending);
    QByteArray nextPiece(Pending &pending);
    void sendPendingPieces(int budget);

    // Events.
    void readedQuery(quint64 connection, const QProtocolStruct &frame);
    void eventSubscription(quint64 connection, const QProtocolStruct &frame, bool statistics, bool cancel);
    void sendLiveEvents(const QList<StoredEvent> &events);
    QByteArray statistics(const EventSubscriber &subscriber);

    // Groups.
    void groupEdit(quint64 connection, const QProtocolStruct &frame, int messageId);
    void passOn(quint64 sender, const QByteArray &packet);

    void append(const PlantStep &step);
    void logLine(const QString &line);
    qint64 nowMs() const;

    Plant m_plant;
    ArchiveStore *m_store;
    Options m_options;
    // The simulation owns the parameter objects; everything holding handles on them is
    // declared after it, and so destroyed first.
    std::unique_ptr<PlantSimulation> m_simulation;
    std::unique_ptr<ParamGroupItem> m_tree;
    QSet<unsigned int> m_knownIds;
    QSet<quint64> m_connections;
    std::map<SubscriberKey, Subscriber> m_subscribers;
    std::map<quint64, std::unique_ptr<Pending>> m_pending; // by answer number, oldest first
    quint64 m_nextPending = 1;
    QList<EventSubscriber> m_eventSubscribers;
    QList<EventSubscriber> m_statisticsSubscribers;
    qint64 m_tick = 0;
    qint64 m_startMs = 0;
    qint64 m_storedUntilMs = -1; // the newest time the archive held at start
    int m_nextQueryId = 1;
};

#endif // PLANTSERVER_H
