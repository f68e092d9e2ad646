#ifndef EVENTSARCHIVERESULT_H
#define EVENTSARCHIVERESULT_H

#include <QtCore/QList>

#include "eventsresultbase.h"
#include "eventstruct.h"
#include "telorparams5_export.h"

/**
 * @brief An answer that carries a list of event records.
 *
 * Body, after that of EventsResultBase: the number of records (32 bits), then each
 * record in the stream form of EventStruct, in list order. On reading, `events` is
 * replaced by the list read, as Qt's operator>> replaces it: the list stops at the first
 * bad record and is then left empty. Room is reserved only for as many records as the
 * bytes left can hold. readPrivate() always returns true.
 */
class TELORPARAMS5_EXPORT EventsArchiveResult : public EventsResultBase
{
public:
    /** A result with every base field 0 and no records. */
    EventsArchiveResult();
    ~EventsArchiveResult() override;

    /** Writes the base fields, then the records. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads the base fields, then the records. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The records of the answer. */
    QList<EventStruct> events;
};

#endif // EVENTSARCHIVERESULT_H
