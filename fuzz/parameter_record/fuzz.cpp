// Feeds arbitrary bytes to the readers of a parameter record and of computed limits.
//
// The first byte chooses the reader: a double, discrete or string parameter, or the
// computed limits alone. The rest is the record. The parameter takes its identifier
// from the record's first word, so that a record reaches the payload reader as often as
// one for another parameter is refused.

#include "recordfuzzing.h"

#include "bpdiscrete.h"
#include "bpdouble.h"
#include "bpstring.h"
#include "calclimit.h"
#include "parambaseptr.h"
#include "qcontainerpacket.h"

#include <cstdint>

namespace {

class FuzzDiscrete : public BPDiscrete
{
public:
    using BPDiscrete::BPDiscrete;
    void writePrivate(QContainerPacket &packet, bool) const override { BPDiscrete::writePrivate(packet); }
    using BPDiscrete::writePrivate;
};

template<typename Parameter>
void readRecords(const QByteArray &record, unsigned int id)
{
    Parameter parameter(id);
    ParamBasePtr handle(&parameter, true);
    recordfuzz::readRun(parameter, record);
    recordfuzz::writeAgain(handle);
    parameter.setInvalid(0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const int kind = data[0] % 4;
    const QByteArray record(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    const unsigned int id = recordfuzz::firstId(record);

    switch (kind) {
    case 0:
        readRecords<BPDouble>(record, id);
        break;
    case 1:
        readRecords<FuzzDiscrete>(record, id);
        break;
    case 2:
        readRecords<BPString>(record, static_cast<int>(id));
        break;
    default: {
        CalcLimit limits;
        QContainerPacket packet(record);
        limits.read(packet);
        limits.checkValue(1.0);
        QByteArray out;
        QContainerPacket writer(&out);
        limits.write(writer);
        break;
    }
    }
    return 0;
}
