#ifndef EVENTSQUERYBASE_H
#define EVENTSQUERYBASE_H

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief What the event query and its cancellation share: the kind of query, the
 * requesting client's token and a tag.
 *
 * The base stamps no identity; EventsQuery and EventsQueryCancel do.
 *
 * Body: `queryType` (a signed char), `parent` (a signed 64-bit integer holding the
 * pointer's value) and `queryTag` (32 bits). readPrivate() always returns true; a
 * truncated body reads as zeros.
 */
class TELORPARAMS5_EXPORT EventsQueryBase : public QProtocolStruct
{
public:
    ~EventsQueryBase() override;

    /** Writes `queryType`, `parent` and `queryTag`. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads `queryType`, `parent` and `queryTag`. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The kind of query: `queryType`. */
    virtual signed char type() const;

    /** The kind of query; a cancellation is always 2. Other values are agreed with the server. */
    signed char queryType;
    /** The requesting client's token; never dereferenced. */
    const QObject *parent;
    /** Carried and not interpreted here; 0 after construction. */
    int queryTag;

protected:
    /** A base with @p queryType, @p parent and a `queryTag` of 0; no identity is stamped. */
    explicit EventsQueryBase(signed char queryType = 0, const QObject *parent = nullptr);
    /** Copies the header, the kept packet, the query type, the token and `queryTag`. */
    EventsQueryBase(const EventsQueryBase &other) = default;
    /** Copies the header, the kept packet, the query type, the token and `queryTag` of @p other. */
    EventsQueryBase &operator=(const EventsQueryBase &other) = default;
};

#endif // EVENTSQUERYBASE_H
