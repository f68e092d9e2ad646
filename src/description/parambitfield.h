#ifndef PARAMBITFIELD_H
#define PARAMBITFIELD_H

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include "parambitcombination.h"
#include "telorparams5_export.h"
#include "translationitemnew.h"

class EventStruct;
class ParamInfo;
class QContainerPacket;

/**
 * @brief The display record of one bit of a status word, or of one whole-word
 * combination. A result only; it never travels.
 */
struct TELORPARAMS5_EXPORT ParamBitInfo
{
    /** For a bit: its value, 1 or 0. For a combination: the word value. */
    int value = 0;
    /** State code: 0 unknown, 2 no data, 8 good, 4096 fault, or a configured code. */
    int state = 0;
    /** Name of the bit or of the combination in the language asked for. */
    QString name;
    /** Text of the bit's value. */
    QString text;
};

/**
 * @brief The description of a 32-bit status word: a name and state texts for each bit,
 * and named whole-word combinations.
 *
 * A plain copyable record. `attributes` is keyed by bit number (0 to 31 in practice; a
 * bit number counts modulo 32 when a word is tested). `combinations` is keyed by the word
 * that a combination stands for; a combination applies when its sign is "==" and its
 * state is 4096, and its own `value` plays no part here.
 *
 * Wire form: `enabled` and `reserved` as one byte each; then, when `enabled` is not 0,
 * the number of `attributes` entries as 32 bits followed by each bit number (32 bits) and
 * its ParamBitAttributes, and the number of `combinations` entries followed by each key
 * (32 bits) and its ParamBitCombination. The entries go out in the order of
 * QHash::keys(), which has no meaning.
 */
class TELORPARAMS5_EXPORT ParamBitField
{
public:
    /** @brief What one bit means: its name and what each of its two values means. */
    class TELORPARAMS5_EXPORT ParamBitAttributes
    {
    public:
        /** @brief What one value of one bit means. */
        class TELORPARAMS5_EXPORT ParamBitState
        {
        public:
            /** Writes `state` as 32 bits, then `text` as Qt's QHash<QString, QString>. */
            void write(QContainerPacket &packet) const;
            /** Reads the wire form, replacing both members. Always returns true. */
            bool read(QContainerPacket &packet);

            /** State code that the bit has when it takes this value. */
            int state = 0;
            /** Text of this value by language key. */
            TranslationItemNew text;
        };

        /**
         * Writes `name` as Qt's QHash<QString, QString>, the number of `states` entries as
         * 32 bits, then each key (32 bits) and its ParamBitState.
         */
        void write(QContainerPacket &packet) const;
        /**
         * Replaces `name`, reads the count as a signed 32-bit number and, when it is 1 or
         * more, inserts that many key and state pairs in `states`; a repeated key keeps the
         * later entry, and entries already there stay. Always returns true.
         */
        bool read(QContainerPacket &packet);

        /** Name of the bit by language key. */
        TranslationItemNew name;
        /** The meaning of each value of the bit, keyed by the value, 0 or 1. */
        QHash<int, ParamBitState> states;
    };

    /** Not a status word: `enabled` 0, `reserved` 0, both tables empty. */
    ParamBitField();

    /** Writes the wire form. Any `enabled` other than 0 writes the tables. */
    void write(QContainerPacket &packet) const;

    /**
     * Reads `enabled` and `reserved`. The flag byte is judged as unsigned: 0 returns true
     * at once; above 1 returns false at once, with the stream right behind the two bytes;
     * 1 reads both tables and returns true. The tables are filled by QHash::insert, so a
     * repeated key keeps the later entry, and nothing is cleared first.
     *
     * Both table counts are read as signed 32-bit numbers; a count below 1 reads no entry.
     * A count larger than the data holds reads what is there and stops, with the result
     * that reading every announced entry would have had.
     */
    bool read(QContainerPacket &packet);

    /**
     * Describes a live status word.
     *
     * @p state is the state of the parameter that holds the word. When it is 0 or 2 the
     * word means nothing: every described bit is listed with its value, its name, that
     * state and the text "Unknown" (0) or "Invalid" (2), translated through QObject::tr.
     *
     * Otherwise, when @p useCombinations is true, a combination whose key equals @p word,
     * whose sign is "==" and whose state is 4096 is the whole answer: one record keyed by
     * the word, with the word as value, state 4096, the combination's short text in
     * @p language as name (empty when it has none) and an empty text; @p ok is then set.
     *
     * Otherwise every described bit is listed under its bit number: its value (bit number
     * modulo 32 of @p word), its name in @p language ("No translation" when it has none),
     * and the state and text that its `states` table gives for that value. A value
     * without an entry has state 8 (0) or 4096 (1). A bit whose text is empty reads "OK"
     * when its value is 0 and "Fault" when it is 1, whatever its state.
     *
     * Bits that `attributes` does not describe are never listed. @p ok may be null; it is
     * set to false first and to true only for a combination.
     */
    QHash<int, ParamBitInfo> fullWord(unsigned int word, QString language, int state, bool useCombinations,
                                      bool *ok) const;

    /**
     * The whole-word combination of @p word in the bit field of @p info, whatever the
     * parameter's state: a combination keyed by @p word with the sign "==" and the state
     * 4096 gives a record with the word as value, state 4096 and the combination's short
     * text in @p language as name (empty when it has none), and sets @p ok.
     *
     * Without a match, or when @p info is null or has no combinations, the record has
     * value 0, state 0 and the name "No translation" translated through QObject::tr.
     * @p ok may be null; it is set to false first.
     */
    static ParamBitInfo getCombination(unsigned int word, const ParamInfo *info, QString language, bool *ok);

    /**
     * What a bit-change event has to show: the bits that changed, or the whole-word fault
     * combinations that began and ended.
     *
     * The event's `parameters` give the old and new word ("#old_bit_value",
     * "#new_bit_value", read with QVariant::toUInt) and the old and new state of the
     * parameter ("#old_bit_state", "#new_bit_state", read with QVariant::toInt); a
     * missing key reads as 0. The description is the bit field of @p info, and texts are
     * taken in @p language.
     *
     * - Old and new word both a fault combination (see getCombination()): nothing when it
     *   is the same one; otherwise the old one with state 8 (ended) and the new one.
     * - Only the old word a combination: the old one with state 8, and every bit of the
     *   new word, as fullWord() describes it with the new state raised to at least 8,
     *   whose state is not 8. A bit number equal to the old word replaces its record.
     * - Only the new word a combination: that one alone.
     * - Neither: both words are described by fullWord(), each with its state raised to at
     *   least 8, and the records of the new word are listed for the bits that changed
     *   value. When the old state is exactly 2 (no data), a bit is listed instead when its
     *   new state is 16 or 4096, changed or not.
     *
     * Records are keyed by bit number, and combinations by their word value, in one
     * hash. An empty result means there is nothing to show; an event without the four
     * keys shows nothing unless 0 is a fault combination. A null @p info describes no
     * bits and no combinations, so the result is then empty.
     */
    static QHash<unsigned int, ParamBitInfo> getNewBitWord(const EventStruct &event, const ParamInfo *info,
                                                           QString language);

    /** 0: no status word, and no tables travel. 1: the tables are there. */
    qint8 enabled;
    /** A byte that travels next to `enabled`; carried unchanged and given no meaning. */
    qint8 reserved;
    /** The description of each bit, keyed by bit number. */
    QHash<int, ParamBitAttributes> attributes;
    /** Named whole-word combinations, keyed by the word they stand for. */
    QHash<int, ParamBitCombination> combinations;
};

#endif // PARAMBITFIELD_H
