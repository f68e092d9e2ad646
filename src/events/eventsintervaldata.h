#ifndef EVENTSINTERVALDATA_H
#define EVENTSINTERVALDATA_H

#include <QtCore/QDateTime>

#include "eventsresultbase.h"
#include "telorparams5_export.h"

/**
 * @brief An answer that carries a time interval.
 *
 * Body, after that of EventsResultBase: `begin`, then `end`, each in QDateTime form. Unlike
 * the dates of an IntervalQuery they have no presence byte: a null date travels as a null
 * QDateTime and reads back null, and so does a date in a zone that this side doesn't
 * know. readPrivate() always returns true.
 */
class TELORPARAMS5_EXPORT EventsIntervalData : public EventsResultBase
{
public:
    /** A result with every base field 0 and null dates. */
    EventsIntervalData();
    ~EventsIntervalData() override;

    /** Writes the base fields, `begin` and `end`. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads the base fields, `begin` and `end`. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** Start of the interval. */
    QDateTime begin;
    /** End of the interval. */
    QDateTime end;
};

#endif // EVENTSINTERVALDATA_H
