// Applying field records on the receiving side, beside a bare QDataStream loop that reads
// the same bytes in the same run.
//
// A BPField over variants writes its first record (every cell); a BPFieldClient built from
// the matching description reads it again and again. The baseline reads the same bytes
// field by field with plain stream calls into flat storage: the count, and per cell the
// position, the record head, the QVariant value and the one-byte limits marker. Items are
// cells, so items per second are cells per second.

#include "bpfield.h"
#include "bpfieldclient.h"
#include "bpvariant.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <benchmark/benchmark.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

namespace {

/** A field of rows by columns variants, its description and one record of every cell. */
struct FieldFixture
{
    FieldFixture(int rows, int columns)
        : field(77)
    {
        description.id = 77;
        description.code = QStringLiteral("field");
        description.type = 4;
        description.rows = rows;
        description.columns = columns;
        field.setDim(rows, columns);
        for (int r = 0; r < rows; ++r) {
            for (int c = 0; c < columns; ++c) {
                const unsigned int id = 1000 + r * columns + c;
                elements.emplace_back(new BPVariant(id));
                elements.back()->setValue(r * 0.5 + c);
                elements.back()->setState(8);
                field.setElement(r, c, elements.back().get());
                ParamFieldElementInfo element;
                element.row = r;
                element.column = c;
                element.info.id = id;
                element.info.code = QStringLiteral("cell");
                element.info.type = 1;
                description.elements.append(element);
            }
        }
        {
            QContainerPacket out(&record);
            field.writeField(out);
        }
        // Later records carry no limits block: the elements' first writes are over.
        for (auto &element : elements)
            element->upFlag();
        QContainerPacket out(&steadyRecord);
        field.writeField(out);
    }

    std::vector<std::unique_ptr<BPVariant>> elements; // outlive the field
    BPField field;
    ParamInfo description;
    QByteArray record;
    QByteArray steadyRecord;
};

void BM_ApplyField(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const int columns = static_cast<int>(state.range(1));
    FieldFixture fixture(rows, columns);
    BPFieldClient client(fixture.description);
    for (auto _ : state) {
        QContainerPacket in(fixture.steadyRecord);
        benchmark::DoNotOptimize(client.read(in));
        client.dropFlag();
    }
    state.SetItemsProcessed(state.iterations() * rows * columns);
}

void BM_ApplyField_Baseline(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const int columns = static_cast<int>(state.range(1));
    FieldFixture fixture(rows, columns);
    struct Cell {
        qint32 id = 0, type = 0, state = 0;
        QVariant value;
        qint8 limitsFlag = 0;
    };
    std::vector<Cell> cells(static_cast<size_t>(rows) * columns);
    for (auto _ : state) {
        QDataStream in(fixture.steadyRecord);
        in.setVersion(QDataStream::Qt_5_15);
        qint32 head[3];
        qint32 count = 0;
        in >> head[0] >> head[1] >> head[2] >> count;
        for (qint32 i = 0; i < count; ++i) {
            qint32 row = 0, column = 0;
            in >> row >> column;
            Cell &cell = cells[static_cast<size_t>(row) * columns + column];
            in >> cell.id >> cell.type >> cell.state >> cell.value >> cell.limitsFlag;
        }
        benchmark::DoNotOptimize(cells.data());
    }
    state.SetItemsProcessed(state.iterations() * rows * columns);
}

void BM_WriteField(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const int columns = static_cast<int>(state.range(1));
    FieldFixture fixture(rows, columns);
    for (auto _ : state) {
        for (auto &element : fixture.elements)
            element->upFlag();
        QByteArray bytes;
        QContainerPacket out(&bytes);
        fixture.field.writeField(out);
        benchmark::DoNotOptimize(bytes.constData());
    }
    state.SetItemsProcessed(state.iterations() * rows * columns);
}

void BM_WriteField_Baseline(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const int columns = static_cast<int>(state.range(1));
    FieldFixture fixture(rows, columns);
    std::vector<QVariant> values;
    for (const auto &element : fixture.elements)
        values.push_back(element->getValue());
    for (auto _ : state) {
        // The flags go up as in the measured run, so that both loops do the same work
        // apart from the writing itself.
        for (auto &element : fixture.elements)
            element->upFlag();
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_5_15);
        out << qint32(77) << qint32(4) << qint32(2) << qint32(rows * columns);
        int i = 0;
        for (qint32 r = 0; r < rows; ++r) {
            for (qint32 c = 0; c < columns; ++c, ++i)
                out << r << c << qint32(1000 + i) << qint32(5) << qint32(8) << values[i] << qint8(0);
        }
        benchmark::DoNotOptimize(bytes.constData());
    }
    state.SetItemsProcessed(state.iterations() * rows * columns);
}

} // namespace

BENCHMARK(BM_ApplyField)->Args({16, 16})->Args({100, 10});
BENCHMARK(BM_ApplyField_Baseline)->Args({16, 16})->Args({100, 10});
BENCHMARK(BM_WriteField)->Args({16, 16})->Args({100, 10});
BENCHMARK(BM_WriteField_Baseline)->Args({16, 16})->Args({100, 10});

BENCHMARK_MAIN();
