// Feeds arbitrary bytes to the readers of list and map parameter records.
//
// The first byte chooses the kind: a BPList or a BPMap. The rest is a run of records.
// The parameter takes its identifier from the first word, so that a record reaches the
// payload reader as often as one for another parameter is refused. What was read is then
// used as a client uses it and written back as a server would write it.

#include "bplist.h"
#include "bpmap.h"
#include "parambaseptr.h"
#include "qcontainerpacket.h"

#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

namespace {

template<typename Parameter>
void readRecords(const QByteArray &records, unsigned int id)
{
    Parameter parameter(id);
    ParamBasePtr handle(&parameter, true);
    QContainerPacket packet(records);
    while (packet.bytesLeft() > 0 && parameter.read(packet)) {
    }
    parameter.stringValue(2, 'f');
    parameter.floatValue();
    parameter.getValue();
    QByteArray out;
    QContainerPacket writer(&out);
    handle.write(writer);
    parameter.setInvalid(0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > (1u << 20))
        return 0;
    const QByteArray records(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    const unsigned int id = records.size() >= 4 ? qFromBigEndian<quint32>(records.constData()) : 0;
    if (data[0] % 2 == 0)
        readRecords<BPList>(records, id);
    else
        readRecords<BPMap>(records, id);
    return 0;
}
