#include "wirestream_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QIODevice>
#include <QtCore/QTimeZone>
#include <QtCore/QtEndian>

#include <algorithm>
#include <climits>

namespace TelorWire {

qint64 bytesLeft(const QDataStream &stream)
{
    const QIODevice *device = stream.device();
    if (!device || device->isSequential())
        return 0;
    return qMax<qint64>(0, device->size() - device->pos());
}

namespace {

// Smallest stream form of one element of each list type that Qt reserves room for.
constexpr qint64 MinVariantBytes = 5; // type word and null flag
constexpr qint64 MinStringBytes = 4;  // length word of a QString or QByteArray

// QVariant keeps its type in 30 bits: Qt reads the type word and uses only those bits.
quint32 storedType(quint32 typeId)
{
    return typeId & 0x3FFFFFFFu;
}

// Qt looks a time zone up by its name as a file below the zone directory. A name with a
// ".." section leads it to any file at all, a pipe or a terminal among them, whose read
// blocks; such a name is never handed to Qt.
bool isSafeZoneName(const QString &name)
{
    if (name.contains(QChar(0)))
        return false;
    const QVector<QStringRef> sections = name.splitRef(QLatin1Char('/'));
    return std::none_of(sections.cbegin(), sections.cend(),
                        [](const QStringRef &section) { return section == QLatin1String(".."); });
}

/**
 * Reads a QDateTime's stream form as Qt reads it, consuming the same bytes, and tells
 * whether every zone name in it may be looked up. A time in a zone carries the zone's
 * name; the name "OffsetFromUtc" is followed by a custom zone, whose own name Qt looks up
 * first.
 */
bool skipTimeWithSafeZoneNames(QDataStream &stream)
{
    qint64 julianDay = 0;
    quint32 milliseconds = 0;
    qint8 kind = 0;
    stream >> julianDay >> milliseconds >> kind;
    if (kind == Qt::OffsetFromUTC) {
        qint32 offset = 0;
        stream >> offset;
        return true;
    }
    if (kind != Qt::TimeZone)
        return true;
    QString name;
    stream >> name;
    if (name != QLatin1String("OffsetFromUtc"))
        return isSafeZoneName(name);
    qint32 offset = 0;
    qint32 country = 0;
    QString text;
    stream >> name >> offset >> text >> text >> country >> text;
    return isSafeZoneName(name);
}

// Qt reads a time in a zone that it doesn't know, or of a kind (UTC, local, offset, zone)
// that it doesn't know, as an invalid time in an invalid zone, which its own operator<<
// dereferences.
bool isUnknownZone(const QDateTime &time)
{
    return time.timeSpec() == Qt::TimeZone && !time.timeZone().isValid();
}

bool holdsUnknownZone(const QVariant &value, int depth);

template<typename Container>
bool anyHoldsUnknownZone(const Container &elements, int depth)
{
    return std::any_of(elements.cbegin(), elements.cend(),
                       [depth](const QVariant &element) { return holdsUnknownZone(element, depth + 1); });
}

bool holdsUnknownZone(const QVariant &value, int depth)
{
    if (depth > MaxVariantDepth)
        return false;
    switch (value.userType()) {
    case QMetaType::QDateTime:
        return isUnknownZone(*static_cast<const QDateTime *>(value.constData()));
    case QMetaType::QVariant:
        return holdsUnknownZone(*static_cast<const QVariant *>(value.constData()), depth + 1);
    case QMetaType::QVariantList:
        return anyHoldsUnknownZone(*static_cast<const QVariantList *>(value.constData()), depth);
    case QMetaType::QVariantMap:
        return anyHoldsUnknownZone(*static_cast<const QVariantMap *>(value.constData()), depth);
    case QMetaType::QVariantHash:
        return anyHoldsUnknownZone(*static_cast<const QVariantHash *>(value.constData()), depth);
    default:
        return false;
    }
}

void forgetUnknownZonesAt(QVariant &value, int depth);

template<typename Container>
QVariant withoutUnknownZones(Container elements, int depth)
{
    for (QVariant &element : elements)
        forgetUnknownZonesAt(element, depth + 1);
    return QVariant(elements);
}

void forgetUnknownZonesAt(QVariant &value, int depth)
{
    // Only what holds such a time is copied and rebuilt.
    if (!holdsUnknownZone(value, depth))
        return;
    switch (value.userType()) {
    case QMetaType::QDateTime:
        value = QVariant(QDateTime());
        break;
    case QMetaType::QVariant: {
        QVariant inner = *static_cast<const QVariant *>(value.constData());
        forgetUnknownZonesAt(inner, depth + 1);
        value = QVariant(QMetaType::QVariant, &inner);
        break;
    }
    case QMetaType::QVariantList:
        value = withoutUnknownZones(value.toList(), depth);
        break;
    case QMetaType::QVariantMap:
        value = withoutUnknownZones(value.toMap(), depth);
        break;
    case QMetaType::QVariantHash:
        value = withoutUnknownZones(value.toHash(), depth);
        break;
    default:
        break;
    }
}

// Whether Qt's read of a value of this type is walked first.
bool needsWalk(quint32 typeId)
{
    // A type named by the sender may name a container.
    if (typeId == QMetaType::User)
        return true;
    switch (storedType(typeId)) {
    case QMetaType::QDateTime: // Qt looks its zone up by name
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
    case QMetaType::QByteArrayList:
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
    case QMetaType::QVariant:
    case QMetaType::QEasingCurve:
        return true;
    default:
        return false;
    }
}

/**
 * Walks one QVariant without keeping it, to learn whether Qt can read it without a
 * huge allocation or a deep recursion. Returns false for a list that announces more
 * than 65536 elements and more than the bytes left could hold, or for nesting deeper
 * than MaxVariantDepth. A truncated value of ordinary size is not refused: Qt reads it
 * safely.
 */
bool isPlausibleVariant(QDataStream &stream, int depth);

// Qt reserves room for this many elements without harm, whatever the bytes left say;
// a truncated list of an ordinary size is therefore read by Qt, exactly as it would be.
constexpr quint32 HarmlessCount = 65536;

bool isPlausibleCount(const QDataStream &stream, quint32 count, qint64 minBytes)
{
    return count <= HarmlessCount || static_cast<qint64>(count) <= bytesLeft(stream) / minBytes;
}

template<typename Element>
bool skipPlainList(QDataStream &stream)
{
    quint32 count = 0;
    stream >> count;
    if (!isPlausibleCount(stream, count, MinStringBytes))
        return false;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        Element element;
        stream >> element;
    }
    return true;
}

bool skipVariantList(QDataStream &stream, int depth)
{
    quint32 count = 0;
    stream >> count;
    if (!isPlausibleCount(stream, count, MinVariantBytes))
        return false;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        if (!isPlausibleVariant(stream, depth + 1))
            return false;
    }
    return true;
}

bool skipVariantDictionary(QDataStream &stream, int depth)
{
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        QString key;
        stream >> key;
        // Qt reads the value even when the key failed, and the value's containers start
        // from a good status: the walk does the same before it stops.
        const QDataStream::Status keyStatus = stream.status();
        stream.resetStatus();
        if (!isPlausibleVariant(stream, depth + 1))
            return false;
        if (keyStatus != QDataStream::Ok) {
            stream.resetStatus();
            stream.setStatus(keyStatus);
            break;
        }
    }
    return true;
}

// QEasingCurve's form ends in two vectors (QPointF, and a point with three doubles) whose
// counts Qt reserves room for before it reads an element.
bool skipEasingCurve(QDataStream &stream)
{
    quint8 type = 0;
    quint64 function = 0;
    bool hasConfig = false;
    stream >> type >> function >> hasConfig;
    if (stream.status() != QDataStream::Ok || !hasConfig)
        return true;
    double number = 0.0;
    stream >> number >> number >> number;
    const int pointDoubles[2] = {2, 5};
    for (int doubles : pointDoubles) {
        quint32 count = 0;
        stream >> count;
        if (!isPlausibleCount(stream, count, 8 * doubles))
            return false;
        for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
            for (int d = 0; d < doubles; ++d)
                stream >> number;
        }
    }
    return true;
}

bool isPlausibleVariant(QDataStream &stream, int depth)
{
    if (depth > MaxVariantDepth)
        return false;
    QIODevice *device = stream.device();
    const qint64 start = device->pos();
    quint32 typeId = 0;
    qint8 isNull = 0;
    stream >> typeId >> isNull;
    if (stream.status() != QDataStream::Ok)
        return true;
    if (typeId == QMetaType::User) {
        // A type named by the sender: Qt reads the name and goes on with the type it names.
        QByteArray name;
        stream >> name;
        if (stream.status() != QDataStream::Ok)
            return true;
        typeId = static_cast<quint32>(QMetaType::type(name.constData()));
    } else {
        typeId = storedType(typeId);
    }
    switch (typeId) {
    case QMetaType::QVariantList:
        return skipVariantList(stream, depth);
    case QMetaType::QStringList:
        return skipPlainList<QString>(stream);
    case QMetaType::QByteArrayList:
        return skipPlainList<QByteArray>(stream);
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return skipVariantDictionary(stream, depth);
    case QMetaType::QVariant:
        return isPlausibleVariant(stream, depth + 1);
    case QMetaType::QEasingCurve:
        return skipEasingCurve(stream);
    case QMetaType::QDateTime:
        if (!skipTimeWithSafeZoneNames(stream))
            return false;
        Q_FALLTHROUGH();
    default: {
        // Any other type reads without reserving ahead: let Qt read it to step over it.
        device->seek(start);
        QVariant leaf;
        stream >> leaf;
        return true;
    }
    }
}

} // namespace

QDataStream &readVariant(QDataStream &stream, QVariant &value)
{
    QIODevice *device = stream.device();
    if (!device || device->isSequential())
        return stream >> value;

    const qint64 start = device->pos();
    quint32 typeId = 0;
    stream >> typeId;
    device->seek(start);
    if (!needsWalk(typeId))
        return stream >> value;

    // A container or a time: walk it first, and let Qt read it only if nothing in it can
    // ask for more than the packet holds or name a zone outside the zone directory. The
    // walk stops where the status turns bad, so it runs on a good status whatever the
    // caller's stream says: Qt reads the value in full from a stream that is already bad,
    // and the walk must see all that Qt will read.
    const QDataStream::Status before = stream.status();
    stream.resetStatus();
    const bool plausible = isPlausibleVariant(stream, 0);
    device->seek(start);
    stream.resetStatus();
    stream.setStatus(before);
    if (plausible)
        return stream >> value;

    value = QVariant();
    device->seek(device->size());
    stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

QDataStream &readDateTime(QDataStream &stream, QDateTime &time)
{
    QIODevice *device = stream.device();
    if (device && !device->isSequential()) {
        // Most times are local, UTC or a fixed offset: the byte after the day and the
        // milliseconds says so, and such a time names no zone that needs a look first.
        char head[13];
        if (device->peek(head, sizeof head) == qint64(sizeof head)
            && (head[12] == Qt::LocalTime || head[12] == Qt::UTC || head[12] == Qt::OffsetFromUTC))
            return stream >> time;
        const qint64 start = device->pos();
        const QDataStream::Status before = stream.status();
        if (!skipTimeWithSafeZoneNames(stream)) {
            // The stream stands where Qt's read would have left it.
            time = QDateTime();
            return stream;
        }
        device->seek(start);
        stream.resetStatus();
        stream.setStatus(before);
    }
    stream >> time;
    if (isUnknownZone(time))
        time = QDateTime();
    return stream;
}

bool forgetUnknownZones(QVariant &value)
{
    if (!holdsUnknownZone(value, 0))
        return false;
    forgetUnknownZonesAt(value, 0);
    return true;
}

QDataStream &readString(QDataStream &stream, QString &value)
{
    QIODevice *device = stream.device();
    char word[sizeof(quint32)];
    if (device && !device->isSequential() && device->peek(word, sizeof word) == qint64(sizeof word)) {
        const quint32 bytes = stream.byteOrder() == QDataStream::BigEndian ? qFromBigEndian<quint32>(word)
                                                                           : qFromLittleEndian<quint32>(word);
        const bool nullString = bytes == 0xFFFFFFFFu;
        const bool oddCount = (bytes & 1u) != 0;
        if (!nullString && !oddCount && qint64(bytes) > bytesLeft(stream) - qint64(sizeof word)) {
            // Qt would grow the string by a first block of up to 4 MiB before finding out
            // that the bytes are not there; the outcome is the same without that block.
            quint32 announced = 0;
            stream >> announced;
            stream.skipRawData(int(qMin<qint64>(bytesLeft(stream), INT_MAX)));
            value.clear();
            stream.setStatus(QDataStream::ReadPastEnd);
            return stream;
        }
    }
    return stream >> value;
}

} // namespace TelorWire
