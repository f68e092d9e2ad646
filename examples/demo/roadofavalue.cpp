// The road of one value: a simulated server in this process holds parameters with
// limits and moves them every tick; two clients subscribe through one
// ClientParamSubscription, and a one-shot ParamValuesStruct takes a snapshot. Every
// message travels as packet bytes, exactly as it would through a transport.

#include "demosections.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"
#include "paramsubscriptionquery.h"
#include "paramvaluesresult.h"
#include "paramvaluesstruct.h"
#include "simulatedserver.h"

#include <QtCore/QEventLoop>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

namespace {

constexpr int TickMs = 250;
constexpr int Ticks = 12;

using ParamPtr = QSharedPointer<AbstractParameterBase>;

QString stateText(unsigned int state)
{
    switch (state) {
    case 2: return QStringLiteral("no data");
    case 8: return QStringLiteral("good");
    case 64: return QStringLiteral("LOW WARNING");
    case 128: return QStringLiteral("HIGH WARNING");
    case 256: return QStringLiteral("LOW EMERGENCY");
    case 512: return QStringLiteral("HIGH EMERGENCY");
    case 1024: return QStringLiteral("below possible");
    case 2048: return QStringLiteral("above possible");
    default: return QString::number(state);
    }
}

/** The display text of a parameter, as a screen would choose it by the parameter's kind. */
QString valueText(const AbstractParameterBase &param)
{
    if (param.valueType() == 3)
        return static_cast<const BPString &>(param).getValue();
    const QString text = param.stringValue(1, 'f');
    return text.isNull() ? QString::number(param.floatValue(), 'f', 2) : text;
}

/** One client of the application: a name and the objects it shows, by identifier. */
struct Client
{
    QObject token;
    QString name;
    QMap<unsigned int, ParamPtr> objects;
};

/** Moves a packet from the client side to the server and back, as a transport would. */
QList<QByteArray> send(SimulatedServer &server, const QByteArray &packet)
{
    return server.receive(packet);
}

void printRow(QTextStream &out, SimulatedServer &server, unsigned int id, const AbstractParameterBase &param,
              const QString &seenBy)
{
    out << "   " << id << ' ' << server.name(id).leftJustified(19) << valueText(param).rightJustified(24)
        << "  " << stateText(param.getState()).leftJustified(15) << seenBy << '\n';
}

} // namespace

void demoRoadOfAValue(QTextStream &out)
{
    out << "\n== The road of one value\n";
    SimulatedServer server(QDateTime(QDate(2026, 1, 1), QTime(8, 0), Qt::UTC), TickMs);
    server.addStandardPlant();

    // A one-shot snapshot of everything, as a screen does before it subscribes.
    QObject snapshotClient;
    ParamValuesStruct snapshot(&snapshotClient);
    QMap<unsigned int, ParamPtr> snapshotObjects;
    snapshotObjects.insert(101, ParamPtr(new BPVariant(101)));
    snapshotObjects.insert(102, ParamPtr(new BPVariant(102)));
    snapshotObjects.insert(103, ParamPtr(new BPString(103)));
    snapshotObjects.insert(104, ParamPtr(new BPDouble(104)));
    snapshotObjects.insert(105, ParamPtr(new BPVariant(105)));
    for (const ParamPtr &param : qAsConst(snapshotObjects))
        snapshot.append(param);
    ParamValuesQuery request = snapshot.query();
    for (const QByteArray &packet : send(server, request.write())) {
        ParamValuesResult result;
        result.setPacket(packet);
        if (result.read())
            snapshot.newDataSlot(result);
    }
    out << "snapshot at " << snapshot.dateTime().toString(Qt::ISODateWithMs) << ":\n";
    for (auto it = snapshotObjects.cbegin(); it != snapshotObjects.cend(); ++it)
        printRow(out, server, it.key(), *it.value(), QString());

    // Two clients subscribe: the panel shows the process, the logger keeps the boiler, the
    // flow (refreshed on every delivery, changed or not) and the sample time.
    Client panel;
    panel.name = QStringLiteral("panel");
    panel.objects.insert(101, ParamPtr(new BPVariant(101)));
    panel.objects.insert(102, ParamPtr(new BPVariant(102)));
    panel.objects.insert(103, ParamPtr(new BPString(103)));
    Client logger;
    logger.name = QStringLiteral("logger");
    logger.objects.insert(101, ParamPtr(new BPVariant(101)));
    logger.objects.insert(104, ParamPtr(new BPDouble(104)));
    logger.objects.insert(105, ParamPtr(new BPVariant(105)));
    logger.objects.value(104)->setRefreshAnyway(true);
    const QList<Client *> clients{&panel, &logger};

    ClientParamSubscription subscription;
    for (Client *client : clients) {
        for (const ParamPtr &param : qAsConst(client->objects))
            subscription.append(param, &client->token);
    }

    const auto deliver = [&subscription](const QList<QByteArray> &packets) {
        for (const QByteArray &packet : packets) {
            QProtocolStruct message; // as the transport hands it over: untyped
            message.setPacket(packet);
            subscription.newDataSlot(message);
        }
    };
    const auto show = [&](const QString &title) {
        out << title << '\n';
        QMap<unsigned int, const AbstractParameterBase *> shown;
        QMap<unsigned int, QStringList> seenBy;
        for (const Client *client : clients) {
            for (auto it = client->objects.cbegin(); it != client->objects.cend(); ++it) {
                if (!shown.contains(it.key()))
                    shown.insert(it.key(), it.value().data());
                if (it.value()->changed())
                    seenBy[it.key()].append(client->name);
            }
        }
        for (auto it = shown.cbegin(); it != shown.cend(); ++it) {
            const QStringList who = seenBy.value(it.key());
            printRow(out, server, it.key(), *it.value(),
                     who.isEmpty() ? QStringLiteral("-") : QStringLiteral("changed for ") + who.join(QStringLiteral(", ")));
        }
        subscription.dropFlags();
    };

    const QList<ParamSubscriptionQuery> queries = subscription.allQueries();
    for (ParamSubscriptionQuery query : queries)
        deliver(send(server, query.write()));
    show(QStringLiteral("subscribed (%1 clients):").arg(subscription.count()));

    // The application's own loop: the server ticks on a timer, its packets arrive and are
    // handed to the aggregate, and the screen is redrawn.
    QEventLoop loop;
    QTimer timer;
    timer.setInterval(TickMs);
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        deliver(server.tick());
        show(QStringLiteral("tick %1 at %2:")
                 .arg(server.tickNumber(), 2)
                 .arg(subscription.dateTime().time().toString(QStringLiteral("hh:mm:ss.zzz"))));
        if (server.tickNumber() >= Ticks)
            loop.quit();
    });
    timer.start();
    loop.exec();

    // Leaving: clients are removed before they are destroyed, and the server is told.
    for (Client *client : clients) {
        subscription.remove(&client->token);
        ParamSubscriptionQuery goodbye(&client->token);
        send(server, goodbye.write());
    }
    out << "clients left; the server serves " << server.subscriberCount() << " subscribers\n";
}
