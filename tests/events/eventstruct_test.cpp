// The event record: identity, validity, equality, the message form and the stream form,
// their bytes and round trips, and how the header travels with copies.

#include "eventtest.h"

#include "qcontainerpacket.h"

#include <QtCore/QStringList>

using namespace eventtest;
using telortest::plainBytes;

namespace {

QByteArray streamFormOf(const EventStruct &event)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    s.setVersion(QDataStream::Qt_5_15);
    s << event;
    return bytes;
}

EventStruct readStreamForm(const QByteArray &bytes, QDataStream::Status *status = nullptr)
{
    QDataStream s(bytes);
    s.setVersion(QDataStream::Qt_5_15);
    EventStruct event;
    s >> event;
    if (status)
        *status = s.status();
    return event;
}

EventStruct readMessageBody(const QByteArray &body)
{
    EventStruct event;
    EXPECT_TRUE(readPacket(event, telortest::packetBytes(3, 17, 3, body)));
    return event;
}

} // namespace

TEST(EventRecord, NewRecordIsEmptyAndNotValid)
{
    const EventStruct event;
    EXPECT_FALSE(event.isValid());
    EXPECT_EQ(event.typeId, 0);
    EXPECT_EQ(event.eventMessage, 0);
    EXPECT_TRUE(event.dateTime.isNull());
    EXPECT_EQ(event.firstId, 0u);
    EXPECT_EQ(event.secondId, 0u);
    EXPECT_TRUE(event.parameters.isEmpty());
}

TEST(EventRecord, NewRecordCarriesIdentity3_17_3)
{
    const EventStruct event;
    EXPECT_EQ(identityOf(event), (QList<qint32>{3, 17, 3}));
}

TEST(EventRecord, FieldsHaveTheWidthsOfTheCatalogue)
{
    EventStruct event;
    event.typeId = 65535;
    event.eventMessage = 255;
    event.firstId = 0xFFFFFFFFu;
    EXPECT_EQ(sizeof(event.typeId), 2u);
    EXPECT_EQ(sizeof(event.eventMessage), 1u);
    EXPECT_EQ(sizeof(event.firstId), 4u);
    EXPECT_EQ(sizeof(event.secondId), 4u);
    EXPECT_EQ(event.typeId, 65535);
    EXPECT_EQ(event.eventMessage, 255);
}

TEST(EventRecord, AllFourNumbersNonZeroIsValid)
{
    EXPECT_TRUE(sampleEvent().isValid());
    EventStruct noDate = sampleEvent();
    noDate.dateTime = QDateTime();
    noDate.parameters.clear();
    EXPECT_TRUE(noDate.isValid());
}

TEST(EventRecord, AnyOneNumberAtZeroIsNotValid)
{
    for (int which = 0; which < 4; ++which) {
        EventStruct event = sampleEvent(0xFFFF, 0xFF, 0xFFFFFFFFu, 0xFFFFFFFFu);
        switch (which) {
        case 0: event.typeId = 0; break;
        case 1: event.eventMessage = 0; break;
        case 2: event.firstId = 0; break;
        case 3: event.secondId = 0; break;
        }
        EXPECT_FALSE(event.isValid()) << "number " << which << " at zero";
    }
}

TEST(EventRecord, RecordsDifferingOnlyInParametersCompareEqual)
{
    EventStruct a = sampleEvent();
    EventStruct b = sampleEvent();
    b.parameters.clear();
    b.parameters.insert(QStringLiteral("#new_bit_value"), 5u);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
}

TEST(EventRecord, HeaderIsNotCompared)
{
    EventStruct a = sampleEvent();
    EventStruct b = sampleEvent();
    b.setRoute(1, 2, 3);
    EXPECT_TRUE(a == b);
}

TEST(EventRecord, EachNumberAndTheDateTakePartInEquality)
{
    const EventStruct base = sampleEvent();
    for (int which = 0; which < 5; ++which) {
        EventStruct other = base;
        switch (which) {
        case 0: other.typeId += 1; break;
        case 1: other.eventMessage += 1; break;
        case 2: other.dateTime = other.dateTime.addMSecs(1); break;
        case 3: other.firstId += 1; break;
        case 4: other.secondId += 1; break;
        }
        EXPECT_FALSE(base == other) << "field " << which;
        EXPECT_TRUE(base != other) << "field " << which;
    }
}

TEST(EventRecord, DatesCompareAsInstants)
{
    EventStruct a = sampleEvent();
    EventStruct b = sampleEvent();
    b.dateTime = a.dateTime.toOffsetFromUtc(3 * 3600);
    EXPECT_TRUE(a == b);
}

TEST(EventRecordWire, MessageFormBytes)
{
    EventStruct event = sampleEvent(0x1234, 0x56, 0x789ABCDE, 0x0BADF00D);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << quint16(0x1234) << quint8(0x56) << quint32(0x789ABCDE) << when();
        s << quint32(1) << QStringLiteral("value") << QVariant(42.5);
        s << quint32(0x0BADF00D);
    });
    EXPECT_EQ(bodyWrittenBy(event), expected);
}

TEST(EventRecordWire, StreamFormBytes)
{
    const EventStruct event = sampleEvent(0x1234, 0x56, 0x789ABCDE, 0x0BADF00D);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << quint16(0x1234) << quint8(0x56) << quint32(0x789ABCDE) << quint32(0x0BADF00D) << when();
        s << quint32(1) << QStringLiteral("value") << QVariant(42.5);
    });
    EXPECT_EQ(streamFormOf(event), expected);
}

TEST(EventRecordWire, StreamFormHasNoHeader)
{
    EventStruct event;
    const QByteArray bytes = streamFormOf(event);
    // 2 + 1 + 4 + 4 bytes of numbers, a null QDateTime and a count of 0.
    const QByteArray nullDate = plainBytes([](QDataStream &s) { s << QDateTime(); });
    EXPECT_EQ(bytes.size(), 11 + nullDate.size() + 4);
}

TEST(EventRecordWire, EmptyParametersTravelAsCountZero)
{
    EventStruct event = sampleEvent();
    event.parameters.clear();
    const QByteArray message = bodyWrittenBy(event);
    const QByteArray stream = streamFormOf(event);
    const QByteArray dateBytes = plainBytes([](QDataStream &s) { s << when(); });
    // Message form: numbers, date, count 0, secondId.
    EXPECT_EQ(message.mid(7 + dateBytes.size(), 4), QByteArray(4, '\0'));
    EXPECT_EQ(message.size(), 7 + dateBytes.size() + 4 + 4);
    // Stream form: the count 0 is the last thing written.
    EXPECT_EQ(stream.right(4), QByteArray(4, '\0'));
    EXPECT_EQ(stream.size(), 11 + dateBytes.size() + 4);
}

TEST(EventRecordWire, ParametersGoOutFromTheLastEntryToTheFirst)
{
    EventStruct event = sampleEvent();
    event.parameters.clear();
    for (int i = 0; i < 12; ++i)
        event.parameters.insert(QStringLiteral("key%1").arg(i), i * 10);
    const QByteArray expected = plainBytes([&](QDataStream &s) { writeStreamForm(s, event); });
    EXPECT_EQ(streamFormOf(event), expected);
    const QByteArray expectedMessage = plainBytes([&](QDataStream &s) { writeMessageForm(s, event); });
    EXPECT_EQ(bodyWrittenBy(event), expectedMessage);
}

TEST(EventRecordWire, RepeatedKeysAreAllWrittenAndAllReadBack)
{
    EventStruct event = sampleEvent();
    static_cast<QMultiHash<QString, QVariant> &>(event.parameters).insert(QStringLiteral("value"), QVariant(7));
    ASSERT_EQ(event.parameters.count(QStringLiteral("value")), 2);
    EXPECT_EQ(streamFormOf(event), plainBytes([&](QDataStream &s) { writeStreamForm(s, event); }));

    const EventStruct back = readStreamForm(streamFormOf(event));
    EXPECT_EQ(back.parameters.count(QStringLiteral("value")), 2);
    // The most recently inserted value is found first again.
    EXPECT_EQ(back.parameters.value(QStringLiteral("value")), QVariant(7));
    const auto &backMulti = static_cast<const QMultiHash<QString, QVariant> &>(back.parameters);
    const auto &sentMulti = static_cast<const QMultiHash<QString, QVariant> &>(event.parameters);
    EXPECT_EQ(backMulti.values(QStringLiteral("value")), sentMulti.values(QStringLiteral("value")));
}

TEST(EventRecordWire, RepeatedKeyOnTheWireIsNotReplaced)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(1) << quint8(2) << quint32(3) << when();
        s << quint32(2) << QStringLiteral("k") << QVariant(1) << QStringLiteral("k") << QVariant(2);
        s << quint32(4);
    });
    const EventStruct event = readMessageBody(body);
    EXPECT_EQ(event.parameters.size(), 2);
    EXPECT_EQ(event.parameters.value(QStringLiteral("k")), QVariant(2));
    EXPECT_EQ(event.secondId, 4u);
}

TEST(EventRecordWire, MessageRoundTrip)
{
    EventStruct event = sampleEvent(65535, 255, 0xFFFFFFFFu, 0x80000000u);
    event.parameters.insert(QStringLiteral("#old_bit_value"), 3u);
    event.parameters.insert(QStringLiteral("#new_bit_state"), 4096);
    event.parameters.insert(QStringLiteral("text"), QStringLiteral("Pressure high"));
    event.parameters.insert(QStringLiteral("list"), QVariantList{1, QStringLiteral("two"), 3.0});
    const QByteArray packet = event.write();

    EventStruct back;
    back.typeId = 9;
    EXPECT_TRUE(readPacket(back, packet));
    expectSameRecord(back, event);
}

TEST(EventRecordWire, RecordAsAServerSendsIt)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(40) << quint8(2) << quint32(900) << when();
        s << quint32(1) << QStringLiteral("#new_bit_value") << QVariant(0x11u);
        s << quint32(901);
    });
    EventStruct event;
    ASSERT_TRUE(readPacket(event, telortest::packetBytes(3, 17, 3, body, 5, 6, 7)));
    EXPECT_EQ(event.typeId, 40);
    EXPECT_EQ(event.eventMessage, 2);
    EXPECT_EQ(event.firstId, 900u);
    EXPECT_EQ(event.dateTime, when());
    EXPECT_EQ(event.secondId, 901u);
    EXPECT_EQ(event.parameters.value(QStringLiteral("#new_bit_value")).toUInt(), 0x11u);
    EXPECT_EQ(headerWords(event), (QList<qint32>{3, 17, 3, 1, body.size(), 5, 6, 7}));
}

TEST(EventRecordWire, StreamRoundTrip)
{
    EventStruct event = sampleEvent(7, 8, 9, 10);
    event.parameters.insert(QStringLiteral("when"), QDateTime(QDate(2024, 1, 2), QTime(3, 4), Qt::UTC));
    event.parameters.insert(QStringLiteral("map"), QVariantMap{{QStringLiteral("a"), 1}});
    QDataStream::Status status = QDataStream::Ok;
    const EventStruct back = readStreamForm(streamFormOf(event), &status);
    EXPECT_EQ(status, QDataStream::Ok);
    expectSameRecord(back, event);
}

TEST(EventRecordWire, StreamReadLeavesTheHeaderAsItIs)
{
    EventStruct target;
    target.setRoute(4, 5, 6);
    QDataStream s(streamFormOf(sampleEvent()));
    s.setVersion(QDataStream::Qt_5_15);
    s >> target;
    EXPECT_EQ(headerWords(target), (QList<qint32>{3, 17, 3, 1, 0, 4, 5, 6}));
}

TEST(EventRecordWire, StreamFormDoesNotReadAsMessageForm)
{
    const EventStruct event = sampleEvent(1, 2, 3, 0x01020304);
    const EventStruct misread = readMessageBody(streamFormOf(event));
    // The first three numbers agree; after firstId the two encodings differ.
    EXPECT_EQ(misread.typeId, 1);
    EXPECT_EQ(misread.eventMessage, 2);
    EXPECT_EQ(misread.firstId, 3u);
    EXPECT_FALSE(misread == event);
    EXPECT_NE(misread.dateTime, event.dateTime);
}

TEST(EventRecordWire, MessageFormDoesNotReadAsStreamForm)
{
    EventStruct event = sampleEvent(1, 2, 3, 0x01020304);
    const EventStruct misread = readStreamForm(bodyWrittenBy(event));
    EXPECT_EQ(misread.typeId, 1);
    EXPECT_EQ(misread.eventMessage, 2);
    EXPECT_EQ(misread.firstId, 3u);
    EXPECT_FALSE(misread == event);
    EXPECT_NE(misread.secondId, event.secondId);
}

TEST(EventRecordWire, ReadEmptiesTheParametersFirst)
{
    EventStruct target;
    target.parameters.insert(QStringLiteral("old"), 1);
    EventStruct event = sampleEvent();
    ASSERT_TRUE(readPacket(target, event.write()));
    EXPECT_FALSE(target.parameters.contains(QStringLiteral("old")));
    EXPECT_EQ(target.parameters, event.parameters);
}

TEST(EventRecordWire, ParametersThatRunOutAreLeftEmpty)
{
    // Two entries announced, one there: the hash is left empty, and secondId reads as 0.
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(1) << quint8(2) << quint32(3) << when();
        s << quint32(2) << QStringLiteral("k") << QVariant(1);
    });
    const EventStruct event = readMessageBody(body);
    EXPECT_TRUE(event.parameters.isEmpty());
    EXPECT_EQ(event.secondId, 0u);
    EXPECT_EQ(event.firstId, 3u);
}

TEST(EventRecordWire, TruncatedBodyReadsAsZerosAndReadIsStillTrue)
{
    EventStruct event = sampleEvent();
    event.parameters.clear();
    ASSERT_TRUE(readPacket(event, telortest::packetBytes(3, 17, 3, QByteArray("\x00\x05", 2))));
    EXPECT_EQ(event.typeId, 5);
    EXPECT_EQ(event.eventMessage, 0);
    EXPECT_EQ(event.firstId, 0u);
    EXPECT_EQ(event.secondId, 0u);
    // The date is what Qt's own reader makes of no bytes at all.
    QDateTime fromNothing = when();
    QDataStream nothing(QByteArray{});
    nothing.setVersion(QDataStream::Qt_5_15);
    nothing >> fromNothing;
    EXPECT_EQ(event.dateTime, fromNothing);
    EXPECT_TRUE(event.parameters.isEmpty());
}

TEST(EventRecordWire, TruncatedStreamFormLeavesTheStreamBad)
{
    QDataStream::Status status = QDataStream::Ok;
    const QByteArray bytes = streamFormOf(sampleEvent());
    readStreamForm(bytes.left(bytes.size() - 1), &status);
    EXPECT_NE(status, QDataStream::Ok);
}

TEST(EventRecordCopy, ListCopiesCopyTheHeader)
{
    // A record read from a packet whose header differs from the constructor's stamp.
    EventStruct empty;
    EventStruct received;
    ASSERT_TRUE(readPacket(received, telortest::packetBytes(9, 8, 7, bodyWrittenBy(empty), 11, 12, 13)));
    QList<EventStruct> list;
    list.append(received);
    EXPECT_EQ(headerWords(list.first()), headerWords(received));
    EXPECT_EQ(identityOf(list.first()), (QList<qint32>{9, 8, 7}));
    const QList<EventStruct> copy = list;
    EXPECT_EQ(headerWords(copy.first()), headerWords(received));
    const EventStruct plainCopy = received;
    EXPECT_EQ(headerWords(plainCopy), headerWords(received));
}
