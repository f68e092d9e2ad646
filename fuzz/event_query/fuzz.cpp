// Feeds arbitrary bytes to the readers of the event requests: IntervalQuery, EventsQuery,
// EventsQueryCancel and EventsReadedQuery. The first byte picks the reader; the rest is
// the body. Every reader must accept the body, and what it read is written again and
// read back into a fresh object, which must agree with the first.

#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "eventsreadedquery.h"
#include "intervalquery.h"

#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

namespace {

void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

QByteArray packetWith(int messageId, const QByteArray &body)
{
    QByteArray packet(QProtocolStruct::HeaderSize, '\0');
    const qint32 words[8] = {3, messageId, 1, 1, qint32(body.size()), 0, 0, 0};
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], packet.data() + 4 * i);
    return packet + body;
}

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

void readInterval(const QByteArray &body)
{
    IntervalQuery query(0);
    query.setPacket(packetWith(5, body));
    check(query.read());
    IntervalQuery again(0);
    again.setPacket(query.write());
    check(again.read());
    check(again.begin.isValid() == query.begin.isValid() && again.end.isValid() == query.end.isValid());
}

void readQuery(const QByteArray &body)
{
    EventsQuery query(0, nullptr);
    query.setPacket(packetWith(12, body));
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
    cancel.setPacket(packetWith(16, body));
    check(cancel.read());
    EventsQueryCancel again(nullptr);
    again.setPacket(cancel.write());
    check(again.read());
    check(again.queryType == cancel.queryType && again.parent == cancel.parent && again.queryTag == cancel.queryTag);
}

void readReaded(const QByteArray &body)
{
    EventsReadedQuery query;
    query.setPacket(packetWith(20, body));
    check(query.read());
    EventsReadedQuery again;
    again.setPacket(query.write());
    check(again.read());
    check(again.readed == query.readed && again.ids == query.ids);
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
        readInterval(body);
        break;
    case 1:
        readQuery(body);
        break;
    case 2:
        readCancel(body);
        break;
    default:
        readReaded(body);
        break;
    }
    return 0;
}
