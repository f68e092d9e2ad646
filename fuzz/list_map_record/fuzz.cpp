// Feeds arbitrary bytes to the readers of list and map parameter records.
//
// The first byte chooses the kind: a BPList or a BPMap. The rest is a run of records.
// The parameter takes its identifier from the first word, so that a record reaches the
// payload reader as often as one for another parameter is refused. What was read is then
// used as a client uses it and written back as a server would write it.

#include "fuzztarget.h"
#include "recordfuzzing.h"

#include "bplist.h"
#include "bpmap.h"
#include "parambaseptr.h"

#include <cstddef>
#include <cstdint>

namespace {

template<typename Parameter>
void readRecords(const QByteArray &records)
{
    Parameter parameter(recordfuzz::firstId(records));
    ParamBasePtr handle(&parameter, true);
    recordfuzz::readRun(parameter, records);
    parameter.stringValue(2, 'f');
    parameter.floatValue();
    parameter.getValue();
    recordfuzz::writeAgain(handle);
    parameter.setInvalid(0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::readSelected(data, size, {readRecords<BPList>, readRecords<BPMap>});
    return 0;
}
