// The receiving side of a field parameter: cells built from a description, the state
// and flags over the cells, and reading cell records, refusals included.

#include "fieldtest.h"
#include "telortest.h"

#include "bpfieldclient.h"
#include "bplist.h"
#include "bpmap.h"
#include "bpvariant.h"
#include "fieldelement.h"
#include "parambaseptr.h"
#include "qcontainerpacket.h"

#include <gtest/gtest.h>

using fieldtest::addCell;
using fieldtest::cellInfo;
using fieldtest::fieldInfo;
using fieldtest::recordOf;
using fieldtest::variantRecord;
using telortest::LogCapture;
using telortest::plainBytes;

namespace {

/** A 2 by 3 field: a variant at (0,0), a list at (0,2), a map at (1,1), (1,0) empty. */
ParamInfo mixedField()
{
    ParamInfo field = fieldInfo(100, 2, 3);
    addCell(field, 0, 0, cellInfo(101, 5, QStringLiteral("v")));
    addCell(field, 0, 2, cellInfo(102, 6, QStringLiteral("l")));
    addCell(field, 1, 1, cellInfo(103, 7, QStringLiteral("m")));
    return field;
}

/** Reads a payload, after a record head for @p field, into @p field. */
bool readPayload(BPFieldClient &field, const std::function<void(QDataStream &)> &payload, qint32 id = 100)
{
    const QByteArray record = plainBytes([&](QDataStream &s) {
        s << id << qint32(4) << qint32(8);
        payload(s);
    });
    QContainerPacket in(record);
    return field.read(in);
}

} // namespace

// --- building the cells ---------------------------------------------------------------

TEST(FieldElement, ParameterByType)
{
    const struct {
        int type;
        int valueType;
    } kinds[] = {{1, 5}, {2, 5}, {3, 5}, {5, 5}, {6, 6}, {7, 7}};
    for (const auto &kind : kinds) {
        LogCapture log;
        const FieldElement element(cellInfo(40 + kind.type, kind.type));
        ASSERT_FALSE(element.param.isNull()) << kind.type;
        EXPECT_EQ(element.param->valueType(), kind.valueType) << kind.type;
        EXPECT_EQ(element.param->getIdParameter(), unsigned(40 + kind.type));
        EXPECT_EQ(element.param->getState(), 2u);
        EXPECT_EQ(element.info.type, kind.type);
        EXPECT_TRUE(log.captured().isEmpty());
    }
    EXPECT_NE(dynamic_cast<BPVariant *>(FieldElement(cellInfo(1, 1)).param.data()), nullptr);
    EXPECT_NE(dynamic_cast<BPList *>(FieldElement(cellInfo(1, 6)).param.data()), nullptr);
    EXPECT_NE(dynamic_cast<BPMap *>(FieldElement(cellInfo(1, 7)).param.data()), nullptr);
}

TEST(FieldElement, UnusableTypeLogsAndLeavesTheParameterNull)
{
    for (int type : {0, 4, 8, -1, 1000}) {
        LogCapture log;
        ParamInfo description = cellInfo(7, type, QStringLiteral("odd"));
        description.unit.setEngName(QStringLiteral("bar"));
        const FieldElement element(description);
        EXPECT_TRUE(element.param.isNull()) << type;
        EXPECT_EQ(log.captured(), QStringList{QStringLiteral("Invalid field element")}) << type;
        EXPECT_EQ(element.info.id, 7u);
        EXPECT_EQ(element.info.code, QStringLiteral("odd"));
        EXPECT_EQ(element.info.type, type);
        EXPECT_EQ(element.info.getUnit(QStringLiteral("en")), QStringLiteral("bar"));
    }
}

TEST(FieldClient, BuiltFromTheDescription)
{
    ParamInfo description = mixedField();
    description.elements[0].info.precision = 3;
    const BPFieldClient field(description);
    EXPECT_EQ(field.getIdParameter(), 100u);
    EXPECT_EQ(field.valueType(), 4);
    EXPECT_EQ(field.getState(), 2u);
    EXPECT_FALSE(field.changed());

    ASSERT_FALSE(field.param(0, 0).isNull());
    EXPECT_EQ(field.param(0, 0)->valueType(), 5);
    EXPECT_EQ(field.param(0, 0)->getIdParameter(), 101u);
    EXPECT_EQ(field.param(0, 2)->valueType(), 6);
    EXPECT_EQ(field.param(1, 1)->valueType(), 7);
    EXPECT_TRUE(field.param(1, 0).isNull());
    EXPECT_TRUE(field.param(2, 0).isNull());
    EXPECT_TRUE(field.param(0, 3).isNull());

    ASSERT_NE(field.info(0, 0), nullptr);
    EXPECT_EQ(field.info(0, 0)->code, QStringLiteral("v"));
    EXPECT_EQ(field.info(0, 0)->precision, 3);
    EXPECT_EQ(field.info(1, 1)->id, 103u);
    EXPECT_EQ(field.info(1, 0), nullptr);
    EXPECT_EQ(field.info(2, 1), nullptr);
    EXPECT_EQ(field.info(0, 0xFFFFFFFFu), nullptr);
    // The description lives in the cell: the same pointer every time.
    EXPECT_EQ(field.info(0, 0), field.info(0, 0));
}

TEST(FieldClient, ParamIsAStrongReference)
{
    QSharedPointer<AbstractParameterBase> kept;
    {
        BPFieldClient field(mixedField());
        kept = field.param(0, 2);
    }
    ASSERT_FALSE(kept.isNull());
    EXPECT_EQ(kept->getIdParameter(), 102u);
    EXPECT_EQ(kept->valueType(), 6);
}

TEST(FieldClient, EntriesOutsideTheArrayAreSkippedAndTheFirstOfTwoWins)
{
    ParamInfo description = fieldInfo(1, 2, 2);
    addCell(description, 2, 0, cellInfo(10, 5));
    addCell(description, 0, 2, cellInfo(11, 5));
    addCell(description, -1, 0, cellInfo(12, 5));
    addCell(description, 0, -1, cellInfo(13, 5));
    addCell(description, 1, 1, cellInfo(14, 6, QStringLiteral("first")));
    addCell(description, 1, 1, cellInfo(15, 7, QStringLiteral("second")));
    LogCapture log;
    const BPFieldClient field(description);
    EXPECT_TRUE(log.captured().isEmpty());
    EXPECT_TRUE(field.param(0, 0).isNull());
    EXPECT_TRUE(field.param(1, 0).isNull());
    EXPECT_TRUE(field.param(0, 1).isNull());
    ASSERT_FALSE(field.param(1, 1).isNull());
    EXPECT_EQ(field.param(1, 1)->getIdParameter(), 14u);
    EXPECT_EQ(field.info(1, 1)->code, QStringLiteral("first"));
    EXPECT_EQ(field.elementType(), 6);
}

TEST(FieldClient, NegativeSizesGiveNoCells)
{
    ParamInfo description = fieldInfo(1, -2, 3);
    addCell(description, 0, 0, cellInfo(10, 5));
    addCell(description, 1, 1, cellInfo(11, 5));
    const BPFieldClient field(description);
    EXPECT_TRUE(field.param(0, 0).isNull());
    EXPECT_EQ(field.elementType(), 0);
    EXPECT_EQ(field.getState(), 2u);
}

TEST(FieldClient, CellWithTypeFourHasADescriptionAndNoParameter)
{
    ParamInfo description = fieldInfo(1, 1, 2);
    addCell(description, 0, 0, cellInfo(10, 4, QStringLiteral("nested")));
    addCell(description, 0, 1, cellInfo(11, 7));
    LogCapture log;
    const BPFieldClient field(description);
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("Invalid field element")});
    ASSERT_NE(field.info(0, 0), nullptr);
    EXPECT_TRUE(field.info(0, 0)->isValid());
    EXPECT_EQ(field.info(0, 0)->code, QStringLiteral("nested"));
    EXPECT_TRUE(field.param(0, 0).isNull());
    // The cell without a parameter is passed over.
    EXPECT_EQ(field.elementType(), 7);
    EXPECT_EQ(field.getState(), 2u);
}

TEST(FieldClient, ElementTypeIsThatOfTheFirstFilledCellRowByRow)
{
    ParamInfo description = fieldInfo(1, 3, 3);
    addCell(description, 2, 0, cellInfo(10, 7));
    addCell(description, 1, 2, cellInfo(11, 6));
    addCell(description, 1, 1, cellInfo(12, 3));
    EXPECT_EQ(BPFieldClient(description).elementType(), 5);
    EXPECT_EQ(BPFieldClient(fieldInfo(1, 3, 3)).elementType(), 0);
}

// --- state and flags ------------------------------------------------------------------

TEST(FieldClient, StateIsTheHighestOfTheCells)
{
    ParamInfo description = fieldInfo(1, 1, 2);
    addCell(description, 0, 0, cellInfo(10, 5));
    addCell(description, 0, 1, cellInfo(11, 6));
    BPFieldClient field(description);
    EXPECT_EQ(field.getState(), 2u);

    field.param(0, 0)->setState(8);
    field.param(0, 1)->setState(64);
    EXPECT_EQ(field.getState(), 64u);

    field.param(0, 0)->setState(0);
    field.param(0, 1)->setState(1);
    EXPECT_EQ(field.getState(), 2u);

    field.param(0, 0)->setState(0xFFFFFFF0u); // compared as unsigned numbers
    EXPECT_EQ(field.getState(), 0xFFFFFFF0u);

    EXPECT_EQ(BPFieldClient(fieldInfo(1, 4, 4)).getState(), 2u);
}

TEST(FieldClient, StateOfTheRecordHeadIsNotSeenButIsSent)
{
    ParamInfo description = fieldInfo(100, 1, 1);
    addCell(description, 0, 0, cellInfo(101, 5));
    BPFieldClient field(description);
    EXPECT_TRUE(readPayload(field, [](QDataStream &s) { s << qint32(0); }));
    EXPECT_EQ(field.getState(), 2u);
    // The head's state is what a write would send; the payload of a write is empty.
    EXPECT_EQ(recordOf(field, true),
              plainBytes([](QDataStream &s) { s << qint32(100) << qint32(4) << qint32(8); }));
}

TEST(FieldClient, SetStateReachesEveryCellAndAlwaysRaisesTheFlag)
{
    ParamInfo description = fieldInfo(1, 1, 2);
    addCell(description, 0, 0, cellInfo(10, 5));
    addCell(description, 0, 1, cellInfo(11, 7));
    BPFieldClient field(description);
    ParamBasePtr client(&field, false);
    client.dropFlag();

    field.setState(8);
    EXPECT_EQ(field.param(0, 0)->getState(), 8u);
    EXPECT_EQ(field.param(0, 1)->getState(), 8u);
    EXPECT_EQ(field.getState(), 8u);
    EXPECT_TRUE(field.changed());
    EXPECT_TRUE(client.changed());

    field.dropFlag();
    client.dropFlag();
    field.setState(8); // every cell already has it
    EXPECT_TRUE(field.changed());
    EXPECT_TRUE(client.changed());
    // The field's own stored state was never assigned: the record head still says 2.
    EXPECT_EQ(recordOf(field, false), plainBytes([](QDataStream &s) { s << qint32(1) << qint32(4) << qint32(2); }));
}

TEST(FieldClient, SetStateGoesThroughTheBaseFormOfTheVariant)
{
    // A variant cell with a high warning setpoint of 10 and the value 11: the state 8 is
    // stored as it is, not judged.
    ParamInfo description = fieldInfo(1, 1, 1);
    addCell(description, 0, 0, cellInfo(10, 1));
    BPFieldClient field(description);
    auto *variant = dynamic_cast<BPVariant *>(field.param(0, 0).data());
    ASSERT_NE(variant, nullptr);
    variant->limitsPrivate().setLowPossibleSetpoint(false, 0.0);
    variant->limitsPrivate().setHiWarningSetpoint(true, 10.0);
    variant->setValue(11);
    field.setState(8);
    EXPECT_EQ(variant->getState(), 8u);
}

TEST(FieldClient, DropFlagLowersTheFieldAndEveryCell)
{
    BPFieldClient field(mixedField());
    field.param(0, 0)->upFlag();
    field.param(0, 2)->upFlag();
    field.upFlag();
    ParamBasePtr client(&field, false);
    field.dropFlag();
    EXPECT_FALSE(field.changed());
    EXPECT_FALSE(field.param(0, 0)->changed());
    EXPECT_FALSE(field.param(0, 2)->changed());
    EXPECT_TRUE(client.changed()); // a client's own flag is its own business
}

// --- reading --------------------------------------------------------------------------

TEST(FieldClient, CountOfZeroIsNoChange)
{
    BPFieldClient field(mixedField());
    EXPECT_TRUE(readPayload(field, [](QDataStream &s) { s << qint32(0); }));
    EXPECT_FALSE(field.changed());
    EXPECT_TRUE(field.dataReceived());
}

TEST(FieldClient, ReadsCellRecordsIntoTheirCells)
{
    BPFieldClient field(mixedField());
    QMap<double, QVariant> map;
    map.insert(3.0, QStringLiteral("three"));
    map.insert(-1.0, 1);
    const bool ok = readPayload(field, [&](QDataStream &s) {
        s << qint32(3);
        s << qint32(1) << qint32(1) << qint32(103) << qint32(7) << qint32(64) << map;
        s << qint32(0) << qint32(0);
        variantRecord(s, 101, 8, QVariant(42.5), false);
        s << qint32(0) << qint32(2) << qint32(102) << qint32(6) << qint32(4096) << QVariantList{1, 2, 3};
    });
    ASSERT_TRUE(ok);
    EXPECT_TRUE(field.changed());
    EXPECT_EQ(field.param(0, 0)->variantValue(), QVariant(42.5));
    EXPECT_EQ(field.param(0, 0)->getState(), 8u);
    EXPECT_EQ(field.param(0, 2).dynamicCast<BPList>()->getList(), (QVariantList{1, 2, 3}));
    EXPECT_EQ(field.param(1, 1).dynamicCast<BPMap>()->getMap(), map);
    EXPECT_EQ(field.getState(), 4096u);
    for (auto position : {std::make_pair(0u, 0u), std::make_pair(0u, 2u), std::make_pair(1u, 1u)}) {
        EXPECT_TRUE(field.param(position.first, position.second)->changed());
        EXPECT_TRUE(field.param(position.first, position.second)->dataReceived());
    }
}

TEST(FieldClient, NumericCellReceivesAVariant)
{
    // A cell of type 1 holds a variant: a record that carries a bare double is misread.
    ParamInfo description = fieldInfo(100, 1, 1);
    addCell(description, 0, 0, cellInfo(101, 1));
    BPFieldClient field(description);
    ASSERT_TRUE(readPayload(field, [](QDataStream &s) {
        s << qint32(1) << qint32(0) << qint32(0);
        variantRecord(s, 101, 8, QVariant(7.25), false);
    }));
    EXPECT_EQ(field.param(0, 0)->floatValue(), 7.25);
}

TEST(FieldClient, CountAboveCapacityIsRefusedBeforeAnyCell)
{
    BPFieldClient field(mixedField()); // 2 by 3
    QByteArray record = plainBytes([](QDataStream &s) {
        s << qint32(100) << qint32(4) << qint32(8) << qint32(7) << qint32(0) << qint32(0);
        variantRecord(s, 101, 8, QVariant(1), false);
    });
    QContainerPacket in(record);
    EXPECT_FALSE(field.read(in));
    EXPECT_EQ(in.position(), 16u); // stopped right behind the count
    EXPECT_FALSE(field.param(0, 0)->dataReceived());
    EXPECT_TRUE(field.changed()); // read() raised it, and it stays

    // Exactly rows times columns is allowed; the records then decide.
    BPFieldClient full(mixedField());
    EXPECT_FALSE(readPayload(full, [](QDataStream &s) {
        s << qint32(6) << qint32(0) << qint32(0);
        variantRecord(s, 101, 8, QVariant(1), false);
        s << qint32(1) << qint32(0);
    }));
    EXPECT_TRUE(full.param(0, 0)->dataReceived());

    // A negative count is a huge unsigned one.
    BPFieldClient negative(mixedField());
    EXPECT_FALSE(readPayload(negative, [](QDataStream &s) { s << qint32(-1); }));
}

TEST(FieldClient, CapacityIsComputedIn32Bits)
{
    // 65536 by 65537 wraps to 65536 cells.
    ParamInfo description = fieldInfo(100, 65536, 65537);
    addCell(description, 0, 0, cellInfo(101, 5));
    BPFieldClient field(description);
    EXPECT_FALSE(readPayload(field, [](QDataStream &s) { s << qint32(65537); }));

    // 65536 by 65536 wraps to 0: only a count of 0 is accepted.
    ParamInfo square = fieldInfo(100, 65536, 65536);
    addCell(square, 0, 0, cellInfo(101, 5));
    BPFieldClient wrapped(square);
    EXPECT_FALSE(readPayload(wrapped, [](QDataStream &s) {
        s << qint32(1) << qint32(0) << qint32(0);
        variantRecord(s, 101, 8, QVariant(1), false);
    }));
    EXPECT_TRUE(readPayload(wrapped, [](QDataStream &s) { s << qint32(0); }));
}

TEST(FieldClient, PositionOutsideTheArrayIsRefused)
{
    const struct {
        qint32 row, column;
    } outside[] = {{2, 0}, {0, 3}, {-1, 0}, {0, -1}, {0x7FFFFFFF, 0x7FFFFFFF}};
    for (const auto &position : outside) {
        BPFieldClient field(mixedField());
        EXPECT_FALSE(readPayload(field, [&](QDataStream &s) {
            s << qint32(2) << qint32(0) << qint32(0);
            variantRecord(s, 101, 8, QVariant(1), false);
            s << position.row << position.column;
            variantRecord(s, 101, 64, QVariant(2), false);
        })) << position.row << "," << position.column;
        // The cell read before the failure keeps what it read.
        EXPECT_EQ(field.param(0, 0)->variantValue(), QVariant(1));
        EXPECT_EQ(field.param(0, 0)->getState(), 8u);
        EXPECT_TRUE(field.changed());
    }
}

TEST(FieldClient, EmptyCellIsRefused)
{
    BPFieldClient field(mixedField());
    QByteArray record = plainBytes([](QDataStream &s) {
        s << qint32(100) << qint32(4) << qint32(8) << qint32(1) << qint32(1) << qint32(0);
        variantRecord(s, 101, 8, QVariant(1), false);
    });
    QContainerPacket in(record);
    EXPECT_FALSE(field.read(in));
    EXPECT_EQ(in.position(), 24u); // stands behind the position it refused
}

TEST(FieldClient, CellWithoutParameterIsRefused)
{
    ParamInfo description = fieldInfo(100, 1, 2);
    addCell(description, 0, 0, cellInfo(101, 4));
    addCell(description, 0, 1, cellInfo(102, 5));
    LogCapture log;
    BPFieldClient field(description);
    EXPECT_FALSE(readPayload(field, [](QDataStream &s) {
        s << qint32(1) << qint32(0) << qint32(0);
        variantRecord(s, 101, 8, QVariant(1), false);
    }));
}

TEST(FieldClient, RejectedElementRecordEndsTheRead)
{
    BPFieldClient field(mixedField());
    QByteArray record = plainBytes([](QDataStream &s) {
        s << qint32(100) << qint32(4) << qint32(8) << qint32(3);
        s << qint32(0) << qint32(0);
        variantRecord(s, 101, 8, QVariant(QStringLiteral("kept")), false);
        s << qint32(0) << qint32(2) << qint32(999) << qint32(6) << qint32(64) << QVariantList{1};
        s << qint32(1) << qint32(1) << qint32(103) << qint32(7) << qint32(8) << QMap<double, QVariant>();
    });
    QContainerPacket in(record);
    EXPECT_FALSE(field.read(in));
    EXPECT_EQ(field.param(0, 0)->variantValue(), QVariant(QStringLiteral("kept")));
    // The refused record's state was stored, as a parameter's read stores it.
    EXPECT_EQ(field.param(0, 2)->getState(), 64u);
    EXPECT_FALSE(field.param(0, 2)->dataReceived());
    EXPECT_FALSE(field.param(1, 1)->dataReceived());
    EXPECT_TRUE(field.changed());
}

TEST(FieldClient, RecordForAnotherFieldIsRefused)
{
    BPFieldClient field(mixedField());
    EXPECT_FALSE(readPayload(field, [](QDataStream &s) { s << qint32(0); }, 555));
    EXPECT_FALSE(field.changed());
    EXPECT_FALSE(field.dataReceived());
}

TEST(FieldClient, WritesNoPayload)
{
    BPFieldClient field(mixedField());
    QByteArray bytes;
    QContainerPacket out(&bytes);
    field.writePrivate(out, true);
    field.writePrivate(out, false);
    EXPECT_TRUE(bytes.isEmpty());
}
