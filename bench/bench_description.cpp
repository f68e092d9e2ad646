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

#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <QtCore/QDataStream>
#include <QtCore/QList>

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace {

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

QXmlTranslation twoLanguages(const QString &english, const QString &russian)
{
    QXmlTranslation t(english);
    t.setTranslation(russian, Ru);
    return t;
}

ParamInfo scalar(unsigned int id, int type = 1)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("PLANT.UNIT%1.AI%2").arg(id / 100).arg(id);
    info.type = type;
    info.name = twoLanguages(QStringLiteral("Outlet temperature %1").arg(id),
                             QStringLiteral("Температура на выходе %1").arg(id));
    info.unit = twoLanguages(QStringLiteral("degC"), QStringLiteral("°C"));
    info.limits.enabled = 1;
    info.limits.lo = -50.0;
    info.limits.hi = 150.0;
    info.setpoints.setLowEmergencySetpoint(-40.0);
    info.setpoints.setLowWarningSetpoint(-20.0);
    info.setpoints.setUpWarningSetpoint(110.0);
    info.setpoints.setUpEmergencySetpoint(130.0);
    info.precision = 1;
    return info;
}

ParamInfo enumeration(unsigned int id)
{
    ParamInfo info = scalar(id, 2);
    info.limits = ParamLimits();
    info.setpoints = ParamSetpoints();
    const char *english[] = {"Stopped", "Starting", "Running", "Tripped"};
    const char *russian[] = {"Остановлен", "Пуск", "Работа", "Авария"};
    for (int k = 0; k < 4; ++k) {
        ParamBitCombination rule;
        rule.value = k;
        rule.sign = QStringLiteral("==");
        rule.shortText.insert(En, QString::fromUtf8(english[k]));
        rule.shortText.insert(Ru, QString::fromUtf8(russian[k]));
        rule.fullText.insert(En, QStringLiteral("Pump %1").arg(QString::fromUtf8(english[k])));
        rule.fullText.insert(Ru, QStringLiteral("Насос: %1").arg(QString::fromUtf8(russian[k])));
        info.enumeration.combinations.append(rule);
    }
    info.enumeration.hasCombinations = true;
    return info;
}

ParamInfo bitField(unsigned int id, int bits)
{
    ParamInfo info = scalar(id, 2);
    info.limits = ParamLimits();
    info.setpoints = ParamSetpoints();
    info.bitField.enabled = 1;
    for (int bit = 0; bit < bits; ++bit) {
        ParamBitField::ParamBitAttributes attributes;
        attributes.name.insert(En, QStringLiteral("Condition %1").arg(bit));
        attributes.name.insert(Ru, QStringLiteral("Условие %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState on;
        on.state = bit % 4 == 0 ? 4096 : 16;
        on.text.insert(En, QStringLiteral("Active"));
        on.text.insert(Ru, QStringLiteral("Активно"));
        attributes.states.insert(1, on);
        info.bitField.attributes.insert(bit, attributes);
    }
    ParamBitCombination trip;
    trip.sign = QStringLiteral("==");
    trip.state = 4096;
    trip.shortText.insert(En, QStringLiteral("Trip"));
    trip.shortText.insert(Ru, QStringLiteral("Отключение"));
    info.bitField.combinations.insert(0x11, trip);
    return info;
}

ParamInfo field(unsigned int id)
{
    ParamInfo info = scalar(id, 4);
    info.limits = ParamLimits();
    info.setpoints = ParamSetpoints();
    info.rows = 4;
    info.columns = 4;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            ParamFieldElementInfo cell;
            cell.row = r;
            cell.column = c;
            cell.info = scalar(id * 100 + unsigned(r * 4 + c));
            info.elements.append(cell);
        }
    }
    return info;
}

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
            field(id).write(out);
            break;
        case 1:
            bitField(id, 16).write(out);
            break;
        case 2:
        case 3:
            enumeration(id).write(out);
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

// The wire form of one description, read with bare QDataStream calls into locals.
void bareRead(QDataStream &s)
{
    quint32 id, elementCount, tableCount;
    qint32 type, rows, columns, count;
    qint8 option, precision, format, flag, reserved;
    QString code, code2, code3, english, sign, extraText;
    QHash<QString, QString> texts, moreTexts;
    double lo, hi;
    s >> id >> code >> code2 >> code3 >> type;
    for (int k = 0; k < 3; ++k)
        s >> english >> texts;
    s >> rows >> columns >> option >> precision >> format;
    s >> flag;
    if (flag)
        s >> lo >> hi;
    s >> count;
    for (qint32 i = 0; i < count; ++i) {
        qint64 value;
        qint32 ruleState;
        s >> value >> ruleState >> texts >> moreTexts >> sign;
    }
    s >> flag >> reserved;
    if (flag) {
        s >> count;
        for (qint32 i = 0; i < count; ++i) {
            qint32 bit, states;
            s >> bit >> texts >> states;
            for (qint32 k = 0; k < states; ++k) {
                qint32 key, bitState;
                s >> key >> bitState >> moreTexts;
            }
        }
        s >> count;
        for (qint32 i = 0; i < count; ++i) {
            qint32 key, ruleState;
            qint64 value;
            s >> key >> value >> ruleState >> texts >> moreTexts >> sign;
        }
    }
    s >> elementCount;
    for (quint32 i = 0; i < elementCount; ++i) {
        qint32 row, column;
        s >> row >> column;
        bareRead(s);
    }
    s >> tableCount;
    for (quint32 i = 0; i < tableCount; ++i) {
        double key;
        quint32 value;
        s >> key >> value;
    }
    for (int k = 0; k < 4; ++k) {
        s >> flag;
        if (flag)
            s >> lo;
    }
    QList<quint32> ids;
    s >> ids >> extraText;
    benchmark::DoNotOptimize(id);
}

void BM_ReadParamInfo_Baseline(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QByteArray &bytes = recordsFor(count);
    for (auto _ : state) {
        QDataStream s(bytes);
        s.setVersion(QDataStream::Qt_5_15);
        for (int i = 0; i < count; ++i)
            bareRead(s);
        if (!s.atEnd())
            state.SkipWithError("the bare reader went astray");
    }
    state.SetItemsProcessed(state.iterations() * count);
}

ParamBitField word32()
{
    return bitField(1, 32).bitField;
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
BENCHMARK(BM_ReadParamInfo_Baseline)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FullWord)->Arg(0)->Arg(8);
BENCHMARK(BM_FullWord_Baseline)->Arg(0)->Arg(8);

BENCHMARK_MAIN();
