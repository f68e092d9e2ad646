// The event query: its points and open sides, validity, the body with and without dates,
// cutting milliseconds on the receiving side, and copies.

#include "eventtest.h"

#include "eventsquery.h"

#include <QtCore/QObject>

#include <ctime>

using namespace eventtest;
using telortest::plainBytes;

namespace {

QObject *client()
{
    static QObject object;
    return &object;
}

qint64 tokenOf(const QObject *object)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(object));
}

QDateTime noon(int msec)
{
    return QDateTime(QDate(2025, 6, 1), QTime(12, 0, 0, 0), Qt::UTC).addMSecs(msec);
}

/** A query read from @p packet into a fresh object. */
void readInto(EventsQuery &target, const QByteArray &packet)
{
    EXPECT_TRUE(readPacket(target, packet));
}

/** A query whose isValid() always says yes. */
class AlwaysValidQuery : public EventsQuery
{
public:
    AlwaysValidQuery()
        : EventsQuery(1, nullptr)
    {
    }
    bool isValid() const override { return true; }
};

/** A query that reports another kind than it stores. */
class RetypedQuery : public EventsQuery
{
public:
    RetypedQuery()
        : EventsQuery(1, nullptr)
    {
    }
    signed char type() const override { return 9; }
};

} // namespace

TEST(EventsQuery, NewQueryFields)
{
    const EventsQuery query(5, client());
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 12, 1}));
    EXPECT_EQ(query.queryType, 5);
    EXPECT_EQ(query.type(), 5);
    EXPECT_EQ(query.parent, client());
    EXPECT_EQ(query.queryTag, 0);
    EXPECT_TRUE(query.msecReset);
    EXPECT_TRUE(query.beginPoint.isNull());
    EXPECT_TRUE(query.endPoint.isNull());
    EXPECT_FALSE(query.fromBegin);
    EXPECT_FALSE(query.toEnd);
    EXPECT_EQ(query.option1, -1);
    EXPECT_EQ(query.localValue, 0);
    EXPECT_TRUE(query.events.isEmpty());
    EXPECT_EQ(query.option2, -1);
}

TEST(EventsQuery, NewQueryIsNotValidAndWritesBaseFieldsAndZero)
{
    EventsQuery query(5, client());
    query.queryTag = 77;
    EXPECT_FALSE(query.isValid());
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint8(5) << tokenOf(client()) << qint32(77) << qint8(0);
    });
    EXPECT_EQ(bodyWrittenBy(query), expected);
}

TEST(EventsQuery, OpenOnBothSidesIsValidWithNoDateOnTheWire)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    query.setToEnd();
    EXPECT_TRUE(query.isValid());
    EXPECT_TRUE(query.beginPoint.isNull());
    EXPECT_TRUE(query.endPoint.isNull());
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint8(1) << tokenOf(client()) << qint32(0) << qint8(1);
        s << true   // msecReset
          << true   // fromBegin, no date
          << true   // toEnd, no date
          << qint32(-1) << qint32(0) << qint32(-1);
    });
    EXPECT_EQ(bodyWrittenBy(query), expected);
}

TEST(EventsQuery, FromBeginAndAnEndPointIsValid)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    EXPECT_TRUE(query.setEndPoint(noon(0)));
    EXPECT_TRUE(query.isValid());
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint8(1) << tokenOf(client()) << qint32(0) << qint8(1);
        s << true << true << false << noon(0) << qint32(-1) << qint32(0) << qint32(-1);
    });
    EXPECT_EQ(bodyWrittenBy(query), expected);
}

TEST(EventsQuery, NullBeginPointIsAcceptedButLeavesTheQueryInvalid)
{
    EventsQuery query(1, client());
    query.setToEnd();
    query.setFromBegin();
    ASSERT_TRUE(query.isValid());
    EXPECT_TRUE(query.setBeginPoint(QDateTime()));
    EXPECT_FALSE(query.fromBegin);
    EXPECT_FALSE(query.isValid());
}

TEST(EventsQuery, NullEndPointIsAcceptedButLeavesTheQueryInvalid)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    EXPECT_TRUE(query.setEndPoint(QDateTime()));
    EXPECT_FALSE(query.toEnd);
    EXPECT_FALSE(query.isValid());
}

TEST(EventsQuery, SetIntervalRefusesAnEndBeforeTheBeginning)
{
    EventsQuery query(1, client());
    ASSERT_TRUE(query.setInterval(noon(0), noon(1000)));
    EXPECT_FALSE(query.setInterval(noon(5000), noon(4999)));
    EXPECT_EQ(query.beginPoint, noon(0));
    EXPECT_EQ(query.endPoint, noon(1000));
}

TEST(EventsQuery, SetIntervalAcceptsEqualPoints)
{
    EventsQuery query(1, client());
    EXPECT_TRUE(query.setInterval(noon(250), noon(250)));
    EXPECT_EQ(query.beginPoint, noon(250));
    EXPECT_EQ(query.endPoint, noon(250));
    EXPECT_TRUE(query.isValid());
}

TEST(EventsQuery, SetIntervalRefusesInvalidPointsWithNothingChanged)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    query.setToEnd();
    EXPECT_FALSE(query.setInterval(QDateTime(), noon(0)));
    EXPECT_FALSE(query.setInterval(noon(0), QDateTime()));
    EXPECT_TRUE(query.fromBegin);
    EXPECT_TRUE(query.toEnd);
    EXPECT_TRUE(query.beginPoint.isNull());
    EXPECT_TRUE(query.endPoint.isNull());
}

TEST(EventsQuery, SetIntervalClosesBothSides)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    query.setToEnd();
    EXPECT_TRUE(query.setInterval(noon(0), noon(1)));
    EXPECT_FALSE(query.fromBegin);
    EXPECT_FALSE(query.toEnd);
}

TEST(EventsQuery, PointsAreStoredInUtc)
{
    EventsQuery query(1, client());
    const QDateTime withOffset(QDate(2025, 6, 1), QTime(15, 0), Qt::OffsetFromUTC, 3 * 3600);
    EXPECT_TRUE(query.setBeginPoint(withOffset));
    EXPECT_EQ(query.beginPoint.timeSpec(), Qt::UTC);
    EXPECT_EQ(query.beginPoint.toMSecsSinceEpoch(), withOffset.toMSecsSinceEpoch());
    EXPECT_EQ(query.beginPoint.time(), QTime(12, 0));

    EXPECT_TRUE(query.setInterval(withOffset, withOffset.addSecs(60)));
    EXPECT_EQ(query.beginPoint.timeSpec(), Qt::UTC);
    EXPECT_EQ(query.endPoint.timeSpec(), Qt::UTC);
    EXPECT_EQ(query.beginPoint, withOffset);
    EXPECT_EQ(query.endPoint.time(), QTime(12, 1));
}

TEST(EventsQuery, LocalTimeIsStoredAsTheSameInstantInUtc)
{
    // The system's zone for local time is set to one nine hours east of UTC, without
    // summer time, for the length of this test.
    const QByteArray previous = qgetenv("TZ");
    const bool hadZone = qEnvironmentVariableIsSet("TZ");
    qputenv("TZ", "JST-9");
    tzset();

    EventsQuery query(1, client());
    const QDateTime local(QDate(2025, 6, 1), QTime(15, 0), Qt::LocalTime);
    EXPECT_TRUE(query.setEndPoint(local));
    EXPECT_TRUE(query.setBeginPoint(local.addSecs(-60)));
    const QDateTime end = query.endPoint;
    const QDateTime begin = query.beginPoint;

    if (hadZone)
        qputenv("TZ", previous);
    else
        qunsetenv("TZ");
    tzset();

    EXPECT_EQ(end.timeSpec(), Qt::UTC);
    EXPECT_EQ(end.date(), QDate(2025, 6, 1));
    EXPECT_EQ(end.time(), QTime(6, 0));
    EXPECT_EQ(begin.time(), QTime(5, 59));
}

TEST(EventsQuery, SetFromBeginAndSetToEndDropThePoints)
{
    EventsQuery query(1, client());
    ASSERT_TRUE(query.setInterval(noon(0), noon(1)));
    query.setFromBegin();
    EXPECT_TRUE(query.fromBegin);
    EXPECT_TRUE(query.beginPoint.isNull());
    EXPECT_EQ(query.endPoint, noon(1));
    query.setToEnd();
    EXPECT_TRUE(query.toEnd);
    EXPECT_TRUE(query.endPoint.isNull());
    EXPECT_EQ(query.getBeginDateTime(), QDateTime());
    EXPECT_EQ(query.getEndDateTime(), QDateTime());
}

TEST(EventsQuery, ValidityRules)
{
    EventsQuery query(1, client());
    query.beginPoint = noon(10);
    query.endPoint = noon(5);
    EXPECT_FALSE(query.isValid()) << "end before beginning";
    query.endPoint = noon(10);
    EXPECT_TRUE(query.isValid());
    query.endPoint = QDateTime();
    EXPECT_FALSE(query.isValid()) << "closed end without a point";
    query.toEnd = true;
    EXPECT_TRUE(query.isValid()) << "open end";
    // An open side that still holds a point is compared all the same.
    query.endPoint = noon(0);
    EXPECT_FALSE(query.isValid());
}

TEST(EventsQuery, GettersReturnThePointsAsTheyStand)
{
    EventsQuery query(1, client());
    const QDateTime odd(QDate(2025, 6, 1), QTime(15, 0), Qt::OffsetFromUTC, 3600);
    query.beginPoint = odd;
    query.endPoint = noon(3);
    EXPECT_EQ(query.getBeginDateTime().timeSpec(), Qt::OffsetFromUTC);
    EXPECT_EQ(query.getBeginDateTime(), odd);
    EXPECT_EQ(query.getEndDateTime(), noon(3));
    query.setMSecReset(false);
    EXPECT_FALSE(query.msecReset);
}

TEST(EventsQuery, FullBodyBytes)
{
    EventsQuery query(3, client());
    query.queryTag = -5;
    ASSERT_TRUE(query.setInterval(noon(250), noon(1750)));
    query.setMSecReset(false);
    query.option1 = 11;
    query.option2 = 22;
    query.localValue = 99;
    const EventStruct first = sampleEvent(1, 2, 3, 4);
    EventStruct second = sampleEvent(5, 6, 7, 8);
    second.parameters.clear();
    query.events = {first, second};
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << qint8(3) << tokenOf(client()) << qint32(-5);
        s << qint8(1) << false << false << noon(250) << false << noon(1750);
        s << qint32(11) << qint32(2);
        writeStreamForm(s, first);
        writeStreamForm(s, second);
        s << qint32(22);
    });
    EXPECT_EQ(bodyWrittenBy(query), expected);
}

TEST(EventsQuery, RoundTrip)
{
    EventsQuery query(3, client());
    query.queryTag = 4;
    ASSERT_TRUE(query.setInterval(noon(0), noon(60000)));
    query.option1 = 1;
    query.option2 = 2;
    query.events = {sampleEvent(1, 2, 3, 4), sampleEvent(9, 9, 9, 9)};
    const QByteArray packet = query.write();

    EventsQuery back(0, nullptr);
    readInto(back, packet);
    EXPECT_EQ(back.queryType, 3);
    EXPECT_EQ(back.parent, client());
    EXPECT_EQ(back.queryTag, 4);
    EXPECT_TRUE(back.msecReset);
    EXPECT_EQ(back.beginPoint, noon(0));
    EXPECT_EQ(back.endPoint, noon(60000));
    EXPECT_FALSE(back.fromBegin);
    EXPECT_FALSE(back.toEnd);
    EXPECT_EQ(back.option1, 1);
    EXPECT_EQ(back.option2, 2);
    ASSERT_EQ(back.events.size(), 2);
    expectSameRecord(back.events.at(0), query.events.at(0));
    expectSameRecord(back.events.at(1), query.events.at(1));
    EXPECT_EQ(back.localValue, 0) << "localValue never travels";
}

TEST(EventsQuery, OpenSidesRoundTripWithoutTouchingThePoints)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    query.setToEnd();
    query.setMSecReset(false);
    EventsQuery back(0, nullptr);
    back.beginPoint = noon(1);
    back.endPoint = noon(2);
    readInto(back, query.write());
    EXPECT_TRUE(back.fromBegin);
    EXPECT_TRUE(back.toEnd);
    // No date followed, so the receiver's points stay as they were.
    EXPECT_EQ(back.beginPoint, noon(1));
    EXPECT_EQ(back.endPoint, noon(2));
}

TEST(EventsQuery, CuttingMillisecondsAppliesToThePointsAsTheyStand)
{
    // Open on both sides, so no date travels; the receiver still cuts the milliseconds
    // off the valid points it holds.
    EventsQuery query(1, client());
    query.setFromBegin();
    query.setToEnd();
    EventsQuery back(0, nullptr);
    back.beginPoint = noon(1001);
    back.endPoint = noon(2);
    readInto(back, query.write());
    EXPECT_EQ(back.beginPoint, noon(1000));
    EXPECT_EQ(back.endPoint, noon(0));
}

TEST(EventsQuery, ReceiverCutsMillisecondsWhenAsked)
{
    EventsQuery query(1, client());
    ASSERT_TRUE(query.setInterval(noon(250), noon(1750)));
    ASSERT_TRUE(query.msecReset);
    const QByteArray packet = query.write();
    // The sender's points go out untouched.
    EXPECT_EQ(query.beginPoint, noon(250));
    EXPECT_TRUE(telortest::bodyOf(packet).contains(plainBytes([](QDataStream &s) { s << noon(250) << false << noon(1750); })));

    EventsQuery back(0, nullptr);
    readInto(back, packet);
    EXPECT_EQ(back.beginPoint, noon(0));
    EXPECT_EQ(back.endPoint, noon(1000));
    EXPECT_EQ(back.beginPoint.time(), QTime(12, 0, 0, 0));
    EXPECT_EQ(back.endPoint.time(), QTime(12, 0, 1, 0));
}

TEST(EventsQuery, ReceiverKeepsMillisecondsWhenNotAsked)
{
    EventsQuery query(1, client());
    ASSERT_TRUE(query.setInterval(noon(250), noon(1750)));
    query.setMSecReset(false);
    EventsQuery back(0, nullptr);
    readInto(back, query.write());
    EXPECT_FALSE(back.msecReset);
    EXPECT_EQ(back.beginPoint, noon(250));
    EXPECT_EQ(back.endPoint, noon(1750));
}

TEST(EventsQuery, CutMillisecondsOfAReceivedQueryAsAClientSendsIt)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint64(0x55) << qint32(0) << qint8(1);
        s << true << false << noon(999) << true << qint32(0) << qint32(0) << qint32(0);
    });
    EventsQuery back(0, nullptr);
    readInto(back, telortest::packetBytes(3, 12, 1, body));
    EXPECT_EQ(back.beginPoint, noon(0));
    EXPECT_TRUE(back.toEnd);
    EXPECT_TRUE(back.endPoint.isNull());
    EXPECT_EQ(back.parent, reinterpret_cast<const QObject *>(quintptr(0x55)));
}

TEST(EventsQuery, ValidityByteZeroLeavesTheQueryFieldsAlone)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint8(7) << qint64(0x1234) << qint32(8) << qint8(0)
          << true << true << true << qint32(1) << qint32(0) << qint32(2); // ignored
    });
    EventsQuery back(0, nullptr);
    back.msecReset = false;
    back.beginPoint = noon(1);
    back.option1 = 100;
    back.events = {sampleEvent()};
    back.option2 = 200;
    readInto(back, telortest::packetBytes(3, 12, 1, body));
    EXPECT_EQ(back.queryType, 7);
    EXPECT_EQ(back.queryTag, 8);
    EXPECT_EQ(back.parent, reinterpret_cast<const QObject *>(quintptr(0x1234)));
    EXPECT_FALSE(back.msecReset);
    EXPECT_FALSE(back.fromBegin);
    EXPECT_EQ(back.beginPoint, noon(1));
    EXPECT_EQ(back.option1, 100);
    EXPECT_EQ(back.events.size(), 1);
    EXPECT_EQ(back.option2, 200);
}

TEST(EventsQuery, AnyNonZeroValidityByteReadsTheRest)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint64(1) << qint32(0) << qint8(-3);
        s << false << true << true << qint32(5) << qint32(0) << qint32(6);
    });
    EventsQuery back(0, nullptr);
    readInto(back, telortest::packetBytes(3, 12, 1, body));
    EXPECT_TRUE(back.fromBegin);
    EXPECT_TRUE(back.toEnd);
    EXPECT_EQ(back.option1, 5);
    EXPECT_EQ(back.option2, 6);
}

TEST(EventsQuery, ReadReplacesTheEvents)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    query.setToEnd();
    query.events = {sampleEvent(1, 1, 1, 1)};
    EventsQuery back(0, nullptr);
    back.events = {sampleEvent(2, 2, 2, 2), sampleEvent(3, 3, 3, 3)};
    readInto(back, query.write());
    ASSERT_EQ(back.events.size(), 1);
    EXPECT_EQ(back.events.first().typeId, 1);
}

TEST(EventsQuery, TruncatedBodyReadsAsZerosAndIsStillTrue)
{
    EventsQuery query(1, client());
    query.setFromBegin();
    query.setToEnd();
    query.events = {sampleEvent()};
    const QByteArray body = bodyWrittenBy(query);
    EventsQuery back(0, nullptr);
    readInto(back, telortest::packetBytes(3, 12, 1, body.left(body.size() - 10)));
    EXPECT_TRUE(back.events.isEmpty()) << "a list that runs out is left empty";
    EXPECT_EQ(back.option2, 0);
}

TEST(EventsQuery, WriterAsksTheVirtualValidity)
{
    AlwaysValidQuery query;
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint64(0) << qint32(0) << qint8(1);
        s << true << false << QDateTime() << false << QDateTime() << qint32(-1) << qint32(0) << qint32(-1);
    });
    EXPECT_EQ(bodyWrittenBy(query), expected);
}

TEST(EventsQueryCopy, CopyHasIdentity3_12_1EvenIfTheSourceHeaderChanged)
{
    EventsQuery source(1, client());
    // The source's header becomes that of a received packet with another identity and route.
    readInto(source, telortest::packetBytes(7, 8, 9, bodyWrittenBy(source), 31, 32, 33));
    ASSERT_EQ(identityOf(source), (QList<qint32>{7, 8, 9}));
    const EventsQuery copy(source);
    EXPECT_EQ(identityOf(copy), (QList<qint32>{3, 12, 1}));
    EXPECT_EQ(headerWords(copy), (QList<qint32>{3, 12, 1, 1, 0, 0, 0, 0}));
}

TEST(EventsQueryCopy, CopyAlwaysHasMsecResetTrue)
{
    EventsQuery source(1, client());
    source.setMSecReset(false);
    const EventsQuery copy(source);
    EXPECT_TRUE(copy.msecReset);
    EXPECT_FALSE(source.msecReset);
}

TEST(EventsQueryCopy, CopyTakesTheOtherFields)
{
    EventsQuery source(4, client());
    source.queryTag = 12;
    ASSERT_TRUE(source.setInterval(noon(1), noon(2)));
    source.fromBegin = true;
    source.toEnd = true;
    source.option1 = 31;
    source.localValue = 0x123456789LL;
    source.events = {sampleEvent()};
    source.option2 = 32;
    const EventsQuery copy(source);
    EXPECT_EQ(copy.queryType, 4);
    EXPECT_EQ(copy.parent, client());
    EXPECT_EQ(copy.queryTag, 12);
    EXPECT_EQ(copy.beginPoint, noon(1));
    EXPECT_EQ(copy.endPoint, noon(2));
    EXPECT_TRUE(copy.fromBegin);
    EXPECT_TRUE(copy.toEnd);
    EXPECT_EQ(copy.option1, 31);
    EXPECT_EQ(copy.localValue, 0x123456789LL);
    ASSERT_EQ(copy.events.size(), 1);
    expectSameRecord(copy.events.first(), source.events.first());
    EXPECT_EQ(copy.option2, 32);
}

TEST(EventsQueryCopy, QueryTypeComesFromTheVirtualType)
{
    RetypedQuery source;
    ASSERT_EQ(source.queryType, 1);
    const EventsQuery copy(source);
    EXPECT_EQ(copy.queryType, 9);
}
