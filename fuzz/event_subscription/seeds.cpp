// Writes event subscription messages, built with the library's own writers, as the seed
// corpus of the event subscription fuzz target. The first four bytes of each seed pick
// the message and the route words; the rest is the body.

#include "eventstatisticssubscription.h"
#include "eventstatisticssubscriptioncancel.h"
#include "eventsubscription.h"
#include "eventsubscriptioncancel.h"
#include "seedwriter.h"

#include <QtCore/QObject>

namespace {

QByteArray seed(char selector, QProtocolStruct &message)
{
    return QByteArray(1, selector) + QByteArray("\x01\x02\x03", 3)
        + message.write().mid(QProtocolStruct::HeaderSize);
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);
    QObject client;
    EventSubscription subscribe(&client);
    EventSubscriptionCancel cancel(&client);
    EventStatisticsSubscription statistics(&client);
    EventStatisticsSubscriptionCancel statisticsCancel(nullptr);
    seeds.add(QStringLiteral("subscribe"), seed(0, subscribe));
    seeds.add(QStringLiteral("cancel"), seed(1, cancel));
    seeds.add(QStringLiteral("statistics"), seed(2, statistics));
    seeds.add(QStringLiteral("statistics-cancel-null"), seed(3, statisticsCancel));
    return seeds.finish();
}
