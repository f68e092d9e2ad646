// Feeds arbitrary bytes to the readers of the answers to event requests: the common
// fields, the list of records, the numbers of a day and an interval. The first byte picks
// the reader; the rest is the body. Every reader must accept the body, and what it read
// is written again and read back into a fresh object, which must agree with the first.

#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsintervaldata.h"
#include "eventsresultbase.h"

#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

namespace {

void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

QByteArray packetWith(const QByteArray &body)
{
    QByteArray packet(QProtocolStruct::HeaderSize, '\0');
    const qint32 words[8] = {3, 12, 2, 1, qint32(body.size()), 0, 0, 0};
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], packet.data() + 4 * i);
    return packet + body;
}

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

bool sameBase(const EventsResultBase &a, const EventsResultBase &b)
{
    return a.parent == b.parent && a.value1 == b.value1 && a.value2 == b.value2 && a.value3 == b.value3;
}

template<typename Result>
void readTwice(const QByteArray &body, bool (*same)(const Result &, const Result &))
{
    Result result;
    result.setPacket(packetWith(body));
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
    static const QtMessageHandler previous = qInstallMessageHandler(quiet);
    Q_UNUSED(previous)
    if (size < 1 || size > (1u << 20))
        return 0;
    const QByteArray body(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    switch (data[0] & 3) {
    case 0:
        readTwice<EventsResultBase>(body, sameBaseOnly);
        break;
    case 1:
        readTwice<EventsArchiveResult>(body, sameEvents);
        break;
    case 2:
        readTwice<EventsDayData>(body, sameDay);
        break;
    default:
        readTwice<EventsIntervalData>(body, sameInterval);
        break;
    }
    return 0;
}
