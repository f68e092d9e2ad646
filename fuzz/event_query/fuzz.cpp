// Feeds arbitrary bytes to the readers of the event requests: IntervalQuery, EventsQuery,
// EventsQueryCancel and EventsReadedQuery. The first byte picks the reader; the rest is
// the body. Every reader must accept the body, and what it read is written again and
// read back into a fresh object, which must agree with the first.

#include "fuzztarget.h"

#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "eventsreadedquery.h"
#include "intervalquery.h"

#include <cstddef>
#include <cstdint>

namespace {

using fuzz::check;

void readInterval(const QByteArray &body)
{
    IntervalQuery query(0);
    query.setPacket(fuzz::packetWith(3, 5, 1, body));
    check(query.read());
    IntervalQuery again(0);
    again.setPacket(query.write());
    check(again.read());
    check(again.begin.isValid() == query.begin.isValid() && again.end.isValid() == query.end.isValid());
}

void readQuery(const QByteArray &body)
{
    EventsQuery query(0, nullptr);
    query.setPacket(fuzz::packetWith(3, 12, 1, body));
    check(query.read());
    query.isValid();
    query.getBeginDateTime();
    query.getEndDateTime();
    const EventsQuery copy(query);
    check(copy.events.size() == query.events.size() && copy.queryType == query.queryType);
    EventsQuery again(0, nullptr);
    again.setPacket(query.write());
    check(again.read());
    check(again.queryType == query.queryType && again.parent == query.parent && again.queryTag == query.queryTag);
    if (query.isValid())
        check(again.events.size() == query.events.size() && again.option1 == query.option1
              && again.option2 == query.option2 && again.fromBegin == query.fromBegin && again.toEnd == query.toEnd);
}

void readCancel(const QByteArray &body)
{
    EventsQueryCancel cancel(nullptr);
    cancel.setPacket(fuzz::packetWith(3, 16, 1, body));
    check(cancel.read());
    EventsQueryCancel again(nullptr);
    again.setPacket(cancel.write());
    check(again.read());
    check(again.queryType == cancel.queryType && again.parent == cancel.parent && again.queryTag == cancel.queryTag);
}

void readReaded(const QByteArray &body)
{
    EventsReadedQuery query;
    query.setPacket(fuzz::packetWith(3, 20, 1, body));
    check(query.read());
    EventsReadedQuery again;
    again.setPacket(query.write());
    check(again.read());
    check(again.readed == query.readed && again.ids == query.ids);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();
    fuzz::readSelected(data, size, {readInterval, readQuery, readCancel, readReaded});
    return 0;
}
