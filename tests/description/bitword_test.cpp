// The text of a live status word: the bit list, the whole-word fault combination, and the
// states in which the word means nothing.

#include "descriptiontest.h"

#include "parambitfield.h"
#include "paraminfo.h"

#include <QtCore/QObject>

#include <gtest/gtest.h>

using desctest::MarkedTranslations;

namespace {

using Attributes = ParamBitField::ParamBitAttributes;
using BitState = ParamBitField::ParamBitAttributes::ParamBitState;

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

Attributes namedBit(const QString &english)
{
    Attributes a;
    a.name.insert(En, english);
    return a;
}

BitState stateWithText(int state, const QString &language, const QString &text)
{
    BitState s;
    s.state = state;
    s.text.insert(language, text);
    return s;
}

ParamBitCombination combination(const char *sign, int state, const QString &shortEnglish)
{
    ParamBitCombination c;
    c.sign = QString::fromLatin1(sign);
    c.state = state;
    c.shortText.insert(En, shortEnglish);
    return c;
}

// Bits 0 and 3 named, and a fault combination for the word 0x10.
ParamBitField pumpField()
{
    ParamBitField f;
    f.enabled = 1;
    f.attributes.insert(0, namedBit(QStringLiteral("Running")));
    f.attributes.insert(3, namedBit(QStringLiteral("Overload")));
    f.combinations.insert(16, combination("==", 4096, QStringLiteral("Trip")));
    return f;
}

} // namespace

// --- words without meaning ---------------------------------------------------------------

TEST(BitWord, StateZeroListsEveryBitAsUnknown)
{
    const ParamBitField f = pumpField();
    bool ok = true;
    const QHash<int, ParamBitInfo> word = f.fullWord(0x9, En, 0, true, &ok);
    EXPECT_FALSE(ok);
    ASSERT_EQ(word.size(), 2);
    for (int bit : {0, 3}) {
        ASSERT_TRUE(word.contains(bit));
        EXPECT_EQ(word.value(bit).state, 0);
        EXPECT_EQ(word.value(bit).text, QObject::tr("Unknown"));
        EXPECT_EQ(word.value(bit).value, 1);
    }
    EXPECT_EQ(word.value(0).name, QStringLiteral("Running"));
    EXPECT_EQ(word.value(3).name, QStringLiteral("Overload"));
    const QHash<int, ParamBitInfo> clear = f.fullWord(0x8, En, 0, false, nullptr);
    EXPECT_EQ(clear.value(0).value, 0);
    EXPECT_EQ(clear.value(3).value, 1);
}

TEST(BitWord, StateZeroIgnoresAFaultCombination)
{
    bool ok = true;
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(16, En, 0, true, &ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(word.size(), 2);
    EXPECT_FALSE(word.contains(16));
}

TEST(BitWord, StateTwoIsInvalidEvenForAFaultCombination)
{
    bool ok = true;
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(16, En, 2, true, &ok);
    EXPECT_FALSE(ok);
    ASSERT_EQ(word.size(), 2);
    EXPECT_EQ(word.value(0).text, QObject::tr("Invalid"));
    EXPECT_EQ(word.value(3).text, QObject::tr("Invalid"));
    EXPECT_EQ(word.value(0).state, 2);
    EXPECT_EQ(word.value(3).state, 2);
    EXPECT_EQ(word.value(0).value, 0);
}

TEST(BitWord, NameWithoutTheLanguageIsNoTranslation)
{
    const QHash<int, ParamBitInfo> unknown = pumpField().fullWord(0, Ru, 0, false, nullptr);
    EXPECT_EQ(unknown.value(0).name, QStringLiteral("No translation"));
    const QHash<int, ParamBitInfo> normal = pumpField().fullWord(0, Ru, 8, false, nullptr);
    EXPECT_EQ(normal.value(3).name, QStringLiteral("No translation"));
}

// --- the whole-word combination ----------------------------------------------------------

TEST(BitWord, FaultCombinationIsTheWholeAnswer)
{
    bool ok = false;
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(0x10, En, 8, true, &ok);
    EXPECT_TRUE(ok);
    ASSERT_EQ(word.size(), 1);
    ASSERT_TRUE(word.contains(16));
    const ParamBitInfo info = word.value(16);
    EXPECT_EQ(info.value, 16);
    EXPECT_EQ(info.state, 4096);
    EXPECT_EQ(info.name, QStringLiteral("Trip"));
    EXPECT_TRUE(info.text.isEmpty());
}

TEST(BitWord, CombinationNameWithoutTheLanguageIsEmpty)
{
    bool ok = false;
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(0x10, Ru, 8, true, &ok);
    EXPECT_TRUE(ok);
    ASSERT_EQ(word.size(), 1);
    EXPECT_TRUE(word.value(16).name.isEmpty());
}

TEST(BitWord, CombinationsNotAskedForGiveTheBitList)
{
    bool ok = true;
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(0x10, En, 8, false, &ok);
    EXPECT_FALSE(ok);
    ASSERT_EQ(word.size(), 2);
    EXPECT_EQ(word.value(0).value, 0);
    EXPECT_EQ(word.value(3).value, 0);
    EXPECT_FALSE(word.contains(16));
}

TEST(BitWord, StateOneTakesTheNormalPath)
{
    bool ok = false;
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(0x10, En, 1, true, &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(word.size(), 1);
    const QHash<int, ParamBitInfo> bits = pumpField().fullWord(0x1, En, 1, true, &ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(bits.value(0).state, 4096);
    EXPECT_EQ(bits.value(0).text, QObject::tr("Fault"));
}

TEST(BitWord, UnknownStateCodesTakeTheNormalPath)
{
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(0x1, En, 12345, false, nullptr);
    EXPECT_EQ(word.value(0).text, QObject::tr("Fault"));
    EXPECT_EQ(word.value(3).text, QObject::tr("OK"));
}

TEST(BitWord, CombinationThatIsNoFaultIsIgnored)
{
    ParamBitField f = pumpField();
    f.combinations.insert(16, combination("==", 8, QStringLiteral("Good")));
    bool ok = true;
    EXPECT_EQ(f.fullWord(16, En, 8, true, &ok).size(), 2);
    EXPECT_FALSE(ok);
}

TEST(BitWord, CombinationWithAnotherSignIsIgnored)
{
    ParamBitField f = pumpField();
    f.combinations.insert(16, combination("!=", 4096, QStringLiteral("Not")));
    bool ok = true;
    const QHash<int, ParamBitInfo> word = f.fullWord(16, En, 8, true, &ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(word.size(), 2);
    for (const ParamBitInfo &info : word)
        EXPECT_FALSE(info.name.startsWith(QStringLiteral("Invalid sign")));
}

TEST(BitWord, CombinationValueFieldPlaysNoPart)
{
    ParamBitField f = pumpField();
    ParamBitCombination c = combination("==", 4096, QStringLiteral("Trip"));
    c.value = 16;
    f.combinations.clear();
    f.combinations.insert(17, c);
    bool ok = false;
    EXPECT_EQ(f.fullWord(16, En, 8, true, &ok).size(), 2);
    EXPECT_FALSE(ok);
    const QHash<int, ParamBitInfo> word = f.fullWord(17, En, 8, true, &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(word.value(17).value, 17);
}

TEST(BitWord, CombinationKeyComparesAsThirtyTwoBits)
{
    ParamBitField f;
    f.combinations.insert(-1, combination("==", 4096, QStringLiteral("All")));
    bool ok = false;
    const QHash<int, ParamBitInfo> word = f.fullWord(0xFFFFFFFFu, En, 8, true, &ok);
    EXPECT_TRUE(ok);
    ASSERT_TRUE(word.contains(-1));
    EXPECT_EQ(word.value(-1).value, -1);
}

// --- the bit list ------------------------------------------------------------------------

TEST(BitWord, ConfiguredStateAndTextOfASetBit)
{
    ParamBitField f;
    Attributes door = namedBit(QStringLiteral("Door"));
    door.states.insert(1, stateWithText(16, En, QStringLiteral("Open")));
    f.attributes.insert(4, door);
    const QHash<int, ParamBitInfo> set = f.fullWord(0x10, En, 8, true, nullptr);
    EXPECT_EQ(set.value(4).value, 1);
    EXPECT_EQ(set.value(4).state, 16);
    EXPECT_EQ(set.value(4).text, QStringLiteral("Open"));
    EXPECT_EQ(set.value(4).name, QStringLiteral("Door"));
    const QHash<int, ParamBitInfo> clear = f.fullWord(0x0, En, 8, true, nullptr);
    EXPECT_EQ(clear.value(4).value, 0);
    EXPECT_EQ(clear.value(4).state, 8);
    EXPECT_EQ(clear.value(4).text, QObject::tr("OK"));
}

TEST(BitWord, ConfiguredStateWithoutTextForTheLanguageFollowsTheValue)
{
    ParamBitField f;
    Attributes a = namedBit(QStringLiteral("Bit"));
    a.states.insert(1, stateWithText(16, En, QStringLiteral("Set")));
    a.states.insert(0, stateWithText(4096, En, QStringLiteral("Clear")));
    f.attributes.insert(0, a);
    const QHash<int, ParamBitInfo> set = f.fullWord(1, Ru, 8, false, nullptr);
    EXPECT_EQ(set.value(0).state, 16);
    EXPECT_EQ(set.value(0).text, QObject::tr("Fault"));
    const QHash<int, ParamBitInfo> clear = f.fullWord(0, Ru, 8, false, nullptr);
    EXPECT_EQ(clear.value(0).state, 4096);
    EXPECT_EQ(clear.value(0).text, QObject::tr("OK"));
}

TEST(BitWord, EmptyTextForTheLanguageFallsBackLikeAMissingOne)
{
    ParamBitField f;
    Attributes a = namedBit(QStringLiteral("Bit"));
    a.states.insert(1, stateWithText(16, En, QString()));
    a.states.insert(0, stateWithText(8, En, QLatin1String("")));
    f.attributes.insert(2, a);
    EXPECT_EQ(f.fullWord(4, En, 8, false, nullptr).value(2).text, QObject::tr("Fault"));
    EXPECT_EQ(f.fullWord(0, En, 8, false, nullptr).value(2).text, QObject::tr("OK"));
}

TEST(BitWord, UnconfiguredValuesFallBackToGoodAndFault)
{
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(0x8, En, 8, true, nullptr);
    EXPECT_EQ(word.value(0).state, 8);
    EXPECT_EQ(word.value(0).text, QObject::tr("OK"));
    EXPECT_EQ(word.value(3).state, 4096);
    EXPECT_EQ(word.value(3).text, QObject::tr("Fault"));
}

TEST(BitWord, BitNumbersCountModuloThirtyTwo)
{
    ParamBitField f;
    f.attributes.insert(32, namedBit(QStringLiteral("Wrapped")));
    f.attributes.insert(63, namedBit(QStringLiteral("Top")));
    f.attributes.insert(-1, namedBit(QStringLiteral("Negative")));
    const QHash<int, ParamBitInfo> low = f.fullWord(0x1, En, 8, false, nullptr);
    EXPECT_EQ(low.value(32).value, 1);
    EXPECT_EQ(low.value(63).value, 0);
    EXPECT_EQ(low.value(-1).value, 0);
    const QHash<int, ParamBitInfo> high = f.fullWord(0x80000000u, En, 8, false, nullptr);
    EXPECT_EQ(high.value(32).value, 0);
    EXPECT_EQ(high.value(63).value, 1);
    EXPECT_EQ(high.value(-1).value, 1);
    EXPECT_EQ(f.fullWord(0x1, En, 0, false, nullptr).value(32).value, 1);
}

TEST(BitWord, UndescribedSetBitsAreNotListed)
{
    const QHash<int, ParamBitInfo> word = pumpField().fullWord(0xFFFFFFE6u, En, 8, false, nullptr);
    EXPECT_EQ(word.size(), 2);
    EXPECT_EQ(word.value(0).value, 0);
    EXPECT_EQ(word.value(3).value, 0);
}

TEST(BitWord, EmptyDescriptionGivesEmptyResult)
{
    const ParamBitField f;
    bool ok = true;
    EXPECT_TRUE(f.fullWord(0xFFFF, En, 8, true, &ok).isEmpty());
    EXPECT_FALSE(ok);
    EXPECT_TRUE(f.fullWord(0xFFFF, En, 0, true, &ok).isEmpty());
    EXPECT_TRUE(f.fullWord(0xFFFF, En, 2, true, nullptr).isEmpty());
}

// --- getCombination ----------------------------------------------------------------------

TEST(BitCombination, NullInfoGivesNoMatch)
{
    bool ok = true;
    const ParamBitInfo info = ParamBitField::getCombination(16, nullptr, En, &ok);
    EXPECT_EQ(info.value, 0);
    EXPECT_EQ(info.state, 0);
    EXPECT_FALSE(ok);
    EXPECT_EQ(info.name, QObject::tr("No translation"));
    EXPECT_TRUE(info.text.isEmpty());
    EXPECT_EQ(ParamBitField::getCombination(16, nullptr, En, nullptr).value, 0);
}

TEST(BitCombination, InfoWithoutCombinationsGivesNoMatch)
{
    ParamInfo info;
    info.bitField = pumpField();
    info.bitField.combinations.clear();
    bool ok = true;
    const ParamBitInfo result = ParamBitField::getCombination(16, &info, En, &ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(result.name, QObject::tr("No translation"));
}

TEST(BitCombination, MatchGivesTheCombination)
{
    ParamInfo info;
    info.bitField = pumpField();
    bool ok = false;
    const ParamBitInfo result = ParamBitField::getCombination(16, &info, En, &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(result.value, 16);
    EXPECT_EQ(result.state, 4096);
    EXPECT_EQ(result.name, QStringLiteral("Trip"));
    EXPECT_TRUE(result.text.isEmpty());
}

TEST(BitCombination, MatchWithoutTheLanguageHasAnEmptyName)
{
    ParamInfo info;
    info.bitField = pumpField();
    bool ok = false;
    const ParamBitInfo result = ParamBitField::getCombination(16, &info, Ru, &ok);
    EXPECT_TRUE(ok);
    EXPECT_TRUE(result.name.isEmpty());
    EXPECT_NE(result.name, QObject::tr("No translation"));
}

TEST(BitCombination, NoMatchKeepsTheTranslatedNoTranslation)
{
    ParamInfo info;
    info.bitField = pumpField();
    info.bitField.combinations.insert(32, combination("==", 8, QStringLiteral("Good")));
    info.bitField.combinations.insert(64, combination("!=", 4096, QStringLiteral("Not")));
    bool ok = true;
    for (unsigned int word : {17u, 32u, 64u}) {
        const ParamBitInfo result = ParamBitField::getCombination(word, &info, En, &ok);
        EXPECT_FALSE(ok);
        EXPECT_EQ(result.value, 0);
        EXPECT_EQ(result.state, 0);
        EXPECT_EQ(result.name, QObject::tr("No translation"));
    }
}

TEST(BitCombination, IgnoresTheParametersStateAndTheBits)
{
    // getCombination has no state to look at: it finds the same combination as fullWord
    // does on its normal path.
    ParamInfo info;
    info.bitField = pumpField();
    bool fromWord = false;
    const QHash<int, ParamBitInfo> word = info.bitField.fullWord(16, En, 8, true, &fromWord);
    bool fromCombination = false;
    const ParamBitInfo result = ParamBitField::getCombination(16, &info, En, &fromCombination);
    EXPECT_TRUE(fromWord);
    EXPECT_TRUE(fromCombination);
    EXPECT_EQ(word.value(16).name, result.name);
    EXPECT_EQ(word.value(16).state, result.state);
    EXPECT_EQ(word.value(16).value, result.value);
}

// --- which texts are translated ------------------------------------------------------------

TEST(BitWordTranslation, StateTextsGoThroughTheTranslatorAndBitNamesDoNot)
{
    const MarkedTranslations translations;
    const ParamBitField f = pumpField();

    const QHash<int, ParamBitInfo> unknown = f.fullWord(0x1, Ru, 0, true, nullptr);
    EXPECT_EQ(unknown.value(0).text, MarkedTranslations::marked("Unknown"));
    EXPECT_EQ(unknown.value(0).name, QStringLiteral("No translation"));

    const QHash<int, ParamBitInfo> invalid = f.fullWord(0x1, Ru, 2, true, nullptr);
    EXPECT_EQ(invalid.value(3).text, MarkedTranslations::marked("Invalid"));
    EXPECT_EQ(invalid.value(3).name, QStringLiteral("No translation"));

    const QHash<int, ParamBitInfo> normal = f.fullWord(0x1, Ru, 8, true, nullptr);
    EXPECT_EQ(normal.value(0).text, MarkedTranslations::marked("Fault"));
    EXPECT_EQ(normal.value(3).text, MarkedTranslations::marked("OK"));
    EXPECT_EQ(normal.value(0).name, QStringLiteral("No translation"));
    EXPECT_EQ(normal.value(3).name, QStringLiteral("No translation"));
}

TEST(BitWordTranslation, CombinationWithoutAMatchHasTheTranslatedNoTranslation)
{
    const MarkedTranslations translations;
    ParamInfo info;
    info.bitField = pumpField();
    bool ok = true;
    EXPECT_EQ(ParamBitField::getCombination(17, &info, En, &ok).name,
              MarkedTranslations::marked("No translation"));
    EXPECT_FALSE(ok);
    EXPECT_EQ(ParamBitField::getCombination(17, nullptr, En, nullptr).name,
              MarkedTranslations::marked("No translation"));
    // A match in a language that the combination lacks: an empty name, translated or not.
    EXPECT_TRUE(ParamBitField::getCombination(16, &info, Ru, &ok).name.isEmpty());
    EXPECT_TRUE(ok);
    const QHash<int, ParamBitInfo> word = info.bitField.fullWord(16, Ru, 8, true, &ok);
    EXPECT_TRUE(word.value(16).name.isEmpty());
    EXPECT_TRUE(word.value(16).text.isEmpty());
}
