// A field sent by one side and applied on the other: a BPField over variants, lists and
// maps written as records, and a BPFieldClient built from the matching description
// reading them, directly and inside a values result message.

#include "fieldtest.h"
#include "telortest.h"

#include "bpfield.h"
#include "bpfieldclient.h"
#include "bplist.h"
#include "bpmap.h"
#include "bpvariant.h"
#include "parambaseptr.h"
#include "paramvaluesresult.h"
#include "qcontainerpacket.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using fieldtest::addCell;
using fieldtest::cellInfo;
using fieldtest::fieldInfo;
using fieldtest::recordOf;

namespace {

/**
 * The sending side of a 2 by 3 field: variants at (0,0) and (1,2) (the second with
 * limits), a list at (0,1), a map at (1,0); (0,2) and (1,1) are empty. The elements
 * belong to the fixture and outlive the field.
 */
struct Sender
{
    Sender()
        : number(11)
        , text(12)
        , list(13)
        , map(14)
        , field(10)
    {
        number.setValue(3.5);
        number.setState(8);
        text.limitsPrivate().setLowPossibleSetpoint(true, -5.0);
        text.limitsPrivate().setHiWarningSetpoint(true, 50.0);
        text.setValue(QStringLiteral("idle"));
        text.setState(8);
        list.setList(QVariantList{1, QStringLiteral("two"), QVariantList{3.0}});
        list.setState(8);
        QMap<double, QVariant> m;
        m.insert(0.25, QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7), Qt::UTC));
        m.insert(100.0, QStringLiteral("hundred"));
        map.setMap(m);
        map.setState(4096);
        field.setDim(2, 3);
        field.setElement(0, 0, &number);
        field.setElement(0, 1, &list);
        field.setElement(1, 0, &map);
        field.setElement(1, 2, &text);
        field.setState(8);
    }

    BPVariant number;
    BPVariant text;
    BPList list;
    BPMap map;
    BPField field;
};

/** The description that the receiving side has of the sender's field. */
ParamInfo senderDescription()
{
    ParamInfo description = fieldInfo(10, 2, 3);
    addCell(description, 0, 0, cellInfo(11, 1, QStringLiteral("number")));
    addCell(description, 0, 1, cellInfo(13, 6, QStringLiteral("list")));
    addCell(description, 1, 0, cellInfo(14, 7, QStringLiteral("map")));
    addCell(description, 1, 2, cellInfo(12, 3, QStringLiteral("text")));
    return description;
}

void expectSameCells(const Sender &sender, const BPFieldClient &client)
{
    ASSERT_FALSE(client.param(0, 0).isNull());
    EXPECT_EQ(client.param(0, 0)->variantValue(), sender.number.getValue());
    EXPECT_EQ(client.param(0, 0)->getState(), sender.number.getState());
    EXPECT_EQ(client.param(1, 2)->variantValue(), sender.text.getValue());
    EXPECT_EQ(client.param(0, 1).dynamicCast<BPList>()->getList(), sender.list.getList());
    EXPECT_EQ(client.param(0, 1)->stringValue(), QStringLiteral("OK"));
    EXPECT_EQ(client.param(1, 0).dynamicCast<BPMap>()->getMap(), sender.map.getMap());
    EXPECT_EQ(client.param(1, 0)->stringValue(), QStringLiteral("Fault"));
    EXPECT_EQ(client.getState(), 4096u);
}

} // namespace

TEST(FieldRoundTrip, AllCellsThenTheChangedOne)
{
    Sender sender;
    BPFieldClient client(senderDescription());
    ParamBasePtr screen(&client, false);

    const QByteArray first = recordOf(sender.field, false);
    {
        QContainerPacket in(first);
        ASSERT_TRUE(client.read(in));
        EXPECT_EQ(in.bytesLeft(), 0);
    }
    expectSameCells(sender, client);
    // The limits of the variant with limits travelled with its first write.
    bool set = false;
    EXPECT_EQ(client.param(1, 2)->limits().hiWarningSetpoint(set), 50.0);
    EXPECT_TRUE(set);
    EXPECT_TRUE(client.changed());
    client.dropFlag();

    // One element changes; only its cell goes out, and only its cell is read.
    sender.list.setList(QVariantList{QStringLiteral("new")});
    const QByteArray second = recordOf(sender.field, false);
    {
        QContainerPacket in(second);
        qint32 head[4] = {};
        in >> head[0] >> head[1] >> head[2] >> head[3];
        EXPECT_EQ(head[3], 1);
    }
    {
        QContainerPacket in(second);
        ASSERT_TRUE(client.read(in));
    }
    EXPECT_TRUE(client.changed());
    EXPECT_TRUE(client.param(0, 1)->changed());
    EXPECT_FALSE(client.param(0, 0)->changed());
    expectSameCells(sender, client);

    // Nothing changed: a record of no cells, which the receiver takes as no change.
    client.dropFlag();
    const QByteArray third = recordOf(sender.field, false);
    QContainerPacket in(third);
    ASSERT_TRUE(client.read(in));
    EXPECT_FALSE(client.changed());
}

TEST(FieldRoundTrip, ThroughAValuesResultMessage)
{
    Sender sender;
    QObject token;
    ParamValuesResult result;
    result.parent = &token;
    result.ids = {10u};
    {
        QContainerPacket out(&result.data);
        sender.field.writeField(out);
    }
    result.write();

    ParamValuesResult received;
    received.setPacket(result);
    ASSERT_TRUE(received.read());
    ASSERT_EQ(received.ids, QList<unsigned int>{10u});

    BPFieldClient client(senderDescription());
    QContainerPacket in(received.data);
    ASSERT_TRUE(client.read(in));
    expectSameCells(sender, client);
}

TEST(FieldRoundTrip, TwoReceiversReadTheSameRecord)
{
    Sender sender;
    const QByteArray record = recordOf(sender.field, true);
    BPFieldClient first(senderDescription());
    BPFieldClient second(senderDescription());
    QContainerPacket in(record);
    const unsigned int start = in.position();
    ASSERT_TRUE(first.read(in));
    in.at(start);
    ASSERT_TRUE(second.read(in));
    expectSameCells(sender, first);
    expectSameCells(sender, second);
}

TEST(FieldRoundTrip, LargeFieldOfVariants)
{
    constexpr int Rows = 16;
    constexpr int Columns = 16;
    std::vector<std::unique_ptr<BPVariant>> elements;
    ParamInfo description = fieldInfo(500, Rows, Columns);
    for (int r = 0; r < Rows; ++r) {
        for (int c = 0; c < Columns; ++c) {
            const unsigned int id = 1000 + r * Columns + c;
            elements.emplace_back(new BPVariant(id));
            elements.back()->setValue(r * 100 + c);
            elements.back()->setState(8);
            addCell(description, r, c, cellInfo(id, 5));
        }
    }
    BPField field(500);
    field.setDim(Rows, Columns);
    for (int i = 0; i < Rows * Columns; ++i)
        ASSERT_TRUE(field.setElement(i / Columns, i % Columns, elements[i].get()));

    BPFieldClient client(description);
    const QByteArray record = recordOf(field, false);
    QContainerPacket in(record);
    ASSERT_TRUE(client.read(in));
    for (int r = 0; r < Rows; ++r)
        for (int c = 0; c < Columns; ++c)
            EXPECT_EQ(client.param(r, c)->variantValue().toInt(), r * 100 + c);
    EXPECT_EQ(client.getState(), 8u);
    EXPECT_EQ(client.elementType(), 5);
}
