// The sending side of a field parameter: sizing, filling, the cell handles and their
// flags, the counted drop, and the payload with its back-patched count.

#include "fieldtest.h"
#include "testparameters.h"
#include "telortest.h"

#include "bpdouble.h"
#include "bpfield.h"
#include "bplist.h"
#include "bpmap.h"
#include "bpvariant.h"
#include "parambasefieldptr.h"
#include "qcontainerpacket.h"

#include <gtest/gtest.h>

using fieldtest::recordOf;
using fieldtest::variantRecord;
using telortest::plainBytes;

namespace {

/** A double parameter that tells how many handles are registered on it. */
class CountedDouble : public BPDouble
{
public:
    using BPDouble::BPDouble;
    int handleCount() const { return relatedValues.size(); }
};

/** The payload of a double parameter's record, as plain stream calls write it. */
void doubleRecord(QDataStream &s, qint32 id, qint32 state, double value)
{
    s << id << qint32(1) << state << value;
}

} // namespace

// --- sizing and filling ---------------------------------------------------------------

TEST(Field, ConstructorsAndArray)
{
    BPDouble a(1), b(2); // the elements outlive the fields
    BPField sized(3, 4);
    EXPECT_EQ(sized.getIdParameter(), 0u);
    EXPECT_EQ(sized.valueType(), 4);
    EXPECT_EQ(sized.getState(), 2u);
    EXPECT_FALSE(sized.changed());
    EXPECT_TRUE(sized.setElement(2, 3, &a));
    EXPECT_FALSE(sized.setElement(3, 3, &b));
    EXPECT_FALSE(sized.setElement(2, 4, &b));

    BPField named(7);
    EXPECT_EQ(named.getIdParameter(), 7u);
    EXPECT_EQ(named.valueType(), 4);
    EXPECT_FALSE(named.setElement(0, 0, &b)); // no array
    named.setDim(3, 4);
    EXPECT_TRUE(named.setElement(0, 0, &b));
    EXPECT_TRUE(named.setElement(2, 3, &a));
}

TEST(Field, ResizedOnlyWhenBothSizesDiffer)
{
    // The elements outlive the field.
    CountedDouble element(1);
    BPDouble scratch(99);
    BPDouble other(98);
    BPField field(3, 4);
    ASSERT_TRUE(field.setElement(1, 1, &element));
    EXPECT_EQ(element.handleCount(), 1);

    field.setDim(3, 5);
    field.setDim(2, 4);
    field.setDim(3, 4);
    EXPECT_EQ(element.handleCount(), 1);               // the element stays
    EXPECT_FALSE(field.setElement(1, 1, &scratch));    // still filled
    EXPECT_FALSE(field.setElement(0, 4, &scratch));    // not 3 by 5
    EXPECT_TRUE(field.setElement(2, 3, &scratch));     // still 3 by 4, not 2 by 4

    field.setDim(2, 5);
    EXPECT_EQ(element.handleCount(), 0);               // its handle is gone
    EXPECT_TRUE(field.setElement(1, 1, &element));     // the cell is empty again
    EXPECT_TRUE(field.setElement(1, 4, &other));       // 2 by 5
    EXPECT_FALSE(field.setElement(2, 0, &other));
}

TEST(Field, AFieldWithoutArrayTakesAnySize)
{
    BPDouble a(1); // the element outlives the fields
    // Without an array, even sizes equal to the current zeros build one.
    BPField field(7);
    field.setDim(0, 4);
    EXPECT_FALSE(field.setElement(0, 0, &a)); // 0 by 4 has no cell
    field.setDim(2, 4);                       // the columns are equal: nothing changes
    EXPECT_FALSE(field.setElement(1, 1, &a));
    field.setDim(2, 5);
    EXPECT_TRUE(field.setElement(1, 1, &a));

    // A field built with its sizes has an array from the start, even 0 by 0.
    BPField empty(0, 0);
    empty.setDim(0, 4);
    EXPECT_FALSE(empty.setElement(0, 0, &a));
    empty.setDim(3, 0);
    EXPECT_FALSE(empty.setElement(0, 0, &a));
    empty.setDim(1, 1);
    EXPECT_TRUE(empty.setElement(0, 0, &a));
}

TEST(Field, SetElementOutsideOrTwiceIsRefused)
{
    CountedDouble first(1), second(2);
    first.setValue(1.5);
    second.setValue(2.5);
    BPField field(3, 4);
    EXPECT_FALSE(field.setElement(3, 0, &first));
    EXPECT_FALSE(field.setElement(0, 4, &first));
    EXPECT_EQ(first.handleCount(), 0);
    ASSERT_TRUE(field.setElement(0, 0, &first));
    EXPECT_FALSE(field.setElement(0, 0, &second));
    EXPECT_EQ(first.handleCount(), 1);
    EXPECT_EQ(second.handleCount(), 0);
    EXPECT_FALSE(field.setElement(1, 1, nullptr));

    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(4) << qint32(2) << qint32(1) << qint32(0) << qint32(0);
        doubleRecord(s, 1, 2, 1.5);
    });
    EXPECT_EQ(recordOf(field, false), expected);
}

// --- handles and flags ----------------------------------------------------------------

TEST(Field, CellHandleRegistersOnTheElementWithoutRefresh)
{
    CountedDouble element(5);
    BPField field(1, 1);
    CountingHandle client(&field, true);
    client.dropFlag();
    ASSERT_TRUE(field.setElement(0, 0, &element));
    EXPECT_EQ(element.handleCount(), 1);
    EXPECT_FALSE(field.changed());

    // A repeated state refreshes the element's handles; the cell's has no refresh flag.
    element.setState(2);
    EXPECT_FALSE(field.changed());
    EXPECT_FALSE(client.changed());
}

TEST(Field, ElementChangeReachesTheFieldAndItsClients)
{
    BPDouble element(5);
    BPField field(2, 2);
    CountingHandle client(&field, false);
    client.dropFlag();
    ASSERT_TRUE(field.setElement(1, 0, &element));
    EXPECT_FALSE(field.changed());

    element.setValue(3.0);
    EXPECT_TRUE(field.changed());
    EXPECT_TRUE(client.changed());
    EXPECT_EQ(client.ups, 1);

    ParamBaseFieldPtr loose(nullptr, &element); // a handle without a field
    loose.dropFlag();
    element.setValue(4.0);
    EXPECT_TRUE(loose.changed());
    EXPECT_EQ(client.ups, 2);
}

TEST(Field, CellHandleDropLowersTheElementFlag)
{
    BPDouble element(5);
    ParamBaseFieldPtr handle(nullptr, &element);
    element.setValue(1.0);
    EXPECT_TRUE(element.changed());
    EXPECT_TRUE(handle.changed());
    handle.dropFlag();
    EXPECT_FALSE(handle.changed());
    EXPECT_FALSE(element.changed());
    EXPECT_EQ(handle.getParam(), &element);
    EXPECT_EQ(handle.id(), 5u);
}

TEST(Field, FieldFlagStaysUpAfterCleanChanged)
{
    BPDouble element(5);
    BPField field(1, 1);
    field.setElement(0, 0, &element);
    element.setValue(1.0);
    ASSERT_TRUE(field.changed());
    field.cleanChanged();
    EXPECT_TRUE(field.changed());
    field.dropFlag();
    EXPECT_TRUE(field.changed());

    BPField fresh(1, 1);
    fresh.upFlag();
    fresh.cleanChanged();
    EXPECT_TRUE(fresh.changed());
}

TEST(Field, DropIsCountedOverTheFieldsClients)
{
    BPDouble a(1), b(2);
    BPField field(1, 2);
    field.setElement(0, 0, &a);
    field.setElement(0, 1, &b);
    a.setValue(1.0);
    b.setValue(2.0);
    ParamBasePtr first(&field, false);
    ParamBasePtr second(&field, false);

    field.dropFlag();
    EXPECT_TRUE(a.changed());
    EXPECT_TRUE(b.changed());
    field.dropFlag();
    EXPECT_FALSE(a.changed());
    EXPECT_FALSE(b.changed());

    // The count starts again: one more drop is not enough.
    a.setValue(3.0);
    field.dropFlag();
    EXPECT_TRUE(a.changed());
    field.dropFlag();
    EXPECT_FALSE(a.changed());

    // The cell handles were cleared too: a write without full sends nothing.
    const QByteArray expected = plainBytes([](QDataStream &s) { s << qint32(0) << qint32(4) << qint32(2) << qint32(0); });
    EXPECT_EQ(recordOf(field, false), expected);
}

TEST(Field, WithoutClientsEveryDropClears)
{
    BPDouble a(1);
    BPField field(1, 1);
    field.setElement(0, 0, &a);
    a.setValue(1.0);
    field.dropFlag();
    EXPECT_FALSE(a.changed());
    a.setValue(2.0);
    field.dropFlag();
    EXPECT_FALSE(a.changed());
}

// --- payload --------------------------------------------------------------------------

TEST(Field, EmptyFieldWritesACountOfZeroOnly)
{
    BPField sized(3, 4);
    sized.setState(8);
    EXPECT_EQ(recordOf(sized, false),
              plainBytes([](QDataStream &s) { s << qint32(0) << qint32(4) << qint32(8) << qint32(0); }));
    EXPECT_EQ(recordOf(sized, true),
              plainBytes([](QDataStream &s) { s << qint32(0) << qint32(4) << qint32(8) << qint32(0); }));

    BPField noArray(12);
    EXPECT_EQ(recordOf(noArray, true),
              plainBytes([](QDataStream &s) { s << qint32(12) << qint32(4) << qint32(2) << qint32(0); }));
}

TEST(Field, FirstWriteSendsEveryElementAndTheSecondOnlyChanges)
{
    BPDouble a(11), b(12), c(13);
    a.setValue(1.0);
    b.setValue(2.0);
    c.setValue(3.0);
    BPField field(20);
    field.setDim(2, 3);
    // Filled out of order; the wire goes row by row and by rising column.
    field.setElement(1, 2, &c);
    field.setElement(0, 1, &a);
    field.setElement(1, 0, &b);

    const QByteArray first = plainBytes([](QDataStream &s) {
        s << qint32(20) << qint32(4) << qint32(2) << qint32(3);
        s << qint32(0) << qint32(1);
        doubleRecord(s, 11, 2, 1.0);
        s << qint32(1) << qint32(0);
        doubleRecord(s, 12, 2, 2.0);
        s << qint32(1) << qint32(2);
        doubleRecord(s, 13, 2, 3.0);
    });
    EXPECT_EQ(recordOf(field, false), first);
    EXPECT_FALSE(a.changed());
    EXPECT_FALSE(b.changed());
    EXPECT_FALSE(c.changed());

    b.setValue(5.0);
    const QByteArray second = plainBytes([](QDataStream &s) {
        s << qint32(20) << qint32(4) << qint32(2) << qint32(1) << qint32(1) << qint32(0);
        doubleRecord(s, 12, 2, 5.0);
    });
    EXPECT_EQ(recordOf(field, false), second);
    EXPECT_EQ(recordOf(field, false),
              plainBytes([](QDataStream &s) { s << qint32(20) << qint32(4) << qint32(2) << qint32(0); }));
}

TEST(Field, FullWriteSendsEveryFilledCellAndClearsTheirFlags)
{
    BPVariant a(11), b(12);
    a.setValue(1);
    b.setValue(QStringLiteral("b"));
    BPField field(1, 3);
    field.setElement(0, 0, &a);
    field.setElement(0, 2, &b);
    recordOf(field, false); // the elements' first writes
    ASSERT_FALSE(a.changed());
    ASSERT_FALSE(b.changed());

    a.setState(8); // only a changed
    EXPECT_TRUE(a.changed());
    // Both cells go out; each element's full comes from its handle, whose first write is
    // over, so neither sends its limits although the field's write is full.
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(4) << qint32(2) << qint32(2);
        s << qint32(0) << qint32(0);
        variantRecord(s, 11, 8, QVariant(1), false);
        s << qint32(0) << qint32(2);
        variantRecord(s, 12, 2, QVariant(QStringLiteral("b")), false);
    });
    EXPECT_EQ(recordOf(field, true), expected);
    EXPECT_FALSE(a.changed());
    EXPECT_FALSE(b.changed());
    EXPECT_EQ(recordOf(field, false),
              plainBytes([](QDataStream &s) { s << qint32(0) << qint32(4) << qint32(2) << qint32(0); }));
}

TEST(Field, ElementsFullWriteComesFromItsHandle)
{
    BPVariant a(11);
    a.setValue(2.5);
    BPField field(1, 1);
    field.setElement(0, 0, &a);
    // The field writes without full, the element's first write through its handle is full:
    // its limits block travels whole.
    const QByteArray first = plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(4) << qint32(2) << qint32(1) << qint32(0) << qint32(0);
        variantRecord(s, 11, 2, QVariant(2.5), true);
    });
    EXPECT_EQ(recordOf(field, false), first);
}

TEST(Field, WriteFieldIsTheRecordWithoutFull)
{
    BPDouble a(1), b(2);
    BPField viaWriteField(9), viaWrite(9);
    for (BPField *f : {&viaWriteField, &viaWrite}) {
        f->setDim(1, 2);
        f->setState(8);
    }
    viaWriteField.setElement(0, 0, &a);
    viaWrite.setElement(0, 0, &a);
    viaWriteField.setElement(0, 1, &b);
    viaWrite.setElement(0, 1, &b);

    QByteArray byWriteField;
    {
        QContainerPacket packet(&byWriteField);
        viaWriteField.writeField(packet);
    }
    EXPECT_EQ(byWriteField, recordOf(viaWrite, false));
    // And without full, only changed cells: none after the first write.
    QByteArray again;
    {
        QContainerPacket packet(&again);
        viaWriteField.writeField(packet);
    }
    EXPECT_EQ(again, plainBytes([](QDataStream &s) { s << qint32(9) << qint32(4) << qint32(8) << qint32(0); }));
}

TEST(Field, CountIsPatchedInPlaceBehindEarlierBytes)
{
    BPDouble a(1);
    a.setValue(7.0);
    BPField field(3);
    field.setDim(1, 1);
    field.setElement(0, 0, &a);
    QByteArray bytes;
    {
        QContainerPacket packet(&bytes);
        packet << qint32(0x11111111) << QStringLiteral("before");
        field.write(packet, false);
        packet << qint32(0x22222222);
    }
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(0x11111111) << QStringLiteral("before");
        s << qint32(3) << qint32(4) << qint32(2) << qint32(1) << qint32(0) << qint32(0);
        doubleRecord(s, 1, 2, 7.0);
        s << qint32(0x22222222);
    });
    EXPECT_EQ(bytes, expected);
}

TEST(Field, CannotRead)
{
    BPDouble a(1);
    BPField sender(4);
    sender.setDim(1, 1);
    sender.setElement(0, 0, &a);
    const QByteArray record = recordOf(sender, true);

    BPField receiver(4);
    receiver.setDim(1, 1);
    QContainerPacket in(record);
    EXPECT_FALSE(receiver.read(in));
    EXPECT_EQ(in.position(), 12u); // the payload is untouched
    qint32 count = -1;
    in >> count;
    EXPECT_EQ(count, 1);

    QContainerPacket direct(record.mid(12));
    EXPECT_FALSE(receiver.readPrivate(direct));
    EXPECT_EQ(direct.position(), 0u);
}

TEST(Field, DestructorRemovesTheHandlesFromTheElements)
{
    CountedDouble a(1), b(2);
    {
        BPField field(2, 2);
        field.setElement(0, 0, &a);
        field.setElement(1, 1, &b);
        ParamBasePtr extra(&a, false);
        EXPECT_EQ(a.handleCount(), 2);
    }
    EXPECT_EQ(a.handleCount(), 0);
    EXPECT_EQ(b.handleCount(), 0);
    a.setValue(1.0); // no handle left to reach a destroyed field
    EXPECT_TRUE(a.changed());
}

TEST(Field, CollectionElementsGoOutInTheirOwnForm)
{
    BPList list(31);
    list.setList(QVariantList{1, QStringLiteral("x")});
    list.setState(8);
    BPMap map(32);
    QMap<double, QVariant> m;
    m.insert(0.5, QStringLiteral("half"));
    m.insert(4.0, 16);
    map.setMap(m);
    BPField field(30);
    field.setDim(1, 2);
    field.setElement(0, 1, &list);
    field.setElement(0, 0, &map);
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(30) << qint32(4) << qint32(2) << qint32(2);
        s << qint32(0) << qint32(0) << qint32(32) << qint32(7) << qint32(2) << qint32(2) << 4.0 << QVariant(16) << 0.5
          << QVariant(QStringLiteral("half"));
        s << qint32(0) << qint32(1) << qint32(31) << qint32(6) << qint32(8) << qint32(2) << QVariant(1)
          << QVariant(QStringLiteral("x"));
    });
    EXPECT_EQ(recordOf(field, false), expected);
}
