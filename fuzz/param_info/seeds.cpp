// Writes valid parameter descriptions, built with the library's own writers, as the seed
// corpus of the description fuzz target: scalars with limits and setpoints, enumerations,
// status words, field parameters with cells, and runs of several records.

#include "describe.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

namespace {

QByteArray recordsOf(const QList<ParamInfo> &records)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    for (const ParamInfo &info : records)
        info.write(out);
    return bytes;
}

ParamInfo scalar(unsigned int id)
{
    ParamInfo info = describe::described(id, QStringLiteral("AI%1").arg(id), 1);
    info.name = describe::translated(QStringLiteral("Temperature"), QStringLiteral("Температура"));
    info.unit = QXmlTranslation(QStringLiteral("°C"));
    info.limits.enabled = 1;
    info.limits.lo = -50.0;
    info.limits.hi = 150.0;
    info.setpoints.setLowWarningSetpoint(0.0);
    info.setpoints.setUpWarningSetpoint(90.0);
    info.setpoints.setUpEmergencySetpoint(120.0);
    info.precision = 1;
    info.valueTable.insert(0.0, 1);
    info.valueTable.insert(100.0, 2);
    info.idList << id + 1 << id + 2;
    info.extraText = QStringLiteral("x");
    return info;
}

ParamInfo discrete(unsigned int id)
{
    ParamInfo info = describe::described(id, QStringLiteral("DI%1").arg(id), 2);
    const char *signs[] = {"==", "!=", ">", "<="};
    for (int k = 0; k < 4; ++k) {
        ParamBitCombination rule;
        rule.value = k;
        rule.sign = QString::fromLatin1(signs[k]);
        rule.shortText.insert(QStringLiteral("en"), QStringLiteral("State %1").arg(k));
        rule.shortText.insert(QStringLiteral("ru"), QStringLiteral("Состояние %1").arg(k));
        rule.fullText.insert(QStringLiteral("en"), QStringLiteral("Full state %1").arg(k));
        info.enumeration.combinations.append(rule);
    }
    info.enumeration.hasCombinations = true;
    return info;
}

/** Sixteen bits, from bit 0 every third one in state 4096 when on and the others in 16; a trip on 0x10. */
ParamInfo statusWord(unsigned int id)
{
    return describe::statusWord(id, 16, [](int bit) { return bit % 3 == 0 ? 4096 : 16; }, 0x10);
}

/** Enumerations and scalars in turn, like the squares of a chessboard. */
ParamInfo field(unsigned int id, int rows, int columns)
{
    return describe::field(id, rows, columns, [id, columns](int r, int c) {
        return (r + c) % 2 ? scalar(id * 100 + unsigned(r * columns + c)) : discrete(id * 100 + unsigned(r));
    });
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);
    seeds.add(QStringLiteral("default"), recordsOf({ParamInfo()}));
    seeds.add(QStringLiteral("scalar"), recordsOf({scalar(1)}));
    seeds.add(QStringLiteral("discrete"), recordsOf({discrete(2)}));
    seeds.add(QStringLiteral("status-word"), recordsOf({statusWord(3)}));
    seeds.add(QStringLiteral("field-2x2"), recordsOf({field(4, 2, 2)}));
    ParamInfo nested = field(5, 1, 1);
    nested.elements[0].info = field(6, 1, 2);
    seeds.add(QStringLiteral("field-nested"), recordsOf({nested}));
    seeds.add(QStringLiteral("mixed-run"), recordsOf({scalar(7), discrete(8), statusWord(9), field(10, 1, 3)}));
    return seeds.finish();
}
