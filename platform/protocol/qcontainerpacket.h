#ifndef QCONTAINERPACKET_H
#define QCONTAINERPACKET_H

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>

#include "telorprotocol5_export.h"

/**
 * @brief The view through which a message body, or a run of parameter records, is
 * written or read.
 *
 * A QContainerPacket is a QDataStream (Qt 5.15 format, big-endian, double precision) on a
 * byte array, so `packet << x`, `packet >> x` and passing it as `QDataStream&` all work.
 *
 * - QContainerPacket(const QByteArray&) opens the bytes for reading at position 0. The
 *   packet keeps a shallow copy of the array; the caller's array is never changed.
 * - QContainerPacket(QByteArray*) opens the caller's array for writing and appends to it.
 *   The caller keeps ownership of the array, which must outlive the packet.
 *
 * position() and at() count bytes from the start of that array. On a writing packet at()
 * goes back to overwrite bytes in place, and a later at() with the end position returns
 * to the end; bytes are never inserted.
 */
class TELORPROTOCOL5_EXPORT QContainerPacket : public QDataStream
{
public:
    /** Opens @p data for reading at position 0. */
    explicit QContainerPacket(const QByteArray &data);
    /** Opens @p target for writing; what is written is appended to it. */
    explicit QContainerPacket(QByteArray *target);
    ~QContainerPacket();

    /** The current byte position, counted from the start of the array. */
    unsigned int position() const;

    /**
     * Moves the stream to byte @p pos of the array.
     *
     * A position beyond the end of the array moves to the end: a packet never pads a
     * gap, and a reader that goes past the end reads zeros as it would at the end. Moving
     * also clears a past-the-end status of the stream, so that bytes read again give the
     * same result as the first time.
     */
    void at(unsigned int pos);

    /** The number of bytes from the current position to the end of the array. */
    qint64 bytesLeft() const;

private:
    Q_DISABLE_COPY(QContainerPacket)
};

#endif // QCONTAINERPACKET_H
