#include "paramenum.h"

#include "descriptionwire_p.h"
#include "qcontainerpacket.h"

namespace {

QString lookUp(const TranslationItemNew &texts, const QString &language)
{
    const auto it = texts.constFind(language);
    if (it == texts.constEnd())
        return QStringLiteral("No translation");
    return it.value();
}

// The rule walk shared by shortValue() and fullValue(); @p text selects which of the two
// texts of a rule is looked up.
QString textOf(const QList<ParamBitCombination> &rules, long long value, const QString &language,
               TranslationItemNew ParamBitCombination::*text)
{
    const QLatin1String equal("=="), notEqual("!="), greater(">"), greaterOrEqual(">="),
        less("<"), lessOrEqual("<=");

    ParamBitCombination remembered;
    for (const ParamBitCombination &rule : rules) {
        if (rule.sign == equal) {
            if (rule.value == value)
                return lookUp(rule.*text, language);
        } else if (rule.sign == notEqual) {
            remembered = rule;
        } else if (rule.sign.trimmed() == greater) {
            if (value > rule.value)
                return lookUp(rule.*text, language);
        } else if (rule.sign == greaterOrEqual) {
            if (value >= rule.value)
                return lookUp(rule.*text, language);
        } else if (rule.sign.trimmed() == less) {
            if (value < rule.value)
                return lookUp(rule.*text, language);
        } else if (rule.sign == lessOrEqual) {
            if (value <= rule.value)
                return lookUp(rule.*text, language);
        } else {
            return QStringLiteral("Invalid sign ") + rule.sign;
        }
    }
    if (remembered.sign == notEqual && remembered.value != value)
        return lookUp(remembered.*text, language);
    return QString::number(value, 10);
}

} // namespace

ParamEnum::ParamEnum()
    : hasCombinations(false)
{
}

void ParamEnum::write(QContainerPacket &packet) const
{
    packet << qint32(combinations.size());
    for (const ParamBitCombination &combination : combinations)
        combination.write(packet);
}

bool ParamEnum::read(QContainerPacket &packet)
{
    bool complete = true;
    // The rules of an enumeration repeat across the parameters of one kind.
    DescriptionWire::readSharedTable(packet, combinations, [&]() {
        qint32 count = 0;
        packet >> count;
        complete = DescriptionWire::readEntries(packet, count, [&]() {
            ParamBitCombination combination;
            if (!combination.read(packet))
                return false;
            combinations.append(combination);
            return true;
        });
    });
    if (!complete)
        return false;
    hasCombinations = !combinations.isEmpty();
    return true;
}

QString ParamEnum::shortValue(long long value, QString language) const
{
    // The walk goes over a shared copy, so that it reads a list that nothing changes under it.
    const QList<ParamBitCombination> rules = combinations;
    return textOf(rules, value, language, &ParamBitCombination::shortText);
}

QString ParamEnum::fullValue(long long value, QString language) const
{
    // The walk goes over a shared copy, so that it reads a list that nothing changes under it.
    const QList<ParamBitCombination> rules = combinations;
    return textOf(rules, value, language, &ParamBitCombination::fullText);
}
