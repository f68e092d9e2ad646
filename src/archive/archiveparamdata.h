#ifndef ARCHIVEPARAMDATA_H
#define ARCHIVEPARAMDATA_H

#include <QtCore/QList>

#include "archivevalue.h"
#include "telorparams5_export.h"

class QDataStream;

/**
 * @brief One archived series: the points of one parameter, in the order they travel.
 *
 * In any QDataStream a series travels as `id` (32 bits), `auxValue` (32 bits), the
 * number of points (32 bits, signed), each point as an ArchiveValue (time, value, state),
 * and `id` once more. The closing copy of `id` tells the reader that it kept in step.
 *
 * An ArchiveResult owns the series it carries. The class has a virtual destructor and no
 * other virtual operation.
 */
class TELORPARAMS5_EXPORT ArchiveParamData
{
public:
    /** An empty record: `id` and `auxValue` zero, no points. */
    ArchiveParamData();
    virtual ~ArchiveParamData();

    /**
     * Fills a fresh record from @p stream.
     *
     * Returns false without reading anything if `id` or `auxValue` is not zero. Otherwise
     * reads `id`, `auxValue` and the number of points (zero or negative means none),
     * appends one ArchiveValue per point behind whatever `data` holds, reads the closing
     * word and returns whether it equals `id`. On a false return everything read so far
     * stays in the record. The stream's status is not examined: a truncated series reads
     * as zeros, except that a point is only appended while bytes are left, so a count
     * larger than the data costs nothing.
     */
    bool read(QDataStream &stream);

    /** Writes the record; the number of points is the size of `data`. */
    void write(QDataStream &stream) const;

    /** Empties `data`; `id` and `auxValue` stay, so the record is not fresh again. */
    void clear();

    /** The points, without copying them. */
    const QList<ArchiveValue> &getData() const;

    /** The parameter's identifier. */
    int id;
    /** A word that travels with the series; this library gives it no meaning. */
    int auxValue;
    /** The points, in the order in which they travel. */
    QList<ArchiveValue> data;
};

#endif // ARCHIVEPARAMDATA_H
