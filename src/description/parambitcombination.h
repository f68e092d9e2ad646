#ifndef PARAMBITCOMBINATION_H
#define PARAMBITCOMBINATION_H

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include "telorparams5_export.h"
#include "translationitemnew.h"

class QContainerPacket;

/**
 * @brief One rule of an enumeration, or one named whole-word combination of a bit field.
 *
 * In an enumeration (ParamEnum) the parameter's value is compared with `value` by `sign`,
 * and a matching rule gives its short or full text. In a bit field (ParamBitField) the
 * record is keyed by the word it stands for; there it applies when `sign` is "==" and
 * `state` is 4096, and `shortText` names the combination.
 *
 * A plain copyable record. Wire form: `value` as 64 bits, `state` as 32 bits, `shortText`
 * and `fullText` as Qt's QHash<QString, QString>, and `sign` last as a QString, which is
 * not the order of the members.
 */
class TELORPARAMS5_EXPORT ParamBitCombination
{
public:
    /** Writes the wire form. */
    void write(QContainerPacket &packet) const;
    /**
     * Reads the wire form into the members, replacing them. Always returns true; data
     * that runs out reads as zeros and empty texts.
     */
    bool read(QContainerPacket &packet);

    /** The constant that the parameter's value is compared against. */
    qint64 value = 0;
    /** State code of the rule; an enumeration carries it and never looks at it. */
    int state = 0;
    /** Comparison sign: one of "==", "!=", ">", ">=", "<", "<=". Null by default. */
    QString sign;
    /** Short text by language key. */
    TranslationItemNew shortText;
    /** Full text by language key. */
    TranslationItemNew fullText;
};

#endif // PARAMBITCOMBINATION_H
