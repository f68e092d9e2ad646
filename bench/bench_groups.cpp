// Reading a realistic group tree (about 1,000 groups in 4 levels holding 20,000
// parameters), beside a bare QDataStream reader of the same bytes into a plain tree, in
// the same run. Also a whole insert message carrying that tree and 1,000 parameters.

#include "paramgroupinsertparametersinfo.h"
#include "paramgroupitem.h"
#include "qcontainerpacket.h"

#include <benchmark/benchmark.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QString>

#include <memory>
#include <vector>

namespace {

using Tags = QHash<QString, QString>;

struct TreeShape {
    int groups = 0;
    int parameters = 0;
};

ParamGroupItem *groupNode(const QString &name)
{
    return new ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), name}});
}

ParamGroupItem *paramNode(unsigned int id)
{
    return new ParamGroupItem(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), QString::number(id)}});
}

/**
 * Root, 10 areas, 10 units in each, 9 groups of sensors in each unit: 1,010 groups. Each
 * sensor group holds 22 parameters and each unit 2 more: 20,000 parameters.
 */
std::unique_ptr<ParamGroupItem> plantTree(TreeShape *shape)
{
    auto root = std::make_unique<ParamGroupItem>(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), QStringLiteral("Plant")}});
    unsigned int id = 1;
    int groups = 0;
    for (int a = 0; a < 10; ++a) {
        ParamGroupItem *area = groupNode(QStringLiteral("Area %1").arg(a));
        ++groups;
        for (int u = 0; u < 10; ++u) {
            ParamGroupItem *unit = groupNode(QStringLiteral("Unit %1.%2").arg(a).arg(u));
            ++groups;
            for (int g = 0; g < 9; ++g) {
                ParamGroupItem *sensors = groupNode(QStringLiteral("Sensors %1.%2.%3").arg(a).arg(u).arg(g));
                ++groups;
                for (int p = 0; p < 22; ++p)
                    sensors->children << paramNode(id++);
                unit->children << sensors;
            }
            for (int p = 0; p < 2; ++p)
                unit->children << paramNode(id++);
            area->children << unit;
        }
        root->children << area;
    }
    if (shape) {
        shape->groups = groups;
        shape->parameters = static_cast<int>(id - 1);
    }
    return root;
}

QByteArray recordOf(const ParamGroupItem &item)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    item.write(out);
    return bytes;
}

/** The baseline's tree: the same fields in a plain structure. */
struct PlainNode {
    qint32 type = 0;
    bool flag = false;
    Tags tags;
    std::vector<PlainNode> children;
};

bool readPlain(QDataStream &in, PlainNode &node)
{
    qint32 count = 0;
    in >> node.type >> node.flag >> node.tags >> count;
    node.children.resize(count > 0 ? static_cast<size_t>(count) : 0);
    for (PlainNode &child : node.children) {
        if (!readPlain(in, child))
            return false;
    }
    qint32 trailing = 0;
    in >> trailing;
    return trailing == count;
}

void BM_ReadGroupTree(benchmark::State &state)
{
    TreeShape shape;
    const QByteArray bytes = recordOf(*plantTree(&shape));
    for (auto _ : state) {
        QContainerPacket in(bytes);
        ParamGroupItem tree;
        if (!tree.read(in))
            state.SkipWithError("tree did not read");
        benchmark::DoNotOptimize(tree.children.size());
    }
    state.SetItemsProcessed(state.iterations() * (shape.groups + shape.parameters + 1));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

void BM_ReadGroupTree_Baseline(benchmark::State &state)
{
    TreeShape shape;
    const QByteArray bytes = recordOf(*plantTree(&shape));
    for (auto _ : state) {
        QDataStream in(bytes);
        in.setVersion(QDataStream::Qt_5_15);
        PlainNode tree;
        if (!readPlain(in, tree))
            state.SkipWithError("tree did not read");
        benchmark::DoNotOptimize(tree.children.size());
    }
    state.SetItemsProcessed(state.iterations() * (shape.groups + shape.parameters + 1));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

QByteArray insertPacket()
{
    ParamGroupInsertParametersInfo message;
    message.path = QStringLiteral("/Plant/Area 0/Unit 0.0");
    message.item = *plantTree(nullptr);
    for (unsigned int i = 1; i <= 1000; ++i)
        message.params << ParamGroupInfoBase::Data{i, QStringLiteral("Parameter %1").arg(i)};
    message.anchor = QStringLiteral("Sensors 0.0.0");
    message.mode = ParamGroupInsertParametersInfo::BelowMode;
    return message.write();
}

void BM_ReadInsertMessage(benchmark::State &state)
{
    const QByteArray packet = insertPacket();
    for (auto _ : state) {
        ParamGroupInsertParametersInfo message;
        message.setPacket(packet);
        if (!message.read())
            state.SkipWithError("message did not read");
        benchmark::DoNotOptimize(message.params.size());
    }
    state.SetBytesProcessed(state.iterations() * packet.size());
}

void BM_ReadInsertMessage_Baseline(benchmark::State &state)
{
    const QByteArray packet = insertPacket();
    struct Param {
        quint32 id;
        QString name;
    };
    for (auto _ : state) {
        QDataStream in(packet);
        in.setVersion(QDataStream::Qt_5_15);
        in.skipRawData(32);
        QString path, extra1, extra2, anchor, anchorExtra;
        qint32 count = 0, trailing = 0, mode = 0;
        PlainNode tree;
        in >> path >> extra1 >> extra2;
        if (!readPlain(in, tree))
            state.SkipWithError("tree did not read");
        in >> count;
        std::vector<Param> params(static_cast<size_t>(qMax(count, 0)));
        for (Param &p : params)
            in >> p.id >> p.name;
        in >> trailing >> anchor >> anchorExtra >> mode;
        if (trailing != count)
            state.SkipWithError("message did not read");
        benchmark::DoNotOptimize(params.size());
    }
    state.SetBytesProcessed(state.iterations() * packet.size());
}

} // namespace

BENCHMARK(BM_ReadGroupTree)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadGroupTree_Baseline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadInsertMessage)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadInsertMessage_Baseline)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
