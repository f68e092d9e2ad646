// Bodies of the group change messages: bytes against plain stream writes, round trips
// through write(), setPacket() and read(), packets built as a server builds them, and the
// counts on both sides of each list.

#include "grouptest.h"

#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"

#include <gtest/gtest.h>

using namespace grouptest;
using telortest::bodyOf;
using telortest::packetBytes;
using telortest::plainBytes;

namespace {

using Data = ParamGroupInfoBase::Data;
using RemoveData = ParamGroupRemoveParametersInfo::Data;

/** The common body written field by field, with the item as a group holding one parameter. */
void plainBase(QDataStream &s, const QString &path, const QList<Data> &params, qint32 leading, qint32 trailing)
{
    s << path << QStringLiteral("x1") << QStringLiteral("x2");
    plainNode(s, 1, true, Tags{{QStringLiteral("name"), QStringLiteral("G")}}, 1,
              [](QDataStream &s) { plainLeaf(s, 3, Tags{{QStringLiteral("id"), QStringLiteral("5")}}); }, 1);
    s << leading;
    for (const Data &d : params)
        s << quint32(d.id) << d.name;
    s << trailing;
}

const QList<Data> sampleParams{{101, QStringLiteral("Pressure")}, {4294967295u, QStringLiteral("Flow")}, {0, QString()}};

template<typename Message>
void fillBase(Message &m)
{
    m.path = QStringLiteral("/plant/pumps");
    m.extra1 = QStringLiteral("x1");
    m.extra2 = QStringLiteral("x2");
    m.item.type = ParamGroupItem::GroupItem;
    m.item.flag = true;
    m.item.tags.insert(QStringLiteral("name"), QStringLiteral("G"));
    m.item.children << param(5);
    m.params = sampleParams;
}

template<typename Message>
void expectBase(const Message &m)
{
    EXPECT_EQ(m.path, QStringLiteral("/plant/pumps"));
    EXPECT_EQ(m.extra1, QStringLiteral("x1"));
    EXPECT_EQ(m.extra2, QStringLiteral("x2"));
    EXPECT_EQ(m.item.type, ParamGroupItem::GroupItem);
    EXPECT_TRUE(m.item.flag);
    EXPECT_EQ(m.item.tags, (Tags{{QStringLiteral("name"), QStringLiteral("G")}}));
    EXPECT_EQ(m.item.getParamList(), (QList<unsigned int>{5}));
    EXPECT_EQ(m.params, sampleParams);
}

/** Reads a packet built as a server builds it into @p message. */
template<typename Message>
bool receive(Message &message, int messageId, const QByteArray &body)
{
    message.setPacket(packetBytes(2, messageId, 1, body, 3, 4, 5));
    return message.read();
}

} // namespace

TEST(GroupMessagesWire, ParamGroupInfoBodyIsTheCommonBody)
{
    ParamGroupInfo info(33);
    fillBase(info);
    const QByteArray body = plainBytes([](QDataStream &s) { plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 3); });
    const QByteArray packet = info.write();
    EXPECT_EQ(bodyOf(packet), body);
    EXPECT_EQ(packet, packetBytes(2, 33, 1, body));
}

TEST(GroupMessagesWire, ParamGroupInfoRoundTrip)
{
    ParamGroupInfo out(33);
    fillBase(out);
    ParamGroupInfo in(0);
    in.setPacket(out.write());
    EXPECT_TRUE(in.read());
    expectBase(in);
    EXPECT_EQ(in.getHeader().messageId, 33);
}

TEST(GroupMessagesWire, ParamGroupInfoFromAServer)
{
    const QByteArray body = plainBytes([](QDataStream &s) { plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 3); });
    ParamGroupInfo info(0);
    EXPECT_TRUE(receive(info, 61, body));
    expectBase(info);
    EXPECT_EQ(info.getHeader().messageId, 61);
    EXPECT_EQ(info.getHeader().sequence, 5);
}

TEST(GroupMessagesWire, EmptyParamGroupInfoBody)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QString() << QString() << QString();
        plainLeaf(s, 0, Tags());
        s << qint32(0) << qint32(0);
    });
    ParamGroupInfo info(1);
    EXPECT_EQ(bodyOf(info.write()), body);
    ParamGroupInfo back(1);
    EXPECT_TRUE(receive(back, 1, body));
}

TEST(GroupMessagesWire, DifferentParameterCountsFailWithTheRecordsAlreadyListed)
{
    const QByteArray body = plainBytes([](QDataStream &s) { plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 2); });
    ParamGroupInfo info(0);
    EXPECT_FALSE(receive(info, 1, body));
    expectBase(info);
}

TEST(GroupMessagesWire, ParametersAreAppendedSoASecondReadFails)
{
    const QByteArray body = plainBytes([](QDataStream &s) { plainBase(s, QStringLiteral("/p"), sampleParams, 3, 3); });
    ParamGroupInfo info(0);
    EXPECT_TRUE(receive(info, 1, body));
    EXPECT_FALSE(info.read());
    // The item's trailing count fails first, so the parameters are not read again.
    EXPECT_EQ(info.item.children.size(), 2);
    EXPECT_EQ(info.params.size(), 3);

    // With a childless item the item reads again, and the parameters then fail the count.
    const QByteArray flat = plainBytes([](QDataStream &s) {
        s << QStringLiteral("/p") << QString() << QString();
        plainLeaf(s, 1, Tags());
        s << qint32(1) << quint32(7) << QStringLiteral("n") << qint32(1);
    });
    ParamGroupInfo used(0);
    used.params << Data{1, QStringLiteral("old")};
    EXPECT_FALSE(receive(used, 1, flat));
    EXPECT_EQ(used.params, (QList<Data>{{1, QStringLiteral("old")}, {7, QStringLiteral("n")}}));
}

TEST(GroupMessagesWire, FailedItemStopsTheCommonReader)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QStringLiteral("/p") << QStringLiteral("a") << QStringLiteral("b");
        plainNode(s, 1, false, Tags(), 0, nullptr, 1); // trailing count 1 for no children
        s << qint32(1) << quint32(7) << QStringLiteral("n") << qint32(1);
    });
    ParamGroupInfo info(0);
    EXPECT_FALSE(receive(info, 1, body));
    EXPECT_EQ(info.path, QStringLiteral("/p"));
    EXPECT_EQ(info.extra2, QStringLiteral("b"));
    EXPECT_TRUE(info.params.isEmpty());
}

TEST(GroupMessagesWire, CopyPasteRemoveBody)
{
    ParamGroupCopyPasteRemoveInfo info(21);
    fillBase(info);
    info.what = QStringLiteral("/plant/valves");
    info.whatExtra = QStringLiteral("we");
    const QByteArray body = plainBytes([](QDataStream &s) {
        plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 3);
        s << QStringLiteral("/plant/valves") << QStringLiteral("we");
    });
    EXPECT_EQ(info.write(), packetBytes(2, 21, 1, body));

    ParamGroupCopyPasteRemoveInfo back(0);
    back.setPacket(info.write());
    EXPECT_TRUE(back.read());
    expectBase(back);
    EXPECT_EQ(back.what, QStringLiteral("/plant/valves"));
    EXPECT_EQ(back.whatExtra, QStringLiteral("we"));

    ParamGroupCopyPasteRemoveInfo fromServer(0);
    EXPECT_TRUE(receive(fromServer, 22, body));
    expectBase(fromServer);
    EXPECT_EQ(fromServer.whatExtra, QStringLiteral("we"));
}

TEST(GroupMessagesWire, CopyPasteRemoveAcceptsABodyWithDifferentParameterCounts)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 2);
        s << QStringLiteral("what") << QStringLiteral("whatExtra");
    });
    ParamGroupInfo strict(0);
    EXPECT_FALSE(receive(strict, 1, body));

    ParamGroupCopyPasteRemoveInfo info(0);
    EXPECT_TRUE(receive(info, 1, body));
    expectBase(info);
    EXPECT_EQ(info.what, QStringLiteral("what"));
    EXPECT_EQ(info.whatExtra, QStringLiteral("whatExtra"));
}

TEST(GroupMessagesWire, CopyPasteRemoveReadsOnAfterAFailedItem)
{
    // The item fails, so the common reader stops after it; the two strings are read from
    // where it stopped.
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QStringLiteral("/p") << QString() << QString();
        plainNode(s, 1, false, Tags(), 0, nullptr, 4);
        s << QStringLiteral("what") << QStringLiteral("whatExtra");
    });
    ParamGroupCopyPasteRemoveInfo info(0);
    EXPECT_TRUE(receive(info, 1, body));
    EXPECT_EQ(info.what, QStringLiteral("what"));
    EXPECT_EQ(info.whatExtra, QStringLiteral("whatExtra"));
    EXPECT_TRUE(info.params.isEmpty());

    // A second read into the used message still reports nothing.
    EXPECT_TRUE(info.read());
}

TEST(GroupMessagesWire, InsertParametersBody)
{
    ParamGroupInsertParametersInfo info;
    fillBase(info);
    info.anchor = QStringLiteral("Pressure");
    info.anchorExtra = QStringLiteral("ae");
    info.mode = ParamGroupInsertParametersInfo::BelowMode;
    const QByteArray body = plainBytes([](QDataStream &s) {
        plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 3);
        s << QStringLiteral("Pressure") << QStringLiteral("ae") << qint32(2);
    });
    EXPECT_EQ(info.write(), packetBytes(2, 10, 1, body));

    ParamGroupInsertParametersInfo back;
    back.setPacket(info.write());
    EXPECT_TRUE(back.read());
    expectBase(back);
    EXPECT_EQ(back.anchor, QStringLiteral("Pressure"));
    EXPECT_EQ(back.anchorExtra, QStringLiteral("ae"));
    EXPECT_EQ(back.mode, 2);

    ParamGroupInsertParametersInfo fromServer;
    EXPECT_TRUE(receive(fromServer, 10, plainBytes([](QDataStream &s) {
                            plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 3);
                            s << QStringLiteral("A") << QString() << qint32(-3);
                        })));
    EXPECT_EQ(fromServer.anchor, QStringLiteral("A"));
    EXPECT_EQ(fromServer.mode, -3);
}

TEST(GroupMessagesWire, FailedItemInAnInsertLeavesAnchorAndModeUnread)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QStringLiteral("/p") << QString() << QString();
        plainNode(s, 1, false, Tags(), 1, [](QDataStream &s) { plainLeaf(s, 3, Tags()); }, 2);
        s << qint32(0) << qint32(0) << QStringLiteral("anchor") << QStringLiteral("extra") << qint32(1);
    });
    ParamGroupInsertParametersInfo info;
    info.anchor = QStringLiteral("before");
    info.anchorExtra = QStringLiteral("before too");
    info.mode = 9;
    EXPECT_FALSE(receive(info, 10, body));
    EXPECT_EQ(info.path, QStringLiteral("/p"));
    EXPECT_EQ(info.anchor, QStringLiteral("before"));
    EXPECT_EQ(info.anchorExtra, QStringLiteral("before too"));
    EXPECT_EQ(info.mode, 9);
}

TEST(GroupMessagesWire, ParameterCountMismatchInAnInsertLeavesAnchorUnread)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        plainBase(s, QStringLiteral("/plant/pumps"), sampleParams, 3, 0);
        s << QStringLiteral("anchor") << QStringLiteral("extra") << qint32(1);
    });
    ParamGroupInsertParametersInfo info;
    EXPECT_FALSE(receive(info, 10, body));
    expectBase(info);
    EXPECT_TRUE(info.anchor.isEmpty());
    EXPECT_EQ(info.mode, 0);
}

TEST(GroupMessagesWire, EmptyRemoveParametersWritesExtraAndTwoZeros)
{
    ParamGroupRemoveParametersInfo info;
    info.extra = QStringLiteral("e");
    const QByteArray body = plainBytes([](QDataStream &s) { s << QStringLiteral("e") << qint32(0) << qint32(0); });
    EXPECT_EQ(info.write(), packetBytes(2, 14, 1, body));

    ParamGroupRemoveParametersInfo back;
    back.setPacket(info.write());
    EXPECT_TRUE(back.read());
    EXPECT_EQ(back.extra, QStringLiteral("e"));
    EXPECT_TRUE(back.removed.isEmpty());
}

TEST(GroupMessagesWire, GroupWithAnEmptyListIsWrittenAsZeroKeyZeroAndStays)
{
    ParamGroupRemoveParametersInfo info;
    info.removed.insert(QStringLiteral("/empty"), {});
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QString() << qint32(1) << qint32(0) << QStringLiteral("/empty") << qint32(0) << qint32(1);
    });
    EXPECT_EQ(bodyOf(info.write()), body);

    ParamGroupRemoveParametersInfo back;
    EXPECT_TRUE(receive(back, 14, body));
    ASSERT_EQ(back.removed.size(), 1);
    EXPECT_TRUE(back.removed.contains(QStringLiteral("/empty")));
    EXPECT_TRUE(back.removed.value(QStringLiteral("/empty")).isEmpty());
}

namespace {

const QList<RemoveData> pumps{{101, QStringLiteral("Pressure"), QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("/plant/pumps")},
                              {102, QStringLiteral("Flow"), QString(), QString(), QStringLiteral("/plant/pumps")}};
const QList<RemoveData> valves{{7, QStringLiteral("Position"), QStringLiteral("c"), QString(), QStringLiteral("/plant/valves")}};

void plainGroup(QDataStream &s, const QString &key, const QList<RemoveData> &list, qint32 leading, qint32 trailing)
{
    s << leading << key;
    for (const RemoveData &d : list)
        s << quint32(d.id) << d.name << d.extra1 << d.extra2 << d.path;
    s << trailing;
}

} // namespace

TEST(GroupMessagesWire, RemoveParametersWritesGroupsInAscendingKeyOrder)
{
    ParamGroupRemoveParametersInfo info;
    info.extra = QStringLiteral("extra");
    info.removed.insert(QStringLiteral("valves"), valves);
    info.removed.insert(QStringLiteral("pumps"), pumps);
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QStringLiteral("extra") << qint32(2);
        plainGroup(s, QStringLiteral("pumps"), pumps, 2, 2);
        plainGroup(s, QStringLiteral("valves"), valves, 1, 1);
        s << qint32(2);
    });
    EXPECT_EQ(info.write(), packetBytes(2, 14, 1, body));

    ParamGroupRemoveParametersInfo back;
    back.setPacket(info.write());
    EXPECT_TRUE(back.read());
    EXPECT_EQ(back.extra, QStringLiteral("extra"));
    EXPECT_EQ(back.removed, info.removed);

    ParamGroupRemoveParametersInfo fromServer;
    EXPECT_TRUE(receive(fromServer, 14, body));
    EXPECT_EQ(fromServer.removed, info.removed);
}

TEST(GroupMessagesWire, GroupWithDifferentListCountsFailsAndIsNotStored)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QString() << qint32(2);
        plainGroup(s, QStringLiteral("pumps"), pumps, 2, 2);
        plainGroup(s, QStringLiteral("valves"), valves, 1, 2);
        s << qint32(2);
    });
    ParamGroupRemoveParametersInfo info;
    EXPECT_FALSE(receive(info, 14, body));
    EXPECT_EQ(info.removed.keys(), (QList<QString>{QStringLiteral("pumps")}));
    EXPECT_EQ(info.removed.value(QStringLiteral("pumps")), pumps);
}

TEST(GroupMessagesWire, RepeatedKeyReplacesTheListAndFailsTheGroupCount)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QString() << qint32(2);
        plainGroup(s, QStringLiteral("g"), pumps, 2, 2);
        plainGroup(s, QStringLiteral("g"), valves, 1, 1);
        s << qint32(2);
    });
    ParamGroupRemoveParametersInfo info;
    EXPECT_FALSE(receive(info, 14, body));
    ASSERT_EQ(info.removed.size(), 1);
    EXPECT_EQ(info.removed.value(QStringLiteral("g")), valves);
}

TEST(GroupMessagesWire, RemoveParametersIsNotClearedBeforeReading)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QString() << qint32(1);
        plainGroup(s, QStringLiteral("valves"), valves, 1, 1);
        s << qint32(1);
    });
    ParamGroupRemoveParametersInfo info;
    info.removed.insert(QStringLiteral("kept"), pumps);
    EXPECT_FALSE(receive(info, 14, body));
    EXPECT_EQ(info.removed.keys(), (QList<QString>{QStringLiteral("kept"), QStringLiteral("valves")}));

    ParamGroupRemoveParametersInfo replaced;
    replaced.removed.insert(QStringLiteral("valves"), pumps);
    EXPECT_TRUE(receive(replaced, 14, body));
    EXPECT_EQ(replaced.removed.value(QStringLiteral("valves")), valves);
}

TEST(GroupMessagesWire, NegativeCountsReadNothing)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << QStringLiteral("e") << qint32(-1) << qint32(0);
    });
    ParamGroupRemoveParametersInfo info;
    EXPECT_TRUE(receive(info, 14, body));

    const QByteArray negativeList = plainBytes([](QDataStream &s) {
        s << QString() << qint32(1) << qint32(-2) << QStringLiteral("k") << qint32(0) << qint32(1);
    });
    ParamGroupRemoveParametersInfo list;
    EXPECT_TRUE(receive(list, 14, negativeList));
    EXPECT_TRUE(list.removed.contains(QStringLiteral("k")));
}
