// The client end: connecting, the routing words it stamps, reconnection after the server
// goes away, a server that sends a bad length word, and its send queue.

#include "linkfixture.h"

#include <QtNetwork/QTcpServer>

#include <memory>

using namespace linktest;

TEST_F(LinkTest, ConnectsAndSaysSo)
{
    EXPECT_FALSE(link.isConnected());
    EXPECT_FALSE(link.waitForConnected(10)); // nothing asked for yet
    ASSERT_TRUE(connectLink());
    EXPECT_TRUE(link.isConnected());
    EXPECT_EQ(connectedCount, 1);
    EXPECT_EQ(link.serverName(), QStringLiteral("127.0.0.1:%1").arg(server.serverPort()));
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(LinkTest, SendStampsSourceSessionAndAFreshSequence)
{
    ASSERT_TRUE(connectLink());
    answering = false;
    EXPECT_NE(link.session(), 0);
    EXPECT_GT(link.source(), 0);
    EchoMessage message(1, QStringLiteral("stamped"));
    message.setRoute(-1, -2, -3);
    message.write();
    EXPECT_TRUE(link.send(message));
    EXPECT_TRUE(link.send(message));
    QProtocolStruct plain;
    EXPECT_TRUE(link.send(plain)); // a plain message that was never written: its header alone
    ASSERT_TRUE(waitUntil([&] { return received.size() == 3; }));
    for (int i = 0; i < 3; ++i) {
        QProtocolStruct header;
        header.setPacket(received[i]);
        ASSERT_TRUE(header.read());
        EXPECT_EQ(telortest::routeOf(header), (QList<qint32>{link.source(), link.session(), i + 1}));
    }
    EXPECT_EQ(echoOf(received[0]).text, QStringLiteral("stamped"));
    EXPECT_EQ(received[2].packet().size(), 32);
    // The caller's message keeps its own words.
    EXPECT_EQ(telortest::routeOf(message), (QList<qint32>{-1, -2, -3}));

    // Two links have different sessions.
    TELORLink other;
    EXPECT_NE(other.session(), link.session());
}

TEST_F(LinkTest, SendRefusesWhatCannotGo)
{
    EchoMessage message(1);
    message.write();
    EXPECT_FALSE(link.send(message)); // not connected
    ASSERT_TRUE(connectLink());
    EchoMessage unwritten(2);
    EXPECT_FALSE(link.send(unwritten));
    QProtocolStruct cut;
    cut.setPacket(message.packet().left(33));
    EXPECT_FALSE(link.send(cut));
    EXPECT_TRUE(link.send(message));
    answering = false;
    ASSERT_TRUE(waitUntil([&] { return received.size() == 1; }));
    EXPECT_EQ(echoOf(received[0]).number, 1);
}

TEST_F(LinkTest, FramesFromTheServerArriveUntyped)
{
    ASSERT_TRUE(connectLink());
    EchoMessage announcement(5, QStringLiteral("changed"));
    announcement.setRoute(0, 0, 0);
    announcement.write();
    server.sendToAll(announcement);
    server.sendToAll(announcement);
    ASSERT_TRUE(waitUntil([&] { return unmatched.size() == 2; }));
    EXPECT_EQ(unmatched[0].packet(), announcement.packet());
    EXPECT_EQ(echoOf(unmatched[1]).text, QStringLiteral("changed"));
}

TEST_F(LinkTest, ReconnectsAfterTheServerGoesAwayAndComesBack)
{
    link.setReconnectDelays(20, 200);
    EXPECT_TRUE(link.autoReconnect());
    ASSERT_TRUE(connectLink());
    const quint16 port = server.serverPort();

    server.close();
    ASSERT_TRUE(waitUntil([&] { return disconnectedCount == 1; }));
    EXPECT_FALSE(link.isConnected());
    // At least one attempt fails while nobody listens.
    ASSERT_TRUE(waitUntil([&] { return !errors.isEmpty(); }));
    EXPECT_EQ(errors.first(), QStringLiteral("cannot connect to 127.0.0.1:%1: Connection refused").arg(port));

    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
    ASSERT_TRUE(waitUntil([&] { return connectedCount == 2; }));
    EXPECT_TRUE(link.isConnected());

    // The application sends its subscriptions again from connected(); here: one query.
    EchoMessage query(21);
    query.write();
    QProtocolStruct reply;
    ASSERT_TRUE(link.requestBlocking(query, &reply, Patience));
    EXPECT_EQ(echoOf(reply).number, 42);
}

TEST_F(LinkTest, ResendsFromConnectedAfterEachReconnection)
{
    link.setReconnectDelays(10, 50);
    EchoMessage subscription(1, QStringLiteral("subscribe"));
    subscription.write();
    QObject::connect(&link, &TELORLink::connected, [&] { link.send(subscription); });
    answering = false;
    ASSERT_TRUE(connectLink());
    ASSERT_TRUE(waitUntil([&] { return received.size() == 1; }));
    for (int round = 0; round < 3; ++round) {
        const quint16 port = server.serverPort();
        server.close();
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
        ASSERT_TRUE(waitUntil([&] { return received.size() == round + 2; }));
    }
    EXPECT_EQ(connectedCount, 4);
    EXPECT_EQ(disconnectedCount, 3);
    for (const QProtocolStruct &frame : qAsConst(received))
        EXPECT_EQ(echoOf(frame).text, QStringLiteral("subscribe"));
}

TEST_F(LinkTest, WithoutReconnectionALostConnectionStaysLost)
{
    link.setAutoReconnect(false);
    ASSERT_TRUE(connectLink());
    const quint16 port = server.serverPort();
    server.close();
    ASSERT_TRUE(waitUntil([&] { return disconnectedCount == 1; }));
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
    spin(300);
    EXPECT_FALSE(link.isConnected());
    EXPECT_EQ(connectedCount, 1);

    // A failed attempt ends waitForConnected at once when nothing will try again.
    server.close();
    link.connectToServer(QStringLiteral("127.0.0.1"), port);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(link.waitForConnected(Patience));
    EXPECT_LT(clock.elapsed(), Patience);
    ASSERT_FALSE(errors.isEmpty());
    EXPECT_EQ(errors.last(), QStringLiteral("cannot connect to 127.0.0.1:%1: Connection refused").arg(port));
}

TEST_F(LinkTest, ReconnectionDelaysGrowAndStayBounded)
{
    link.setReconnectDelays(0, -1);
    EXPECT_EQ(link.firstReconnectDelay(), 1);
    EXPECT_EQ(link.longestReconnectDelay(), 1);
    link.setReconnectDelays(100, 5000);
    EXPECT_EQ(link.firstReconnectDelay(), 100);
    EXPECT_EQ(link.longestReconnectDelay(), 5000);

    // Attempts against a port nobody listens on: 20, 40, 80, 80, ... ms apart.
    link.setReconnectDelays(20, 80);
    const quint16 port = server.serverPort();
    server.close();
    QElapsedTimer clock;
    clock.start();
    QList<qint64> at;
    QObject::connect(&link, &TELORLink::errorOccurred, [&] { at.append(clock.elapsed()); });
    link.connectToServer(QStringLiteral("127.0.0.1"), port);
    ASSERT_TRUE(waitUntil([&] { return at.size() >= 6; }));
    link.disconnectFromServer();
    for (int i = 1; i < at.size(); ++i) {
        const qint64 gap = at[i] - at[i - 1];
        const qint64 planned = qMin<qint64>(20 << (i - 1), 80);
        EXPECT_GE(gap, planned * 9 / 10) << "attempt " << i; // a coarse timer may fire a little early
        EXPECT_LT(gap, planned + Patience) << "attempt " << i;
    }
    const int attempts = at.size();
    spin(200);
    EXPECT_EQ(at.size(), attempts); // disconnectFromServer stopped the attempts
}

TEST_F(LinkTest, DisconnectFromServerEndsTheConnectionAndWritesWhatWaits)
{
    answering = false;
    QList<quint64> gone;
    QObject::connect(&server, &TELORLinkServer::clientDisconnected, [&](quint64 c) { gone.append(c); });
    ASSERT_TRUE(connectLink());
    EchoMessage last(3, QStringLiteral("last"));
    last.write();
    EXPECT_TRUE(link.send(last));
    link.disconnectFromServer();
    EXPECT_EQ(disconnectedCount, 1);
    EXPECT_FALSE(link.isConnected());
    ASSERT_TRUE(waitUntil([&] { return gone.size() == 1; }));
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(echoOf(received[0]).text, QStringLiteral("last"));
    spin(200);
    EXPECT_EQ(connectedCount, 1); // no reconnection after a wanted disconnection
}

TEST_F(LinkTest, ConnectingAgainDropsTheOldConnection)
{
    ASSERT_TRUE(connectLink());
    TELORLinkServer other;
    ASSERT_TRUE(other.listen());
    QList<quint64> otherConnections;
    QObject::connect(&other, &TELORLinkServer::clientConnected, [&](quint64 c) { otherConnections.append(c); });
    link.connectToServer(QStringLiteral("127.0.0.1"), other.serverPort());
    EXPECT_EQ(disconnectedCount, 1);
    ASSERT_TRUE(link.waitForConnected(Patience));
    ASSERT_TRUE(waitUntil([&] { return otherConnections.size() == 1; }));
    EXPECT_EQ(connectedCount, 2);
}

namespace {

/** A plain TCP server that hands out its connections, for a server that misbehaves. */
struct RawServer
{
    RawServer()
    {
        QObject::connect(&tcp, &QTcpServer::newConnection, [this] {
            while (QTcpSocket *s = tcp.nextPendingConnection())
                sockets.append(s);
        });
        tcp.listen(QHostAddress::LocalHost);
    }
    QTcpServer tcp;
    QList<QTcpSocket *> sockets; // children of tcp
};

} // namespace

TEST_F(LinkTest, ABadLengthFromTheServerClosesTheConnectionWhichIsMadeAgain)
{
    telortest::LogCapture log;
    RawServer raw;
    link.setReconnectDelays(10, 100);
    link.connectToServer(QStringLiteral("127.0.0.1"), raw.tcp.serverPort());
    ASSERT_TRUE(link.waitForConnected(Patience));
    ASSERT_TRUE(waitUntil([&] { return raw.sockets.size() == 1; }));

    const QByteArray good = echoFrame(8, QStringLiteral("fine"));
    raw.sockets[0]->write(good + headerWithLength(-5));
    ASSERT_TRUE(waitUntil([&] { return disconnectedCount == 1; }));
    const QString message = QStringLiteral("closing 127.0.0.1:%1: body length -5 is negative").arg(raw.tcp.serverPort());
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("TELORLink: ") + message});
    EXPECT_EQ(errors, QStringList{message});
    ASSERT_EQ(unmatched.size(), 1);
    EXPECT_EQ(unmatched[0].packet(), good);

    // The link connects again on its own and reads frames as before.
    ASSERT_TRUE(waitUntil([&] { return raw.sockets.size() == 2 && link.isConnected(); }));
    raw.sockets[1]->write(good);
    ASSERT_TRUE(waitUntil([&] { return unmatched.size() == 2; }));
    EXPECT_EQ(connectedCount, 2);
}

TEST_F(LinkTest, AnOversizedLengthFromTheServerIsRefusedToo)
{
    telortest::LogCapture log;
    RawServer raw;
    link.setAutoReconnect(false);
    link.setMaxBodyLength(1000);
    EXPECT_EQ(link.maxBodyLength(), 1000);
    link.connectToServer(QStringLiteral("127.0.0.1"), raw.tcp.serverPort());
    ASSERT_TRUE(link.waitForConnected(Patience));
    ASSERT_TRUE(waitUntil([&] { return raw.sockets.size() == 1; }));
    raw.sockets[0]->write(telortest::packetBytes(3, 1, 1, QByteArray(1001, 'o')));
    ASSERT_TRUE(waitUntil([&] { return disconnectedCount == 1; }));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("TELORLink: closing 127.0.0.1:%1: body length 1001 above the limit 1000")
                                              .arg(raw.tcp.serverPort())});
    EXPECT_TRUE(unmatched.isEmpty());
}

TEST_F(LinkTest, AFullSendQueueRefusesTheSendAndKeepsTheConnection)
{
    RawServer raw; // accepts and never reads
    link.setMaxSendQueue(64 * 1024);
    EXPECT_EQ(link.maxSendQueue(), 64 * 1024);
    link.connectToServer(QStringLiteral("127.0.0.1"), raw.tcp.serverPort());
    ASSERT_TRUE(link.waitForConnected(Patience));
    ASSERT_TRUE(waitUntil([&] { return raw.sockets.size() == 1; }));
    raw.sockets[0]->setReadBufferSize(1);

    QProtocolStruct big;
    big.setPacket(telortest::packetBytes(3, 1, 1, QByteArray(16 * 1024, 'q')));
    qint64 expected = -1;
    for (int i = 0; i < 100000; ++i) {
        const qint64 queued = link.sendQueue();
        if (!link.send(big)) {
            expected = queued + big.packet().size();
            break;
        }
        ASSERT_LE(link.sendQueue(), 64 * 1024);
        spin(0);
    }
    ASSERT_GT(expected, 64 * 1024);
    EXPECT_EQ(errors, QStringList{QStringLiteral("send queue %1 bytes above the limit 65536").arg(expected)});
    EXPECT_TRUE(link.isConnected());
    EXPECT_EQ(disconnectedCount, 0);
}

TEST_F(LinkTest, DestroyingALinkWithAConnectionLeavesNothingBehind)
{
    auto owned = std::make_unique<TELORLink>();
    QList<quint64> gone;
    QObject::connect(&server, &TELORLinkServer::clientDisconnected, [&](quint64 c) { gone.append(c); });
    owned->connectToServer(QStringLiteral("127.0.0.1"), server.serverPort());
    ASSERT_TRUE(owned->waitForConnected(Patience));
    ASSERT_TRUE(waitUntil([&] { return serverConnections.size() == 1; }));
    owned.reset();
    ASSERT_TRUE(waitUntil([&] { return gone.size() == 1; }));
}

TEST_F(LinkTest, FramesSentJustBeforeTheServerClosesAreDelivered)
{
    ASSERT_TRUE(connectLink());
    EchoMessage goodbye(99, QStringLiteral("goodbye"));
    goodbye.write();
    server.send(serverConnections[0], goodbye);
    server.send(serverConnections[0], goodbye);
    server.disconnectClient(serverConnections[0]);
    ASSERT_TRUE(waitUntil([&] { return disconnectedCount == 1; }));
    ASSERT_EQ(unmatched.size(), 2);
    EXPECT_EQ(unmatched[1].packet(), goodbye.packet());
}

TEST_F(LinkTest, AServerThatSendsBadFramesEveryTimeIsNotHammered)
{
    telortest::LogCapture log;
    RawServer raw;
    QObject::connect(&raw.tcp, &QTcpServer::newConnection, [&] { raw.sockets.last()->write(headerWithLength(-1)); });
    link.setReconnectDelays(10, 40);
    QElapsedTimer clock;
    clock.start();
    QList<qint64> at;
    QObject::connect(&link, &TELORLink::disconnected, [&] { at.append(clock.elapsed()); });
    link.connectToServer(QStringLiteral("127.0.0.1"), raw.tcp.serverPort());
    ASSERT_TRUE(waitUntil([&] { return at.size() >= 5; }));
    link.disconnectFromServer();
    // The delays grow 10, 20, 40, 40 ms although every connection was made.
    for (int i = 1; i < 5; ++i) {
        const qint64 planned = qMin<qint64>(10 << (i - 1), 40);
        EXPECT_GE(at[i] - at[i - 1], planned * 9 / 10) << "connection " << i;
    }
    EXPECT_GE(log.captured().size(), 5);
}

TEST_F(LinkTest, AReceiverMayDestroyTheLinkInTheMiddleOfAPieceOrOnDisconnection)
{
    auto owned = std::make_unique<TELORLink>();
    int frames = 0;
    QObject::connect(owned.get(), &TELORLink::frameReceived, [&](const QProtocolStruct &) {
        ++frames;
        owned.reset();
    });
    owned->connectToServer(QStringLiteral("127.0.0.1"), server.serverPort());
    ASSERT_TRUE(owned->waitForConnected(Patience));
    ASSERT_TRUE(waitUntil([&] { return serverConnections.size() == 1; }));
    ASSERT_TRUE(server.sendFrame(serverConnections[0], echoFrame(1)));
    ASSERT_TRUE(server.sendFrame(serverConnections[0], echoFrame(2)));
    ASSERT_TRUE(waitUntil([&] { return !owned; }));
    spin(50);
    EXPECT_EQ(frames, 1);

    auto second = std::make_unique<TELORLink>();
    QObject::connect(second.get(), &TELORLink::disconnected, [&] { second.reset(); });
    second->connectToServer(QStringLiteral("127.0.0.1"), server.serverPort());
    ASSERT_TRUE(second->waitForConnected(Patience));
    ASSERT_TRUE(waitUntil([&] { return serverConnections.size() == 2; }));
    server.disconnectClient(serverConnections[1]);
    ASSERT_TRUE(waitUntil([&] { return !second; }));
    spin(50);
}
