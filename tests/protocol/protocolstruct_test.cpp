// The message frame: header words and their bytes, write/setPacket/read of untyped and
// typed messages, replyTo and routing.

#include "qcontainerpacket.h"
#include "messageheader.h"
#include "qprotocolstruct.h"
#include "telortest.h"

#include <gtest/gtest.h>

using telortest::headerWords;
using telortest::identityOf;
using telortest::packetBytes;
using telortest::plainBytes;

namespace {

/** A typed message with two fields, as a message class of the library is written. */
class SampleMessage : public QProtocolStruct
{
public:
    SampleMessage()
    {
        serviceId = 3;
        messageId = 8;
        messageType = 1;
    }
    void writePrivate(QContainerPacket &packet) const override { packet << number << text; }
    bool readPrivate(QContainerPacket &packet) override
    {
        packet >> number >> text;
        return number != 0;
    }
    qint32 number = 0;
    QString text;
};

/** A message that leaves its identity as the base sets it. */
class UnstampedMessage : public QProtocolStruct
{
};

} // namespace

TEST(ProtocolStruct, DefaultHeader)
{
    QProtocolStruct message;
    EXPECT_EQ(headerWords(message), (QList<qint32>{0, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_TRUE(message.packet().isEmpty());
}

TEST(ProtocolStruct, UntypedMessageWritesHeaderOnly)
{
    QProtocolStruct message;
    message.setRoute(0x0A0B0C0D, -2, 7);
    const QByteArray bytes = message.write();
    EXPECT_EQ(bytes, QByteArray::fromHex("00000000 00000000 00000000 00000001 00000000 0A0B0C0D FFFFFFFE 00000007"));
    EXPECT_EQ(message.packet(), bytes);

    QProtocolStruct received;
    received.setPacket(bytes);
    EXPECT_TRUE(received.read()); // an empty body reads as true
    EXPECT_EQ(received.getHeader().source, 0x0A0B0C0D);
    EXPECT_EQ(received.getHeader().session, -2);
    EXPECT_EQ(received.getHeader().sequence, 7);
}

TEST(ProtocolStruct, TypedMessageBytes)
{
    SampleMessage message;
    message.number = 42;
    message.text = QStringLiteral("ab");
    message.setRoute(1, 2, 3);
    const QByteArray body = plainBytes([](QDataStream &s) { s << qint32(42) << QStringLiteral("ab"); });
    EXPECT_EQ(message.write(), packetBytes(3, 8, 1, body, 1, 2, 3));
    EXPECT_EQ(message.getHeader().bodyLength, body.size());
}

TEST(ProtocolStruct, TypedRoundTripThroughUntyped)
{
    SampleMessage sent;
    sent.number = -9;
    sent.text = QStringLiteral("value");
    sent.setRoute(10, 20, 30);
    sent.write();

    // The transport hands the bytes over as an untyped message.
    QProtocolStruct transported;
    transported.setPacket(sent.packet());
    ASSERT_TRUE(transported.read());
    EXPECT_EQ(identityOf(transported), (QList<qint32>{3, 8, 1}));

    // The receiver reads its typed message from the untyped one.
    UnstampedMessage unused;
    SampleMessage received;
    received.number = 0;
    received.setPacket(transported);
    ASSERT_TRUE(received.read());
    EXPECT_EQ(received.number, -9);
    EXPECT_EQ(received.text, QStringLiteral("value"));
    EXPECT_EQ(received.getHeader().source, 10);
    EXPECT_EQ(received.getHeader().sequence, 30);
}

TEST(ProtocolStruct, ReadTakesTheIdentityFromThePacket)
{
    UnstampedMessage result;
    result.setPacket(packetBytes(2, 1, 4, QByteArray(), 5, 6, 7));
    ASSERT_TRUE(result.read());
    EXPECT_EQ(identityOf(result), (QList<qint32>{2, 1, 4}));
    EXPECT_EQ(result.getHeader().session, 6);
}

TEST(ProtocolStruct, ReadPrivateDecides)
{
    SampleMessage m;
    m.setPacket(packetBytes(3, 8, 1, plainBytes([](QDataStream &s) { s << qint32(0) << QString(); })));
    EXPECT_FALSE(m.read());
}

TEST(ProtocolStruct, ShortPacketIsFalse)
{
    SampleMessage m;
    m.number = 5;
    m.setPacket(QByteArray(31, '\0'));
    EXPECT_FALSE(m.read());
    EXPECT_EQ(m.number, 5);
    EXPECT_EQ(m.getHeader().serviceId, 3);
    QProtocolStruct empty;
    EXPECT_FALSE(empty.read());
}

TEST(ProtocolStruct, TruncatedBodyReadsZeros)
{
    SampleMessage m;
    m.number = 77;
    m.setPacket(packetBytes(3, 8, 1, QByteArray::fromHex("0000")));
    EXPECT_FALSE(m.read());
    EXPECT_EQ(m.number, 0);
}

TEST(ProtocolStruct, BodyLengthWordLimitsTheBody)
{
    // The length word says 4 bytes; what follows them is not part of the body.
    QByteArray bytes = packetBytes(3, 8, 1, plainBytes([](QDataStream &s) { s << qint32(5) << QStringLiteral("x"); }));
    bytes[19] = 4;
    SampleMessage m;
    m.setPacket(bytes);
    EXPECT_TRUE(m.read());
    EXPECT_EQ(m.number, 5);
    EXPECT_TRUE(m.text.isEmpty()); // the text lies beyond the body

    // A length word beyond the bytes that are there reads what is there.
    bytes[19] = 100;
    SampleMessage n;
    n.setPacket(bytes);
    EXPECT_TRUE(n.read());
    EXPECT_EQ(n.text, QStringLiteral("x"));
}

TEST(ProtocolStruct, ReplyToCopiesIdentityAndRouting)
{
    SampleMessage query;
    query.setRoute(11, 12, 13);
    UnstampedMessage answer;
    answer.setRoute(1, 1, 1);
    answer.replyTo(query);
    EXPECT_EQ(headerWords(answer), (QList<qint32>{3, 8, 1, 1, 0, 11, 12, 13}));
}

TEST(ProtocolStruct, CopyKeepsHeaderAndPacket)
{
    SampleMessage m;
    m.number = 1;
    m.setRoute(4, 5, 6);
    m.write();
    SampleMessage copy(m);
    EXPECT_EQ(copy.getHeader().session, 5);
    EXPECT_EQ(copy.packet(), m.packet());
    UnstampedMessage other;
    static_cast<QProtocolStruct &>(other) = m;
    EXPECT_EQ(other.getHeader().serviceId, 3);
}

TEST(ProtocolStruct, RewriteHeader)
{
    SampleMessage m;
    m.number = 3;
    m.write();
    m.setRoute(9, 9, 9);
    m.rewriteHeader();
    EXPECT_EQ(m.packet(), packetBytes(3, 8, 1, plainBytes([](QDataStream &s) { s << qint32(3) << QString(); }), 9, 9, 9));
    QProtocolStruct nothing;
    nothing.rewriteHeader();
    EXPECT_TRUE(nothing.packet().isEmpty());
}
