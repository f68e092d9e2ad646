// Feeds arbitrary bytes to the readers of an archive answer: as the body of an
// ArchiveResult that a client receives, and as a run of series read one after another
// from a plain stream. What was read is written again, as a server would send it.

#include "fuzztarget.h"

#include "archiveparamdata.h"
#include "archiveresult.h"
#include "qcontainerpacket.h"

#include <QtCore/QDataStream>

#include <cstddef>
#include <cstdint>

namespace {

void readResult(const QByteArray &body)
{
    ArchiveResult result;
    result.setPacket(fuzz::packetWith(3, 7, 1, body));
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
    fuzz::readSelected(data, size, {readResult, readSeriesRun});
    return 0;
}
