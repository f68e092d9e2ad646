// Writes bodies of the description notices, built with the library's own writers, as the
// seed corpus of the notice fuzz target: change notices with one and several records of
// every kind, an empty notice, and lists of restored identifiers.

#include "paraminfoadded.h"
#include "paraminfochanged.h"
#include "paraminforestore.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

namespace {

QByteArray bodyOf(const QProtocolStruct &message)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    message.writePrivate(out);
    return bytes;
}

ParamInfo scalar(unsigned int id)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("AI%1").arg(id);
    info.type = 1;
    info.name = QXmlTranslation(QStringLiteral("Level"));
    info.name.setTranslation(QStringLiteral("Уровень"), QStringLiteral("ru"));
    info.unit = QXmlTranslation(QStringLiteral("mm"));
    info.limits.enabled = 1;
    info.limits.lo = 0.0;
    info.limits.hi = 3000.0;
    info.setpoints.setLowEmergencySetpoint(100.0);
    info.valueTable.insert(1.5, 2);
    return info;
}

ParamInfo discrete(unsigned int id)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("DI%1").arg(id);
    info.type = 2;
    ParamBitCombination on;
    on.sign = QStringLiteral("==");
    on.value = 1;
    on.shortText.insert(QStringLiteral("en"), QStringLiteral("On"));
    info.enumeration.combinations << on;
    info.enumeration.hasCombinations = true;
    info.bitField.enabled = 1;
    ParamBitField::ParamBitAttributes bit;
    bit.name.insert(QStringLiteral("en"), QStringLiteral("Ready"));
    info.bitField.attributes.insert(0, bit);
    return info;
}

ParamInfo field(unsigned int id)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("F%1").arg(id);
    info.type = 4;
    info.rows = 1;
    info.columns = 2;
    for (int c = 0; c < 2; ++c) {
        ParamFieldElementInfo cell;
        cell.row = 0;
        cell.column = c;
        cell.info = scalar(id * 10 + unsigned(c));
        info.elements.append(cell);
    }
    return info;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    ParamInfoChanged one;
    one.params << scalar(1);
    seeds.add(QStringLiteral("changed-one"), bodyOf(one));

    ParamInfoAdded several;
    several.params << scalar(2) << discrete(3) << field(4);
    seeds.add(QStringLiteral("added-several"), bodyOf(several));

    seeds.add(QStringLiteral("changed-empty"), bodyOf(ParamInfoChanged()));

    ParamInfoRestore restore;
    restore.ids << 1 << 2 << 3 << 0xFFFFFFFFu;
    seeds.add(QStringLiteral("restore"), bodyOf(restore));
    seeds.add(QStringLiteral("restore-empty"), bodyOf(ParamInfoRestore()));

    return seeds.finish();
}
