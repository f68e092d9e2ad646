// Enumerations: the rule record's wire form, the list's reading, and the rule walk that
// turns a value into text.

#include "descriptiontest.h"
#include "telortest.h"

#include "paramenum.h"

#include <gtest/gtest.h>

#include <limits>

using desctest::bytesOf;
using desctest::readFrom;
using telortest::plainBytes;

namespace {

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

// A rule with the same text in English as short and full text.
ParamBitCombination rule(const char *sign, qint64 value, const char *text)
{
    ParamBitCombination c;
    c.sign = sign ? QString::fromLatin1(sign) : QString();
    c.value = value;
    c.shortText.insert(En, QString::fromUtf8(text));
    c.fullText.insert(En, QString::fromUtf8(text));
    return c;
}

ParamEnum enumOf(std::initializer_list<ParamBitCombination> rules)
{
    ParamEnum e;
    for (const ParamBitCombination &c : rules)
        e.combinations.append(c);
    e.hasCombinations = !e.combinations.isEmpty();
    return e;
}

void writeCombination(QDataStream &s, qint64 value, qint32 state, const QHash<QString, QString> &shortText,
                      const QHash<QString, QString> &fullText, const QString &sign)
{
    s << value << state << shortText << fullText << sign;
}

} // namespace

// --- the rule record on the wire ---------------------------------------------------------

TEST(Combination, DefaultIsZeroWithNullSign)
{
    const ParamBitCombination c;
    EXPECT_EQ(c.value, 0);
    EXPECT_EQ(c.state, 0);
    EXPECT_TRUE(c.sign.isNull());
    EXPECT_TRUE(c.shortText.isEmpty());
    EXPECT_TRUE(c.fullText.isEmpty());
}

TEST(Combination, SignTravelsLastAfterTheTexts)
{
    ParamBitCombination c;
    c.value = -123456789012LL;
    c.state = 4096;
    c.sign = QStringLiteral("==");
    c.shortText.insert(En, QStringLiteral("Overheat"));
    c.fullText.insert(Ru, QStringLiteral("Перегрев"));
    QHash<QString, QString> shortText, fullText;
    shortText.insert(En, QStringLiteral("Overheat"));
    fullText.insert(Ru, QStringLiteral("Перегрев"));
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeCombination(s, -123456789012LL, 4096, shortText, fullText, QStringLiteral("=="));
    });
    EXPECT_EQ(bytesOf(c), expected);
}

TEST(Combination, ReadsWhatWasWritten)
{
    ParamBitCombination sent = rule(">=", 99, "high");
    sent.state = 77;
    sent.fullText.insert(Ru, QStringLiteral("высоко"));
    const QByteArray bytes = bytesOf(sent);
    ParamBitCombination received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    EXPECT_EQ(received.value, 99);
    EXPECT_EQ(received.state, 77);
    EXPECT_EQ(received.sign, QStringLiteral(">="));
    EXPECT_EQ(received.shortText, sent.shortText);
    EXPECT_EQ(received.fullText, sent.fullText);
}

TEST(Combination, NullSignStaysNullOnTheWire)
{
    ParamBitCombination received;
    received.sign = QStringLiteral("x");
    EXPECT_TRUE(readFrom(bytesOf(ParamBitCombination()), received).result);
    EXPECT_TRUE(received.sign.isNull());
}

TEST(Combination, ReadOfNothingStillSucceeds)
{
    ParamBitCombination c;
    EXPECT_TRUE(readFrom(QByteArray(), c).result);
    EXPECT_EQ(c.value, 0);
}

// --- the list on the wire ----------------------------------------------------------------

TEST(Enum, DefaultIsEmpty)
{
    const ParamEnum e;
    EXPECT_TRUE(e.combinations.isEmpty());
    EXPECT_FALSE(e.hasCombinations);
    EXPECT_EQ(bytesOf(e), QByteArray(4, '\0'));
}

TEST(Enum, WritesCountThenRulesInListOrder)
{
    const ParamEnum e = enumOf({rule("==", 1, "one"), rule("!=", 0, "other")});
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << qint32(2);
        writeCombination(s, 1, 0, e.combinations[0].shortText, e.combinations[0].fullText, QStringLiteral("=="));
        writeCombination(s, 0, 0, e.combinations[1].shortText, e.combinations[1].fullText, QStringLiteral("!="));
    });
    EXPECT_EQ(bytesOf(e), expected);
}

TEST(Enum, ReadsWhatWasWritten)
{
    const ParamEnum sent = enumOf({rule("<", -5, "low"), rule(">", 5, "high"), rule("==", 0, "zero")});
    const QByteArray bytes = bytesOf(sent);
    ParamEnum received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    ASSERT_EQ(received.combinations.size(), 3);
    EXPECT_TRUE(received.hasCombinations);
    EXPECT_EQ(received.combinations[0].sign, QStringLiteral("<"));
    EXPECT_EQ(received.combinations[1].value, 5);
    EXPECT_EQ(received.combinations[2].shortText.value(En), QStringLiteral("zero"));
}

TEST(Enum, CountZeroOnFreshObjectLeavesNoCombinations)
{
    ParamEnum e;
    const auto outcome = readFrom(QByteArray(4, '\0'), e);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, 4u);
    EXPECT_FALSE(e.hasCombinations);
    EXPECT_TRUE(e.combinations.isEmpty());
}

TEST(Enum, NegativeCountReadsNoRule)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint32(-1);
        writeCombination(s, 1, 0, {}, {}, QStringLiteral("=="));
    });
    ParamEnum e;
    const auto outcome = readFrom(bytes, e);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, 4u);
    EXPECT_TRUE(e.combinations.isEmpty());
    EXPECT_FALSE(e.hasCombinations);
}

TEST(Enum, ReadingTwiceAccumulates)
{
    const QByteArray bytes = bytesOf(enumOf({rule("==", 1, "one")}));
    ParamEnum e;
    EXPECT_TRUE(readFrom(bytes, e).result);
    EXPECT_TRUE(readFrom(bytes, e).result);
    EXPECT_EQ(e.combinations.size(), 2);
    EXPECT_TRUE(e.hasCombinations);
}

TEST(Enum, CountZeroKeepsEarlierRulesAndTheirFlag)
{
    ParamEnum e = enumOf({rule("==", 1, "one")});
    EXPECT_TRUE(readFrom(QByteArray(4, '\0'), e).result);
    EXPECT_EQ(e.combinations.size(), 1);
    EXPECT_TRUE(e.hasCombinations);
}

TEST(Enum, HugeCountStopsAtTheEndOfTheData)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint32(std::numeric_limits<qint32>::max());
        QHash<QString, QString> one;
        one.insert(QStringLiteral("en"), QStringLiteral("one"));
        writeCombination(s, 1, 0, one, one, QStringLiteral("=="));
    });
    ParamEnum e;
    EXPECT_TRUE(readFrom(bytes, e).result);
    // The rule that is there, then one empty rule read from the end of the data.
    ASSERT_EQ(e.combinations.size(), 2);
    EXPECT_EQ(e.combinations[1].value, 0);
    EXPECT_TRUE(e.combinations[1].sign.isEmpty());
    EXPECT_TRUE(e.hasCombinations);
    // The texts are those of a list of any number of empty rules behind the real one.
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("one"));
    EXPECT_EQ(e.shortValue(2, En), QStringLiteral("Invalid sign "));
}

// --- the rule walk -----------------------------------------------------------------------

TEST(EnumText, EmptyListGivesTheNumber)
{
    const ParamEnum e;
    EXPECT_EQ(e.shortValue(-5, En), QStringLiteral("-5"));
    EXPECT_EQ(e.fullValue(-5, En), QStringLiteral("-5"));
    EXPECT_EQ(e.shortValue(1234567890123LL, En), QStringLiteral("1234567890123"));
}

TEST(EnumText, EqualBeforeNotEqual)
{
    const ParamEnum e = enumOf({rule("==", 1, "one"), rule("!=", 0, "other")});
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("one"));
    EXPECT_EQ(e.shortValue(7, En), QStringLiteral("other"));
    EXPECT_EQ(e.shortValue(0, En), QStringLiteral("0"));
}

TEST(EnumText, NotEqualFirstIsOvertakenByALaterMatch)
{
    const ParamEnum e = enumOf({rule("!=", 0, "other"), rule("==", 1, "one")});
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("one"));
    EXPECT_EQ(e.shortValue(5, En), QStringLiteral("other"));
}

TEST(EnumText, FirstMatchingGreaterWins)
{
    const ParamEnum e = enumOf({rule(">", 10, "high"), rule(">", 5, "mid")});
    EXPECT_EQ(e.shortValue(20, En), QStringLiteral("high"));
    EXPECT_EQ(e.shortValue(7, En), QStringLiteral("mid"));
    EXPECT_EQ(e.shortValue(5, En), QStringLiteral("5"));
}

TEST(EnumText, GreaterOrEqualLessAndLessOrEqual)
{
    const ParamEnum e = enumOf({rule("<", -10, "very low"), rule("<=", 0, "low"), rule(">=", 100, "full")});
    EXPECT_EQ(e.shortValue(-11, En), QStringLiteral("very low"));
    EXPECT_EQ(e.shortValue(-10, En), QStringLiteral("low"));
    EXPECT_EQ(e.shortValue(0, En), QStringLiteral("low"));
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("1"));
    EXPECT_EQ(e.shortValue(100, En), QStringLiteral("full"));
    EXPECT_EQ(e.shortValue(99, En), QStringLiteral("99"));
}

TEST(EnumText, ComparisonsAreSigned64Bit)
{
    const ParamEnum e = enumOf({rule(">", -1, "above minus one"), rule("==", std::numeric_limits<qint64>::min(), "min")});
    EXPECT_EQ(e.shortValue(0, En), QStringLiteral("above minus one"));
    EXPECT_EQ(e.shortValue(std::numeric_limits<qint64>::min(), En), QStringLiteral("min"));
    EXPECT_EQ(e.shortValue(-2, En), QStringLiteral("-2"));
}

TEST(EnumText, GreaterAndLessWithBlanksAroundWork)
{
    const ParamEnum e = enumOf({rule(" > ", 10, "high"), rule("\t<  ", 0, "negative")});
    EXPECT_EQ(e.shortValue(11, En), QStringLiteral("high"));
    EXPECT_EQ(e.shortValue(-1, En), QStringLiteral("negative"));
    EXPECT_EQ(e.shortValue(5, En), QStringLiteral("5"));
}

TEST(EnumText, OtherSignsWithBlanksAreInvalid)
{
    EXPECT_EQ(enumOf({rule(" >= ", 1, "x")}).shortValue(5, En), QStringLiteral("Invalid sign  >= "));
    EXPECT_EQ(enumOf({rule("== ", 5, "x")}).shortValue(5, En), QStringLiteral("Invalid sign == "));
    EXPECT_EQ(enumOf({rule(" !=", 5, "x")}).shortValue(1, En), QStringLiteral("Invalid sign  !="));
    EXPECT_EQ(enumOf({rule(" <=", 5, "x")}).shortValue(1, En), QStringLiteral("Invalid sign  <="));
}

TEST(EnumText, SingleEqualsIsInvalid)
{
    const ParamEnum e = enumOf({rule("=", 1, "one")});
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("Invalid sign ="));
    EXPECT_EQ(e.fullValue(1, En), QStringLiteral("Invalid sign ="));
}

TEST(EnumText, SignsAreCaseSensitiveAndExact)
{
    EXPECT_EQ(enumOf({rule("=<", 1, "x")}).shortValue(0, En), QStringLiteral("Invalid sign =<"));
    EXPECT_EQ(enumOf({rule("<>", 1, "x")}).shortValue(0, En), QStringLiteral("Invalid sign <>"));
}

TEST(EnumText, NullOrEmptySignIsInvalidAlone)
{
    EXPECT_EQ(enumOf({rule(nullptr, 1, "x")}).shortValue(1, En), QStringLiteral("Invalid sign "));
    EXPECT_EQ(enumOf({rule("", 1, "x")}).shortValue(1, En), QStringLiteral("Invalid sign "));
}

TEST(EnumText, BadSignBeforeTheMatchEndsTheWalk)
{
    const ParamEnum e = enumOf({rule("=>", 1, "a"), rule("==", 2, "b")});
    EXPECT_EQ(e.shortValue(2, En), QStringLiteral("Invalid sign =>"));
}

TEST(EnumText, BadSignBehindTheMatchIsNeverSeen)
{
    const ParamEnum e = enumOf({rule("==", 2, "b"), rule("=>", 1, "a")});
    EXPECT_EQ(e.shortValue(2, En), QStringLiteral("b"));
    EXPECT_EQ(e.shortValue(3, En), QStringLiteral("Invalid sign =>"));
}

TEST(EnumText, BadSignBeatsARememberedNotEqual)
{
    const ParamEnum e = enumOf({rule("!=", 0, "other"), rule("?", 0, "x")});
    EXPECT_EQ(e.shortValue(5, En), QStringLiteral("Invalid sign ?"));
}

TEST(EnumText, LastNotEqualCounts)
{
    const ParamEnum e = enumOf({rule("!=", 1, "not one"), rule("!=", 2, "not two")});
    EXPECT_EQ(e.shortValue(5, En), QStringLiteral("not two"));
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("not two"));
    // The last one equals the value: the number, although the first would have matched.
    EXPECT_EQ(e.shortValue(2, En), QStringLiteral("2"));
}

TEST(EnumText, MatchWithoutTheLanguageGivesNoTranslation)
{
    const ParamEnum e = enumOf({rule("==", 1, "one")});
    EXPECT_EQ(e.shortValue(1, Ru), QStringLiteral("No translation"));
    EXPECT_EQ(e.shortValue(1, QStringLiteral("EN")), QStringLiteral("No translation"));
    EXPECT_EQ(e.shortValue(2, Ru), QStringLiteral("2"));
}

TEST(EnumText, RememberedNotEqualWithoutTheLanguageGivesNoTranslation)
{
    const ParamEnum e = enumOf({rule("!=", 0, "other")});
    EXPECT_EQ(e.fullValue(3, Ru), QStringLiteral("No translation"));
}

TEST(EnumText, EmptyTextTableGivesNoTranslation)
{
    ParamBitCombination c;
    c.sign = QStringLiteral("==");
    c.value = 4;
    const ParamEnum e = enumOf({c});
    EXPECT_EQ(e.shortValue(4, En), QStringLiteral("No translation"));
}

TEST(EnumText, EmptyEntryIsTheText)
{
    ParamBitCombination c = rule("==", 4, "four");
    c.shortText.insert(Ru, QString());
    const ParamEnum e = enumOf({c});
    EXPECT_EQ(e.shortValue(4, Ru), QString());
    EXPECT_EQ(e.fullValue(4, Ru), QStringLiteral("No translation"));
}

TEST(EnumText, ShortAndFullTextsAreIndependent)
{
    ParamBitCombination c;
    c.sign = QStringLiteral("==");
    c.value = 1;
    c.shortText.insert(En, QStringLiteral("On"));
    c.fullText.insert(Ru, QStringLiteral("Включено"));
    const ParamEnum e = enumOf({c});
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("On"));
    EXPECT_EQ(e.fullValue(1, En), QStringLiteral("No translation"));
    EXPECT_EQ(e.fullValue(1, Ru), QStringLiteral("Включено"));
    EXPECT_EQ(e.shortValue(1, Ru), QStringLiteral("No translation"));
}

TEST(EnumText, StateOfARuleIsNotLookedAt)
{
    ParamBitCombination c = rule("==", 1, "one");
    c.state = 4096;
    EXPECT_EQ(enumOf({c}).shortValue(1, En), QStringLiteral("one"));
}

TEST(EnumText, TextDoesNotChangeTheRecord)
{
    const ParamEnum e = enumOf({rule("!=", 0, "other"), rule("==", 1, "one")});
    const QByteArray before = bytesOf(e);
    e.shortValue(3, En);
    e.fullValue(1, En);
    EXPECT_EQ(bytesOf(e), before);
}

TEST(EnumText, NoTranslationIsNotTranslated)
{
    const desctest::MarkedTranslations translations;
    const ParamEnum e = enumOf({rule("==", 1, "one"), rule("!=", 1, "other")});
    EXPECT_EQ(e.shortValue(1, Ru), QStringLiteral("No translation"));
    EXPECT_EQ(e.fullValue(2, Ru), QStringLiteral("No translation"));
    EXPECT_EQ(e.shortValue(1, En), QStringLiteral("one"));
}
