#ifndef COREFUNCTIONS_H
#define COREFUNCTIONS_H

/**
 * @file corefunctions.h
 * @brief The core map: the class CoreMap and the library's one instance, coreMap.
 */

#include <QtCore/QMap>

#include "corepoint.h"
#include "telorparams5_export.h"

/**
 * @brief The map between core positions and entry numbers, read from the core file.
 *
 * The core file is the XML file at "/../config/paramserver/core.xml" appended to
 * QCoreApplication::applicationDirPath(), without further normalising. It lists `FA`
 * elements, each with a decimal `id`, `x` and `y`; a `Core` element serves as the root.
 * init() reads it and keeps its table in two directions: coordId() from a position to an
 * entry's number, idCoord() from a number to a position.
 *
 * Numbers in the maps start at 0: an `FA` with `id` n has the number n - 1. A position has
 * the file's `y` as its x() and the file's `x` as its y(); this crossing of the axes is
 * deliberate, and both maps hold the point in this form.
 *
 * The global instance is ::coreMap. The application calls its init() once, when a
 * QCoreApplication exists, and reads the maps afterwards without locking.
 */
class TELORPARAMS5_EXPORT CoreMap
{
public:
    /** Empty maps; isValid() is false. */
    CoreMap();
    virtual ~CoreMap();

    /**
     * Reads the core file into the maps, without clearing them first.
     *
     * - A file that does not open leaves the maps as they are, and the read counts as
     *   good: isValid() then answers by whether the maps hold anything.
     * - Only start elements count, at any depth. `Core` is skipped. Each `FA` inserts its
     *   number under its point into coordId() and its point under its number into
     *   idCoord(); an existing key keeps its place and takes the new value. A missing or
     *   bad attribute reads as 0, so a bad `id` gives the number -1.
     * - Any other element stops the read at once: the qDebug line
     *   `corefunctions invalid tag  "<name>"` is logged with the element's local name, the
     *   entries read so far stay, and the read counts as bad. An element is told by its
     *   qualified name, so a prefixed `c:FA` is another element.
     * - Malformed XML ends the read as if the file ended there, and the read counts as
     *   good.
     *
     * Calling init() again adds to the maps. The reader ends on every input.
     */
    virtual void init();

    /** True if the last init() counted as good and neither map is empty. */
    bool isValid() const;
    /** Position to number, sorted by CorePoint's order. */
    const QMap<CorePoint, int> &coordId() const;
    /** Number to position. */
    const QMap<int, CorePoint> &idCoord() const;

private:
    QMap<CorePoint, int> coordIdMap;
    QMap<int, CorePoint> idCoordMap;
    bool readOk;
};

/**
 * The library's one core map, built empty when the library is loaded and destroyed when
 * it is unloaded. Loading does not read the core file: the application calls
 * `coreMap.init()`.
 */
extern TELORPARAMS5_EXPORT CoreMap coreMap;

#endif // COREFUNCTIONS_H
