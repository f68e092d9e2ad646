#ifndef RECORDFUZZING_H
#define RECORDFUZZING_H

// Shared by the fuzz targets that read runs of parameter records, and by their seed
// programs: the identifier a run names first, the walk of a run as a receiver reads it,
// the record written again through its handle, and a seed that leads with a kind byte.

#include "abstractparameterbase.h"
#include "parambaseptr.h"
#include "qcontainerpacket.h"

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

namespace recordfuzz {

/** The identifier in the first word of @p records; 0 when there is no whole word. */
inline unsigned int firstId(const QByteArray &records)
{
    return records.size() >= 4 ? qFromBigEndian<quint32>(records.constData()) : 0;
}

/**
 * Reads @p records into @p parameter back to back until one is refused or the bytes run
 * out, as a receiver walks a result.
 */
inline void readRun(AbstractParameterBase &parameter, const QByteArray &records)
{
    QContainerPacket packet(records);
    while (packet.bytesLeft() > 0 && parameter.read(packet)) {
    }
}

/** Writes the record of the parameter behind @p handle again, as a server would. */
inline void writeAgain(const ParamBasePtr &handle)
{
    QByteArray out;
    QContainerPacket writer(&out);
    handle.write(writer);
}

/** A seed: the @p kind byte, then @p copies records of @p parameter, the first one full. */
inline QByteArray withKind(char kind, const AbstractParameterBase &parameter, int copies = 1)
{
    QByteArray bytes(1, kind);
    QContainerPacket out(&bytes);
    for (int i = 0; i < copies; ++i)
        parameter.write(out, i == 0);
    return bytes;
}

} // namespace recordfuzz

#endif // RECORDFUZZING_H
