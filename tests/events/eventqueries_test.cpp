// The interval request, the cancellation of an event query and the request about the
// read state of events: identities, bodies and round trips.

#include "eventtest.h"

#include "eventsquerycancel.h"
#include "eventsreadedquery.h"
#include "intervalquery.h"

#include <QtCore/QObject>

using namespace eventtest;
using telortest::plainBytes;

TEST(IntervalQuery, IdentityTakesTheArgumentAndDatesAreNull)
{
    const IntervalQuery query(42);
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 42, 1}));
    EXPECT_TRUE(query.begin.isNull());
    EXPECT_TRUE(query.end.isNull());
}

TEST(IntervalQuery, BothNullWriteTwoZeroBytes)
{
    IntervalQuery query(1);
    EXPECT_EQ(bodyWrittenBy(query), QByteArray(2, '\0'));
}

TEST(IntervalQuery, OneNullDateWritesASingleZeroByte)
{
    IntervalQuery query(1);
    query.begin = when();
    EXPECT_EQ(bodyWrittenBy(query), plainBytes([](QDataStream &s) { s << qint8(1) << when() << qint8(0); }));

    IntervalQuery other(1);
    other.end = when(5);
    EXPECT_EQ(bodyWrittenBy(other), plainBytes([](QDataStream &s) { s << qint8(0) << qint8(1) << when(5); }));
}

TEST(IntervalQuery, InvalidButNotNullDateGoesOutAbsentAndComesBackNull)
{
    IntervalQuery query(1);
    query.begin = QDateTime(QDate(), QTime(10, 0), Qt::UTC);
    ASSERT_FALSE(query.begin.isNull());
    ASSERT_FALSE(query.begin.isValid());
    query.end = when();
    EXPECT_EQ(bodyWrittenBy(query), plainBytes([](QDataStream &s) { s << qint8(0) << qint8(1) << when(); }));

    IntervalQuery back(1);
    back.begin = when(-1);
    EXPECT_TRUE(readPacket(back, query.write()));
    EXPECT_TRUE(back.begin.isNull());
    EXPECT_EQ(back.end, when());
}

TEST(IntervalQuery, RoundTrip)
{
    IntervalQuery query(33);
    query.begin = when();
    query.end = when(86400000);
    IntervalQuery back(0);
    EXPECT_TRUE(readPacket(back, query.write()));
    EXPECT_EQ(back.begin, query.begin);
    EXPECT_EQ(back.end, query.end);
    EXPECT_EQ(identityOf(back), (QList<qint32>{3, 33, 1}));
}

TEST(IntervalQuery, ZeroPresenceByteMakesTheDateNull)
{
    IntervalQuery back(1);
    back.begin = when();
    back.end = when();
    EXPECT_TRUE(readPacket(back, telortest::packetBytes(3, 1, 1, QByteArray(2, '\0'))));
    EXPECT_TRUE(back.begin.isNull());
    EXPECT_TRUE(back.end.isNull());
}

TEST(IntervalQuery, AnyOtherPresenceByteReadsADate)
{
    const QByteArray body = plainBytes([](QDataStream &s) { s << qint8(-1) << when() << qint8(7) << when(9); });
    IntervalQuery back(1);
    EXPECT_TRUE(readPacket(back, telortest::packetBytes(3, 1, 1, body)));
    EXPECT_EQ(back.begin, when());
    EXPECT_EQ(back.end, when(9));
}

TEST(IntervalQuery, EmptyBodyReadsNullDatesAndTrue)
{
    IntervalQuery back(1);
    back.begin = when();
    EXPECT_TRUE(readPacket(back, telortest::packetBytes(3, 1, 1, QByteArray())));
    EXPECT_TRUE(back.begin.isNull());
    EXPECT_TRUE(back.end.isNull());
}

TEST(EventsQueryCancel, TypeTwoAndIdentity3_16_1)
{
    const EventsQueryCancel cancel(token(0xABCDEF));
    EXPECT_EQ(identityOf(cancel), (QList<qint32>{3, 16, 1}));
    EXPECT_EQ(cancel.queryType, 2);
    EXPECT_EQ(cancel.type(), 2);
    EXPECT_EQ(cancel.parent, token(0xABCDEF));
    EXPECT_EQ(cancel.queryTag, 0);
}

TEST(EventsQueryCancel, WritesExactlyTheThreeBaseFields)
{
    EventsQueryCancel cancel(token(0x0102030405060708ULL));
    cancel.queryTag = 0x11223344;
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint8(2) << qint64(0x0102030405060708LL) << qint32(0x11223344);
    });
    const QByteArray body = bodyWrittenBy(cancel);
    EXPECT_EQ(body, expected);
    EXPECT_EQ(body.size(), 13);
}

TEST(EventsQueryCancel, RoundTrip)
{
    EventsQueryCancel cancel(token(0x77));
    cancel.queryTag = -1;
    EventsQueryCancel back(nullptr);
    EXPECT_TRUE(readPacket(back, cancel.write()));
    EXPECT_EQ(back.queryType, 2);
    EXPECT_EQ(back.parent, token(0x77));
    EXPECT_EQ(back.queryTag, -1);
}

TEST(EventsQueryCancel, ReadsWhatTheWireSays)
{
    const QByteArray body = plainBytes([](QDataStream &s) { s << qint8(-128) << qint64(-1) << qint32(5); });
    EventsQueryCancel back(nullptr);
    EXPECT_TRUE(readPacket(back, telortest::packetBytes(3, 16, 1, body)));
    EXPECT_EQ(back.queryType, -128);
    EXPECT_EQ(back.type(), -128);
    EXPECT_EQ(back.parent, token(~quintptr(0)));
    EXPECT_EQ(back.queryTag, 5);
}

TEST(EventsReadedQuery, NewRequest)
{
    const EventsReadedQuery query;
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 20, 1}));
    EXPECT_FALSE(query.readed);
    EXPECT_TRUE(query.ids.isEmpty());
}

TEST(EventsReadedQuery, Bytes)
{
    EventsReadedQuery query;
    query.readed = true;
    query.ids = {5, -1, 5, 0x7FFFFFFF};
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << true << qint32(4) << qint32(5) << qint32(-1) << qint32(5) << qint32(0x7FFFFFFF);
    });
    EXPECT_EQ(bodyWrittenBy(query), expected);
}

TEST(EventsReadedQuery, EmptyRequestBytes)
{
    EventsReadedQuery query;
    EXPECT_EQ(bodyWrittenBy(query), plainBytes([](QDataStream &s) { s << false << qint32(0); }));
}

TEST(EventsReadedQuery, RoundTripReplacesTheNumbers)
{
    EventsReadedQuery query;
    query.readed = true;
    query.ids = {3, 2, 1};
    EventsReadedQuery back;
    back.ids = {9, 9, 9, 9};
    EXPECT_TRUE(readPacket(back, query.write()));
    EXPECT_TRUE(back.readed);
    EXPECT_EQ(back.ids, (QList<int>{3, 2, 1}));
}

TEST(EventsReadedQuery, ListThatRunsOutIsLeftEmpty)
{
    const QByteArray body = plainBytes([](QDataStream &s) { s << true << qint32(3) << qint32(1) << qint32(2); });
    EventsReadedQuery back;
    back.ids = {7};
    EXPECT_TRUE(readPacket(back, telortest::packetBytes(3, 20, 1, body)));
    EXPECT_TRUE(back.readed);
    EXPECT_TRUE(back.ids.isEmpty());
}
