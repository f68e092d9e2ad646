// Writes parameter list bodies, built with the library's own writers, as the seed corpus
// of the list fuzz target: an empty list, a plant with descriptions of every kind, a
// group tree and an event catalogue, and lists that stress one part each.

#include "paraminfolist.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

namespace {

QByteArray bodyOf(const ParamInfoList &list)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    list.writePrivate(out);
    return bytes;
}

QXmlTranslation text(const QString &english, const QString &russian)
{
    QXmlTranslation t(english);
    t.setTranslation(russian, QStringLiteral("ru"));
    return t;
}

ParamInfo scalar(unsigned int id)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("AI%1").arg(id);
    info.type = 1;
    info.name = text(QStringLiteral("Temperature"), QStringLiteral("Температура"));
    info.unit = QXmlTranslation(QStringLiteral("degC"));
    info.limits.enabled = 1;
    info.limits.lo = 0.0;
    info.limits.hi = 200.0;
    info.setpoints.setUpWarningSetpoint(150.0);
    info.idList << id + 1;
    return info;
}

ParamInfo statusWord(unsigned int id)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("SW%1").arg(id);
    info.type = 2;
    info.bitField.enabled = 1;
    for (int bit = 0; bit < 8; ++bit) {
        ParamBitField::ParamBitAttributes attributes;
        attributes.name.insert(QStringLiteral("en"), QStringLiteral("Bit %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState on;
        on.state = bit % 2 ? 16 : 4096;
        on.text.insert(QStringLiteral("en"), QStringLiteral("On"));
        attributes.states.insert(1, on);
        info.bitField.attributes.insert(bit, attributes);
    }
    ParamBitCombination trip;
    trip.sign = QStringLiteral("==");
    trip.state = 4096;
    trip.shortText.insert(QStringLiteral("en"), QStringLiteral("Trip"));
    info.bitField.combinations.insert(0x81, trip);
    return info;
}

ParamInfo field(unsigned int id)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("F%1").arg(id);
    info.type = 4;
    info.rows = 2;
    info.columns = 2;
    for (int r = 0; r < 2; ++r) {
        for (int c = 0; c < 2; ++c) {
            ParamFieldElementInfo cell;
            cell.row = r;
            cell.column = c;
            cell.info = scalar(id * 10 + unsigned(r * 2 + c));
            info.elements.append(cell);
        }
    }
    return info;
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
    type.messages.insert(1, text(QStringLiteral("Raised"), QStringLiteral("Возникло")));
    type.messages.insert(2, text(QStringLiteral("Cleared"), QStringLiteral("Снято")));
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
