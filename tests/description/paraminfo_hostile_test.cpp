// Received descriptions that announce more than they hold, or nest their cells without
// end: the reader gives the result its format defines where there is one, and otherwise stops
// without running away.

#include "descriptiontest.h"
#include "plaininfo.h"
#include "telortest.h"

#include "paraminfo.h"

#include <gtest/gtest.h>

#include <limits>

using desctest::bytesOf;
using desctest::readFrom;
using telortest::plainBytes;

namespace {

// A field parameter whose single cell is a field parameter, @p levels deep; the cell at
// the bottom has no cells of its own.
ParamInfo nestedCells(int levels)
{
    ParamInfo bottom;
    bottom.id = unsigned(levels + 1);
    bottom.code = QStringLiteral("L%1").arg(levels);
    bottom.type = levels == 0 ? 1 : 4;
    ParamInfo current = bottom;
    for (int level = levels - 1; level >= 0; --level) {
        ParamInfo outer;
        outer.id = unsigned(level + 1);
        outer.code = QStringLiteral("L%1").arg(level);
        outer.type = 4;
        outer.rows = 1;
        outer.columns = 1;
        ParamFieldElementInfo cell;
        cell.row = 0;
        cell.column = 0;
        cell.info = current;
        outer.elements.append(cell);
        current = outer;
    }
    return current;
}

int depthOf(const ParamInfo &info)
{
    int depth = 0;
    const ParamInfo *p = &info;
    while (!p->elements.isEmpty()) {
        p = &p->elements.first().info;
        ++depth;
    }
    return depth;
}

// The head of a field record up to and including an element count of one, and the row and
// column of that element: the start of one level of endless nesting.
QByteArray nestingLevel()
{
    return plainBytes([](QDataStream &s) {
        s << quint32(1) << QStringLiteral("F") << QString() << QString() << qint32(4);
        for (int k = 0; k < 3; ++k)
            s << QString() << QHash<QString, QString>();
        s << qint32(1) << qint32(1) << qint8(0) << qint8(0) << qint8('f');
        s << qint8(0) << qint32(0) << qint8(0) << qint8(0);
        s << quint32(1) << qint32(0) << qint32(0);
    });
}

// The bytes of minimalInfo up to its empty tail, then @p tail.
QByteArray withTail(const QByteArray &tail)
{
    ParamInfo head;
    head.id = 1;
    head.code = QStringLiteral("P");
    head.type = 1;
    QByteArray bytes = bytesOf(head);
    bytes.chop(4 + 4 + 4 + 4);
    return bytes + tail;
}

} // namespace

TEST(ParamInfoNesting, CellsDownToTheBoundRead)
{
    const ParamInfo sent = nestedCells(ParamInfo::MaxCellNesting);
    ASSERT_EQ(depthOf(sent), ParamInfo::MaxCellNesting);
    const QByteArray bytes = bytesOf(sent);
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    EXPECT_EQ(depthOf(received), ParamInfo::MaxCellNesting);
    EXPECT_EQ(bytesOf(received), bytes);
}

TEST(ParamInfoNesting, CellsBelowTheBoundAreRefused)
{
    const ParamInfo sent = nestedCells(ParamInfo::MaxCellNesting + 1);
    ParamInfo received;
    EXPECT_FALSE(readFrom(bytesOf(sent), received).result);
    // The levels above the bound were read; the refused cell and the cells that hold it
    // were dropped on the way out.
    EXPECT_EQ(received.id, 1u);
    EXPECT_TRUE(received.elements.isEmpty());
}

TEST(ParamInfoNesting, CellCountsFromTheElementThatIsRead)
{
    ParamFieldElementInfo element;
    element.info = nestedCells(ParamInfo::MaxCellNesting);
    ParamFieldElementInfo received;
    EXPECT_TRUE(readFrom(bytesOf(element), received).result);
    element.info = nestedCells(ParamInfo::MaxCellNesting + 1);
    EXPECT_FALSE(readFrom(bytesOf(element), received).result);
}

TEST(ParamInfoNesting, EndlessNestingStopsAtTheBound)
{
    QByteArray bytes;
    const QByteArray level = nestingLevel();
    for (int k = 0; k < 100000; ++k)
        bytes += level;
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_FALSE(outcome.result);
    // Nothing beyond the bound was read.
    EXPECT_EQ(outcome.position, unsigned((ParamInfo::MaxCellNesting + 1) * level.size() - 8));
}

TEST(ParamInfoHostile, HugeElementCountEndsAtTheFirstMissingCell)
{
    ParamInfo head;
    head.id = 1;
    head.code = QStringLiteral("F");
    head.type = 4;
    QByteArray bytes = bytesOf(head);
    // Cut the element count and what follows, and announce 0xFFFFFFFF cells with none there.
    bytes.chop(4 + 4 + 4 + 4 + 4);
    bytes += plainBytes([](QDataStream &s) { s << quint32(0xFFFFFFFFu); });
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_FALSE(outcome.result);
    EXPECT_TRUE(received.elements.isEmpty());
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
}

TEST(ParamInfoHostile, HugeValueTableCountStopsAtTheEndOfTheData)
{
    const QByteArray bytes = withTail(plainBytes([](QDataStream &s) {
        s << quint32(0xFFFFFFFFu) << 3.0 << quint32(4);
    }));
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    // The data ran out inside the table: everything after it reads as zeros and empty.
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(received.valueTable.size(), 2);
    EXPECT_EQ(received.valueTable.value(3.0), 4u);
    EXPECT_TRUE(received.valueTable.contains(0.0));
    EXPECT_EQ(received.valueTable.value(0.0), 0u);
    EXPECT_TRUE(received.idList.isEmpty());
}

TEST(ParamInfoHostile, ValueTableCountIsUnsigned)
{
    // 0x80000000 entries announced, two present, then the data ends.
    const QByteArray bytes = withTail(plainBytes([](QDataStream &s) {
        s << quint32(0x80000000u) << 1.0 << quint32(1) << 2.0 << quint32(2);
    }));
    ParamInfo received;
    EXPECT_TRUE(readFrom(bytes, received).result);
    EXPECT_EQ(received.valueTable.value(1.0), 1u);
    EXPECT_EQ(received.valueTable.value(2.0), 2u);
}

TEST(ParamInfoHostile, HugeIdListCountReadsAsAnEmptyList)
{
    const QByteArray bytes = withTail(plainBytes([](QDataStream &s) {
        s << quint32(0) << qint8(0) << qint8(0) << qint8(0) << qint8(0);
        s << quint32(0x7FFFFFFFu) << quint32(1) << quint32(2);
    }));
    ParamInfo received;
    received.idList << 9u;
    const auto outcome = readFrom(bytes, received);
    EXPECT_TRUE(outcome.result);
    // As Qt reads it: a list that runs out is left empty.
    EXPECT_TRUE(received.idList.isEmpty());
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
}

TEST(ParamInfoHostile, HugeEnumerationCountStopsAtTheEndOfTheData)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(1) << QStringLiteral("E") << QString() << QString() << qint32(2);
        for (int k = 0; k < 3; ++k)
            s << QString() << QHash<QString, QString>();
        s << qint32(0) << qint32(0) << qint8(0) << qint8(0) << qint8('f') << qint8(0);
        s << qint32(0x7FFFFFFF);
    });
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    // Everything after the count reads as zeros and empty values; the type was there.
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    ASSERT_EQ(received.enumeration.combinations.size(), 1);
    EXPECT_TRUE(received.enumeration.hasCombinations);
    EXPECT_EQ(received.enumeration.shortValue(3, QStringLiteral("en")), QStringLiteral("Invalid sign "));
}

TEST(ParamInfoHostile, HugeStringLengthReadsAsEmpty)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << quint32(7) << quint32(0x7FFFFFFEu) << "abc"; });
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(received.id, 7u);
    EXPECT_TRUE(received.code.isEmpty());
}

TEST(ParamInfoHostile, EveryPrefixOfARecordReadsWithoutHarm)
{
    ParamInfo sent = desctest::sampleField(5, 2, 2);
    sent.elements[0].info = desctest::sampleScalar(501);
    sent.elements[1].info = desctest::sampleStatusWord(502);
    const QByteArray bytes = bytesOf(sent);
    for (int length = 0; length < bytes.size(); ++length) {
        ParamInfo received;
        const auto outcome = readFrom(bytes.left(length), received);
        EXPECT_LE(outcome.position, unsigned(length));
    }
    ParamInfo whole;
    EXPECT_TRUE(readFrom(bytes, whole).result);
}
