#ifndef EVENTSREADEDQUERY_H
#define EVENTSREADEDQUERY_H

#include <QtCore/QList>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

/**
 * @brief A request that marks events as read or unread. Identity 3, 20, 1.
 *
 * Body: `readed` (one byte, as QDataStream writes a bool), then `ids` in Qt's sequential
 * form: a 32-bit count and each number in 32 bits, in list order. On reading, `ids` is
 * replaced by the list read, as Qt's operator>> replaces it (a list that goes bad is left
 * empty), and room is reserved only for as many numbers as the bytes left can hold.
 * readPrivate() always returns true.
 */
class TELORPARAMS5_EXPORT EventsReadedQuery : public QProtocolStruct
{
public:
    /** A request with `readed` false and no numbers. */
    EventsReadedQuery();
    ~EventsReadedQuery() override;

    /** Writes `readed` and `ids`. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads `readed` and `ids`. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** Whether the events count as read. */
    bool readed;
    /** The numbers that the request applies to; their meaning is agreed with the server. */
    QList<int> ids;
};

#endif // EVENTSREADEDQUERY_H
