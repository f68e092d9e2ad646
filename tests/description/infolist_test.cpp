// The parameter list: its identity, its body against plain stream writes, round trips,
// packets built as a server builds them, and every check of its reader.

#include "infotest.h"
#include "messageheader.h"

#include "paraminfolist.h"
#include "paraminfoquery.h"

#include <gtest/gtest.h>

#include <memory>

using desctest::plainInfo;
using infotest::plainEventType;
using infotest::plainInfos;
using infotest::plainEmptyRoot;
using infotest::plainNode;
using infotest::plainTranslations;
using infotest::readBody;
using infotest::receive;
using infotest::roundTrip;
using infotest::sameEventType;
using infotest::sameTree;
using infotest::typeless;
using telortest::bodyOf;
using telortest::identityOf;
using telortest::LogCapture;
using telortest::packetBytes;
using telortest::plainBytes;

namespace {

QList<ParamInfo> sampleInfos()
{
    return {desctest::sampleScalar(101), desctest::sampleStatusWord(102), desctest::sampleField(103, 2, 1)};
}

/** A list that uses every part of the message. */
void fill(ParamInfoList &list)
{
    list.params = sampleInfos();
    infotest::fillTree(list.rootItem);
    list.eventTypes.insert(10, infotest::eventType(10, QStringLiteral("Limit")));
    list.eventTypes.insert(65535, infotest::eventType(65535, QStringLiteral("Bit change")));
    list.eventTypes.insert(3, infotest::eventType(3, QStringLiteral("Operator")));
    list.rawData = QByteArray("\x00\x01raw\xff", 6);
    list.translations.insert(1, TranslationItemNew(QStringLiteral("en"), QStringLiteral("One")));
    list.translations[1].insert(QStringLiteral("ru"), QStringLiteral("Один"));
    list.translations.insert(-7, TranslationItemNew(QStringLiteral("en"), QStringLiteral("Minus seven")));
}

/** The descriptions of @p list with their count before and after them, then its group tree. */
QByteArray plainBodyToTheTree(const ParamInfoList &list)
{
    return plainBytes([&list](QDataStream &s) {
        s << qint32(list.params.size());
        plainInfos(s, list.params);
        s << qint32(list.params.size());
        plainNode(s, list.rootItem);
    });
}

/** The body of @p list, written field by field in the order of the wire. */
QByteArray plainBody(const ParamInfoList &list)
{
    return plainBodyToTheTree(list) + plainBytes([&list](QDataStream &s) {
               s << qint32(list.eventTypes.size());
               const QList<unsigned int> keys = list.eventTypes.keys();
               for (unsigned int key : keys)
                   plainEventType(s, list.eventTypes.value(key));
               s << list.rawData;
               plainTranslations(s, list.translations);
           });
}

/** The tail after the descriptions and their second count: an empty root, no event types, no data. */
void plainEmptyTail(QDataStream &s)
{
    plainEmptyRoot(s);
    s << qint32(0) << QByteArray() << quint32(0);
}

/** A body with no descriptions, an empty root, @p types one after the other, no data and no texts. */
QByteArray plainBodyOfEventTypes(const QList<EventTypeInfoStruct> &types)
{
    return plainBytes([&types](QDataStream &s) {
        s << qint32(0) << qint32(0);
        plainEmptyRoot(s);
        s << qint32(types.size());
        for (const EventTypeInfoStruct &type : types)
            plainEventType(s, type);
        s << QByteArray() << quint32(0);
    });
}

void expectSameList(const ParamInfoList &got, const ParamInfoList &expected)
{
    ASSERT_EQ(got.params.size(), expected.params.size());
    for (int i = 0; i < got.params.size(); ++i)
        EXPECT_TRUE(infotest::sameInfo(got.params.at(i), expected.params.at(i))) << "record " << i;
    EXPECT_TRUE(sameTree(got.rootItem, expected.rootItem));
    ASSERT_EQ(got.eventTypes.size(), expected.eventTypes.size());
    for (auto it = expected.eventTypes.cbegin(); it != expected.eventTypes.cend(); ++it) {
        ASSERT_TRUE(got.eventTypes.contains(it.key())) << it.key();
        EXPECT_TRUE(sameEventType(got.eventTypes.value(it.key()), it.value())) << it.key();
    }
    EXPECT_EQ(got.rawData, expected.rawData);
    EXPECT_EQ(got.translations, expected.translations);
}

bool untouchedRoot(const ParamGroupItem &root)
{
    return root.type == ParamGroupItem::NoItem && !root.flag && root.tags.isEmpty() && root.children.isEmpty();
}

} // namespace

TEST(ParamInfoList, IdentityIsThatOfTheQueryWithoutItsTrafficKind)
{
    ParamInfoList list;
    const QProtocolHeader header = list.getHeader();
    EXPECT_EQ(header.serviceId, 2);
    EXPECT_EQ(header.messageId, 1);
    // Not stamped: the default of the header.
    EXPECT_EQ(header.messageType, QProtocolStruct().getHeader().messageType);
    EXPECT_NE(header.messageType, ParamInfoQuery().getHeader().messageType);
}

TEST(ParamInfoList, DefaultFields)
{
    ParamInfoList list;
    EXPECT_TRUE(list.params.isEmpty());
    EXPECT_TRUE(untouchedRoot(list.rootItem));
    EXPECT_TRUE(list.eventTypes.isEmpty());
    EXPECT_TRUE(list.rawData.isNull());
    EXPECT_TRUE(list.translations.isEmpty());
}

TEST(ParamInfoList, EmptyListBody)
{
    // A count of 0, another count of 0, the tree of the root, a count of 0, an empty
    // block of bytes and an empty table.
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(0);
        plainEmptyTail(s);
    });
    ParamInfoList list;
    const QByteArray packet = list.write();
    EXPECT_EQ(bodyOf(packet), body);
    EXPECT_EQ(packet, packetBytes(2, 1, 0, body));

    ParamInfoList back;
    EXPECT_TRUE(roundTrip(list, back));
    expectSameList(back, list);
}

TEST(ParamInfoList, BodyInTheOrderOfTheWire)
{
    ParamInfoList list;
    fill(list);
    EXPECT_EQ(bodyOf(list.write()), plainBody(list));
}

TEST(ParamInfoList, EventTypesGoOutWithoutTheirKey)
{
    ParamInfoList list;
    // The key is not sent: the description's own number is what arrives.
    list.eventTypes.insert(99, infotest::eventType(4, QStringLiteral("Moved")));
    const QByteArray body = plainBodyOfEventTypes({infotest::eventType(4, QStringLiteral("Moved"))});
    EXPECT_EQ(bodyOf(list.write()), body);
    ParamInfoList back;
    EXPECT_TRUE(roundTrip(list, back));
    EXPECT_EQ(back.eventTypes.keys(), QList<unsigned int>{4});
}

TEST(ParamInfoList, RoundTrip)
{
    ParamInfoList out;
    fill(out);
    ParamInfoList in;
    EXPECT_TRUE(roundTrip(out, in));
    expectSameList(in, out);
}

TEST(ParamInfoList, FromAServer)
{
    ParamInfoList sent;
    fill(sent);
    const QByteArray body = plainBody(sent);
    ParamInfoList list;
    LogCapture log;
    EXPECT_TRUE(receive(list, 2, 1, 3, body));
    EXPECT_TRUE(log.captured().isEmpty());
    expectSameList(list, sent);
    const QProtocolHeader header = list.getHeader();
    EXPECT_EQ(header.messageType, 3);
    EXPECT_EQ(header.sequence, 13);
}

TEST(ParamInfoList, AnswerToAQuery)
{
    ParamInfoQuery query;
    query.setRoute(5, 6, 7);
    ParamInfoList list;
    list.replyTo(query);
    fill(list);
    ParamInfoList received;
    EXPECT_TRUE(roundTrip(list, received));
    EXPECT_EQ(identityOf(received), (QList<qint32>{2, 1, 1}));
    EXPECT_EQ(received.getHeader().sequence, 7);
}

TEST(ParamInfoList, SecondCountDifferentFailsRightAfterTheCheck)
{
    ParamInfoList sent;
    fill(sent);
    const QByteArray records = plainBytes([&sent](QDataStream &s) { plainInfos(s, sent.params); });
    const QByteArray body = plainBytes([&sent](QDataStream &s) {
        s << qint32(3);
        plainInfos(s, sent.params);
        s << qint32(2);
        plainNode(s, sent.rootItem);
        s << qint32(0) << QByteArray() << quint32(0);
    });
    ParamInfoList list;
    unsigned int position = 0;
    EXPECT_FALSE(readBody(list, body, &position));
    EXPECT_EQ(position, unsigned(4 + records.size() + 4));
    EXPECT_EQ(list.params.size(), 3);
    EXPECT_TRUE(untouchedRoot(list.rootItem));

    ParamInfoList whole;
    EXPECT_FALSE(receive(whole, 2, 1, 0, body));
    EXPECT_EQ(whole.params.size(), 3);
    EXPECT_TRUE(untouchedRoot(whole.rootItem));
}

TEST(ParamInfoList, ReadingIntoAUsedListFailsAtTheSecondCount)
{
    ParamInfoList sent;
    fill(sent);
    ParamInfoList used;
    used.params.append(desctest::sampleScalar(1));
    sent.write();
    used.setPacket(sent);
    EXPECT_FALSE(used.read());
    EXPECT_EQ(used.params.size(), 4);
    EXPECT_TRUE(untouchedRoot(used.rootItem));
}

TEST(ParamInfoList, UnreadableDescriptionInTheMiddle)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint32(3);
        plainInfo(s, desctest::sampleScalar(1));
        plainInfo(s, typeless(2));
        plainInfo(s, desctest::sampleScalar(3));
        s << qint32(3);
        plainEmptyTail(s);
    });
    ParamInfoList list;
    LogCapture log;
    EXPECT_FALSE(receive(list, 2, 1, 0, body));
    // No line here, unlike the change notice.
    EXPECT_TRUE(log.captured().isEmpty());
    ASSERT_EQ(list.params.size(), 1);
    EXPECT_EQ(list.params.first().id, 1u);
    EXPECT_TRUE(untouchedRoot(list.rootItem));
}

TEST(ParamInfoList, NegativeCountReadsNoDescription)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint32(-4) << qint32(0);
        plainEmptyTail(s);
    });
    ParamInfoList list;
    EXPECT_TRUE(receive(list, 2, 1, 0, body));
    EXPECT_TRUE(list.params.isEmpty());

    // The second count is compared as it stands: -4 is not the 0 records held.
    const QByteArray twice = plainBytes([](QDataStream &s) {
        s << qint32(-4) << qint32(-4);
        plainEmptyTail(s);
    });
    ParamInfoList other;
    EXPECT_FALSE(receive(other, 2, 1, 0, twice));
}

TEST(ParamInfoList, BrokenTreeFailsWithTheDescriptionsKept)
{
    ParamInfoList sent;
    fill(sent);
    const QByteArray body = plainBytes([&sent](QDataStream &s) {
        s << qint32(3);
        plainInfos(s, sent.params);
        s << qint32(3);
        // A root announcing one child, holding it, and closing with a count of 2.
        s << qint32(1) << false << quint32(0) << qint32(1);
        const std::unique_ptr<ParamGroupItem> child(infotest::paramNode(5));
        plainNode(s, *child);
        s << qint32(2);
        s << qint32(1);
        plainEventType(s, infotest::eventType(1, QStringLiteral("Never read")));
        s << QByteArray("x") << quint32(0);
    });
    ParamInfoList list;
    EXPECT_FALSE(receive(list, 2, 1, 0, body));
    EXPECT_EQ(list.params.size(), 3);
    // The tree was read as far as it went; what follows it was not.
    EXPECT_EQ(list.rootItem.children.size(), 1);
    EXPECT_TRUE(list.eventTypes.isEmpty());
    EXPECT_TRUE(list.rawData.isNull());
}

TEST(ParamInfoList, TwoEventTypesWithOneNumberLeaveOneEntry)
{
    const QByteArray body = plainBodyOfEventTypes(
        {infotest::eventType(5, QStringLiteral("First")), infotest::eventType(5, QStringLiteral("Second"))});
    ParamInfoList list;
    EXPECT_TRUE(receive(list, 2, 1, 0, body));
    ASSERT_EQ(list.eventTypes.size(), 1);
    EXPECT_EQ(list.eventTypes.value(5).engName(), QStringLiteral("Second"));
}

TEST(ParamInfoList, EventTypeNumberIsWidenedUnsigned)
{
    const QByteArray body = plainBodyOfEventTypes({infotest::eventType(65535, QStringLiteral("Last"))});
    ParamInfoList list;
    EXPECT_TRUE(receive(list, 2, 1, 0, body));
    EXPECT_EQ(list.eventTypes.keys(), QList<unsigned int>{65535u});
    EXPECT_FALSE(list.eventTypes.contains(0xFFFFFFFFu));
    EXPECT_EQ(list.eventTypes.value(65535u).id, 65535);
}

TEST(ParamInfoList, EventTypeCountIsUnsigned)
{
    // 0x80000000 announced, two present: both are read, then the data ends.
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(0);
        plainEmptyRoot(s);
        s << quint32(0x80000000u);
        plainEventType(s, infotest::eventType(1, QStringLiteral("One")));
        plainEventType(s, infotest::eventType(2, QStringLiteral("Two")));
    });
    ParamInfoList list;
    EXPECT_TRUE(receive(list, 2, 1, 0, body));
    EXPECT_TRUE(list.eventTypes.contains(1));
    EXPECT_TRUE(list.eventTypes.contains(2));
    // Every further announced entry reads as an empty description under 0.
    EXPECT_EQ(list.eventTypes.size(), 3);
    EXPECT_TRUE(list.eventTypes.value(0).messages.isEmpty());
}

TEST(ParamInfoList, BodyEndingAfterTheTreeStillReads)
{
    ParamInfoList sent;
    fill(sent);
    const QByteArray body = plainBodyToTheTree(sent);
    ParamInfoList list;
    EXPECT_TRUE(receive(list, 2, 1, 0, body));
    EXPECT_TRUE(sameTree(list.rootItem, sent.rootItem));
    EXPECT_TRUE(list.eventTypes.isEmpty());
    EXPECT_TRUE(list.rawData.isEmpty());
    EXPECT_TRUE(list.translations.isEmpty());
}

TEST(ParamInfoList, BodyEndingInsideTheTailStillReads)
{
    ParamInfoList sent;
    fill(sent);
    const QByteArray body = plainBody(sent);
    const QByteArray head = plainBodyToTheTree(sent);
    // Every cut between the end of the tree and the end of the body reads as true.
    for (int length = head.size(); length <= body.size(); ++length) {
        ParamInfoList list;
        EXPECT_TRUE(receive(list, 2, 1, 0, body.left(length))) << length;
        EXPECT_EQ(list.params.size(), 3);
    }
}

TEST(ParamInfoList, RawDataAndTranslationsArriveUnchanged)
{
    ParamInfoList sent;
    sent.rawData = QByteArray(300, '\xab');
    for (int k = 0; k < 20; ++k) {
        TranslationItemNew item(QStringLiteral("en"), QStringLiteral("Text %1").arg(k));
        item.insert(QStringLiteral("de"), QStringLiteral("Text %1").arg(k));
        sent.translations.insert(k * 1000 - 5000, item);
    }
    ParamInfoList in;
    EXPECT_TRUE(roundTrip(sent, in));
    EXPECT_EQ(in.rawData, sent.rawData);
    EXPECT_EQ(in.translations, sent.translations);
}

TEST(ParamInfoList, CopyIsDeep)
{
    ParamInfoList list;
    fill(list);
    list.setRoute(1, 2, 3);
    const ParamInfoList copy(list);
    expectSameList(copy, list);
    EXPECT_EQ(copy.getHeader().sequence, 3);
    ASSERT_FALSE(copy.rootItem.children.isEmpty());
    EXPECT_NE(copy.rootItem.children.first(), list.rootItem.children.first());
}

TEST(ParamInfoList, AssignmentReplacesTheTree)
{
    ParamInfoList source;
    fill(source);
    ParamInfoList target;
    target.rootItem.children << infotest::paramNode(77);
    target.params.append(desctest::sampleScalar(77));
    target = source;
    expectSameList(target, source);
    EXPECT_FALSE(target.rootItem.containsID(77));

    const ParamInfoList &same = target;
    target = same;
    expectSameList(target, source);
}
