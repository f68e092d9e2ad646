// What a bit-change event shows: ParamBitField::getNewBitWord.

#include "eventstruct.h"
#include "parambitfield.h"
#include "paraminfo.h"

#include <QtCore/QSet>

#include <algorithm>

namespace {

const int StateNoData = 2;
const int StateGood = 8;
const int StateSet = 16;
const int StateFault = 4096;

// The named values of a bit-change event.
QString oldValueKey()
{
    return QStringLiteral("#old_bit_value");
}

QString newValueKey()
{
    return QStringLiteral("#new_bit_value");
}

QString oldStateKey()
{
    return QStringLiteral("#old_bit_state");
}

QString newStateKey()
{
    return QStringLiteral("#new_bit_state");
}

// A state of 0 or 2 would make fullWord() describe the word as unknown or invalid; a
// change is always told by the bits themselves.
int wordState(int state)
{
    return std::max(state, StateGood);
}

} // namespace

QHash<unsigned int, ParamBitInfo> ParamBitField::getNewBitWord(const EventStruct &event, const ParamInfo *info,
                                                               QString language)
{
    const QHash<QString, QVariant> &values = event.parameters;
    const unsigned int oldWord = values.value(oldValueKey()).toUInt();
    const unsigned int newWord = values.value(newValueKey()).toUInt();

    bool oldFound = false;
    bool newFound = false;
    ParamBitInfo oldCombination = getCombination(oldWord, info, language, &oldFound);
    const ParamBitInfo newCombination = getCombination(newWord, info, language, &newFound);

    QHash<unsigned int, ParamBitInfo> result;

    if (oldFound && newFound) {
        if (oldCombination.value == newCombination.value)
            return result;
        // The old fault shows as finished.
        oldCombination.state = StateGood;
        result.insert(unsigned(oldCombination.value), oldCombination);
        result.insert(unsigned(newCombination.value), newCombination);
        return result;
    }

    // Without a description there are no bits: the records below come out empty.
    static const ParamBitField noBits;
    const ParamBitField &bitField = info ? info->bitField : noBits;

    if (oldFound) {
        // A fault combination has ended and the word is a list of bits again: the finished
        // combination, and beside it every bit that is not simply good.
        oldCombination.state = StateGood;
        result.insert(unsigned(oldCombination.value), oldCombination);
        const int newState = values.value(newStateKey()).toInt();
        const QHash<int, ParamBitInfo> newBits = bitField.fullWord(newWord, language, wordState(newState), true, nullptr);
        const QList<int> bits = newBits.keys();
        for (int bit : bits) {
            const ParamBitInfo &bitInfo = *newBits.constFind(bit);
            if (bitInfo.state != StateGood)
                result.insert(unsigned(bit), bitInfo);
        }
        return result;
    }

    if (newFound) {
        // The combination stands for the whole word; the bits are not looked at.
        result.insert(unsigned(newCombination.value), newCombination);
        return result;
    }

    const int oldState = values.value(oldStateKey()).toInt();
    const int newState = values.value(newStateKey()).toInt();
    const QHash<int, ParamBitInfo> oldBits = bitField.fullWord(oldWord, language, wordState(oldState), true, nullptr);
    const QHash<int, ParamBitInfo> newBits = bitField.fullWord(newWord, language, wordState(newState), true, nullptr);

    QList<int> keys = oldBits.keys();
    QSet<int> listed(keys.cbegin(), keys.cend());
    const QList<int> newKeys = newBits.keys();
    for (int key : newKeys) {
        if (!listed.contains(key)) {
            listed.insert(key);
            keys.append(key);
        }
    }

    for (int key : qAsConst(keys)) {
        const auto newBit = newBits.constFind(key);
        if (newBit == newBits.constEnd())
            continue; // a bit of the old word only: nothing to show
        const auto oldBit = oldBits.constFind(key);
        if (oldBit == oldBits.constEnd()) {
            result.insert(unsigned(key), *newBit);
        } else if (oldState == StateNoData) {
            // Without data before, nothing can be said about a change: a bit counts by its
            // new state alone.
            if (newBit->state == StateSet || newBit->state == StateFault)
                result.insert(unsigned(key), *newBit);
        } else if (oldBit->value != newBit->value) {
            result.insert(unsigned(key), *newBit);
        }
    }
    return result;
}
