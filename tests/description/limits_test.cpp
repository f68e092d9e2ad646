// The scale of a description: its wire form, its flag byte and its XML attributes.

#include "descriptiontest.h"
#include "telortest.h"

#include "paramlimits.h"

#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

#include <tuple>

using desctest::bytesOf;
using desctest::readFrom;
using telortest::plainBytes;

namespace {

/** The flag and both bounds, for comparing a whole ParamLimits in one assertion. */
using Fields = std::tuple<int, double, double>;

Fields fieldsOf(const ParamLimits &limits)
{
    return Fields(limits.enabled, limits.lo, limits.hi);
}

/** Limits with the given flag and bounds. */
ParamLimits limitsWith(qint8 enabled, double lo, double hi)
{
    ParamLimits limits;
    limits.enabled = enabled;
    limits.lo = lo;
    limits.hi = hi;
    return limits;
}

// Reads the limits from the attributes of the first element of @p xml.
ParamLimits limitsFromXml(const QString &xml, ParamLimits limits = ParamLimits())
{
    QXmlStreamReader reader(xml);
    reader.readNextStartElement();
    limits.readFromSource(reader);
    return limits;
}

} // namespace

TEST(Limits, DefaultIsUnsetAndZero)
{
    const ParamLimits limits;
    EXPECT_EQ(fieldsOf(limits), Fields(0, 0.0, 0.0));
}

TEST(Limits, UnsetWritesOneZeroByte)
{
    EXPECT_EQ(bytesOf(ParamLimits()), QByteArray(1, '\0'));
}

TEST(Limits, SetWritesFlagLowThenHigh)
{
    const ParamLimits limits = limitsWith(1, -2.5, 100.0);
    const QByteArray expected = plainBytes([](QDataStream &s) { s << qint8(1) << -2.5 << 100.0; });
    EXPECT_EQ(bytesOf(limits), expected);
    EXPECT_EQ(expected.size(), 17);
}

TEST(Limits, FlagAboveOneIsWrittenAsSet)
{
    const ParamLimits limits = limitsWith(2, 1.0, 2.0);
    const QByteArray expected = plainBytes([](QDataStream &s) { s << qint8(2) << 1.0 << 2.0; });
    EXPECT_EQ(bytesOf(limits), expected);
}

TEST(Limits, ReadsWhatWasWritten)
{
    const ParamLimits sent = limitsWith(1, 3.0, -7.0); // low above high is carried as it stands
    ParamLimits received;
    const auto outcome = readFrom(bytesOf(sent), received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, 17u);
    EXPECT_EQ(fieldsOf(received), Fields(1, 3.0, -7.0));
}

TEST(Limits, ReadOfFlagTwoFailsAfterOneByte)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint8(2) << 1.0 << 2.0; });
    ParamLimits limits;
    const auto outcome = readFrom(bytes, limits);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.position, 1u);
    EXPECT_EQ(fieldsOf(limits), Fields(2, 0.0, 0.0));
}

TEST(Limits, NegativeFlagCountsAsAboveOne)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint8(-1) << 1.0 << 2.0; });
    ParamLimits limits;
    const auto outcome = readFrom(bytes, limits);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.position, 1u);
    EXPECT_EQ(limits.enabled, -1);
}

TEST(Limits, WrittenFlagAboveOneIsRefusedOnReading)
{
    ParamLimits sent;
    sent.enabled = 3;
    ParamLimits received;
    EXPECT_FALSE(readFrom(bytesOf(sent), received).result);
}

TEST(Limits, ReadOfUnsetKeepsOldBounds)
{
    ParamLimits limits = limitsWith(1, 4.0, 5.0);
    const auto outcome = readFrom(QByteArray(1, '\0'), limits);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, 1u);
    EXPECT_EQ(fieldsOf(limits), Fields(0, 4.0, 5.0));
}

TEST(Limits, TruncatedBoundsReadAsZero)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint8(1) << 6.0; });
    ParamLimits limits;
    limits.hi = 9.0;
    EXPECT_TRUE(readFrom(bytes, limits).result);
    EXPECT_EQ(fieldsOf(limits), Fields(1, 6.0, 0.0));
}

TEST(Limits, XmlWithBothBoundsSetsThem)
{
    const ParamLimits limits = limitsFromXml(QStringLiteral("<param lo=\"-1.5\" hi=\"20\"/>"));
    EXPECT_EQ(fieldsOf(limits), Fields(1, -1.5, 20.0));
}

TEST(Limits, XmlWithHighOnlyChangesNothing)
{
    const ParamLimits limits = limitsFromXml(QStringLiteral("<param hi=\"20\"/>"));
    EXPECT_EQ(fieldsOf(limits), Fields(0, 0.0, 0.0));
}

TEST(Limits, XmlWithLowOnlyChangesNothing)
{
    const ParamLimits limits = limitsFromXml(QStringLiteral("<param lo=\"3\"/>"));
    EXPECT_EQ(fieldsOf(limits), Fields(0, 0.0, 0.0));
}

TEST(Limits, XmlWithOneBoundKeepsEarlierLimits)
{
    const ParamLimits before = limitsWith(1, 1.0, 2.0);
    const ParamLimits limits = limitsFromXml(QStringLiteral("<param lo=\"-50\"/>"), before);
    EXPECT_EQ(fieldsOf(limits), Fields(1, 1.0, 2.0));
}

TEST(Limits, XmlLowAboveHighIsKept)
{
    const ParamLimits limits = limitsFromXml(QStringLiteral("<param lo=\"10\" hi=\"-10\"/>"));
    EXPECT_EQ(fieldsOf(limits), Fields(1, 10.0, -10.0));
}

TEST(Limits, XmlTextThatIsNoNumberGivesZeroAndSet)
{
    const ParamLimits before = limitsWith(0, 5.0, 6.0);
    const ParamLimits limits = limitsFromXml(QStringLiteral("<param lo=\"low\" hi=\"12abc\"/>"), before);
    EXPECT_EQ(fieldsOf(limits), Fields(1, 0.0, 0.0));
}

TEST(Limits, XmlEmptyAttributeCountsAsPresent)
{
    const ParamLimits limits = limitsFromXml(QStringLiteral("<param lo=\"\" hi=\"8\"/>"));
    EXPECT_EQ(fieldsOf(limits), Fields(1, 0.0, 8.0));
}

TEST(Limits, CopiesAreIndependentValues)
{
    const ParamLimits a = limitsWith(1, 1.0, 2.0);
    ParamLimits b = a;
    b.hi = 3.0;
    EXPECT_EQ(a.hi, 2.0);
    EXPECT_EQ(b.lo, 1.0);
    EXPECT_EQ(b.enabled, 1);
}
