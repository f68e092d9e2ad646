#ifndef PLANTSERVER_P_H
#define PLANTSERVER_P_H

// The private records of PlantServer, shared by its source files.

#include "plantserver.h"

#include "parambaseptr.h"

#include <QtCore/QtEndian>

#include <map>
#include <memory>

/** One subscribed parameter of one subscriber: the subscriber's handle on it. */
struct PlantServer::Watch
{
    std::unique_ptr<ParamBasePtr> handle;
    bool refresh = false;
    bool field = false;
};

/** One standing subscription: a connection's token and what it wishes. */
struct PlantServer::Subscriber
{
    std::map<int, Watch> watches;
    QByteArray queryPacket; // the query being answered, for replyTo()
};

/** An answer in pieces whose remaining pieces go out with the following ticks. */
struct PlantServer::Pending
{
    enum Kind { Archive, Events };
    Kind kind = Archive;
    quint64 connection = 0;
    const QObject *token = nullptr;
    QByteArray queryPacket;
    qint64 fromMs = 0;
    qint64 toMs = 0;
    int idQuery = 0;
    int queryTag = 0;
    int piecesCount = 1;
    int nextPiece = 1;
    // Archive: the parameters in ascending order, the values of each in the span, where the
    // next piece goes on.
    QList<unsigned int> ids;
    QList<qint64> counts;
    int paramIndex = 0;
    qint64 offset = 0;
};

namespace plantserver {

/** The identity words of a packet; false for one shorter than a header. */
inline bool identityOf(const QByteArray &packet, qint32 *serviceId, qint32 *messageId, qint32 *messageType)
{
    if (packet.size() < QProtocolStruct::HeaderSize)
        return false;
    *serviceId = qFromBigEndian<qint32>(packet.constData());
    *messageId = qFromBigEndian<qint32>(packet.constData() + 4);
    *messageType = qFromBigEndian<qint32>(packet.constData() + 8);
    return true;
}

/** Milliseconds of a time, or @p fallback for an invalid one. */
inline qint64 msOf(const QDateTime &time, qint64 fallback)
{
    return time.isValid() ? time.toMSecsSinceEpoch() : fallback;
}

constexpr qint64 Earliest = -(qint64(1) << 52);

} // namespace plantserver

#endif // PLANTSERVER_P_H
