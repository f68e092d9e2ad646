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

#include <functional>

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

/** A double that counts its reads, state assignments and flag drops, and can run a reaction. */
class ProbeDouble : public BPDouble
{
public:
    using BPDouble::BPDouble;
    bool readPrivate(QContainerPacket &packet) override
    {
        ++reads;
        return BPDouble::readPrivate(packet);
    }
    void setState(unsigned int newState) override
    {
        ++states;
        if (onState)
            onState();
        BPDouble::setState(newState);
    }
    void dropFlag() override
    {
        ++drops;
        if (onDrop)
            onDrop();
        BPDouble::dropFlag();
    }
    int reads = 0;
    int states = 0;
    int drops = 0;
    std::function<void()> onState;
    std::function<void()> onDrop;
};

} // namespace

TEST(ClientSubscription, StartsEmpty)
{
    ClientParamSubscription subscription;
    EXPECT_EQ(subscription.count(), 0);
    EXPECT_TRUE(subscription.dateTime().isNull());
    EXPECT_TRUE(subscription.allQueries().isEmpty());
}

TEST(ClientSubscription, QueryForUnknownClientHasNullToken)
{
    QObject client;
    ClientParamSubscription subscription;
    const ParamSubscriptionQuery query = subscription.query(&client);
    EXPECT_EQ(query.parent(), nullptr);
    EXPECT_TRUE(query.ids.isEmpty());
    EXPECT_TRUE(query.refreshIds.isEmpty());
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 1, 1}));
}

TEST(ClientSubscription, QueryStatesTheWholeWish)
{
    QObject client;
    ClientParamSubscription subscription;
    const ParamPtr a(new BPDouble(1));
    const ParamPtr b(new BPDouble(2));
    const ParamPtr c(new BPDouble(2));
    c->setRefreshAnyway(true);
    subscription.append(a, &client);
    subscription.append(b, &client);
    subscription.append(c, &client);
    subscription.append(a, &client);
    const ParamSubscriptionQuery query = subscription.query(&client);
    EXPECT_EQ(query.parent(), &client);
    EXPECT_EQ(query.ids, (QSet<int>{1, 2}));
    EXPECT_EQ(query.refreshIds, (QSet<int>{2})); // one object of two is enough
    EXPECT_EQ(subscription.count(), 1);

    // The refresh wish is asked when the query is built.
    a->setRefreshAnyway(true);
    EXPECT_EQ(subscription.query(&client).refreshIds, (QSet<int>{1, 2}));
}

TEST(ClientSubscription, RemoveOldForUnknownClientLogsOneLine)
{
    QObject client;
    QObject other;
    ClientParamSubscription subscription;
    const ParamPtr a(new BPDouble(1));
    subscription.append(a, &other);
    LogCapture log;
    subscription.removeOld({a}, &client);
    EXPECT_EQ(log.captured(), QStringList{removeOldLine(pointerText(&client))});
    EXPECT_EQ(subscription.count(), 1);
    EXPECT_EQ(subscription.query(&other).ids, (QSet<int>{1}));
}

TEST(ClientSubscription, RemoveOldLogsClientThenEachIdentifier)
{
    QObject client;
    ClientParamSubscription subscription;
    const ParamPtr a(new BPDouble(7));
    const ParamPtr b(new BPString(-2)); // identifier 4294967294
    const ParamPtr notRegistered(new BPDouble(12));
    subscription.append(a, &client);
    subscription.append(b, &client);
    LogCapture log;
    subscription.removeOld({a, notRegistered, b}, &client);
    EXPECT_EQ(log.captured(), (QStringList{removeOldLine(pointerText(&client)), removeOldLine(QStringLiteral("7")),
                                           removeOldLine(QStringLiteral("12")),
                                           removeOldLine(QStringLiteral("4294967294"))}));
}

TEST(ClientSubscription, RemovingTheLastObjectKeepsTheClient)
{
    QObject client;
    ClientParamSubscription subscription;
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

TEST(ClientSubscription, RemoveOldTakesEveryEntryOfTheObject)
{
    QObject client;
    ClientParamSubscription subscription;
    const ParamPtr a(new BPDouble(1));
    subscription.append(a, &client);
    subscription.append(a, &client);
    LogCapture log;
    subscription.removeOld({a}, &client);
    EXPECT_TRUE(subscription.query(&client).ids.isEmpty());
    EXPECT_EQ(log.captured().size(), 2);
}

TEST(ClientSubscription, RemoveOldLeavesOtherObjectsOfTheIdentifier)
{
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<ProbeDouble> b(new ProbeDouble(1));
    subscription.append(a, &client);
    subscription.append(b, &client);
    LogCapture log;
    subscription.removeOld({a}, &client);
    EXPECT_EQ(subscription.query(&client).ids, (QSet<int>{1}));

    // Only b still receives the identifier's record.
    ASSERT_TRUE(subscription.newDataSlot(
        received(subscriptionResultBody({1}, doubleRecord(1, 8, 3.0), answerTime(), tokenOf(&client)))));
    EXPECT_EQ(a->reads, 0);
    EXPECT_EQ(b->reads, 1);
}

TEST(ClientSubscription, RemoveOldReleasesTheObject)
{
    QObject client;
    ClientParamSubscription subscription;
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

TEST(ClientSubscription, RemoveOnEmptyOrUnknownDoesNothing)
{
    QObject client;
    QObject other;
    ClientParamSubscription subscription;
    subscription.remove(&client);
    EXPECT_EQ(subscription.count(), 0);
    subscription.append(ParamPtr(new BPDouble(1)), &other);
    subscription.remove(&client);
    EXPECT_EQ(subscription.count(), 1);
    subscription.remove(&other);
    EXPECT_EQ(subscription.count(), 0);
    EXPECT_EQ(subscription.query(&other).parent(), nullptr);
}

TEST(ClientSubscription, AllQueriesOnEmptyAggregateIsEmpty)
{
    ClientParamSubscription subscription;
    EXPECT_TRUE(subscription.allQueries().isEmpty());
}

TEST(ClientSubscription, AllQueriesHasOneQueryPerClient)
{
    QObject panel;
    QObject logger;
    ClientParamSubscription subscription;
    const ParamPtr shared(new BPDouble(1));
    const ParamPtr refreshing(new BPDouble(2));
    refreshing->setRefreshAnyway(true);
    subscription.append(shared, &panel);
    subscription.append(shared, &logger);
    subscription.append(refreshing, &logger);
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

TEST(ClientSubscription, AllQueriesFollowTheClientTableOrder)
{
    // The client table is a hash keyed by the client's address; the queries come in its
    // iteration order, which a hash with the same keys inserted in the same order shares.
    QObject clients[12];
    ClientParamSubscription subscription;
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

TEST(ClientSubscription, NullOrUnknownTokenReturnsTrueAndMovesTheTime)
{
    QObject client;
    QObject stranger;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    subscription.append(a, &client);

    EXPECT_TRUE(subscription.newDataSlot(received(subscriptionResultBody({1}, doubleRecord(1, 8, 1.0), answerTime(1), 0))));
    EXPECT_EQ(subscription.dateTime(), answerTime(1));
    EXPECT_TRUE(subscription.newDataSlot(
        received(subscriptionResultBody({1}, doubleRecord(1, 8, 1.0), answerTime(2), tokenOf(&stranger)))));
    EXPECT_EQ(subscription.dateTime(), answerTime(2));
    EXPECT_EQ(a->reads, 0);
}

TEST(ClientSubscription, NullTokenIsNoClientEvenIfOneWasAppendedUnderNull)
{
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    subscription.append(a, nullptr);
    ASSERT_EQ(subscription.count(), 1);
    EXPECT_TRUE(subscription.newDataSlot(received(subscriptionResultBody({1}, doubleRecord(1, 8, 1.0), answerTime(3), 0))));
    EXPECT_EQ(a->reads, 0);
    EXPECT_EQ(subscription.dateTime(), answerTime(3));
}

TEST(ClientSubscription, TimeOfEveryResultThatReadsIsTakenEvenWhenNull)
{
    QObject client;
    ClientParamSubscription subscription;
    ASSERT_TRUE(subscription.newDataSlot(received(subscriptionResultBody({}, QByteArray(), answerTime(4), tokenOf(&client)))));
    ASSERT_EQ(subscription.dateTime(), answerTime(4));
    EXPECT_TRUE(subscription.newDataSlot(received(subscriptionResultBody({}, QByteArray(), QDateTime(), tokenOf(&client)))));
    EXPECT_TRUE(subscription.dateTime().isNull());
}

TEST(ClientSubscription, MessageThatDoesNotReadLeavesTheTime)
{
    QObject client;
    ClientParamSubscription subscription;
    subscription.append(ParamPtr(new BPDouble(1)), &client);
    ASSERT_TRUE(subscription.newDataSlot(received(subscriptionResultBody({}, QByteArray(), answerTime(5), tokenOf(&client)))));
    QProtocolStruct shortMessage;
    shortMessage.setPacket(QByteArray(20, '\0')); // shorter than a header
    EXPECT_FALSE(subscription.newDataSlot(shortMessage));
    EXPECT_EQ(subscription.dateTime(), answerTime(5));
    QProtocolStruct empty;
    EXPECT_FALSE(subscription.newDataSlot(empty));
}

TEST(ClientSubscription, DroppedIdentifierFailsAfterApplyingWhatCameBefore)
{
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    const QSharedPointer<BPDouble> three(new BPDouble(3));
    subscription.append(one, &client);
    subscription.append(two, &client);
    subscription.append(three, &client);
    LogCapture log;
    subscription.removeOld({two}, &client); // after the query went out
    const QByteArray data = doubleRecord(1, 8, 1.0) + doubleRecord(2, 8, 2.0) + doubleRecord(3, 8, 3.0);
    EXPECT_FALSE(subscription.newDataSlot(received(subscriptionResultBody({1, 2, 3}, data, answerTime(6), tokenOf(&client)))));
    EXPECT_EQ(one->getValue(), 1.0);
    EXPECT_EQ(two->getValue(), 0.0);
    EXPECT_EQ(three->getValue(), 0.0);
    EXPECT_EQ(subscription.dateTime(), answerTime(6));
}

TEST(ClientSubscription, SharedObjectReadsOnlyForTheNamedClient)
{
    QObject panel;
    QObject logger;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> shared(new ProbeDouble(1));
    subscription.append(shared, &panel);
    subscription.append(shared, &logger);
    ASSERT_TRUE(subscription.newDataSlot(
        received(subscriptionResultBody({1}, doubleRecord(1, 8, 4.5), answerTime(), tokenOf(&logger)))));
    EXPECT_EQ(shared->reads, 1);
    EXPECT_EQ(shared->getValue(), 4.5);
}

TEST(ClientSubscription, ObjectAppendedTwiceReadsEachRecordTwice)
{
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<ProbeDouble> b(new ProbeDouble(2));
    subscription.append(a, &client);
    subscription.append(a, &client);
    subscription.append(b, &client);
    EXPECT_EQ(subscription.query(&client).ids, (QSet<int>{1, 2}));
    const QByteArray data = doubleRecord(1, 8, 1.0) + doubleRecord(2, 8, 2.0);
    ASSERT_TRUE(subscription.newDataSlot(received(subscriptionResultBody({1, 2}, data, answerTime(), tokenOf(&client)))));
    EXPECT_EQ(a->reads, 2);
    EXPECT_EQ(b->reads, 1);
    EXPECT_EQ(b->getValue(), 2.0); // the stream stood behind the record after both reads
}

TEST(ClientSubscription, SeveralObjectsUnderOneIdentifierOfMixedKinds)
{
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<BPVariant> v1(new BPVariant(10));
    const QSharedPointer<BPVariant> v2(new BPVariant(10));
    const QSharedPointer<BPString> s(new BPString(11));
    const QSharedPointer<BPDouble> d(new BPDouble(12));
    subscription.append(v1, &client);
    subscription.append(v2, &client);
    subscription.append(s, &client);
    subscription.append(d, &client);
    const QByteArray data = variantRecordWithLimits(10, 512, QVariant(99.0)) +
                            stringRecord(11, 8, QStringLiteral("manual")) + doubleRecord(12, 64, 0.5);
    ASSERT_TRUE(subscription.newDataSlot(
        received(subscriptionResultBody({10, 11, 12}, data, answerTime(), tokenOf(&client)))));
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

TEST(ClientSubscription, RecordForAnotherIdentifierIsRefused)
{
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    subscription.append(one, &client);
    subscription.append(two, &client);
    // The list names 1 and 2, but the first record is for 2.
    const QByteArray data = doubleRecord(2, 256, 2.0) + doubleRecord(1, 8, 1.0);
    EXPECT_FALSE(subscription.newDataSlot(received(subscriptionResultBody({1, 2}, data, answerTime(), tokenOf(&client)))));
    EXPECT_EQ(one->getState(), 256u); // the refused record's state was taken
    EXPECT_FALSE(one->changed());
    EXPECT_FALSE(two->changed());
}

TEST(ClientSubscription, LatestAppendedReadsFirstAndARefusalStopsTheRest)
{
    class RefusingDouble : public ProbeDouble
    {
    public:
        using ProbeDouble::ProbeDouble;
        bool readPrivate(QContainerPacket &packet) override
        {
            ProbeDouble::readPrivate(packet);
            return false;
        }
    };
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> early(new ProbeDouble(3));
    const QSharedPointer<RefusingDouble> late(new RefusingDouble(3));
    const QSharedPointer<ProbeDouble> next(new ProbeDouble(4));
    subscription.append(early, &client);
    subscription.append(late, &client);
    subscription.append(next, &client);
    const QByteArray data = doubleRecord(3, 8, 9.0) + doubleRecord(4, 8, 4.0);
    EXPECT_FALSE(subscription.newDataSlot(received(subscriptionResultBody({3, 4}, data, answerTime(), tokenOf(&client)))));
    EXPECT_EQ(late->reads, 1);
    EXPECT_EQ(late->getValue(), 9.0);
    EXPECT_EQ(early->reads, 0); // never reached
    EXPECT_EQ(next->reads, 0);
}

TEST(ClientSubscription, TruncatedRecordReadsAsZeros)
{
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    subscription.append(one, &client);
    subscription.append(two, &client);
    one->setValue(9.0);
    const QByteArray data = doubleRecord(1, 8, 1.0).left(16);
    // The second record is not there at all: its identifier reads as 0.
    EXPECT_FALSE(subscription.newDataSlot(received(subscriptionResultBody({1, 2}, data, answerTime(), tokenOf(&client)))));
    EXPECT_EQ(one->getValue(), 0.0);
    EXPECT_EQ(one->getState(), 8u);
    EXPECT_EQ(two->getState(), 0u);
}

TEST(ClientSubscription, RecordOfTheWrongKindGoesToTheObjectsPayload)
{
    // A double record for a variant: the identifier matches, the type is not compared,
    // and the variant reads the double's bytes as a variant.
    QObject client;
    ClientParamSubscription subscription;
    const QSharedPointer<BPVariant> v(new BPVariant(1));
    subscription.append(v, &client);
    EXPECT_TRUE(subscription.newDataSlot(
        received(subscriptionResultBody({1}, doubleRecord(1, 8, 1.0), answerTime(), tokenOf(&client)))));
    EXPECT_TRUE(v->changed());
    EXPECT_EQ(v->getState(), 8u);
    // 1.0 is 3F F0 00 .. : the type word 0x3FF00000 names no known type.
    EXPECT_FALSE(v->getValue().isValid());
}

TEST(ClientSubscription, ClearKeepsTheTime)
{
    QObject client;
    ClientParamSubscription subscription;
    subscription.append(ParamPtr(new BPDouble(1)), &client);
    ASSERT_TRUE(subscription.newDataSlot(
        received(subscriptionResultBody({1}, doubleRecord(1, 8, 1.0), answerTime(8), tokenOf(&client)))));
    subscription.clear();
    EXPECT_EQ(subscription.count(), 0);
    EXPECT_EQ(subscription.dateTime(), answerTime(8));
    EXPECT_EQ(subscription.query(&client).parent(), nullptr);
}

TEST(ClientSubscription, SweepsOnEmptyAggregateDoNothing)
{
    ClientParamSubscription subscription;
    subscription.setState(8);
    subscription.dropFlags();
    EXPECT_EQ(subscription.count(), 0);
}

TEST(ClientSubscription, SetStateReachesEveryEntryThroughTheBase)
{
    QObject panel;
    QObject logger;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<BPVariant> v(new BPVariant(2));
    v->limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    v->limitsPrivate().setHiWarningSetpoint(true, 10.0);
    v->setValue(50.0);
    subscription.append(a, &panel);
    subscription.append(a, &panel);
    subscription.append(a, &logger);
    subscription.append(v, &logger);
    subscription.setState(8);
    EXPECT_EQ(a->states, 3);
    EXPECT_EQ(a->getState(), 8u);
    EXPECT_EQ(v->getState(), 8u); // not judged: the limits would say 128
    v->setState(8);
    EXPECT_EQ(v->getState(), 128u); // the value was still pending
}

TEST(ClientSubscription, DropFlagsReachesEveryEntry)
{
    QObject panel;
    QObject logger;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<BPVariant> v(new BPVariant(2));
    subscription.append(a, &panel);
    subscription.append(a, &logger);
    subscription.append(v, &logger);
    a->upFlag();
    v->limitsPrivate().setHiWarningSetpoint(true, 1.0);
    ASSERT_TRUE(v->changed());
    subscription.dropFlags();
    EXPECT_EQ(a->drops, 2);
    EXPECT_FALSE(a->changed());
    EXPECT_FALSE(v->changed());
}

TEST(ClientSubscription, ReactionInsideASweepDoesNotDisturbIt)
{
    QObject panel;
    QObject logger;
    ClientParamSubscription subscription;
    const QSharedPointer<ProbeDouble> a(new ProbeDouble(1));
    const QSharedPointer<ProbeDouble> b(new ProbeDouble(2));
    const QSharedPointer<ProbeDouble> c(new ProbeDouble(3));
    subscription.append(a, &panel);
    subscription.append(b, &panel);
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
    subscription.append(a, &panel);
    subscription.append(b, &panel);
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

TEST(ClientSubscription, ObjectsOnlyTheAggregateHeldSurviveTheirOwnReaction)
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
    QObject client;
    ClientParamSubscription subscription;
    QWeakPointer<AbstractParameterBase> watch;
    {
        const ParamPtr p(new SelfRemovingDouble(1, &subscription, &client));
        subscription.append(p, &client);
        subscription.append(p, &client);
        watch = p;
    }
    subscription.dropFlags(); // must not touch a destroyed object
    EXPECT_TRUE(watch.isNull());
    EXPECT_EQ(subscription.count(), 0);
}

TEST(ClientSubscription, NullAppendMakesTheClientKnown)
{
    QObject client;
    ClientParamSubscription subscription;
    subscription.append(ParamPtr(), &client);
    EXPECT_EQ(subscription.count(), 1);
    EXPECT_EQ(subscription.query(&client).parent(), &client);
    EXPECT_TRUE(subscription.query(&client).ids.isEmpty());
}
