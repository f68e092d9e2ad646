#ifndef ABSTRACTVALUESTRUCT_H
#define ABSTRACTVALUESTRUCT_H

#include <QtCore/QByteArray>

#include "telorparams5_export.h"

class TELORDataStream;

/**
 * @brief Base of the fixed binary records that convert to and from a QByteArray.
 *
 * A record is a run of raw bytes with no header of its own, in the byte order of the
 * machine, as it would lie in memory in a packed structure. A subclass states its length
 * with size() and copies its fields in writeBuffer() and readBuffer(); the base does the
 * rest.
 *
 * Beside the record, each conversion builds a side stream, a TELORDataStream on a byte
 * array that the caller may name. toByteArray() writes the marker 0xAA55AA55 (a 32-bit
 * int) to it; fromByteArray() neither reads nor tests it. The record itself never holds
 * the marker.
 *
 * `checkSize` (true by default) makes fromByteArray() refuse bytes whose length is not
 * size(). A copy always starts with `checkSize` true; an assignment copies the fields of
 * a subclass and leaves the target's `checkSize` as it was.
 */
class TELORPARAMS5_EXPORT AbstractValueStruct
{
public:
    /** A record base with `checkSize` true. */
    AbstractValueStruct();
    virtual ~AbstractValueStruct();

    /** The length of the record in bytes. */
    virtual int size() const = 0;
    /**
     * Writes the fields at @p buffer in the record's order and moves @p buffer past
     * them. @p stream is the side stream, open for writing.
     */
    virtual void writeBuffer(char *&buffer, TELORDataStream &stream) const = 0;
    /**
     * Reads the fields at @p buffer in the record's order and moves @p buffer past them.
     * @p stream is the side stream, open for reading. The bytes at @p buffer must only be
     * read.
     */
    virtual void readBuffer(char *&buffer, TELORDataStream &stream) = 0;

    /** Sets `checkSize`. */
    void setCheckSize(bool check);

    /**
     * The record as size() bytes, written by writeBuffer() into bytes that start zeroed.
     *
     * The side stream is built on @p sideArray if it is not null (what is written is
     * appended to it), otherwise on storage of its own. It is opened for writing,
     * receives the marker 0xAA55AA55 as an int in the stream's byte order, then whatever
     * writeBuffer() streams, and is closed.
     */
    QByteArray toByteArray(QByteArray *sideArray = nullptr) const;

    /**
     * Fills the fields from the record @p bytes.
     *
     * Returns false, and leaves the fields alone, if `checkSize` is true and the length
     * of @p bytes is not size(). Otherwise readBuffer() reads size() bytes from the start
     * of @p bytes and the result is true: bytes beyond size() are ignored, and with
     * `checkSize` false a record that is too short reads as if it were padded with zero
     * bytes.
     *
     * The side stream is built as for toByteArray(), on @p sideArray if it is not null, and
     * opened for reading; the marker is not looked for.
     */
    bool fromByteArray(const QByteArray &bytes, QByteArray *sideArray = nullptr);

    /** Whether fromByteArray() refuses bytes of the wrong length. */
    bool checkSize;

protected:
    /** Starts with `checkSize` true, whatever @p other has. */
    AbstractValueStruct(const AbstractValueStruct &other);
    /** Leaves `checkSize` as it is. */
    AbstractValueStruct &operator=(const AbstractValueStruct &other);
};

#endif // ABSTRACTVALUESTRUCT_H
