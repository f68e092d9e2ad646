// Computed limits: setters, getters, judgement of a value, change flag and wire form.

#include "calclimit.h"
#include "telortest.h"

#include <gtest/gtest.h>

#include <QtCore/QDataStream>

#include <cmath>
#include <limits>
#include <utility>

using telortest::plainBytes;

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();

QByteArray written(const CalcLimit &limits)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    limits.write(stream);
    return bytes;
}

using Getter = double (CalcLimit::*)(bool &) const;

/** A setpoint as its getter gives it: the value, and whether the setpoint is set. */
using Setpoint = std::pair<double, bool>;

/**
 * Asks @p getter of @p limits for its setpoint. The flag is asked for twice, from false
 * and from true, so that a getter that left it as it found it is seen.
 */
Setpoint setpointOf(const CalcLimit &limits, Getter getter)
{
    bool fromFalse = false;
    bool fromTrue = true;
    const double value = (limits.*getter)(fromFalse);
    (limits.*getter)(fromTrue);
    EXPECT_EQ(fromFalse, fromTrue) << "the getter did not set its flag";
    return Setpoint(value, fromFalse);
}

/** Limits with every setpoint set: possible 0 to 100, emergency 10 and 90, warning 20 and 80. */
CalcLimit everySetpointSet()
{
    CalcLimit limits;
    limits.setLowPossibleSetpoint(true, 0.0);
    limits.setHiPossibleSetpoint(true, 100.0);
    limits.setLowEmergencySetpoint(true, 10.0);
    limits.setLowWarningSetpoint(true, 20.0);
    limits.setHiWarningSetpoint(true, 80.0);
    limits.setHiEmergencySetpoint(true, 90.0);
    return limits;
}

} // namespace

TEST(CalcLimit, NewObjectHasNothing)
{
    CalcLimit limits;
    EXPECT_FALSE(limits.hasLimits());
    EXPECT_FALSE(limits.changed());
    EXPECT_TRUE(limits.isValid());
    for (double v : {-1e300, -1.0, 0.0, 1.0, 1e300, NaN})
        EXPECT_EQ(limits.checkValue(v), 8);

    const Getter getters[] = {&CalcLimit::lowPossibleSetpoint, &CalcLimit::hiPossibleSetpoint,
                              &CalcLimit::lowEmergencySetpoint, &CalcLimit::lowWarningSetpoint,
                              &CalcLimit::hiWarningSetpoint, &CalcLimit::hiEmergencySetpoint};
    for (Getter g : getters)
        EXPECT_EQ(setpointOf(limits, g), Setpoint(0.0, false));
}

TEST(CalcLimit, WarningAloneIsNotConsultedWithoutPossibleBlock)
{
    CalcLimit limits;
    limits.setLowWarningSetpoint(true, 10.0);
    EXPECT_TRUE(limits.hasLimits());
    EXPECT_EQ(limits.checkValue(5.0), 8);
}

TEST(CalcLimit, EmptyPossibleBlockOpensTheWarningSetpoints)
{
    CalcLimit limits;
    limits.setLowWarningSetpoint(true, 10.0);
    limits.setLowPossibleSetpoint(false, 0.0);
    EXPECT_EQ(limits.checkValue(5.0), 64);
}

TEST(CalcLimit, HasLimitsLooksOnlyAtFlags)
{
    CalcLimit limits;
    limits.setLowPossibleSetpoint(false, 1.0);
    limits.setHiWarningSetpoint(false, 2.0);
    EXPECT_FALSE(limits.hasLimits());
    limits.setHiEmergencySetpoint(true, 3.0);
    EXPECT_TRUE(limits.hasLimits());
}

TEST(CalcLimit, GetterReturnsValueEvenWhenFlagIsOff)
{
    CalcLimit limits;
    limits.setHiPossibleSetpoint(false, 42.5);
    EXPECT_EQ(setpointOf(limits, &CalcLimit::hiPossibleSetpoint), Setpoint(42.5, false));
    // The other block still does not exist.
    EXPECT_EQ(setpointOf(limits, &CalcLimit::hiWarningSetpoint), Setpoint(0.0, false));
}

TEST(CalcLimit, SameSetpointTwiceRaisesOnlyWhenFirstCallDid)
{
    CalcLimit limits;
    limits.setHiWarningSetpoint(true, 10.0);
    EXPECT_TRUE(limits.changed());
    limits.setHiWarningSetpoint(true, 10.0);
    EXPECT_TRUE(limits.changed()); // a setter never lowers the flag
    limits.dropFlag();
    limits.setHiWarningSetpoint(true, 10.0);
    EXPECT_FALSE(limits.changed());
}

TEST(CalcLimit, DefaultsOnNewBlockDoNotRaise)
{
    CalcLimit limits;
    // The block is created with false and 0.0; storing exactly that changes nothing.
    limits.setLowPossibleSetpoint(false, 0.0);
    EXPECT_FALSE(limits.changed());
    limits.setLowPossibleSetpoint(false, 1.0);
    EXPECT_TRUE(limits.changed());
    limits.dropFlag();
    limits.setLowPossibleSetpoint(true, 1.0);
    EXPECT_TRUE(limits.changed());
}

TEST(CalcLimit, NaNRaisesEveryTime)
{
    CalcLimit limits;
    limits.setLowEmergencySetpoint(true, NaN);
    EXPECT_TRUE(limits.changed());
    limits.dropFlag();
    limits.setLowEmergencySetpoint(true, NaN);
    EXPECT_TRUE(limits.changed());
    bool set = false;
    EXPECT_TRUE(std::isnan(limits.lowEmergencySetpoint(set)));
    EXPECT_TRUE(set);
}

TEST(CalcLimit, NaNValueIsInsideAnyLimits)
{
    const CalcLimit limits = everySetpointSet();
    EXPECT_EQ(limits.checkValue(NaN), 8);
}

TEST(CalcLimit, ValueOnASetpointIsInside)
{
    using Setter = void (CalcLimit::*)(bool, double);
    const Setter setters[] = {&CalcLimit::setLowPossibleSetpoint, &CalcLimit::setHiPossibleSetpoint,
                              &CalcLimit::setLowEmergencySetpoint, &CalcLimit::setLowWarningSetpoint,
                              &CalcLimit::setHiWarningSetpoint, &CalcLimit::setHiEmergencySetpoint};
    for (Setter set : setters) {
        CalcLimit limits;
        limits.setLowPossibleSetpoint(false, 0.0); // opens the warning and emergency setpoints
        (limits.*set)(true, 42.0);
        EXPECT_EQ(limits.checkValue(42.0), 8);
        EXPECT_NE(limits.checkValue(41.0) == 8, limits.checkValue(43.0) == 8); // one side is outside
    }
}

TEST(CalcLimit, EveryCode)
{
    const CalcLimit limits = everySetpointSet();
    EXPECT_EQ(limits.checkValue(-1.0), 1024);
    EXPECT_EQ(limits.checkValue(5.0), 256);
    EXPECT_EQ(limits.checkValue(15.0), 64);
    EXPECT_EQ(limits.checkValue(50.0), 8);
    EXPECT_EQ(limits.checkValue(85.0), 128);
    EXPECT_EQ(limits.checkValue(95.0), 512);
    EXPECT_EQ(limits.checkValue(101.0), 2048);
}

TEST(CalcLimit, EmergencyBeforeWarningAndPossibleFirst)
{
    CalcLimit limits;
    limits.setLowPossibleSetpoint(true, 0.0);
    limits.setLowEmergencySetpoint(true, 10.0);
    limits.setLowWarningSetpoint(true, 20.0);
    EXPECT_EQ(limits.checkValue(5.0), 256);
    EXPECT_EQ(limits.checkValue(-1.0), 1024);
}

TEST(CalcLimit, CrossedSetpointsReportTheLowSide)
{
    FullLimits full;
    full.lowWarningSet = true;
    full.lowWarning = 50.0;
    full.hiEmergencySet = true;
    full.hiEmergency = 10.0;
    EXPECT_EQ(full.checkValue(30.0), 64);

    BaseLimits base;
    base.lowPossibleSet = true;
    base.lowPossible = 50.0;
    base.hiPossibleSet = true;
    base.hiPossible = 10.0;
    EXPECT_EQ(base.checkValue(30.0), 1024);
}

TEST(CalcLimit, BlockCheckOrder)
{
    FullLimits full;
    full.lowEmergencySet = full.lowWarningSet = full.hiWarningSet = full.hiEmergencySet = true;
    full.lowEmergency = 10;
    full.lowWarning = 20;
    full.hiWarning = 80;
    full.hiEmergency = 90;
    EXPECT_EQ(full.checkValue(9), 256);
    EXPECT_EQ(full.checkValue(19), 64);
    EXPECT_EQ(full.checkValue(91), 512);
    EXPECT_EQ(full.checkValue(81), 128);
    EXPECT_EQ(full.checkValue(50), 8);
    full.hiEmergencySet = false;
    EXPECT_EQ(full.checkValue(91), 128);
}

TEST(CalcLimit, BlockWireForms)
{
    BaseLimits base;
    base.lowPossible = -1.5;
    base.hiPossible = 2.25;
    base.lowPossibleSet = true;
    QByteArray bytes;
    {
        QDataStream s(&bytes, QIODevice::WriteOnly);
        base.write(s);
    }
    EXPECT_EQ(bytes.size(), 18);
    EXPECT_EQ(bytes, plainBytes([](QDataStream &s) { s << -1.5 << 2.25 << true << false; }));

    FullLimits full;
    full.lowEmergency = 1;
    full.lowWarning = 2;
    full.hiWarning = 3;
    full.hiEmergency = 4;
    full.lowWarningSet = true;
    full.hiEmergencySet = true;
    bytes.clear();
    {
        QDataStream s(&bytes, QIODevice::WriteOnly);
        full.write(s);
    }
    EXPECT_EQ(bytes.size(), 36);
    EXPECT_EQ(bytes, plainBytes([](QDataStream &s) {
                  s << 1.0 << 2.0 << 3.0 << 4.0 << false << true << false << true;
              }));

    FullLimits back;
    QDataStream in(bytes);
    EXPECT_TRUE(back.read(in));
    EXPECT_EQ(back.lowWarning, 2.0);
    EXPECT_TRUE(back.lowWarningSet);
    EXPECT_TRUE(back.hiEmergencySet);
    EXPECT_FALSE(back.lowEmergencySet);
}

TEST(CalcLimit, UnchangedWritesOneByteWhateverItHolds)
{
    CalcLimit limits;
    limits.setLowPossibleSetpoint(true, 1.0);
    limits.setHiWarningSetpoint(true, 5.0);
    limits.dropFlag();
    EXPECT_EQ(written(limits), QByteArray(1, '\0'));
}

TEST(CalcLimit, ReadingTheUnchangedByteTouchesNoBlock)
{
    CalcLimit limits;
    limits.setLowPossibleSetpoint(true, 1.0);
    limits.setHiWarningSetpoint(true, 5.0);
    QDataStream in(QByteArray(1, '\0'));
    EXPECT_TRUE(limits.read(in));
    EXPECT_FALSE(limits.changed());
    EXPECT_EQ(setpointOf(limits, &CalcLimit::lowPossibleSetpoint), Setpoint(1.0, true));
    EXPECT_EQ(setpointOf(limits, &CalcLimit::hiWarningSetpoint), Setpoint(5.0, true));
}

TEST(CalcLimit, ChangedWithoutBlocksIsThreeBytes)
{
    CalcLimit limits;
    limits.upFlag();
    const QByteArray bytes = written(limits);
    EXPECT_EQ(bytes, QByteArray::fromHex("010000"));
    EXPECT_TRUE(limits.changed()); // writing leaves the flag
}

TEST(CalcLimit, FullRecordMatchesPlainWrites)
{
    CalcLimit limits;
    limits.setLowPossibleSetpoint(true, -10.0);
    limits.setHiPossibleSetpoint(false, 110.0);
    limits.setLowWarningSetpoint(true, 5.0);
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint8(1) << -10.0 << 110.0 << true << false << qint8(1) << 0.0 << 5.0 << 0.0
          << 0.0 << false << true << false << false;
    });
    EXPECT_EQ(written(limits), expected) << telortest::hex(written(limits));

    // Only the possible block
    CalcLimit onlyBase;
    onlyBase.setHiPossibleSetpoint(true, 3.0);
    EXPECT_EQ(written(onlyBase), plainBytes([](QDataStream &s) {
                  s << qint8(1) << qint8(1) << 0.0 << 3.0 << false << true << qint8(0);
              }));
    // Only the warning block
    CalcLimit onlyFull;
    onlyFull.setHiEmergencySetpoint(true, 7.0);
    EXPECT_EQ(written(onlyFull), plainBytes([](QDataStream &s) {
                  s << qint8(1) << qint8(0) << qint8(1) << 0.0 << 0.0 << 0.0 << 7.0 << false << false
                    << false << true;
              }));
}

TEST(CalcLimit, RoundTrip)
{
    CalcLimit limits;
    limits.setLowPossibleSetpoint(true, -10.0);
    limits.setHiPossibleSetpoint(true, 110.0);
    limits.setLowEmergencySetpoint(true, 0.0);
    limits.setLowWarningSetpoint(false, 5.0);
    limits.setHiWarningSetpoint(true, 90.0);
    limits.setHiEmergencySetpoint(true, 100.0);

    CalcLimit back;
    QDataStream in(written(limits));
    EXPECT_TRUE(back.read(in));
    EXPECT_TRUE(back.changed());
    EXPECT_TRUE(in.atEnd());
    bool a = false, b = false;
    for (double v : {-20.0, -5.0, 3.0, 50.0, 95.0, 105.0, 120.0})
        EXPECT_EQ(back.checkValue(v), limits.checkValue(v)) << v;
    EXPECT_EQ(back.lowWarningSetpoint(a), limits.lowWarningSetpoint(b));
    EXPECT_EQ(a, b);
}

TEST(CalcLimit, AbsentBlockOnTheWireKeepsWhatWasThere)
{
    CalcLimit receiver;
    receiver.setHiWarningSetpoint(true, 9.0);
    // The sender says: changed, possible block present, warning block absent.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint8(1) << 1.0 << 2.0 << true << true << qint8(0);
    });
    QDataStream in(bytes);
    EXPECT_TRUE(receiver.read(in));
    EXPECT_EQ(setpointOf(receiver, &CalcLimit::hiWarningSetpoint), Setpoint(9.0, true));
    EXPECT_EQ(setpointOf(receiver, &CalcLimit::hiPossibleSetpoint), Setpoint(2.0, true));
}

TEST(CalcLimit, TruncatedReadGivesZeros)
{
    CalcLimit receiver;
    QDataStream in(QByteArray::fromHex("0101"));
    EXPECT_TRUE(receiver.read(in));
    EXPECT_TRUE(receiver.changed());
    EXPECT_EQ(setpointOf(receiver, &CalcLimit::lowPossibleSetpoint), Setpoint(0.0, false));
}

TEST(CalcLimit, CopiesAreDeep)
{
    CalcLimit a;
    a.setLowPossibleSetpoint(true, 1.0);
    a.setHiWarningSetpoint(true, 2.0);
    CalcLimit b(a);
    b.setLowPossibleSetpoint(true, 5.0);
    bool set = false;
    EXPECT_EQ(a.lowPossibleSetpoint(set), 1.0);
    CalcLimit c;
    c = b;
    b.setHiWarningSetpoint(true, 7.0);
    EXPECT_EQ(c.hiWarningSetpoint(set), 2.0);
    EXPECT_EQ(c.lowPossibleSetpoint(set), 5.0);
    EXPECT_TRUE(c.changed());
}
