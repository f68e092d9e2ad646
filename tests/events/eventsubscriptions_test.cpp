// The event subscription messages: identities, the token on the wire and the test that
// tells whether two messages are the same query.

#include "eventtest.h"

#include "eventstatisticssubscription.h"
#include "eventstatisticssubscriptioncancel.h"
#include "eventsubscription.h"
#include "eventsubscriptioncancel.h"

#include <memory>

using namespace eventtest;
using telortest::plainBytes;

TEST(EventSubscriptions, Identities)
{
    EXPECT_EQ(identityOf(EventSubscription(token(1))), (QList<qint32>{3, 18, 1}));
    EXPECT_EQ(identityOf(EventSubscriptionCancel(token(1))), (QList<qint32>{3, 19, 1}));
    EXPECT_EQ(identityOf(EventStatisticsSubscription(token(1))), (QList<qint32>{3, 21, 1}));
    EXPECT_EQ(identityOf(EventStatisticsSubscriptionCancel(token(1))), (QList<qint32>{3, 22, 1}));
}

TEST(EventSubscriptions, ConstructorStoresTheToken)
{
    EXPECT_EQ(EventSubscription(token(0x10)).parent(), token(0x10));
    EXPECT_EQ(EventSubscriptionCancel(token(0x11)).parent(), token(0x11));
    EXPECT_EQ(EventStatisticsSubscription(token(0x12)).parent(), token(0x12));
    EXPECT_EQ(EventStatisticsSubscriptionCancel(nullptr).parent(), nullptr);
}

TEST(EventSubscriptions, BodyIsTheTokenAsSixtyFourBits)
{
    std::unique_ptr<EventBaseSubscription> messages[] = {
        std::make_unique<EventSubscription>(token(0x0102030405060708ULL)),
        std::make_unique<EventSubscriptionCancel>(token(0x0102030405060708ULL)),
        std::make_unique<EventStatisticsSubscription>(token(0x0102030405060708ULL)),
        std::make_unique<EventStatisticsSubscriptionCancel>(token(0x0102030405060708ULL)),
    };
    const QByteArray expected = plainBytes([](QDataStream &s) { s << qint64(0x0102030405060708LL); });
    for (auto &message : messages)
        EXPECT_EQ(bodyWrittenBy(*message), expected);
}

TEST(EventSubscriptions, RoundTrip)
{
    EventSubscription sent(token(0xDEADBEEF));
    EventSubscription back(nullptr);
    EXPECT_TRUE(readPacket(back, sent.write()));
    EXPECT_EQ(back.parent(), token(0xDEADBEEF));
}

TEST(EventSubscriptions, ParentAfterReadIsTheTokenFromTheWireNeverDereferenced)
{
    // A value that no object lives at: reading and comparing it must not touch it.
    const QByteArray body = plainBytes([](QDataStream &s) { s << qint64(0x7FFF00000001LL); });
    EventStatisticsSubscription message(token(5));
    EXPECT_TRUE(readPacket(message, telortest::packetBytes(3, 21, 1, body)));
    EXPECT_EQ(message.parent(), token(0x7FFF00000001ULL));
    EXPECT_TRUE(message.checkQuery(message));
}

TEST(EventSubscriptions, EmptyBodyReadsANullTokenAndTrue)
{
    EventSubscriptionCancel message(token(5));
    EXPECT_TRUE(readPacket(message, telortest::packetBytes(3, 19, 1, QByteArray())));
    EXPECT_EQ(message.parent(), nullptr);
}

TEST(EventSubscriptionCheck, MessageComparesTrueWithItself)
{
    EventSubscription message(token(3));
    message.setRoute(1, 2, 3);
    EXPECT_TRUE(message.checkQuery(message));
}

TEST(EventSubscriptionCheck, EqualHeaderWordsAndDifferentTokensCompareFalse)
{
    EventSubscription a(token(3));
    EventSubscription b(token(4));
    a.setRoute(1, 2, 3);
    b.setRoute(1, 2, 3);
    EXPECT_FALSE(a.checkQuery(b));
    EXPECT_FALSE(b.checkQuery(a));
}

TEST(EventSubscriptionCheck, OneDifferingHeaderWordComparesFalse)
{
    for (int word = 0; word < 3; ++word) {
        EventSubscription a(token(3));
        EventSubscription b(token(3));
        a.setRoute(10, 20, 30);
        b.setRoute(word == 0 ? 11 : 10, word == 1 ? 21 : 20, word == 2 ? 31 : 30);
        EXPECT_FALSE(a.checkQuery(b)) << "header word " << 6 + word;
    }
}

TEST(EventSubscriptionCheck, SameRouteAndTokenCompareTrueWhateverTheIdentity)
{
    EventSubscription subscribe(token(3));
    EventSubscriptionCancel cancel(token(3));
    subscribe.setRoute(7, 8, 9);
    cancel.setRoute(7, 8, 9);
    EXPECT_TRUE(subscribe.checkQuery(cancel));
    EXPECT_TRUE(cancel.checkQuery(subscribe));
}

TEST(EventSubscriptionCheck, RouteOfReceivedMessagesIsCompared)
{
    const QByteArray body = plainBytes([](QDataStream &s) { s << qint64(42); });
    EventSubscription a(nullptr);
    EventSubscription b(nullptr);
    ASSERT_TRUE(readPacket(a, telortest::packetBytes(3, 18, 1, body, 1, 2, 3)));
    ASSERT_TRUE(readPacket(b, telortest::packetBytes(3, 18, 1, body, 1, 2, 3)));
    EXPECT_TRUE(a.checkQuery(b));
    EventSubscription c(nullptr);
    ASSERT_TRUE(readPacket(c, telortest::packetBytes(3, 18, 1, body, 1, 2, 4)));
    EXPECT_FALSE(a.checkQuery(c));
}
