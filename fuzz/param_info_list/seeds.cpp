// Writes parameter list bodies, built with the library's own writers, as the seed corpus
// of the list fuzz target: an empty list, a plant with descriptions of every kind, a
// group tree and an event catalogue, and lists that stress one part each.

#include "describe.h"
#include "paraminfolist.h"
#include "seedwriter.h"

namespace {

using describe::bodyOf;
using describe::translated;

ParamInfo scalar(unsigned int id)
{
    ParamInfo info = describe::described(id, QStringLiteral("AI%1").arg(id), 1);
    info.name = translated(QStringLiteral("Temperature"), QStringLiteral("Температура"));
    info.unit = QXmlTranslation(QStringLiteral("degC"));
    info.limits.enabled = 1;
    info.limits.lo = 0.0;
    info.limits.hi = 200.0;
    info.setpoints.setUpWarningSetpoint(150.0);
    info.idList << id + 1;
    return info;
}

/** Eight bits, the even ones in state 4096 when on and the odd ones in 16; a trip on 0x81. */
ParamInfo statusWord(unsigned int id)
{
    return describe::statusWord(id, 8, [](int bit) { return bit % 2 ? 16 : 4096; }, 0x81);
}

/** Two rows of two scalars. */
ParamInfo field(unsigned int id)
{
    return describe::field(id, 2, 2, [id](int r, int c) { return scalar(id * 10 + unsigned(r * 2 + c)); });
}

ParamGroupItem *paramNode(unsigned int id)
{
    return new ParamGroupItem(ParamGroupItem::ParamItem, false, {{QStringLiteral("id"), QString::number(id)}});
}

void fillTree(ParamGroupItem &root)
{
    root.type = ParamGroupItem::GroupItem;
    root.tags.insert(QStringLiteral("name"), QStringLiteral("Plant"));
    auto *unit = new ParamGroupItem(ParamGroupItem::GroupItem, true, {{QStringLiteral("name"), QStringLiteral("Unit")}});
    unit->children << paramNode(1) << paramNode(2);
    root.children << unit << paramNode(3)
                  << new ParamGroupItem(ParamGroupItem::FieldItem, false, {{QStringLiteral("id"), QStringLiteral("4")}});
}

EventTypeInfoStruct eventType(unsigned short id)
{
    EventTypeInfoStruct type;
    type.setEngName(QStringLiteral("Event %1").arg(id));
    type.setTranslation(QStringLiteral("Событие %1").arg(id), QStringLiteral("ru"));
    type.id = id;
    type.messages.insert(1, translated(QStringLiteral("Raised"), QStringLiteral("Возникло")));
    type.messages.insert(2, translated(QStringLiteral("Cleared"), QStringLiteral("Снято")));
    return type;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    seeds.add(QStringLiteral("empty"), bodyOf(ParamInfoList()));

    ParamInfoList plant;
    plant.params << scalar(1) << statusWord(2) << field(3);
    fillTree(plant.rootItem);
    plant.eventTypes.insert(1, eventType(1));
    plant.eventTypes.insert(65535, eventType(65535));
    plant.rawData = QByteArray("\x01\x02\x03raw", 6);
    TranslationItemNew item(QStringLiteral("en"), QStringLiteral("Pump"));
    item.insert(QStringLiteral("ru"), QStringLiteral("Насос"));
    plant.translations.insert(7, item);
    seeds.add(QStringLiteral("plant"), bodyOf(plant));

    ParamInfoList descriptions;
    for (unsigned int id = 1; id <= 12; ++id)
        descriptions.params << (id % 3 == 0 ? statusWord(id) : scalar(id));
    seeds.add(QStringLiteral("descriptions"), bodyOf(descriptions));

    ParamInfoList catalogue;
    for (unsigned short id = 1; id <= 10; ++id)
        catalogue.eventTypes.insert(id, eventType(id));
    seeds.add(QStringLiteral("catalogue"), bodyOf(catalogue));

    ParamInfoList deep;
    ParamGroupItem *parent = &deep.rootItem;
    for (int level = 0; level < 20; ++level) {
        auto *child = new ParamGroupItem(ParamGroupItem::GroupItem, false, {{QStringLiteral("name"), QString::number(level)}});
        parent->children << child << paramNode(unsigned(level));
        parent = child;
    }
    seeds.add(QStringLiteral("deep-tree"), bodyOf(deep));

    return seeds.finish();
}
