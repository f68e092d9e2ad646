// Feeds arbitrary bytes to the readers of the archive requests, as a server receives
// them: the body of an ArchiveQuery (selector byte even) or of an ArchiveQueryCancel
// (selector byte odd). A query that was read is then judged, divided into a section,
// called off and written again.

#include "fuzztarget.h"

#include "archivequery.h"
#include "archivequerycancel.h"

#include <cstddef>
#include <cstdint>

namespace {

void readCancel(const QByteArray &body)
{
    ArchiveQueryCancel cancel(nullptr);
    cancel.setPacket(fuzz::packetWith(3, 10, 1, body, 1, 2, 3));
    cancel.read();
    cancel.write();
}

void readQuery(const QByteArray &body)
{
    ArchiveQuery query(nullptr);
    query.setPacket(fuzz::packetWith(3, 7, 1, body, 1, 2, 3));
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
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::readSelected(data, size, {readQuery, readCancel});
    return 0;
}
