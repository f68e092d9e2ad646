// Feeds arbitrary bytes to BPFieldClient: records of a field read into cells built from
// one of a few descriptions.
//
// The first byte chooses the description (its value modulo the number of shapes) and
// whether the first word of the records is forced to the field's identifier (bit 7), so
// that the cell reader is reached even by bytes that name another parameter. The rest is
// a run of field records, read back to back as a receiver reads them; the cells are then
// used as a client uses them.

#include "fieldshapes.h"
#include "recordfuzzing.h"

#include "bpfieldclient.h"
#include "parambaseptr.h"
#include "qcontainerpacket.h"

#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > (1u << 20))
        return 0;
    const auto shape = static_cast<fieldfuzz::Shape>(data[0] % fieldfuzz::ShapeCount);
    QByteArray records(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    if ((data[0] & 0x80) && records.size() >= 4)
        qToBigEndian<quint32>(fieldfuzz::FieldId, records.data());

    static const ParamInfo descriptions[] = {
        fieldfuzz::description(fieldfuzz::Mixed), fieldfuzz::description(fieldfuzz::Grid),
        fieldfuzz::description(fieldfuzz::Huge), fieldfuzz::description(fieldfuzz::Negative),
        fieldfuzz::description(fieldfuzz::ZeroIdentity)};
    BPFieldClient field(descriptions[shape]);
    ParamBasePtr client(&field, true);
    recordfuzz::readRun(field, records);

    // Use the cells as a client does, and write them again as a relay would.
    QByteArray out;
    QContainerPacket writer(&out);
    field.getState();
    field.elementType();
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int column = 0; column < 3; ++column) {
            if (const QSharedPointer<AbstractParameterBase> cell = field.param(row, column)) {
                cell->stringValue(2, 'f');
                cell->floatValue();
                cell->variantValue();
                cell->write(writer, true);
            }
            field.info(row, column);
        }
    }
    field.dropFlag();
    field.setState(8);
    client.write(writer);
    return 0;
}
