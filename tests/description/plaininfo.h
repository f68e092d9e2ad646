#ifndef PLAININFO_H
#define PLAININFO_H

// An independent writer of a parameter description in its wire order, built from plain
// QDataStream writes of the record's fields, and a sample description that uses every
// part of the record.

#include "paraminfo.h"

#include <QtCore/QDataStream>

namespace desctest {

inline void plainTextTable(QDataStream &s, const QHash<QString, QString> &texts)
{
    s << texts;
}

inline void plainCombination(QDataStream &s, const ParamBitCombination &c)
{
    s << qint64(c.value) << qint32(c.state);
    plainTextTable(s, c.shortText);
    plainTextTable(s, c.fullText);
    s << c.sign;
}

inline void plainBitField(QDataStream &s, const ParamBitField &f)
{
    s << qint8(f.enabled) << qint8(f.reserved);
    if (f.enabled == 0)
        return;
    const QList<int> bits = f.attributes.keys();
    s << qint32(bits.size());
    for (int bit : bits) {
        const ParamBitField::ParamBitAttributes a = f.attributes.value(bit);
        s << qint32(bit);
        plainTextTable(s, a.name);
        const QList<int> values = a.states.keys();
        s << qint32(values.size());
        for (int value : values) {
            s << qint32(value) << qint32(a.states.value(value).state);
            plainTextTable(s, a.states.value(value).text);
        }
    }
    const QList<int> words = f.combinations.keys();
    s << qint32(words.size());
    for (int word : words) {
        s << qint32(word);
        plainCombination(s, f.combinations.value(word));
    }
}

inline void plainSetpoint(QDataStream &s, bool present, double value)
{
    s << qint8(present ? 1 : 0);
    if (present)
        s << value;
}

inline void plainInfo(QDataStream &s, const ParamInfo &i)
{
    s << quint32(i.id) << i.code << i.code2 << i.code3 << qint32(i.type);
    s << i.name << i.unitX << i.unit;
    s << qint32(i.rows) << qint32(i.columns);
    s << qint8(i.option ? 1 : 0) << qint8(i.precision) << qint8(i.format);
    s << qint8(i.limits.enabled);
    if (i.limits.enabled != 0)
        s << i.limits.lo << i.limits.hi;
    s << qint32(i.enumeration.combinations.size());
    for (const ParamBitCombination &c : i.enumeration.combinations)
        plainCombination(s, c);
    plainBitField(s, i.bitField);
    s << qint32(i.elements.size());
    for (const ParamFieldElementInfo &e : i.elements) {
        s << qint32(e.row) << qint32(e.column);
        plainInfo(s, e.info);
    }
    s << qint32(i.valueTable.size());
    for (auto it = i.valueTable.constBegin(); it != i.valueTable.constEnd(); ++it)
        s << it.key() << qint32(it.value());
    bool ok = false;
    double v = i.setpoints.getLowEmergencySetpoint(&ok);
    plainSetpoint(s, ok, v);
    v = i.setpoints.getLowWarningSetpoint(&ok);
    plainSetpoint(s, ok, v);
    v = i.setpoints.getUpWarningSetpoint(&ok);
    plainSetpoint(s, ok, v);
    v = i.setpoints.getUpEmergencySetpoint(&ok);
    plainSetpoint(s, ok, v);
    s << i.idList << i.extraText;
}

inline QXmlTranslation translation(const QString &english, const QString &russian)
{
    QXmlTranslation t(english);
    t.setTranslation(russian, QStringLiteral("ru"));
    return t;
}

/** A scalar with limits, setpoints, an enumeration and a value table. */
inline ParamInfo sampleScalar(unsigned int id)
{
    ParamInfo i;
    i.id = id;
    i.code = QStringLiteral("TT%1").arg(id);
    i.code2 = QStringLiteral("second");
    i.type = 2;
    i.name = translation(QStringLiteral("Valve position"), QStringLiteral("Положение клапана"));
    i.unit = translation(QStringLiteral("%"), QStringLiteral("%"));
    i.limits.enabled = 1;
    i.limits.lo = 0.0;
    i.limits.hi = 100.0;
    i.setpoints.setLowWarningSetpoint(5.0);
    i.setpoints.setUpEmergencySetpoint(95.0);
    ParamBitCombination closed;
    closed.sign = QStringLiteral("==");
    closed.value = 0;
    closed.shortText.insert(QStringLiteral("en"), QStringLiteral("Closed"));
    closed.shortText.insert(QStringLiteral("ru"), QStringLiteral("Закрыт"));
    ParamBitCombination open = closed;
    open.sign = QStringLiteral(">");
    open.shortText.insert(QStringLiteral("en"), QStringLiteral("Open"));
    open.shortText.insert(QStringLiteral("ru"), QStringLiteral("Открыт"));
    i.enumeration.combinations << closed << open;
    i.enumeration.hasCombinations = true;
    i.valueTable.insert(2.5, 7);
    i.valueTable.insert(-1.0, 3);
    i.option = true;
    i.precision = 2;
    i.format = 'g';
    i.idList << 11 << 12 << 0xFFFFFFFFu;
    i.extraText = QStringLiteral("extra");
    return i;
}

/** A status word with two described bits and one fault combination. */
inline ParamInfo sampleStatusWord(unsigned int id)
{
    ParamInfo i;
    i.id = id;
    i.code = QStringLiteral("SW%1").arg(id);
    i.type = 2;
    i.bitField.enabled = 1;
    for (int bit : {0, 5}) {
        ParamBitField::ParamBitAttributes a;
        a.name.insert(QStringLiteral("en"), QStringLiteral("Bit %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState on;
        on.state = 4096;
        on.text.insert(QStringLiteral("en"), QStringLiteral("Alarm"));
        a.states.insert(1, on);
        i.bitField.attributes.insert(bit, a);
    }
    ParamBitCombination trip;
    trip.sign = QStringLiteral("==");
    trip.state = 4096;
    trip.shortText.insert(QStringLiteral("en"), QStringLiteral("Trip"));
    i.bitField.combinations.insert(0x21, trip);
    return i;
}

/** A field parameter of @p rows x @p columns double cells. */
inline ParamInfo sampleField(unsigned int id, int rows, int columns)
{
    ParamInfo i;
    i.id = id;
    i.code = QStringLiteral("FLD%1").arg(id);
    i.type = 4;
    i.rows = rows;
    i.columns = columns;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c) {
            ParamFieldElementInfo e;
            e.row = r;
            e.column = c;
            e.info.id = id * 100 + unsigned(r * columns + c);
            e.info.code = QStringLiteral("FLD%1.%2.%3").arg(id).arg(r).arg(c);
            e.info.type = 1;
            e.info.unit = QXmlTranslation(QStringLiteral("bar"));
            i.elements.append(e);
        }
    }
    return i;
}

} // namespace desctest

#endif // PLAININFO_H
