#ifndef TELORSTREAM_H
#define TELORSTREAM_H

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtCore/QDataStream>

#include "telorprotocol5_export.h"

/**
 * @brief A stand-alone data stream that owns its opening and closing.
 *
 * TELORStream is a QDataStream (Qt 5.15 format, big-endian, double precision) on a byte
 * array: either the caller's array or storage of its own. It starts closed; the order of
 * use is construct, open, stream, close if writing, destroy.
 *
 * Opening and closing read and write no bytes of their own, so a block read through a
 * TELORStream is exactly the bytes that were streamed into it.
 */
class TELORPROTOCOL5_EXPORT TELORStream : public QDataStream
{
public:
    /** A stream with storage of its own. */
    TELORStream();
    /**
     * A stream on the caller's array: what is written is appended to it, and what is read
     * comes from it. The caller keeps ownership; the array must outlive the stream.
     */
    explicit TELORStream(QByteArray *target);
    /** A stream that reads @p data. The stream keeps a shallow copy of the bytes. */
    explicit TELORStream(const QByteArray &data);
    /** Safe on a stream that is still open. */
    virtual ~TELORStream();

    /**
     * Prepares for reading from the first byte. Harmless on a stream with no data.
     * Returns whether the stream could be opened.
     */
    virtual bool openToRead();
    /** Prepares for writing: what is written is appended to the stream's bytes. */
    virtual bool openToWrite();
    /** Finishes writing. Writes nothing of its own. */
    virtual void close();

    /** The bytes that the stream holds now. */
    QByteArray data() const;

private:
    Q_DISABLE_COPY(TELORStream)
    void prepare();

    QByteArray m_ownData;
    QBuffer m_buffer;
};

/**
 * @brief The data stream on which tag blocks and the side stream of packed structures
 * are built. Behaves exactly as TELORStream.
 */
class TELORPROTOCOL5_EXPORT TELORDataStream : public TELORStream
{
public:
    /** A stream with storage of its own. */
    TELORDataStream();
    /** A stream on the caller's array; see TELORStream::TELORStream(QByteArray*). */
    explicit TELORDataStream(QByteArray *target);
    /** A stream that reads @p data. */
    explicit TELORDataStream(const QByteArray &data);
    ~TELORDataStream() override;
};

#endif // TELORSTREAM_H
