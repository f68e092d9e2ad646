#ifndef RECENTRECORDS_P_H
#define RECENTRECORDS_P_H

// Private to the libraries: sharing of records that arrive again and again. Not installed
// and not part of any library's interface.
//
// A list of descriptions repeats itself: units, state texts, enumeration rules and the
// bits of a status word arrive in hundreds of descriptions with the very same bytes.
// Decoded one by one, each copy holds its own strings, hashes and lists. Qt's containers
// are implicitly shared, so a record that decodes from exactly the bytes of a record
// decoded shortly before can hold that record's containers instead: the value is the
// same, and the copy is freed at once.

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QHashFunctions>
#include <QtCore/QString>

#include <cstring>

namespace RecentRecords {

/**
 * The position at which a record starts in the bytes that @p stream reads from memory,
 * or -1 when the stream reads from anything but a buffer in memory or has already
 * failed: such a record is never shared.
 */
inline qint64 start(const QDataStream &stream)
{
    if (stream.status() != QDataStream::Ok)
        return -1;
    const auto *buffer = qobject_cast<const QBuffer *>(stream.device());
    return buffer ? buffer->pos() : -1;
}

/**
 * Gives back the spare room of a string just read from a stream. Qt's reader grows a
 * string as if more were to be appended, up to twice its length, and a description holds
 * its texts for as long as the application runs. Shrinking an unshared string happens in
 * place. A shared string is left alone, since shrinking it would copy it.
 */
inline void fit(QString &text)
{
    if (text.isDetached() && text.capacity() > text.size())
        text.squeeze();
}

/**
 * Records of type @p T recently decoded on one thread, each with the bytes it was
 * decoded from, in a table of @p Slots entries addressed by a hash of those bytes.
 * Records longer than @p MaxBytes are not kept, so the table never holds more than
 * about Slots * MaxBytes bytes and the values decoded from them.
 */
template<typename T, int Slots = 256, int MaxBytes = 1024>
class Table
{
public:
    /**
     * Called right after @p value was decoded, into an empty value, from the bytes of
     * @p stream between @p begin (from start()) and the stream's position: if a record
     * decoded from the same bytes is kept, @p value becomes a shared copy of it;
     * otherwise @p value is kept in its place. Nothing happens when the stream failed on
     * the way, since a failed read depends on more than the bytes.
     */
    void share(const QDataStream &stream, qint64 begin, T &value)
    {
        if (begin < 0 || stream.status() != QDataStream::Ok)
            return;
        const auto *buffer = static_cast<const QBuffer *>(stream.device());
        const qint64 length = buffer->pos() - begin;
        if (length <= 0 || length > MaxBytes)
            return;
        const char *bytes = buffer->data().constData() + begin;
        Slot &slot = m_slots[qHashBits(bytes, size_t(length)) % Slots];
        if (slot.bytes.size() == length && std::memcmp(slot.bytes.constData(), bytes, size_t(length)) == 0) {
            value = slot.value;
            return;
        }
        slot.bytes = QByteArray(bytes, int(length));
        slot.value = value;
    }

private:
    struct Slot {
        QByteArray bytes;
        T value;
    };
    Slot m_slots[Slots];
};

/** The calling thread's table for records of type @p T. */
template<typename T>
Table<T> &table()
{
    thread_local Table<T> recent;
    return recent;
}

/**
 * Runs @p read, which decodes one record from @p stream into @p value, and then lets
 * @p value share with an identical recent record. @p value must be empty before, so
 * that what @p read leaves in it depends on the bytes alone.
 */
template<typename T, typename Read>
void readShared(QDataStream &stream, T &value, Read read)
{
    const qint64 begin = start(stream);
    read();
    table<T>().share(stream, begin, value);
}

} // namespace RecentRecords

#endif // RECENTRECORDS_P_H
