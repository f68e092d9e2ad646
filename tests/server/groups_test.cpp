// Group edits: applied to the server's tree, stored, and passed on to the other clients.

#include "servertest.h"

#include "grouptreeeditor.h"
#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"
#include "paraminfolist.h"
#include "paraminfoquery.h"
#include "sqlitearchivestore.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using namespace servertest;

namespace {

ParamGroupInfo createGroup(const QString &path, const QString &name)
{
    ParamGroupInfo message(8);
    message.path = path;
    message.item.type = ParamGroupItem::GroupItem;
    message.item.tags.insert(QStringLiteral("name"), name);
    return message;
}

/** The tree a client gets in its description list. */
ParamInfoList describe(Harness &h, quint64 connection)
{
    ParamInfoQuery query;
    h.send(connection, query);
    ParamInfoList list;
    const QList<QByteArray> frames = h.take(connection);
    EXPECT_EQ(frames.size(), 1);
    if (!frames.isEmpty()) {
        list.setPacket(frames.first());
        EXPECT_TRUE(list.read());
    }
    return list;
}

} // namespace

TEST(ServerGroups, CreatedGroupReachesTheOtherClients)
{
    Harness h(loadPlant(examplePlantPath()));
    h.server->connectionOpened(1);
    h.server->connectionOpened(2);
    h.server->connectionOpened(3);
    ParamGroupInfo create = createGroup(QStringLiteral("Burner"), QStringLiteral("Ignition"));
    create.setRoute(5, 6, 7);
    h.send(1, create);
    EXPECT_TRUE(h.take(1).isEmpty());
    for (const quint64 other : {quint64(2), quint64(3)}) {
        const QList<QByteArray> frames = h.take(other);
        ASSERT_EQ(frames.size(), 1);
        ParamGroupInfo passed(0);
        passed.setPacket(frames.first());
        ASSERT_TRUE(passed.read());
        EXPECT_EQ(identityOfPacket(frames.first()), (QList<qint32>{2, 8, 1}));
        EXPECT_EQ(passed.path, QStringLiteral("Burner"));
        EXPECT_EQ(passed.item.tagValue(QStringLiteral("name")), QStringLiteral("Ignition"));
    }
    const ParamInfoList list = describe(h, 2);
    const ParamGroupItem *burner = list.rootItem.children.at(2);
    EXPECT_EQ(burner->children.last()->tagValue(QStringLiteral("name")), QStringLiteral("Ignition"));
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: group created in \"Burner\""));
}

TEST(ServerGroups, InsertAndRemoveParameters)
{
    Harness h(loadPlant(examplePlantPath()));
    h.server->connectionOpened(1);
    h.server->connectionOpened(2);
    ParamGroupInsertParametersInfo insert;
    insert.path = QStringLiteral("Building");
    insert.anchor = QStringLiteral("109");
    insert.mode = ParamGroupInsertParametersInfo::BelowMode;
    insert.params = {{101, QStringLiteral("BOILER.T")}, {102, QStringLiteral("BOILER.P")}};
    h.send(1, insert);
    EXPECT_EQ(h.take(2).size(), 1);
    const ParamGroupItem *building = h.server->groupTree().children.at(3);
    EXPECT_EQ(building->getParamList(), (QList<unsigned int>{109, 101, 102, 114}));

    ParamGroupRemoveParametersInfo remove;
    ParamGroupRemoveParametersInfo::Data d;
    d.id = 101;
    d.path = QStringLiteral("Building");
    remove.removed.insert(QStringLiteral("Building"), {d});
    h.send(1, remove);
    EXPECT_EQ(h.take(2).size(), 1);
    EXPECT_EQ(building->getParamList(), (QList<unsigned int>{109, 102, 114}));
}

TEST(ServerGroups, PasteCopyAndRemoveGroups)
{
    Harness h(loadPlant(examplePlantPath()));
    ParamGroupCopyPasteRemoveInfo paste(12);
    paste.path = QStringLiteral("Building");
    paste.item.type = ParamGroupItem::GroupItem;
    paste.item.tags.insert(QStringLiteral("name"), QStringLiteral("Copy"));
    paste.item.children.append(new ParamGroupItem(ParamGroupItem::ParamItem, false, {{QStringLiteral("id"), QStringLiteral("101")}}));
    h.send(1, paste);
    GroupTreeEditor editor(const_cast<ParamGroupItem &>(h.server->groupTree()), {});
    ASSERT_TRUE(editor.findGroup(QStringLiteral("Building/Copy")));
    EXPECT_EQ(editor.findGroup(QStringLiteral("/Building/Copy"))->getParamList(), QList<unsigned int>{101});

    ParamGroupCopyPasteRemoveInfo remove(13);
    remove.path = QStringLiteral("Building");
    remove.what = QStringLiteral("Copy");
    h.send(1, remove);
    EXPECT_FALSE(editor.findGroup(QStringLiteral("Building/Copy")));
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: group \"Copy\" removed from \"Building\""));
}

TEST(ServerGroups, EditsThatCannotApplyAreRefusedAndNotPassedOn)
{
    Harness h(loadPlant(examplePlantPath()));
    h.server->connectionOpened(2);
    ParamGroupInfo nowhere = createGroup(QStringLiteral("No such group"), QStringLiteral("X"));
    h.send(1, nowhere);
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: group edit refused: no group \"No such group\""));
    ParamGroupInfo twice = createGroup(QString(), QStringLiteral("Boiler"));
    h.send(1, twice);
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: group edit refused: group \"\" already holds a group \"Boiler\""));
    ParamGroupInsertParametersInfo unknown;
    unknown.params = {{424242, QStringLiteral("?")}};
    h.send(1, unknown);
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: group edit refused: the plant has no parameter 424242"));
    // A body whose parameter counts do not match does not read.
    const QByteArray body = telortest::plainBytes([](QDataStream &s) {
        s << QString() << QString() << QString();                  // path, extra1, extra2
        s << qint32(1) << false << quint32(0) << qint32(0) << qint32(0); // the item: a group, no tags, no children
        s << qint32(1) << quint32(101) << QStringLiteral("BOILER.T") << qint32(2); // one parameter, counted as two
    });
    h.server->receive(1, frameOf(telortest::packetBytes(2, 10, 1, body)));
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: ignored a group message 10 that does not read"));
    EXPECT_TRUE(h.take(2).isEmpty());
}

TEST(ServerGroups, EditedTreeSurvivesARestart)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("archive.sqlite"));
    {
        SqliteArchiveStore store(path);
        Harness h(loadPlant(examplePlantPath()), &store);
        ParamGroupInfo create = createGroup(QString(), QStringLiteral("Night shift"));
        h.send(1, create);
    }
    SqliteArchiveStore store(path);
    Harness h(loadPlant(examplePlantPath()), &store);
    EXPECT_TRUE(h.log.contains(QStringLiteral("group tree: the stored tree is in use")));
    const ParamInfoList list = describe(h, 1);
    ASSERT_EQ(list.rootItem.children.size(), 5);
    EXPECT_EQ(list.rootItem.children.last()->tagValue(QStringLiteral("name")), QStringLiteral("Night shift"));
}
