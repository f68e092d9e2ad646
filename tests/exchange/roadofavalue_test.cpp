// The whole road of one value, from the subscription to the text on a screen, with every
// message passing as packet bytes between a client side and a server side; and the
// simulated server that the demo uses.

#include "exchangetest.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"
#include "parambaseptr.h"
#include "paramsubscriptionquery.h"
#include "paramsubscriptionresult.h"
#include "paramvaluesresult.h"
#include "paramvaluesstruct.h"
#include "qcontainerpacket.h"
#include "simulatedserver.h"

#include <QtCore/QObject>

#include <gtest/gtest.h>

using namespace exchangetest;

namespace {

/**
 * The server's answer to @p query as the server builds it: one record for @p id, written
 * through the server's handle, at time @p when, for the client token @p client.
 */
ParamSubscriptionResult serverAnswer(const ParamSubscriptionQuery &query, ParamBasePtr &handle, qint32 id,
                                     const QDateTime &when, const QObject *client)
{
    ParamSubscriptionResult answer;
    answer.replyTo(query);
    {
        QContainerPacket records(&answer.data);
        answer.ids.append(id);
        handle.write(records);
    }
    answer.dateTime = when;
    answer.setParent(client);
    return answer;
}

} // namespace

TEST(RoadOfAValue, FromSubscriptionToScreen)
{
    // Server side: its own object for parameter 42, with limits, judged on every change.
    BPVariant serverParam(42);
    serverParam.limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    serverParam.limitsPrivate().setHiWarningSetpoint(true, 80.0);
    serverParam.limitsPrivate().setHiEmergencySetpoint(true, 95.0);
    serverParam.setValue(50.0);
    serverParam.setState(8);
    serverParam.cleanChanged();

    // 1. The application creates the object, shares it and appends it for its client.
    QObject panel;
    ClientParamSubscription subscription;
    QSharedPointer<AbstractParameterBase> param(new BPVariant(42));
    subscription.append(param, &panel);

    // 2. The query states the client's complete wish; the application writes and sends it.
    ParamSubscriptionQuery query = subscription.query(&panel);
    query.setRoute(7, 8, 9); // as the transport stamps it
    const QByteArray sent = query.write();
    EXPECT_EQ(telortest::bodyOf(sent), telortest::plainBytes([&](QDataStream &s) {
                  s << quint32(1) << qint32(42) << quint32(0) << tokenOf(&panel);
              }));

    // The server reads the wish and answers through a handle of its own: the first write
    // is a full one, so the limits travel.
    ParamSubscriptionQuery atServer(nullptr);
    atServer.setPacket(sent);
    ASSERT_TRUE(atServer.read());
    ASSERT_EQ(atServer.ids, QSet<int>{42});
    ParamBasePtr serverHandle(&serverParam, atServer.refreshIds.contains(42));
    serverParam.setValue(88.0);
    serverParam.setState(8);
    ASSERT_EQ(serverParam.getState(), 128u);
    ParamSubscriptionResult answer = serverAnswer(atServer, serverHandle, 42, answerTime(30), atServer.parent());
    const QByteArray delivered = answer.write();
    EXPECT_EQ(telortest::bodyOf(delivered),
              subscriptionResultBody({42}, telortest::plainBytes([](QDataStream &s) {
                                         s << qint32(42) << qint32(5) << qint32(128) << QVariant(88.0);
                                         s << qint8(1) << qint8(1) << 0.0 << 0.0 << true << false;
                                         s << qint8(1) << 0.0 << 0.0 << 80.0 << 95.0 << false << false << true << true;
                                     }),
                                     answerTime(30), tokenOf(&panel)));

    // 3. The message arrives untyped and goes to the aggregate.
    QProtocolStruct message = transported(delivered);
    EXPECT_FALSE(param->changed());

    // 4.-6. newDataSlot reads the result, finds the client by its token, and the object
    // takes the record: state, flag and value.
    ASSERT_TRUE(subscription.newDataSlot(message));
    EXPECT_EQ(subscription.dateTime(), answerTime(30));

    // 7. The application sees the change, renders the value and drops the flags.
    ASSERT_TRUE(param->changed());
    EXPECT_EQ(param->stringValue(1, 'f'), QStringLiteral("88.0"));
    EXPECT_EQ(param->getState(), 128u);
    EXPECT_TRUE(param->dataReceived());
    EXPECT_EQ(param->limits().checkValue(96.0), 512); // the limits came along
    subscription.dropFlags();
    EXPECT_FALSE(param->changed());

    // A later change, written through the same handle, is no longer a full record: the
    // server dropped its flags, so the limits travel as one byte.
    serverParam.cleanChanged();
    serverParam.setValue(97.0);
    serverParam.setState(8);
    ParamSubscriptionResult next = serverAnswer(atServer, serverHandle, 42, answerTime(31), &panel);
    message.setPacket(next.write());
    ASSERT_TRUE(subscription.newDataSlot(message));
    EXPECT_TRUE(param->changed());
    EXPECT_EQ(param->stringValue(1, 'f'), QStringLiteral("97.0"));
    EXPECT_EQ(param->getState(), 512u);
    EXPECT_FALSE(param->limits().changed());
    EXPECT_EQ(param->limits().checkValue(85.0), 128); // kept from the first record
}

TEST(SimulatedServer, SubscriptionIsAnsweredAtOnceAndOnEveryChange)
{
    SimulatedServer server;
    server.addStandardPlant();
    QObject panel;
    QObject logger;
    ClientParamSubscription subscription;
    const QSharedPointer<BPVariant> boiler(new BPVariant(101));
    const QSharedPointer<BPString> mode(new BPString(103));
    const QSharedPointer<BPVariant> boilerForLogger(new BPVariant(101));
    const QSharedPointer<BPDouble> flow(new BPDouble(104));
    flow->setRefreshAnyway(true);
    subscription.append(boiler, &panel);
    subscription.append(mode, &panel);
    subscription.append(boilerForLogger, &logger);
    subscription.append(flow, &logger);

    for (const ParamSubscriptionQuery &query : subscription.allQueries()) {
        ParamSubscriptionQuery toSend = query;
        const QList<QByteArray> answers = server.receive(toSend.write());
        ASSERT_EQ(answers.size(), 1);
        ASSERT_TRUE(subscription.newDataSlot(transported(answers.first())));
    }
    EXPECT_EQ(server.subscriberCount(), 2);
    EXPECT_TRUE(boiler->changed());
    EXPECT_TRUE(boilerForLogger->changed());
    EXPECT_EQ(boiler->getValue(), server.parameter(101)->variantValue());
    EXPECT_EQ(mode->getValue(), QStringLiteral("auto"));
    EXPECT_TRUE(boiler->limits().hasLimits());
    subscription.dropFlags();

    // Over a whole period of the boiler's wave the state passes every setpoint.
    QSet<unsigned int> statesSeen;
    int flowDeliveries = 0;
    for (int i = 0; i < 8; ++i) {
        const QList<QByteArray> packets = server.tick();
        for (const QByteArray &packet : packets)
            ASSERT_TRUE(subscription.newDataSlot(transported(packet)));
        if (flow->changed())
            ++flowDeliveries;
        EXPECT_EQ(boiler->getState(), server.parameter(101)->getState());
        EXPECT_EQ(boiler->getValue(), boilerForLogger->getValue());
        statesSeen.insert(boiler->getState());
        subscription.dropFlags();
    }
    EXPECT_TRUE(statesSeen.contains(8u));
    EXPECT_TRUE(statesSeen.contains(128u));
    EXPECT_TRUE(statesSeen.contains(512u));
    EXPECT_TRUE(statesSeen.contains(64u));
    EXPECT_TRUE(statesSeen.contains(256u));
    EXPECT_EQ(flowDeliveries, 8); // refreshed on every tick, changed or not

    // An empty wish ends the subscription.
    subscription.remove(&logger);
    ParamSubscriptionQuery goodbye(&logger);
    EXPECT_TRUE(server.receive(goodbye.write()).isEmpty());
    EXPECT_EQ(server.subscriberCount(), 1);
}

TEST(SimulatedServer, ValuesQueryIsAnsweredWithEveryKnownIdentifier)
{
    SimulatedServer server;
    server.addStandardPlant();
    QObject client;
    ParamValuesStruct values(&client);
    const QSharedPointer<BPVariant> a(new BPVariant(101));
    const QSharedPointer<BPVariant> b(new BPVariant(101));
    const QSharedPointer<BPVariant> sample(new BPVariant(105));
    values.append(a);
    values.append(b);
    values.append(sample);

    ParamValuesQuery query = values.query();
    const QList<QByteArray> answers = server.receive(query.write());
    ASSERT_EQ(answers.size(), 1);
    ParamValuesResult result;
    result.setPacket(answers.first());
    ASSERT_TRUE(result.read());
    EXPECT_EQ(result.ids.size(), 3); // the repeat is answered twice
    // Both objects under 101 read the first record; the repeated entry then reads the
    // second record of 101 again, and 105 follows.
    ASSERT_TRUE(values.newDataSlot(result));
    EXPECT_EQ(a->getValue(), server.parameter(101)->variantValue());
    EXPECT_EQ(b->getValue(), server.parameter(101)->variantValue());
    EXPECT_EQ(sample->getValue().type(), QVariant::DateTime);
    EXPECT_EQ(values.dateTime(), server.now());
}
