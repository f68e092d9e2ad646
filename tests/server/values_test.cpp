// Values: one-shot answers and the road of a value through a subscription, read with the
// library's own client classes.

#include "servertest.h"

#include "bpfieldclient.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"
#include "messageheader.h"
#include "paramsubscriptionquery.h"
#include "paramsubscriptionresult.h"
#include "paramvaluesquery.h"
#include "paramvaluesresult.h"
#include "paramvaluesstruct.h"

#include <QtCore/QObject>

#include <memory>
#include <vector>

#include <gtest/gtest.h>

using namespace servertest;

namespace {

double serverValue(PlantServer &server, unsigned int id)
{
    return server.simulation().object(id)->variantValue().toDouble();
}

} // namespace

TEST(ServerValues, OneShotQueryGivesFullRecordsOfKnownIdentifiers)
{
    Harness h(loadPlant(examplePlantPath()));
    QObject client;
    ParamValuesStruct values(&client);
    QSharedPointer<BPVariant> boiler(new BPVariant(101));
    QSharedPointer<BPString> mode(new BPString(115));
    values.append(boiler);
    values.append(mode);
    ParamValuesQuery query = values.query();
    query.ids.append(99999); // unknown: left out of the answer
    h.send(2, query);
    const QList<QByteArray> frames = h.take(2);
    ASSERT_EQ(frames.size(), 1);
    ParamValuesResult result;
    result.setPacket(frames.first());
    ASSERT_TRUE(result.read());
    EXPECT_EQ(telortest::identityOf(result), (QList<qint32>{3, 8, 1}));
    EXPECT_EQ(result.ids.size(), 2);
    ASSERT_TRUE(values.newDataSlot(result));
    EXPECT_EQ(values.dateTime(), testStart());
    EXPECT_EQ(boiler->getValue().toDouble(), serverValue(*h.server, 101));
    EXPECT_EQ(boiler->getState(), h.server->simulation().object(101)->getState());
    EXPECT_EQ(mode->getValue(), QStringLiteral("base load"));
    bool set = false;
    EXPECT_EQ(boiler->limits().hiWarningSetpoint(set), 80.0);
    EXPECT_TRUE(set);
}

TEST(ServerValues, RoadOfAValueFromSubscriptionToChange)
{
    Harness h(loadPlant(examplePlantPath()));
    QObject screen;
    ClientParamSubscription subscription;
    QSharedPointer<BPVariant> boiler(new BPVariant(101));
    subscription.append(boiler, &screen);
    ParamSubscriptionQuery query = subscription.query(&screen);
    h.send(3, query);

    QList<QByteArray> frames = h.take(3);
    ASSERT_EQ(frames.size(), 1);
    ASSERT_TRUE(subscription.newDataSlot(frameOf(frames.first())));
    EXPECT_TRUE(boiler->changed());
    EXPECT_EQ(boiler->getValue().toDouble(), serverValue(*h.server, 101));
    subscription.dropFlags();

    // The sine moves every tick: each tick brings the new value, and nothing else.
    for (int i = 1; i <= 5; ++i) {
        h.ticks(1);
        frames = h.take(3);
        ASSERT_EQ(frames.size(), 1) << "tick " << i;
        ParamSubscriptionResult result;
        result.setPacket(frames.first());
        ASSERT_TRUE(result.read());
        EXPECT_EQ(result.ids, QList<int>{101});
        EXPECT_EQ(result.dateTime, testStart().addMSecs(250 * i));
        ASSERT_TRUE(subscription.newDataSlot(frameOf(frames.first())));
        EXPECT_TRUE(boiler->changed());
        EXPECT_EQ(boiler->getValue().toDouble(), serverValue(*h.server, 101));
        subscription.dropFlags();
    }
}

TEST(ServerValues, UnchangedValuesAreNotSentUnlessRefreshed)
{
    Harness h(loadPlant(examplePlantPath()));
    QObject screen;
    ParamSubscriptionQuery query(&screen);
    query.ids = {109, 115};    // constants
    query.refreshIds = {115}; // refreshed anyway
    h.send(1, query);
    ASSERT_EQ(h.take(1).size(), 1);
    h.ticks(1);
    const QList<QByteArray> frames = h.take(1);
    ASSERT_EQ(frames.size(), 1);
    ParamSubscriptionResult result;
    result.setPacket(frames.first());
    ASSERT_TRUE(result.read());
    EXPECT_EQ(result.ids, QList<int>{115});
}

TEST(ServerValues, SubscriptionsArePerConnectionAndEndWithIt)
{
    Harness h(loadPlant(examplePlantPath()));
    QObject screen;
    ParamSubscriptionQuery query(&screen);
    query.ids = {101};
    h.send(1, query);
    h.send(2, query); // the same token on another connection is another subscriber
    EXPECT_EQ(h.server->subscriptionCount(), 2);
    h.take(1);
    h.take(2);
    h.server->connectionClosed(1);
    EXPECT_EQ(h.server->subscriptionCount(), 1);
    h.ticks(1);
    EXPECT_TRUE(h.take(1).isEmpty());
    EXPECT_EQ(h.take(2).size(), 1);
    EXPECT_TRUE(h.log.contains(QStringLiteral("connection 1: closed, 1 subscriptions dropped")));

    ParamSubscriptionQuery none(&screen); // an empty wish ends the subscription
    h.send(2, none);
    EXPECT_EQ(h.server->subscriptionCount(), 0);
}

TEST(ServerValues, FieldReachesEverySubscriberWhole)
{
    const Plant plant = loadPlant(examplePlantPath());
    Harness h(plant);
    const ParamInfo gridInfo = plant.parameter(118)->info;
    QObject a;
    QObject b;
    ClientParamSubscription clients;
    QSharedPointer<BPFieldClient> first(new BPFieldClient(gridInfo));
    QSharedPointer<BPFieldClient> second(new BPFieldClient(gridInfo));
    clients.append(first, &a);
    clients.append(second, &b);
    ParamSubscriptionQuery qa = clients.query(&a);
    ParamSubscriptionQuery qb = clients.query(&b);
    h.send(1, qa);
    h.send(1, qb);
    for (const QByteArray &frame : h.take(1))
        ASSERT_TRUE(clients.newDataSlot(frameOf(frame)));
    h.ticks(1);
    const QList<QByteArray> frames = h.take(1);
    ASSERT_EQ(frames.size(), 2);
    for (const QByteArray &frame : frames)
        ASSERT_TRUE(clients.newDataSlot(frameOf(frame)));
    const double expected = serverValue(*h.server, 205);
    EXPECT_EQ(first->param(1, 1)->variantValue().toDouble(), expected);
    EXPECT_EQ(second->param(1, 1)->variantValue().toDouble(), expected);
}

TEST(ServerValues, SubscriptionsBeyondTheBoundAreRefused)
{
    Harness h(loadPlant(examplePlantPath()));
    std::vector<std::unique_ptr<QObject>> clients;
    for (int i = 0; i <= PlantServer::MaxSubscriptions; ++i) {
        clients.emplace_back(new QObject);
        ParamSubscriptionQuery query(clients.back().get());
        query.ids = {109};
        h.send(1, query);
    }
    EXPECT_EQ(h.server->subscriptionCount(), PlantServer::MaxSubscriptions);
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: refused a subscription beyond 256"));
    // Another connection has its own bound.
    ParamSubscriptionQuery query(clients.back().get());
    query.ids = {109};
    h.send(2, query);
    EXPECT_EQ(h.server->subscriptionCount(), PlantServer::MaxSubscriptions + 1);
}
