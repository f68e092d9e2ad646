#ifndef EVENTSQUERY_H
#define EVENTSQUERY_H

#include <QtCore/QDateTime>
#include <QtCore/QList>

#include "eventsquerybase.h"
#include "eventstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief A query for the events between two points in time. Identity 3, 12, 1.
 *
 * Each side of the interval is either a point in UTC (`beginPoint`, `endPoint`) or open:
 * `fromBegin` runs the query from the very beginning and `toEnd` to the very end. A new
 * query has neither points nor open sides and is not valid until both sides are settled
 * with setInterval(), setBeginPoint()/setFromBegin() and setEndPoint()/setToEnd().
 *
 * Body, after that of EventsQueryBase:
 *
 * | Order | Field              | Encoding                                        |
 * |-------|--------------------|-------------------------------------------------|
 * | 4     | validity           | signed char: isValid(), 1 or 0                  |
 * | 5     | `msecReset`        | bool                                            |
 * | 6     | `fromBegin`        | bool                                            |
 * | 7     | `beginPoint`       | QDateTime, only if `fromBegin` is false         |
 * | 8     | `toEnd`            | bool                                            |
 * | 9     | `endPoint`         | QDateTime, only if `toEnd` is false             |
 * | 10    | `option1`          | 32 bits                                         |
 * | 11    | number of events   | 32 bits                                         |
 * | 12    | `events`           | each record in the stream form of EventStruct   |
 * | 13    | `option2`          | 32 bits                                         |
 *
 * An invalid query is still written, and its body ends after a validity byte of 0. A
 * true flag in 6 or 8 means that no date follows.
 *
 * On reading, a validity byte of 0 ends the body and leaves the query's own fields as
 * they were. When the `msecReset` read is true, the receiver cuts the milliseconds off
 * each valid point it holds, whether or not a date followed; the sender's points go out
 * untouched. A point in a zone that this side doesn't know reads as null. `events` is
 * replaced by the list read; a list that goes bad is left empty, and room is reserved
 * only for as many records as the bytes left can hold. readPrivate() always returns true.
 *
 * The copy constructor does not copy the header: the copy carries the identity
 * 3, 12, 1 whatever the source's header holds, and it always has `msecReset` true.
 */
class TELORPARAMS5_EXPORT EventsQuery : public EventsQueryBase
{
public:
    /**
     * A query of the kind @p type for the client @p parent. `msecReset` is true,
     * `option1` and `option2` are -1, everything else is zero, false, null or empty.
     */
    EventsQuery(signed char type, QObject *parent);

    /**
     * A copy with a fresh header (identity 3, 12, 1). `queryType` comes from the virtual
     * type() of @p other; `parent`, `queryTag`, the points, `fromBegin`, `toEnd`,
     * `option1`, `localValue`, `events` and `option2` are copied; `msecReset` is true
     * whatever @p other holds.
     */
    EventsQuery(const EventsQuery &other);

    /** Assigns every field and the header, as the base classes assign them. */
    EventsQuery &operator=(const EventsQuery &other) = default;
    ~EventsQuery() override;

    /** Writes the body; see the class description. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads the body; see the class description. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * Sets both points, converted to UTC, and clears `fromBegin` and `toEnd`. Returns
     * false with nothing changed if @p begin or @p end is not valid or @p end is earlier
     * than @p begin; equal points are accepted.
     */
    virtual bool setInterval(const QDateTime &begin, const QDateTime &end);
    /** `beginPoint` becomes @p point in UTC and `fromBegin` false. No check; always true. */
    virtual bool setBeginPoint(const QDateTime &point);
    /** `endPoint` becomes @p point in UTC and `toEnd` false. No check; always true. */
    virtual bool setEndPoint(const QDateTime &point);
    /**
     * Whether both sides are settled: a side that is not open needs a valid point, and
     * when both points are valid the end must not be earlier than the beginning.
     */
    virtual bool isValid() const;
    /** `beginPoint` as it stands. */
    virtual QDateTime getBeginDateTime() const;
    /** `endPoint` as it stands. */
    virtual QDateTime getEndDateTime() const;

    /** Opens the query at the beginning: `fromBegin` true, `beginPoint` null. */
    void setFromBegin();
    /** Opens the query at the end: `toEnd` true, `endPoint` null. */
    void setToEnd();
    /** Stores `msecReset`. */
    void setMSecReset(bool reset);

    /** Whether the receiver cuts the milliseconds off the two points; true after construction. */
    bool msecReset;
    /** Start point, in UTC. */
    QDateTime beginPoint;
    /** End point, in UTC. */
    QDateTime endPoint;
    /** The query starts at the very beginning, and `beginPoint` is not used. */
    bool fromBegin;
    /** The query runs to the very end, and `endPoint` is not used. */
    bool toEnd;
    /** Carried and not interpreted here; -1 after construction. */
    int option1;
    /** Kept with the query and copied; it never travels. 0 after construction. */
    qint64 localValue;
    /** Event records that go with the query. */
    QList<EventStruct> events;
    /** Carried and not interpreted here; -1 after construction. */
    int option2;
};

#endif // EVENTSQUERY_H
