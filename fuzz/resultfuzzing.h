#ifndef RESULTFUZZING_H
#define RESULTFUZZING_H

// Shared by the two value result fuzz targets (one-shot values and subscriptions) and
// their seed programs. Both result bodies start the same way: the identifier list, the
// records, the time and then the client's token, which the targets overwrite so that the
// record walk is reached. Also here: the client objects both targets write again, the
// limited variant both clients hold, and the pieces the seeds have in common.

#include "abstractparameterbase.h"
#include "bpvariant.h"
#include "qcontainerpacket.h"
#include "qprotocolstruct.h"
#include "wirestream_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSharedPointer>
#include <QtCore/QTimeZone>
#include <QtCore/QVariantList>

namespace resultfuzz {

/** Writes the record of every object, as a server relaying what it read would. */
inline void writeAll(const QList<QSharedPointer<AbstractParameterBase>> &objects)
{
    QByteArray records;
    QContainerPacket packet(&records);
    for (const QSharedPointer<AbstractParameterBase> &object : objects)
        object->write(packet, true);
}

/**
 * The offset of the token field in a result @p body, found as the reader walks it; -1 if
 * the body ends first. The identifier list is a count and 32-bit words, whether a result
 * holds its identifiers signed or not, so one walk serves both results.
 */
inline qint64 tokenOffset(const QByteArray &body)
{
    QContainerPacket packet(body);
    QList<unsigned int> ids;
    QByteArray data;
    QDateTime when;
    TelorWire::readList(packet, ids);
    packet >> data;
    TelorWire::readDateTime(packet, when);
    const qint64 offset = packet.position();
    return offset + 8 <= body.size() ? offset : -1;
}

/** @p body with its token field replaced by @p token, where the field exists. */
inline QByteArray withToken(QByteArray body, const QObject *token)
{
    const qint64 offset = tokenOffset(body);
    if (offset < 0)
        return body;
    QByteArray field;
    {
        QContainerPacket writer(&field);
        writer << static_cast<qint64>(reinterpret_cast<quintptr>(token));
    }
    body.replace(static_cast<int>(offset), 8, field);
    return body;
}

/** A variant under @p id with a low possible limit of 0 and a high warning limit of 10. */
inline QSharedPointer<BPVariant> limitedVariant(unsigned int id)
{
    const QSharedPointer<BPVariant> limited = QSharedPointer<BPVariant>::create(id);
    limited->limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    limited->limitsPrivate().setHiWarningSetpoint(true, 10.0);
    return limited;
}

/** The time the seeds' results carry. */
inline QDateTime seedTime()
{
    return QDateTime(QDate(2026, 3, 5), QTime(14, 7, 9, 42), Qt::UTC);
}

/** The time of the seed with zoned times: a zone given by its offset, two hours behind. */
inline QDateTime zonedSeedTime()
{
    return QDateTime(QDate(2026, 3, 5), QTime(14, 7, 9), QTimeZone(-7200));
}

/** Two times in zones, one given by its offset and one by a name the reader looks up. */
inline QVariantList zonedTimes()
{
    return QVariantList{QDateTime(QDate(2025, 6, 1), QTime(12, 0), QTimeZone(3600)),
                        QDateTime(QDate(2025, 6, 1), QTime(12, 0), QTimeZone("UTC+02:00"))};
}

/** A seed: the @p selector byte, then the body of @p result as the library writes it. */
inline QByteArray seedOf(unsigned char selector, QProtocolStruct &result)
{
    return QByteArray(1, char(selector)) + result.write().mid(QProtocolStruct::HeaderSize);
}

} // namespace resultfuzz

#endif // RESULTFUZZING_H
