#ifndef TELORFRAMEREADER_H
#define TELORFRAMEREADER_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <deque>

#include "telorlink5_export.h"

/**
 * @brief Cuts a stream of received bytes into frames.
 *
 * A frame is exactly what QProtocolStruct::write() produces: the 32-byte header, then as
 * many body bytes as the header's body-length word (the fifth big-endian word) says.
 * Bytes are handed in as they arrive, in pieces of any size; a frame split over several
 * pieces is kept until it is whole, and a piece that holds several frames yields them all,
 * in order.
 *
 * A body-length word that is negative or larger than maxBodyLength() is a fault of the
 * stream: from then on append() refuses every byte and returns false, and errorString()
 * says why. Frames that were whole before the faulty header can still be taken. No other
 * header word is looked at; what a frame means is the business of whoever reads it.
 *
 * Memory: the reader holds the frames not yet taken, plus the bytes of at most one
 * unfinished frame, which never exceeds the header, maxBodyLength() and the last piece
 * handed in. It never reserves room for a body before its bytes have arrived.
 *
 * The reader knows nothing of sockets and is used by one thread at a time.
 */
class TELORLINK5_EXPORT TELORFrameReader
{
public:
    /** Size of a frame header in bytes. */
    static constexpr int HeaderSize = 32;
    /** The largest body accepted unless setMaxBodyLength() says otherwise: 64 MiB. */
    static constexpr qint64 DefaultMaxBodyLength = 64 * 1024 * 1024;
    /** The largest value setMaxBodyLength() takes: 1 GiB. */
    static constexpr qint64 MaxBodyLengthLimit = 1024 * 1024 * 1024;

    TELORFrameReader();

    /**
     * Sets the largest body length a header may announce. Values below 0 count as 0 and
     * values above MaxBodyLengthLimit as that limit. It applies to every header that has
     * not been checked yet, that is to every header not yet wholly received.
     */
    void setMaxBodyLength(qint64 bytes);
    /** The largest body length accepted. */
    qint64 maxBodyLength() const;

    /**
     * Adds received bytes. Returns false once a bad body-length word was seen, in this call
     * or an earlier one, and then keeps none of @p bytes; true otherwise.
     */
    bool append(const QByteArray &bytes);

    /** True when a whole frame is waiting to be taken. */
    bool hasFrame() const;
    /** The number of whole frames waiting. */
    int frameCount() const;

    /**
     * Removes the oldest whole frame and returns its bytes, header and body. Returns an
     * empty array when no whole frame is waiting.
     */
    QByteArray takeFrame();

    /** True once a bad body-length word was seen. */
    bool hasError() const;
    /**
     * Why the stream was refused, e.g. "body length 2147483647 above the limit 67108864"
     * or "body length -1 is negative"; empty while there is no fault.
     */
    QString errorString() const;

    /** The bytes held: frames not yet taken and the unfinished frame. */
    qint64 bufferedBytes() const;

    /** Forgets every byte, frame and fault; the limit stays. For a new connection. */
    void clear();

private:
    void scan();

    QByteArray m_buffer;
    int m_readPos = 0;           // start of the oldest frame not yet taken
    int m_scanPos = 0;           // start of the first frame not yet whole
    std::deque<int> m_frameEnds; // end offsets of the whole frames, oldest first
    qint64 m_maxBodyLength = DefaultMaxBodyLength;
    QString m_error;
};

#endif // TELORFRAMEREADER_H
