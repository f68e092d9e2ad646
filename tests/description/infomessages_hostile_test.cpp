// Received description messages that announce more than they hold, break off anywhere
// or nest their group tree without end: each reader gives the result its format defines
// and stops where the data stops, without running away or allocating for what is absent.

#include "infotest.h"

#include "paraminfoadded.h"
#include "paraminfochanged.h"
#include "paraminfolist.h"
#include "paraminforestore.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>

using infotest::plainCountedInfos;
using infotest::plainEmptyRoot;
using infotest::plainEventType;
using infotest::plainNode;
using infotest::readBody;
using infotest::receive;
using telortest::LogCapture;
using telortest::plainBytes;

namespace {

// A reader that walked every announced entry of a hostile count would take minutes.
const qint64 QuickMs = 5000;

/** The head of an empty list up to and including its root: the event types come next. */
QByteArray emptyHead()
{
    return plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(0);
        plainEmptyRoot(s);
    });
}

ParamInfoList fullList()
{
    ParamInfoList list;
    list.params << desctest::sampleScalar(1) << desctest::sampleStatusWord(2) << desctest::sampleField(3, 1, 2);
    infotest::fillTree(list.rootItem);
    list.eventTypes.insert(4, infotest::eventType(4, QStringLiteral("Limit")));
    list.eventTypes.insert(9, infotest::eventType(9, QStringLiteral("Bits")));
    list.rawData = QByteArray("raw");
    list.translations.insert(1, TranslationItemNew(QStringLiteral("en"), QStringLiteral("One")));
    return list;
}

} // namespace

TEST(InfoMessagesHostile, ChangeNoticeWithAHugeCountEndsAtTheFirstMissingRecord)
{
    const QByteArray body = plainCountedInfos(0x7FFFFFFF, {desctest::sampleScalar(1)});
    QElapsedTimer timer;
    timer.start();
    ParamInfoChanged changed;
    LogCapture log;
    unsigned int position = 0;
    EXPECT_FALSE(readBody(changed, body, &position));
    EXPECT_LT(timer.elapsed(), QuickMs);
    EXPECT_EQ(changed.params.size(), 1);
    EXPECT_EQ(position, unsigned(body.size()));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("Error reading ParamInfo")});
}

TEST(InfoMessagesHostile, AddedNoticeWithAHugeCountAndNoRecord)
{
    ParamInfoAdded added;
    LogCapture log;
    EXPECT_FALSE(receive(added, 2, 7, 4, plainBytes([](QDataStream &s) { s << qint32(0x7FFFFFFF); })));
    EXPECT_TRUE(added.params.isEmpty());
    EXPECT_EQ(log.captured().size(), 1);
}

TEST(InfoMessagesHostile, RestoreWithAHugeCountReadsAsAnEmptyList)
{
    ParamInfoRestore restore;
    restore.ids << 1;
    const QByteArray body = plainBytes([](QDataStream &s) { s << quint32(0x7FFFFFFF) << quint32(1) << quint32(2); });
    bool result = false;
    // Qt's own reader would reserve room for the whole count first and fail to allocate it.
    EXPECT_NO_THROW(result = receive(restore, 2, 6, 4, body));
    EXPECT_TRUE(result);
    EXPECT_TRUE(restore.ids.isEmpty());
}

TEST(InfoMessagesHostile, ListWithAHugeDescriptionCount)
{
    const QByteArray body = plainCountedInfos(0x7FFFFFFF, {desctest::sampleScalar(1)});
    QElapsedTimer timer;
    timer.start();
    ParamInfoList list;
    EXPECT_FALSE(receive(list, 2, 1, 0, body));
    EXPECT_LT(timer.elapsed(), QuickMs);
    EXPECT_EQ(list.params.size(), 1);
}

TEST(InfoMessagesHostile, ListWithAHugeEventTypeCountStopsAtTheEndOfTheData)
{
    const QByteArray body = emptyHead() + plainBytes([](QDataStream &s) {
        s << quint32(0xFFFFFFFFu);
        plainEventType(s, infotest::eventType(12, QStringLiteral("Only one")));
    });
    QElapsedTimer timer;
    timer.start();
    ParamInfoList list;
    unsigned int position = 0;
    EXPECT_TRUE(readBody(list, body, &position));
    EXPECT_LT(timer.elapsed(), QuickMs);
    EXPECT_EQ(position, unsigned(body.size()));
    // The one description present, and the empty description under 0 that every further
    // announced entry reads as.
    EXPECT_EQ(list.eventTypes.size(), 2);
    EXPECT_EQ(list.eventTypes.value(12).engName(), QStringLiteral("Only one"));
    ASSERT_TRUE(list.eventTypes.contains(0));
    EXPECT_TRUE(list.eventTypes.value(0).isEmpty());
    EXPECT_TRUE(list.eventTypes.value(0).messages.isEmpty());
    EXPECT_TRUE(list.rawData.isEmpty());
    EXPECT_TRUE(list.translations.isEmpty());
}

TEST(InfoMessagesHostile, ListWithEventTypeCountAndNothingAfterIt)
{
    const QByteArray body = emptyHead() + plainBytes([](QDataStream &s) { s << quint32(0xFFFFFFFFu); });
    ParamInfoList list;
    EXPECT_TRUE(readBody(list, body));
    EXPECT_EQ(list.eventTypes.keys(), QList<unsigned int>{0});
}

TEST(InfoMessagesHostile, EventTypeWithAHugeMessageCount)
{
    const QByteArray body = emptyHead() + plainBytes([](QDataStream &s) {
        s << qint32(1) << QStringLiteral("Event") << quint32(0) << quint16(3) << quint32(0x7FFFFFFF);
        s << quint8(1) << QStringLiteral("Message") << quint32(0);
    });
    ParamInfoList list;
    EXPECT_NO_THROW(EXPECT_TRUE(readBody(list, body)));
    ASSERT_TRUE(list.eventTypes.contains(3));
    EXPECT_TRUE(list.eventTypes.value(3).messages.isEmpty());
}

TEST(InfoMessagesHostile, ListWithAHugeRawDataLength)
{
    const QByteArray body = emptyHead() + plainBytes([](QDataStream &s) {
        s << qint32(0) << quint32(0x7FFFFFF0u);
        s.writeRawData("abcdef", 6);
    });
    ParamInfoList list;
    bool result = false;
    EXPECT_NO_THROW(result = readBody(list, body));
    EXPECT_TRUE(result);
    EXPECT_TRUE(list.rawData.isEmpty());
    EXPECT_TRUE(list.translations.isEmpty());
}

TEST(InfoMessagesHostile, ListWithHugeTranslationCounts)
{
    const QByteArray outer = emptyHead() + plainBytes([](QDataStream &s) {
        s << qint32(0) << QByteArray("r") << quint32(0x7FFFFFFF) << qint32(1) << quint32(0);
    });
    ParamInfoList list;
    EXPECT_NO_THROW(EXPECT_TRUE(readBody(list, outer)));
    EXPECT_TRUE(list.translations.isEmpty());
    EXPECT_EQ(list.rawData, QByteArray("r"));

    const QByteArray inner = emptyHead() + plainBytes([](QDataStream &s) {
        s << qint32(0) << QByteArray() << quint32(1) << qint32(1) << quint32(0x7FFFFFFF) << QStringLiteral("en");
    });
    ParamInfoList other;
    EXPECT_NO_THROW(EXPECT_TRUE(readBody(other, inner)));
    EXPECT_TRUE(other.translations.isEmpty());
}

TEST(InfoMessagesHostile, ListWithAHugeChildCountInTheTree)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(0);
        s << qint32(1) << false << quint32(0) << qint32(0x7FFFFFFF);
        plainNode(s, *std::unique_ptr<ParamGroupItem>(infotest::paramNode(1)));
    });
    QElapsedTimer timer;
    timer.start();
    ParamInfoList list;
    EXPECT_FALSE(readBody(list, body));
    EXPECT_LT(timer.elapsed(), QuickMs);
    EXPECT_LE(list.rootItem.children.size(), 1);
}

TEST(InfoMessagesHostile, ListWithAnEndlesslyNestedTree)
{
    QByteArray body = plainBytes([](QDataStream &s) { s << qint32(0) << qint32(0); });
    const QByteArray level = plainBytes([](QDataStream &s) { s << qint32(1) << false << quint32(0) << qint32(1); });
    for (int k = 0; k < 100000; ++k)
        body += level;
    ParamInfoList list;
    EXPECT_FALSE(readBody(list, body));
}

TEST(InfoMessagesHostile, TreeDownToTheDepthBoundReads)
{
    ParamInfoList sent;
    ParamGroupItem *parent = &sent.rootItem;
    parent->type = ParamGroupItem::GroupItem;
    for (int level = 2; level <= ParamGroupItem::MaxDepth; ++level) {
        ParamGroupItem *child = infotest::node(ParamGroupItem::GroupItem, infotest::Tags());
        parent->children << child;
        parent = child;
    }
    ParamInfoList received;
    sent.write();
    received.setPacket(sent);
    EXPECT_TRUE(received.read());
    EXPECT_TRUE(infotest::sameTree(received.rootItem, sent.rootItem));
}

TEST(InfoMessagesHostile, EveryPrefixOfAListReadsWithoutHarm)
{
    ParamInfoList sent = fullList();
    sent.write();
    const QByteArray packet = sent.packet();
    const QByteArray body = telortest::bodyOf(packet);
    for (int length = 0; length <= body.size(); ++length) {
        ParamInfoList list;
        unsigned int position = 0;
        readBody(list, body.left(length), &position);
        EXPECT_LE(position, unsigned(length));
    }
    ParamInfoList whole;
    EXPECT_TRUE(readBody(whole, body));
}

TEST(InfoMessagesHostile, EveryPrefixOfAChangeNoticeReadsWithoutHarm)
{
    ParamInfoChanged sent;
    sent.params = fullList().params;
    const QByteArray body = telortest::bodyOf(sent.write());
    LogCapture log;
    for (int length = 0; length < body.size(); ++length) {
        ParamInfoChanged changed;
        unsigned int position = 0;
        // A cut inside the last strings of the last record still reads that record.
        readBody(changed, body.left(length), &position);
        EXPECT_LE(position, unsigned(length));
        EXPECT_LE(changed.params.size(), 3);
    }
    ParamInfoChanged whole;
    EXPECT_TRUE(readBody(whole, body));
}

TEST(InfoMessagesHostile, EveryPrefixOfARestoreNoticeReadsAsTrue)
{
    ParamInfoRestore sent;
    sent.ids << 1 << 2 << 3;
    const QByteArray body = telortest::bodyOf(sent.write());
    for (int length = 0; length <= body.size(); ++length) {
        ParamInfoRestore restore;
        EXPECT_TRUE(readBody(restore, body.left(length)));
        EXPECT_EQ(restore.ids.isEmpty(), length < body.size()) << length;
    }
}
