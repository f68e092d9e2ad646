#ifndef SUBSCRIPTIONFUZZSETUP_H
#define SUBSCRIPTIONFUZZSETUP_H

// What the subscription fuzz target and its seed program share: the clients and their
// objects. What it shares with the values target is in resultfuzzing.h.

#include "resultfuzzing.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "clientparamsubscription.h"

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
    add(resultfuzz::limitedVariant(5), panel());
    add(QSharedPointer<AbstractParameterBase>(new BPDouble(6)), panel());
    add(QSharedPointer<AbstractParameterBase>(new BPVariant(6)), panel());

    add(shared, logger());
    const QSharedPointer<AbstractParameterBase> twice(new BPDouble(4));
    add(twice, logger());
    add(twice, logger());
    add(QSharedPointer<AbstractParameterBase>(new BPVariant(5)), logger());
}

} // namespace subscriptionfuzz

#endif // SUBSCRIPTIONFUZZSETUP_H
