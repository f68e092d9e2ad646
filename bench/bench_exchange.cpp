// Applying one result of N records to a client's parameter objects, through
// ClientParamSubscription::newDataSlot (the whole received message: header, body, record
// walk) and through ParamValuesStruct::newDataSlot (a result already read: the record
// walk). Arguments: N records, objects per identifier (1 or 3).
//
// Each benchmark X has its baseline X_Baseline with the same arguments: a bare
// QDataStream loop that reads the same bytes once, field by field, into a flat array.
// Items processed are records, so records per second compare directly.

#include "bpdouble.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"
#include "paramsubscriptionresult.h"
#include "paramvaluesresult.h"
#include "paramvaluesstruct.h"
#include "qcontainerpacket.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

enum class Kind { Double, Variant };

using ParamPtr = QSharedPointer<AbstractParameterBase>;

const QDateTime answerTime(QDate(2026, 3, 5), QTime(14, 7, 9, 42), Qt::UTC);

/** A server-side object of @p kind for @p id; variants hold a double and all six setpoints. */
ParamPtr serverObject(Kind kind, unsigned int id)
{
    if (kind == Kind::Double) {
        auto *d = new BPDouble(id);
        d->setValue(id * 0.5);
        d->setState(8);
        return ParamPtr(d);
    }
    auto *v = new BPVariant(id);
    CalcLimit &limits = v->limitsPrivate();
    limits.setLowPossibleSetpoint(true, 0.0);
    limits.setHiPossibleSetpoint(true, 1e9);
    limits.setLowEmergencySetpoint(true, 10.0);
    limits.setLowWarningSetpoint(true, 20.0);
    limits.setHiWarningSetpoint(true, 1000.0);
    limits.setHiEmergencySetpoint(true, 2000.0);
    v->setValue(id * 0.5);
    v->setState(8);
    return ParamPtr(v);
}

ParamPtr clientObject(Kind kind, unsigned int id)
{
    if (kind == Kind::Double)
        return ParamPtr(new BPDouble(id));
    return ParamPtr(new BPVariant(id));
}

/** Records of identifiers 1..n written by server objects; variants carry their limits (a full write). */
QByteArray records(Kind kind, int n, bool leadingIds)
{
    QByteArray data;
    QContainerPacket packet(&data);
    for (int id = 1; id <= n; ++id) {
        const ParamPtr object = serverObject(kind, static_cast<unsigned int>(id));
        if (leadingIds)
            packet << static_cast<qint32>(id);
        object->write(packet, true);
    }
    return data;
}

// --- the baseline: the same bytes read once into a flat array -------------------------

struct FlatRecord
{
    qint32 id = 0;
    qint32 type = 0;
    qint32 state = 0;
    double number = 0.0;
    QVariant variant;
    BaseLimits base;
    FullLimits full;
};

void readFlatRecord(QDataStream &s, Kind kind, FlatRecord &r)
{
    s >> r.id >> r.type >> r.state;
    if (kind == Kind::Double) {
        s >> r.number;
        return;
    }
    s >> r.variant;
    qint8 changed = 0;
    s >> changed;
    if (!changed)
        return;
    qint8 present = 0;
    s >> present;
    if (present)
        s >> r.base.lowPossible >> r.base.hiPossible >> r.base.lowPossibleSet >> r.base.hiPossibleSet;
    s >> present;
    if (present)
        s >> r.full.lowEmergency >> r.full.lowWarning >> r.full.hiWarning >> r.full.hiEmergency >>
            r.full.lowEmergencySet >> r.full.lowWarningSet >> r.full.hiWarningSet >> r.full.hiEmergencySet;
}

void setStreamFormat(QDataStream &s)
{
    s.setVersion(QDataStream::Qt_5_15);
    s.setByteOrder(QDataStream::BigEndian);
    s.setFloatingPointPrecision(QDataStream::DoublePrecision);
}

// --- ClientParamSubscription::newDataSlot ---------------------------------------------

struct SubscriptionCase
{
    QObject client;
    ClientParamSubscription subscription;
    QProtocolStruct message;
    QByteArray body;

    SubscriptionCase(Kind kind, int n, int perId)
    {
        for (int id = 1; id <= n; ++id)
            for (int k = 0; k < perId; ++k)
                subscription.append(clientObject(kind, static_cast<unsigned int>(id)), &client);
        ParamSubscriptionResult result;
        for (int id = 1; id <= n; ++id)
            result.ids.append(id);
        result.data = records(kind, n, false);
        result.dateTime = answerTime;
        result.setParent(&client);
        const QByteArray packet = result.write();
        message.setPacket(packet);
        body = packet.mid(QProtocolStruct::HeaderSize);
    }
};

void subscriptionApply(benchmark::State &state, Kind kind)
{
    const int n = static_cast<int>(state.range(0));
    SubscriptionCase c(kind, n, static_cast<int>(state.range(1)));
    for (auto _ : state) {
        const bool ok = c.subscription.newDataSlot(c.message);
        benchmark::DoNotOptimize(ok);
        if (!ok)
            state.SkipWithError("result refused");
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void subscriptionBaseline(benchmark::State &state, Kind kind)
{
    const int n = static_cast<int>(state.range(0));
    SubscriptionCase c(kind, n, static_cast<int>(state.range(1)));
    std::vector<qint32> ids;
    std::vector<FlatRecord> flat;
    for (auto _ : state) {
        QDataStream s(c.body);
        setStreamFormat(s);
        quint32 count = 0;
        s >> count;
        ids.resize(count);
        for (quint32 i = 0; i < count; ++i)
            s >> ids[i];
        quint32 dataLength = 0;
        s >> dataLength;
        flat.resize(count);
        for (quint32 i = 0; i < count; ++i)
            readFlatRecord(s, kind, flat[i]);
        QDateTime when;
        qint64 token = 0;
        s >> when >> token;
        benchmark::DoNotOptimize(token);
        benchmark::DoNotOptimize(flat.data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void BM_SubscriptionApplyDouble(benchmark::State &state) { subscriptionApply(state, Kind::Double); }
void BM_SubscriptionApplyDouble_Baseline(benchmark::State &state) { subscriptionBaseline(state, Kind::Double); }
void BM_SubscriptionApplyVariant(benchmark::State &state) { subscriptionApply(state, Kind::Variant); }
void BM_SubscriptionApplyVariant_Baseline(benchmark::State &state) { subscriptionBaseline(state, Kind::Variant); }

// --- ParamValuesStruct::newDataSlot ---------------------------------------------------

struct ValuesCase
{
    QObject client;
    ParamValuesStruct values{&client};
    ParamValuesResult result;

    ValuesCase(Kind kind, int n, int perId)
    {
        for (int id = 1; id <= n; ++id)
            for (int k = 0; k < perId; ++k)
                values.append(clientObject(kind, static_cast<unsigned int>(id)));
        ParamValuesResult written;
        for (int id = 1; id <= n; ++id)
            written.ids.append(static_cast<unsigned int>(id));
        written.data = records(kind, n, true);
        written.dateTime = answerTime;
        written.parent = &client;
        result.setPacket(written.write());
        result.read();
    }
};

void valuesApply(benchmark::State &state, Kind kind)
{
    const int n = static_cast<int>(state.range(0));
    ValuesCase c(kind, n, static_cast<int>(state.range(1)));
    for (auto _ : state) {
        const bool ok = c.values.newDataSlot(c.result);
        benchmark::DoNotOptimize(ok);
        if (!ok)
            state.SkipWithError("result refused");
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void valuesBaseline(benchmark::State &state, Kind kind)
{
    const int n = static_cast<int>(state.range(0));
    ValuesCase c(kind, n, static_cast<int>(state.range(1)));
    std::vector<FlatRecord> flat(static_cast<size_t>(n));
    for (auto _ : state) {
        QDataStream s(c.result.data);
        setStreamFormat(s);
        for (int i = 0; i < n; ++i) {
            qint32 leading = 0;
            s >> leading;
            readFlatRecord(s, kind, flat[static_cast<size_t>(i)]);
        }
        benchmark::DoNotOptimize(flat.data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void BM_ValuesApplyDouble(benchmark::State &state) { valuesApply(state, Kind::Double); }
void BM_ValuesApplyDouble_Baseline(benchmark::State &state) { valuesBaseline(state, Kind::Double); }
void BM_ValuesApplyVariant(benchmark::State &state) { valuesApply(state, Kind::Variant); }
void BM_ValuesApplyVariant_Baseline(benchmark::State &state) { valuesBaseline(state, Kind::Variant); }

void sizes(benchmark::internal::Benchmark *b)
{
    b->ArgNames({"records", "perId"});
    for (int perId : {1, 3})
        for (int n : {1000, 10000, 100000})
            b->Args({n, perId});
    b->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK(BM_SubscriptionApplyDouble)->Apply(sizes);
BENCHMARK(BM_SubscriptionApplyDouble_Baseline)->Apply(sizes);
BENCHMARK(BM_SubscriptionApplyVariant)->Apply(sizes);
BENCHMARK(BM_SubscriptionApplyVariant_Baseline)->Apply(sizes);
BENCHMARK(BM_ValuesApplyDouble)->Apply(sizes);
BENCHMARK(BM_ValuesApplyDouble_Baseline)->Apply(sizes);
BENCHMARK(BM_ValuesApplyVariant)->Apply(sizes);
BENCHMARK(BM_ValuesApplyVariant_Baseline)->Apply(sizes);

BENCHMARK_MAIN();
