#ifndef REGISTRATOREVENTSTRUCT_H
#define REGISTRATOREVENTSTRUCT_H

#include "eventstruct.h"
#include "qprotocolstruct.h"
#include "telorparams5_export.h"

/**
 * @brief A message that carries one event record.
 *
 * The record is held whole in `event`, with its own header; the message does not derive
 * from EventStruct. The constructor copies the record, header included, and leaves the
 * outer header as the base class made it: no identity is stamped, and whoever sends the
 * message gives it one (for instance with replyTo()).
 *
 * Body: `event` in the stream form of EventStruct (no header, `secondId` ahead of the
 * date). readPrivate() always returns true; a truncated body reads as zeros and empty
 * values.
 */
class TELORPARAMS5_EXPORT RegistratorEventStruct : public QProtocolStruct
{
public:
    /** A message that carries a copy of @p event; the outer header is the base's default. */
    explicit RegistratorEventStruct(const EventStruct &event);
    ~RegistratorEventStruct() override;

    /** Writes `event` in the stream form. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads `event` in the stream form; its header is left as it is. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The record carried, with a header of its own. */
    EventStruct event;
};

#endif // REGISTRATOREVENTSTRUCT_H
