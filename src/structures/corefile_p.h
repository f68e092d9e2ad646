#ifndef COREFILE_P_H
#define COREFILE_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the core map, its tests and its fuzz target and may change from one version to the next.
//

#include <QtCore/QMap>

#include "corepoint.h"
#include "telorparams5_export.h"

class QIODevice;

namespace TelorCore {

/**
 * Reads the core XML from @p device, which is open for reading, and inserts every `FA`
 * entry into both maps (see CoreMap::init()). Returns false if the read stopped at an
 * element other than `Core` and `FA`, after logging the line for it; true when the reader
 * came to its end, malformed XML included. Ends on every input.
 */
TELORPARAMS5_EXPORT bool readCoreXml(QIODevice &device, QMap<CorePoint, int> &coordIdMap,
                                     QMap<int, CorePoint> &idCoordMap);

} // namespace TelorCore

#endif // COREFILE_P_H
