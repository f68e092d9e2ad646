#ifndef EVENTSDAYDATA_H
#define EVENTSDAYDATA_H

#include <QtCore/QDate>
#include <QtCore/QHash>

#include "eventsresultbase.h"
#include "telorparams5_export.h"

/**
 * @brief An answer with the numbers of one day: one number for each 16-bit key.
 *
 * The key has the width of the `typeId` of an EventStruct. What the numbers count is
 * agreed between the applications and the server.
 *
 * Body, after that of EventsResultBase: `day` in QDate form (an invalid date as Qt writes
 * it), then `dayValues` in Qt's form for a hash: a 32-bit count, then each entry as a
 * 16-bit key and a 32-bit value, from the hash's last entry to its first. Reading uses
 * Qt's rules for a hash: it is emptied first, each entry is added without replacing an
 * equal key, and a hash that goes bad is left empty. readPrivate() always returns true.
 */
class TELORPARAMS5_EXPORT EventsDayData : public EventsResultBase
{
public:
    /** A result with every base field 0, a null day and no numbers. */
    EventsDayData();
    ~EventsDayData() override;

    /** Writes the base fields, `day` and `dayValues`. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads the base fields, `day` and `dayValues`. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The day. */
    QDate day;
    /** One number for each 16-bit key. */
    QHash<unsigned short, int> dayValues;
};

#endif // EVENTSDAYDATA_H
