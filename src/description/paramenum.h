#ifndef PARAMENUM_H
#define PARAMENUM_H

#include <QtCore/QList>
#include <QtCore/QString>

#include "parambitcombination.h"
#include "telorparams5_export.h"

class QContainerPacket;

/**
 * @brief Turns a numeric value of a parameter into display text by an ordered list of
 * rules.
 *
 * Each rule (a ParamBitCombination) compares the value with its constant by its sign and
 * gives a short and a full text by language. The order of `combinations` is significant;
 * see shortValue() for the walk.
 *
 * A plain copyable record. Wire form: the number of rules as a signed 32-bit count, then
 * each rule in its own wire form, in list order. `hasCombinations` does not travel.
 */
class TELORPARAMS5_EXPORT ParamEnum
{
public:
    /** No rules; `hasCombinations` false. */
    ParamEnum();

    /** Writes the wire form. */
    void write(QContainerPacket &packet) const;

    /**
     * Reads the count as a signed 32-bit number and appends that many rules to
     * `combinations`, which is not cleared first: reading twice into one object
     * accumulates. A count of 0 or below reads no rule. `hasCombinations` then tells
     * whether the list has entries. Returns true.
     *
     * Bad input: a count larger than the data holds reads the rules that are there and
     * then one more, read from the end of the data as zeros with an empty sign, and stops.
     * Every further rule would be the same empty rule, and since the walk of shortValue()
     * and fullValue() ends at the first rule with an unknown sign, the texts are the same
     * as if every announced rule had been appended.
     */
    bool read(QContainerPacket &packet);

    /**
     * The short text of @p value in @p language.
     *
     * The rules are walked in list order; the first test that holds decides:
     * - "==": a rule whose value equals @p value gives its text;
     * - "!=": the rule is remembered (a later "!=" replaces it) and the walk goes on;
     * - ">" (also with white space around it): @p value greater than the rule's value;
     * - ">=": greater or equal;
     * - "<" (also with white space around it): less;
     * - "<=": less or equal;
     * - any other sign, null and empty included, ends the walk with "Invalid sign "
     *   followed by the sign as it stands; rules behind it are never looked at.
     *
     * When no rule decided, a remembered "!=" rule whose value differs from @p value
     * gives its text; otherwise the result is @p value in decimal. Numbers compare as
     * signed 64-bit values; signs compare exactly and case-sensitively.
     *
     * A rule's text is the entry for @p language in its hash, even when that entry is
     * empty; a hash without that key gives "No translation". There is no fallback to
     * another language.
     */
    QString shortValue(long long value, QString language) const;

    /** Like shortValue(), with the full texts of the rules. */
    QString fullValue(long long value, QString language) const;

    /** The rules, in the order in which they travel. */
    QList<ParamBitCombination> combinations;
    /** Whether `combinations` has entries; worked out at the end of read(). */
    bool hasCombinations;
};

#endif // PARAMENUM_H
