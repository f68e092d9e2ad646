// Requests: the answer that replyTo() addressed goes to its request, once; timeouts, lost
// connections, contexts that go away, the blocking form, and 10,000 requests in flight.

#include "linkfixture.h"

#include <QtCore/QElapsedTimer>

#include <cstdio>
#include <memory>

using namespace linktest;

namespace {

struct Outcome
{
    bool called = false;
    int calls = 0;
    bool timedOut = false;
    QProtocolStruct answer;
};

TELORLink::AnswerCallback recordInto(Outcome &outcome)
{
    return [&outcome](const QProtocolStruct &answer, bool timedOut) {
        outcome.called = true;
        ++outcome.calls;
        outcome.timedOut = timedOut;
        outcome.answer = answer;
    };
}

EchoMessage written(qint32 number, const QString &text = QString())
{
    EchoMessage message(number, text);
    message.write();
    return message;
}

} // namespace

TEST_F(LinkTest, RequestGetsTheAnswerThatRepliesToIt)
{
    ASSERT_TRUE(connectLink());
    Outcome outcome;
    const quint32 sequence = link.request(written(21, QStringLiteral("q")), nullptr, recordInto(outcome), Patience);
    EXPECT_EQ(sequence, 1u);
    EXPECT_EQ(link.pendingRequests(), 1);
    ASSERT_TRUE(waitUntil([&] { return outcome.called; }));
    EXPECT_FALSE(outcome.timedOut);
    const EchoMessage reply = echoOf(outcome.answer);
    EXPECT_EQ(reply.number, 42);
    EXPECT_EQ(reply.text, QStringLiteral("q"));
    EXPECT_EQ(telortest::routeOf(reply), (QList<qint32>{link.source(), link.session(), 1}));
    EXPECT_TRUE(unmatched.isEmpty()); // a matched answer is not emitted as a frame
    EXPECT_EQ(link.pendingRequests(), 0);
}

TEST_F(LinkTest, OnlyTheFirstAnswerCompletesARequestLaterOnesAreFrames)
{
    // The server answers each query three times, as pieces of an archive result or a
    // subscription's updates arrive.
    answering = false;
    QObject::connect(&server, &TELORLinkServer::frameReceived, [&](quint64 c, const QProtocolStruct &frame) {
        for (int piece = 1; piece <= 3; ++piece) {
            EchoMessage reply(piece, QStringLiteral("piece"));
            reply.replyTo(echoOf(frame));
            reply.write();
            server.send(c, reply);
        }
    });
    ASSERT_TRUE(connectLink());
    Outcome outcome;
    const quint32 sequence = link.request(written(1), nullptr, recordInto(outcome), Patience);
    ASSERT_TRUE(waitUntil([&] { return outcome.called && unmatched.size() == 2; }));
    spin(50);
    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(echoOf(outcome.answer).number, 1);
    ASSERT_EQ(unmatched.size(), 2);
    EXPECT_EQ(echoOf(unmatched[0]).number, 2);
    EXPECT_EQ(echoOf(unmatched[1]).number, 3);
    EXPECT_EQ(telortest::routeOf(echoOf(unmatched[1])), (QList<qint32>{link.source(), link.session(), qint32(sequence)}));
}

TEST_F(LinkTest, AnswersMatchByAllThreeRoutingWords)
{
    // A server that answers with the sequence right but another session, then another
    // source, then the right words.
    answering = false;
    QObject::connect(&server, &TELORLinkServer::frameReceived, [&](quint64 c, const QProtocolStruct &frame) {
        const EchoMessage query = echoOf(frame);
        const QProtocolHeader h = query.getHeader();
        const QList<QList<qint32>> routes{{h.source, h.session + 1, h.sequence}, {h.source + 1, h.session, h.sequence},
                                          {h.source, h.session, h.sequence + 1}, {h.source, h.session, h.sequence}};
        for (const QList<qint32> &route : routes) {
            EchoMessage reply(route[0] == h.source && route[1] == h.session && route[2] == h.sequence ? 1 : 0);
            reply.replyTo(query);
            reply.setRoute(route[0], route[1], route[2]);
            reply.write();
            server.send(c, reply);
        }
    });
    ASSERT_TRUE(connectLink());
    Outcome outcome;
    link.request(written(1), nullptr, recordInto(outcome), Patience);
    ASSERT_TRUE(waitUntil([&] { return outcome.called; }));
    EXPECT_EQ(echoOf(outcome.answer).number, 1);
    ASSERT_TRUE(waitUntil([&] { return unmatched.size() == 3; }));
    for (const QProtocolStruct &frame : qAsConst(unmatched))
        EXPECT_EQ(echoOf(frame).number, 0);
}

TEST_F(LinkTest, ARequestWithoutAnswerTimesOut)
{
    answering = false;
    ASSERT_TRUE(connectLink());
    Outcome slow, quick;
    QElapsedTimer clock;
    clock.start();
    link.request(written(1), nullptr, recordInto(slow), 400);
    link.request(written(2), nullptr, recordInto(quick), 100);
    ASSERT_TRUE(waitUntil([&] { return quick.called; }));
    EXPECT_GE(clock.elapsed(), 100);
    EXPECT_TRUE(quick.timedOut);
    EXPECT_TRUE(quick.answer.packet().isEmpty());
    EXPECT_FALSE(slow.called);
    ASSERT_TRUE(waitUntil([&] { return slow.called; }));
    EXPECT_GE(clock.elapsed(), 400);
    EXPECT_TRUE(slow.timedOut);
    EXPECT_EQ(link.pendingRequests(), 0);

    // An answer that comes after the timeout is an ordinary frame.
    const QProtocolStruct query = received[0];
    answer(serverConnections[0], query);
    ASSERT_TRUE(waitUntil([&] { return unmatched.size() == 1; }));
    EXPECT_EQ(echoOf(unmatched[0]).number, 2);
    EXPECT_EQ(slow.calls, 1);
}

TEST_F(LinkTest, ANegativeTimeoutWaitsUntilTheConnectionIsLost)
{
    answering = false;
    link.setAutoReconnect(false);
    ASSERT_TRUE(connectLink());
    Outcome outcome;
    link.request(written(1), nullptr, recordInto(outcome), -1);
    spin(200);
    EXPECT_FALSE(outcome.called);
    server.close();
    ASSERT_TRUE(waitUntil([&] { return outcome.called; }));
    EXPECT_TRUE(outcome.timedOut);
    EXPECT_EQ(disconnectedCount, 1);
}

TEST_F(LinkTest, ALostConnectionEndsPendingRequestsAtOnce)
{
    answering = false;
    ASSERT_TRUE(connectLink());
    Outcome a, b;
    link.request(written(1), nullptr, recordInto(a), Patience * 10);
    link.request(written(2), nullptr, recordInto(b), Patience * 10);
    ASSERT_TRUE(waitUntil([&] { return received.size() == 2; }));
    server.disconnectClient(serverConnections[0]);
    ASSERT_TRUE(waitUntil([&] { return a.called && b.called; }));
    EXPECT_TRUE(a.timedOut);
    EXPECT_TRUE(b.timedOut);
    EXPECT_EQ(link.pendingRequests(), 0);
}

TEST_F(LinkTest, ACallbackWhoseContextIsGoneIsNotCalled)
{
    answering = false;
    ASSERT_TRUE(connectLink());
    Outcome outcome;
    auto context = std::make_unique<QObject>();
    link.request(written(1), context.get(), recordInto(outcome), 100);
    context.reset();
    spin(300);
    EXPECT_FALSE(outcome.called);
    EXPECT_EQ(link.pendingRequests(), 0);

    auto alive = std::make_unique<QObject>();
    Outcome answered;
    answering = true;
    link.request(written(2), alive.get(), recordInto(answered), Patience);
    ASSERT_TRUE(waitUntil([&] { return answered.called; }));
    EXPECT_EQ(echoOf(answered.answer).number, 4);
}

TEST_F(LinkTest, CancelledRequestsAreForgotten)
{
    answering = false;
    ASSERT_TRUE(connectLink());
    Outcome outcome;
    const quint32 sequence = link.request(written(1), nullptr, recordInto(outcome), 50);
    EXPECT_TRUE(link.cancelRequest(sequence));
    EXPECT_FALSE(link.cancelRequest(sequence));
    spin(200);
    EXPECT_FALSE(outcome.called);
    answer(serverConnections[0], received[0]);
    ASSERT_TRUE(waitUntil([&] { return unmatched.size() == 1; }));
}

TEST_F(LinkTest, ARequestThatCannotBeSentReturnsZeroAndNeverCalls)
{
    Outcome outcome;
    EXPECT_EQ(link.request(written(1), nullptr, recordInto(outcome), 10), 0u);
    ASSERT_TRUE(connectLink());
    EchoMessage unwritten(1);
    EXPECT_EQ(link.request(unwritten, nullptr, recordInto(outcome), 10), 0u);
    spin(50);
    EXPECT_FALSE(outcome.called);
    EXPECT_EQ(link.pendingRequests(), 0);
}

TEST_F(LinkTest, ACallbackMayRequestAgainOrDestroyTheLink)
{
    ASSERT_TRUE(connectLink());
    Outcome second;
    bool first = false;
    link.request(written(1), nullptr,
                 [&](const QProtocolStruct &, bool) {
                     first = true;
                     link.request(written(5), nullptr, recordInto(second), Patience);
                 },
                 Patience);
    ASSERT_TRUE(waitUntil([&] { return second.called; }));
    EXPECT_TRUE(first);
    EXPECT_EQ(echoOf(second.answer).number, 10);

    auto owned = std::make_unique<TELORLink>();
    owned->connectToServer(QStringLiteral("127.0.0.1"), server.serverPort());
    ASSERT_TRUE(owned->waitForConnected(Patience));
    bool called = false;
    owned->request(written(1), nullptr,
                   [&](const QProtocolStruct &, bool) {
                       called = true;
                       owned.reset();
                   },
                   Patience);
    owned->request(written(2), nullptr, [&](const QProtocolStruct &, bool) { ADD_FAILURE() << "called after destruction"; },
                   Patience);
    ASSERT_TRUE(waitUntil([&] { return called; }));
    EXPECT_FALSE(owned);
    spin(100);
}

TEST_F(LinkTest, RequestBlockingReturnsTheAnswer)
{
    ASSERT_TRUE(connectLink());
    QProtocolStruct reply;
    ASSERT_TRUE(link.requestBlocking(written(8, QStringLiteral("blocking")), &reply, Patience));
    EXPECT_EQ(echoOf(reply).number, 16);
    EXPECT_EQ(echoOf(reply).text, QStringLiteral("blocking"));
    EXPECT_TRUE(link.requestBlocking(written(9), nullptr, Patience));
    EXPECT_TRUE(unmatched.isEmpty());
}

TEST_F(LinkTest, RequestBlockingTimesOutAndLeavesTheAnswerAlone)
{
    answering = false;
    ASSERT_TRUE(connectLink());
    EchoMessage untouched(-7);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(link.requestBlocking(written(1), &untouched, 150));
    EXPECT_GE(clock.elapsed(), 150);
    EXPECT_EQ(untouched.number, -7);
    EXPECT_EQ(link.pendingRequests(), 0);
    TELORLink unconnected;
    EXPECT_FALSE(unconnected.requestBlocking(written(1), &untouched, Patience));
}

TEST_F(LinkTest, TenThousandPipelinedRequestsAreAnsweredInOrder)
{
    ASSERT_TRUE(connectLink());
    constexpr int Count = 10000;
    QList<qint32> answers;
    answers.reserve(Count);
    int timedOut = 0;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < Count; ++i) {
        const quint32 sequence = link.request(written(i), nullptr,
                                              [&](const QProtocolStruct &answer, bool late) {
                                                  if (late)
                                                      ++timedOut;
                                                  else
                                                      answers.append(echoOf(answer).number);
                                              },
                                              Patience * 6);
        ASSERT_EQ(sequence, quint32(i + 1));
    }
    EXPECT_EQ(link.pendingRequests(), Count);
    ASSERT_TRUE(waitUntil([&] { return answers.size() + timedOut == Count; }, Patience * 6));
    const qint64 ms = clock.elapsed();
    EXPECT_EQ(timedOut, 0);
    QList<qint32> expected;
    for (int i = 0; i < Count; ++i)
        expected.append(2 * i);
    EXPECT_EQ(answers, expected);
    EXPECT_EQ(received.size(), Count);
    EXPECT_TRUE(unmatched.isEmpty());
    EXPECT_EQ(link.pendingRequests(), 0);
    std::printf("10000 pipelined requests answered in %lld ms\n", static_cast<long long>(ms));
}
