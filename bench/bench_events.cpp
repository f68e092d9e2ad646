// Decoding and encoding an answer with a list of events: EventsArchiveResult with
// records of a few named values each, beside bare QDataStream loops that read and write
// the same bytes, in the same run.

#include "eventsarchiveresult.h"

#include <benchmark/benchmark.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QVariant>

#include <vector>

namespace {

QDateTime start()
{
    return QDateTime(QDate(2025, 11, 3), QTime(0, 0), Qt::UTC);
}

/** The records of a day on a plant: bit changes with their four named values, and limit alarms with two. */
QList<EventStruct> events(int count)
{
    QList<EventStruct> list;
    list.reserve(count);
    const QDateTime t0 = start();
    for (int i = 0; i < count; ++i) {
        EventStruct event;
        event.typeId = static_cast<unsigned short>(1 + i % 20);
        event.eventMessage = static_cast<unsigned char>(1 + i % 5);
        event.dateTime = t0.addMSecs(i * 250);
        event.firstId = 1000u + static_cast<unsigned int>(i % 300);
        event.secondId = static_cast<unsigned int>(i);
        if (i % 2) {
            event.parameters.insert(QStringLiteral("#old_bit_value"), 0x10u);
            event.parameters.insert(QStringLiteral("#new_bit_value"), 0x11u);
            event.parameters.insert(QStringLiteral("#old_bit_state"), 8);
            event.parameters.insert(QStringLiteral("#new_bit_state"), 4096);
        } else {
            event.parameters.insert(QStringLiteral("value"), 20.0 + i * 0.01);
            event.parameters.insert(QStringLiteral("limit"), 25.0);
        }
        list.append(event);
    }
    return list;
}

/** The packet of a result with @p count records, as a server sends it. */
QByteArray packetOf(int count)
{
    EventsArchiveResult result;
    result.parent = 0x00007F0012345678LL;
    result.value1 = 1;
    result.events = events(count);
    return result.write();
}

void BM_ReadEventsArchiveResult(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    const QByteArray packet = packetOf(count);
    for (auto _ : state) {
        EventsArchiveResult result;
        result.setPacket(packet);
        benchmark::DoNotOptimize(result.read());
        benchmark::DoNotOptimize(result.events.size());
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.SetBytesProcessed(state.iterations() * packet.size());
}

/** A record as a bare reader keeps it. */
struct PlainEvent
{
    quint16 typeId = 0;
    quint8 eventMessage = 0;
    quint32 firstId = 0;
    quint32 secondId = 0;
    QDateTime dateTime;
    QHash<QString, QVariant> parameters;
};

/** The same bytes read by a bare loop of QDataStream calls into a vector, with Qt's own hash operator. */
void BM_ReadEventsArchiveResult_Baseline(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    const QByteArray packet = packetOf(count);
    const QByteArray body = packet.mid(32);
    for (auto _ : state) {
        std::vector<PlainEvent> read;
        QDataStream in(body);
        in.setVersion(QDataStream::Qt_5_15);
        qint64 parent = 0;
        qint32 value1 = 0, value2 = 0, value3 = 0, n = 0;
        in >> parent >> value1 >> value2 >> value3 >> n;
        read.reserve(static_cast<size_t>(n));
        for (qint32 i = 0; i < n; ++i) {
            PlainEvent e;
            in >> e.typeId >> e.eventMessage >> e.firstId >> e.secondId >> e.dateTime >> e.parameters;
            read.push_back(std::move(e));
        }
        benchmark::DoNotOptimize(read.data());
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.SetBytesProcessed(state.iterations() * packet.size());
}

void BM_WriteEventsArchiveResult(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    EventsArchiveResult result;
    result.events = events(count);
    for (auto _ : state)
        benchmark::DoNotOptimize(result.write().constData());
    state.SetItemsProcessed(state.iterations() * count);
}

/** The same bytes written by a bare loop from a vector, with Qt's own hash operator. */
void BM_WriteEventsArchiveResult_Baseline(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    std::vector<PlainEvent> plain;
    for (const EventStruct &event : events(count)) {
        PlainEvent e;
        e.typeId = event.typeId;
        e.eventMessage = event.eventMessage;
        e.firstId = event.firstId;
        e.secondId = event.secondId;
        e.dateTime = event.dateTime;
        e.parameters = event.parameters;
        plain.push_back(e);
    }
    for (auto _ : state) {
        QByteArray bytes(32, '\0');
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_5_15);
        out.device()->seek(32);
        out << qint64(0) << qint32(0) << qint32(0) << qint32(0) << qint32(count);
        for (const PlainEvent &e : plain)
            out << e.typeId << e.eventMessage << e.firstId << e.secondId << e.dateTime << e.parameters;
        benchmark::DoNotOptimize(bytes.constData());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

} // namespace

BENCHMARK(BM_ReadEventsArchiveResult)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadEventsArchiveResult_Baseline)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadEventsArchiveResult)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadEventsArchiveResult_Baseline)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_WriteEventsArchiveResult)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteEventsArchiveResult_Baseline)->Arg(10000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
