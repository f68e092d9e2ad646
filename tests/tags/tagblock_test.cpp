// The tag block: its tables are Qt's QHash and QSet stream forms, one after the other,
// read as Qt's own operators read them.

#include "tagblock.h"
#include "tagreference.h"
#include "telortest.h"

#include "telortagobject.h"

#include <gtest/gtest.h>

using namespace tagtest;
using telortest::plainBytes;

TEST(TagBlock, FirstTableIsQtsHashForm)
{
    const TextTable table{{QStringLiteral("unit"), {{QStringLiteral("en"), QStringLiteral("Unit")}}}};
    const QHash<QString, QHash<QString, QString>> hash{{QStringLiteral("unit"), {{QStringLiteral("en"), QStringLiteral("Unit")}}}};
    EXPECT_EQ(textsBytes(table), plainBytes([&](QDataStream &s) { s << hash; }));
}

TEST(TagBlock, SecondTableIsQtsHashForm)
{
    const ParamTable table{{0xFFFFFFF0u, {{QStringLiteral("unit"), QStringLiteral("U1")}}}};
    const QHash<unsigned int, QHash<QString, QString>> hash{{0xFFFFFFF0u, {{QStringLiteral("unit"), QStringLiteral("U1")}}}};
    EXPECT_EQ(paramsBytes(table), plainBytes([&](QDataStream &s) { s << hash; }));
}

TEST(TagBlock, ThirdTableIsQtsHashAndSetForm)
{
    const ParamsTable table{{QStringLiteral("unit"), {{QStringLiteral("U1"), {7u}}}}};
    const QHash<QString, QHash<QString, QSet<unsigned int>>> hash{
        {QStringLiteral("unit"), {{QStringLiteral("U1"), QSet<unsigned int>{7u}}}}};
    EXPECT_EQ(tagParamsBytes(table), plainBytes([&](QDataStream &s) { s << hash; }));
}

TEST(TagBlock, BlockWrittenByQtReadsBack)
{
    // The three tables as a server holding them in QHash and QSet would stream them.
    const QHash<QString, QHash<QString, QString>> texts{
        {QStringLiteral("unit"), {{QStringLiteral("en"), QStringLiteral("Unit")}, {QStringLiteral("ru"), QStringLiteral("Blok")}}},
        {QStringLiteral("area"), {{QStringLiteral("en"), QStringLiteral("Area")}}}};
    QHash<unsigned int, QHash<QString, QString>> params;
    QHash<QString, QHash<QString, QSet<unsigned int>>> tagParams;
    for (unsigned int id = 1; id <= 50; ++id) {
        params[id].insert(QStringLiteral("unit"), QStringLiteral("U%1").arg(id % 5));
        tagParams[QStringLiteral("unit")][QStringLiteral("U%1").arg(id % 5)].insert(id);
    }
    const QByteArray bytes = plainBytes([&](QDataStream &s) { s << texts << params << tagParams; });

    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(bytes));
    for (unsigned int id = 1; id <= 50; ++id) {
        EXPECT_EQ(tags.getParamTagValue(id, QStringLiteral("unit")), QStringLiteral("U%1").arg(id % 5));
        const QHash<QString, QString> expected{{QStringLiteral("Blok"), QStringLiteral("U%1").arg(id % 5)}};
        EXPECT_EQ(tags.getParamTags(id, QStringLiteral("ru")), expected);
    }
    EXPECT_TRUE(tags.getParamTags(51, QStringLiteral("ru")).isEmpty());
    expectSameAsQt(bytes);
}

TEST(TagBlock, SampleBlockReadsAsQtReadsIt)
{
    expectSameAsQt(sampleBlock());
}

TEST(TagBlock, EveryPrefixReadsAsQtReadsIt)
{
    const QByteArray whole = sampleBlock();
    for (int length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        expectSameAsQt(whole.left(length));
    }
}

TEST(TagBlock, FailureInsideATableEmptiesItAndReadingGoesOn)
{
    // The first tag type key announces an odd byte count, which Qt's string form refuses
    // at once; the texts that follow it (a count of 0) are consumed, the table ends up
    // empty, and the second and third tables are read from the bytes after it.
    const QByteArray broken = plainBytes([](QDataStream &s) { s << quint32(1) << quint32(3) << quint32(0); });
    const QByteArray bytes = broken + paramsBytes(sampleParams()) + tagParamsBytes(sampleTagParams());

    TELORTagObject tags(nullptr);
    EXPECT_FALSE(tags.read(bytes));
    EXPECT_TRUE(tags.getTagTypes(QStringLiteral("en")).isEmpty());
    EXPECT_EQ(tags.getParamTagValue(10, QStringLiteral("unit")), QStringLiteral("U1"));
    EXPECT_EQ(tags.getParamTagValue(11, QStringLiteral("unit")), QStringLiteral("U2"));
    expectSameAsQt(bytes);

    // With a first table that reads, the same second and third make the block good: the
    // failure above cost only the first table.
    const TextTable texts{{QStringLiteral("unit"), {{QStringLiteral("en"), QStringLiteral("Unit")}}}};
    EXPECT_TRUE(tags.read(textsBytes(texts) + paramsBytes(sampleParams()) + tagParamsBytes(sampleTagParams())));
}

TEST(TagBlock, FailureInsideTheSecondTableKeepsTheThird)
{
    // A parameter's tag value announces an odd byte count; its table is lost, and the
    // third table is read from what follows.
    const QByteArray broken = plainBytes([](QDataStream &s) {
        s << quint32(1) << quint32(10) << quint32(1) << QStringLiteral("unit") << quint32(5);
    });
    const QByteArray bytes = textsBytes(sampleTexts()) + broken + tagParamsBytes(sampleTagParams());

    TELORTagObject tags(nullptr);
    EXPECT_FALSE(tags.read(bytes));
    EXPECT_EQ(tags.getTagTypes(QStringLiteral("en")).size(), 2);
    EXPECT_TRUE(tags.getParamTags(10, QStringLiteral("en")).isEmpty());
    expectSameAsQt(bytes);
    const QtTables qt = readWithQt(bytes);
    EXPECT_TRUE(qt.paramTags.isEmpty());
    EXPECT_EQ(qt.tagParams.size(), 2);
}

TEST(TagBlock, BytesAfterTheThirdTableAreIgnored)
{
    TELORTagObject tags(nullptr);
    EXPECT_TRUE(tags.read(sampleBlock() + QByteArray("trailing bytes")));
    EXPECT_EQ(tags.getParamTagValue(10, QStringLiteral("area")), QStringLiteral("North"));
}
