// Valid inputs for the subscription fuzz target: a selector byte and a
// ParamSubscriptionResult body written by the library's own writers, with records of
// every kind the clients hold.

#include "fuzzsetup.h"
#include "seedwriter.h"

#include "paramsubscriptionresult.h"

namespace {

/** Appends the record of @p param to @p result. */
void add(ParamSubscriptionResult &result, const AbstractParameterBase &param, bool full)
{
    QContainerPacket packet(&result.data);
    param.write(packet, full);
    result.ids.append(static_cast<int>(param.getIdParameter()));
}

QByteArray seed(subscriptionfuzz::Selector selector, ParamSubscriptionResult &result,
               const QDateTime &when = resultfuzz::seedTime())
{
    result.dateTime = when;
    result.setParent(subscriptionfuzz::panel());
    return resultfuzz::seedOf(selector, result);
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter out(argc, argv);

    BPDouble d1(1);
    d1.setValue(21.5);
    d1.setState(8);
    BPString s2(2);
    s2.setValue(QStringLiteral("manual"));
    BPVariant v3(3);
    v3.setValue(QVariant(7));
    v3.setStateOnly(8);
    BPDouble d4(4);
    d4.setValue(4.25);
    d4.setState(128);
    BPVariant v5(5);
    v5.limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    v5.limitsPrivate().setHiPossibleSetpoint(true, 100.0);
    v5.limitsPrivate().setLowWarningSetpoint(true, 2.0);
    v5.limitsPrivate().setHiEmergencySetpoint(true, 90.0);
    v5.setValue(95.0);
    v5.setState(8);
    BPVariant v6(6);
    v6.setValue(QDateTime(QDate(2025, 12, 31), QTime(23, 59, 59), Qt::UTC));
    BPVariant mapVariant(3);
    mapVariant.setValue(QVariantMap{{QStringLiteral("a"), 1}, {QStringLiteral("b"), QVariantList{2, 3}}});

    {
        ParamSubscriptionResult forPanel;
        add(forPanel, d1, false);
        add(forPanel, s2, false);
        add(forPanel, v3, true);
        add(forPanel, v5, true);
        out.add(QStringLiteral("panel-mixed"), seed(subscriptionfuzz::Panel, forPanel));
    }
    {
        ParamSubscriptionResult forLogger;
        add(forLogger, d1, false);
        add(forLogger, d4, false);
        add(forLogger, v5, false);
        out.add(QStringLiteral("logger"), seed(subscriptionfuzz::Logger, forLogger));
    }
    {
        ParamSubscriptionResult variants;
        add(variants, mapVariant, true);
        add(variants, v5, true);
        add(variants, v6, true); // a date record for the double and the variant under 6
        out.add(QStringLiteral("panel-variants"), seed(subscriptionfuzz::Panel, variants));
    }
    {
        ParamSubscriptionResult dropped;
        add(dropped, d1, false);
        add(dropped, d4, false); // the panel holds nothing under 4
        out.add(QStringLiteral("panel-unknown-identifier"), seed(subscriptionfuzz::Panel, dropped));
        out.add(QStringLiteral("null-token"), seed(subscriptionfuzz::NullToken, dropped));
        out.add(QStringLiteral("stranger"), seed(subscriptionfuzz::Stranger, dropped));
        out.add(QStringLiteral("kept-token"), seed(subscriptionfuzz::KeepToken, dropped));
    }
    {
        // Times in zones, whose names the reader looks up.
        ParamSubscriptionResult zoned;
        BPVariant zonedVariant(3);
        zonedVariant.setValue(resultfuzz::zonedTimes());
        add(zoned, zonedVariant, false);
        out.add(QStringLiteral("zoned-times"),
                seed(subscriptionfuzz::Panel, zoned, resultfuzz::zonedSeedTime()));
    }
    {
        ParamSubscriptionResult empty;
        out.add(QStringLiteral("empty"), seed(subscriptionfuzz::Logger, empty));
    }
    return out.finish();
}
