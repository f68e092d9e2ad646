#ifndef LINKFIXTURE_H
#define LINKFIXTURE_H

// A server and a client link over loopback, with a server side that answers each query.

#include "linktest.h"

#include "telorlink.h"
#include "telorlinkserver.h"

#include <gtest/gtest.h>

namespace linktest {

class LinkTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QObject::connect(&server, &TELORLinkServer::clientConnected, [this](quint64 c) { serverConnections.append(c); });
        QObject::connect(&server, &TELORLinkServer::frameReceived, [this](quint64 c, const QProtocolStruct &frame) {
            received.append(frame);
            if (answering)
                answer(c, frame);
        });
        QObject::connect(&link, &TELORLink::connected, [this] { ++connectedCount; });
        QObject::connect(&link, &TELORLink::disconnected, [this] { ++disconnectedCount; });
        QObject::connect(&link, &TELORLink::errorOccurred, [this](const QString &message) { errors.append(message); });
        QObject::connect(&link, &TELORLink::frameReceived, [this](const QProtocolStruct &frame) { unmatched.append(frame); });
        ASSERT_TRUE(server.listen());
    }

    /** Answers an EchoMessage with twice its number and its text, as a server does. */
    void answer(quint64 connection, const QProtocolStruct &frame)
    {
        const EchoMessage query = echoOf(frame);
        EchoMessage reply(query.number * 2, query.text);
        reply.replyTo(query);
        reply.write();
        server.send(connection, reply);
    }

    /** Connects the link and waits until both ends know. */
    bool connectLink()
    {
        const int before = serverConnections.size();
        link.connectToServer(QStringLiteral("127.0.0.1"), server.serverPort());
        return link.waitForConnected(Patience) && waitUntil([&] { return serverConnections.size() > before; });
    }

    TELORLinkServer server;
    TELORLink link;
    bool answering = true;
    QList<quint64> serverConnections;
    QList<QProtocolStruct> received;
    QList<QProtocolStruct> unmatched;
    QStringList errors;
    int connectedCount = 0;
    int disconnectedCount = 0;
};

} // namespace linktest

#endif // LINKFIXTURE_H
