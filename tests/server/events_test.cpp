// Events: alarm transitions and bit changes recorded in the event archive, queried,
// followed live and marked as read.

#include "servertest.h"

#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsintervaldata.h"
#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "eventsreadedquery.h"
#include "eventstatisticssubscription.h"
#include "eventstructwithreaded.h"
#include "eventsubscription.h"
#include "eventsubscriptioncancel.h"
#include "intervalquery.h"
#include "messageheader.h"
#include "parambitfield.h"

#include <QtCore/QObject>

#include <gtest/gtest.h>

using namespace servertest;

namespace {

/** Every event of the archive, through an event query. */
QList<EventStruct> allEvents(Harness &h, quint64 connection)
{
    QObject client;
    EventsQuery query(1, &client);
    query.setFromBegin();
    query.setToEnd();
    h.send(connection, query);
    QList<EventStruct> events;
    for (const QByteArray &frame : h.take(connection)) {
        EventsArchiveResult result;
        result.setPacket(frame);
        EXPECT_TRUE(result.read());
        EXPECT_EQ(result.parent, qint64(reinterpret_cast<quintptr>(&client)));
        events += result.events;
    }
    return events;
}

} // namespace

TEST(ServerEvents, AlarmTransitionIsRecordedWithItsStates)
{
    Harness h(loadPlant(examplePlantPath()));
    // The boiler temperature, a sine of mean 60 and amplitude 45 starting at its mean,
    // passes the high warning setpoint 80 some 8.8 s after the start.
    h.ticks(40);
    const QList<EventStruct> events = allEvents(h, 1);
    const EventStruct *alarm = nullptr;
    for (const EventStruct &e : events) {
        if (e.typeId == 1 && e.firstId == 101 && e.dateTime > testStart() && !alarm)
            alarm = &e;
    }
    ASSERT_TRUE(alarm);
    EXPECT_EQ(alarm->eventMessage, 3); // high warning
    EXPECT_TRUE(alarm->isValid());
    EXPECT_EQ(alarm->parameters.value(QStringLiteral("#old_state")).toUInt(), 8u);
    EXPECT_EQ(alarm->parameters.value(QStringLiteral("#new_state")).toUInt(), 128u);
    EXPECT_GT(alarm->parameters.value(QStringLiteral("#value")).toDouble(), 80.0);
    EXPECT_EQ(alarm->dateTime, testStart().addMSecs(250 * 36));
}

TEST(ServerEvents, BitChangeCarriesTheFourNamedValues)
{
    const Plant plant = loadPlant(examplePlantPath());
    Harness h(plant);
    h.ticks(40); // the burner status word moves every 5 s
    const QList<EventStruct> events = allEvents(h, 1);
    QList<EventStruct> bits;
    for (const EventStruct &e : events) {
        if (e.typeId == 2 && e.firstId == 112)
            bits.append(e);
    }
    ASSERT_FALSE(bits.isEmpty());
    const EventStruct &e = bits.first();
    for (const char *key : {"#old_bit_value", "#new_bit_value", "#old_bit_state", "#new_bit_state"})
        EXPECT_TRUE(e.parameters.contains(QLatin1String(key))) << key;
    EXPECT_NE(e.parameters.value(QStringLiteral("#old_bit_value")).toUInt(),
              e.parameters.value(QStringLiteral("#new_bit_value")).toUInt());
    const QHash<unsigned int, ParamBitInfo> shown =
        ParamBitField::getNewBitWord(e, &plant.parameter(112)->info, QStringLiteral("en"));
    EXPECT_FALSE(shown.isEmpty());
}

TEST(ServerEvents, SubscribersGetLiveEventsUntilTheyCancel)
{
    Harness h(loadPlant(examplePlantPath()));
    QObject log;
    EventSubscription subscription(&log);
    subscription.setRoute(7, 8, 9);
    h.send(2, subscription);
    EXPECT_TRUE(h.take(2).isEmpty());
    h.ticks(40);
    const QList<QByteArray> frames = h.take(2);
    ASSERT_FALSE(frames.isEmpty());
    for (const QByteArray &frame : frames) {
        EventStruct event;
        event.setPacket(frame);
        ASSERT_TRUE(event.read());
        EXPECT_EQ(telortest::identityOf(event), (QList<qint32>{3, 17, 3}));
        EXPECT_EQ(telortest::routeOf(event), (QList<qint32>{7, 8, 9}));
        EXPECT_TRUE(event.isValid());
        EXPECT_GT(event.dateTime, testStart());
    }
    EventSubscriptionCancel cancel(&log);
    h.send(2, cancel);
    EXPECT_EQ(h.server->eventSubscriptionCount(), 0);
    h.ticks(40);
    EXPECT_TRUE(h.take(2).isEmpty());
}

TEST(ServerEvents, StatisticsSubscriptionCountsTodaysEvents)
{
    Harness h(loadPlant(examplePlantPath()));
    QObject panel;
    EventStatisticsSubscription subscription(&panel);
    h.send(3, subscription);
    QList<QByteArray> frames = h.take(3);
    ASSERT_EQ(frames.size(), 1);
    EventsDayData day;
    day.setPacket(frames.first());
    ASSERT_TRUE(day.read());
    EXPECT_EQ(day.day, QDate(2026, 1, 1));
    EXPECT_EQ(day.parent, qint64(reinterpret_cast<quintptr>(&panel)));
    h.ticks(40);
    frames = h.take(3);
    ASSERT_FALSE(frames.isEmpty());
    EventsDayData later;
    later.setPacket(frames.last());
    ASSERT_TRUE(later.read());
    int total = 0;
    for (const int n : qAsConst(later.dayValues))
        total += n;
    int today = 0; // the backfilled history lies on the day before
    for (const EventStruct &e : allEvents(h, 1))
        today += e.dateTime >= testStart();
    EXPECT_GT(today, 0);
    EXPECT_EQ(total, today);
}

TEST(ServerEvents, IntervalAndDayQueries)
{
    Harness h(loadPlant(examplePlantPath()));
    h.ticks(40);
    const QList<EventStruct> events = allEvents(h, 1);
    ASSERT_GE(events.size(), 2);
    IntervalQuery interval(15);
    h.send(1, interval);
    QList<QByteArray> frames = h.take(1);
    ASSERT_EQ(frames.size(), 1);
    EventsIntervalData data;
    data.setPacket(frames.first());
    ASSERT_TRUE(data.read());
    EXPECT_EQ(data.value1, events.size());
    EXPECT_EQ(data.begin, events.first().dateTime);
    EXPECT_EQ(data.end, events.last().dateTime);

    QObject client;
    EventsQuery days(3, &client);
    days.setInterval(testStart().addSecs(-3600), testStart().addSecs(3600));
    h.send(1, days);
    frames = h.take(1);
    ASSERT_EQ(frames.size(), 2); // the last day of 2025 and the first of 2026
    EventsDayData first;
    first.setPacket(frames.first());
    ASSERT_TRUE(first.read());
    EXPECT_EQ(first.day, QDate(2025, 12, 31));
}

TEST(ServerEvents, ReadStateReachesTheAskingClientAndSubscribers)
{
    Harness h(loadPlant(examplePlantPath()));
    h.ticks(40);
    const QList<EventStruct> events = allEvents(h, 1);
    ASSERT_FALSE(events.isEmpty());
    QObject other;
    EventSubscription subscription(&other);
    h.send(2, subscription);
    EventsReadedQuery mark;
    mark.readed = true;
    mark.ids = {int(events.first().secondId), 999999};
    h.send(1, mark);
    for (const quint64 connection : {quint64(1), quint64(2)}) {
        const QList<QByteArray> frames = h.take(connection);
        ASSERT_EQ(frames.size(), 1) << connection;
        EventStructWithReaded read(EventStruct(), false);
        read.setPacket(frames.first());
        ASSERT_TRUE(read.read());
        EXPECT_TRUE(read.readed);
        EXPECT_EQ(read.event, events.first());
    }
    h.send(1, mark); // already read: nothing changes
    EXPECT_TRUE(h.take(1).isEmpty());
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: 0 of 2 events marked read"));
}

TEST(ServerEvents, EventQueryCancelDropsPieces)
{
    PlantServer::Options options;
    options.eventsPerPiece = 1;
    options.piecesPerTick = 1;
    Harness h(loadPlant(examplePlantPath()), nullptr, 60000, options);
    QObject client;
    EventsQuery query(1, &client);
    query.setFromBegin();
    query.setToEnd();
    h.send(1, query);
    ASSERT_EQ(h.take(1).size(), 1);
    ASSERT_EQ(h.server->pendingAnswerCount(), 1);
    EventsQueryCancel cancel(&client);
    h.send(1, cancel);
    EXPECT_EQ(h.server->pendingAnswerCount(), 0);
}
