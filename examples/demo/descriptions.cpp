// Section: parameter descriptions.
//
// Apart from its value, an application needs to know what a parameter is: its name and
// unit in the operator's language, its scale and alarm thresholds, the text for each
// value of a discrete parameter, and the meaning of each bit of a status word. A server
// sends this as ParamInfo records; the application reads them once and then renders
// every value it receives with their help.

#include "demosections.h"

#include "paraminfo.h"
#include "qcontainerpacket.h"
#include "sampledescriptions.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>

namespace {

// A pressure measurement whose scale and thresholds come from the attributes of its
// element in the plant configuration.
ParamInfo pressure()
{
    ParamInfo info = namedDescription(101, "BOILER1.PT101", 1, "Drum pressure", "Давление в барабане");
    info.unit = twoLanguages(QStringLiteral("bar"), QStringLiteral("бар"));
    info.precision = 2;

    QXmlStreamReader xml(QStringLiteral("<param code=\"BOILER1.PT101\" lo=\"0\" hi=\"16\" "
                                        "lws=\"2.5\" uws=\"12\" ues=\"14.5\"/>"));
    xml.readNextStartElement();
    info.limits.readFromSource(xml);
    info.setpoints = ParamSetpoints(xml.attributes());
    return info;
}

ParamBitCombination rule(const char *sign, qint64 value, const char *english, const char *russian)
{
    ParamBitCombination c;
    c.sign = QString::fromLatin1(sign);
    c.value = value;
    c.shortText.insert(En, QString::fromUtf8(english));
    c.shortText.insert(Ru, QString::fromUtf8(russian));
    c.fullText.insert(En, QStringLiteral("Feed pump: %1").arg(QString::fromUtf8(english)));
    c.fullText.insert(Ru, QStringLiteral("Питательный насос: %1").arg(QString::fromUtf8(russian)));
    return c;
}

// A discrete parameter: the operating mode of a pump, told by an ordered list of rules.
ParamInfo pumpMode()
{
    ParamInfo info = namedDescription(102, "BOILER1.P1.MODE", 2, "Feed pump mode", "Режим насоса");
    info.enumeration.combinations << rule("==", 0, "Stopped", "Остановлен")
                                  << rule("==", 1, "Running", "Работает")
                                  << rule(">", 1, "Maintenance", "Обслуживание")
                                  << rule("!=", 0, "Unknown", "Неизвестно");
    info.enumeration.hasCombinations = true;
    return info;
}

// The status word of the pump: four described bits and one whole-word fault.
ParamInfo pumpStatus()
{
    ParamInfo info = namedDescription(103, "BOILER1.P1.STATUS", 2, "Feed pump status", "Состояние насоса");
    info.bitField.enabled = 1;
    info.bitField.attributes.insert(0, describedBit("Motor on", "Двигатель включён", 16, "On", "Вкл"));
    info.bitField.attributes.insert(1, describedBit("Overload", "Перегрузка", 4096, "Overloaded", "Перегружен"));
    info.bitField.attributes.insert(2, describedBit("Low suction", "Низкое давление всаса", 4096, "Too low", "Мало"));
    info.bitField.attributes.insert(3, describedBit("Local control", "Местное управление", 16, "Local", "Местное"));
    info.bitField.combinations.insert(0x6, wholeWordFault("Protective trip", "Защитное отключение"));
    return info;
}

// A threshold as the operator reads it: its value, or "absent" when the description has none.
QString setpointText(double value, bool present)
{
    return present ? QString::number(value) : QStringLiteral("absent");
}

QString unitText(const ParamInfo &info, const QString &language)
{
    const QString unit = info.getUnit(language);
    return unit.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(unit);
}

void printBits(QTextStream &out, const ParamBitField &field, unsigned int word, const QString &language,
               int state)
{
    bool wholeWord = false;
    const QHash<int, ParamBitInfo> bits = field.fullWord(word, language, state, true, &wholeWord);
    QList<int> keys = bits.keys();
    std::sort(keys.begin(), keys.end());
    out << QStringLiteral("    word 0x%1, parameter state %2, %3:%4\n")
               .arg(word, 2, 16, QLatin1Char('0'))
               .arg(state)
               .arg(language)
               .arg(wholeWord ? QStringLiteral(" one whole-word combination") : QString());
    for (int key : keys) {
        const ParamBitInfo info = bits.value(key);
        out << QStringLiteral("      %1  %2  value %3  state %4  %5\n")
                   .arg(wholeWord ? QStringLiteral("word") : QStringLiteral("bit %1").arg(key), -6)
                   .arg(info.name, -24)
                   .arg(info.value)
                   .arg(info.state, 4)
                   .arg(info.text);
    }
}

} // namespace

void demoDescriptions(QTextStream &out)
{
    out << "== Parameter descriptions: names, units, enumerations and status words\n\n";

    // The server writes its descriptions back to back; the client reads one record each.
    QByteArray wire;
    {
        QContainerPacket server(&wire);
        pressure().write(server);
        pumpMode().write(server);
        pumpStatus().write(server);
    }
    QList<ParamInfo> described;
    QContainerPacket client(wire);
    for (int i = 0; i < 3; ++i) {
        ParamInfo info;
        if (info.read(client))
            described.append(info);
    }
    out << QStringLiteral("  %1 descriptions arrived in %2 bytes.\n\n").arg(described.size()).arg(wire.size());
    if (described.size() != 3)
        return;
    const ParamInfo &drum = described[0];
    const ParamInfo &mode = described[1];
    const ParamInfo &status = described[2];

    out << "  Names and units in two languages:\n";
    for (const ParamInfo &info : described) {
        out << QStringLiteral("    %1  %2%3  /  %4%5\n")
                   .arg(info.code, -18)
                   .arg(info.getName(En), unitText(info, En), info.getName(Ru), unitText(info, Ru));
    }

    bool ok = false;
    out << QStringLiteral("\n  Scale of %1: %2 .. %3 %4\n")
               .arg(drum.code)
               .arg(drum.limits.lo)
               .arg(drum.limits.hi)
               .arg(drum.getUnit(En));
    out << "  Alarm thresholds (absent ones are not the same as 0):\n";
    const double lowEmergency = drum.setpoints.getLowEmergencySetpoint(&ok);
    out << QStringLiteral("    low emergency  %1\n").arg(setpointText(lowEmergency, ok));
    const double lowWarning = drum.setpoints.getLowWarningSetpoint(&ok);
    out << QStringLiteral("    low warning    %1\n").arg(setpointText(lowWarning, ok));
    const double upWarning = drum.setpoints.getUpWarningSetpoint(&ok);
    out << QStringLiteral("    up warning     %1\n").arg(setpointText(upWarning, ok));
    const double upEmergency = drum.setpoints.getUpEmergencySetpoint(&ok);
    out << QStringLiteral("    up emergency   %1\n").arg(setpointText(upEmergency, ok));

    out << QStringLiteral("\n  Enumeration text of %1 (rules ==0, ==1, >1, !=0, walked in order):\n").arg(mode.code);
    for (long long value : {0LL, 1LL, 5LL, -3LL}) {
        out << QStringLiteral("    %1  %2  %3  %4\n")
                   .arg(value, 3)
                   .arg(mode.enumeration.shortValue(value, En), -12)
                   .arg(mode.enumeration.shortValue(value, Ru), -14)
                   .arg(mode.enumeration.fullValue(value, En));
    }
    out << QStringLiteral("    a language the rules lack: \"%1\"\n").arg(mode.enumeration.shortValue(1, QStringLiteral("de")));

    out << QStringLiteral("\n  Status word of %1, bit by bit:\n").arg(status.code);
    printBits(out, status.bitField, 0x9, En, 8);
    printBits(out, status.bitField, 0x9, Ru, 8);
    out << "  The same word while the parameter has no data:\n";
    printBits(out, status.bitField, 0x9, En, 2);
    out << "  A word that is a known fault combination as a whole:\n";
    printBits(out, status.bitField, 0x6, En, 8);
    printBits(out, status.bitField, 0x6, Ru, 8);
    bool match = false;
    const ParamBitInfo combination = ParamBitField::getCombination(0x6, &status, En, &match);
    out << QStringLiteral("    getCombination(0x6): %1 \"%2\", state %3\n")
               .arg(match ? QStringLiteral("match") : QStringLiteral("no match"), combination.name)
               .arg(combination.state);
    const ParamBitInfo none = ParamBitField::getCombination(0x9, &status, En, &match);
    out << QStringLiteral("    getCombination(0x9): %1 \"%2\"\n")
               .arg(match ? QStringLiteral("match") : QStringLiteral("no match"), none.name);
    out << "\n";
}
