// Field records and descriptions as a hostile sender could make them: huge counts and
// sizes, positions outside the field, and records cut short. The reader must give the
// answer the format prescribes without a huge allocation and without running for ages.

#include "fieldtest.h"
#include "telortest.h"

#include "bpfieldclient.h"
#include "bplist.h"
#include "bpvariant.h"
#include "qcontainerpacket.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

using fieldtest::addCell;
using fieldtest::cellInfo;
using fieldtest::fieldInfo;
using fieldtest::variantRecord;
using telortest::plainBytes;

namespace {

QByteArray fieldRecord(qint32 id, const std::function<void(QDataStream &)> &payload)
{
    return plainBytes([&](QDataStream &s) {
        s << id << qint32(4) << qint32(8);
        payload(s);
    });
}

} // namespace

TEST(FieldHostile, HugeSizesInADescriptionAllocateOnlyForTheCells)
{
    // 65536 by 65535 cells, a capacity of 0xFFFF0000 in 32 bits: an array of that many
    // cell pointers would need 32 GB.
    ParamInfo description = fieldInfo(1, 0x10000, 0xFFFF);
    addCell(description, 5, 7, cellInfo(2, 5));
    addCell(description, 0xFFFF, 0xFFFE, cellInfo(3, 6));
    fieldtest::expectWithinBoundedMemory([description] {
        BPFieldClient field(description);
        const QByteArray record = fieldRecord(1, [](QDataStream &s) {
            s << qint32(2) << qint32(5) << qint32(7);
            variantRecord(s, 2, 8, QVariant(9), false);
            s << qint32(0xFFFF) << qint32(0xFFFE) << qint32(3) << qint32(6) << qint32(8) << QVariantList{1};
        });
        QContainerPacket in(record);
        return field.read(in) && field.param(5, 7)->variantValue() == QVariant(9)
            && field.param(0xFFFF, 0xFFFE).dynamicCast<BPList>()->getList() == QVariantList{1}
            && field.param(0, 0).isNull() && field.param(0x10000, 0).isNull() && field.getState() == 8
            && field.elementType() == 5;
    });
}

TEST(FieldHostile, SizesWhoseProductWrapsLimitTheCount)
{
    // 0x7FFFFFFF squared is 1 in 32 bits: one cell record at most.
    ParamInfo description = fieldInfo(1, 0x7FFFFFFF, 0x7FFFFFFF);
    addCell(description, 5, 7, cellInfo(2, 5));
    fieldtest::expectWithinBoundedMemory([description] {
        BPFieldClient field(description);
        const QByteArray two = fieldRecord(1, [](QDataStream &s) {
            s << qint32(2) << qint32(5) << qint32(7);
            variantRecord(s, 2, 8, QVariant(9), false);
        });
        QContainerPacket in(two);
        const bool refused = !field.read(in) && !field.param(5, 7)->dataReceived();
        const QByteArray one = fieldRecord(1, [](QDataStream &s) {
            s << qint32(1) << qint32(5) << qint32(7);
            variantRecord(s, 2, 8, QVariant(9), false);
        });
        QContainerPacket again(one);
        return refused && field.read(again) && field.param(5, 7)->variantValue() == QVariant(9);
    });
}

TEST(FieldHostile, NegativeSizesInADescription)
{
    ParamInfo description = fieldInfo(1, -1, -1);
    addCell(description, 0, 0, cellInfo(2, 5));
    addCell(description, -5, -5, cellInfo(3, 5));
    fieldtest::expectWithinBoundedMemory([description] {
        BPFieldClient field(description);
        // The capacity 0xFFFFFFFF times 0xFFFFFFFF is 1 in 32 bits; the cell is absent.
        const QByteArray record = fieldRecord(1, [](QDataStream &s) {
            s << qint32(1) << qint32(0) << qint32(0);
            variantRecord(s, 2, 8, QVariant(9), false);
        });
        QContainerPacket in(record);
        return !field.read(in) && field.param(0, 0).isNull() && field.elementType() == 0;
    });
}

TEST(FieldHostile, HugeCountWithinCapacityOnFewBytesEndsQuickly)
{
    // 65535 by 65537 is 0xFFFFFFFF cells, so a count of 0xFFFFFFFF passes the capacity
    // check. The cell at (0,0) has the identifier 0, so every cell record read past the
    // end of the bytes (all zeros) is accepted for it: the answer is true, as it would be
    // after reading all of them, and it must come without four billion reads.
    ParamInfo description = fieldInfo(1, 65535, 65537);
    addCell(description, 0, 0, cellInfo(0, 5));
    BPFieldClient field(description);
    const QByteArray record = fieldRecord(1, [](QDataStream &s) {
        s << qint32(-1) << qint32(0) << qint32(0);
        variantRecord(s, 0, 8, QVariant(QStringLiteral("first")), false);
    });
    QElapsedTimer timer;
    timer.start();
    QContainerPacket in(record);
    EXPECT_TRUE(field.read(in));
    EXPECT_LT(timer.elapsed(), 5000);
    // The records past the end read as zeros: an invalid value and the state 0.
    EXPECT_FALSE(field.param(0, 0)->variantValue().isValid());
    EXPECT_EQ(field.param(0, 0)->getState(), 0u);
}

TEST(FieldHostile, HugeCountEndsAtTheFirstRefusedZeroRecord)
{
    ParamInfo description = fieldInfo(1, 65535, 65537);
    addCell(description, 0, 0, cellInfo(77, 6));
    BPFieldClient field(description);
    const QByteArray record = fieldRecord(1, [](QDataStream &s) {
        s << qint32(-1) << qint32(0) << qint32(0) << qint32(77) << qint32(6) << qint32(8) << QVariantList{1, 2};
    });
    QContainerPacket in(record);
    EXPECT_FALSE(field.read(in)); // the zero record names identifier 0, not 77
    EXPECT_EQ(field.param(0, 0).dynamicCast<BPList>()->getList(), (QVariantList{1, 2}));
    EXPECT_EQ(field.param(0, 0)->getState(), 0u); // the refused record's state was stored
}

TEST(FieldHostile, ShortCountOnAnEmptyStreamMatchesAFullWalk)
{
    // With a count small enough to walk, the quick end gives the same cells as the walk.
    ParamInfo description = fieldInfo(1, 4, 4);
    addCell(description, 0, 0, cellInfo(0, 5));
    for (qint32 count = 1; count <= 16; ++count) {
        BPFieldClient field(description);
        const QByteArray record = fieldRecord(1, [&](QDataStream &s) { s << count; });
        QContainerPacket in(record);
        EXPECT_TRUE(field.read(in)) << count;
        EXPECT_EQ(field.param(0, 0)->getState(), 0u);
        EXPECT_TRUE(field.param(0, 0)->dataReceived());
    }
}

TEST(FieldHostile, HostileCountsInsideCellsAreNotAllocatedFor)
{
    ParamInfo description = fieldInfo(1, 1, 2);
    addCell(description, 0, 0, cellInfo(2, 6));
    addCell(description, 0, 1, cellInfo(3, 5));
    // A list cell announcing 0x7FFFFFF0 entries and holding two; its reader takes what
    // follows as entries until the bytes end, and the list reads as empty.
    const QByteArray listRecord = fieldRecord(1, [](QDataStream &s) {
        s << qint32(1) << qint32(0) << qint32(0) << qint32(2) << qint32(6) << qint32(8) << quint32(0x7FFFFFF0)
          << QVariant(1) << QVariant(2);
    });
    // A variant cell whose value is a QVariantList announcing 0x7FFFFFF0 entries: the
    // value reads as invalid, and the bytes are used up.
    const QByteArray variantRecord = fieldRecord(1, [](QDataStream &s) {
        s << qint32(1) << qint32(0) << qint32(1) << qint32(3) << qint32(5) << qint32(8)
          << quint32(QMetaType::QVariantList) << qint8(0) << quint32(0x7FFFFFF0) << QVariant(1);
    });
    fieldtest::expectWithinBoundedMemory([description, listRecord, variantRecord] {
        BPFieldClient field(description);
        QContainerPacket list(listRecord);
        const bool listOk = field.read(list) && field.param(0, 0).dynamicCast<BPList>()->getList().isEmpty()
            && field.param(0, 0)->dataReceived();
        QContainerPacket variant(variantRecord);
        return listOk && field.read(variant) && !field.param(0, 1)->variantValue().isValid()
            && field.param(0, 1)->dataReceived();
    });
}

TEST(FieldHostile, EveryTruncationOfAGoodRecordEnds)
{
    ParamInfo description = fieldInfo(1, 2, 2);
    addCell(description, 0, 0, cellInfo(2, 5));
    addCell(description, 0, 1, cellInfo(3, 6));
    addCell(description, 1, 1, cellInfo(4, 7));
    // Everything up to the identifier of the last cell's record, then the rest.
    const QByteArray upToLastCell = fieldRecord(1, [](QDataStream &s) {
        s << qint32(3) << qint32(0) << qint32(0);
        variantRecord(s, 2, 8, QVariant(1.5), true);
        s << qint32(0) << qint32(1) << qint32(3) << qint32(6) << qint32(8) << QVariantList{1, QStringLiteral("x")};
        s << qint32(1) << qint32(1);
    });
    const QByteArray record = upToLastCell + plainBytes([](QDataStream &s) {
        s << qint32(4) << qint32(7) << qint32(8) << QMap<double, QVariant>{{1.0, 2}};
    });
    {
        BPFieldClient field(description);
        QContainerPacket in(record);
        ASSERT_TRUE(field.read(in));
    }
    for (int cut = 0; cut < record.size(); ++cut) {
        BPFieldClient field(description);
        QContainerPacket in(record.left(cut));
        const bool ok = field.read(in);
        if (cut < 4) {
            EXPECT_FALSE(ok) << cut; // the head names identifier 0, not 1
        } else if (cut < 16) {
            EXPECT_TRUE(ok) << cut; // a count cut short reads as 0
            EXPECT_FALSE(field.changed()) << cut;
        } else if (cut < upToLastCell.size() + 4) {
            // A record cut short is followed by zeros, which name identifier 0 at (0,0).
            EXPECT_FALSE(ok) << cut;
        } else {
            // The last record's identifier arrived whole: its payload reads as far as it
            // goes, and there is no record after it.
            EXPECT_TRUE(ok) << cut;
        }
    }
}
