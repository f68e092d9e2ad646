#ifndef TELORTEST_H
#define TELORTEST_H

// Helpers shared by the unit tests: independent byte builders, the values of a repeated
// hash key, and log capture.
// Nothing here uses the library's own writers, so that a test compares the library's
// bytes with bytes built another way.

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QtEndian>
#include <QtCore/QtGlobal>

#include <functional>
#include <ostream>

namespace telortest {

/** Bytes written by a plain QDataStream (Qt 5.15 format, big-endian, double precision). */
inline QByteArray plainBytes(const std::function<void(QDataStream &)> &writer)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    writer(stream);
    return bytes;
}

/** A whole packet as a server puts it on the wire: eight big-endian header words, then the body. */
inline QByteArray packetBytes(qint32 serviceId, qint32 messageId, qint32 messageType, const QByteArray &body,
                              qint32 source = 0, qint32 session = 0, qint32 sequence = 0)
{
    const qint32 words[8] = {serviceId, messageId, messageType, 1, qint32(body.size()), source, session, sequence};
    QByteArray bytes(32, '\0');
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], bytes.data() + 4 * i);
    return bytes + body;
}

/**
 * Qt's form of a QHash written pair by pair: the count, then the pairs from the hash's
 * last entry to its first, which is the order in which Qt's own operator writes them.
 */
template<typename Key, typename Value>
void plainHash(QDataStream &s, const QHash<Key, Value> &hash)
{
    s << quint32(hash.size());
    const QList<Key> keys = hash.keys(); // iteration order, one key per entry
    const QList<Value> values = hash.values();
    for (int i = keys.size() - 1; i >= 0; --i)
        s << keys.at(i) << values.at(i);
}

/**
 * Every value under @p key, the one read last first, as a lookup finds them (a QHash keeps
 * every entry of a repeated key that a reader inserts).
 */
template<typename K, typename V>
QList<V> valuesOf(const QHash<K, V> &hash, const K &key)
{
    QList<V> all;
    for (auto it = hash.constFind(key); it != hash.constEnd() && it.key() == key; ++it)
        all.append(it.value());
    return all;
}

/** Everything after the 32-byte header of a packet. */
inline QByteArray bodyOf(const QByteArray &packet)
{
    return packet.mid(32);
}

/**
 * Captures every line that goes through Qt's message handler while it lives, and puts
 * the previous handler back when it is destroyed.
 */
class LogCapture
{
public:
    LogCapture()
    {
        lines().clear();
        m_previous = qInstallMessageHandler(&LogCapture::handler);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QStringList captured() const { return lines(); }
    void clear() { lines().clear(); }

    /** The captured lines with their category, as "category: text". */
    static QStringList &lines()
    {
        static QStringList all;
        return all;
    }

private:
    static void handler(QtMsgType, const QMessageLogContext &context, const QString &message)
    {
        Q_UNUSED(context)
        lines().append(message);
    }

    QtMessageHandler m_previous = nullptr;
};

/** Hex form of bytes, for readable failure messages. */
inline std::string hex(const QByteArray &bytes)
{
    return bytes.toHex(' ').toStdString();
}

} // namespace telortest

// Printers so that failing comparisons show strings and bytes readably.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &s, std::ostream *os)
{
    *os << '"' << s.toStdString() << '"' << (s.isNull() ? " (null)" : "");
}
inline void PrintTo(const QByteArray &b, std::ostream *os)
{
    *os << '[' << b.toHex(' ').toStdString() << ']';
}
inline void PrintTo(const QStringList &l, std::ostream *os)
{
    *os << '{';
    for (const QString &s : l)
        *os << '"' << s.toStdString() << "\" ";
    *os << '}';
}
QT_END_NAMESPACE

#endif // TELORTEST_H
