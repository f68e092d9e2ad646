#include "telortagobject.h"

#include "telorstream.h"
#include "wirestream_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QtEndian>

#include <climits>

namespace {

// The tables of a tag block in Qt's container forms, read element by element with Qt's
// own rules (status reset on entry and restored on exit, a table emptied at its first bad
// element, repeated hash keys kept twice), so that every block reads exactly as Qt's
// operators read it. The counts reserve nothing. Strings go through readString(), which
// spares a string that announces more bytes than are left the allocation that Qt's own
// reader would make for it before finding out.

void readValue(QDataStream &stream, QString &value);
void readValue(QDataStream &stream, unsigned int &value);
template<typename T>
void readValue(QDataStream &stream, QSet<T> &set);
template<typename K, typename V>
void readValue(QDataStream &stream, QHash<K, V> &hash);

/**
 * A QString in Qt's form. A string whose byte count is even and larger than the bytes
 * after it reads as Qt reads it (null, the stream at its end, status ReadPastEnd), but
 * without allocating room for the announced length first. Every other string, well formed
 * or not, goes to Qt's operator.
 */
void readString(QDataStream &stream, QString &value)
{
    QIODevice *device = stream.device();
    char word[sizeof(quint32)];
    if (device && !device->isSequential() && device->peek(word, sizeof word) == qint64(sizeof word)) {
        const quint32 bytes = stream.byteOrder() == QDataStream::BigEndian ? qFromBigEndian<quint32>(word)
                                                                           : qFromLittleEndian<quint32>(word);
        const bool nullString = bytes == 0xFFFFFFFFu;
        const bool oddCount = (bytes & 1u) != 0;
        if (!nullString && !oddCount && qint64(bytes) > TelorWire::bytesLeft(stream) - qint64(sizeof word)) {
            quint32 announced = 0;
            stream >> announced;
            stream.skipRawData(int(qMin<qint64>(TelorWire::bytesLeft(stream), INT_MAX)));
            value.clear();
            stream.setStatus(QDataStream::ReadPastEnd);
            return;
        }
    }
    stream >> value;
}

void readValue(QDataStream &stream, QString &value)
{
    readString(stream, value);
}

void readValue(QDataStream &stream, unsigned int &value)
{
    stream >> value;
}

/** Qt's QSet form: a 32-bit count, then the elements. */
template<typename T>
void readValue(QDataStream &stream, QSet<T> &set)
{
    TelorWire::Detail::StatusKeeper keeper(stream);
    set.clear();
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count; ++i) {
        T element;
        readValue(stream, element);
        if (stream.status() != QDataStream::Ok) {
            set.clear();
            break;
        }
        set.insert(element);
    }
}

/** Qt's QHash form: a 32-bit count, then key and value of each entry. */
template<typename K, typename V>
void readValue(QDataStream &stream, QHash<K, V> &hash)
{
    TelorWire::Detail::StatusKeeper keeper(stream);
    hash.clear();
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count; ++i) {
        K key;
        V value;
        readValue(stream, key);
        readValue(stream, value);
        if (stream.status() != QDataStream::Ok) {
            hash.clear();
            break;
        }
        static_cast<QMultiHash<K, V> &>(hash).insert(key, value);
    }
}

} // namespace

TELORTagObject::TELORTagObject(QObject *parent)
    : QObject(parent)
{
}

TELORTagObject::~TELORTagObject() = default;

bool TELORTagObject::read(const QByteArray &data)
{
    TELORDataStream stream(data);
    stream.openToRead();

    // Each table is cleared first and a failure inside it leaves it empty; the next table
    // is read from where the stream stands. No count reserves anything, so a hostile block
    // costs no more than the bytes that actually follow its counts.
    readValue(stream, tagTexts);
    readValue(stream, paramTags);
    readValue(stream, tagParams);

    return !tagTexts.isEmpty() && !paramTags.isEmpty() && !tagParams.isEmpty();
}

QHash<QString, QString> TELORTagObject::getTagTypes(const QString &textKey) const
{
    // Every entry is visited, repeated keys included; the one visited last stays.
    QHash<QString, QString> result;
    for (auto type = tagTexts.cbegin(); type != tagTexts.cend(); ++type)
        result.insert(type.key(), type.value().value(textKey));
    return result;
}

QHash<QString, QString> TELORTagObject::getParamTags(unsigned int id, const QString &textKey) const
{
    QHash<QString, QString> result;
    const auto param = paramTags.constFind(id);
    if (param == paramTags.cend())
        return result;

    const QHash<QString, QString> &tags = param.value();
    for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
        const auto type = tagTexts.constFind(tag.key());
        const QString text = type == tagTexts.cend() ? QString() : type.value().value(textKey);
        result.insert(text, tag.value());
    }
    return result;
}

QString TELORTagObject::getParamTagValue(unsigned int id, const QString &tagType) const
{
    const auto param = paramTags.constFind(id);
    if (param == paramTags.cend())
        return QString();
    return param.value().value(tagType);
}
