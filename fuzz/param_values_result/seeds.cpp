// Valid inputs for the values fuzz target: a selector byte and a ParamValuesResult body
// written by the library's own writers, with records of every kind the client holds.

#include "fuzzsetup.h"
#include "seedwriter.h"

#include "paramvaluesresult.h"

namespace {

/** Appends the leading identifier and the record of @p param to @p result. */
void add(ParamValuesResult &result, const AbstractParameterBase &param, bool full)
{
    QContainerPacket packet(&result.data);
    packet << static_cast<qint32>(param.getIdParameter());
    param.write(packet, full);
    result.ids.append(param.getIdParameter());
}

QByteArray seed(valuesfuzz::Selector selector, ParamValuesResult &result,
               const QDateTime &when = resultfuzz::seedTime())
{
    result.dateTime = when;
    result.parent = valuesfuzz::ownToken();
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
    s2.setValue(QStringLiteral("auto"));
    BPVariant v3(3);
    v3.setValue(QVariant(QStringLiteral("text")));
    v3.setStateOnly(8);
    BPDouble d4(4);
    d4.setValue(-1.0);
    d4.setState(64);
    BPVariant v5(5);
    v5.limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    v5.limitsPrivate().setHiPossibleSetpoint(true, 100.0);
    v5.limitsPrivate().setLowEmergencySetpoint(true, 5.0);
    v5.limitsPrivate().setHiWarningSetpoint(true, 10.0);
    v5.setValue(12.0);
    v5.setState(8);
    BPVariant dateVariant(3);
    dateVariant.setValue(QDateTime(QDate(2025, 12, 31), QTime(23, 59, 59), Qt::UTC));
    BPVariant listVariant(3);
    listVariant.setValue(QVariantList{1, QStringLiteral("two"), 3.0});

    {
        ParamValuesResult all;
        add(all, d1, false);
        add(all, s2, false);
        add(all, v3, true);
        add(all, d4, false);
        add(all, v5, true);
        out.add(QStringLiteral("mixed"), seed(valuesfuzz::OwnToken, all));
    }
    {
        ParamValuesResult repeated;
        add(repeated, v5, false);
        add(repeated, v5, true);
        add(repeated, dateVariant, true);
        add(repeated, listVariant, false);
        out.add(QStringLiteral("variants"), seed(valuesfuzz::OwnToken, repeated));
    }
    {
        // Times in zones, whose names the reader looks up.
        ParamValuesResult zoned;
        BPVariant zonedVariant(3);
        zonedVariant.setValue(resultfuzz::zonedTimes());
        add(zoned, zonedVariant, false);
        out.add(QStringLiteral("zoned-times"), seed(valuesfuzz::OwnToken, zoned, resultfuzz::zonedSeedTime()));
    }
    {
        ParamValuesResult unknownFirst;
        BPDouble d7(7);
        add(unknownFirst, d7, false);
        add(unknownFirst, d1, false);
        out.add(QStringLiteral("unregistered"), seed(valuesfuzz::OwnToken, unknownFirst));
    }
    {
        ParamValuesResult empty;
        out.add(QStringLiteral("empty"), seed(valuesfuzz::OwnToken, empty));
        ParamValuesResult other;
        add(other, d1, false);
        out.add(QStringLiteral("other-token"), seed(valuesfuzz::OtherToken, other));
        out.add(QStringLiteral("kept-token"), seed(valuesfuzz::KeepToken, other));
    }
    return out.finish();
}
