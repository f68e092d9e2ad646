// The client subscription aggregate: clients and their objects, the queries it builds,
// routing received results by token, and the sweeps over all objects.

#include "exchangetest.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"
#include "paramsubscriptionresult.h"
#include "qcontainerpacket.h"

#include <QtCore/QObject>

#include <gtest/gtest.h>

#include <initializer_list>

using namespace exchangetest;
using telortest::LogCapture;

namespace {

using ParamPtr = QSharedPointer<AbstractParameterBase>;

QString pointerText(const void *p)
{
    return QStringLiteral("0x") + QString::number(reinterpret_cast<quintptr>(p), 16);
}

QString removeOldLine(const QString &tail)
{
    return QStringLiteral("ClientParamSubscription::removeOld ") + tail;
}

/** An empty aggregate and one client; tests with more clients declare them themselves. */
class ClientSubscription : public ::testing::Test
{
protected:
    /** Appends each of @p params for @p owner, in the order given. */
    void appendEach(const QObject *owner, std::initializer_list<ParamPtr> params)
    {
        for (const ParamPtr &param : params)
            subscription.append(param, owner);
    }

    QObject client;
    ClientParamSubscription subscription;
};

} // namespace

TEST_F(ClientSubscription, StartsEmpty)
{
    EXPECT_EQ(subscription.count(), 0);
    EXPECT_TRUE(subscription.dateTime().isNull());
    EXPECT_TRUE(subscription.allQueries().isEmpty());
}

TEST_F(ClientSubscription, QueryForUnknownClientHasNullToken)
{
    const ParamSubscriptionQuery query = subscription.query(&client);
    EXPECT_EQ(query.parent(), nullptr);
    EXPECT_TRUE(query.ids.isEmpty());
    EXPECT_TRUE(query.refreshIds.isEmpty());
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 1, 1}));
}

TEST_F(ClientSubscription, QueryStatesTheWholeWish)
{
    const ParamPtr a(new BPDouble(1));
    const ParamPtr b(new BPDouble(2));
    const ParamPtr c(new BPDouble(2));
    c->setRefreshAnyway(true);
    appendEach(&client, {a, b, c, a});
    const ParamSubscriptionQuery query = subscription.query(&client);
    EXPECT_EQ(query.parent(), &client);
    EXPECT_EQ(query.ids, (QSet<int>{1, 2}));
    EXPECT_EQ(query.refreshIds, (QSet<int>{2})); // one object of two is enough
    EXPECT_EQ(subscription.count(), 1);

    // The refresh wish is asked when the query is built.
    a->setRefreshAnyway(true);
    EXPECT_EQ(subscription.query(&client).refreshIds, (QSet<int>{1, 2}));
}

TEST_F(ClientSubscription, RemoveOldForUnknownClientLogsOneLine)
{
    QObject other;
    const ParamPtr a(new BPDouble(1));
    subscription.append(a, &other);
    LogCapture log;
    subscription.removeOld({a}, &client);
    EXPECT_EQ(log.captured(), QStringList{removeOldLine(pointerText(&client))});
    EXPECT_EQ(subscription.count(), 1);
    EXPECT_EQ(subscription.query(&other).ids, (QSet<int>{1}));
}

TEST_F(ClientSubscription, RemoveOldLogsClientThenEachIdentifier)
{
    const ParamPtr a(new BPDouble(7));
    const ParamPtr b(new BPString(-2)); // identifier 4294967294
    const ParamPtr notRegistered(new BPDouble(12));
    appendEach(&client, {a, b});
    LogCapture log;
    subscription.removeOld({a, notRegistered, b}, &client);
    EXPECT_EQ(log.captured(), (QStringList{removeOldLine(pointerText(&client)), removeOldLine(QStringLiteral("7")),
                                           removeOldLine(QStringLiteral("12")),
                                           removeOldLine(QStringLiteral("4294967294"))}));
}

TEST_F(ClientSubscription, RemovingTheLastObjectKeepsTheClient)
{
    const ParamPtr a(new BPDouble(1));
    subscription.append(a, &client);
    LogCapture log;
    subscription.removeOld({a}, &client);
    EXPECT_EQ(subscription.count(), 1);
    const ParamSubscriptionQuery query = subscription.query(&client);
    EXPECT_EQ(query.parent(), &client);
    EXPECT_TRUE(query.ids.isEmpty());
    EXPECT_TRUE(query.refreshIds.isEmpty());
    const QList<ParamSubscriptionQuery> all = subscription.allQueries();
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all.first().parent(), &client);
    EXPECT_TRUE(all.first().ids.isEmpty());
}

TEST_F(ClientSubscription, RemoveOldTakesEveryEntryOfTheObject)
{
    const ParamPtr a(new BPDouble(1));
    appendEach(&client, {a, a});
    LogCapture log;
    subscription.removeOld({a}, &client);
    EXPECT_TRUE(subscription.query(&client).ids.isEmpty());
    EXPECT_EQ(log.captured().size(), 2);
}

TEST_F(ClientSubscription, RemoveOldLeavesOtherObjectsOfTheIdentifier)
{
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<ProbeDouble> b(new ProbeDouble(1));
    appendEach(&client, {a, b});
    LogCapture log;
    subscription.removeOld({a}, &client);
    EXPECT_EQ(subscription.query(&client).ids, (QSet<int>{1}));

    // Only b still receives the identifier's record.
    ASSERT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {1}, doubleRecord(1, 8, 3.0))));
    EXPECT_EQ(a->reads, 0);
    EXPECT_EQ(b->reads, 1);
}

TEST_F(ClientSubscription, RemoveOldReleasesTheObject)
{
    QWeakPointer<AbstractParameterBase> watch;
    {
        const ParamPtr a(new BPDouble(1));
        subscription.append(a, &client);
        watch = a;
        LogCapture log;
        subscription.removeOld({a}, &client);
    }
    EXPECT_TRUE(watch.isNull());
}

TEST_F(ClientSubscription, RemoveOnEmptyOrUnknownDoesNothing)
{
    QObject other;
    subscription.remove(&client);
    EXPECT_EQ(subscription.count(), 0);
    subscription.append(ParamPtr(new BPDouble(1)), &other);
    subscription.remove(&client);
    EXPECT_EQ(subscription.count(), 1);
    subscription.remove(&other);
    EXPECT_EQ(subscription.count(), 0);
    EXPECT_EQ(subscription.query(&other).parent(), nullptr);
}

TEST_F(ClientSubscription, AllQueriesOnEmptyAggregateIsEmpty)
{
    EXPECT_TRUE(subscription.allQueries().isEmpty());
}

TEST_F(ClientSubscription, AllQueriesHasOneQueryPerClient)
{
    QObject panel;
    QObject logger;
    const ParamPtr shared(new BPDouble(1));
    const ParamPtr refreshing(new BPDouble(2));
    refreshing->setRefreshAnyway(true);
    subscription.append(shared, &panel);
    appendEach(&logger, {shared, refreshing});
    const QList<ParamSubscriptionQuery> all = subscription.allQueries();
    ASSERT_EQ(all.size(), 2);
    for (const ParamSubscriptionQuery &query : all) {
        EXPECT_EQ(query.getHeader().messageId, 1);
        if (query.parent() == &panel) {
            EXPECT_EQ(query.ids, (QSet<int>{1}));
            EXPECT_TRUE(query.refreshIds.isEmpty());
        } else {
            EXPECT_EQ(query.parent(), &logger);
            EXPECT_EQ(query.ids, (QSet<int>{1, 2}));
            EXPECT_EQ(query.refreshIds, (QSet<int>{2}));
        }
    }
}

TEST_F(ClientSubscription, AllQueriesFollowTheClientTableOrder)
{
    // The client table is a hash keyed by the client's address; the queries come in its
    // iteration order, which a hash with the same keys inserted in the same order shares.
    QObject clients[12];
    QHash<const QObject *, int> sameKeys;
    for (int i = 0; i < 12; ++i) {
        subscription.append(ParamPtr(new BPDouble(unsigned(i))), &clients[i]);
        sameKeys.insert(&clients[i], i);
    }
    QList<const QObject *> order;
    for (const ParamSubscriptionQuery &query : subscription.allQueries()) {
        order.append(query.parent());
        EXPECT_EQ(query.ids, (QSet<int>{sameKeys.value(query.parent())}));
    }
    EXPECT_EQ(order, sameKeys.keys());
}

TEST_F(ClientSubscription, NullOrUnknownTokenReturnsTrueAndMovesTheTime)
{
    QObject stranger;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    subscription.append(a, &client);

    EXPECT_TRUE(subscription.newDataSlot(subscriptionAnswer(nullptr, {1}, doubleRecord(1, 8, 1.0), answerTime(1))));
    EXPECT_EQ(subscription.dateTime(), answerTime(1));
    EXPECT_TRUE(subscription.newDataSlot(subscriptionAnswer(&stranger, {1}, doubleRecord(1, 8, 1.0), answerTime(2))));
    EXPECT_EQ(subscription.dateTime(), answerTime(2));
    EXPECT_EQ(a->reads, 0);
}

TEST_F(ClientSubscription, NullTokenIsNoClientEvenIfOneWasAppendedUnderNull)
{
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    subscription.append(a, nullptr);
    ASSERT_EQ(subscription.count(), 1);
    EXPECT_TRUE(subscription.newDataSlot(subscriptionAnswer(nullptr, {1}, doubleRecord(1, 8, 1.0), answerTime(3))));
    EXPECT_EQ(a->reads, 0);
    EXPECT_EQ(subscription.dateTime(), answerTime(3));
}

TEST_F(ClientSubscription, TimeOfEveryResultThatReadsIsTakenEvenWhenNull)
{
    ASSERT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {}, QByteArray(), answerTime(4))));
    ASSERT_EQ(subscription.dateTime(), answerTime(4));
    EXPECT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {}, QByteArray(), QDateTime())));
    EXPECT_TRUE(subscription.dateTime().isNull());
}

TEST_F(ClientSubscription, MessageThatDoesNotReadLeavesTheTime)
{
    subscription.append(ParamPtr(new BPDouble(1)), &client);
    ASSERT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {}, QByteArray(), answerTime(5))));
    QProtocolStruct shortMessage;
    shortMessage.setPacket(QByteArray(20, '\0')); // shorter than a header
    EXPECT_FALSE(subscription.newDataSlot(shortMessage));
    EXPECT_EQ(subscription.dateTime(), answerTime(5));
    QProtocolStruct empty;
    EXPECT_FALSE(subscription.newDataSlot(empty));
}

TEST_F(ClientSubscription, DroppedIdentifierFailsAfterApplyingWhatCameBefore)
{
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    const QSharedPointer<BPDouble> three(new BPDouble(3));
    appendEach(&client, {one, two, three});
    LogCapture log;
    subscription.removeOld({two}, &client); // after the query went out
    const QByteArray data = doubleRecord(1, 8, 1.0) + doubleRecord(2, 8, 2.0) + doubleRecord(3, 8, 3.0);
    EXPECT_FALSE(subscription.newDataSlot(subscriptionAnswer(&client, {1, 2, 3}, data, answerTime(6))));
    EXPECT_EQ(one->getValue(), 1.0);
    EXPECT_EQ(two->getValue(), 0.0);
    EXPECT_EQ(three->getValue(), 0.0);
    EXPECT_EQ(subscription.dateTime(), answerTime(6));
}

TEST_F(ClientSubscription, SharedObjectReadsOnlyForTheNamedClient)
{
    QObject panel;
    QObject logger;
    const QSharedPointer<ProbeDouble> shared(new ProbeDouble(1));
    subscription.append(shared, &panel);
    subscription.append(shared, &logger);
    ASSERT_TRUE(subscription.newDataSlot(subscriptionAnswer(&logger, {1}, doubleRecord(1, 8, 4.5))));
    EXPECT_EQ(shared->reads, 1);
    EXPECT_EQ(shared->getValue(), 4.5);
}

TEST_F(ClientSubscription, ObjectAppendedTwiceReadsEachRecordTwice)
{
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<ProbeDouble> b(new ProbeDouble(2));
    appendEach(&client, {a, a, b});
    EXPECT_EQ(subscription.query(&client).ids, (QSet<int>{1, 2}));
    const QByteArray data = doubleRecord(1, 8, 1.0) + doubleRecord(2, 8, 2.0);
    ASSERT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {1, 2}, data)));
    EXPECT_EQ(a->reads, 2);
    EXPECT_EQ(b->reads, 1);
    EXPECT_EQ(b->getValue(), 2.0); // the stream stood behind the record after both reads
}

TEST_F(ClientSubscription, SeveralObjectsUnderOneIdentifierOfMixedKinds)
{
    const QSharedPointer<BPVariant> v1(new BPVariant(10));
    const QSharedPointer<BPVariant> v2(new BPVariant(10));
    const QSharedPointer<BPString> s(new BPString(11));
    const QSharedPointer<BPDouble> d(new BPDouble(12));
    appendEach(&client, {v1, v2, s, d});
    const QByteArray data = variantRecordWithLimits(10, 512, QVariant(99.0)) +
                            stringRecord(11, 8, QStringLiteral("manual")) + doubleRecord(12, 64, 0.5);
    ASSERT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {10, 11, 12}, data)));
    for (const auto &v : {v1, v2}) {
        EXPECT_EQ(v->getValue(), QVariant(99.0));
        EXPECT_EQ(v->getState(), 512u);
        EXPECT_EQ(v->stringValue(1, 'f'), QStringLiteral("99.0"));
        EXPECT_EQ(v->limits().checkValue(30.0), 64);
    }
    EXPECT_EQ(s->getValue(), QStringLiteral("manual"));
    EXPECT_EQ(d->getValue(), 0.5);
    EXPECT_EQ(d->getState(), 64u);
}

TEST_F(ClientSubscription, RecordForAnotherIdentifierIsRefused)
{
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    appendEach(&client, {one, two});
    // The list names 1 and 2, but the first record is for 2.
    const QByteArray data = doubleRecord(2, 256, 2.0) + doubleRecord(1, 8, 1.0);
    EXPECT_FALSE(subscription.newDataSlot(subscriptionAnswer(&client, {1, 2}, data)));
    EXPECT_EQ(one->getState(), 256u); // the refused record's state was taken
    EXPECT_FALSE(one->changed());
    EXPECT_FALSE(two->changed());
}

TEST_F(ClientSubscription, LatestAppendedReadsFirstAndARefusalStopsTheRest)
{
    const QSharedPointer<ProbeDouble> early(new ProbeDouble(3));
    const QSharedPointer<ProbeDouble> late(new ProbeDouble(3));
    const QSharedPointer<ProbeDouble> next(new ProbeDouble(4));
    late->refuses = true;
    appendEach(&client, {early, late, next});
    const QByteArray data = doubleRecord(3, 8, 9.0) + doubleRecord(4, 8, 4.0);
    EXPECT_FALSE(subscription.newDataSlot(subscriptionAnswer(&client, {3, 4}, data)));
    EXPECT_EQ(late->reads, 1);
    EXPECT_EQ(late->getValue(), 9.0);
    EXPECT_EQ(early->reads, 0); // never reached
    EXPECT_EQ(next->reads, 0);
}

TEST_F(ClientSubscription, TruncatedRecordReadsAsZeros)
{
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    appendEach(&client, {one, two});
    one->setValue(9.0);
    const QByteArray data = doubleRecord(1, 8, 1.0).left(16);
    // The second record is not there at all: its identifier reads as 0.
    EXPECT_FALSE(subscription.newDataSlot(subscriptionAnswer(&client, {1, 2}, data)));
    EXPECT_EQ(one->getValue(), 0.0);
    EXPECT_EQ(one->getState(), 8u);
    EXPECT_EQ(two->getState(), 0u);
}

TEST_F(ClientSubscription, RecordOfTheWrongKindGoesToTheObjectsPayload)
{
    // A double record for a variant: the identifier matches, the type is not compared,
    // and the variant reads the double's bytes as a variant.
    const QSharedPointer<BPVariant> v(new BPVariant(1));
    subscription.append(v, &client);
    EXPECT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {1}, doubleRecord(1, 8, 1.0))));
    EXPECT_TRUE(v->changed());
    EXPECT_EQ(v->getState(), 8u);
    // 1.0 is 3F F0 00 .. : the type word 0x3FF00000 names no known type.
    EXPECT_FALSE(v->getValue().isValid());
}

TEST_F(ClientSubscription, ClearKeepsTheTime)
{
    subscription.append(ParamPtr(new BPDouble(1)), &client);
    ASSERT_TRUE(subscription.newDataSlot(subscriptionAnswer(&client, {1}, doubleRecord(1, 8, 1.0), answerTime(8))));
    subscription.clear();
    EXPECT_EQ(subscription.count(), 0);
    EXPECT_EQ(subscription.dateTime(), answerTime(8));
    EXPECT_EQ(subscription.query(&client).parent(), nullptr);
}

TEST_F(ClientSubscription, SweepsOnEmptyAggregateDoNothing)
{
    subscription.setState(8);
    subscription.dropFlags();
    EXPECT_EQ(subscription.count(), 0);
}

TEST_F(ClientSubscription, SetStateReachesEveryEntryThroughTheBase)
{
    QObject panel;
    QObject logger;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<BPVariant> v(new BPVariant(2));
    v->limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    v->limitsPrivate().setHiWarningSetpoint(true, 10.0);
    v->setValue(50.0);
    appendEach(&panel, {a, a});
    appendEach(&logger, {a, v});
    subscription.setState(8);
    EXPECT_EQ(a->states, 3);
    EXPECT_EQ(a->getState(), 8u);
    EXPECT_EQ(v->getState(), 8u); // not judged: the limits would say 128
    v->setState(8);
    EXPECT_EQ(v->getState(), 128u); // the value was still pending
}

TEST_F(ClientSubscription, DropFlagsReachesEveryEntry)
{
    QObject panel;
    QObject logger;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<BPVariant> v(new BPVariant(2));
    subscription.append(a, &panel);
    appendEach(&logger, {a, v});
    a->upFlag();
    v->limitsPrivate().setHiWarningSetpoint(true, 1.0);
    ASSERT_TRUE(v->changed());
    subscription.dropFlags();
    EXPECT_EQ(a->drops, 2);
    EXPECT_FALSE(a->changed());
    EXPECT_FALSE(v->changed());
}

TEST_F(ClientSubscription, ReactionInsideASweepDoesNotDisturbIt)
{
    QObject panel;
    QObject logger;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<ProbeDouble> b(new ProbeDouble(2));
    const QSharedPointer<ProbeDouble> c(new ProbeDouble(3));
    appendEach(&panel, {a, b});
    subscription.append(c, &logger);

    // Whoever is called first removes both clients, appends a newcomer and drops the
    // aggregate's references: the sweep goes on over what it started with.
    QObject newcomer;
    const QSharedPointer<ProbeDouble> d(new ProbeDouble(4));
    bool reacted = false;
    auto react = [&] {
        if (reacted)
            return;
        reacted = true;
        subscription.remove(&panel);
        subscription.remove(&logger);
        subscription.append(d, &newcomer);
    };
    for (const auto &p : {a, b, c})
        p->onState = react;
    subscription.setState(64);
    EXPECT_EQ(a->states, 1);
    EXPECT_EQ(b->states, 1);
    EXPECT_EQ(c->states, 1);
    EXPECT_EQ(d->states, 0);
    EXPECT_EQ(subscription.count(), 1);

    reacted = false;
    for (const auto &p : {a, b, c})
        p->onState = nullptr;
    appendEach(&panel, {a, b});
    for (const auto &p : {a, b, d})
        p->onDrop = [&] {
            if (reacted)
                return;
            reacted = true;
            subscription.clear();
        };
    subscription.dropFlags();
    EXPECT_EQ(a->drops + b->drops + d->drops, 3);
    EXPECT_EQ(subscription.count(), 0);
}

TEST_F(ClientSubscription, ObjectsOnlyTheAggregateHeldSurviveTheirOwnReaction)
{
    class SelfRemovingDouble : public BPDouble
    {
    public:
        SelfRemovingDouble(unsigned int id, ClientParamSubscription *owner, const QObject *client)
            : BPDouble(id)
            , owner(owner)
            , client(client)
        {
        }
        void dropFlag() override
        {
            owner->remove(client); // drops the last strong reference held by the aggregate
            BPDouble::dropFlag();
            ++drops;
        }
        ClientParamSubscription *owner;
        const QObject *client;
        int drops = 0;
    };
    QWeakPointer<AbstractParameterBase> watch;
    {
        const ParamPtr p(new SelfRemovingDouble(1, &subscription, &client));
        appendEach(&client, {p, p});
        watch = p;
    }
    subscription.dropFlags(); // must not touch a destroyed object
    EXPECT_TRUE(watch.isNull());
    EXPECT_EQ(subscription.count(), 0);
}

TEST_F(ClientSubscription, NullAppendMakesTheClientKnown)
{
    subscription.append(ParamPtr(), &client);
    EXPECT_EQ(subscription.count(), 1);
    EXPECT_EQ(subscription.query(&client).parent(), &client);
    EXPECT_TRUE(subscription.query(&client).ids.isEmpty());
}
