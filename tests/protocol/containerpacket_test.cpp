// The packet view: stream format, positions, and going back with at() on reading and
// on writing.

#include "qcontainerpacket.h"
#include "telortest.h"

#include <gtest/gtest.h>

using telortest::plainBytes;

TEST(ContainerPacket, StreamFormat)
{
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        EXPECT_EQ(out.version(), QDataStream::Qt_5_15);
        EXPECT_EQ(out.byteOrder(), QDataStream::BigEndian);
        EXPECT_EQ(out.floatingPointPrecision(), QDataStream::DoublePrecision);
        out << qint32(1) << 2.5 << QStringLiteral("z");
    }
    EXPECT_EQ(bytes, plainBytes([](QDataStream &s) { s << qint32(1) << 2.5 << QStringLiteral("z"); }));
}

TEST(ContainerPacket, WritingAppendsToTheTarget)
{
    QByteArray bytes("ab");
    QContainerPacket out(&bytes);
    EXPECT_EQ(out.position(), 2u);
    out << qint8(3);
    EXPECT_EQ(bytes, QByteArray("ab\x03", 3));
    EXPECT_EQ(out.position(), 3u);
}

TEST(ContainerPacket, ReadingStartsAtZero)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(7) << qint32(8); });
    QContainerPacket in(bytes);
    EXPECT_EQ(in.position(), 0u);
    qint32 v = 0;
    in >> v;
    EXPECT_EQ(v, 7);
    EXPECT_EQ(in.position(), 4u);
    EXPECT_EQ(in.bytesLeft(), 4);
}

TEST(ContainerPacket, OverwriteAfterAtLeavesTheRestUnchanged)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    out << qint32(0x11111111);
    const unsigned int p = out.position();
    out << qint32(0) << qint32(0x22222222) << qint32(0x33333333);
    const unsigned int end = out.position();

    out.at(p);
    out << qint32(0x44444444);
    EXPECT_EQ(out.position(), p + 4);
    EXPECT_EQ(bytes.size(), 16);
    EXPECT_EQ(bytes, QByteArray::fromHex("11111111 44444444 22222222 33333333"));

    out.at(end);
    out << qint8(0x55);
    EXPECT_EQ(bytes, QByteArray::fromHex("11111111 44444444 22222222 33333333 55"));
}

TEST(ContainerPacket, BackPatchingACount)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    const unsigned int countAt = out.position();
    out << qint32(0);
    int count = 0;
    for (double v : {1.0, 2.0, 3.0}) {
        out << v;
        ++count;
    }
    const unsigned int end = out.position();
    out.at(countAt);
    out << qint32(count);
    out.at(end);
    out << qint8(9);
    EXPECT_EQ(bytes, plainBytes([](QDataStream &s) { s << qint32(3) << 1.0 << 2.0 << 3.0 << qint8(9); }));
}

TEST(ContainerPacket, RereadingAfterAtGivesTheSameResult)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(5) << QStringLiteral("same") << 4.5; });
    QContainerPacket in(bytes);
    qint32 skip = 0;
    in >> skip;
    const unsigned int p = in.position();
    QString first;
    double firstNumber = 0;
    in >> first >> firstNumber;
    in.at(p);
    QString second;
    double secondNumber = 0;
    in >> second >> secondNumber;
    EXPECT_EQ(first, QStringLiteral("same"));
    EXPECT_EQ(second, first);
    EXPECT_EQ(secondNumber, firstNumber);
    EXPECT_TRUE(in.atEnd());
}

TEST(ContainerPacket, RereadingATruncatedRecordGivesTheSameResult)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(5); }) + QByteArray(3, '\x01');
    QContainerPacket in(bytes);
    qint32 a = -1, b = -1;
    in >> a >> b;
    EXPECT_EQ(in.status(), QDataStream::ReadPastEnd);
    in.at(0);
    EXPECT_EQ(in.status(), QDataStream::Ok);
    qint32 c = -1, d = -1;
    in >> c >> d;
    EXPECT_EQ(a, c);
    EXPECT_EQ(b, d);
}

TEST(ContainerPacket, AtBeyondTheEndStopsAtTheEnd)
{
    QByteArray bytes("abcd");
    {
        QContainerPacket out(&bytes);
        out.at(1000);
        EXPECT_EQ(out.position(), 4u);
        EXPECT_EQ(bytes.size(), 4); // no gap is padded
    }
    QContainerPacket in(bytes);
    in.at(0xFFFFFFFFu);
    EXPECT_EQ(in.position(), 4u);
    qint32 v = 7;
    in >> v;
    EXPECT_EQ(v, 0);
}
