#ifndef EVENTSTRUCTWITHREADED_H
#define EVENTSTRUCTWITHREADED_H

#include "registratoreventstruct.h"
#include "telorparams5_export.h"

/**
 * @brief A message that carries one event record and whether it has been read.
 *
 * Like RegistratorEventStruct it stamps no identity. Body: `event` in the stream form of
 * EventStruct, then `readed` as one byte, as QDataStream writes a bool; the byte is
 * written whether the flag is set or not. readPrivate() always returns true.
 */
class TELORPARAMS5_EXPORT EventStructWithReaded : public RegistratorEventStruct
{
public:
    /** A message that carries a copy of @p event and the flag @p readed. */
    EventStructWithReaded(const EventStruct &event, bool readed);
    ~EventStructWithReaded() override;

    /** Writes `event` in the stream form, then `readed`. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads `event` in the stream form, then `readed`. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** Whether the event has been read. */
    bool readed;
};

#endif // EVENTSTRUCTWITHREADED_H
