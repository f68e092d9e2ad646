// Hostile input for the group readers: announced counts that the data can't hold, and
// trees nested deeper than the reader accepts. Every such read ends quickly, with the
// result the format gives it and without building what the bytes can't describe.

#include "grouptest.h"

#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"

#include <gtest/gtest.h>

using namespace grouptest;
using telortest::packetBytes;
using telortest::plainBytes;

namespace {

constexpr qint32 Huge = 0x7FFFFFFF;

/** A chain of @p levels nodes, each the only child of the one above; the last is a parameter. */
QByteArray chainRecord(int levels)
{
    return plainBytes([levels](QDataStream &s) {
        for (int i = 1; i < levels; ++i)
            s << qint32(1) << false << quint32(0) << qint32(1);
        s << qint32(3) << false << quint32(0) << qint32(0) << qint32(0);
        for (int i = 1; i < levels; ++i)
            s << qint32(1);
    });
}

int depthOf(const ParamGroupItem &item)
{
    int deepest = 0;
    for (const ParamGroupItem *child : item.children)
        deepest = qMax(deepest, depthOf(*child));
    return deepest + 1;
}

} // namespace

TEST(GroupHostile, TreeOfTheDeepestAcceptedLevelReadsBack)
{
    const QByteArray bytes = chainRecord(ParamGroupItem::MaxDepth);
    ParamGroupItem item;
    unsigned int position = 0;
    EXPECT_TRUE(readInto(item, bytes, &position));
    EXPECT_EQ(position, static_cast<unsigned int>(bytes.size()));
    EXPECT_EQ(depthOf(item), ParamGroupItem::MaxDepth);
    EXPECT_EQ(recordOf(item), bytes);
}

TEST(GroupHostile, TreeOneLevelTooDeepIsRefused)
{
    const QByteArray bytes = chainRecord(ParamGroupItem::MaxDepth + 1);
    ParamGroupItem item;
    EXPECT_FALSE(readInto(item, bytes));
    EXPECT_TRUE(item.children.isEmpty()); // the failed child is not attached
    EXPECT_EQ(item.type, ParamGroupItem::GroupItem);
}

TEST(GroupHostile, VeryDeepNestingEndsWithoutExhaustingTheStack)
{
    // 200,000 levels announced, far more than the bound.
    QByteArray bytes;
    {
        QDataStream s(&bytes, QIODevice::WriteOnly);
        s.setVersion(QDataStream::Qt_5_15);
        for (int i = 0; i < 200000; ++i)
            s << qint32(1) << false << quint32(0) << qint32(1);
    }
    ParamGroupItem item;
    EXPECT_FALSE(readInto(item, bytes));
    EXPECT_TRUE(item.children.isEmpty());

    ParamGroupInfo info(1);
    EXPECT_FALSE(info.readPrivate(*std::make_unique<QContainerPacket>(plainBytes([&](QDataStream &s) {
        s << QString() << QString() << QString();
        s.writeRawData(bytes.constData(), bytes.size());
    }))));
}

TEST(GroupHostile, HugeChildCountWithNoDataFailsWithoutBuildingChildren)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(1) << true << quint32(0) << Huge; });
    ParamGroupItem item;
    EXPECT_FALSE(readInto(item, bytes));
    EXPECT_TRUE(item.children.isEmpty());
    EXPECT_TRUE(item.flag);
}

TEST(GroupHostile, ChildCountBeyondTheDataKeepsTheChildrenThatAreThere)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint32(1) << false << quint32(0) << Huge;
        plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("1")}});
        plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("2")}});
    });
    ParamGroupItem item;
    EXPECT_FALSE(readInto(item, bytes));
    EXPECT_EQ(item.getParamList(), (QList<unsigned int>{1, 2}));
}

TEST(GroupHostile, HugeCountsInsideEveryLevel)
{
    // Each level announces a huge number of children and holds one.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        for (int i = 0; i < 50; ++i)
            s << qint32(1) << false << quint32(0) << Huge;
    });
    ParamGroupItem item;
    EXPECT_FALSE(readInto(item, bytes));
    EXPECT_TRUE(item.children.isEmpty());
}

TEST(GroupHostile, HugeTagCountReadsAsEmptyTags)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint32(1) << false << quint32(0xFFFFFFFF) << QStringLiteral("k") << QStringLiteral("v");
    });
    ParamGroupItem item;
    EXPECT_TRUE(readInto(item, bytes)); // the record ends after the tags: no children, counts 0
    EXPECT_TRUE(item.tags.isEmpty());
}

TEST(GroupHostile, HugeParameterCountFailsWithTheRecordsThatAreThere)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QString() << QString() << QString();
        plainLeaf(s, 1, Tags());
        s << Huge << quint32(5) << QStringLiteral("five");
    });
    ParamGroupInfo info(1);
    info.setPacket(packetBytes(2, 1, 1, body));
    EXPECT_FALSE(info.read());
    EXPECT_EQ(info.params, (QList<ParamGroupInfoBase::Data>{{5, QStringLiteral("five")}}));

    ParamGroupCopyPasteRemoveInfo copy(1);
    copy.setPacket(packetBytes(2, 1, 1, body));
    EXPECT_TRUE(copy.read());
    EXPECT_TRUE(copy.what.isEmpty());

    ParamGroupInsertParametersInfo insert;
    insert.setPacket(packetBytes(2, 10, 1, body));
    EXPECT_FALSE(insert.read());
}

TEST(GroupHostile, HugeGroupCountEndsWithOneEmptyGroupAsTheDataDescribesIt)
{
    // Past the end of the data a group reads as an empty list under an empty key; every
    // further one replaces it, and the trailing count (0) can't match.
    const QByteArray body = plainBytes([](QDataStream &s) { s << QStringLiteral("e") << Huge; });
    ParamGroupRemoveParametersInfo info;
    info.setPacket(packetBytes(2, 14, 1, body));
    EXPECT_FALSE(info.read());
    ASSERT_EQ(info.removed.size(), 1);
    EXPECT_TRUE(info.removed.contains(QString()));
    EXPECT_TRUE(info.removed.value(QString()).isEmpty());
}

TEST(GroupHostile, HugeListCountRefusesTheGroup)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QString() << qint32(2);
        s << qint32(0) << QStringLiteral("first") << qint32(0);
        s << Huge << QStringLiteral("second") << quint32(1) << QStringLiteral("n") << QString() << QString() << QString();
    });
    ParamGroupRemoveParametersInfo info;
    info.setPacket(packetBytes(2, 14, 1, body));
    EXPECT_FALSE(info.read());
    EXPECT_EQ(info.removed.keys(), (QList<QString>{QStringLiteral("first")}));
}

TEST(GroupHostile, TruncatedBodiesReadAsTheirCountsSay)
{
    ParamGroupInsertParametersInfo full;
    full.path = QStringLiteral("/plant");
    full.item.type = ParamGroupItem::GroupItem;
    full.item.children << param(1) << group(QStringLiteral("g"));
    full.params << ParamGroupInfoBase::Data{1, QStringLiteral("one")};
    full.anchor = QStringLiteral("a");
    const QByteArray body = telortest::bodyOf(full.write());

    // A cut before a positive count is read leaves a list that reads as empty, with
    // matching zero counts; a cut inside a list fails its trailing count.
    const int strings = plainBytes([](QDataStream &s) { s << QStringLiteral("/plant") << QString() << QString(); }).size();
    const int childCountEnd = strings + 13;
    const int itemEnd = strings + recordOf(full.item).size();
    const int paramsCountEnd = itemEnd + 4;
    const int paramsEnd = paramsCountEnd + plainBytes([](QDataStream &s) { s << quint32(1) << QStringLiteral("one"); }).size() + 4;
    for (int cut = 0; cut < body.size(); ++cut) {
        const bool expected = cut < childCountEnd || (cut >= itemEnd && cut < paramsCountEnd) || cut >= paramsEnd;
        ParamGroupInsertParametersInfo insert;
        insert.setPacket(packetBytes(2, 10, 1, body.left(cut)));
        EXPECT_EQ(insert.read(), expected) << cut;
        ParamGroupCopyPasteRemoveInfo copy(1);
        copy.setPacket(packetBytes(2, 1, 1, body.left(cut)));
        EXPECT_TRUE(copy.read()) << cut;
    }

    ParamGroupRemoveParametersInfo removeFull;
    removeFull.removed.insert(QStringLiteral("k"), {ParamGroupRemoveParametersInfo::Data{1, QStringLiteral("n"), QString(),
                                                                                        QString(), QStringLiteral("/p")}});
    const QByteArray removeBody = telortest::bodyOf(removeFull.write());
    const int groupCountEnd = 8; // the null `extra` and the group count
    for (int cut = 0; cut < removeBody.size(); ++cut) {
        ParamGroupRemoveParametersInfo remove;
        remove.setPacket(packetBytes(2, 14, 1, removeBody.left(cut)));
        EXPECT_EQ(remove.read(), cut < groupCountEnd) << cut;
    }
}
