// Hostile tag blocks: counts that promise far more than the bytes hold, blocks of
// arbitrary bytes, and how much memory reading them may take.

#include "allocationprobe.h"
#include "tagblock.h"
#include "tagreference.h"
#include "telortest.h"

#include "telortagobject.h"

#include <gtest/gtest.h>

#include <QtCore/QRandomGenerator>

using namespace tagtest;
using telortest::AllocationProbe;
using telortest::plainBytes;

namespace {

/** A block whose table @p table (0, 1 or 2) announces @p count entries and holds one. */
QByteArray hugeCountBlock(int table, quint32 count)
{
    QByteArray texts = textsBytes(sampleTexts());
    QByteArray params = paramsBytes(sampleParams());
    QByteArray tagParams = tagParamsBytes(sampleTagParams());
    QByteArray &target = table == 0 ? texts : table == 1 ? params : tagParams;
    const QByteArray counted = plainBytes([&](QDataStream &s) { s << count; });
    target.replace(0, 4, counted);
    return texts + params + tagParams;
}

/** A block whose innermost counts announce @p count entries. */
QByteArray hugeInnerCountBlock(quint32 count)
{
    return plainBytes([&](QDataStream &s) {
        s << quint32(1) << QStringLiteral("unit") << count << QStringLiteral("en") << QStringLiteral("Unit");
        s << quint32(1) << quint32(10) << count << QStringLiteral("unit") << QStringLiteral("U1");
        s << quint32(1) << QStringLiteral("unit") << count << QStringLiteral("U1") << count << quint32(10);
    });
}

/** What reading a tag block gave, and the heap requests an AllocationProbe saw it make. */
struct ProbedRead
{
    bool ok = false;
    std::size_t largest = 0;
    std::size_t total = 0;
};

/** Reads @p bytes into @p tags while an AllocationProbe watches the heap. */
ProbedRead readProbed(TELORTagObject &tags, const QByteArray &bytes)
{
    ProbedRead read;
    AllocationProbe probe;
    read.ok = tags.read(bytes);
    read.largest = probe.largestRequest();
    read.total = probe.totalRequested();
    return read;
}

} // namespace

TEST(TagBlockHostile, ProbeSeesAReservation)
{
    // The probe that the tests below rely on does see a container that reserves ahead,
    // and Qt's own string reader allocating for a length that the bytes do not hold.
    if (!AllocationProbe::available())
        GTEST_SKIP() << "the heap belongs to the sanitizer in this build";
    {
        AllocationProbe probe;
        QHash<QString, QString> hash;
        hash.reserve(100000);
        EXPECT_GE(probe.largestRequest(), std::size_t(100000 * sizeof(void *)));
    }
    {
        const QByteArray bytes = plainBytes([](QDataStream &s) { s << quint32(0x7FFFFFFE) << quint32(1); });
        QDataStream in(bytes);
        QString text;
        AllocationProbe probe;
        in >> text;
        EXPECT_GE(probe.largestRequest(), std::size_t(1 << 20));
    }
}

TEST(TagBlockHostile, HugeTableCountsReadFalseWithoutReserving)
{
    for (quint32 count : {0x7FFFFFFFu, 0xFFFFFFFFu, 0x10000000u}) {
        for (int table = 0; table < 3; ++table) {
            SCOPED_TRACE(testing::Message() << "table " << table << " count " << count);
            const QByteArray bytes = hugeCountBlock(table, count);
            TELORTagObject tags(nullptr);
            const ProbedRead read = readProbed(tags, bytes);
            EXPECT_FALSE(read.ok);
            if (AllocationProbe::available()) {
                EXPECT_LT(read.largest, std::size_t(4096));
            }
            expectSameAsQt(bytes);
        }
    }
}

TEST(TagBlockHostile, HugeInnerCountsReadWithoutReserving)
{
    for (quint32 count : {0x7FFFFFFFu, 0xFFFFFFFFu}) {
        SCOPED_TRACE(count);
        const QByteArray bytes = hugeInnerCountBlock(count);
        TELORTagObject tags(nullptr);
        const ProbedRead read = readProbed(tags, bytes);
        // The first inner count swallows the rest of the block, so the first table fails
        // and the other two find no bytes.
        EXPECT_FALSE(read.ok);
        EXPECT_TRUE(tags.getTagTypes(QStringLiteral("en")).isEmpty());
        if (AllocationProbe::available()) {
            EXPECT_LT(read.largest, std::size_t(4096));
        }
        expectSameAsQt(bytes);
    }
}

TEST(TagBlockHostile, HugeStringLengthsReadAsQtReadsThemWithoutAllocating)
{
    // A string that announces almost 2 GB, at each place where a string can stand.
    const QString huge = QStringLiteral("#");
    const QByteArray marker = plainBytes([&](QDataStream &s) { s << huge; });
    const QByteArray lengthWord = plainBytes([](QDataStream &s) { s << quint32(0x7FFFFFFE); });
    const QList<QByteArray> blocks{
        block({{huge, {{QStringLiteral("en"), QStringLiteral("Unit")}}}}, sampleParams(), sampleTagParams()),
        block({{QStringLiteral("unit"), {{huge, QStringLiteral("Unit")}}}}, sampleParams(), sampleTagParams()),
        block({{QStringLiteral("unit"), {{QStringLiteral("en"), huge}}}}, sampleParams(), sampleTagParams()),
        block(sampleTexts(), {{10u, {{huge, QStringLiteral("U1")}}}}, sampleTagParams()),
        block(sampleTexts(), {{10u, {{QStringLiteral("unit"), huge}}}}, sampleTagParams()),
        block(sampleTexts(), sampleParams(), {{huge, {{QStringLiteral("U1"), {10u}}}}}),
        block(sampleTexts(), sampleParams(), {{QStringLiteral("unit"), {{huge, {10u}}}}}),
    };
    for (int i = 0; i < blocks.size(); ++i) {
        SCOPED_TRACE(i);
        QByteArray bytes = blocks.at(i);
        const int at = bytes.indexOf(marker);
        ASSERT_GE(at, 0);
        bytes.replace(at, 4, lengthWord);

        TELORTagObject tags(nullptr);
        const ProbedRead read = readProbed(tags, bytes);
        EXPECT_FALSE(read.ok);
        if (AllocationProbe::available()) {
            EXPECT_LT(read.largest, std::size_t(4096));
        }
        expectSameAsQt(bytes);
    }
}

TEST(TagBlockHostile, OddAndNullStringLengthsReadAsQtReadsThem)
{
    for (quint32 length : {0xFFFFFFFFu, 0x7FFFFFFFu, 3u, 0u}) {
        SCOPED_TRACE(length);
        QByteArray bytes = sampleBlock();
        const QByteArray word = plainBytes([&](QDataStream &s) { s << length; });
        // The first tag type key, and then the first text key of the second table.
        bytes.replace(4, 4, word);
        expectSameAsQt(bytes);
        const int second = textsBytes(sampleTexts()).size() + 12;
        bytes.replace(second, 4, word);
        expectSameAsQt(bytes);
    }
}

TEST(TagBlockHostile, MemoryGrowsWithTheBytesNotWithTheCounts)
{
    // Every byte 0xFF: each count is 0xFFFFFFFF and each string is null, so the first
    // table's first entry takes entry after entry until the block ends.
    for (int size : {64, 4096, 256 * 1024}) {
        SCOPED_TRACE(size);
        const QByteArray bytes(size, char(0xFF));
        TELORTagObject tags(nullptr);
        const ProbedRead read = readProbed(tags, bytes);
        EXPECT_FALSE(read.ok);
        if (AllocationProbe::available()) {
            EXPECT_LE(read.total, 16 * std::size_t(size) + 65536);
            EXPECT_LE(read.largest, 4 * std::size_t(size) + 4096);
        }
        EXPECT_TRUE(tags.getTagTypes(QString()).isEmpty());
    }
}

TEST(TagBlockHostile, ArbitraryBytesReadAsQtReadsThem)
{
    QRandomGenerator random(20240607);
    const QByteArray valid = sampleBlock();
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        QByteArray bytes;
        if (round % 2 == 0) {
            // A valid block with a few bytes changed.
            bytes = valid;
            const int changes = 1 + int(random.bounded(4));
            for (int i = 0; i < changes; ++i)
                bytes[int(random.bounded(bytes.size()))] = char(random.bounded(256));
        } else {
            bytes.resize(int(random.bounded(200)));
            for (char &byte : bytes)
                byte = char(random.bounded(256));
        }
        expectSameAsQt(bytes);
    }
}
