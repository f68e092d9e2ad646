#ifndef EXCHANGETEST_H
#define EXCHANGETEST_H

// Builders for the exchange tests. Records and result bodies are written here with plain
// QDataStream writes, field by field, as a server would put them on the wire; nothing
// here uses the library's writers. Also a probe parameter object that counts what is done
// to it.

#include "messageheader.h"
#include "telortest.h"

#include "bpdouble.h"
#include "qcontainerpacket.h"
#include "qprotocolstruct.h"

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <functional>

namespace exchangetest {

using telortest::identityOf;
using telortest::plainBytes;
using telortest::routeOf;

/** The wire form of a client token. */
inline qint64 tokenOf(const QObject *client)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(client));
}

/** A double parameter record: identifier, type 1, state, value. */
inline QByteArray doubleRecord(qint32 id, qint32 state, double value)
{
    return plainBytes([&](QDataStream &s) { s << id << qint32(1) << state << value; });
}

/** A string parameter record: identifier, type 3, state, text. */
inline QByteArray stringRecord(qint32 id, qint32 state, const QString &value)
{
    return plainBytes([&](QDataStream &s) { s << id << qint32(3) << state << value; });
}

/** A variant parameter record whose limits have not changed: the limits are one zero byte. */
inline QByteArray variantRecord(qint32 id, qint32 state, const QVariant &value)
{
    return plainBytes([&](QDataStream &s) { s << id << qint32(5) << state << value << qint8(0); });
}

/** A variant parameter record with both limit blocks: possible 0..200, emergency 20/95, warning 40/80. */
inline QByteArray variantRecordWithLimits(qint32 id, qint32 state, const QVariant &value)
{
    return plainBytes([&](QDataStream &s) {
        s << id << qint32(5) << state << value;
        s << qint8(1);
        s << qint8(1) << 0.0 << 200.0 << true << true;
        s << qint8(1) << 20.0 << 40.0 << 80.0 << 95.0 << true << true << true << true;
    });
}

/** The leading identifier of a values record stream entry. */
inline QByteArray leadingId(qint32 id)
{
    return plainBytes([&](QDataStream &s) { s << id; });
}

/** The identifier list of a result body: the count, then each identifier as a 32-bit word. */
template<typename Id>
void plainIds(QDataStream &s, const QList<Id> &ids)
{
    s << quint32(ids.size());
    for (Id id : ids)
        s << id;
}

/** A values result body: ids, data, time, token. */
inline QByteArray valuesResultBody(const QList<quint32> &ids, const QByteArray &data, const QDateTime &when,
                                   qint64 token)
{
    return plainBytes([&](QDataStream &s) {
        plainIds(s, ids);
        s << data << when << token;
    });
}

/** A subscription result body: ids, data, time, token. */
inline QByteArray subscriptionResultBody(const QList<qint32> &ids, const QByteArray &data, const QDateTime &when,
                                         qint64 token)
{
    return plainBytes([&](QDataStream &s) {
        plainIds(s, ids);
        s << data << when << token;
    });
}

/**
 * A result body whose time is given as raw bytes: ids, data, @p timeBytes, token. Used for
 * times that a plain QDateTime can't be written as, such as one in a zone that the
 * receiver doesn't know.
 */
inline QByteArray resultBodyWithRawTime(const QList<qint32> &ids, const QByteArray &data, const QByteArray &timeBytes,
                                        qint64 token)
{
    return plainBytes([&](QDataStream &s) {
        plainIds(s, ids);
        s << data;
    }) + timeBytes + plainBytes([&](QDataStream &s) { s << token; });
}

/** A QDateTime in Qt's stream form, in the time zone named @p zoneName. */
inline QByteArray zonedTimeBytes(const QString &zoneName)
{
    return plainBytes([&](QDataStream &s) {
        s << QDate(2026, 6, 1) << QTime(12, 0) << qint8(Qt::TimeZone) << zoneName;
    });
}

/** A message as the transport hands over @p packet: untyped. */
inline QProtocolStruct transported(const QByteArray &packet)
{
    QProtocolStruct message;
    message.setPacket(packet);
    return message;
}

/** A message as the transport hands it over: untyped, holding a server's packet. */
inline QProtocolStruct received(const QByteArray &body, qint32 serviceId = 3, qint32 messageId = 1,
                                qint32 messageType = 1)
{
    return transported(telortest::packetBytes(serviceId, messageId, messageType, body));
}

/** A fixed time for answers. */
inline QDateTime answerTime(int second = 0)
{
    return QDateTime(QDate(2026, 3, 5), QTime(14, 7, second, 42), Qt::UTC);
}

/**
 * A subscription result for @p client as the transport hands it over: the identifiers,
 * the records in @p data, the time and the client's token.
 */
inline QProtocolStruct subscriptionAnswer(const QObject *client, const QList<qint32> &ids, const QByteArray &data,
                                          const QDateTime &when = answerTime())
{
    return received(subscriptionResultBody(ids, data, when, tokenOf(client)));
}

/**
 * A double that counts its reads, state assignments and flag drops, can run a reaction
 * when its state is set or its flag dropped, and refuses every record it has read when
 * @c refuses is set.
 */
class ProbeDouble : public BPDouble
{
public:
    using BPDouble::BPDouble;
    bool readPrivate(QContainerPacket &packet) override
    {
        ++reads;
        const bool result = BPDouble::readPrivate(packet);
        return refuses ? false : result;
    }
    void setState(unsigned int newState) override
    {
        ++states;
        if (onState)
            onState();
        BPDouble::setState(newState);
    }
    void dropFlag() override
    {
        ++drops;
        if (onDrop)
            onDrop();
        BPDouble::dropFlag();
    }
    int reads = 0;
    int states = 0;
    int drops = 0;
    bool refuses = false;
    std::function<void()> onState;
    std::function<void()> onDrop;
};

} // namespace exchangetest

#endif // EXCHANGETEST_H
