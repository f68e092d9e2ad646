// Writes request sequences built with the library's own writers as the seed corpus of the
// server request fuzz target (the step format is in requeststream.h).

#include "requeststream.h"
#include "seedwriter.h"

#include "archivequery.h"
#include "archivequerycancel.h"
#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "eventsreadedquery.h"
#include "eventstatisticssubscription.h"
#include "eventsubscription.h"
#include "intervalquery.h"
#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"
#include "paraminfoquery.h"
#include "paramsubscriptionquery.h"
#include "paramvaluesquery.h"

#include <QtCore/QObject>

using requeststream::request;
using requeststream::step;

namespace {

/** The index of (service, message) in the served table. */
int indexOf(qint32 service, qint32 message)
{
    for (int i = 0; i < requeststream::servedCount; ++i) {
        if (requeststream::served[i].service == service && requeststream::served[i].message == message)
            return i;
    }
    return 0;
}

QByteArray tick()
{
    return step(2, QByteArray());
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);
    QObject client;

    ParamInfoQuery describe;
    seeds.add(QStringLiteral("describe"), request(0, indexOf(2, 1), describe.write()));

    ParamSubscriptionQuery subscribe(&client);
    subscribe.ids = {1, 2, 3, 4, 5, 6, 7, 8, 21, 99};
    subscribe.refreshIds = {5};
    ParamValuesQuery values;
    values.parent = &client;
    values.ids = {1, 8, 8, 42};
    seeds.add(QStringLiteral("subscribe-and-tick"),
              request(0, indexOf(3, 1), subscribe.write()) + tick() + tick() + request(1, indexOf(3, 8), values.write())
                  + step(3, QByteArray()) + tick());

    ArchiveQuery archive(&client);
    archive.setFromBegin();
    archive.setToEnd();
    archive.appendById(1);
    archive.appendById(20);
    ArchiveQueryCancel cancel(archive);
    seeds.add(QStringLiteral("archive"), request(1, indexOf(3, 7), archive.write()) + tick()
                                             + request(1, indexOf(3, 10), cancel.write()) + tick());

    EventsQuery events(1, &client);
    events.setFromBegin();
    events.setToEnd();
    EventsQuery days(3, &client);
    days.setInterval(QDateTime(QDate(2025, 12, 30), QTime(0, 0), Qt::UTC), QDateTime(QDate(2026, 1, 2), QTime(0, 0), Qt::UTC));
    EventsQueryCancel eventsCancel(&client);
    IntervalQuery interval(15);
    EventsReadedQuery readed;
    readed.readed = true;
    readed.ids = {1, 2, 3};
    EventSubscription live(&client);
    EventStatisticsSubscription statistics(&client);
    seeds.add(QStringLiteral("events"),
              request(2, indexOf(3, 18), live.write()) + request(2, indexOf(3, 21), statistics.write()) + tick() + tick()
                  + request(2, indexOf(3, 12), events.write()) + request(2, indexOf(3, 12), days.write())
                  + request(2, indexOf(3, 16), eventsCancel.write()) + request(2, indexOf(3, 15), interval.write())
                  + request(2, indexOf(3, 20), readed.write()) + tick());

    ParamGroupInfo create(8);
    create.path = QStringLiteral("G");
    create.item.type = ParamGroupItem::GroupItem;
    create.item.tags.insert(QStringLiteral("name"), QStringLiteral("H"));
    ParamGroupInsertParametersInfo insert;
    insert.path = QStringLiteral("G/H");
    insert.params = {{2, QStringLiteral("D")}, {3, QStringLiteral("E")}};
    ParamGroupRemoveParametersInfo remove;
    ParamGroupRemoveParametersInfo::Data d;
    d.id = 2;
    d.path = QStringLiteral("G/H");
    remove.removed.insert(QStringLiteral("G/H"), {d});
    ParamGroupCopyPasteRemoveInfo paste(12);
    paste.path = QStringLiteral("G");
    paste.item = create.item;
    ParamGroupCopyPasteRemoveInfo drop(13);
    drop.path = QStringLiteral("G");
    drop.what = QStringLiteral("H");
    seeds.add(QStringLiteral("groups"), request(0, indexOf(2, 8), create.write()) + request(0, indexOf(2, 10), insert.write())
                                            + request(1, indexOf(2, 14), remove.write())
                                            + request(1, indexOf(2, 12), paste.write())
                                            + request(2, indexOf(2, 13), drop.write()));
    seeds.add(QStringLiteral("raw-short-frame"), step(1, QByteArray("abc")));
    return seeds.finish();
}
