#ifndef DESCRIPTIONWIRE_P_H
#define DESCRIPTIONWIRE_P_H

// Private to the description records: the walk over a received table.
// Not installed and not part of the library's interface.

#include "qcontainerpacket.h"
#include "recentrecords_p.h"

#include <QtCore/QHash>
#include <QtCore/QString>

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

/**
 * Reads a text table (language key to text) exactly as Qt's operator reads a
 * QHash<QString, QString>, then lets it share with an identical table read shortly
 * before: state texts and rule texts repeat across a list of descriptions.
 */
inline void readTextTable(QContainerPacket &packet, QHash<QString, QString> &table)
{
    RecentRecords::readShared(packet, table, [&]() { packet >> table; });
}

/**
 * Runs @p read, which fills @p table from @p packet, and lets the table share with an
 * identical one read shortly before, when it was empty before the read (then what the
 * read leaves in it depends on the bytes alone).
 */
template<typename Table, typename Read>
void readSharedTable(QContainerPacket &packet, Table &table, Read read)
{
    if (!table.isEmpty()) {
        read();
        return;
    }
    RecentRecords::readShared(packet, table, read);
}

} // namespace DescriptionWire

#endif // DESCRIPTIONWIRE_P_H
