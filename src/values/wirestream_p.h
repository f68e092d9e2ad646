#ifndef WIRESTREAM_P_H
#define WIRESTREAM_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the library's readers and its tests and may change from one version to the next.
//

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <QtCore/QByteArrayList>
#include <QtCore/QStringList>

#include "telorparams5_export.h"

/**
 * @brief Readers of Qt's stream forms that a hostile count cannot turn into a huge
 * allocation.
 *
 * Qt 5.15's operator>> for QList and QVector reserves room for the received count
 * before it reads a single element, and a QVariant reaches that for a QVariantList,
 * QStringList or QByteArrayList inside a value. A count of 0x7FFFFFFF in a received
 * packet would therefore ask for gigabytes before the stream noticed that it ran out.
 *
 * The readers here give Qt's own result for every input that Qt can read without such an
 * allocation, and never reserve more than the bytes left in the stream can describe.
 */
namespace TelorWire {

/** Nesting limit for containers inside a received QVariant. */
constexpr int MaxVariantDepth = 64;

/**
 * Bytes between the stream's position and the end of its device. A stream without a
 * device, or on a sequential device, reports 0.
 */
TELORPARAMS5_EXPORT qint64 bytesLeft(const QDataStream &stream);

/**
 * Reads a QVariant in Qt's stream form. Every well-formed value reads exactly as Qt's
 * operator>> reads it, and so does a truncated one, unless one of its lists announces
 * more than 65536 elements.
 *
 * A value in which a list announces more than 65536 elements and more than the bytes
 * left could hold, or whose containers nest deeper than MaxVariantDepth, reads as an
 * invalid QVariant; the stream is then at its end with the status ReadCorruptData (or
 * the bad status it already had). Both hold whatever the stream's status on entry: Qt
 * reads a value in full from a stream that is already bad, and so is the value judged.
 *
 * A value that holds, at any depth, a time whose zone name has a ".." section reads as an
 * invalid QVariant in the same way: Qt would look that name up as a file outside the zone
 * directory, and a pipe or a terminal there blocks the read.
 *
 * A time in a zone that this side doesn't know reads as Qt reads it, as an invalid time
 * that Qt's operator<< cannot write again; see forgetUnknownZones().
 */
TELORPARAMS5_EXPORT QDataStream &readVariant(QDataStream &stream, QVariant &value);

/**
 * Reads a QDateTime in Qt's stream form, consuming the bytes that Qt's operator>>
 * consumes. Every time that Qt can write again reads exactly as Qt reads it. A time in a
 * zone that this side doesn't know (or of a kind that Qt doesn't know) reads as a
 * null QDateTime instead of Qt's invalid one, which Qt's operator<< would dereference; so
 * does a time whose zone name has a ".." section, and that name is not looked up at all.
 * On a sequential device the read is Qt's own.
 */
TELORPARAMS5_EXPORT QDataStream &readDateTime(QDataStream &stream, QDateTime &time);

/**
 * Replaces every time in a zone that this side doesn't know inside @p value, at any depth
 * up to MaxVariantDepth of its lists, maps, hashes and nested variants, by a null
 * QDateTime, so that the value can be written again. Returns whether anything was
 * replaced; a value without such a time is left as it is, shared data included.
 */
TELORPARAMS5_EXPORT bool forgetUnknownZones(QVariant &value);

/**
 * Reads a QString in Qt's stream form. A string whose byte count is even and larger than
 * the bytes after it reads as Qt reads it (null, the stream at its end, status
 * ReadPastEnd), but without the first block of up to 4 MiB that Qt's own operator
 * allocates for the announced length before it finds the bytes missing. Every other
 * string, well formed or not, goes to Qt's operator.
 */
TELORPARAMS5_EXPORT QDataStream &readString(QDataStream &stream, QString &value);

// Every reader is declared before the container readers that call them, so that a
// container of containers finds the bounded reader for its elements.
template<typename T>
QDataStream &readValue(QDataStream &stream, T &value);
inline QDataStream &readValue(QDataStream &stream, QVariant &value);
inline QDataStream &readValue(QDataStream &stream, QString &value);
inline QDataStream &readValue(QDataStream &stream, QStringList &value);
inline QDataStream &readValue(QDataStream &stream, QByteArrayList &value);
template<typename T>
QDataStream &readValue(QDataStream &stream, QList<T> &value);
template<typename T>
QDataStream &readValue(QDataStream &stream, QVector<T> &value);
template<typename T>
QDataStream &readValue(QDataStream &stream, QSet<T> &value);
template<typename K, typename V>
QDataStream &readValue(QDataStream &stream, QMap<K, V> &value);
template<typename K, typename V>
QDataStream &readValue(QDataStream &stream, QHash<K, V> &value);

namespace Detail {

/** The room for at most @p count elements of at least @p minBytes each that the stream can still hold. */
inline int plausibleReserve(const QDataStream &stream, quint32 count, qint64 minBytes)
{
    const qint64 fits = bytesLeft(stream) / qMax<qint64>(1, minBytes);
    return static_cast<int>(qMin<qint64>(qMin<qint64>(count, fits), 1 << 20));
}

/** Qt's status handling of a container read: reset on entry, the old status back on exit. */
class StatusKeeper
{
public:
    explicit StatusKeeper(QDataStream &stream)
        : m_stream(stream)
        , m_old(stream.status())
    {
        m_stream.resetStatus();
    }
    ~StatusKeeper()
    {
        if (m_old != QDataStream::Ok) {
            m_stream.resetStatus();
            m_stream.setStatus(m_old);
        }
    }
    StatusKeeper(const StatusKeeper &) = delete;
    StatusKeeper &operator=(const StatusKeeper &) = delete;

private:
    QDataStream &m_stream;
    QDataStream::Status m_old;
};

template<typename Container>
QDataStream &readSequence(QDataStream &stream, Container &container)
{
    StatusKeeper keeper(stream);
    container.clear();
    quint32 count = 0;
    stream >> count;
    container.reserve(plausibleReserve(stream, count, 1));
    for (quint32 i = 0; i < count; ++i) {
        typename Container::value_type element;
        readValue(stream, element);
        if (stream.status() != QDataStream::Ok) {
            container.clear();
            break;
        }
        container.append(element);
    }
    return stream;
}

template<typename Container, typename MultiContainer>
QDataStream &readAssociative(QDataStream &stream, Container &container)
{
    StatusKeeper keeper(stream);
    container.clear();
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count; ++i) {
        typename Container::key_type key;
        typename Container::mapped_type mapped;
        readValue(stream, key);
        readValue(stream, mapped);
        if (stream.status() != QDataStream::Ok) {
            container.clear();
            break;
        }
        static_cast<MultiContainer &>(container).insert(key, mapped);
    }
    return stream;
}

} // namespace Detail

/** Qt's QList form, read element by element; same result as Qt's operator>>. */
template<typename T>
QDataStream &readList(QDataStream &stream, QList<T> &list)
{
    return Detail::readSequence(stream, list);
}

/** Qt's QVector form, read element by element; same result as Qt's operator>>. */
template<typename T>
QDataStream &readVector(QDataStream &stream, QVector<T> &vector)
{
    return Detail::readSequence(stream, vector);
}

/**
 * Qt's QSet form, read element by element; same result as Qt's operator>>. A repeated
 * element collapses to one.
 */
template<typename T>
QDataStream &readSet(QDataStream &stream, QSet<T> &set)
{
    Detail::StatusKeeper keeper(stream);
    set.clear();
    quint32 count = 0;
    stream >> count;
    set.reserve(Detail::plausibleReserve(stream, count, 1));
    for (quint32 i = 0; i < count; ++i) {
        T element;
        readValue(stream, element);
        if (stream.status() != QDataStream::Ok) {
            set.clear();
            break;
        }
        set.insert(element);
    }
    return stream;
}

/** Qt's QMap form; a repeated key is kept twice, as Qt keeps it. */
template<typename K, typename V>
QDataStream &readMap(QDataStream &stream, QMap<K, V> &map)
{
    return Detail::readAssociative<QMap<K, V>, QMultiMap<K, V>>(stream, map);
}

/** Qt's QHash form; a repeated key is kept twice, as Qt keeps it. */
template<typename K, typename V>
QDataStream &readHash(QDataStream &stream, QHash<K, V> &hash)
{
    return Detail::readAssociative<QHash<K, V>, QMultiHash<K, V>>(stream, hash);
}

/** The matching reader for a plain value: Qt's operator>>. */
template<typename T>
QDataStream &readValue(QDataStream &stream, T &value)
{
    return stream >> value;
}

inline QDataStream &readValue(QDataStream &stream, QVariant &value)
{
    return readVariant(stream, value);
}

inline QDataStream &readValue(QDataStream &stream, QString &value)
{
    return readString(stream, value);
}

inline QDataStream &readValue(QDataStream &stream, QStringList &value)
{
    return readList<QString>(stream, value);
}

inline QDataStream &readValue(QDataStream &stream, QByteArrayList &value)
{
    return readList<QByteArray>(stream, value);
}

template<typename T>
QDataStream &readValue(QDataStream &stream, QList<T> &value)
{
    return readList(stream, value);
}

template<typename T>
QDataStream &readValue(QDataStream &stream, QVector<T> &value)
{
    return readVector(stream, value);
}

template<typename T>
QDataStream &readValue(QDataStream &stream, QSet<T> &value)
{
    return readSet(stream, value);
}

template<typename K, typename V>
QDataStream &readValue(QDataStream &stream, QMap<K, V> &value)
{
    return readMap(stream, value);
}

template<typename K, typename V>
QDataStream &readValue(QDataStream &stream, QHash<K, V> &value)
{
    return readHash(stream, value);
}

} // namespace TelorWire

#endif // WIRESTREAM_P_H
