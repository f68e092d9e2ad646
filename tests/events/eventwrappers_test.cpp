// The two messages that wrap an event record: the header of the record they carry, their
// bodies in the stream form and the read flag.

#include "eventtest.h"

#include "eventstructwithreaded.h"
#include "registratoreventstruct.h"

using namespace eventtest;
using telortest::plainBytes;

namespace {

/** A record whose header came from a received packet: identity 3, 17, 3, route 21, 22, 23. */
EventStruct receivedEvent()
{
    EventStruct source = sampleEvent();
    EventStruct received;
    EXPECT_TRUE(readPacket(received, telortest::packetBytes(3, 17, 3, bodyWrittenBy(source), 21, 22, 23)));
    return received;
}

const QList<qint32> defaultHeader{0, 0, 0, 1, 0, 0, 0, 0};

} // namespace

TEST(RegistratorEvent, HoldsACopyOfTheRecordWithItsHeader)
{
    const EventStruct event = receivedEvent();
    const RegistratorEventStruct message(event);
    expectSameRecord(message.event, event);
    EXPECT_EQ(headerWords(message.event), headerWords(event));
    EXPECT_EQ(headerWords(message.event), (QList<qint32>{3, 17, 3, 1, headerWords(event).at(4), 21, 22, 23}));
}

TEST(RegistratorEvent, OuterHeaderKeepsTheDefault)
{
    const RegistratorEventStruct message(receivedEvent());
    EXPECT_EQ(headerWords(message), defaultHeader);
}

TEST(RegistratorEvent, BodyIsTheStreamForm)
{
    EventStruct event = sampleEvent(0x0102, 0x03, 0x04050607, 0x08090A0B);
    event.parameters.insert(QStringLiteral("second"), QStringLiteral("two"));
    RegistratorEventStruct message(event);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << quint16(0x0102) << quint8(0x03) << quint32(0x04050607) << quint32(0x08090A0B) << when();
        telortest::plainHash(s, event.parameters);
    });
    EXPECT_EQ(bodyWrittenBy(message), expected);
}

TEST(RegistratorEvent, RoundTrip)
{
    RegistratorEventStruct message(sampleEvent(5, 6, 7, 8));
    const QByteArray packet = message.write();
    RegistratorEventStruct back{EventStruct()};
    EXPECT_TRUE(readPacket(back, packet));
    expectSameRecord(back.event, message.event);
    // The record inside keeps its own header: the body has none.
    EXPECT_EQ(identityOf(back.event), (QList<qint32>{3, 17, 3}));
}

TEST(RegistratorEvent, AsASenderSendsIt)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(30) << quint8(1) << quint32(500) << quint32(501) << when();
        s << quint32(0);
    });
    RegistratorEventStruct message{EventStruct()};
    ASSERT_TRUE(readPacket(message, telortest::packetBytes(3, 40, 3, body, 1, 2, 3)));
    EXPECT_EQ(message.event.typeId, 30);
    EXPECT_EQ(message.event.eventMessage, 1);
    EXPECT_EQ(message.event.firstId, 500u);
    EXPECT_EQ(message.event.secondId, 501u);
    EXPECT_EQ(message.event.dateTime, when());
    EXPECT_EQ(identityOf(message), (QList<qint32>{3, 40, 3}));
}

TEST(RegistratorEvent, EmptyBodyReadsAsTrue)
{
    RegistratorEventStruct message(sampleEvent());
    EXPECT_TRUE(readPacket(message, telortest::packetBytes(3, 40, 3, QByteArray())));
    EXPECT_EQ(message.event.typeId, 0);
    EXPECT_TRUE(message.event.parameters.isEmpty());
}

TEST(EventWithReaded, ConstructorTakesRecordAndFlagAndStampsNothing)
{
    const EventStruct event = receivedEvent();
    const EventStructWithReaded message(event, true);
    EXPECT_TRUE(message.readed);
    expectSameRecord(message.event, event);
    EXPECT_EQ(headerWords(message.event), headerWords(event));
    EXPECT_EQ(headerWords(message), defaultHeader);
}

TEST(EventWithReaded, FalseStillWritesItsByte)
{
    EventStruct event = sampleEvent();
    EventStructWithReaded message(event, false);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeStreamForm(s, event);
        s << false;
    });
    const QByteArray body = bodyWrittenBy(message);
    EXPECT_EQ(body, expected);
    EXPECT_EQ(body.right(1), QByteArray(1, '\0'));
}

TEST(EventWithReaded, TrueWritesOne)
{
    EventStructWithReaded message(sampleEvent(), true);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeStreamForm(s, sampleEvent());
        s << true;
    });
    EXPECT_EQ(bodyWrittenBy(message), expected);
    EXPECT_EQ(bodyWrittenBy(message).right(1), QByteArray(1, '\1'));
}

TEST(EventWithReaded, RoundTripBothFlags)
{
    for (bool readed : {false, true}) {
        EventStructWithReaded message(sampleEvent(1, 2, 3, 4), readed);
        const QByteArray packet = message.write();
        EventStructWithReaded back(EventStruct(), !readed);
        EXPECT_TRUE(readPacket(back, packet));
        EXPECT_EQ(back.readed, readed);
        expectSameRecord(back.event, message.event);
    }
}

TEST(EventWithReaded, AsASenderSendsIt)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(30) << quint8(1) << quint32(500) << quint32(501) << when();
        s << quint32(1) << QStringLiteral("x") << QVariant(true);
        s << true;
    });
    EventStructWithReaded message(EventStruct(), false);
    ASSERT_TRUE(readPacket(message, telortest::packetBytes(3, 41, 3, body)));
    EXPECT_TRUE(message.readed);
    EXPECT_EQ(message.event.secondId, 501u);
    EXPECT_EQ(message.event.parameters.value(QStringLiteral("x")), QVariant(true));
}

TEST(EventWithReaded, EmptyBodyReadsAsTrue)
{
    EventStructWithReaded message(sampleEvent(), true);
    EXPECT_TRUE(readPacket(message, telortest::packetBytes(3, 41, 3, QByteArray())));
    EXPECT_FALSE(message.readed);
}
