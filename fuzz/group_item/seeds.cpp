// Writes group tree records, built with the library's own writer, as the seed corpus of
// the group tree fuzz target.

#include "paramgroupitem.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

namespace {

using Tags = QHash<QString, QString>;

QByteArray recordsOf(const QList<const ParamGroupItem *> &trees)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    for (const ParamGroupItem *tree : trees)
        tree->write(out);
    return bytes;
}

ParamGroupItem *param(unsigned int id)
{
    return new ParamGroupItem(ParamGroupItem::ParamItem, false,
                              Tags{{QStringLiteral("id"), QString::number(id)}, {QStringLiteral("name"), QStringLiteral("P%1").arg(id)}});
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    ParamGroupItem empty;
    seeds.add(QStringLiteral("empty"), recordsOf({&empty}));

    ParamGroupItem plant(ParamGroupItem::GroupItem, true, Tags{{QStringLiteral("name"), QStringLiteral("Plant")}});
    auto *pumps = new ParamGroupItem(ParamGroupItem::GroupItem, false,
                                     Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}, {QStringLiteral("color"), QStringLiteral("#ff0000")}});
    pumps->children << param(101) << param(102);
    auto *field = new ParamGroupItem(ParamGroupItem::FieldItem, false, Tags{{QStringLiteral("id"), QStringLiteral("300")}});
    field->children << param(301);
    plant.children << pumps << field << param(7);
    seeds.add(QStringLiteral("plant"), recordsOf({&plant}));
    seeds.add(QStringLiteral("two-trees"), recordsOf({&plant, &empty}));

    ParamGroupItem chain(ParamGroupItem::GroupItem);
    ParamGroupItem *level = &chain;
    for (int i = 0; i < 20; ++i) {
        auto *next = new ParamGroupItem(ParamGroupItem::GroupItem, i % 2, Tags{{QStringLiteral("level"), QString::number(i)}});
        level->children << next;
        level = next;
    }
    level->children << param(1);
    seeds.add(QStringLiteral("chain"), recordsOf({&chain}));

    ParamGroupItem odd(static_cast<ParamGroupItem::ItemType>(77), false,
                       Tags{{QStringLiteral("id"), QStringLiteral("junk")}, {QString(), QString()}});
    odd.children << param(0);
    seeds.add(QStringLiteral("odd"), recordsOf({&odd}));

    // A record whose trailing count differs: its parent counts a null child.
    ParamGroupItem withNull(ParamGroupItem::GroupItem);
    withNull.children << param(5) << nullptr;
    seeds.add(QStringLiteral("null-child"), recordsOf({&withNull}));
    return seeds.finish();
}
