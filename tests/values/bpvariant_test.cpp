// The variant parameter: values confirmed by the state, judging against the computed
// limits, display text, the combined change flag and the payload with the limits block.

#include "testparameters.h"
#include "telortest.h"

#include "bpvariant.h"
#include "getdtstring.h"
#include "qcontainerpacket.h"

#include <QtCore/QDateTime>
#include <QtCore/QVariantList>

#include <gtest/gtest.h>

#include <cmath>

using telortest::plainBytes;

namespace {

/** A possible-limits block that is present but has no flag, and a high warning setpoint of 10. */
void highWarningTen(BPVariant &p)
{
    p.limitsPrivate().setLowPossibleSetpoint(false, 0.0);
    p.limitsPrivate().setHiWarningSetpoint(true, 10.0);
}

/** Writes the record of @p p, as a handle's first or later write would. */
QByteArray recordOf(const AbstractParameterBase &p, bool full)
{
    QByteArray bytes;
    QContainerPacket packet(&bytes);
    p.write(packet, full);
    return bytes;
}

} // namespace

TEST(Variant, NewVariant)
{
    BPVariant p;
    EXPECT_FALSE(p.getValue().isValid());
    EXPECT_FALSE(p.variantValue().isValid());
    EXPECT_TRUE(p.stringValue(2, 'f').isNull());
    EXPECT_EQ(p.floatValue(), 0.0);
    EXPECT_EQ(p.valueType(), 5);
    EXPECT_EQ(p.getIdParameter(), 0u);
    EXPECT_EQ(p.getState(), 2u);
    EXPECT_FALSE(p.changed());

    BPVariant named(42);
    EXPECT_EQ(named.getIdParameter(), 42u);
    EXPECT_EQ(named.getState(), 2u);
    EXPECT_FALSE(named.changed());
    EXPECT_FALSE(named.getValue().isValid());
}

TEST(Variant, FirstStateOfNewVariantIsAChangeEvenIfTheStateStays)
{
    BPVariant p;
    CountingHandle h(&p, true);
    h.dropFlag();
    p.setState(2);
    EXPECT_EQ(p.getState(), 2u);
    EXPECT_TRUE(p.changed());
    EXPECT_EQ(h.ups, 1);

    // The second time nothing is pending; the flag is still up, so no refresh either.
    p.setState(2);
    EXPECT_TRUE(p.changed());
    EXPECT_EQ(h.ups, 1);
    EXPECT_EQ(h.refreshes, 0);
}

TEST(Variant, ConstructorWithIdentifierStartsWithTheValuePending)
{
    BPVariant p(5);
    p.setState(2);
    EXPECT_TRUE(p.changed());
}

TEST(Variant, SetValueRaisesNothing)
{
    BPVariant p(1);
    CountingHandle h(&p, true);
    h.dropFlag();
    p.setValue(3.5);
    EXPECT_FALSE(p.changed());
    EXPECT_FALSE(h.changed());
    EXPECT_EQ(h.ups + h.refreshes, 0);
    EXPECT_EQ(p.getValue(), QVariant(3.5));
}

TEST(Variant, EqualValueLeavesPendingAloneAndRefreshesOnlyAfterADrop)
{
    // Without dropping the flag in between: nothing at all happens.
    {
        BPVariant p(1);
        CountingHandle refreshing(&p, true);
        CountingHandle plain(&p, false);
        p.setValue(1.0);
        p.setState(8);
        EXPECT_EQ(p.getState(), 8u);
        EXPECT_TRUE(p.changed());
        refreshing.dropFlag();
        plain.dropFlag();
        const int upsBefore = refreshing.ups;

        p.setValue(1.0);
        p.setState(8);
        EXPECT_EQ(refreshing.ups, upsBefore);
        EXPECT_EQ(refreshing.refreshes, 0);
        EXPECT_FALSE(refreshing.changed());
        EXPECT_FALSE(plain.changed());
    }
    // With the flag dropped in between: the refreshing handle is refreshed.
    {
        BPVariant p(1);
        CountingHandle refreshing(&p, true);
        CountingHandle plain(&p, false);
        p.setValue(1.0);
        p.setState(8);
        p.dropFlag();
        refreshing.dropFlag();
        plain.dropFlag();
        const int upsBefore = refreshing.ups;

        p.setValue(1.0);
        p.setState(8);
        EXPECT_FALSE(p.changed());
        EXPECT_EQ(refreshing.ups, upsBefore);
        EXPECT_EQ(refreshing.refreshes, 1);
        EXPECT_TRUE(refreshing.changed());
        EXPECT_EQ(plain.refreshes, 1);
        EXPECT_FALSE(plain.changed());
    }
}

TEST(Variant, EqualValueOfAnotherTypeKeepsTheOldVariant)
{
    BPVariant p(1);
    p.setValue(QVariant(1.0));
    p.setState(8);
    p.dropFlag();
    p.setValue(QVariant(1)); // compares equal after conversion
    EXPECT_EQ(p.getValue().type(), QVariant::Double);
    p.setState(8);
    EXPECT_FALSE(p.changed());
}

TEST(Variant, NewValueIsAChangeEvenIfTheStateStays)
{
    BPVariant p(1);
    CountingHandle h(&p, false);
    p.setValue(1.0);
    p.setState(8);
    p.dropFlag();
    h.dropFlag();
    p.setValue(2.0);
    p.setState(8);
    EXPECT_TRUE(p.changed());
    EXPECT_TRUE(h.changed());
}

TEST(Variant, HighWarningGives128)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(11);
    p.setState(8);
    EXPECT_EQ(p.getState(), 128u);
}

TEST(Variant, CrossingASetpointTellsTheHandlesOnce)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(5);
    p.setState(8);
    EXPECT_EQ(p.getState(), 8u);
    p.dropFlag();
    CountingHandle h(&p, true);
    h.dropFlag();
    p.setValue(11);
    p.setState(8);
    EXPECT_EQ(p.getState(), 128u);
    EXPECT_EQ(h.ups, 1);
    EXPECT_EQ(h.refreshes, 0);
}

TEST(Variant, StateIsStoredBeforeTheHandlesHear)
{
    class StateSeeingHandle : public ParamBasePtr
    {
    public:
        using ParamBasePtr::ParamBasePtr;
        void upFlag() override
        {
            seen = paramPtr->getState();
            ParamBasePtr::upFlag();
        }
        unsigned int seen = 0;
    };
    BPVariant p(1);
    highWarningTen(p);
    StateSeeingHandle h(&p);
    p.setValue(11);
    p.setState(8);
    EXPECT_EQ(h.seen, 128u);
}

TEST(Variant, PendingValueIsConfirmedBeforeTheHandlesHear)
{
    // A handle that assigns the state again from inside its upFlag() finds the new state
    // stored and nothing pending any more, so its second assignment changes nothing.
    class ReassigningHandle : public ParamBasePtr
    {
    public:
        explicit ReassigningHandle(BPVariant *variant)
            : ParamBasePtr(variant, true)
            , variant(variant)
        {
        }
        void upFlag() override
        {
            if (++ups == 1)
                variant->setStateOnly(8);
            ParamBasePtr::upFlag();
        }
        BPVariant *variant;
        int ups = 0;
    };
    BPVariant p(1);
    ReassigningHandle h(&p);
    p.setValue(2.0);
    p.setStateOnly(8);
    EXPECT_EQ(p.getState(), 8u);
    EXPECT_EQ(h.ups, 1);
}

TEST(Variant, RefreshWaitsOnlyForTheParametersOwnFlag)
{
    // The limits' flag counts for changed(), but not for skipping the refresh.
    BPVariant p(1);
    highWarningTen(p);
    CountingHandle h(&p, true);
    p.setValue(5.0);
    p.setState(8);
    p.dropFlag();
    p.limitsPrivate().setHiWarningSetpoint(true, 20.0);
    ASSERT_TRUE(p.changed());
    ASSERT_EQ(h.refreshes, 0);
    p.setState(8); // nothing pending, already good: only the refresh
    EXPECT_EQ(h.refreshes, 1);
    EXPECT_EQ(p.getState(), 8u);
    p.setStateOnly(8);
    EXPECT_EQ(h.refreshes, 2);
    EXPECT_EQ(h.ups, 1); // from the first assignment only
}

TEST(Variant, ValueWithoutNumericFormStaysGood)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(QStringLiteral("x"));
    p.setState(8);
    EXPECT_EQ(p.getState(), 8u);
}

TEST(Variant, NumericTextIsJudged)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(QStringLiteral("12.5"));
    p.setState(8);
    EXPECT_EQ(p.getState(), 128u);
}

TEST(Variant, WarningLimitsWithoutPossibleBlockGiveGood)
{
    BPVariant p(1);
    p.limitsPrivate().setHiWarningSetpoint(true, 10.0);
    p.limitsPrivate().setLowEmergencySetpoint(true, -10.0);
    ASSERT_TRUE(p.limits().hasLimits());
    for (double v : {1000.0, -1000.0, 0.0}) {
        p.setValue(v);
        p.setState(8);
        EXPECT_EQ(p.getState(), 8u) << v;
    }
}

TEST(Variant, PossibleLimitWinsOverEmergency)
{
    BPVariant p(1);
    p.limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    p.limitsPrivate().setLowEmergencySetpoint(true, 10.0);
    p.limitsPrivate().setLowWarningSetpoint(true, 20.0);
    p.setValue(5.0);
    p.setState(8);
    EXPECT_EQ(p.getState(), 256u);
    p.setValue(-1.0);
    p.setState(8);
    EXPECT_EQ(p.getState(), 1024u);
}

TEST(Variant, SetStateOnlyDoesNotJudge)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(11);
    p.setStateOnly(8);
    EXPECT_EQ(p.getState(), 8u);
    EXPECT_TRUE(p.changed());
}

TEST(Variant, SetStateOnlyFollowsTheSameFlagRules)
{
    BPVariant p(1);
    CountingHandle h(&p, true);
    p.setStateOnly(2); // pending from construction
    EXPECT_TRUE(p.changed());
    EXPECT_EQ(h.ups, 1);
    p.setStateOnly(2); // own flag still up: no refresh
    EXPECT_EQ(h.refreshes, 0);
    p.dropFlag();
    p.setStateOnly(2);
    EXPECT_EQ(h.refreshes, 1);
    EXPECT_FALSE(p.changed());
}

TEST(Variant, OtherStatesAreTakenUnchanged)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(11);
    p.setState(4096);
    EXPECT_EQ(p.getState(), 4096u);
    p.setState(2);
    EXPECT_EQ(p.getState(), 2u);
}

TEST(Variant, GoodStateWithoutLimitsIsTakenUnchanged)
{
    BPVariant p(1);
    p.setValue(1e9);
    p.setState(8);
    EXPECT_EQ(p.getState(), 8u);
}

TEST(Variant, UnchangedValueInGoodStateIsNotJudgedAgain)
{
    // The limits move while neither value nor state does: nothing is judged until a
    // new value or another state arrives.
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(5);
    p.setState(8);
    ASSERT_EQ(p.getState(), 8u);
    p.limitsPrivate().setHiWarningSetpoint(true, 1.0);
    p.setState(8);
    EXPECT_EQ(p.getState(), 8u);
    p.setState(2);
    p.setState(8);
    EXPECT_EQ(p.getState(), 128u);
}

TEST(Variant, StateThroughTheBaseIgnoresLimitsAndKeepsTheValuePending)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(11);
    AbstractParameterBase &base = p;
    base.setState(8u);
    EXPECT_EQ(p.getState(), 8u);
    p.dropFlag();
    // The value is still pending: the next judgement through the variant reports it.
    p.setState(8);
    EXPECT_EQ(p.getState(), 128u);
    EXPECT_TRUE(p.changed());
}

TEST(Variant, UnsignedStateThroughTheVariantStillJudges)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(11);
    p.setState(8u); // reaches setState(int): there is no using-declaration
    EXPECT_EQ(p.getState(), 128u);
}

TEST(Variant, SetNoDataGoesThroughTheInheritedState)
{
    BPVariant p(1);
    highWarningTen(p);
    p.setValue(11);
    p.setNoData();
    EXPECT_EQ(p.getState(), 2u);
    p.dropFlag();
    p.setState(8); // still pending
    EXPECT_EQ(p.getState(), 128u);
}

TEST(Variant, ChangedIncludesTheLimitsFlag)
{
    BPVariant p(1);
    EXPECT_FALSE(p.changed());
    p.limitsPrivate().setHiWarningSetpoint(true, 10.0);
    EXPECT_TRUE(p.limits().changed());
    EXPECT_TRUE(p.changed());
    p.dropFlag();
    EXPECT_FALSE(p.changed());
    EXPECT_FALSE(p.limits().changed());

    p.setStateOnly(8);
    p.limitsPrivate().setHiWarningSetpoint(true, 11.0);
    p.dropFlag();
    EXPECT_FALSE(p.changed());
}

TEST(Variant, DropFlagLeavesHandlesUp)
{
    BPVariant p(1);
    ParamBasePtr h(&p);
    p.setStateOnly(8);
    p.dropFlag();
    EXPECT_TRUE(h.changed());
}

TEST(Variant, FullWriteRaisesTheLimitsFlag)
{
    BPVariant p(1);
    p.setValue(1.0);
    p.setStateOnly(8);
    p.dropFlag();
    ASSERT_FALSE(p.changed());
    recordOf(p, false);
    EXPECT_FALSE(p.changed());
    recordOf(p, true);
    EXPECT_TRUE(p.changed());
    EXPECT_TRUE(p.limits().changed());
    recordOf(p, false);
    EXPECT_TRUE(p.limits().changed()); // the write does not lower it
}

TEST(Variant, DateTimeRendersThroughDisplayForm)
{
    const QDateTime when(QDate(2026, 3, 5), QTime(14, 7, 9, 42));
    const QVariant v(when);
    EXPECT_EQ(BPVariant::stringValue(v, 2, 'f'), getDTstring(when));
    EXPECT_EQ(BPVariant::stringValue(v, 9, 'e'), getDTstring(when));
    EXPECT_EQ(BPVariant::stringValue(v, 0, 'g'), QStringLiteral("05.03.2026 14:07:09.042"));
    BPVariant p(1);
    p.setValue(v);
    EXPECT_EQ(p.stringValue(3, 'f'), getDTstring(when));
}

TEST(Variant, StringValueTexts)
{
    EXPECT_EQ(BPVariant::stringValue(QVariant(5), 2, 'f'), QStringLiteral("5.00"));
    EXPECT_EQ(BPVariant::stringValue(QVariant(true), 1, 'f'), QStringLiteral("1.0"));
    EXPECT_EQ(BPVariant::stringValue(QVariant(QByteArray("2.5")), 2, 'f'), QStringLiteral("2.50"));
    EXPECT_EQ(BPVariant::stringValue(QVariant(1234.5678), 3, 'e'), QStringLiteral("1.235e+03"));
    EXPECT_EQ(BPVariant::stringValue(QVariant(QStringLiteral("12.3456")), 1, 'f'),
              QStringLiteral("12.3456")); // a string is taken as text
    EXPECT_TRUE(BPVariant::stringValue(QVariant(), 2, 'f').isNull());
    EXPECT_TRUE(BPVariant::stringValue(QVariant(QVariantList{1, 2}), 2, 'f').isNull());
    EXPECT_TRUE(BPVariant::stringValue(QVariant(QByteArray("abc")), 2, 'f').isNull());
    BPVariant p(1);
    p.setValue(5);
    EXPECT_EQ(p.stringValue(2, 'f'), QStringLiteral("5.00"));
}

TEST(Variant, FloatValue)
{
    BPVariant p(1);
    p.setValue(QStringLiteral("2.5"));
    EXPECT_EQ(p.floatValue(), 2.5);
    p.setValue(QStringLiteral("nope"));
    EXPECT_EQ(p.floatValue(), 0.0);
    p.setValue(7);
    EXPECT_EQ(p.floatValue(), 7.0);
}

TEST(Variant, RecordWithoutLimitsChange)
{
    BPVariant p(9);
    p.setValue(2.5);
    p.setStateOnly(8);
    p.dropFlag();
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(9) << qint32(5) << qint32(8) << QVariant(2.5) << qint8(0);
    });
    EXPECT_EQ(recordOf(p, false), expected);
}

TEST(Variant, FullRecordCarriesBothBlocks)
{
    BPVariant p(9);
    p.limitsPrivate().setLowPossibleSetpoint(true, -5.0);
    p.limitsPrivate().setHiPossibleSetpoint(false, 500.0);
    p.limitsPrivate().setLowEmergencySetpoint(true, 1.0);
    p.limitsPrivate().setLowWarningSetpoint(false, 2.0);
    p.limitsPrivate().setHiWarningSetpoint(true, 3.0);
    p.limitsPrivate().setHiEmergencySetpoint(true, 4.0);
    p.setValue(QStringLiteral("on"));
    p.setStateOnly(64);
    p.dropFlag();
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(9) << qint32(5) << qint32(64) << QVariant(QStringLiteral("on"));
        s << qint8(1);
        s << qint8(1) << -5.0 << 500.0 << true << false;
        s << qint8(1) << 1.0 << 2.0 << 3.0 << 4.0 << true << false << true << true;
    });
    EXPECT_EQ(recordOf(p, true), expected);
}

TEST(Variant, FullRecordWithoutBlocks)
{
    BPVariant p(3);
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(3) << qint32(5) << qint32(2) << QVariant() << qint8(1) << qint8(0) << qint8(0);
    });
    EXPECT_EQ(recordOf(p, true), expected);
}

TEST(Variant, ReadsARecordBuiltByHand)
{
    const QDateTime when(QDate(2025, 1, 2), QTime(3, 4, 5, 6), Qt::UTC);
    const QByteArray record = plainBytes([&](QDataStream &s) {
        s << qint32(4) << qint32(5) << qint32(512) << QVariant(when);
        s << qint8(1) << qint8(0) << qint8(1) << 1.0 << 2.0 << 3.0 << 4.0 << false << false << false << true;
    });
    BPVariant p(4);
    QContainerPacket packet(record);
    ASSERT_TRUE(p.read(packet));
    EXPECT_EQ(p.getState(), 512u);
    EXPECT_EQ(p.getValue(), QVariant(when));
    EXPECT_TRUE(p.dataReceived());
    bool set = false;
    EXPECT_EQ(p.limits().hiEmergencySetpoint(set), 4.0);
    EXPECT_TRUE(set);
    p.limits().lowPossibleSetpoint(set);
    EXPECT_FALSE(set);
    EXPECT_EQ(packet.bytesLeft(), 0);
}

TEST(Variant, RoundTripThroughARecord)
{
    BPVariant source(11);
    source.limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    source.limitsPrivate().setHiEmergencySetpoint(true, 95.0);
    source.setValue(99.5);
    source.setState(8);
    ASSERT_EQ(source.getState(), 512u);
    const QByteArray record = recordOf(source, true);

    BPVariant target(11);
    QContainerPacket packet(record);
    ASSERT_TRUE(target.read(packet));
    EXPECT_EQ(target.getValue(), QVariant(99.5));
    EXPECT_EQ(target.getState(), 512u); // the sender's verdict, not judged again
    EXPECT_TRUE(target.changed());
    EXPECT_EQ(target.limits().checkValue(99.5), 512);
    EXPECT_EQ(recordOf(target, true), record);
}

TEST(Variant, ReadReplacesTheValueWithoutTouchingPending)
{
    BPVariant p(1);
    p.setValue(1.0);
    p.setStateOnly(8); // pending cleared
    p.dropFlag();
    const QByteArray record = plainBytes([](QDataStream &s) {
        s << qint32(1) << qint32(5) << qint32(8) << QVariant(1.0) << qint8(0);
    });
    QContainerPacket packet(record);
    ASSERT_TRUE(p.read(packet));
    p.dropFlag();
    p.setState(8); // equal state, nothing pending
    EXPECT_FALSE(p.changed());
}

TEST(Variant, TruncatedPayloadReadsAsInvalid)
{
    const QByteArray record = plainBytes([](QDataStream &s) { s << qint32(1) << qint32(5) << qint32(8); });
    BPVariant p(1);
    p.setValue(3.0);
    QContainerPacket packet(record);
    EXPECT_TRUE(p.read(packet));
    EXPECT_FALSE(p.getValue().isValid());
    EXPECT_FALSE(p.limits().changed());
}

TEST(Variant, HostileListCountReadsAsInvalidWithoutAllocating)
{
    // A QVariantList that announces 0x7FFFFFFF elements in a record of a few bytes.
    const QByteArray record = plainBytes([](QDataStream &s) {
        s << qint32(1) << qint32(5) << qint32(8);
        s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(0x7FFFFFFF);
        s << quint32(QMetaType::Int) << qint8(0) << qint32(1);
    });
    BPVariant p(1);
    QContainerPacket packet(record);
    EXPECT_TRUE(p.read(packet));
    EXPECT_FALSE(p.getValue().isValid());
}

TEST(Variant, HostileListCountIsRefusedAlsoBehindABrokenValue)
{
    // Records read one after another from one stream, as the elements of a field are: a
    // string of odd length ahead leaves the stream corrupt with this record still to come.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(3);
        s << qint32(1) << qint32(5) << qint32(8);
        s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(0x00100000);
        s << quint32(QMetaType::Int) << qint8(0) << qint32(1);
    });
    QContainerPacket packet(bytes);
    QString broken;
    packet >> broken;
    ASSERT_EQ(packet.status(), QDataStream::ReadCorruptData);
    BPVariant p(1);
    EXPECT_TRUE(p.read(packet));
    EXPECT_EQ(p.getState(), 8u);
    EXPECT_FALSE(p.getValue().isValid());
}

TEST(Variant, TimeInAnUnknownZoneIsKeptAsANullTimeSoThatTheRecordCanBeWrittenAgain)
{
    const QByteArray record = plainBytes([](QDataStream &s) {
        s << qint32(1) << qint32(5) << qint32(8);
        s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(2);
        s << quint32(QMetaType::QDateTime) << qint8(0) << QDate(2025, 6, 1) << QTime(12, 0) << qint8(Qt::TimeZone)
          << QStringLiteral("Nowhere/Nothing");
        s << QVariant(5);
        s << qint8(0);
    });
    BPVariant p(1);
    QContainerPacket packet(record);
    ASSERT_TRUE(p.read(packet));
    EXPECT_EQ(packet.bytesLeft(), 0);
    const QVariantList list = p.getValue().toList();
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(0).userType(), QMetaType::QDateTime);
    EXPECT_TRUE(list.at(0).toDateTime().isNull());
    EXPECT_EQ(list.at(1), QVariant(5));

    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(1) << qint32(5) << qint32(8) << QVariant(QVariantList{QDateTime(), 5}) << qint8(0);
    });
    EXPECT_EQ(recordOf(p, false), expected);
}

TEST(Variant, WrongIdentifierIsRefusedBeforeThePayload)
{
    const QByteArray record = plainBytes([](QDataStream &s) {
        s << qint32(2) << qint32(5) << qint32(64) << QVariant(1.0) << qint8(0);
    });
    BPVariant p(1);
    QContainerPacket packet(record);
    EXPECT_FALSE(p.read(packet));
    EXPECT_EQ(p.getState(), 64u);
    EXPECT_FALSE(p.changed());
    EXPECT_FALSE(p.getValue().isValid());
}
