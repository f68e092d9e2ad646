// The telor-server program: started on port 0 with a fixed seed and start time, reached
// through the link library's client, stopped with SIGTERM; killed with SIGKILL and
// started again on the same archive.

#include "telortest.h"

#include "archivequery.h"
#include "archiveresult.h"
#include "archiveparamdata.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"
#include "paraminfolist.h"
#include "paraminfoquery.h"
#include "paramsubscriptionquery.h"
#include "telorlink.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/** A telor-server process that the test starts, and that is gone when the object is. */
class ServerProcess
{
public:
    ~ServerProcess()
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished(10000);
        }
    }

    /** Starts the program and waits for its "listening on" line; false if it never came. */
    bool start(const QStringList &arguments)
    {
        process.setProgram(QStringLiteral(TELOR_SERVER_PROGRAM));
        process.setArguments(arguments);
        process.start();
        if (!process.waitForStarted(10000))
            return false;
        const QRegularExpression listening(QStringLiteral("listening on (\\S+):(\\d+)\\n"));
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 60000 && process.state() == QProcess::Running) {
            process.waitForReadyRead(100);
            output += QString::fromLocal8Bit(process.readAllStandardOutput());
            const QRegularExpressionMatch match = listening.match(output);
            if (match.hasMatch()) {
                port = quint16(match.captured(2).toUInt());
                return true;
            }
        }
        return false;
    }

    /** Waits for the end; collects the remaining output. */
    bool finish(int timeoutMs = 20000)
    {
        const bool done = process.waitForFinished(timeoutMs);
        output += QString::fromLocal8Bit(process.readAllStandardOutput());
        errors += QString::fromLocal8Bit(process.readAllStandardError());
        return done;
    }

    QProcess process;
    QString output;
    QString errors;
    quint16 port = 0;
};

QStringList runArguments(const QString &dataDir)
{
    return {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--seed"), QStringLiteral("1"),
            QStringLiteral("--start"),  QStringLiteral("2026-01-01T00:00:00Z"), QStringLiteral("--data"), dataDir,
            QStringLiteral("--tick"),   QStringLiteral("50"), QStringLiteral("--history"), QStringLiteral("1m")};
}

/** Runs the event loop until @p done holds or @p timeoutMs pass. */
template<typename F>
bool waitFor(F done, int timeoutMs = 20000)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < timeoutMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    return done();
}

} // namespace

TEST(ServerProcess, ServesDescriptionsAndValuesAndStopsOnSigterm)
{
    QTemporaryDir data;
    ServerProcess server;
    ASSERT_TRUE(server.start(runArguments(data.path()))) << qPrintable(server.output);
    EXPECT_GT(server.port, 0);

    TELORLink link;
    link.connectToServer(QStringLiteral("127.0.0.1"), server.port);
    ASSERT_TRUE(link.waitForConnected(10000));

    ParamInfoQuery describe;
    describe.write(); // the link sends what the message's owner wrote
    QProtocolStruct answer;
    ASSERT_TRUE(link.requestBlocking(describe, &answer, 20000));
    ParamInfoList list;
    list.setPacket(answer);
    ASSERT_TRUE(list.read());
    EXPECT_GE(list.params.size(), 20);
    EXPECT_EQ(list.params.first().code, QStringLiteral("BOILER.T"));

    QObject screen;
    ClientParamSubscription subscription;
    QSharedPointer<BPVariant> boiler(new BPVariant(101));
    subscription.append(boiler, &screen);
    int results = 0;
    QObject::connect(&link, &TELORLink::frameReceived, [&](const QProtocolStruct &frame) {
        if (subscription.newDataSlot(frame) && boiler->changed()) {
            ++results;
            subscription.dropFlags();
        }
    });
    ParamSubscriptionQuery wish = subscription.query(&screen);
    wish.write();
    ASSERT_TRUE(link.send(wish));
    ASSERT_TRUE(waitFor([&] { return results >= 3; })) << results;
    EXPECT_TRUE(boiler->dataReceived());
    EXPECT_TRUE(boiler->getValue().isValid());

    server.process.terminate(); // SIGTERM
    ASSERT_TRUE(server.finish());
    EXPECT_EQ(server.process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(server.process.exitCode(), 0);
    EXPECT_TRUE(server.output.contains(QStringLiteral("shutting down\n"))) << qPrintable(server.output);
    EXPECT_TRUE(server.output.contains(QRegularExpression(QStringLiteral("connection \\d+: opened"))));
    EXPECT_TRUE(QFile::exists(data.filePath(QStringLiteral("archive.sqlite"))));
}

TEST(ServerProcess, ArchiveSurvivesAKill)
{
    QTemporaryDir data;
    {
        ServerProcess server;
        ASSERT_TRUE(server.start(runArguments(data.path()))) << qPrintable(server.output);
        // Let it run some ticks: follow a subscription until a few changes came.
        TELORLink link;
        link.connectToServer(QStringLiteral("127.0.0.1"), server.port);
        ASSERT_TRUE(link.waitForConnected(10000));
        int frames = 0;
        QObject::connect(&link, &TELORLink::frameReceived, [&](const QProtocolStruct &) { ++frames; });
        QObject screen;
        ParamSubscriptionQuery query(&screen);
        query.ids = {101};
        query.write();
        ASSERT_TRUE(link.send(query));
        ASSERT_TRUE(waitFor([&] { return frames >= 10; }));
        server.process.kill(); // SIGKILL: no flush, no goodbye
        server.finish();
        EXPECT_EQ(server.process.exitStatus(), QProcess::CrashExit);
    }
    ServerProcess again;
    ASSERT_TRUE(again.start(runArguments(data.path()))) << qPrintable(again.output);
    TELORLink link;
    link.connectToServer(QStringLiteral("127.0.0.1"), again.port);
    ASSERT_TRUE(link.waitForConnected(10000));
    QObject chart;
    ArchiveQuery query(&chart);
    // The ticks of the first run lie after the start; the history before it.
    query.setInterval(QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC).addMSecs(1),
                      QDateTime(QDate(2026, 1, 1), QTime(1, 0), Qt::UTC));
    query.appendById(101);
    query.write();
    QProtocolStruct answer;
    ASSERT_TRUE(link.requestBlocking(query, &answer, 20000));
    ArchiveResult result;
    result.setPacket(answer);
    ASSERT_TRUE(result.read());
    ASSERT_TRUE(result.getParam(101));
    // The value in force at the begin, then at least the nine ticks that were seen.
    EXPECT_GE(result.getParam(101)->getData().size(), 1 + 9);
    again.process.terminate();
    EXPECT_TRUE(again.finish());
    EXPECT_EQ(again.process.exitCode(), 0);
}

TEST(ServerProcess, LiveClientResumesAfterTheServerIsKilledAndStartedAgain)
{
    QTemporaryDir data;
    ServerProcess server;
    ASSERT_TRUE(server.start(runArguments(data.path()))) << qPrintable(server.output);
    const QString address = QStringLiteral("127.0.0.1:%1").arg(server.port);

    // The README's client, as a user runs it: until Ctrl-C.
    QProcess client;
    client.setProgram(QStringLiteral(TELOR_LIVE_CLIENT_PROGRAM));
    client.setArguments({address});
    client.start();
    ASSERT_TRUE(client.waitForStarted(10000));
    QString printed;
    const QRegularExpression change(QStringLiteral("^(102|103|104|106) \\S+ state \\d+$"),
                                    QRegularExpression::MultilineOption);
    const auto changes = [&]() {
        client.waitForReadyRead(50);
        printed += QString::fromLocal8Bit(client.readAllStandardOutput());
        int count = 0;
        for (auto it = change.globalMatch(printed); it.hasNext(); it.next())
            ++count;
        return count;
    };
    ASSERT_TRUE(waitFor([&] { return changes() >= 4; })) << qPrintable(printed);

    // Killed, and started again on the same port and archive: the client connects again
    // (it says so on stderr) and sends its subscriptions again, and changes come again.
    server.process.kill();
    server.finish();
    QStringList arguments = runArguments(data.path());
    arguments[1] = address;
    ServerProcess again;
    ASSERT_TRUE(again.start(arguments)) << qPrintable(again.output);
    QString said;
    const auto connections = [&]() {
        said += QString::fromLocal8Bit(client.readAllStandardError());
        return said.count(QStringLiteral("connected to ") + address + QLatin1Char('\n'));
    };
    ASSERT_TRUE(waitFor([&] { changes(); return connections() >= 2; }, 60000)) << qPrintable(said);
    EXPECT_TRUE(said.contains(QStringLiteral("connection lost; connecting again\n"))) << qPrintable(said);
    // Only the new server can have sent what arrives from now on.
    const int before = changes();
    EXPECT_TRUE(waitFor([&] { return changes() >= before + 4; }, 60000)) << qPrintable(printed);

    client.terminate();
    EXPECT_TRUE(client.waitForFinished(10000));
    again.process.terminate();
    EXPECT_TRUE(again.finish());
}

TEST(ServerProcess, MalformedPlantFileGivesOneLineAndStatusTwo)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bad.xml"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<plant name=\"x\">\n<parameters>\n</plant>\n");
    file.close();
    ServerProcess server;
    server.process.setProgram(QStringLiteral(TELOR_SERVER_PROGRAM));
    server.process.setArguments({QStringLiteral("--plant"), path, QStringLiteral("--data"), dir.path()});
    server.process.start();
    ASSERT_TRUE(server.finish());
    EXPECT_EQ(server.process.exitCode(), 2);
    EXPECT_EQ(server.errors, path + QStringLiteral(":3:8: Opening and ending tag mismatch.\n"));
}

TEST(ServerProcess, HelpAndBadOptions)
{
    ServerProcess help;
    help.process.setProgram(QStringLiteral(TELOR_SERVER_PROGRAM));
    help.process.setArguments({QStringLiteral("--help")});
    help.process.start();
    ASSERT_TRUE(help.finish());
    EXPECT_EQ(help.process.exitCode(), 0);
    for (const char *option : {"--plant", "--listen", "--data", "--tick", "--history", "--retain", "--seed", "--start"})
        EXPECT_TRUE(help.output.contains(QLatin1String(option))) << option;

    ServerProcess bad;
    bad.process.setProgram(QStringLiteral(TELOR_SERVER_PROGRAM));
    bad.process.setArguments({QStringLiteral("--history"), QStringLiteral("soon")});
    bad.process.start();
    ASSERT_TRUE(bad.finish());
    EXPECT_EQ(bad.process.exitCode(), 2);
    EXPECT_EQ(bad.errors, QStringLiteral("telor-server: --history wants a duration like 30m, 1h or 7d, not \"soon\"\n"));
}
