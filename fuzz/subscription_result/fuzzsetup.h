#ifndef SUBSCRIPTIONFUZZSETUP_H
#define SUBSCRIPTIONFUZZSETUP_H

// What the subscription fuzz target and its seed program share: the clients and their
// objects, and where the token stands in a result body.

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>

namespace subscriptionfuzz {

/**
 * Input layout: one selector byte, then a ParamSubscriptionResult body. The selector
 * picks the token written over the body's token field: 0 the panel, 1 the logger (the
 * record walk is reached for either), 2 null, 3 a client that is not known, 4 the body's
 * token as it is.
 */
enum Selector : unsigned char { Panel = 0, Logger = 1, NullToken = 2, Stranger = 3, KeepToken = 4 };
constexpr int SelectorCount = 5;

inline const QObject *panel()
{
    static QObject client;
    return &client;
}

inline const QObject *logger()
{
    static QObject client;
    return &client;
}

inline const QObject *stranger()
{
    static QObject client;
    return &client;
}

/**
 * The panel holds 1 a double, 2 a string, 3 two variants, 5 a variant with limits and 6 a
 * double and a variant; the logger holds 1 (the panel's object), 4 one double appended
 * twice and 5 a variant of its own.
 */
inline void fill(ClientParamSubscription &subscription, QList<QSharedPointer<AbstractParameterBase>> *kept = nullptr)
{
    auto add = [&](const QSharedPointer<AbstractParameterBase> &object, const QObject *client) {
        subscription.append(object, client);
        if (kept)
            kept->append(object);
    };
    const QSharedPointer<BPDouble> shared = QSharedPointer<BPDouble>::create(1);
    add(shared, panel());
    add(QSharedPointer<AbstractParameterBase>(new BPString(2)), panel());
    add(QSharedPointer<AbstractParameterBase>(new BPVariant(3)), panel());
    add(QSharedPointer<AbstractParameterBase>(new BPVariant(3)), panel());
    const QSharedPointer<BPVariant> limited = QSharedPointer<BPVariant>::create(5);
    limited->limitsPrivate().setLowPossibleSetpoint(true, 0.0);
    limited->limitsPrivate().setHiWarningSetpoint(true, 10.0);
    add(limited, panel());
    add(QSharedPointer<AbstractParameterBase>(new BPDouble(6)), panel());
    add(QSharedPointer<AbstractParameterBase>(new BPVariant(6)), panel());

    add(shared, logger());
    const QSharedPointer<AbstractParameterBase> twice(new BPDouble(4));
    add(twice, logger());
    add(twice, logger());
    add(QSharedPointer<AbstractParameterBase>(new BPVariant(5)), logger());
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
    QList<int> ids;
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

} // namespace subscriptionfuzz

#endif // SUBSCRIPTIONFUZZSETUP_H
