#ifndef DESCRIPTIONMIX_H
#define DESCRIPTIONMIX_H

// The parameter descriptions that the description and list benchmarks mix into their
// realistic loads (scalars with limits and setpoints, enumerations, status words and
// fields of scalar cells), and the bare QDataStream reader of one description's wire form
// that their baselines use. Each program builds its own mix from these records.

#include "paraminfo.h"

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

#include <benchmark/benchmark.h>

namespace descriptionmix {

inline const QString En = QStringLiteral("en");
inline const QString Ru = QStringLiteral("ru");

/**
 * How much text the enumerations and status words carry. Full: rules with short and
 * full texts, bit states and the trip combination in both languages. Lean: rules with
 * short texts only, bit states and the trip combination in English only.
 */
enum class TextDetail { Lean, Full };

inline QXmlTranslation twoLanguages(const QString &english, const QString &russian)
{
    QXmlTranslation t(english);
    t.setTranslation(russian, Ru);
    return t;
}

/** A measurement with a name and unit in two languages, a scale and four setpoints. */
inline ParamInfo scalar(unsigned int id, int type = 1)
{
    ParamInfo info;
    info.id = id;
    info.code = QStringLiteral("PLANT.UNIT%1.AI%2").arg(id / 100).arg(id);
    info.type = type;
    info.name = twoLanguages(QStringLiteral("Outlet temperature %1").arg(id),
                             QStringLiteral("Температура на выходе %1").arg(id));
    info.unit = twoLanguages(QStringLiteral("degC"), QStringLiteral("°C"));
    info.limits.enabled = 1;
    info.limits.lo = -50.0;
    info.limits.hi = 150.0;
    info.setpoints.setLowEmergencySetpoint(-40.0);
    info.setpoints.setLowWarningSetpoint(-20.0);
    info.setpoints.setUpWarningSetpoint(110.0);
    info.setpoints.setUpEmergencySetpoint(130.0);
    info.precision = 1;
    return info;
}

/** A pump's operating mode: four rules, one for each value from 0 to 3. */
inline ParamInfo enumeration(unsigned int id, TextDetail detail)
{
    ParamInfo info = scalar(id, 2);
    info.limits = ParamLimits();
    info.setpoints = ParamSetpoints();
    const char *english[] = {"Stopped", "Starting", "Running", "Tripped"};
    const char *russian[] = {"Остановлен", "Пуск", "Работа", "Авария"};
    for (int k = 0; k < 4; ++k) {
        ParamBitCombination rule;
        rule.value = k;
        rule.sign = QStringLiteral("==");
        rule.shortText.insert(En, QString::fromUtf8(english[k]));
        rule.shortText.insert(Ru, QString::fromUtf8(russian[k]));
        if (detail == TextDetail::Full) {
            rule.fullText.insert(En, QStringLiteral("Pump %1").arg(QString::fromUtf8(english[k])));
            rule.fullText.insert(Ru, QStringLiteral("Насос: %1").arg(QString::fromUtf8(russian[k])));
        }
        info.enumeration.combinations.append(rule);
    }
    info.enumeration.hasCombinations = true;
    return info;
}

/**
 * A status word of @p bits described bits, each with a text for its set state (every
 * fourth one an alarm), and one whole-word trip combination, 0x11.
 */
inline ParamInfo statusWord(unsigned int id, int bits, TextDetail detail)
{
    ParamInfo info = scalar(id, 2);
    info.limits = ParamLimits();
    info.setpoints = ParamSetpoints();
    info.bitField.enabled = 1;
    for (int bit = 0; bit < bits; ++bit) {
        ParamBitField::ParamBitAttributes attributes;
        attributes.name.insert(En, QStringLiteral("Condition %1").arg(bit));
        attributes.name.insert(Ru, QStringLiteral("Условие %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState on;
        on.state = bit % 4 == 0 ? 4096 : 16;
        on.text.insert(En, QStringLiteral("Active"));
        if (detail == TextDetail::Full)
            on.text.insert(Ru, QStringLiteral("Активно"));
        attributes.states.insert(1, on);
        info.bitField.attributes.insert(bit, attributes);
    }
    ParamBitCombination trip;
    trip.sign = QStringLiteral("==");
    trip.state = 4096;
    trip.shortText.insert(En, QStringLiteral("Trip"));
    if (detail == TextDetail::Full)
        trip.shortText.insert(Ru, QStringLiteral("Отключение"));
    info.bitField.combinations.insert(0x11, trip);
    return info;
}

/** A field of @p rows rows of 4 scalar cells, the cells numbered from id * 100. */
inline ParamInfo field(unsigned int id, int rows)
{
    ParamInfo info = scalar(id, 4);
    info.limits = ParamLimits();
    info.setpoints = ParamSetpoints();
    info.rows = rows;
    info.columns = 4;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < 4; ++c) {
            ParamFieldElementInfo cell;
            cell.row = r;
            cell.column = c;
            cell.info = scalar(id * 100 + unsigned(r * 4 + c));
            info.elements.append(cell);
        }
    }
    return info;
}

/** The wire form of one description, read with bare QDataStream calls into locals. */
inline void bareReadDescription(QDataStream &s)
{
    quint32 id, elementCount, tableCount;
    qint32 type, rows, columns, count;
    qint8 option, precision, format, flag, reserved;
    QString code, code2, code3, english, sign, extraText;
    QHash<QString, QString> texts, moreTexts;
    double lo, hi;
    s >> id >> code >> code2 >> code3 >> type;
    for (int k = 0; k < 3; ++k)
        s >> english >> texts;
    s >> rows >> columns >> option >> precision >> format;
    s >> flag;
    if (flag)
        s >> lo >> hi;
    s >> count;
    for (qint32 i = 0; i < count; ++i) {
        qint64 value;
        qint32 ruleState;
        s >> value >> ruleState >> texts >> moreTexts >> sign;
    }
    s >> flag >> reserved;
    if (flag) {
        s >> count;
        for (qint32 i = 0; i < count; ++i) {
            qint32 bit, states;
            s >> bit >> texts >> states;
            for (qint32 k = 0; k < states; ++k) {
                qint32 key, bitState;
                s >> key >> bitState >> moreTexts;
            }
        }
        s >> count;
        for (qint32 i = 0; i < count; ++i) {
            qint32 key, ruleState;
            qint64 value;
            s >> key >> value >> ruleState >> texts >> moreTexts >> sign;
        }
    }
    s >> elementCount;
    for (quint32 i = 0; i < elementCount; ++i) {
        qint32 row, column;
        s >> row >> column;
        bareReadDescription(s);
    }
    s >> tableCount;
    for (quint32 i = 0; i < tableCount; ++i) {
        double key;
        quint32 value;
        s >> key >> value;
    }
    for (int k = 0; k < 4; ++k) {
        s >> flag;
        if (flag)
            s >> lo;
    }
    QList<quint32> ids;
    s >> ids >> extraText;
    benchmark::DoNotOptimize(id);
}

} // namespace descriptionmix

#endif // DESCRIPTIONMIX_H
