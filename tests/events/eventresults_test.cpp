// The answers to event requests: the common fields, the list of records, the numbers of
// a day and an interval, written and read as a server and a client do.

#include "eventtest.h"

#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsintervaldata.h"

using namespace eventtest;
using telortest::plainBytes;

namespace {

void writeBase(QDataStream &s, qint64 parent, int value1, int value2, int value3)
{
    s << parent << qint32(value1) << qint32(value2) << qint32(value3);
}

template<typename Result>
void fillBase(Result &result)
{
    result.parent = 0x0000123400005678LL;
    result.value1 = 1;
    result.value2 = -2;
    result.value3 = 0x7FFFFFFF;
}

template<typename Result>
void expectBase(const Result &result)
{
    EXPECT_EQ(result.parent, 0x0000123400005678LL);
    EXPECT_EQ(result.value1, 1);
    EXPECT_EQ(result.value2, -2);
    EXPECT_EQ(result.value3, 0x7FFFFFFF);
}

} // namespace

TEST(EventsResultBase, DefaultsAndNoIdentity)
{
    const EventsResultBase result;
    EXPECT_EQ(result.parent, 0);
    EXPECT_EQ(result.value1, 0);
    EXPECT_EQ(result.value2, 0);
    EXPECT_EQ(result.value3, 0);
    EXPECT_EQ(identityOf(result), (QList<qint32>{0, 0, 0}));
    EXPECT_EQ(identityOf(EventsArchiveResult()), (QList<qint32>{0, 0, 0}));
    EXPECT_EQ(identityOf(EventsDayData()), (QList<qint32>{0, 0, 0}));
    EXPECT_EQ(identityOf(EventsIntervalData()), (QList<qint32>{0, 0, 0}));
}

TEST(EventsResultBase, BytesAndRoundTrip)
{
    EventsResultBase result;
    fillBase(result);
    EXPECT_EQ(bodyWrittenBy(result), plainBytes([](QDataStream &s) { writeBase(s, 0x0000123400005678LL, 1, -2, 0x7FFFFFFF); }));
    EventsResultBase back;
    EXPECT_TRUE(readPacket(back, result.write()));
    expectBase(back);
}

TEST(EventsArchiveResult, WithoutEventsWritesBaseFieldsAndCountZero)
{
    EventsArchiveResult result;
    fillBase(result);
    const QByteArray expected = plainBytes([](QDataStream &s) {
        writeBase(s, 0x0000123400005678LL, 1, -2, 0x7FFFFFFF);
        s << qint32(0);
    });
    EXPECT_EQ(bodyWrittenBy(result), expected);
}

TEST(EventsArchiveResult, RecordsInTheStreamFormInListOrder)
{
    EventsArchiveResult result;
    const EventStruct a = sampleEvent(3, 1, 10, 20);
    EventStruct b = sampleEvent(1, 3, 30, 40);
    b.dateTime = QDateTime();
    b.parameters.insert(QStringLiteral("#old_bit_value"), 1u);
    result.events = {a, b, a};
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeBase(s, 0, 0, 0, 0);
        s << qint32(3);
        writeStreamForm(s, a);
        writeStreamForm(s, b);
        writeStreamForm(s, a);
    });
    EXPECT_EQ(bodyWrittenBy(result), expected);
}

TEST(EventsArchiveResult, AsAServerSendsIt)
{
    QList<EventStruct> sent;
    for (int i = 0; i < 5; ++i) {
        EventStruct e = sampleEvent(100 + i, i + 1, 1000u + i, 2000u + i);
        e.dateTime = when(i * 1000);
        e.parameters.insert(QStringLiteral("index"), i);
        sent.append(e);
    }
    const QByteArray body = plainBytes([&](QDataStream &s) {
        writeBase(s, 0x0000123400005678LL, 1, -2, 0x7FFFFFFF);
        s << qint32(sent.size());
        for (const EventStruct &e : sent)
            writeStreamForm(s, e);
    });
    EventsArchiveResult result;
    ASSERT_TRUE(readPacket(result, telortest::packetBytes(3, 12, 2, body, 1, 2, 3)));
    expectBase(result);
    ASSERT_EQ(result.events.size(), 5);
    for (int i = 0; i < 5; ++i)
        expectSameRecord(result.events.at(i), sent.at(i));
    EXPECT_EQ(identityOf(result), (QList<qint32>{3, 12, 2}));
}

TEST(EventsArchiveResult, RoundTripReplacesTheList)
{
    EventsArchiveResult result;
    fillBase(result);
    result.events = {sampleEvent(1, 1, 1, 1), sampleEvent(2, 2, 2, 2)};
    EventsArchiveResult back;
    back.events = {sampleEvent(9, 9, 9, 9)};
    EXPECT_TRUE(readPacket(back, result.write()));
    expectBase(back);
    ASSERT_EQ(back.events.size(), 2);
    expectSameRecord(back.events.at(0), result.events.at(0));
    expectSameRecord(back.events.at(1), result.events.at(1));
}

TEST(EventsArchiveResult, ListWithABadRecordIsLeftEmptyAndReadIsTrue)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s, 5, 6, 7, 8);
        s << qint32(2);
        writeStreamForm(s, sampleEvent());
        s << quint16(1) << quint8(1); // the second record breaks off
    });
    EventsArchiveResult result;
    result.events = {sampleEvent()};
    EXPECT_TRUE(readPacket(result, telortest::packetBytes(3, 12, 2, body)));
    EXPECT_EQ(result.parent, 5);
    EXPECT_TRUE(result.events.isEmpty());
}

TEST(EventsDayData, Bytes)
{
    EventsDayData data;
    fillBase(data);
    data.day = QDate(2025, 2, 28);
    data.dayValues.insert(7, 70);
    const QByteArray expected = plainBytes([](QDataStream &s) {
        writeBase(s, 0x0000123400005678LL, 1, -2, 0x7FFFFFFF);
        s << QDate(2025, 2, 28) << qint32(1) << quint16(7) << qint32(70);
    });
    EXPECT_EQ(bodyWrittenBy(data), expected);
}

TEST(EventsDayData, EntriesGoOutFromTheLastToTheFirst)
{
    EventsDayData data;
    data.day = QDate(2025, 2, 28);
    for (unsigned short key : {1, 2, 300, 65535, 40, 41, 42})
        data.dayValues.insert(key, key * 3);
    const QList<unsigned short> keys = data.dayValues.keys();
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeBase(s, 0, 0, 0, 0);
        s << QDate(2025, 2, 28) << qint32(keys.size());
        for (int i = keys.size() - 1; i >= 0; --i)
            s << quint16(keys.at(i)) << qint32(keys.at(i) * 3);
    });
    EXPECT_EQ(bodyWrittenBy(data), expected);
}

TEST(EventsDayData, InvalidDateTravelsAsQtWritesIt)
{
    EventsDayData data;
    data.day = QDate(2025, 2, 30);
    ASSERT_FALSE(data.day.isValid());
    const QByteArray expected = plainBytes([](QDataStream &s) {
        writeBase(s, 0, 0, 0, 0);
        s << QDate(2025, 2, 30) << qint32(0);
    });
    EXPECT_EQ(bodyWrittenBy(data), expected);

    EventsDayData back;
    back.day = QDate(2000, 1, 1);
    EXPECT_TRUE(readPacket(back, data.write()));
    EXPECT_FALSE(back.day.isValid());
    EXPECT_EQ(back.day, QDate());
}

TEST(EventsDayData, SameEntriesInAnyOrderReadBackEqual)
{
    const QList<QPair<quint16, qint32>> entries{{1, 10}, {2, 20}, {500, 5000}, {65535, -1}};
    const QByteArray forward = plainBytes([&](QDataStream &s) {
        writeBase(s, 0, 0, 0, 0);
        s << QDate(2025, 1, 1) << qint32(entries.size());
        for (const auto &entry : entries)
            s << entry.first << entry.second;
    });
    const QByteArray backward = plainBytes([&](QDataStream &s) {
        writeBase(s, 0, 0, 0, 0);
        s << QDate(2025, 1, 1) << qint32(entries.size());
        for (int i = entries.size() - 1; i >= 0; --i)
            s << entries.at(i).first << entries.at(i).second;
    });
    EventsDayData a;
    EventsDayData b;
    EXPECT_TRUE(readPacket(a, telortest::packetBytes(3, 13, 2, forward)));
    EXPECT_TRUE(readPacket(b, telortest::packetBytes(3, 13, 2, backward)));
    EXPECT_EQ(a.dayValues.size(), 4);
    EXPECT_EQ(a.dayValues, b.dayValues);
    EXPECT_EQ(a.dayValues.value(500), 5000);
    EXPECT_EQ(b.dayValues.value(65535), -1);
    EXPECT_EQ(a.day, QDate(2025, 1, 1));
}

TEST(EventsDayData, RoundTrip)
{
    EventsDayData data;
    fillBase(data);
    data.day = QDate(1999, 12, 31);
    for (unsigned short key = 1; key < 50; key += 7)
        data.dayValues.insert(key, -key);
    EventsDayData back;
    back.dayValues.insert(999, 1);
    EXPECT_TRUE(readPacket(back, data.write()));
    expectBase(back);
    EXPECT_EQ(back.day, data.day);
    EXPECT_EQ(back.dayValues, data.dayValues);
}

TEST(EventsDayData, RepeatedKeyOnTheWireIsKeptTwice)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s, 0, 0, 0, 0);
        s << QDate(2025, 1, 1) << qint32(2) << quint16(4) << qint32(1) << quint16(4) << qint32(2);
    });
    EventsDayData data;
    EXPECT_TRUE(readPacket(data, telortest::packetBytes(3, 13, 2, body)));
    EXPECT_EQ(data.dayValues.size(), 2);
    EXPECT_EQ(data.dayValues.value(4), 2);
}

TEST(EventsDayData, EntriesThatRunOutLeaveTheHashEmpty)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s, 0, 0, 0, 0);
        s << QDate(2025, 1, 1) << qint32(3) << quint16(4) << qint32(1);
    });
    EventsDayData data;
    data.dayValues.insert(1, 1);
    EXPECT_TRUE(readPacket(data, telortest::packetBytes(3, 13, 2, body)));
    EXPECT_TRUE(data.dayValues.isEmpty());
}

TEST(EventsIntervalData, BytesHaveNoPresenceByte)
{
    EventsIntervalData data;
    fillBase(data);
    data.begin = when();
    const QByteArray expected = plainBytes([](QDataStream &s) {
        writeBase(s, 0x0000123400005678LL, 1, -2, 0x7FFFFFFF);
        s << when() << QDateTime();
    });
    EXPECT_EQ(bodyWrittenBy(data), expected);
}

TEST(EventsIntervalData, NullDatesReadBackNull)
{
    EventsIntervalData data;
    EventsIntervalData back;
    back.begin = when();
    back.end = when();
    EXPECT_TRUE(readPacket(back, data.write()));
    EXPECT_TRUE(back.begin.isNull());
    EXPECT_TRUE(back.end.isNull());
}

TEST(EventsIntervalData, RoundTripAsAServerSendsIt)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s, 9, 8, 7, 6);
        s << when() << when(3600000);
    });
    EventsIntervalData data;
    EXPECT_TRUE(readPacket(data, telortest::packetBytes(3, 14, 2, body)));
    EXPECT_EQ(data.parent, 9);
    EXPECT_EQ(data.value3, 6);
    EXPECT_EQ(data.begin, when());
    EXPECT_EQ(data.end, when(3600000));

    EventsIntervalData back;
    EXPECT_TRUE(readPacket(back, data.write()));
    EXPECT_EQ(back.begin, data.begin);
    EXPECT_EQ(back.end, data.end);
    EXPECT_EQ(bodyWrittenBy(back), body);
}
