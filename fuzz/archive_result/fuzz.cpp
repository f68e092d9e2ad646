// Feeds arbitrary bytes to the readers of an archive answer: as the body of an
// ArchiveResult that a client receives, and as a run of series read one after another
// from a plain stream. What was read is written again, as a server would send it.

#include "archiveparamdata.h"
#include "archiveresult.h"
#include "qcontainerpacket.h"

#include <QtCore/QDataStream>
#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

namespace {

QByteArray packetWith(const QByteArray &body)
{
    QByteArray packet(QProtocolStruct::HeaderSize, '\0');
    const qint32 words[8] = {3, 7, 1, 1, qint32(body.size()), 0, 0, 0};
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], packet.data() + 4 * i);
    return packet + body;
}

void readResult(const QByteArray &body)
{
    ArchiveResult result;
    result.setPacket(packetWith(body));
    result.read();
    for (auto it = result.params.cbegin(); it != result.params.cend(); ++it) {
        const ArchiveParamData *series = result.getParam(static_cast<unsigned int>(it.key()));
        if (series)
            series->getData().size();
    }
    result.write();
}

void readSeriesRun(const QByteArray &bytes)
{
    QContainerPacket packet(bytes);
    while (!packet.atEnd()) {
        ArchiveParamData series;
        const bool ok = series.read(packet);
        QByteArray out;
        QContainerPacket writer(&out);
        series.write(writer);
        if (!ok)
            break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > (1u << 20))
        return 0;
    const QByteArray body(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    if (data[0] & 1)
        readSeriesRun(body);
    else
        readResult(body);
    return 0;
}
