// The alarm thresholds of a description: presence, copies, wire form and XML attributes.

#include "descriptiontest.h"
#include "telortest.h"

#include "paramsetpoints.h"

#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

using desctest::bytesOf;
using desctest::heapInUse;
using desctest::readFrom;
using telortest::plainBytes;

namespace {

QXmlStreamAttributes attributesOf(const QString &xml)
{
    QXmlStreamReader reader(xml);
    reader.readNextStartElement();
    return reader.attributes();
}

struct Presence
{
    bool lowEmergency, lowWarning, upWarning, upEmergency;
};

Presence presenceOf(const ParamSetpoints &s)
{
    Presence p{};
    s.getLowEmergencySetpoint(&p.lowEmergency);
    s.getLowWarningSetpoint(&p.lowWarning);
    s.getUpWarningSetpoint(&p.upWarning);
    s.getUpEmergencySetpoint(&p.upEmergency);
    return p;
}

} // namespace

TEST(Setpoints, DefaultHasNoThreshold)
{
    const ParamSetpoints s;
    EXPECT_FALSE(s.enabled());
    const Presence p = presenceOf(s);
    EXPECT_FALSE(p.lowEmergency);
    EXPECT_FALSE(p.lowWarning);
    EXPECT_FALSE(p.upWarning);
    EXPECT_FALSE(p.upEmergency);
}

TEST(Setpoints, ZeroThresholdIsPresent)
{
    ParamSetpoints s;
    s.setUpEmergencySetpoint(0.0);
    EXPECT_TRUE(s.enabled());
    bool ok = false;
    EXPECT_EQ(s.getUpEmergencySetpoint(&ok), 0.0);
    EXPECT_TRUE(ok);
}

TEST(Setpoints, AbsentThresholdWithNullOkGivesZero)
{
    const ParamSetpoints s;
    EXPECT_EQ(s.getLowWarningSetpoint(nullptr), 0.0);
    EXPECT_EQ(s.getLowEmergencySetpoint(nullptr), 0.0);
    EXPECT_EQ(s.getUpWarningSetpoint(nullptr), 0.0);
    EXPECT_EQ(s.getUpEmergencySetpoint(nullptr), 0.0);
}

TEST(Setpoints, AbsentThresholdClearsOk)
{
    const ParamSetpoints s;
    bool ok = true;
    EXPECT_EQ(s.getLowWarningSetpoint(&ok), 0.0);
    EXPECT_FALSE(ok);
}

TEST(Setpoints, EachSetterFillsItsOwnThreshold)
{
    ParamSetpoints s;
    s.setLowEmergencySetpoint(-20.0);
    s.setLowWarningSetpoint(-10.0);
    s.setUpWarningSetpoint(10.0);
    s.setUpEmergencySetpoint(20.0);
    EXPECT_EQ(s.getLowEmergencySetpoint(), -20.0);
    EXPECT_EQ(s.getLowWarningSetpoint(), -10.0);
    EXPECT_EQ(s.getUpWarningSetpoint(), 10.0);
    EXPECT_EQ(s.getUpEmergencySetpoint(), 20.0);
}

TEST(Setpoints, EnabledByAnyOneThreshold)
{
    ParamSetpoints a;
    a.setLowEmergencySetpoint(1.0);
    EXPECT_TRUE(a.enabled());
    ParamSetpoints b;
    b.setLowWarningSetpoint(1.0);
    EXPECT_TRUE(b.enabled());
    ParamSetpoints c;
    c.setUpWarningSetpoint(1.0);
    EXPECT_TRUE(c.enabled());
}

TEST(Setpoints, SetterTwiceKeepsOneAllocationAndLastValue)
{
    ParamSetpoints s;
    const std::size_t before = heapInUse();
    s.setLowWarningSetpoint(1.0);
    const std::size_t afterFirst = heapInUse();
    EXPECT_GE(afterFirst, before + sizeof(double));
    s.setLowWarningSetpoint(2.0);
    EXPECT_EQ(heapInUse(), afterFirst);
    EXPECT_EQ(s.getLowWarningSetpoint(), 2.0);
}

TEST(Setpoints, OnlyUpWarningWritesItsBlockBetweenZeros)
{
    ParamSetpoints s;
    s.setUpWarningSetpoint(12.5);
    const QByteArray expected = plainBytes([](QDataStream &st) {
        st << qint8(0) << qint8(0) << qint8(1) << 12.5 << qint8(0);
    });
    const QByteArray bytes = bytesOf(s);
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(bytes.left(3), QByteArray::fromHex("000001"));
    EXPECT_EQ(bytes.right(1), QByteArray(1, '\0'));
    EXPECT_EQ(bytes.size(), 12);
}

TEST(Setpoints, EmptyWritesFourZeroBytes)
{
    EXPECT_EQ(bytesOf(ParamSetpoints()), QByteArray(4, '\0'));
}

TEST(Setpoints, AllFourWriteInTheirOrder)
{
    ParamSetpoints s;
    s.setUpEmergencySetpoint(4.0);
    s.setLowEmergencySetpoint(1.0);
    s.setUpWarningSetpoint(3.0);
    s.setLowWarningSetpoint(2.0);
    const QByteArray expected = plainBytes([](QDataStream &st) {
        st << qint8(1) << 1.0 << qint8(1) << 2.0 << qint8(1) << 3.0 << qint8(1) << 4.0;
    });
    EXPECT_EQ(bytesOf(s), expected);
}

TEST(Setpoints, ReadsWhatWasWritten)
{
    ParamSetpoints sent;
    sent.setLowEmergencySetpoint(-3.0);
    sent.setUpEmergencySetpoint(0.0);
    ParamSetpoints received;
    const auto outcome = readFrom(bytesOf(sent), received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, 20u);
    const Presence p = presenceOf(received);
    EXPECT_TRUE(p.lowEmergency);
    EXPECT_FALSE(p.lowWarning);
    EXPECT_FALSE(p.upWarning);
    EXPECT_TRUE(p.upEmergency);
    EXPECT_EQ(received.getLowEmergencySetpoint(), -3.0);
    EXPECT_EQ(received.getUpEmergencySetpoint(), 0.0);
}

TEST(Setpoints, AnyNonZeroFlagMeansPresent)
{
    const QByteArray bytes = plainBytes([](QDataStream &st) {
        st << qint8(7) << 5.0 << qint8(-1) << 6.0 << qint8(0) << qint8(0);
    });
    ParamSetpoints s;
    EXPECT_TRUE(readFrom(bytes, s).result);
    EXPECT_EQ(s.getLowEmergencySetpoint(), 5.0);
    EXPECT_EQ(s.getLowWarningSetpoint(), 6.0);
    // A flag that is not 0 is written back as 1.
    const QByteArray rewritten = plainBytes([](QDataStream &st) {
        st << qint8(1) << 5.0 << qint8(1) << 6.0 << qint8(0) << qint8(0);
    });
    EXPECT_EQ(bytesOf(s), rewritten);
}

TEST(Setpoints, AbsentOnTheWireKeepsWhatAUsedObjectHeld)
{
    ParamSetpoints s;
    s.setLowWarningSetpoint(42.0);
    const auto outcome = readFrom(QByteArray(4, '\0'), s);
    EXPECT_TRUE(outcome.result);
    bool ok = false;
    EXPECT_EQ(s.getLowWarningSetpoint(&ok), 42.0);
    EXPECT_TRUE(ok);
    const QByteArray expected = plainBytes([](QDataStream &st) {
        st << qint8(0) << qint8(1) << 42.0 << qint8(0) << qint8(0);
    });
    EXPECT_EQ(bytesOf(s), expected);
}

TEST(Setpoints, PresentOnTheWireReplacesTheOldValueWithoutGrowingTheHeap)
{
    ParamSetpoints s;
    s.setUpWarningSetpoint(1.0);
    ParamSetpoints other;
    other.setUpWarningSetpoint(9.0);
    const QByteArray bytes = bytesOf(other);
    const std::size_t before = heapInUse();
    {
        QContainerPacket packet(bytes);
        EXPECT_TRUE(s.read(packet));
    }
    {
        QContainerPacket packet(bytes);
        EXPECT_TRUE(s.read(packet));
    }
    EXPECT_EQ(heapInUse(), before);
    EXPECT_EQ(s.getUpWarningSetpoint(), 9.0);
}

TEST(Setpoints, TruncatedThresholdIsPresentAtZero)
{
    const QByteArray bytes = plainBytes([](QDataStream &st) { st << qint8(1); });
    ParamSetpoints s;
    EXPECT_TRUE(readFrom(bytes, s).result);
    bool ok = false;
    EXPECT_EQ(s.getLowEmergencySetpoint(&ok), 0.0);
    EXPECT_TRUE(ok);
    EXPECT_FALSE(presenceOf(s).lowWarning);
}

TEST(Setpoints, ReadOfNothingReportsSuccess)
{
    ParamSetpoints s;
    EXPECT_TRUE(readFrom(QByteArray(), s).result);
    EXPECT_FALSE(s.enabled());
}

TEST(Setpoints, XmlAttributesMatchTheirThresholds)
{
    const ParamSetpoints s(attributesOf(QStringLiteral("<p les=\"-20\" lws=\"-10\" uws=\"10\" ues=\"20\"/>")));
    EXPECT_EQ(s.getLowEmergencySetpoint(), -20.0);
    EXPECT_EQ(s.getLowWarningSetpoint(), -10.0);
    EXPECT_EQ(s.getUpWarningSetpoint(), 10.0);
    EXPECT_EQ(s.getUpEmergencySetpoint(), 20.0);
}

TEST(Setpoints, XmlMissingAttributesStayAbsent)
{
    const ParamSetpoints s(attributesOf(QStringLiteral("<p uws=\"10\" hi=\"5\"/>")));
    const Presence p = presenceOf(s);
    EXPECT_FALSE(p.lowEmergency);
    EXPECT_FALSE(p.lowWarning);
    EXPECT_TRUE(p.upWarning);
    EXPECT_FALSE(p.upEmergency);
}

TEST(Setpoints, XmlTextThatIsNoNumberGivesPresentZero)
{
    const ParamSetpoints s(attributesOf(QStringLiteral("<p les=\"abc\"/>")));
    bool ok = false;
    EXPECT_EQ(s.getLowEmergencySetpoint(&ok), 0.0);
    EXPECT_TRUE(ok);
    EXPECT_TRUE(s.enabled());
}

TEST(Setpoints, XmlEmptyValueGivesPresentZero)
{
    const ParamSetpoints s(attributesOf(QStringLiteral("<p ues=\"\"/>")));
    bool ok = false;
    EXPECT_EQ(s.getUpEmergencySetpoint(&ok), 0.0);
    EXPECT_TRUE(ok);
}

TEST(Setpoints, CopyIsDeep)
{
    ParamSetpoints a;
    a.setLowWarningSetpoint(1.0);
    ParamSetpoints b(a);
    b.setLowWarningSetpoint(2.0);
    b.setUpWarningSetpoint(3.0);
    EXPECT_EQ(a.getLowWarningSetpoint(), 1.0);
    bool ok = true;
    a.getUpWarningSetpoint(&ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(b.getLowWarningSetpoint(), 2.0);
}

TEST(Setpoints, AssignmentMakesAbsentWhatTheSourceLacks)
{
    ParamSetpoints target;
    target.setLowEmergencySetpoint(1.0);
    target.setUpEmergencySetpoint(2.0);
    ParamSetpoints source;
    source.setLowWarningSetpoint(5.0);
    target = source;
    const Presence p = presenceOf(target);
    EXPECT_FALSE(p.lowEmergency);
    EXPECT_TRUE(p.lowWarning);
    EXPECT_FALSE(p.upWarning);
    EXPECT_FALSE(p.upEmergency);
    EXPECT_EQ(target.getLowWarningSetpoint(), 5.0);
    source.setLowWarningSetpoint(6.0);
    EXPECT_EQ(target.getLowWarningSetpoint(), 5.0);
}

TEST(Setpoints, AssignmentFreesWhatTheTargetHeld)
{
    ParamSetpoints source;
    source.setLowWarningSetpoint(5.0);
    ParamSetpoints target;
    target.setLowWarningSetpoint(1.0);
    const std::size_t before = heapInUse();
    for (int i = 0; i < 10; ++i)
        target = source;
    EXPECT_EQ(heapInUse(), before);
}

TEST(Setpoints, SelfAssignmentKeepsTheValues)
{
    ParamSetpoints s;
    s.setUpWarningSetpoint(7.0);
    ParamSetpoints &alias = s;
    s = alias;
    EXPECT_EQ(s.getUpWarningSetpoint(), 7.0);
    EXPECT_FALSE(presenceOf(s).lowWarning);
}
