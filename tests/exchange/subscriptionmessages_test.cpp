// The two subscription messages on the wire: the standing wish of one client and the
// values delivered to it.

#include "exchangetest.h"

#include "paramsubscriptionquery.h"
#include "paramsubscriptionresult.h"

#include <QtCore/QList>
#include <QtCore/QObject>

#include <gtest/gtest.h>

using namespace exchangetest;
using telortest::bodyOf;
using telortest::packetBytes;
using telortest::plainBytes;

namespace {

/** A set in Qt's sequential form, element by element in the set's own iteration order. */
void writeSet(QDataStream &s, const QSet<int> &set)
{
    s << quint32(set.size());
    for (int id : set)
        s << qint32(id);
}

} // namespace

TEST(SubscriptionQuery, IdentityAndDefaults)
{
    QObject client;
    ParamSubscriptionQuery query(&client);
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 1, 1}));
    EXPECT_EQ(query.parent(), &client);
    EXPECT_TRUE(query.ids.isEmpty());
    EXPECT_TRUE(query.refreshIds.isEmpty());
}

TEST(SubscriptionQuery, CopiesInAListKeepTheWholeHeader)
{
    QObject client;
    ParamSubscriptionQuery query(&client);
    query.ids = {3};
    query.setRoute(7, 8, 9);
    QList<ParamSubscriptionQuery> queries;
    queries.append(query);
    const ParamSubscriptionQuery copy = queries.first();
    EXPECT_EQ(identityOf(copy), (QList<qint32>{3, 1, 1}));
    EXPECT_EQ(routeOf(copy), (QList<qint32>{7, 8, 9}));
    EXPECT_EQ(copy.parent(), &client);
    EXPECT_EQ(copy.ids, query.ids);
}

TEST(SubscriptionQuery, TwoEmptySetsTravelAsTwoZeroCountsAndTheToken)
{
    QObject client;
    ParamSubscriptionQuery query(&client);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << quint32(0) << quint32(0) << tokenOf(&client);
    });
    const QByteArray packet = query.write();
    EXPECT_EQ(bodyOf(packet), expected);
    EXPECT_EQ(packet, packetBytes(3, 1, 1, expected));
}

TEST(SubscriptionQuery, Body)
{
    QObject client;
    ParamSubscriptionQuery query(&client);
    query.ids = {12, -4, 100000, 7};
    query.refreshIds = {7, -4};
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeSet(s, query.ids);
        writeSet(s, query.refreshIds);
        s << tokenOf(&client);
    });
    EXPECT_EQ(bodyOf(query.write()), expected);
}

TEST(SubscriptionQuery, RoundTrip)
{
    QObject client;
    ParamSubscriptionQuery query(&client);
    query.ids = {1, 2, 3};
    query.refreshIds = {2};
    query.write();
    ParamSubscriptionQuery copy(nullptr);
    copy.setPacket(query);
    ASSERT_TRUE(copy.read());
    EXPECT_EQ(copy.ids, query.ids);
    EXPECT_EQ(copy.refreshIds, query.refreshIds);
    EXPECT_EQ(copy.parent(), &client);
}

TEST(SubscriptionQuery, OrderOfIdentifiersCarriesNoMeaning)
{
    // The same wish with its identifiers in another order on the wire reads as the same sets.
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint32(3) << qint32(3) << qint32(1) << qint32(2) << quint32(1) << qint32(2) << qint64(0x99);
    });
    ParamSubscriptionQuery query(nullptr);
    query.setPacket(packetBytes(3, 1, 1, body));
    ASSERT_TRUE(query.read());
    EXPECT_EQ(query.ids, (QSet<int>{1, 2, 3}));
    EXPECT_EQ(query.refreshIds, (QSet<int>{2}));
}

TEST(SubscriptionQuery, NullTokenWritesAndReadsNormally)
{
    ParamSubscriptionQuery query(nullptr);
    query.ids = {5};
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << quint32(1) << qint32(5) << quint32(0) << qint64(0);
    });
    EXPECT_EQ(bodyOf(query.write()), expected);
    QObject client;
    ParamSubscriptionQuery copy(&client);
    copy.setPacket(query);
    EXPECT_TRUE(copy.read());
    EXPECT_EQ(copy.parent(), nullptr);
    EXPECT_EQ(copy.ids, (QSet<int>{5}));
}

TEST(SubscriptionQuery, ReadEmptiesTheSetsFirst)
{
    ParamSubscriptionQuery query(nullptr);
    query.ids = {8, 9};
    query.refreshIds = {9};
    query.setPacket(packetBytes(3, 1, 1, plainBytes([](QDataStream &s) {
                                    s << quint32(1) << qint32(1) << quint32(0) << qint64(1);
                                })));
    ASSERT_TRUE(query.read());
    EXPECT_EQ(query.ids, (QSet<int>{1}));
    EXPECT_TRUE(query.refreshIds.isEmpty());
}

TEST(SubscriptionQuery, SetThatRunsOutIsLeftEmpty)
{
    // The count announces far more than the body holds: the set stays empty and no room
    // is taken for the announced count.
    ParamSubscriptionQuery query(nullptr);
    query.setPacket(packetBytes(3, 1, 1, plainBytes([](QDataStream &s) {
                                    s << quint32(0x7FFFFFFF) << qint32(1) << qint32(2);
                                })));
    EXPECT_TRUE(query.read());
    EXPECT_TRUE(query.ids.isEmpty());
    EXPECT_TRUE(query.refreshIds.isEmpty());
    EXPECT_EQ(query.parent(), nullptr);
}

TEST(SubscriptionResult, DefaultsAndUnstampedHeader)
{
    ParamSubscriptionResult result;
    EXPECT_EQ(identityOf(result), (QList<qint32>{0, 0, 0}));
    EXPECT_TRUE(result.ids.isEmpty());
    EXPECT_TRUE(result.data.isEmpty());
    EXPECT_TRUE(result.dateTime.isNull());
}

TEST(SubscriptionResult, Body)
{
    QObject client;
    ParamSubscriptionResult result;
    result.ids = {3, -1, 3};
    result.data = doubleRecord(3, 8, 1.0);
    result.dateTime = answerTime(9);
    result.setParent(&client);
    const QByteArray expected =
        subscriptionResultBody({3, -1, 3}, doubleRecord(3, 8, 1.0), answerTime(9), tokenOf(&client));
    EXPECT_EQ(bodyOf(result.write()), expected);
}

TEST(SubscriptionResult, ReadsAServersPacket)
{
    QObject client;
    const QByteArray body = subscriptionResultBody({4, 2}, QByteArray("xyz"), answerTime(4), tokenOf(&client));
    ParamSubscriptionResult result;
    result.setPacket(received(body, 3, 1, 1));
    ASSERT_TRUE(result.read());
    EXPECT_EQ(result.ids, (QList<int>{4, 2})); // order kept
    EXPECT_EQ(result.data, QByteArray("xyz"));
    EXPECT_EQ(result.dateTime, answerTime(4));
    EXPECT_EQ(result.parent(), &client);
    EXPECT_EQ(result.getHeader().serviceId, 3);
    EXPECT_EQ(result.getHeader().messageId, 1);
}

TEST(SubscriptionResult, RoundTrip)
{
    QObject client;
    ParamSubscriptionResult result;
    result.ids = {1, 2};
    result.data = doubleRecord(1, 8, 1.0) + doubleRecord(2, 8, 2.0);
    result.dateTime = answerTime(1);
    result.setParent(&client);
    result.write();
    ParamSubscriptionResult copy;
    copy.setPacket(result);
    ASSERT_TRUE(copy.read());
    EXPECT_EQ(copy.ids, result.ids);
    EXPECT_EQ(copy.data, result.data);
    EXPECT_EQ(copy.dateTime, result.dateTime);
    EXPECT_EQ(copy.parent(), &client);
}

TEST(SubscriptionResult, NullTokenReadsSuccessfully)
{
    ParamSubscriptionResult result;
    result.setPacket(received(subscriptionResultBody({1}, QByteArray(), answerTime(), 0)));
    EXPECT_TRUE(result.read());
    EXPECT_EQ(result.parent(), nullptr);
    EXPECT_EQ(result.ids, (QList<int>{1}));
}

TEST(SubscriptionResult, TimeInAnUnknownZoneReadsAsNullAndTheResultCanBeWrittenAgain)
{
    QObject client;
    for (const QString &zone : {QStringLiteral("Nowhere/Nothing"), QStringLiteral("../zoneinfo/UTC")}) {
        const QByteArray body =
            resultBodyWithRawTime({4, 5}, QByteArray("xyz"), zonedTimeBytes(zone), tokenOf(&client));
        ParamSubscriptionResult result;
        result.setPacket(received(body));
        ASSERT_TRUE(result.read()) << zone.toStdString();
        EXPECT_TRUE(result.dateTime.isNull());
        EXPECT_EQ(result.parent(), &client);
        EXPECT_EQ(result.data, QByteArray("xyz"));
        EXPECT_EQ(bodyOf(result.write()), subscriptionResultBody({4, 5}, QByteArray("xyz"), QDateTime(), tokenOf(&client)));
    }
}

TEST(SubscriptionResult, HugeCountReadsAsEmptyList)
{
    ParamSubscriptionResult result;
    result.setPacket(received(plainBytes([](QDataStream &s) { s << quint32(0x7FFFFFFF) << qint32(1); })));
    EXPECT_TRUE(result.read());
    EXPECT_TRUE(result.ids.isEmpty());
}
