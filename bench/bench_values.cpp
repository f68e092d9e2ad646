// Writing and reading BPDouble records, beside a bare QDataStream loop that writes and
// reads the same fields in the same run.

#include "bpdouble.h"
#include "qcontainerpacket.h"

#include <benchmark/benchmark.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>

#include <memory>
#include <vector>

namespace {

constexpr int RecordCount = 100000;

std::vector<std::unique_ptr<BPDouble>> makeParameters(int count)
{
    std::vector<std::unique_ptr<BPDouble>> parameters;
    parameters.reserve(count);
    for (int i = 0; i < count; ++i) {
        parameters.emplace_back(new BPDouble(static_cast<unsigned int>(i + 1)));
        parameters.back()->setValue(i * 0.5);
        parameters.back()->setState(8);
    }
    return parameters;
}

QByteArray recordsOf(const std::vector<std::unique_ptr<BPDouble>> &parameters)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    for (const auto &p : parameters)
        p->write(out, false);
    return bytes;
}

void BM_WriteBPDouble(benchmark::State &state)
{
    const auto parameters = makeParameters(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QByteArray bytes;
        QContainerPacket out(&bytes);
        for (const auto &p : parameters)
            p->write(out, false);
        benchmark::DoNotOptimize(bytes.constData());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_WriteBPDouble_Baseline(benchmark::State &state)
{
    const auto parameters = makeParameters(static_cast<int>(state.range(0)));
    std::vector<double> values;
    for (const auto &p : parameters)
        values.push_back(p->getValue());
    for (auto _ : state) {
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_5_15);
        qint32 id = 1;
        for (double v : values)
            out << id++ << qint32(1) << qint32(8) << v;
        benchmark::DoNotOptimize(bytes.constData());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_ReadBPDouble(benchmark::State &state)
{
    const auto parameters = makeParameters(static_cast<int>(state.range(0)));
    const QByteArray bytes = recordsOf(parameters);
    auto receivers = makeParameters(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QContainerPacket in(bytes);
        for (auto &p : receivers)
            benchmark::DoNotOptimize(p->read(in));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_ReadBPDouble_Baseline(benchmark::State &state)
{
    const auto parameters = makeParameters(static_cast<int>(state.range(0)));
    const QByteArray bytes = recordsOf(parameters);
    struct Flat {
        qint32 id, type, state;
        double value;
    };
    std::vector<Flat> flat(parameters.size());
    for (auto _ : state) {
        QDataStream in(bytes);
        in.setVersion(QDataStream::Qt_5_15);
        for (Flat &f : flat)
            in >> f.id >> f.type >> f.state >> f.value;
        benchmark::DoNotOptimize(flat.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(BM_WriteBPDouble)->Arg(RecordCount)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteBPDouble_Baseline)->Arg(RecordCount)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadBPDouble)->Arg(RecordCount)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadBPDouble_Baseline)->Arg(RecordCount)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
