// telor-server: the plant server process. It reads a plant file, opens the archive in its
// data folder, listens for clients through the link library's server, hands every frame
// to PlantServer and moves the plant on a timer. SIGINT and SIGTERM close the connections,
// flush the archive and end the program with status 0.

#include "plantduration.h"
#include "plantfile.h"
#include "plantserver.h"
#include "sqlitearchivestore.h"
#include "telorlinkserver.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSocketNotifier>
#include <QtCore/QStandardPaths>
#include <QtCore/QTimer>
#include <QtNetwork/QHostAddress>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr quint16 DefaultPort = 7450;
constexpr int ExitFailure = 1;
constexpr int ExitUsage = 2;

int signalPipe[2] = {-1, -1};

void onSignal(int)
{
    const char byte = 1;
    // Nothing else is safe in a signal handler; the event loop reads the byte.
    const ssize_t written = ::write(signalPipe[1], &byte, 1);
    (void)written;
}

void printLine(const QString &line)
{
    std::fprintf(stdout, "%s\n", line.toLocal8Bit().constData());
    std::fflush(stdout);
}

[[noreturn]] void fail(int status, const QString &line)
{
    std::fprintf(stderr, "telor-server: %s\n", line.toLocal8Bit().constData());
    std::exit(status);
}

/** The example plant: installed beside the program, or in the source tree of this build. */
QString defaultPlant()
{
    const QString installed =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/telor-server/plant/boiler.xml");
    if (QFileInfo::exists(installed))
        return QDir::cleanPath(installed);
    return QStringLiteral(TELOR_EXAMPLE_PLANT);
}

bool parseListen(const QString &text, QHostAddress *address, quint16 *port)
{
    const int colon = text.lastIndexOf(QLatin1Char(':'));
    if (colon <= 0)
        return false;
    QString host = text.left(colon);
    if (host.startsWith(QLatin1Char('[')) && host.endsWith(QLatin1Char(']')))
        host = host.mid(1, host.size() - 2);
    bool ok = false;
    const uint number = text.midRef(colon + 1).toUInt(&ok);
    if (!ok || number > 65535)
        return false;
    if (host == QLatin1String("localhost"))
        *address = QHostAddress(QHostAddress::LocalHost);
    else if (!address->setAddress(host))
        return false;
    *port = quint16(number);
    return true;
}

/**
 * Qt's warnings go to standard error; the library's debug traces (such as the one every
 * parsed event type leaves) are not part of the server's log and are dropped.
 */
void messageHandler(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    std::fprintf(stderr, "telor-server: %s\n", message.toLocal8Bit().constData());
}

} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler(&messageHandler);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("telor-server"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Simulates the plant of a plant file and serves its values, archives, events and "
                       "group tree to clients."));
    parser.addHelpOption();
    const QCommandLineOption plantOption(QStringLiteral("plant"),
                                         QStringLiteral("Plant file (default: the example boiler plant)."),
                                         QStringLiteral("FILE"));
    const QCommandLineOption listenOption(QStringLiteral("listen"),
                                          QStringLiteral("Address and port to listen on; port 0 picks a free "
                                                         "one (default: 127.0.0.1:%1).")
                                              .arg(DefaultPort),
                                          QStringLiteral("ADDR:PORT"));
    const QCommandLineOption dataOption(QStringLiteral("data"),
                                        QStringLiteral("Folder of the archive (default: %1).")
                                            .arg(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)),
                                        QStringLiteral("DIR"));
    const QCommandLineOption tickOption(QStringLiteral("tick"), QStringLiteral("Milliseconds per tick (default 250)."),
                                        QStringLiteral("MS"));
    const QCommandLineOption historyOption(QStringLiteral("history"),
                                           QStringLiteral("Simulated past to fill in at start, like 30m or 1h "
                                                          "(default 1h)."),
                                           QStringLiteral("DURATION"));
    const QCommandLineOption retainOption(QStringLiteral("retain"),
                                          QStringLiteral("How long archived rows are kept (default 7d)."),
                                          QStringLiteral("DURATION"));
    const QCommandLineOption seedOption(QStringLiteral("seed"),
                                        QStringLiteral("Seed of the random walks (default 1)."), QStringLiteral("N"));
    const QCommandLineOption startOption(QStringLiteral("start"),
                                         QStringLiteral("Simulated time of the start, like 2026-01-01T00:00:00Z "
                                                        "(default: now)."),
                                         QStringLiteral("ISO-TIME"));
    parser.addOptions({plantOption, listenOption, dataOption, tickOption, historyOption, retainOption, seedOption,
                       startOption});
    if (!parser.parse(QCoreApplication::arguments()))
        fail(ExitUsage, parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    if (!parser.positionalArguments().isEmpty())
        fail(ExitUsage, QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first()));

    PlantServer::Options options;
    QHostAddress address(QHostAddress::LocalHost);
    quint16 port = DefaultPort;
    if (parser.isSet(listenOption) && !parseListen(parser.value(listenOption), &address, &port))
        fail(ExitUsage, QStringLiteral("--listen wants ADDR:PORT, not \"%1\"").arg(parser.value(listenOption)));
    if (parser.isSet(tickOption)) {
        bool ok = false;
        options.tickMs = parser.value(tickOption).toLongLong(&ok);
        if (!ok || options.tickMs < 10 || options.tickMs > 3600000)
            fail(ExitUsage, QStringLiteral("--tick wants milliseconds from 10 to 3600000"));
    }
    const auto duration = [&](const QCommandLineOption &option, qint64 fallback) {
        if (!parser.isSet(option))
            return fallback;
        const qint64 ms = parsePlantDuration(parser.value(option));
        if (ms < 0)
            fail(ExitUsage, QStringLiteral("--%1 wants a duration like 30m, 1h or 7d, not \"%2\"")
                                .arg(option.names().first(), parser.value(option)));
        return ms;
    };
    options.historyMs = duration(historyOption, options.historyMs);
    options.retainMs = duration(retainOption, options.retainMs);
    if (parser.isSet(seedOption)) {
        bool ok = false;
        options.seed = parser.value(seedOption).toULongLong(&ok);
        if (!ok)
            fail(ExitUsage, QStringLiteral("--seed wants a whole number"));
    }
    if (parser.isSet(startOption)) {
        options.start = QDateTime::fromString(parser.value(startOption), Qt::ISODateWithMs);
        if (!options.start.isValid())
            fail(ExitUsage, QStringLiteral("--start wants an ISO time like 2026-01-01T00:00:00Z"));
        options.start = options.start.toUTC();
    } else {
        options.start = QDateTime::currentDateTimeUtc();
    }

    const QString plantPath = parser.isSet(plantOption) ? parser.value(plantOption) : defaultPlant();
    Plant plant;
    PlantFile file;
    if (!file.load(plantPath, &plant)) {
        std::fprintf(stderr, "%s\n", file.error().toLocal8Bit().constData());
        return ExitUsage;
    }

    const QString dataDir = parser.isSet(dataOption)
        ? parser.value(dataOption)
        : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!QDir().mkpath(dataDir))
        fail(ExitFailure, QStringLiteral("cannot create the data folder %1").arg(dataDir));
    SqliteArchiveStore store(QDir(dataDir).filePath(QStringLiteral("archive.sqlite")));

    PlantServer server(plant, &store, options);
    QObject::connect(&server, &PlantServer::log, &printLine);
    QString error;
    if (!server.start(&error))
        fail(ExitFailure, error);

    TELORLinkServer link;
    QObject::connect(&link, &TELORLinkServer::clientConnected, &server, &PlantServer::connectionOpened);
    QObject::connect(&link, &TELORLinkServer::clientDisconnected, &server, &PlantServer::connectionClosed);
    QObject::connect(&link, &TELORLinkServer::frameReceived, &server,
                     [&server](quint64 connection, const QProtocolStruct &frame) { server.receive(connection, frame); });
    QObject::connect(&server, &PlantServer::sendFrame, &link,
                     [&link](quint64 connection, const QByteArray &frame) { link.sendFrame(connection, frame); });
    if (!link.listen(address, port))
        fail(ExitFailure, QStringLiteral("cannot listen on %1:%2").arg(address.toString()).arg(port));

    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        fail(ExitFailure, QStringLiteral("cannot set up signal handling"));
    QSocketNotifier notifier(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &app, [&]() {
        char byte = 0;
        const ssize_t got = ::read(signalPipe[0], &byte, 1);
        (void)got;
        notifier.setEnabled(false);
        printLine(QStringLiteral("shutting down"));
        link.close();
        server.flush();
        app.quit();
    });
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);

    QTimer ticker;
    ticker.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ticker, &QTimer::timeout, &server, &PlantServer::tick);
    ticker.start(int(options.tickMs));

    printLine(QStringLiteral("listening on %1:%2").arg(link.serverAddress().toString()).arg(link.serverPort()));
    const int status = app.exec();
    ticker.stop();
    ::close(signalPipe[0]);
    ::close(signalPipe[1]);
    return status;
}
