#ifndef PARAMETERSUNDER_P_H
#define PARAMETERSUNDER_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5.
//

#include <QtCore/QMultiHash>
#include <QtCore/QSharedPointer>
#include <QtCore/QVarLengthArray>

class AbstractParameterBase;

namespace TelorExchange {

/**
 * A private list of strong references to the parameter objects under one identifier.
 * Most identifiers hold one or a few objects, which fit without a heap allocation.
 */
using ParameterRun = QVarLengthArray<QSharedPointer<AbstractParameterBase>, 4>;

/**
 * Replaces the contents of @p run with the objects registered under @p key, in the order
 * of the hash's chain for that key (the latest inserted first), as QHash::values(key)
 * gives them.
 */
template<typename Key>
void collect(const QMultiHash<Key, QSharedPointer<AbstractParameterBase>> &hash, const Key &key,
             ParameterRun &run)
{
    run.clear();
    for (auto it = hash.constFind(key), end = hash.cend(); it != end && it.key() == key; ++it)
        run.append(it.value());
}

} // namespace TelorExchange

#endif // PARAMETERSUNDER_P_H
