// Writes event requests built with the library's own writers as the seed corpus of the
// event query fuzz target. The first byte of each seed picks the reader: 0 interval,
// 1 event query, 2 cancellation, 3 read state.

#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "eventsreadedquery.h"
#include "intervalquery.h"
#include "seedwriter.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>

namespace {

QByteArray seed(char selector, QProtocolStruct &message)
{
    return QByteArray(1, selector) + message.write().mid(QProtocolStruct::HeaderSize);
}

QDateTime at(int msecs)
{
    return QDateTime(QDate(2025, 6, 1), QTime(12, 0), Qt::UTC).addMSecs(msecs);
}

EventStruct event(unsigned short typeId)
{
    EventStruct e;
    e.typeId = typeId;
    e.eventMessage = 1;
    e.dateTime = at(typeId * 1000);
    e.firstId = 10;
    e.secondId = 20;
    e.parameters.insert(QStringLiteral("value"), typeId * 1.5);
    return e;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);
    QObject client;

    IntervalQuery open(5);
    seeds.add(QStringLiteral("interval-open"), seed(0, open));
    IntervalQuery closed(5);
    closed.begin = at(0);
    closed.end = at(3600000);
    seeds.add(QStringLiteral("interval-closed"), seed(0, closed));

    EventsQuery fresh(1, &client);
    seeds.add(QStringLiteral("query-invalid"), seed(1, fresh));
    EventsQuery everything(1, &client);
    everything.setFromBegin();
    everything.setToEnd();
    seeds.add(QStringLiteral("query-open"), seed(1, everything));
    EventsQuery span(3, &client);
    span.queryTag = 7;
    span.setInterval(at(250), at(1750));
    span.option1 = 4;
    span.option2 = 5;
    span.events = {event(1), event(2)};
    seeds.add(QStringLiteral("query-span"), seed(1, span));
    EventsQuery half(1, &client);
    half.setFromBegin();
    half.setEndPoint(at(999));
    half.setMSecReset(false);
    seeds.add(QStringLiteral("query-half"), seed(1, half));

    EventsQueryCancel cancel(&client);
    cancel.queryTag = 3;
    seeds.add(QStringLiteral("cancel"), seed(2, cancel));

    EventsReadedQuery readed;
    readed.readed = true;
    readed.ids = {1, 2, 3, -4};
    seeds.add(QStringLiteral("readed"), seed(3, readed));
    EventsReadedQuery none;
    seeds.add(QStringLiteral("readed-empty"), seed(3, none));
    return seeds.finish();
}
