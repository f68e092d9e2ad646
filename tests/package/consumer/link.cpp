// An application that uses the installed link library: a server that answers a values
// query, and a client that asks it over the loopback.
#include <TELORLink5.h>
#include <TELORParams5.h>

#include <QtCore/QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);

    TELORLinkServer server;
    if (!server.listen())
        return 1;
    QObject::connect(&server, &TELORLinkServer::frameReceived, [&](quint64 connection, const QProtocolStruct &frame) {
        ParamValuesQuery query;
        query.setPacket(frame);
        if (!query.read())
            return;
        ParamValuesQuery answer; // echoes the identifiers, addressed to the query
        answer.parent = query.parent;
        answer.ids = query.ids;
        answer.replyTo(query);
        answer.write();
        server.send(connection, answer);
    });

    TELORLink link;
    link.connectToServer(QStringLiteral("127.0.0.1"), server.serverPort());
    if (!link.waitForConnected(10000))
        return 1;
    ParamValuesQuery query;
    query.parent = &link;
    query.ids = {1, 2, 3};
    query.write();
    QProtocolStruct reply;
    if (!link.requestBlocking(query, &reply, 10000))
        return 1;
    ParamValuesQuery answer;
    answer.setPacket(reply);
    const bool ok = answer.read() && answer.ids == query.ids && answer.parent == query.parent;
    std::printf(ok ? "link consumer ok\n" : "link consumer failed\n");
    return ok ? 0 : 1;
}
