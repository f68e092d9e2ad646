#ifndef INTERVALQUERY_H
#define INTERVALQUERY_H

#include <QtCore/QDateTime>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

/**
 * @brief A plain request about a time interval. Identity 3, the constructor's
 * `messageId`, 1.
 *
 * Which `messageId` values are used is agreed between the applications and the server.
 *
 * Body: `begin`, then `end`, each as a presence byte (a signed char, 1 when the date is
 * valid and 0 otherwise) followed by the date in QDateTime form only when the byte is 1.
 * A date that is not valid therefore goes out as absent, and comes back null even when it
 * was not null. On reading, a presence byte of 0 sets the date to null and any other value
 * reads a date; a date in a zone that this side doesn't know reads as null.
 * readPrivate() always returns true.
 */
class TELORPARAMS5_EXPORT IntervalQuery : public QProtocolStruct
{
public:
    /** A request with null (open) `begin` and `end` and the identity 3, @p messageId, 1. */
    explicit IntervalQuery(int messageId);
    ~IntervalQuery() override;

    /** Writes `begin` and `end`, each behind its presence byte. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads `begin` and `end`. Always true; a truncated body reads as null dates. */
    bool readPrivate(QContainerPacket &packet) override;

    /** Start of the interval; null means open. */
    QDateTime begin;
    /** End of the interval; null means open. */
    QDateTime end;
};

#endif // INTERVALQUERY_H
