// Reading parameter descriptions, and rendering a status word.
//
// BM_ReadParamInfo/N reads N description records of a realistic mix, as the list message
// does: a default record for each, read(), append. BM_ReadParamInfo_Baseline/N reads the
// very same bytes with bare QDataStream calls into local variables and keeps nothing, so
// the ratio is the price of building the records. The records-per-second figure is the
// items_per_second counter.
//
// BM_ReadParamInfo also reports the heap that the N records hold once read, per record,
// next to their wire size per record (counters heap_B_per_record, wire_B_per_record). The
// heap is measured as the difference of mallinfo2() (bytes in use plus mmapped blocks)
// before and after reading the list, with the list still alive.
//
// BM_FullWord/state renders a 32-bit status word with all 32 bits described, per call;
// its baseline fills the same 32 records from texts that are already at hand.

#include "descriptionmix.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <QtCore/QDataStream>
#include <QtCore/QList>

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace {

using namespace descriptionmix;

// Of ten records: one field of 4 x 4 cells, one 16-bit status word, two enumerations,
// six scalars with limits and setpoints.
QByteArray mixedRecords(int count)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    for (int i = 0; i < count; ++i) {
        const unsigned int id = unsigned(i + 1);
        switch (i % 10) {
        case 0:
            field(id, 4).write(out);
            break;
        case 1:
            statusWord(id, 16, TextDetail::Full).write(out);
            break;
        case 2:
        case 3:
            enumeration(id, TextDetail::Full).write(out);
            break;
        default:
            scalar(id).write(out);
            break;
        }
    }
    return bytes;
}

QList<ParamInfo> readAll(const QByteArray &bytes, int count)
{
    QList<ParamInfo> records;
    QContainerPacket packet(bytes);
    for (int i = 0; i < count; ++i) {
        ParamInfo info;
        if (!info.read(packet))
            break;
        records.append(info);
    }
    return records;
}

std::size_t heapHeld()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

const QByteArray &recordsFor(int count)
{
    static QHash<int, QByteArray> cache;
    auto it = cache.find(count);
    if (it == cache.end())
        it = cache.insert(count, mixedRecords(count));
    return it.value();
}

void BM_ReadParamInfo(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QByteArray &bytes = recordsFor(count);

    const std::size_t before = heapHeld();
    {
        const QList<ParamInfo> held = readAll(bytes, count);
        const std::size_t after = heapHeld();
        if (held.size() != count)
            state.SkipWithError("a record did not read");
        state.counters["heap_B_per_record"] = double(after - before) / count;
    }
    state.counters["wire_B_per_record"] = double(bytes.size()) / count;

    for (auto _ : state) {
        QList<ParamInfo> records = readAll(bytes, count);
        benchmark::DoNotOptimize(records);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/** The records of one kind: 0 scalar, 1 enumeration, 2 16-bit status word, 3 field of 4 x 4. */
QByteArray recordsOfKind(int kind, int count)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    for (int i = 0; i < count; ++i) {
        const unsigned int id = unsigned(i + 1);
        switch (kind) {
        case 0:
            scalar(id).write(out);
            break;
        case 1:
            enumeration(id, TextDetail::Full).write(out);
            break;
        case 2:
            statusWord(id, 16, TextDetail::Full).write(out);
            break;
        default:
            field(id, 4).write(out);
            break;
        }
    }
    return bytes;
}

/**
 * Where the memory of the mix goes: the heap that 10,000 records of one kind hold once
 * read, per record, against their wire size. Reading is not timed.
 */
void BM_HeldPerKind(benchmark::State &state)
{
    constexpr int Count = 10000;
    const QByteArray bytes = recordsOfKind(int(state.range(0)), Count);
    for (auto _ : state) {
        malloc_trim(0);
        const std::size_t before = heapHeld();
        const QList<ParamInfo> held = readAll(bytes, Count);
        malloc_trim(0);
        const std::size_t after = heapHeld();
        state.counters["heap_B_per_record"] = double(after - before) / Count;
        benchmark::DoNotOptimize(held);
    }
    state.counters["wire_B_per_record"] = double(bytes.size()) / Count;
}

void BM_ReadParamInfo_Baseline(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QByteArray &bytes = recordsFor(count);
    for (auto _ : state) {
        QDataStream s(bytes);
        s.setVersion(QDataStream::Qt_5_15);
        for (int i = 0; i < count; ++i)
            bareReadDescription(s);
        if (!s.atEnd())
            state.SkipWithError("the bare reader went astray");
    }
    state.SetItemsProcessed(state.iterations() * count);
}

ParamBitField word32()
{
    return statusWord(1, 32, TextDetail::Full).bitField;
}

void BM_FullWord(benchmark::State &state)
{
    const ParamBitField description = word32();
    const int parameterState = int(state.range(0));
    unsigned int word = 0x12345678u;
    for (auto _ : state) {
        bool ok = false;
        QHash<int, ParamBitInfo> result = description.fullWord(word, Ru, parameterState, true, &ok);
        benchmark::DoNotOptimize(result);
        word = word * 1664525u + 1013904223u;
    }
    state.SetItemsProcessed(state.iterations());
}

// The same 32 records, from names and texts looked up beforehand.
void BM_FullWord_Baseline(benchmark::State &state)
{
    const ParamBitField description = word32();
    const int parameterState = int(state.range(0));
    QString names[32];
    for (int bit = 0; bit < 32; ++bit)
        names[bit] = description.attributes.value(bit).name.value(Ru);
    const QString active = QStringLiteral("Активно");
    const QString ok = QStringLiteral("OK");
    unsigned int word = 0x12345678u;
    for (auto _ : state) {
        QHash<int, ParamBitInfo> result;
        for (int bit = 0; bit < 32; ++bit) {
            ParamBitInfo info;
            info.value = int((word >> bit) & 1u);
            info.name = names[bit];
            info.state = parameterState == 0 ? 0 : (info.value ? 16 : 8);
            info.text = info.value ? active : ok;
            result.insert(bit, info);
        }
        benchmark::DoNotOptimize(result);
        word = word * 1664525u + 1013904223u;
    }
    state.SetItemsProcessed(state.iterations());
}

} // namespace

BENCHMARK(BM_ReadParamInfo)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HeldPerKind)->DenseRange(0, 3)->Iterations(1);
BENCHMARK(BM_ReadParamInfo_Baseline)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FullWord)->Arg(0)->Arg(8);
BENCHMARK(BM_FullWord_Baseline)->Arg(0)->Arg(8);

BENCHMARK_MAIN();
