// Reading the parameter list, the one message an application receives at its start.
//
// BM_ReadParamInfoList/N reads a list of N descriptions of a realistic mix, with a group
// tree that holds every parameter (groups of 50 under units of 10 groups) and a catalogue
// of 200 event types of 8 messages each, through setPacket() and read() of a fresh
// ParamInfoList, as a client does. BM_ReadParamInfoList_Baseline/N reads the very same
// body with bare QDataStream calls into local variables and keeps nothing, so the ratio
// is the price of building the message. Items are descriptions: the descriptions per
// second figure is the items_per_second counter.

#include "descriptionmix.h"
#include "paraminfolist.h"
#include "qcontainerpacket.h"

#include <QtCore/QDataStream>
#include <QtCore/QHash>

#include <benchmark/benchmark.h>

namespace {

using namespace descriptionmix;

// Of twenty descriptions: one field of 2 x 4 cells, two status words, four enumerations
// and thirteen scalars.
ParamInfo description(int index)
{
    const unsigned int id = unsigned(index + 1);
    switch (index % 20) {
    case 0:
        return field(id, 2);
    case 1:
    case 11:
        return statusWord(id, 16, TextDetail::Lean);
    case 2:
    case 5:
    case 12:
    case 15:
        return enumeration(id, TextDetail::Lean);
    default:
        return scalar(id);
    }
}

QByteArray listBody(int count)
{
    ParamInfoList list;
    for (int i = 0; i < count; ++i)
        list.params.append(description(i));

    list.rootItem.type = ParamGroupItem::GroupItem;
    list.rootItem.tags.insert(QStringLiteral("name"), QStringLiteral("Plant"));
    ParamGroupItem *unit = nullptr;
    ParamGroupItem *group = nullptr;
    for (int i = 0; i < count; ++i) {
        if (i % 500 == 0) {
            unit = new ParamGroupItem(ParamGroupItem::GroupItem, false,
                                      {{QStringLiteral("name"), QStringLiteral("Unit %1").arg(i / 500)}});
            list.rootItem.children.append(unit);
        }
        if (i % 50 == 0) {
            group = new ParamGroupItem(ParamGroupItem::GroupItem, false,
                                       {{QStringLiteral("name"), QStringLiteral("Group %1").arg(i / 50)},
                                        {QStringLiteral("path"), QStringLiteral("/Plant/%1").arg(i / 50)}});
            unit->children.append(group);
        }
        group->children.append(new ParamGroupItem(ParamGroupItem::ParamItem, false,
                                                  {{QStringLiteral("id"), QString::number(i + 1)}}));
    }

    for (unsigned short id = 1; id <= 200; ++id) {
        EventTypeInfoStruct type;
        type.setEngName(QStringLiteral("Event type %1").arg(id));
        type.setTranslation(QStringLiteral("Тип события %1").arg(id), Ru);
        type.id = id;
        for (unsigned char m = 1; m <= 8; ++m)
            type.messages.insert(m, twoLanguages(QStringLiteral("Message %1").arg(m), QStringLiteral("Сообщение %1").arg(m)));
        list.eventTypes.insert(id, type);
    }
    list.rawData = QByteArray(4096, '\x5a');
    for (int k = 0; k < 50; ++k) {
        TranslationItemNew item(En, QStringLiteral("Text %1").arg(k));
        item.insert(Ru, QStringLiteral("Текст %1").arg(k));
        list.translations.insert(k, item);
    }

    list.write();
    return list.packet();
}

const QByteArray &packetFor(int count)
{
    static QHash<int, QByteArray> cache;
    auto it = cache.find(count);
    if (it == cache.end())
        it = cache.insert(count, listBody(count));
    return it.value();
}

void BM_ReadParamInfoList(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QByteArray &packet = packetFor(count);
    {
        ParamInfoList check;
        check.setPacket(packet);
        if (!check.read() || check.params.size() != count || check.eventTypes.size() != 200)
            state.SkipWithError("the list did not read");
    }
    for (auto _ : state) {
        ParamInfoList list;
        list.setPacket(packet);
        const bool ok = list.read();
        benchmark::DoNotOptimize(ok);
        benchmark::DoNotOptimize(list.params);
    }
    state.counters["wire_B_per_description"] = double(packet.size()) / count;
    state.SetItemsProcessed(state.iterations() * count);
}

// --- the same bytes with bare QDataStream calls ----------------------------------------

void bareNode(QDataStream &s)
{
    qint32 type, count, again;
    bool flag;
    QHash<QString, QString> tags;
    s >> type >> flag >> tags >> count;
    for (qint32 i = 0; i < count; ++i)
        bareNode(s);
    s >> again;
    benchmark::DoNotOptimize(tags);
}

void bareEventType(QDataStream &s)
{
    QString english;
    QHash<QString, QString> texts;
    quint16 id;
    quint32 count;
    s >> english >> texts >> id >> count;
    for (quint32 i = 0; i < count; ++i) {
        quint8 key;
        s >> key >> english >> texts;
    }
    benchmark::DoNotOptimize(id);
}

void BM_ReadParamInfoList_Baseline(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QByteArray &packet = packetFor(count);
    for (auto _ : state) {
        QDataStream s(packet);
        s.setVersion(QDataStream::Qt_5_15);
        s.skipRawData(QProtocolStruct::HeaderSize);
        qint32 n, again;
        s >> n;
        for (qint32 i = 0; i < n; ++i)
            bareReadDescription(s);
        s >> again;
        bareNode(s);
        qint32 types;
        s >> types;
        for (qint32 i = 0; i < types; ++i)
            bareEventType(s);
        QByteArray raw;
        QHash<qint32, QHash<QString, QString>> translations;
        s >> raw >> translations;
        if (!s.atEnd() || s.status() != QDataStream::Ok)
            state.SkipWithError("the bare reader went astray");
    }
    state.SetItemsProcessed(state.iterations() * count);
}

} // namespace

BENCHMARK(BM_ReadParamInfoList)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadParamInfoList_Baseline)->Arg(10000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
