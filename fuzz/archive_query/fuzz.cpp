// Feeds arbitrary bytes to the readers of the archive requests, as a server receives
// them: the body of an ArchiveQuery (selector byte even) or of an ArchiveQueryCancel
// (selector byte odd). A query that was read is then judged, divided into a section,
// called off and written again.

#include "archivequery.h"
#include "archivequerycancel.h"

#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

namespace {

QByteArray packetWith(qint32 messageId, const QByteArray &body)
{
    QByteArray packet(QProtocolStruct::HeaderSize, '\0');
    const qint32 words[8] = {3, messageId, 1, 1, qint32(body.size()), 1, 2, 3};
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], packet.data() + 4 * i);
    return packet + body;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > (1u << 20))
        return 0;
    const QByteArray body(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    if (data[0] & 1) {
        ArchiveQueryCancel cancel(nullptr);
        cancel.setPacket(packetWith(10, body));
        cancel.read();
        cancel.write();
        return 0;
    }

    ArchiveQuery query(nullptr);
    query.setPacket(packetWith(7, body));
    query.read();
    query.isValid();

    QList<int> ids;
    for (unsigned int id : query.getIds()) {
        ids.append(static_cast<int>(id));
        if (ids.size() == 16)
            break;
    }
    ArchiveQuery section(query, 1, 0, 2, ids, 9);
    section.setBeginPoint(query.getBeginTime());
    section.setEndPoint(query.getEndTime());
    section.write();

    ArchiveQueryCancel cancel(query);
    cancel.write();
    query.write();
    return 0;
}
