// The frame reader alone: whole frames out of bytes that arrive in pieces of any size, and
// the refusal of a stream whose body-length word is negative or too large.

#include "linktest.h"

#include "allocationprobe.h"
#include "telorframereader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

using linktest::echoFrame;
using linktest::headerWithLength;

namespace {

/** Three frames of different sizes, one with an empty body, as one stream. */
QList<QByteArray> threeFrames()
{
    QProtocolStruct bare;
    return {echoFrame(1, QStringLiteral("first")), bare.write(), echoFrame(3, QString(300, QLatin1Char('x')))};
}

QByteArray joined(const QList<QByteArray> &frames)
{
    QByteArray all;
    for (const QByteArray &f : frames)
        all += f;
    return all;
}

QList<QByteArray> takeAll(TELORFrameReader &reader)
{
    QList<QByteArray> frames;
    while (reader.hasFrame())
        frames.append(reader.takeFrame());
    return frames;
}

} // namespace

TEST(FrameReader, OneWrittenMessageIsOneFrame)
{
    const QByteArray frame = echoFrame(42, QStringLiteral("pressure"));
    TELORFrameReader reader;
    EXPECT_FALSE(reader.hasFrame());
    EXPECT_TRUE(reader.append(frame));
    ASSERT_TRUE(reader.hasFrame());
    EXPECT_EQ(reader.frameCount(), 1);
    EXPECT_EQ(reader.takeFrame(), frame);
    EXPECT_FALSE(reader.hasFrame());
    EXPECT_EQ(reader.bufferedBytes(), 0);
    EXPECT_FALSE(reader.hasError());
    EXPECT_TRUE(reader.errorString().isEmpty());
}

TEST(FrameReader, FrameBytesAreTheHeaderAndAsManyBodyBytesAsTheLengthWordSays)
{
    // Built by hand: 32 header bytes with a body length of 5, then 5 body bytes, then 2
    // bytes of the next header.
    const QByteArray frame = telortest::packetBytes(2, 1, 1, QByteArray("abcde"), 7, 8, 9);
    ASSERT_EQ(frame.size(), 37);
    TELORFrameReader reader;
    EXPECT_TRUE(reader.append(frame + QByteArray("\0\0", 2)));
    EXPECT_EQ(reader.takeFrame(), frame);
    EXPECT_FALSE(reader.hasFrame());
    EXPECT_EQ(reader.bufferedBytes(), 2);
}

TEST(FrameReader, SplitIntoTwoPiecesAtEveryByteBoundary)
{
    const QList<QByteArray> frames = threeFrames();
    const QByteArray stream = joined(frames);
    for (int cut = 0; cut <= stream.size(); ++cut) {
        TELORFrameReader reader;
        EXPECT_TRUE(reader.append(stream.left(cut)));
        QList<QByteArray> got = takeAll(reader);
        EXPECT_TRUE(reader.append(stream.mid(cut)));
        got += takeAll(reader);
        ASSERT_EQ(got, frames) << "cut at byte " << cut;
        EXPECT_EQ(reader.bufferedBytes(), 0);
    }
}

TEST(FrameReader, OneByteAtATimeYieldsEachFrameWhenItsLastByteArrives)
{
    const QList<QByteArray> frames = threeFrames();
    const QByteArray stream = joined(frames);
    TELORFrameReader reader;
    QList<QByteArray> got;
    int end = 0;
    QList<int> ends;
    for (const QByteArray &f : frames)
        ends.append(end += f.size());
    for (int i = 0; i < stream.size(); ++i) {
        ASSERT_TRUE(reader.append(stream.mid(i, 1)));
        EXPECT_EQ(reader.hasFrame(), ends.contains(i + 1)) << "after byte " << i;
        got += takeAll(reader);
    }
    EXPECT_EQ(got, frames);
}

TEST(FrameReader, EveryPieceSizeGivesTheSameFrames)
{
    const QList<QByteArray> frames = threeFrames();
    const QByteArray stream = joined(frames);
    for (int piece = 1; piece <= stream.size(); ++piece) {
        TELORFrameReader reader;
        QList<QByteArray> got;
        for (int at = 0; at < stream.size(); at += piece) {
            ASSERT_TRUE(reader.append(stream.mid(at, piece)));
            got += takeAll(reader);
        }
        ASSERT_EQ(got, frames) << "pieces of " << piece;
    }
}

TEST(FrameReader, SeveralFramesInOneAppendAreAllThereInOrder)
{
    QList<QByteArray> frames;
    for (int i = 0; i < 50; ++i)
        frames.append(echoFrame(i, QString(i, QLatin1Char('a'))));
    TELORFrameReader reader;
    EXPECT_TRUE(reader.append(joined(frames)));
    EXPECT_EQ(reader.frameCount(), 50);
    EXPECT_EQ(takeAll(reader), frames);
}

TEST(FrameReader, FramesNotTakenStayWhileMoreBytesArrive)
{
    const QList<QByteArray> frames = threeFrames();
    TELORFrameReader reader;
    EXPECT_TRUE(reader.append(frames[0]));
    EXPECT_TRUE(reader.append(frames[1].left(10)));
    EXPECT_EQ(reader.takeFrame(), frames[0]);
    EXPECT_TRUE(reader.append(frames[1].mid(10) + frames[2]));
    EXPECT_EQ(takeAll(reader), frames.mid(1));
}

TEST(FrameReader, NoFrameGivesAnEmptyArray)
{
    TELORFrameReader reader;
    EXPECT_TRUE(reader.takeFrame().isEmpty());
    EXPECT_TRUE(reader.append(QByteArray()));
    EXPECT_TRUE(reader.append(QByteArray(31, '\0')));
    EXPECT_FALSE(reader.hasFrame());
    EXPECT_TRUE(reader.takeFrame().isEmpty());
}

TEST(FrameReader, NegativeLengthWordRefusesTheStream)
{
    TELORFrameReader reader;
    EXPECT_FALSE(reader.append(headerWithLength(-1)));
    EXPECT_TRUE(reader.hasError());
    EXPECT_EQ(reader.errorString(), QStringLiteral("body length -1 is negative"));
    EXPECT_FALSE(reader.hasFrame());
    // Nothing more is taken.
    EXPECT_FALSE(reader.append(echoFrame(1)));
    EXPECT_FALSE(reader.hasFrame());
}

TEST(FrameReader, SmallestNegativeLengthWord)
{
    TELORFrameReader reader;
    EXPECT_FALSE(reader.append(headerWithLength(std::numeric_limits<qint32>::min())));
    EXPECT_EQ(reader.errorString(), QStringLiteral("body length -2147483648 is negative"));
}

TEST(FrameReader, OversizedLengthWordRefusesTheStream)
{
    TELORFrameReader reader;
    EXPECT_EQ(reader.maxBodyLength(), 64 * 1024 * 1024);
    EXPECT_FALSE(reader.append(headerWithLength(0x7FFFFFFF)));
    EXPECT_EQ(reader.errorString(), QStringLiteral("body length 2147483647 above the limit 67108864"));
    EXPECT_FALSE(reader.append(QByteArray(1, 'x')));
}

TEST(FrameReader, BadLengthIsSeenAsSoonAsItsHeaderIsWholeEvenInPieces)
{
    const QByteArray bad = headerWithLength(-7);
    TELORFrameReader reader;
    for (int i = 0; i < bad.size() - 1; ++i)
        ASSERT_TRUE(reader.append(bad.mid(i, 1))) << "byte " << i;
    EXPECT_FALSE(reader.append(bad.right(1)));
    EXPECT_EQ(reader.errorString(), QStringLiteral("body length -7 is negative"));
}

TEST(FrameReader, FramesBeforeABadLengthWordCanStillBeTaken)
{
    const QByteArray good = echoFrame(5, QStringLiteral("before"));
    TELORFrameReader reader;
    EXPECT_FALSE(reader.append(good + good + headerWithLength(-1) + good));
    EXPECT_EQ(reader.frameCount(), 2);
    EXPECT_EQ(takeAll(reader), (QList<QByteArray>{good, good}));
    EXPECT_TRUE(reader.hasError());
}

TEST(FrameReader, TheLimitItselfIsAcceptedOneMoreIsNot)
{
    TELORFrameReader reader;
    reader.setMaxBodyLength(100);
    const QByteArray atLimit = telortest::packetBytes(3, 1, 1, QByteArray(100, 'b'));
    EXPECT_TRUE(reader.append(atLimit));
    EXPECT_EQ(reader.takeFrame(), atLimit);
    EXPECT_FALSE(reader.append(telortest::packetBytes(3, 1, 1, QByteArray(101, 'b'))));
    EXPECT_EQ(reader.errorString(), QStringLiteral("body length 101 above the limit 100"));
}

TEST(FrameReader, LimitIsKeptWithinItsBounds)
{
    TELORFrameReader reader;
    reader.setMaxBodyLength(-5);
    EXPECT_EQ(reader.maxBodyLength(), 0);
    EXPECT_TRUE(reader.append(headerWithLength(0)));
    EXPECT_EQ(reader.frameCount(), 1);
    EXPECT_FALSE(reader.append(headerWithLength(1)));
    EXPECT_EQ(reader.errorString(), QStringLiteral("body length 1 above the limit 0"));

    reader.setMaxBodyLength(std::numeric_limits<qint64>::max());
    EXPECT_EQ(reader.maxBodyLength(), TELORFrameReader::MaxBodyLengthLimit);
    EXPECT_EQ(TELORFrameReader::MaxBodyLengthLimit, 1024 * 1024 * 1024);
}

TEST(FrameReader, ANewLimitAppliesToHeadersNotYetWhole)
{
    TELORFrameReader reader;
    const QByteArray frame = telortest::packetBytes(3, 1, 1, QByteArray(50, 'c'));
    EXPECT_TRUE(reader.append(frame.left(20)));
    reader.setMaxBodyLength(49);
    EXPECT_FALSE(reader.append(frame.mid(20)));
    EXPECT_EQ(reader.errorString(), QStringLiteral("body length 50 above the limit 49"));
}

TEST(FrameReader, ClearForgetsBytesFramesAndFaultButKeepsTheLimit)
{
    TELORFrameReader reader;
    reader.setMaxBodyLength(10);
    EXPECT_FALSE(reader.append(echoFrame(1) + headerWithLength(11)));
    reader.clear();
    EXPECT_FALSE(reader.hasError());
    EXPECT_FALSE(reader.hasFrame());
    EXPECT_EQ(reader.bufferedBytes(), 0);
    EXPECT_EQ(reader.maxBodyLength(), 10);
    const QByteArray small = telortest::packetBytes(3, 1, 1, QByteArray(10, 'd'));
    EXPECT_TRUE(reader.append(small));
    EXPECT_EQ(reader.takeFrame(), small);
}

TEST(FrameReader, UnfinishedFrameHoldsOnlyTheBytesThatArrived)
{
    // A header announcing 60 MiB: the reader keeps the few bytes it has and reserves
    // nothing for the rest.
    TELORFrameReader reader;
    const QByteArray header = headerWithLength(60 * 1024 * 1024);
    if (telortest::AllocationProbe::available()) {
        telortest::AllocationProbe probe;
        EXPECT_TRUE(reader.append(header));
        EXPECT_TRUE(reader.append(QByteArray(1000, 'e')));
        EXPECT_LT(probe.largestRequest(), std::size_t(64 * 1024));
    } else {
        EXPECT_TRUE(reader.append(header));
        EXPECT_TRUE(reader.append(QByteArray(1000, 'e')));
    }
    EXPECT_EQ(reader.bufferedBytes(), 32 + 1000);
    EXPECT_FALSE(reader.hasFrame());
}

TEST(FrameReader, TakenBytesAreDroppedSoTheBufferDoesNotGrow)
{
    // Many frames through one reader, each followed by part of the next: what is held
    // stays below two frames.
    const QByteArray frame = echoFrame(9, QString(100, QLatin1Char('z')));
    TELORFrameReader reader;
    const QByteArray stream = frame.repeated(200);
    for (int at = 0; at < stream.size(); at += 150) {
        ASSERT_TRUE(reader.append(stream.mid(at, 150)));
        while (reader.hasFrame())
            ASSERT_EQ(reader.takeFrame(), frame);
        EXPECT_LT(reader.bufferedBytes(), 2 * frame.size());
    }
    EXPECT_EQ(reader.bufferedBytes(), 0);
}

TEST(FrameReader, AppendedRawDataIsCopiedNotBorrowed)
{
    // A transport may hand in bytes that it owns and reuses, as QByteArray::fromRawData.
    const QByteArray frame = echoFrame(3, QStringLiteral("raw"));
    std::vector<char> storage(frame.constBegin(), frame.constEnd());
    TELORFrameReader reader;
    EXPECT_TRUE(reader.append(QByteArray::fromRawData(storage.data(), int(storage.size()))));
    std::fill(storage.begin(), storage.end(), '\xff');
    EXPECT_EQ(reader.takeFrame(), frame);
}
