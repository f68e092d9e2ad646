#ifndef PARAMVALUESFUZZSETUP_H
#define PARAMVALUESFUZZSETUP_H

// What the values fuzz target and its seed program share: the parameter objects a client
// holds, the tokens, and where the token stands in a result body.

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "paramvaluesstruct.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>

namespace valuesfuzz {

/**
 * Input layout: one selector byte, then a ParamValuesResult body. The selector picks the
 * token written over the body's token field: 0 the structure's own token (the record walk
 * is reached), 1 another client's token, 2 null, 3 the body's token as it is.
 */
enum Selector : unsigned char { OwnToken = 0, OtherToken = 1, NullToken = 2, KeepToken = 3 };

inline const QObject *ownToken()
{
    static QObject client;
    return &client;
}

inline const QObject *otherToken()
{
    static QObject other;
    return &other;
}

/**
 * The client's objects: 1 a double, 2 a string, 3 two variants, 4 one double appended
 * twice, 5 a variant with limits, 6 a double and a variant (records of one kind only
 * suit one of them), 7 nothing.
 */
inline void fill(ParamValuesStruct &values, QList<QSharedPointer<AbstractParameterBase>> *kept = nullptr)
{
    QList<QSharedPointer<AbstractParameterBase>> objects;
    objects.append(QSharedPointer<AbstractParameterBase>(new BPDouble(1)));
    objects.append(QSharedPointer<AbstractParameterBase>(new BPString(2)));
    objects.append(QSharedPointer<AbstractParameterBase>(new BPVariant(3)));
    objects.append(QSharedPointer<AbstractParameterBase>(new BPVariant(3)));
    const QSharedPointer<AbstractParameterBase> twice(new BPDouble(4));
    objects.append(twice);
    objects.append(twice);
    const QSharedPointer<BPVariant> limited = QSharedPointer<BPVariant>::create(5);
    limited->limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    limited->limitsPrivate().setHiWarningSetpoint(true, 10.0);
    objects.append(limited);
    objects.append(QSharedPointer<AbstractParameterBase>(new BPDouble(6)));
    objects.append(QSharedPointer<AbstractParameterBase>(new BPVariant(6)));
    for (const QSharedPointer<AbstractParameterBase> &object : objects)
        values.append(object);
    if (kept)
        *kept = objects;
}

/** Writes the record of every object, as a server relaying what it read would. */
inline void writeAll(const QList<QSharedPointer<AbstractParameterBase>> &objects)
{
    QByteArray records;
    QContainerPacket packet(&records);
    for (const QSharedPointer<AbstractParameterBase> &object : objects)
        object->write(packet, true);
}

/** The offset of the token field in @p body, found as the reader walks it; -1 if the body ends first. */
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

} // namespace valuesfuzz

#endif // PARAMVALUESFUZZSETUP_H
