#ifndef EVENTSTRUCT_H
#define EVENTSTRUCT_H

/**
 * @file eventstruct.h
 * @brief The event record EventStruct and its stream form, the operators << and >>.
 */

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QDataStream;

/**
 * @brief The record of one event: four numbers that identify it, when it happened and
 * its named values. Identity 3, 17, 3 when it travels as a message of its own.
 *
 * An event is identified by `typeId` (the number of its type in the event type
 * catalogue), `eventMessage` (the number of one of that type's messages), `firstId` and
 * `secondId`. What the last two denote is agreed between the server and the applications;
 * this class only stores, compares and carries them.
 *
 * A record has two encodings, which differ only in where `secondId` stands:
 *
 * | Order | Message form (writePrivate(), readPrivate()) | Stream form (operator<<, operator>>) |
 * |-------|----------------------------------------------|--------------------------------------|
 * | 1     | `typeId`, 16 bits                            | `typeId`, 16 bits                    |
 * | 2     | `eventMessage`, 8 bits                       | `eventMessage`, 8 bits               |
 * | 3     | `firstId`, 32 bits                           | `firstId`, 32 bits                   |
 * | 4     | `dateTime`, QDateTime form                   | `secondId`, 32 bits                  |
 * | 5     | `parameters`                                 | `dateTime`, QDateTime form           |
 * | 6     | `secondId`, 32 bits                          | `parameters`                         |
 *
 * The message form follows the header of a message; the stream form has no header and is
 * what the event lists of queries and results and the wrapper messages carry. A record
 * written in one form therefore does not read back in the other.
 *
 * `parameters` travels in Qt's form for an associative container: a 32-bit count, then
 * each entry as QString key and QVariant value, from the hash's last entry to its first.
 * On reading, the hash is emptied, entries are added one by one without replacing equal
 * keys, and if the stream goes bad after an entry the hash is left empty and reading
 * stops. A value whose nested containers announce more elements than the bytes left can
 * hold reads as a bad stream, so no reader allocates for a count it cannot fill.
 *
 * A time in a zone that this side doesn't know, as `dateTime` or at any depth of a named
 * value, reads as a null QDateTime: Qt reads such a time as an invalid one that its own
 * writer cannot write again, so a record that was read can always be written again.
 *
 * The record is a value: copies, including those a QList makes, copy the header too.
 */
class TELORPARAMS5_EXPORT EventStruct : public QProtocolStruct
{
public:
    /** The empty record: every number 0, a null date, no named values; identity 3, 17, 3. */
    EventStruct();
    ~EventStruct() override;

    /** Writes the message form. */
    void writePrivate(QContainerPacket &packet) const override;
    /**
     * Reads the message form. Always returns true: a truncated body reads as zeros and
     * empty values, and the stream's status is not examined.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * True exactly when `typeId`, `eventMessage`, `firstId` and `secondId` are all
     * non-zero. The date and the named values play no part.
     */
    bool isValid() const;

    /**
     * True exactly when the four numbers and the dates are equal. `parameters` and the
     * header are not compared.
     */
    bool operator==(const EventStruct &other) const;
    /** The negation of operator==. */
    bool operator!=(const EventStruct &other) const { return !(*this == other); }

    /** The number of the event's type, as the `id` of an EventTypeInfoStruct. */
    unsigned short typeId;
    /** The number of the type's message, as a message key of an EventTypeInfoStruct. */
    unsigned char eventMessage;
    /** When the event happened. */
    QDateTime dateTime;
    /** Third of the four numbers that identify the event. */
    unsigned int firstId;
    /** Fourth of the four numbers that identify the event. */
    unsigned int secondId;
    /**
     * Named values of the event. A bit-change event carries "#old_bit_value",
     * "#new_bit_value", "#old_bit_state" and "#new_bit_state".
     */
    QHash<QString, QVariant> parameters;
};

/** Writes @p event in the stream form: no header, `secondId` ahead of the date. */
TELORPARAMS5_EXPORT QDataStream &operator<<(QDataStream &stream, const EventStruct &event);

/**
 * Reads @p event in the stream form. The header of @p event is left as it is. A
 * truncated record reads as zeros and empty values and leaves the stream's status bad,
 * which is how a list of records notices its end.
 */
TELORPARAMS5_EXPORT QDataStream &operator>>(QDataStream &stream, EventStruct &event);

#endif // EVENTSTRUCT_H
