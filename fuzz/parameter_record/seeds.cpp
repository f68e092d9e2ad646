// Writes valid parameter records and computed-limits records, built with the library's
// own writers, as the seed corpus of the parameter record fuzz target. Each seed starts
// with the byte that selects the reader.

#include "bpdiscrete.h"
#include "bpdouble.h"
#include "bpstring.h"
#include "calclimit.h"
#include "qcontainerpacket.h"
#include "recordfuzzing.h"
#include "seedwriter.h"

namespace {

class SeedDiscrete : public BPDiscrete
{
public:
    using BPDiscrete::BPDiscrete;
    void writePrivate(QContainerPacket &packet, bool) const override { BPDiscrete::writePrivate(packet); }
    using BPDiscrete::writePrivate;
};

using recordfuzz::withKind;

QByteArray limitsRecord(const CalcLimit &limits)
{
    QByteArray bytes(1, '\x03');
    QContainerPacket out(&bytes);
    limits.write(out);
    return bytes;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    BPDouble d(101);
    d.setValue(23.5);
    d.setState(8);
    seeds.add(QStringLiteral("double"), withKind(0, d));
    seeds.add(QStringLiteral("double-twice"), withKind(0, d, 2));

    SeedDiscrete n(102);
    n.setValue(0x00F0);
    n.setState(4096);
    seeds.add(QStringLiteral("discrete"), withKind(1, n));

    BPString s(103);
    s.setValue(QStringLiteral("valve open"));
    s.setState(8);
    seeds.add(QStringLiteral("string"), withKind(2, s));
    BPString nullText(104);
    seeds.add(QStringLiteral("string-null"), withKind(2, nullText));

    CalcLimit unchanged;
    seeds.add(QStringLiteral("limits-unchanged"), limitsRecord(unchanged));
    CalcLimit both;
    both.setLowPossibleSetpoint(true, -10.0);
    both.setHiPossibleSetpoint(true, 110.0);
    both.setLowWarningSetpoint(true, 5.0);
    both.setHiEmergencySetpoint(true, 100.0);
    seeds.add(QStringLiteral("limits-both"), limitsRecord(both));
    CalcLimit flagOnly;
    flagOnly.upFlag();
    seeds.add(QStringLiteral("limits-flag-only"), limitsRecord(flagOnly));

    return seeds.finish();
}
