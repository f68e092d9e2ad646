#ifndef MESSAGEHEADER_H
#define MESSAGEHEADER_H

// The words of a message's header as lists, so that a test compares a message's identity,
// route or whole header in one assertion and a failure prints every word.

#include "qprotocolstruct.h"

#include <QtCore/QList>

#include <ostream>

namespace telortest {

/** All eight header words: service, message, type, version, body length, source, session, sequence. */
inline QList<qint32> headerWords(const QProtocolStruct &message)
{
    const QProtocolHeader h = message.getHeader();
    return {h.serviceId, h.messageId, h.messageType, h.version, h.bodyLength, h.source, h.session, h.sequence};
}

/** The identity of a message: service, message and type. */
inline QList<qint32> identityOf(const QProtocolStruct &message)
{
    const QProtocolHeader h = message.getHeader();
    return {h.serviceId, h.messageId, h.messageType};
}

/** The route of a message: source, session and sequence. */
inline QList<qint32> routeOf(const QProtocolStruct &message)
{
    const QProtocolHeader h = message.getHeader();
    return {h.source, h.session, h.sequence};
}

} // namespace telortest

QT_BEGIN_NAMESPACE
inline void PrintTo(const QList<qint32> &list, std::ostream *os)
{
    *os << '{';
    for (qint32 v : list)
        *os << v << ' ';
    *os << '}';
}
QT_END_NAMESPACE

#endif // MESSAGEHEADER_H
