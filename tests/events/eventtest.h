#ifndef EVENTTEST_H
#define EVENTTEST_H

// Shared by the tests of event records, queries, results and subscriptions: sample
// records, independent writers of the two record encodings and round trips through the
// frame.

#include "messageheader.h"
#include "telortest.h"

#include "eventstruct.h"
#include "qprotocolstruct.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

namespace eventtest {

/** 2025-03-14 10:20:30.456 UTC plus @p msecs. */
inline QDateTime when(qint64 msecs = 0)
{
    return QDateTime(QDate(2025, 3, 14), QTime(10, 20, 30, 456), Qt::UTC).addMSecs(msecs);
}

/** A client token as a plain number: the library carries it and never follows it. */
inline const QObject *token(quintptr value)
{
    return reinterpret_cast<const QObject *>(value);
}

/** A valid record with one named value. */
inline EventStruct sampleEvent(unsigned short typeId = 12, unsigned char eventMessage = 3,
                               unsigned int firstId = 1001, unsigned int secondId = 77)
{
    EventStruct event;
    event.typeId = typeId;
    event.eventMessage = eventMessage;
    event.dateTime = when();
    event.firstId = firstId;
    event.secondId = secondId;
    event.parameters.insert(QStringLiteral("value"), QVariant(42.5));
    return event;
}

/** The message form of a record, field by field. */
inline void writeMessageForm(QDataStream &s, const EventStruct &e)
{
    s << quint16(e.typeId) << quint8(e.eventMessage) << quint32(e.firstId) << e.dateTime;
    telortest::plainHash(s, e.parameters);
    s << quint32(e.secondId);
}

/** The stream form of a record, field by field. */
inline void writeStreamForm(QDataStream &s, const EventStruct &e)
{
    s << quint16(e.typeId) << quint8(e.eventMessage) << quint32(e.firstId) << quint32(e.secondId) << e.dateTime;
    telortest::plainHash(s, e.parameters);
}

/** Every field of two records, the named values included. */
inline void expectSameRecord(const EventStruct &a, const EventStruct &b)
{
    EXPECT_EQ(a.typeId, b.typeId);
    EXPECT_EQ(a.eventMessage, b.eventMessage);
    EXPECT_EQ(a.dateTime, b.dateTime);
    EXPECT_EQ(a.firstId, b.firstId);
    EXPECT_EQ(a.secondId, b.secondId);
    EXPECT_EQ(a.parameters, b.parameters);
}

using telortest::headerWords;
using telortest::identityOf;

/** The body that write() produces for @p message. */
template<typename Message>
QByteArray bodyWrittenBy(Message &message)
{
    return telortest::bodyOf(message.write());
}

/** Reads @p packet into @p message as a receiver does: setPacket(), then read(). */
inline bool readPacket(QProtocolStruct &message, const QByteArray &packet)
{
    message.setPacket(packet);
    return message.read();
}

} // namespace eventtest

QT_BEGIN_NAMESPACE
inline void PrintTo(const QDateTime &dt, std::ostream *os)
{
    *os << (dt.isNull() ? std::string("(null)") : dt.toString(Qt::ISODateWithMs).toStdString());
}
QT_END_NAMESPACE

#endif // EVENTTEST_H
