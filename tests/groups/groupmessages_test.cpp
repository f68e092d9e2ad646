// The group change messages: identities, copying and assignment, and the insert position.

#include "grouptest.h"
#include "messageheader.h"

#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"

#include <gtest/gtest.h>

using namespace grouptest;
using telortest::identityOf;
using telortest::routeOf;

namespace {

// The header words compared by these tests, as lists (see messageheader.h).
using Identity = QList<qint32>;
using Route = QList<qint32>;

/** A message of type @p T as received: its header parsed from a packet with the given words. */
template<typename T>
void receive(T &message, int serviceId, int messageId, int messageType, const Route &route)
{
    message.setPacket(telortest::packetBytes(serviceId, messageId, messageType, QByteArray(), route.at(0), route.at(1),
                                             route.at(2)));
    message.read(); // an empty body: the header is what matters here
}

} // namespace

TEST(GroupMessages, ConstructorsStampTheirIdentity)
{
    const ParamGroupInfoBase base;
    EXPECT_EQ(identityOf(base), (Identity{2, QProtocolStruct().getHeader().messageId, 1}));
    EXPECT_EQ(identityOf(ParamGroupInfo(33)), (Identity{2, 33, 1}));
    EXPECT_EQ(identityOf(ParamGroupCopyPasteRemoveInfo(-5)), (Identity{2, -5, 1}));
    EXPECT_EQ(identityOf(ParamGroupInsertParametersInfo()), (Identity{2, 10, 1}));
    EXPECT_EQ(identityOf(ParamGroupRemoveParametersInfo()), (Identity{2, 14, 1}));
}

TEST(GroupMessages, NewMessagesAreEmpty)
{
    const ParamGroupInfo info(3);
    EXPECT_TRUE(info.path.isEmpty());
    EXPECT_TRUE(info.extra1.isEmpty());
    EXPECT_TRUE(info.extra2.isEmpty());
    EXPECT_EQ(info.item.type, ParamGroupItem::NoItem);
    EXPECT_FALSE(info.item.flag);
    EXPECT_TRUE(info.item.tags.isEmpty());
    EXPECT_TRUE(info.item.children.isEmpty());
    EXPECT_TRUE(info.params.isEmpty());

    const ParamGroupCopyPasteRemoveInfo copy(4);
    EXPECT_TRUE(copy.what.isEmpty());
    EXPECT_TRUE(copy.whatExtra.isEmpty());

    const ParamGroupInsertParametersInfo insert;
    EXPECT_TRUE(insert.anchor.isEmpty());
    EXPECT_TRUE(insert.anchorExtra.isEmpty());
    EXPECT_EQ(insert.mode, 0);

    const ParamGroupRemoveParametersInfo remove;
    EXPECT_TRUE(remove.extra.isEmpty());
    EXPECT_TRUE(remove.removed.isEmpty());

    EXPECT_EQ(ParamGroupInfoBase::Data().id, 0u);
    EXPECT_EQ(ParamGroupRemoveParametersInfo::Data().id, 0u);
}

TEST(GroupMessages, InsertPositionMovesBelowTheAnchorOnlyInBelowMode)
{
    ParamGroupInsertParametersInfo insert;
    const struct {
        int mode, expected;
    } rows[] = {{0, 5}, {1, 5}, {2, 6}, {3, 5}, {-1, 5}};
    for (const auto &row : rows) {
        insert.mode = row.mode;
        EXPECT_EQ(insert.getInsertPosition(5), row.expected) << row.mode;
    }
    insert.mode = ParamGroupInsertParametersInfo::BelowMode;
    EXPECT_EQ(insert.getInsertPosition(0), 1);
    EXPECT_EQ(insert.getInsertPosition(-1), 0);
}

TEST(GroupMessages, BaseCopyConstructorKeepsIdentityButNotTheOtherHeaderWords)
{
    ParamGroupInfo received(0);
    receive(received, 7, 42, 4, Route{101, 102, 103});
    ASSERT_EQ(identityOf(received), (Identity{7, 42, 4}));
    ASSERT_EQ(routeOf(received), (Route{101, 102, 103}));

    const ParamGroupInfoBase copy(received);
    EXPECT_EQ(identityOf(copy), (Identity{7, 42, 4}));
    EXPECT_EQ(routeOf(copy), (Route{0, 0, 0}));
    EXPECT_EQ(routeOf(copy), routeOf(QProtocolStruct()));
}

TEST(GroupMessages, CopyingAParamGroupInfoKeepsTheSourcesMessageId)
{
    ParamGroupInfo source(77);
    source.setRoute(1, 2, 3);
    source.path = QStringLiteral("/a");
    const ParamGroupInfo copy(source);
    EXPECT_EQ(identityOf(copy), (Identity{2, 77, 1}));
    EXPECT_EQ(routeOf(copy), (Route{0, 0, 0}));
    EXPECT_EQ(copy.path, QStringLiteral("/a"));

    ParamGroupInfo assigned(5);
    assigned = source;
    EXPECT_EQ(identityOf(assigned), (Identity{2, 77, 1}));
}

TEST(GroupMessages, DerivedCopyConstructorsCopyIdentityAndFields)
{
    ParamGroupCopyPasteRemoveInfo copySource(21);
    receive(copySource, 2, 21, 9, Route{5, 6, 7});
    copySource.what = QStringLiteral("what");
    copySource.whatExtra = QStringLiteral("whatExtra");
    copySource.params << ParamGroupInfoBase::Data{1, QStringLiteral("p")};
    const ParamGroupCopyPasteRemoveInfo copy(copySource);
    EXPECT_EQ(identityOf(copy), (Identity{2, 21, 9}));
    EXPECT_EQ(routeOf(copy), (Route{0, 0, 0}));
    EXPECT_EQ(copy.what, QStringLiteral("what"));
    EXPECT_EQ(copy.whatExtra, QStringLiteral("whatExtra"));
    EXPECT_EQ(copy.params, copySource.params);

    ParamGroupInsertParametersInfo insertSource;
    receive(insertSource, 3, 99, 4, Route{5, 6, 7});
    insertSource.anchor = QStringLiteral("a");
    insertSource.anchorExtra = QStringLiteral("b");
    insertSource.mode = 2;
    const ParamGroupInsertParametersInfo insertCopy(insertSource);
    EXPECT_EQ(identityOf(insertCopy), (Identity{3, 99, 4}));
    EXPECT_EQ(routeOf(insertCopy), (Route{0, 0, 0}));
    EXPECT_EQ(insertCopy.anchor, QStringLiteral("a"));
    EXPECT_EQ(insertCopy.anchorExtra, QStringLiteral("b"));
    EXPECT_EQ(insertCopy.mode, 2);
}

TEST(GroupMessages, BaseAssignmentCopiesTheIdentityWordsAndLeavesTheRoute)
{
    ParamGroupInfo source(0);
    receive(source, 8, 12, 3, Route{1, 2, 3});
    source.path = QStringLiteral("path");
    source.extra1 = QStringLiteral("e1");
    source.extra2 = QStringLiteral("e2");
    source.item.type = ParamGroupItem::GroupItem;
    source.item.tags.insert(QStringLiteral("name"), QStringLiteral("G"));
    source.item.children << param(1);
    source.params << ParamGroupInfoBase::Data{1, QStringLiteral("one")} << ParamGroupInfoBase::Data{2, QStringLiteral("two")};

    ParamGroupInfo target(4);
    target.setRoute(40, 50, 60);
    target = source;
    EXPECT_EQ(identityOf(target), (Identity{8, 12, 3}));
    EXPECT_EQ(routeOf(target), (Route{40, 50, 60}));
    EXPECT_EQ(target.path, QStringLiteral("path"));
    EXPECT_EQ(target.extra1, QStringLiteral("e1"));
    EXPECT_EQ(target.extra2, QStringLiteral("e2"));
    EXPECT_EQ(target.item.type, ParamGroupItem::GroupItem);
    EXPECT_EQ(target.item.tags, source.item.tags);
    EXPECT_EQ(target.item.getParamList(), (QList<unsigned int>{1}));
    EXPECT_NE(target.item.children.at(0), source.item.children.at(0));
    EXPECT_EQ(target.params, source.params);
}

TEST(GroupMessages, AssignmentAccumulatesTheChildrenOfTheItem)
{
    ParamGroupInfo source(1);
    source.item.children << param(2) << param(3);
    ParamGroupInfo target(1);
    target.item.children << param(1);
    target.params << ParamGroupInfoBase::Data{9, QStringLiteral("old")};
    target = source;
    EXPECT_EQ(target.item.getParamList(), (QList<unsigned int>{1, 2, 3}));
    EXPECT_TRUE(target.params.isEmpty()); // params are replaced, not accumulated
}

TEST(GroupMessages, AssignmentThroughTheBaseCopiesOnlyTheBasePart)
{
    ParamGroupCopyPasteRemoveInfo source(11);
    source.path = QStringLiteral("p");
    source.what = QStringLiteral("w");
    ParamGroupCopyPasteRemoveInfo target(12);
    target.what = QStringLiteral("mine");
    ParamGroupInfoBase &asBase = target;
    asBase = source;
    EXPECT_EQ(identityOf(target), (Identity{2, 11, 1}));
    EXPECT_EQ(target.path, QStringLiteral("p"));
    EXPECT_EQ(target.what, QStringLiteral("mine"));

    ParamGroupInsertParametersInfo insertSource;
    insertSource.anchor = QStringLiteral("a");
    insertSource.mode = 1;
    insertSource.path = QStringLiteral("q");
    ParamGroupInsertParametersInfo insertTarget;
    ParamGroupInfoBase &insertAsBase = insertTarget;
    insertAsBase = insertSource;
    EXPECT_EQ(insertTarget.path, QStringLiteral("q"));
    EXPECT_TRUE(insertTarget.anchor.isEmpty());
    EXPECT_EQ(insertTarget.mode, 0);
}

TEST(GroupMessages, DerivedAssignmentsCopyTheirOwnFields)
{
    ParamGroupCopyPasteRemoveInfo source(30);
    source.setRoute(1, 1, 1);
    source.what = QStringLiteral("w");
    source.whatExtra = QStringLiteral("we");
    source.extra2 = QStringLiteral("x2");
    ParamGroupCopyPasteRemoveInfo target(31);
    target.setRoute(9, 9, 9);
    target = source;
    EXPECT_EQ(identityOf(target), (Identity{2, 30, 1}));
    EXPECT_EQ(routeOf(target), (Route{9, 9, 9}));
    EXPECT_EQ(target.what, QStringLiteral("w"));
    EXPECT_EQ(target.whatExtra, QStringLiteral("we"));
    EXPECT_EQ(target.extra2, QStringLiteral("x2"));

    ParamGroupInsertParametersInfo insertSource;
    receive(insertSource, 2, 55, 1, Route{1, 1, 1});
    insertSource.anchor = QStringLiteral("a");
    insertSource.anchorExtra = QStringLiteral("ae");
    insertSource.mode = 7;
    ParamGroupInsertParametersInfo insertTarget;
    insertTarget = insertSource;
    EXPECT_EQ(identityOf(insertTarget), (Identity{2, 55, 1}));
    EXPECT_EQ(insertTarget.anchor, QStringLiteral("a"));
    EXPECT_EQ(insertTarget.anchorExtra, QStringLiteral("ae"));
    EXPECT_EQ(insertTarget.mode, 7);
}

TEST(GroupMessages, AssigningARemoveParametersInfoAlwaysLeavesMessageId14)
{
    ParamGroupRemoveParametersInfo source;
    receive(source, 5, 99, 4, Route{1, 2, 3});
    ASSERT_EQ(identityOf(source), (Identity{5, 99, 4}));
    source.extra = QStringLiteral("extra");
    source.removed.insert(QStringLiteral("g"), {ParamGroupRemoveParametersInfo::Data{1, QStringLiteral("n"), QStringLiteral("e1"),
                                                                                      QStringLiteral("e2"), QStringLiteral("/g")}});

    ParamGroupRemoveParametersInfo target;
    target.setRoute(7, 8, 9);
    target.removed.insert(QStringLiteral("old"), {});
    target = source;
    EXPECT_EQ(identityOf(target), (Identity{5, 14, 4}));
    EXPECT_EQ(routeOf(target), (Route{7, 8, 9}));
    EXPECT_EQ(target.extra, QStringLiteral("extra"));
    EXPECT_EQ(target.removed, source.removed);

    const ParamGroupRemoveParametersInfo copy(source);
    EXPECT_EQ(identityOf(copy), (Identity{5, 14, 4}));
    EXPECT_EQ(routeOf(copy), (Route{0, 0, 0}));
    EXPECT_EQ(copy.removed, source.removed);
}
