#ifndef RAWRECORD_P_H
#define RAWRECORD_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the packed value structures and may change from one version to the next.
//

#include <cstring>
#include <type_traits>

/**
 * @brief Copies of plain fields into and out of a packed record, in the byte order of
 * the machine, moving a cursor on by each field's size.
 */
namespace TelorRaw {

/** Copies @p value to @p cursor and moves the cursor past it. */
template<typename T>
inline void put(char *&cursor, const T &value)
{
    static_assert(std::is_trivially_copyable<T>::value, "a packed field is a plain value");
    std::memcpy(cursor, &value, sizeof(T));
    cursor += sizeof(T);
}

/** Copies the bytes at @p cursor into @p value and moves the cursor past them. */
template<typename T>
inline void take(char *&cursor, T &value)
{
    static_assert(std::is_trivially_copyable<T>::value, "a packed field is a plain value");
    std::memcpy(&value, cursor, sizeof(T));
    cursor += sizeof(T);
}

} // namespace TelorRaw

#endif // RAWRECORD_P_H
