#ifndef PARAMVALUESFUZZSETUP_H
#define PARAMVALUESFUZZSETUP_H

// What the values fuzz target and its seed program share: the parameter objects a client
// holds and the tokens. What it shares with the subscription target is in resultfuzzing.h.

#include "resultfuzzing.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "paramvaluesstruct.h"

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
    objects.append(resultfuzz::limitedVariant(5));
    objects.append(QSharedPointer<AbstractParameterBase>(new BPDouble(6)));
    objects.append(QSharedPointer<AbstractParameterBase>(new BPVariant(6)));
    for (const QSharedPointer<AbstractParameterBase> &object : objects)
        values.append(object);
    if (kept)
        *kept = objects;
}

} // namespace valuesfuzz

#endif // PARAMVALUESFUZZSETUP_H
