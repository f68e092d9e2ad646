#ifndef ARCHIVEVALUE_H
#define ARCHIVEVALUE_H

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include "telorparams5_export.h"

class QDataStream;

/**
 * @brief One point of an archived series: a time, a value and the value's state.
 *
 * A plain value record, copied by value, with public fields. In any QDataStream a point
 * travels as `dateTime` (QDateTime form), `value` (QVariant form) and `state` (32 bits),
 * in this order. The point has no writer of its own: ArchiveParamData::write() writes the
 * three items, and the constructor from a stream is the reading side.
 *
 * A default point has a null time, an invalid value and the state 2, the state code for
 * "no data" that parameter objects start with too.
 */
class TELORPARAMS5_EXPORT ArchiveValue
{
public:
    /** A point with a null time, an invalid value and state 2. */
    ArchiveValue();

    /**
     * Reads a point from @p stream: time, value and state, in this order. The state comes
     * from the stream, not from the default. The stream's status is not examined, so a
     * truncated point reads as a null or zero time, an invalid value and state 0.
     *
     * A value that announces containers larger than the bytes left could hold, or nested
     * deeper than 64, reads as an invalid QVariant and leaves the stream at its end.
     *
     * A time in a zone that this side doesn't know, which Qt reads as an invalid QDateTime
     * but cannot write again, reads as a null QDateTime, both in `dateTime` and wherever it
     * stands inside `value`, so that a point read can always be written again. A zone name
     * with a ".." section is never looked up: `dateTime` reads as null, and a `value` that
     * holds such a time reads as an invalid QVariant. Every other time reads exactly as Qt
     * reads it.
     */
    explicit ArchiveValue(QDataStream &stream);

    /** A point holding @p dateTime, @p value and @p state exactly as given. */
    ArchiveValue(const QDateTime &dateTime, const QVariant &value, unsigned int state);
    /** A point whose value holds the `double` @p value. */
    ArchiveValue(const QDateTime &dateTime, double value, unsigned int state);
    /** A point whose value holds the `unsigned int` @p value. */
    ArchiveValue(const QDateTime &dateTime, unsigned int value, unsigned int state);
    /** A point whose value holds the QString @p value. */
    ArchiveValue(const QDateTime &dateTime, const QString &value, unsigned int state);
    /** A point whose value holds the QByteArray @p value. */
    ArchiveValue(const QDateTime &dateTime, const QByteArray &value, unsigned int state);

    /** Time of the point. */
    QDateTime dateTime;
    /** The value. */
    QVariant value;
    /** State of the value, as a parameter's state code; travels in 32 bits. */
    unsigned int state;
};

#endif // ARCHIVEVALUE_H
