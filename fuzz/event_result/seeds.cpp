// Writes answers to event requests, built with the library's own writers, as the seed
// corpus of the event result fuzz target. The first byte of each seed picks the reader:
// 0 common fields, 1 list of records, 2 numbers of a day, 3 interval.

#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsintervaldata.h"
#include "eventsresultbase.h"
#include "seedwriter.h"

#include <QtCore/QDateTime>

namespace {

QByteArray seed(char selector, QProtocolStruct &message)
{
    return QByteArray(1, selector) + message.write().mid(QProtocolStruct::HeaderSize);
}

QDateTime at(int secs)
{
    return QDateTime(QDate(2025, 6, 1), QTime(0, 0), Qt::UTC).addSecs(secs);
}

template<typename Result>
void fillBase(Result &result)
{
    result.parent = 0x00007F0012345678LL;
    result.value1 = 1;
    result.value2 = 2;
    result.value3 = 3;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    EventsResultBase base;
    fillBase(base);
    seeds.add(QStringLiteral("base"), seed(0, base));

    EventsArchiveResult none;
    fillBase(none);
    seeds.add(QStringLiteral("archive-empty"), seed(1, none));
    EventsArchiveResult archive;
    fillBase(archive);
    for (int i = 0; i < 4; ++i) {
        EventStruct event;
        event.typeId = static_cast<unsigned short>(10 + i);
        event.eventMessage = static_cast<unsigned char>(i + 1);
        event.dateTime = at(i * 60);
        event.firstId = 100u + i;
        event.secondId = 200u + i;
        event.parameters.insert(QStringLiteral("#new_bit_value"), 1u << i);
        if (i % 2)
            event.parameters.insert(QStringLiteral("note"), QStringLiteral("odd"));
        archive.events.append(event);
    }
    seeds.add(QStringLiteral("archive"), seed(1, archive));

    EventsDayData day;
    fillBase(day);
    day.day = QDate(2025, 6, 1);
    for (unsigned short key : {1, 2, 40, 65535})
        day.dayValues.insert(key, key * 2);
    seeds.add(QStringLiteral("day"), seed(2, day));
    EventsDayData invalidDay;
    invalidDay.day = QDate(2025, 2, 30);
    seeds.add(QStringLiteral("day-invalid"), seed(2, invalidDay));

    EventsIntervalData interval;
    fillBase(interval);
    interval.begin = at(0);
    interval.end = at(86400);
    seeds.add(QStringLiteral("interval"), seed(3, interval));
    EventsIntervalData nullInterval;
    seeds.add(QStringLiteral("interval-null"), seed(3, nullInterval));
    return seeds.finish();
}
