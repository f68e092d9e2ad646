// Feeds arbitrary bytes to the readers of the answers to event requests: the common
// fields, the list of records, the numbers of a day and an interval. The first byte picks
// the reader; the rest is the body. Every reader must accept the body, and what it read
// is written again and read back into a fresh object, which must agree with the first.

#include "fuzztarget.h"

#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsintervaldata.h"
#include "eventsresultbase.h"

#include <cstddef>
#include <cstdint>

namespace {

using fuzz::check;

bool sameBase(const EventsResultBase &a, const EventsResultBase &b)
{
    return a.parent == b.parent && a.value1 == b.value1 && a.value2 == b.value2 && a.value3 == b.value3;
}

template<typename Result>
void readTwice(const QByteArray &body, bool (*same)(const Result &, const Result &))
{
    Result result;
    result.setPacket(fuzz::packetWith(3, 12, 2, body));
    check(result.read());
    Result again;
    again.setPacket(result.write());
    check(again.read());
    check(sameBase(result, again) && same(result, again));
}

bool sameBaseOnly(const EventsResultBase &, const EventsResultBase &)
{
    return true;
}

bool sameEvents(const EventsArchiveResult &a, const EventsArchiveResult &b)
{
    if (a.events.size() != b.events.size())
        return false;
    for (int i = 0; i < a.events.size(); ++i) {
        const EventStruct &x = a.events.at(i);
        const EventStruct &y = b.events.at(i);
        if (x.typeId != y.typeId || x.eventMessage != y.eventMessage || x.firstId != y.firstId || x.secondId != y.secondId)
            return false;
    }
    return true;
}

bool sameDay(const EventsDayData &a, const EventsDayData &b)
{
    return a.day == b.day && a.dayValues == b.dayValues;
}

bool sameInterval(const EventsIntervalData &a, const EventsIntervalData &b)
{
    return a.begin.isNull() == b.begin.isNull() && a.end.isNull() == b.end.isNull();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();
    fuzz::readSelected(data, size,
                       {[](const QByteArray &body) { readTwice<EventsResultBase>(body, sameBaseOnly); },
                        [](const QByteArray &body) { readTwice<EventsArchiveResult>(body, sameEvents); },
                        [](const QByteArray &body) { readTwice<EventsDayData>(body, sameDay); },
                        [](const QByteArray &body) { readTwice<EventsIntervalData>(body, sameInterval); }});
    return 0;
}
