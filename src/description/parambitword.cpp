// The text of a live status word: ParamBitField::fullWord and ParamBitField::getCombination.

#include "parambitfield.h"
#include "paraminfo.h"

#include <QtCore/QObject>

namespace {

const int StateUnknown = 0;
const int StateNoData = 2;
const int StateGood = 8;
const int StateFault = 4096;

// Bit numbers count modulo 32: bit 32 tests bit 0 of the word, and a negative bit
// number its remainder in 0..31.
int bitValue(unsigned int word, int bit)
{
    return int((word >> (unsigned(bit) & 31u)) & 1u);
}

// A combination stands for the word equal to its key when its sign is "==" and its
// state is that of a fault; its own value plays no part.
bool isFaultCombination(int key, const ParamBitCombination &combination, unsigned int word)
{
    return combination.sign == QLatin1String("==") && combination.state == StateFault
        && unsigned(key) == word;
}

// Every described bit with its value, its name and the fixed state and text that a word
// without meaning gets.
QHash<int, ParamBitInfo> meaninglessWord(const QHash<int, ParamBitField::ParamBitAttributes> &attributes,
                                          unsigned int word, const QString &language, int state,
                                          const QString &text)
{
    QHash<int, ParamBitInfo> result;
    const QList<int> bits = attributes.keys();
    for (int bit : bits) {
        ParamBitInfo info;
        info.value = bitValue(word, bit);
        info.name = attributes.constFind(bit)->name.value(language, QStringLiteral("No translation"));
        info.state = state;
        info.text = text;
        result.insert(bit, info);
    }
    return result;
}

} // namespace

QHash<int, ParamBitInfo> ParamBitField::fullWord(unsigned int word, QString language, int state,
                                                 bool useCombinations, bool *ok) const
{
    if (ok)
        *ok = false;

    if (state == StateUnknown)
        return meaninglessWord(attributes, word, language, StateUnknown, QObject::tr("Unknown"));
    if (state == StateNoData)
        return meaninglessWord(attributes, word, language, StateNoData, QObject::tr("Invalid"));

    QHash<int, ParamBitInfo> result;
    if (useCombinations) {
        const QList<int> keys = combinations.keys();
        for (int key : keys) {
            const ParamBitCombination &combination = *combinations.constFind(key);
            if (!isFaultCombination(key, combination, word))
                continue;
            ParamBitInfo info;
            info.value = key;
            info.state = combination.state;
            info.name = combination.shortText.value(language);
            result.insert(key, info);
            if (ok)
                *ok = true;
            return result;
        }
    }

    // The two fallback texts are translated once for the whole word.
    QString okText, faultText;
    const QList<int> bits = attributes.keys();
    for (int bit : bits) {
        const ParamBitAttributes &bitAttributes = *attributes.constFind(bit);
        ParamBitInfo info;
        info.value = bitValue(word, bit);
        info.name = bitAttributes.name.value(language, QStringLiteral("No translation"));
        const auto configured = bitAttributes.states.constFind(info.value);
        if (configured != bitAttributes.states.constEnd()) {
            info.state = configured->state;
            info.text = configured->text.value(language);
        } else {
            info.state = info.value == 0 ? StateGood : StateFault;
        }
        // The fallback text follows the bit's value alone, never its state.
        if (info.text.isEmpty()) {
            if (info.value == 0) {
                if (okText.isNull())
                    okText = QObject::tr("OK");
                info.text = okText;
            } else {
                if (faultText.isNull())
                    faultText = QObject::tr("Fault");
                info.text = faultText;
            }
        }
        result.insert(bit, info);
    }
    return result;
}

ParamBitInfo ParamBitField::getCombination(unsigned int word, const ParamInfo *info, QString language, bool *ok)
{
    ParamBitInfo result;
    result.value = 0;
    result.state = 0;
    result.name = QObject::tr("No translation");
    if (ok)
        *ok = false;
    if (!info || info->bitField.combinations.isEmpty())
        return result;

    bool matched = false;
    const QHash<int, ParamBitCombination> combinations = info->bitField.combinations;
    for (auto it = combinations.constBegin(); it != combinations.constEnd(); ++it) {
        if (matched || !isFaultCombination(it.key(), it.value(), word))
            continue;
        matched = true;
        result.name = it.value().shortText.value(language);
        result.state = it.value().state;
        result.value = it.key();
        if (ok)
            *ok = true;
    }
    return result;
}
