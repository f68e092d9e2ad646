// The stand-alone data stream: its own storage, the caller's array, opening and closing.

#include "telorstream.h"
#include "telortest.h"

#include <gtest/gtest.h>

#include <memory>

using telortest::plainBytes;

TEST(TelorStream, OwnStorageWritesAndReadsBack)
{
    TELORDataStream stream;
    EXPECT_TRUE(stream.openToWrite());
    stream << qint32(0x0A0B0C0D) << QStringLiteral("tag");
    stream.close();
    EXPECT_EQ(stream.data(), plainBytes([](QDataStream &s) { s << qint32(0x0A0B0C0D) << QStringLiteral("tag"); }));

    EXPECT_TRUE(stream.openToRead());
    qint32 v = 0;
    QString t;
    stream >> v >> t;
    EXPECT_EQ(v, 0x0A0B0C0D);
    EXPECT_EQ(t, QStringLiteral("tag"));
}

TEST(TelorStream, CallersArrayReceivesExactlyWhatIsWritten)
{
    QByteArray side;
    {
        TELORDataStream stream(&side);
        stream.openToWrite();
        stream << qint32(0xAA55AA55);
        stream.close();
    }
    EXPECT_EQ(side, QByteArray::fromHex("AA55AA55"));
    // A second stream on the same array appends.
    {
        TELORDataStream stream(&side);
        stream.openToWrite();
        stream << qint8(1);
        stream.close();
    }
    EXPECT_EQ(side, QByteArray::fromHex("AA55AA55 01"));
}

TEST(TelorStream, ReadsTheCallersBytes)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << quint32(2) << 3.5; });
    TELORDataStream stream(bytes);
    stream.openToRead();
    quint32 n = 0;
    double d = 0;
    stream >> n >> d;
    EXPECT_EQ(n, 2u);
    EXPECT_EQ(d, 3.5);
    EXPECT_EQ(stream.status(), QDataStream::Ok);
    EXPECT_EQ(stream.version(), QDataStream::Qt_5_15);
}

TEST(TelorStream, OpenToReadIsHarmlessWithoutData)
{
    TELORDataStream empty;
    empty.openToRead();
    qint32 v = 9;
    empty >> v;
    EXPECT_EQ(v, 0);
    TELORDataStream emptyArray{QByteArray()};
    emptyArray.openToRead();
    emptyArray >> v;
    EXPECT_EQ(v, 0);
}

TEST(TelorStream, DestroyedWhileOpenThroughBasePointer)
{
    QByteArray side;
    std::unique_ptr<TELORStream> stream(new TELORDataStream(&side));
    stream->openToWrite();
    *stream << qint16(3);
    stream.reset(); // virtual destructor, stream still open
    EXPECT_EQ(side, QByteArray::fromHex("0003"));
}
