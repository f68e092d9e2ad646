// The record of a group tree node: bytes against plain stream writes, round trips, and
// what the reader makes of records that don't match their counts.

#include "grouptest.h"

#include <gtest/gtest.h>

using namespace grouptest;
using telortest::plainBytes;

TEST(GroupItemWire, EmptyNodeWritesTypeFlagAndThreeZeroCounts)
{
    const ParamGroupItem item;
    const QByteArray expected = plainBytes([](QDataStream &s) { s << qint32(0) << false << quint32(0) << qint32(0) << qint32(0); });
    EXPECT_EQ(recordOf(item), expected);
    EXPECT_EQ(expected.size(), 17);

    ParamGroupItem back(ParamGroupItem::GroupItem, true);
    unsigned int position = 0;
    EXPECT_TRUE(readInto(back, expected, &position));
    EXPECT_EQ(position, 17u);
    EXPECT_EQ(back.type, ParamGroupItem::NoItem);
    EXPECT_FALSE(back.flag);
    EXPECT_TRUE(back.tags.isEmpty());
    EXPECT_TRUE(back.children.isEmpty());
}

TEST(GroupItemWire, NodeWithTagsWritesThemLastEntryFirst)
{
    Tags tags;
    for (int i = 0; i < 12; ++i)
        tags.insert(QStringLiteral("key%1").arg(i), QStringLiteral("value %1").arg(i));
    const ParamGroupItem item(ParamGroupItem::ParamItem, true, tags);
    const QByteArray expected = plainBytes([&](QDataStream &s) { plainLeaf(s, 3, item.tags, true); });
    EXPECT_EQ(recordOf(item), expected);

    ParamGroupItem back;
    EXPECT_TRUE(readInto(back, expected));
    EXPECT_EQ(back.type, ParamGroupItem::ParamItem);
    EXPECT_TRUE(back.flag);
    EXPECT_EQ(back.tags, tags);
}

TEST(GroupItemWire, ChildrenAreNestedBetweenTheTwoCounts)
{
    ParamGroupItem root(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), QStringLiteral("R")}});
    ParamGroupItem *g = group(QStringLiteral("G"));
    g->children << param(7);
    root.children << param(1) << g;

    const QByteArray expected = plainBytes([](QDataStream &s) {
        plainNode(s, 1, false, Tags{{QStringLiteral("name"), QStringLiteral("R")}}, 2,
                  [](QDataStream &s) {
                      plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("1")}});
                      plainNode(s, 1, false, Tags{{QStringLiteral("name"), QStringLiteral("G")}}, 1,
                                [](QDataStream &s) { plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("7")}}); }, 1);
                  },
                  2);
    });
    EXPECT_EQ(recordOf(root), expected);
}

TEST(GroupItemWire, UnknownTypeNumbersTravelAsTheyAre)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { plainLeaf(s, 1000, Tags()); });
    ParamGroupItem item;
    EXPECT_TRUE(readInto(item, bytes));
    EXPECT_EQ(static_cast<int>(item.type), 1000);
    EXPECT_TRUE(item.getTypeName().isNull());
    EXPECT_EQ(recordOf(item), bytes);
}

namespace {

void expectSameTree(const ParamGroupItem &a, const ParamGroupItem &b)
{
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(a.flag, b.flag);
    EXPECT_EQ(a.tags, b.tags);
    ASSERT_EQ(a.children.size(), b.children.size());
    for (int i = 0; i < a.children.size(); ++i)
        expectSameTree(*a.children.at(i), *b.children.at(i));
}

} // namespace

TEST(GroupItemWire, ThreeLevelTreeComesBackWithItsOrderAndTags)
{
    ParamGroupItem root(ParamGroupItem::GroupItem, true, Tags{{QStringLiteral("name"), QStringLiteral("Plant")}});
    for (int g = 0; g < 4; ++g) {
        Tags groupTags;
        for (int t = 0; t < 6; ++t)
            groupTags.insert(QStringLiteral("t%1").arg(t * 7 + g), QStringLiteral("v%1").arg(t));
        auto *groupItem = new ParamGroupItem(g == 2 ? ParamGroupItem::FieldItem : ParamGroupItem::GroupItem, g % 2, groupTags);
        for (int p = 0; p < 5; ++p) {
            ParamGroupItem *leaf = param(static_cast<unsigned int>(100 * g + 10 - p));
            leaf->tags.insert(QStringLiteral("unit"), QStringLiteral("bar"));
            groupItem->children << leaf;
        }
        root.children << groupItem;
    }
    const QByteArray bytes = recordOf(root);

    ParamGroupItem back;
    unsigned int position = 0;
    EXPECT_TRUE(readInto(back, bytes, &position));
    EXPECT_EQ(position, static_cast<unsigned int>(bytes.size()));
    expectSameTree(root, back);
    EXPECT_EQ(back.children.at(1)->getParamList(), (QList<unsigned int>{110, 109, 108, 107, 106}));
    EXPECT_EQ(back.children.at(2)->type, ParamGroupItem::FieldItem);
}

TEST(GroupItemWire, RoundTripThroughAMessagePacket)
{
    // The record travels inside messages: read it back after the whole packet went
    // through write(), setPacket() and read() of a carrier.
    class Carrier : public QProtocolStruct
    {
    public:
        void writePrivate(QContainerPacket &packet) const override { tree.write(packet); }
        bool readPrivate(QContainerPacket &packet) override { return tree.read(packet); }
        ParamGroupItem tree;
    };
    Carrier out;
    out.tree.type = ParamGroupItem::GroupItem;
    out.tree.children << param(1) << group(QStringLiteral("empty"));
    const QByteArray packet = out.write();

    Carrier in;
    in.setPacket(packet);
    EXPECT_TRUE(in.read());
    expectSameTree(out.tree, in.tree);
}

TEST(GroupItemWire, TrailingCountDifferentFromLeadingCountFailsAfterAttachingAllChildren)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        plainNode(s, 1, false, Tags(), 2,
                  [](QDataStream &s) {
                      plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("1")}});
                      plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("2")}});
                  },
                  3);
    });
    ParamGroupItem item;
    unsigned int position = 0;
    EXPECT_FALSE(readInto(item, bytes, &position));
    EXPECT_EQ(position, static_cast<unsigned int>(bytes.size()));
    EXPECT_EQ(item.type, ParamGroupItem::GroupItem);
    EXPECT_EQ(item.getParamList(), (QList<unsigned int>{1, 2}));
}

TEST(GroupItemWire, FailedChildIsNotAttachedAndStopsTheRead)
{
    // The second child's trailing count is wrong; the parent stops there and reads no
    // trailing count of its own.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        plainNode(s, 1, true, Tags(), 3,
                  [](QDataStream &s) {
                      plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("1")}});
                      plainNode(s, 1, false, Tags(), 1, [](QDataStream &s) { plainLeaf(s, 3, Tags()); }, 5);
                  },
                  3);
        s << qint32(0x11223344);
    });
    ParamGroupItem item;
    unsigned int position = 0;
    EXPECT_FALSE(readInto(item, bytes, &position));
    EXPECT_EQ(position, static_cast<unsigned int>(bytes.size() - 8));
    EXPECT_TRUE(item.flag);
    ASSERT_EQ(item.children.size(), 1);
    EXPECT_EQ(item.children.at(0)->getID(), 1u);
}

TEST(GroupItemWire, ReadAppendsSoAUsedNodeFailsTheCount)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        plainNode(s, 1, false, Tags(), 1, [](QDataStream &s) { plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("9")}}); }, 1);
    });
    ParamGroupItem item(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("old"), QStringLiteral("x")}});
    item.children << param(1);
    EXPECT_FALSE(readInto(item, bytes));
    EXPECT_EQ(item.getParamList(), (QList<unsigned int>{1, 9}));
    EXPECT_TRUE(item.tags.isEmpty()); // replaced by the empty tags of the record

    ParamGroupItem fresh;
    EXPECT_TRUE(readInto(fresh, bytes));
    EXPECT_FALSE(readInto(fresh, bytes)); // a second read into the same node fails
    EXPECT_EQ(fresh.children.size(), 2);
}

TEST(GroupItemWire, NullChildIsCountedButNotWrittenSoTheTreeDoesNotReadBack)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    root.children << param(1) << nullptr;
    const QByteArray expected = plainBytes([](QDataStream &s) {
        plainNode(s, 1, false, Tags(), 2, [](QDataStream &s) { plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("1")}}); }, 2);
    });
    EXPECT_EQ(recordOf(root), expected);

    ParamGroupItem back;
    EXPECT_FALSE(readInto(back, expected));
    EXPECT_EQ(back.getParamList(), (QList<unsigned int>{1}));
}

TEST(GroupItemWire, RecordCutAfterFlagReadsAsAChildlessNode)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(2) << true; });
    ParamGroupItem item;
    EXPECT_TRUE(readInto(item, bytes));
    EXPECT_EQ(item.type, ParamGroupItem::FieldItem);
    EXPECT_TRUE(item.flag);
    EXPECT_TRUE(item.tags.isEmpty());
    EXPECT_TRUE(item.children.isEmpty());

    ParamGroupItem nothing(ParamGroupItem::ParamItem, true, Tags{{QStringLiteral("a"), QStringLiteral("b")}});
    EXPECT_TRUE(readInto(nothing, QByteArray()));
    EXPECT_EQ(nothing.type, ParamGroupItem::NoItem);
    EXPECT_FALSE(nothing.flag);
    EXPECT_TRUE(nothing.tags.isEmpty());
}

TEST(GroupItemWire, TagsThatFailInTheMiddleAreEmptyAndReadingGoesOn)
{
    // The second pair's value has an odd byte length, which a QString can't have: the
    // tags come out empty and the counts that follow are read from where the stream is.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint32(1) << false << quint32(2) << QStringLiteral("a") << QStringLiteral("b") << QStringLiteral("c");
        s << quint32(3); // odd length of the second value, no characters follow
        s << qint32(0) << qint32(0);
    });
    ParamGroupItem item(ParamGroupItem::NoItem, false, Tags{{QStringLiteral("old"), QStringLiteral("x")}});
    unsigned int position = 0;
    EXPECT_TRUE(readInto(item, bytes, &position));
    EXPECT_EQ(position, static_cast<unsigned int>(bytes.size()));
    EXPECT_EQ(item.type, ParamGroupItem::GroupItem);
    EXPECT_TRUE(item.tags.isEmpty());
}

TEST(GroupItemWire, NegativeChildCountReadsNoChildren)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { plainNode(s, 1, false, Tags(), -4, nullptr, 0); });
    ParamGroupItem item;
    EXPECT_TRUE(readInto(item, bytes));
    EXPECT_TRUE(item.children.isEmpty());

    const QByteArray mismatch = plainBytes([](QDataStream &s) { plainNode(s, 1, false, Tags(), -4, nullptr, -4); });
    ParamGroupItem other;
    EXPECT_FALSE(readInto(other, mismatch));
}

TEST(GroupItemWire, RepeatedTagKeyIsKeptTwiceAsQtKeepsIt)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint32(3) << false << quint32(2) << QStringLiteral("id") << QStringLiteral("1") << QStringLiteral("id")
          << QStringLiteral("2") << qint32(0) << qint32(0);
    });
    ParamGroupItem item;
    EXPECT_TRUE(readInto(item, bytes));
    EXPECT_EQ(item.tags.size(), 2);
    EXPECT_EQ(item.getID(), 2u); // the entry read last is found first
}
