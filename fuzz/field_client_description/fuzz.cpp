// Feeds arbitrary bytes to a BPFieldClient whose description comes from the same bytes:
// a field's ParamInfo as a server sends it, then a run of field records for it.
//
// The first byte is a selector: with bit 0 set, the first word after the description is
// forced to the description's identifier, so that the cell reader is reached even by
// bytes that name another parameter. Sizes and cells of the description are whatever the
// bytes say, negative and huge ones included.

#include "recordfuzzing.h"

#include "bpfieldclient.h"
#include "parambaseptr.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > (1u << 20))
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));

    QContainerPacket described(bytes);
    ParamInfo description;
    description.read(described); // a refused description still builds a field
    QByteArray records = bytes.mid(static_cast<int>(qMin<qint64>(described.position(), bytes.size())));
    if ((data[0] & 1) && records.size() >= 4)
        qToBigEndian<quint32>(description.id, records.data());

    BPFieldClient field(description);
    ParamBasePtr client(&field, false);
    recordfuzz::readRun(field, records);

    // Use the cells as a client does, and write them again as a relay would.
    QByteArray out;
    QContainerPacket writer(&out);
    field.getState();
    field.elementType();
    for (const ParamFieldElementInfo &entry : description.elements) {
        if (const QSharedPointer<AbstractParameterBase> cell = field.param(entry.row, entry.column)) {
            cell->stringValue(2, 'f');
            cell->write(writer, true);
        }
        field.info(entry.row, entry.column);
    }
    field.setState(8);
    field.dropFlag();
    return 0;
}
