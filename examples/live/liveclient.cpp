// A control-room client in one page: it connects to telor-server, subscribes to a few
// parameters and prints every change as it arrives, the road of a value across two
// processes. On every (re)connection it sends its complete wish again, so it resumes by
// itself after the server restarts.
//
//   telor-live-client [HOST:PORT] [COUNT]
//
// HOST:PORT defaults to 127.0.0.1:7450, the server's own default. With COUNT it stops after
// that many changes; without it, it runs until Ctrl-C.

#include <TELORLink5.h>
#include <TELORParams5.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSharedPointer>
#include <QtCore/QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments().mid(1);
    const QString server = arguments.value(0, QStringLiteral("127.0.0.1:7450"));
    const int wanted = arguments.value(1, QStringLiteral("0")).toInt();
    const int colon = server.lastIndexOf(QLatin1Char(':'));
    if (colon <= 0 || server.mid(colon + 1).toUShort() == 0) {
        QTextStream(stderr) << "telor-live-client: not HOST:PORT: " << server << '\n';
        return 2;
    }

    // The example plant's boiler pressure, feed flow, feed temperature and drum level.
    QObject screen; // the client: it owns nothing, it names the subscriber
    ClientParamSubscription subscription;
    QList<QSharedPointer<AbstractParameterBase>> shown;
    for (unsigned int id : {102u, 103u, 104u, 106u}) {
        shown << QSharedPointer<AbstractParameterBase>(new BPDouble(id));
        subscription.append(shown.last(), &screen);
    }

    TELORLink link;
    QTextStream out(stdout);
    int seen = 0;
    QObject::connect(&link, &TELORLink::connected, [&]() {
        QTextStream(stderr) << "connected to " << server << '\n';
        for (ParamSubscriptionQuery query : subscription.allQueries()) {
            query.write();
            link.send(query);
        }
    });
    QObject::connect(&link, &TELORLink::disconnected,
                     []() { QTextStream(stderr) << "connection lost; connecting again\n"; });
    QObject::connect(&link, &TELORLink::errorOccurred,
                     [](const QString &message) { QTextStream(stderr) << message << '\n'; });
    QObject::connect(&link, &TELORLink::frameReceived, [&](const QProtocolStruct &frame) {
        if (!subscription.newDataSlot(frame))
            return;
        for (const QSharedPointer<AbstractParameterBase> &param : qAsConst(shown)) {
            if (!param->changed())
                continue;
            out << param->getIdParameter() << ' ' << QString::number(param->floatValue()) << " state " << param->getState() << '\n';
            out.flush();
            if (wanted > 0 && ++seen >= wanted)
                app.quit();
        }
        subscription.dropFlags();
    });

    link.connectToServer(server.left(colon), server.mid(colon + 1).toUShort());
    const int status = app.exec();
    subscription.remove(&screen);
    return status;
}
