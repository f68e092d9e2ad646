// Decoding and encoding an archive answer: ArchiveResult with several series of double
// points, beside bare QDataStream loops that read and write the same bytes with flat
// arrays, in the same run.

#include "archiveresult.h"

#include <benchmark/benchmark.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QObject>

#include <vector>

namespace {

QDateTime start()
{
    return QDateTime(QDate(2025, 11, 3), QTime(0, 0), Qt::UTC);
}

/** A result as a server fills it: @p seriesCount series of @p points doubles, one a second. */
void fill(ArchiveResult &result, int seriesCount, int points)
{
    static QObject client;
    result.setParent(&client);
    result.setPiecesCount(1);
    result.setFileName(QStringLiteral("/var/archive/answer"));
    result.setIdQuery(1);
    const QDateTime t0 = start();
    for (int s = 0; s < seriesCount; ++s) {
        auto *series = new ArchiveParamData;
        series->id = 1000 + s;
        series->data.reserve(points);
        for (int i = 0; i < points; ++i)
            series->data.append(ArchiveValue(t0.addSecs(i), 20.0 + s + i * 0.001, i % 100 ? 8u : 128u));
        result.setParam(series->id, series);
    }
}

/** The packet of such a result. */
QByteArray packetOf(int seriesCount, int points)
{
    ArchiveResult result;
    fill(result, seriesCount, points);
    return result.write();
}

void BM_ReadArchiveResult(benchmark::State &state)
{
    const int seriesCount = static_cast<int>(state.range(0));
    const int points = static_cast<int>(state.range(1));
    const QByteArray packet = packetOf(seriesCount, points);
    for (auto _ : state) {
        ArchiveResult result;
        result.setPacket(packet);
        benchmark::DoNotOptimize(result.read());
        benchmark::DoNotOptimize(result.getParam(1000));
    }
    state.SetItemsProcessed(state.iterations() * seriesCount * points);
    state.SetBytesProcessed(state.iterations() * packet.size());
}

/** The same bytes read by a bare loop into flat arrays, knowing that every value is a double. */
void BM_ReadArchiveResult_Baseline(benchmark::State &state)
{
    const int seriesCount = static_cast<int>(state.range(0));
    const int points = static_cast<int>(state.range(1));
    const QByteArray packet = packetOf(seriesCount, points);
    const QByteArray body = packet.mid(32);
    std::vector<qint32> ids;
    std::vector<QDateTime> times;
    std::vector<double> values;
    std::vector<quint32> states;
    for (auto _ : state) {
        ids.clear();
        times.clear();
        values.clear();
        states.clear();
        QDataStream in(body);
        in.setVersion(QDataStream::Qt_5_15);
        qint32 entries = 0, piecesCount = 0, pieceNumber = 0, auxId = 0, idQuery = 0;
        qint64 token = 0;
        QString fileName;
        in >> entries >> token >> piecesCount >> pieceNumber >> fileName >> auxId >> idQuery;
        for (qint32 e = 0; e < entries; ++e) {
            qint32 key = 0, id = 0, aux = 0, count = 0, closing = 0;
            quint8 flag = 0;
            in >> key >> flag >> id >> aux >> count;
            ids.push_back(id);
            for (qint32 i = 0; i < count; ++i) {
                QDateTime t;
                quint32 type = 0;
                qint8 isNull = 0;
                double v = 0.0;
                quint32 s = 0;
                in >> t >> type >> isNull >> v >> s;
                times.push_back(t);
                values.push_back(v);
                states.push_back(s);
            }
            in >> closing;
        }
        benchmark::DoNotOptimize(values.data());
        benchmark::DoNotOptimize(times.data());
    }
    state.SetItemsProcessed(state.iterations() * seriesCount * points);
    state.SetBytesProcessed(state.iterations() * packet.size());
}

void BM_WriteArchiveResult(benchmark::State &state)
{
    const int seriesCount = static_cast<int>(state.range(0));
    const int points = static_cast<int>(state.range(1));
    ArchiveResult result;
    fill(result, seriesCount, points);
    for (auto _ : state)
        benchmark::DoNotOptimize(result.write().constData());
    state.SetItemsProcessed(state.iterations() * seriesCount * points);
}

/** The same bytes written by a bare loop from flat arrays. */
void BM_WriteArchiveResult_Baseline(benchmark::State &state)
{
    const int seriesCount = static_cast<int>(state.range(0));
    const int points = static_cast<int>(state.range(1));
    std::vector<QDateTime> times;
    std::vector<double> values;
    std::vector<quint32> states;
    const QDateTime t0 = start();
    for (int s = 0; s < seriesCount; ++s) {
        for (int i = 0; i < points; ++i) {
            times.push_back(t0.addSecs(i));
            values.push_back(20.0 + s + i * 0.001);
            states.push_back(i % 100 ? 8u : 128u);
        }
    }
    const QString fileName = QStringLiteral("/var/archive/answer");
    for (auto _ : state) {
        QByteArray bytes(32, '\0');
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_5_15);
        out.device()->seek(32);
        out << qint32(seriesCount) << qint64(1) << qint32(1) << qint32(0) << fileName << qint32(0) << qint32(1);
        size_t k = 0;
        for (int s = 0; s < seriesCount; ++s) {
            out << qint32(1000 + s) << quint8(1) << qint32(1000 + s) << qint32(0) << qint32(points);
            for (int i = 0; i < points; ++i, ++k)
                out << times[k] << quint32(QMetaType::Double) << qint8(0) << values[k] << states[k];
            out << qint32(1000 + s);
        }
        benchmark::DoNotOptimize(bytes.constData());
    }
    state.SetItemsProcessed(state.iterations() * seriesCount * points);
}

} // namespace

BENCHMARK(BM_ReadArchiveResult)->Args({10, 10000})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadArchiveResult_Baseline)->Args({10, 10000})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadArchiveResult)->Args({100, 100})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadArchiveResult_Baseline)->Args({100, 100})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteArchiveResult)->Args({10, 10000})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteArchiveResult_Baseline)->Args({10, 10000})->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
