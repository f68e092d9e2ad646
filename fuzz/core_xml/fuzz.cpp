// Feeds arbitrary text to the core map's XML reader, the one that CoreMap::init() runs
// over the core file, and checks that both maps agree with each other.

#include "fuzztarget.h"

#include "corefile_p.h"

#include <QtCore/QBuffer>

#include <cstddef>
#include <cstdint>

using fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();
    if (size > (1u << 20))
        return 0;

    QBuffer device;
    device.setData(reinterpret_cast<const char *>(data), static_cast<int>(size));
    if (!device.open(QIODevice::ReadOnly))
        return 0;
    QMap<CorePoint, int> coordIdMap;
    QMap<int, CorePoint> idCoordMap;
    TelorCore::readCoreXml(device, coordIdMap, idCoordMap);

    // Every entry went into both maps, so each map is empty exactly when the other is,
    // and every position that survived points at a number whose position survived too.
    check(coordIdMap.isEmpty() == idCoordMap.isEmpty());
    for (auto it = coordIdMap.cbegin(); it != coordIdMap.cend(); ++it)
        check(idCoordMap.contains(it.value()));
    return 0;
}
