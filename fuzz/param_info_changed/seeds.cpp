// Writes bodies of the description notices, built with the library's own writers, as the
// seed corpus of the notice fuzz target: change notices with one and several records of
// every kind, an empty notice, and lists of restored identifiers.

#include "describe.h"
#include "paraminfoadded.h"
#include "paraminfochanged.h"
#include "paraminforestore.h"
#include "seedwriter.h"

namespace {

using describe::bodyOf;

ParamInfo scalar(unsigned int id)
{
    ParamInfo info = describe::described(id, QStringLiteral("AI%1").arg(id), 1);
    info.name = describe::translated(QStringLiteral("Level"), QStringLiteral("Уровень"));
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
    ParamInfo info = describe::described(id, QStringLiteral("DI%1").arg(id), 2);
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

/** One row of two scalars. */
ParamInfo field(unsigned int id)
{
    return describe::field(id, 1, 2, [id](int, int c) { return scalar(id * 10 + unsigned(c)); });
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
