#ifndef HASHWALK_P_H
#define HASHWALK_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the writers of the events subsystem and may change from one version to the next.
//

#include <QtCore/QHash>

#include <vector>

namespace TelorEvents {

/**
 * Calls @p visit(key, value) for every entry of @p hash, from its last entry to its
 * first: the order in which Qt writes an associative container, so that a reader that
 * inserts each entry in turn finds the most recently inserted value of a repeated key
 * first again.
 *
 * Qt 5.15 deprecates stepping a QHash iterator backwards, so the walk collects the
 * forward iterators first.
 */
template<typename K, typename V, typename Visit>
void walkFromLast(const QHash<K, V> &hash, Visit visit)
{
    std::vector<typename QHash<K, V>::const_iterator> entries;
    entries.reserve(static_cast<size_t>(hash.size()));
    for (auto it = hash.constBegin(); it != hash.constEnd(); ++it)
        entries.push_back(it);
    for (auto it = entries.crbegin(); it != entries.crend(); ++it)
        visit((*it).key(), (*it).value());
}

} // namespace TelorEvents

#endif // HASHWALK_P_H
