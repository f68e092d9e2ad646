#ifndef DESCRIPTIONWIRE_P_H
#define DESCRIPTIONWIRE_P_H

// Private to the description records: the walk over a received table.
// Not installed and not part of the library's interface.

#include "qcontainerpacket.h"

namespace DescriptionWire {

/**
 * Runs @p readOne once for each of the @p count entries that a received table announces,
 * in order, and stops early when @p readOne returns false (the result is then false).
 * A count below 1 runs nothing.
 *
 * An entry that begins where the data has already ended reads as zeros and empty values,
 * and so does every entry after it. The walk therefore reads that one entry and stops:
 * for a table that inserts by key, the result is exactly that of reading the whole count,
 * since every further entry would insert the same key with the same value again. A count
 * can thus never make the walk loop, or allocate, beyond what the bytes left describe.
 */
template<typename Count, typename ReadOne>
bool readEntries(QContainerPacket &packet, Count count, ReadOne readOne)
{
    for (Count i = 0; i < count; ++i) {
        const bool dataEnded = packet.bytesLeft() <= 0;
        if (!readOne())
            return false;
        if (dataEnded)
            break;
    }
    return true;
}

} // namespace DescriptionWire

#endif // DESCRIPTIONWIRE_P_H
