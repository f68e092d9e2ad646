#ifndef EVENTSRESULTBASE_H
#define EVENTSRESULTBASE_H

#include <QtCore/QtGlobal>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

/**
 * @brief What every answer to an event request starts with: the requesting client's
 * token and three numbers.
 *
 * A result stamps no identity: it takes one from the packet it is read from, or from
 * replyTo() on the side that answers. This library builds no result of its own; the
 * default constructors exist for the side that fills one and for the client that reads
 * one.
 *
 * Body: `parent` (signed 64 bits), then `value1`, `value2` and `value3` (32 bits each).
 * Derived results write and read these first. readPrivate() always returns true; a
 * truncated body reads as zeros.
 */
class TELORPARAMS5_EXPORT EventsResultBase : public QProtocolStruct
{
public:
    /** A result with every field 0; the header is the base's default. */
    EventsResultBase();
    ~EventsResultBase() override;

    /** Writes `parent`, `value1`, `value2` and `value3`. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads `parent`, `value1`, `value2` and `value3`. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The token of the requesting client, as it travels in an event query. */
    qint64 parent;
    /** Carried and not interpreted here. */
    int value1;
    /** Carried and not interpreted here. */
    int value2;
    /** Carried and not interpreted here. */
    int value3;
};

#endif // EVENTSRESULTBASE_H
