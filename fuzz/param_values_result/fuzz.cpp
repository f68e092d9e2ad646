// Feeds arbitrary bytes to the one-shot values path: the body of a ParamValuesResult as a
// server would send it, applied by ParamValuesStruct::newDataSlot() to a client's objects
// of several kinds; and the same bytes as the body of a ParamValuesQuery, as a server
// reads it. The result and the objects are written again, as a relay would. The token
// field is forced to the structure's own token unless the selector byte says otherwise,
// so that the record walk is reached.

#include "fuzzsetup.h"
#include "fuzztarget.h"

#include "paramvaluesquery.h"
#include "paramvaluesresult.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > (1u << 20))
        return 0;
    const auto selector = static_cast<valuesfuzz::Selector>(data[0] % 4);
    QByteArray body(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    switch (selector) {
    case valuesfuzz::OwnToken:
        body = resultfuzz::withToken(body, valuesfuzz::ownToken());
        break;
    case valuesfuzz::OtherToken:
        body = resultfuzz::withToken(body, valuesfuzz::otherToken());
        break;
    case valuesfuzz::NullToken:
        body = resultfuzz::withToken(body, nullptr);
        break;
    case valuesfuzz::KeepToken:
        break;
    }

    ParamValuesResult result;
    result.setPacket(fuzz::packetWith(3, 8, 1, body));
    result.read(); // a null token reads as false; the structure judges the token itself
    result.write(); // what was read can be written again

    ParamValuesStruct values(valuesfuzz::ownToken());
    QList<QSharedPointer<AbstractParameterBase>> objects;
    valuesfuzz::fill(values, &objects);
    values.newDataSlot(result);
    values.query();
    resultfuzz::writeAll(objects);

    ParamValuesQuery query;
    query.setPacket(fuzz::packetWith(3, 8, 1, body));
    query.read();
    return 0;
}
