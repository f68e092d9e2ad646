// The server end over loopback: frames from raw sockets, faults that close one connection
// only, a peer that stops reading, the connection limit, and sending.

#include "linktest.h"

#include "telorlinkserver.h"

#include <gtest/gtest.h>

#include <memory>

using namespace linktest;

namespace {

/** A listening server that records what it sees. */
class ServerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QObject::connect(&server, &TELORLinkServer::clientConnected, [this](quint64 c) { connected.append(c); });
        QObject::connect(&server, &TELORLinkServer::clientDisconnected, [this](quint64 c) { disconnected.append(c); });
        QObject::connect(&server, &TELORLinkServer::frameReceived, [this](quint64 c, const QProtocolStruct &frame) {
            frames.append({c, frame.packet()});
        });
        ASSERT_TRUE(server.listen());
        ASSERT_NE(server.serverPort(), 0);
    }

    /** Frames received on one connection, in order. */
    QList<QByteArray> framesOf(quint64 connection) const
    {
        QList<QByteArray> of;
        for (const auto &f : frames)
            if (f.first == connection)
                of.append(f.second);
        return of;
    }

    /** Connects a raw socket and waits until the server has announced it; returns its number. */
    quint64 connectRawClient(QTcpSocket &socket)
    {
        const int before = connected.size();
        if (!connectRaw(socket, server.serverPort()) || !waitUntil([&] { return connected.size() > before; }))
            return 0;
        return connected.last();
    }

    TELORLinkServer server;
    QList<quint64> connected;
    QList<quint64> disconnected;
    QList<QPair<quint64, QByteArray>> frames;
};

} // namespace

TEST_F(ServerTest, ListensOnLoopbackAndAPickedPort)
{
    EXPECT_TRUE(server.isListening());
    EXPECT_EQ(server.serverAddress(), QHostAddress(QHostAddress::LocalHost));
    TELORLinkServer second;
    EXPECT_FALSE(second.listen(QHostAddress::LocalHost, server.serverPort()));
    EXPECT_FALSE(second.errorString().isEmpty());
    EXPECT_FALSE(second.isListening());
    EXPECT_EQ(second.serverPort(), 0);
}

TEST_F(ServerTest, FramesArriveWithTheirConnectionAsUntypedMessages)
{
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);
    ASSERT_NE(id, 0u);
    EXPECT_EQ(server.connections(), QList<quint64>{id});
    EXPECT_EQ(server.peerName(id), loopbackPeer(socket.localPort()));

    const QByteArray a = echoFrame(1, QStringLiteral("one"));
    const QByteArray b = echoFrame(2, QStringLiteral("two"));
    ASSERT_TRUE(writeAll(socket, a + b));
    ASSERT_TRUE(waitUntil([&] { return frames.size() == 2; }));
    EXPECT_EQ(framesOf(id), (QList<QByteArray>{a, b}));

    // The receiver reads the typed message from the untyped one.
    QProtocolStruct untyped;
    untyped.setPacket(frames[1].second);
    EchoMessage typed;
    typed.setPacket(untyped);
    ASSERT_TRUE(typed.read());
    EXPECT_EQ(typed.number, 2);
    EXPECT_EQ(typed.text, QStringLiteral("two"));
}

TEST_F(ServerTest, FramesSentByteByByteArriveWhole)
{
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);
    const QList<QByteArray> sent{echoFrame(7, QStringLiteral("split")), QProtocolStruct().write(), echoFrame(8)};
    QByteArray stream;
    for (const QByteArray &f : sent)
        stream += f;
    for (int i = 0; i < stream.size(); ++i) {
        ASSERT_TRUE(writeAll(socket, stream.mid(i, 1)));
        if (i % 16 == 0)
            spin(1);
    }
    ASSERT_TRUE(waitUntil([&] { return frames.size() == 3; }));
    EXPECT_EQ(framesOf(id), sent);
}

TEST_F(ServerTest, OversizedLengthClosesOnlyThatConnection)
{
    telortest::LogCapture log;
    QTcpSocket bad, good;
    const quint64 badId = connectRawClient(bad);
    const quint64 goodId = connectRawClient(good);
    ASSERT_NE(badId, 0u);
    ASSERT_NE(goodId, 0u);
    const quint16 badPort = bad.localPort();

    const QByteArray before = echoFrame(1, QStringLiteral("before"));
    ASSERT_TRUE(writeAll(bad, before + headerWithLength(0x7FFFFFFF) + QByteArray(100, 'g')));
    ASSERT_TRUE(waitUntil([&] { return disconnected.contains(badId); }));
    ASSERT_TRUE(waitUntil([&] { return bad.state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("TELORLinkServer: closing %1: body length 2147483647 above the limit 67108864")
                                              .arg(loopbackPeer(badPort))});
    // The frame that was whole before the bad header was delivered.
    EXPECT_EQ(framesOf(badId), QList<QByteArray>{before});

    // The other connection goes on both ways.
    EXPECT_EQ(server.connections(), QList<quint64>{goodId});
    const QByteArray after = echoFrame(2, QStringLiteral("after"));
    ASSERT_TRUE(writeAll(good, after));
    ASSERT_TRUE(waitUntil([&] { return framesOf(goodId).size() == 1; }));
    EXPECT_EQ(framesOf(goodId), QList<QByteArray>{after});
    EXPECT_TRUE(server.sendFrame(goodId, after));
    ASSERT_TRUE(waitUntil([&] { return good.bytesAvailable() >= after.size(); }));
    EXPECT_EQ(good.readAll(), after);
    EXPECT_EQ(disconnected, QList<quint64>{badId});
}

TEST_F(ServerTest, NegativeLengthClosesOnlyThatConnection)
{
    telortest::LogCapture log;
    QTcpSocket bad, good;
    const quint64 badId = connectRawClient(bad);
    const quint64 goodId = connectRawClient(good);
    const quint16 badPort = bad.localPort();
    ASSERT_TRUE(writeAll(bad, headerWithLength(-1)));
    ASSERT_TRUE(waitUntil([&] { return disconnected.contains(badId); }));
    EXPECT_EQ(log.captured(),
              QStringList{QStringLiteral("TELORLinkServer: closing %1: body length -1 is negative").arg(loopbackPeer(badPort))});
    ASSERT_TRUE(writeAll(good, echoFrame(3)));
    ASSERT_TRUE(waitUntil([&] { return framesOf(goodId).size() == 1; }));
    EXPECT_EQ(server.connections(), QList<quint64>{goodId});
}

TEST_F(ServerTest, GarbageBytesCloseOnlyThatConnection)
{
    telortest::LogCapture log;
    QTcpSocket bad, good;
    const quint64 badId = connectRawClient(bad);
    const quint64 goodId = connectRawClient(good);
    const quint16 badPort = bad.localPort();
    // Text where a header belongs: the body-length word is the ASCII of "Host".
    const QByteArray garbage("GET / HTTP/1.1\r\nHost: example\r\n\r\n");
    ASSERT_EQ(qFromBigEndian<qint32>(garbage.constData() + 16), 0x486F7374);
    ASSERT_TRUE(writeAll(bad, garbage));
    ASSERT_TRUE(waitUntil([&] { return disconnected.contains(badId); }));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("TELORLinkServer: closing %1: body length 1215263604 above the limit 67108864")
                                              .arg(loopbackPeer(badPort))});
    ASSERT_TRUE(writeAll(good, echoFrame(4)));
    ASSERT_TRUE(waitUntil([&] { return framesOf(goodId).size() == 1; }));
}

TEST_F(ServerTest, ASmallerBodyLimitApplies)
{
    telortest::LogCapture log;
    server.setMaxBodyLength(16);
    EXPECT_EQ(server.maxBodyLength(), 16);
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);
    const quint16 port = socket.localPort();
    const QByteArray fits = telortest::packetBytes(3, 1, 1, QByteArray(16, 'f'));
    ASSERT_TRUE(writeAll(socket, fits + telortest::packetBytes(3, 1, 1, QByteArray(17, 'f'))));
    ASSERT_TRUE(waitUntil([&] { return disconnected.contains(id); }));
    EXPECT_EQ(framesOf(id), QList<QByteArray>{fits});
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("TELORLinkServer: closing %1: body length 17 above the limit 16")
                                              .arg(loopbackPeer(port))});
}

TEST_F(ServerTest, APeerThatStopsReadingIsDroppedWhileTheOthersKeepReceiving)
{
    telortest::LogCapture log;
    const qint64 limit = 64 * 1024;
    server.setMaxSendQueue(limit);
    EXPECT_EQ(server.maxSendQueue(), limit);

    QTcpSocket stalled; // never reads
    QTcpSocket reader;
    qint64 readerBytes = 0;
    QObject::connect(&reader, &QTcpSocket::readyRead, [&] { readerBytes += reader.readAll().size(); });
    const quint64 stalledId = connectRawClient(stalled);
    const quint64 readerId = connectRawClient(reader);
    ASSERT_NE(stalledId, 0u);
    ASSERT_NE(readerId, 0u);
    const quint16 stalledPort = stalled.localPort();
    stalled.setReadBufferSize(1); // Qt takes no more than a byte from the system for it

    const QByteArray frame = telortest::packetBytes(3, 1, 1, QByteArray(16 * 1024, 's'));
    qint64 sent = 0;
    qint64 expectedQueue = -1;
    // The system buffers a few MiB on the loopback before the server's own queue grows;
    // 100,000 frames (1.6 GB) is far beyond that.
    for (int i = 0; i < 100000 && server.connections().contains(stalledId); ++i) {
        const qint64 queued = server.sendQueue(stalledId);
        EXPECT_TRUE(server.sendFrame(readerId, frame));
        if (server.sendFrame(stalledId, frame)) {
            sent += frame.size();
        } else {
            expectedQueue = queued + frame.size();
            break;
        }
        ASSERT_LE(server.sendQueue(stalledId), limit);
        // The reader takes everything: its queue empties before the next round.
        ASSERT_TRUE(waitUntil([&] { return server.sendQueue(readerId) == 0; }));
    }
    ASSERT_GT(expectedQueue, limit);
    EXPECT_EQ(disconnected, QList<quint64>{stalledId});
    EXPECT_EQ(server.connections(), QList<quint64>{readerId});
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("TELORLinkServer: closing %1: send queue %2 bytes above the limit 65536")
                                              .arg(loopbackPeer(stalledPort))
                                              .arg(expectedQueue)});
    EXPECT_GT(sent, 0);
    EXPECT_FALSE(server.sendFrame(stalledId, frame));
    // The reader goes on receiving: everything that was sent to it, and more.
    const qint64 rounds = sent / frame.size() + 1;
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(server.sendFrame(readerId, frame));
        ASSERT_TRUE(waitUntil([&] { return server.sendQueue(readerId) == 0; }));
    }
    ASSERT_TRUE(waitUntil([&] { return readerBytes == (rounds + 10) * frame.size(); }));
    EXPECT_EQ(server.connections(), QList<quint64>{readerId});
}

TEST_F(ServerTest, ASingleFrameLargerThanTheQueueGoesToAPeerThatKeepsUp)
{
    server.setMaxSendQueue(1000);
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);
    const QByteArray big = telortest::packetBytes(3, 1, 1, QByteArray(5000, 'b'));
    EXPECT_TRUE(server.sendFrame(id, big));
    ASSERT_TRUE(waitUntil([&] { return socket.bytesAvailable() >= big.size(); }));
    EXPECT_EQ(socket.readAll(), big);
    EXPECT_EQ(server.connections(), QList<quint64>{id});
}

TEST_F(ServerTest, ConnectionsBeyondTheLimitAreRefused)
{
    telortest::LogCapture log;
    server.setMaxConnections(2);
    EXPECT_EQ(server.maxConnections(), 2);
    QTcpSocket first, second, third;
    const quint64 a = connectRawClient(first);
    const quint64 b = connectRawClient(second);
    // The third is accepted by the system and closed by the server at once.
    quint16 thirdPort = 0;
    QObject::connect(&third, &QTcpSocket::connected, [&] { thirdPort = third.localPort(); });
    third.connectToHost(QHostAddress::LocalHost, server.serverPort());
    ASSERT_TRUE(waitUntil([&] { return log.captured().size() == 1; }));
    ASSERT_TRUE(waitUntil([&] { return third.state() == QAbstractSocket::UnconnectedState; }));
    ASSERT_NE(thirdPort, 0);
    EXPECT_EQ(connected, (QList<quint64>{a, b}));
    EXPECT_EQ(server.connections(), (QList<quint64>{a, b}));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("TELORLinkServer: refusing %1: 2 connections open, the limit")
                                              .arg(loopbackPeer(thirdPort))});
    EXPECT_TRUE(disconnected.isEmpty());

    // Room again once one has gone.
    first.disconnectFromHost();
    ASSERT_TRUE(waitUntil([&] { return disconnected.contains(a); }));
    QTcpSocket fourth;
    const quint64 c = connectRawClient(fourth);
    EXPECT_NE(c, 0u);
    EXPECT_EQ(server.connections(), (QList<quint64>{b, c}));
    server.setMaxConnections(0);
    EXPECT_EQ(server.maxConnections(), 1);
}

TEST_F(ServerTest, ConnectionNumbersAreNeverReused)
{
    QList<quint64> seen;
    for (int i = 0; i < 5; ++i) {
        QTcpSocket socket;
        const quint64 id = connectRawClient(socket);
        ASSERT_NE(id, 0u);
        EXPECT_FALSE(seen.contains(id));
        seen.append(id);
        if (i % 2)
            socket.disconnectFromHost();
        else
            server.disconnectClient(id);
        ASSERT_TRUE(waitUntil([&] { return disconnected.contains(id); }));
    }
    EXPECT_EQ(seen, (QList<quint64>{1, 2, 3, 4, 5}));
    EXPECT_EQ(disconnected, seen);
    EXPECT_TRUE(server.connections().isEmpty());
}

TEST_F(ServerTest, DisconnectClientStillWritesWhatWaits)
{
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);
    const QByteArray last = echoFrame(77, QStringLiteral("last words"));
    EXPECT_TRUE(server.sendFrame(id, last));
    server.disconnectClient(id);
    EXPECT_EQ(disconnected, QList<quint64>{id}); // before disconnectClient returned
    EXPECT_TRUE(server.connections().isEmpty());
    EXPECT_TRUE(server.peerName(id).isEmpty());
    ASSERT_TRUE(waitUntil([&] { return socket.state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(socket.readAll(), last);
    server.disconnectClient(id); // unknown now: nothing happens
    EXPECT_EQ(disconnected, QList<quint64>{id});
}

TEST_F(ServerTest, SendUsesThePacketAndRefusesWhatIsNotAFrame)
{
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);

    EchoMessage written(5, QStringLiteral("written"));
    written.setRoute(1, 2, 3);
    const QByteArray bytes = written.write();
    EXPECT_TRUE(server.send(id, written));

    QProtocolStruct plain; // never written: a header alone
    EXPECT_TRUE(server.send(id, plain));

    EchoMessage unwritten(6, QStringLiteral("never written"));
    EXPECT_FALSE(server.send(id, unwritten));
    EXPECT_FALSE(server.send(id + 100, written));
    EXPECT_FALSE(server.sendFrame(id, QByteArray("short")));
    EXPECT_FALSE(server.sendFrame(id, bytes + "x"));      // length word does not count the extra byte
    EXPECT_FALSE(server.sendFrame(id, bytes.left(40)));  // nor a cut body
    QProtocolStruct wrongPacket;
    wrongPacket.setPacket(bytes.left(40));
    EXPECT_FALSE(server.send(id, wrongPacket));

    const QByteArray expected = bytes + telortest::packetBytes(0, 0, 0, QByteArray());
    ASSERT_TRUE(waitUntil([&] { return socket.bytesAvailable() >= expected.size(); }));
    spin(20);
    EXPECT_EQ(socket.readAll(), expected);
}

TEST_F(ServerTest, SendToAllReachesEveryConnection)
{
    QTcpSocket a, b, c;
    connectRawClient(a);
    connectRawClient(b);
    connectRawClient(c);
    EchoMessage message(9, QStringLiteral("everyone"));
    const QByteArray bytes = message.write();
    server.sendToAll(message);
    for (QTcpSocket *s : {&a, &b, &c}) {
        ASSERT_TRUE(waitUntil([&] { return s->bytesAvailable() >= bytes.size(); }));
        EXPECT_EQ(s->readAll(), bytes);
    }
}

TEST_F(ServerTest, AReceiverMayCloseTheConnectionOrTheServerInTheMiddleOfAPiece)
{
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);
    int seen = 0;
    QObject::connect(&server, &TELORLinkServer::frameReceived, [&](quint64 c, const QProtocolStruct &) {
        if (++seen == 2)
            server.disconnectClient(c);
    });
    ASSERT_TRUE(writeAll(socket, echoFrame(1) + echoFrame(2) + echoFrame(3)));
    ASSERT_TRUE(waitUntil([&] { return disconnected.contains(id); }));
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(framesOf(id).size(), 2);

    auto owned = std::make_unique<TELORLinkServer>();
    ASSERT_TRUE(owned->listen());
    int got = 0;
    QObject::connect(owned.get(), &TELORLinkServer::frameReceived, [&](quint64, const QProtocolStruct &) {
        ++got;
        owned.reset();
    });
    QTcpSocket other;
    ASSERT_TRUE(connectRaw(other, owned->serverPort()));
    ASSERT_TRUE(writeAll(other, echoFrame(1) + echoFrame(2)));
    ASSERT_TRUE(waitUntil([&] { return !owned; }));
    EXPECT_EQ(got, 1);
    ASSERT_TRUE(waitUntil([&] { return other.state() == QAbstractSocket::UnconnectedState; }));
}

TEST_F(ServerTest, CloseEndsEveryConnectionAndListenWorksAgainOnTheSamePort)
{
    QTcpSocket a, b;
    const quint64 ida = connectRawClient(a);
    const quint64 idb = connectRawClient(b);
    const quint16 port = server.serverPort();
    server.close();
    EXPECT_FALSE(server.isListening());
    EXPECT_EQ(disconnected, (QList<quint64>{ida, idb}));
    EXPECT_TRUE(server.connections().isEmpty());
    ASSERT_TRUE(waitUntil([&] { return a.state() == QAbstractSocket::UnconnectedState && b.state() == QAbstractSocket::UnconnectedState; }));

    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
    QTcpSocket c;
    const quint64 idc = connectRawClient(c);
    EXPECT_GT(idc, idb);
}

TEST_F(ServerTest, FramesSentJustBeforeThePeerClosesAreDelivered)
{
    QTcpSocket socket;
    const quint64 id = connectRawClient(socket);
    const QByteArray a = echoFrame(1, QStringLiteral("last"));
    const QByteArray b = echoFrame(2, QStringLiteral("words"));
    socket.write(a + b);
    socket.disconnectFromHost();
    ASSERT_TRUE(waitUntil([&] { return disconnected.contains(id); }));
    EXPECT_EQ(framesOf(id), (QList<QByteArray>{a, b}));
}

TEST(ServerPeerNames, AnIPv4PeerOfADualStackServerIsNamedAsIPv4)
{
    TELORLinkServer server;
    if (!server.listen(QHostAddress::Any))
        GTEST_SKIP() << "no dual-stack listening here: " << server.errorString().toStdString();
    QList<quint64> ids;
    QObject::connect(&server, &TELORLinkServer::clientConnected, [&](quint64 c) { ids.append(c); });
    QTcpSocket socket;
    ASSERT_TRUE(connectRaw(socket, server.serverPort()));
    ASSERT_TRUE(waitUntil([&] { return ids.size() == 1; }));
    EXPECT_EQ(server.peerName(ids[0]), loopbackPeer(socket.localPort()));
}

TEST(ServerPeerNames, AnIPv6PeerIsNamedInBrackets)
{
    TELORLinkServer server;
    if (!server.listen(QHostAddress::LocalHostIPv6))
        GTEST_SKIP() << "no IPv6 loopback here: " << server.errorString().toStdString();
    QList<quint64> ids;
    QObject::connect(&server, &TELORLinkServer::clientConnected, [&](quint64 c) { ids.append(c); });
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHostIPv6, server.serverPort());
    ASSERT_TRUE(waitUntil([&] { return ids.size() == 1; }));
    EXPECT_EQ(server.peerName(ids[0]), QStringLiteral("[::1]:%1").arg(socket.localPort()));
}
