// Valid inputs for the archive request fuzz target: a selector byte (0 a query body, 1 a
// cancel body), then the body written by the library's own writers.

#include "seedwriter.h"

#include "archivequery.h"
#include "archivequerycancel.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QTimeZone>

namespace {

QByteArray bodyOf(char selector, QProtocolStruct &message)
{
    return QByteArray(1, selector) + message.write().mid(QProtocolStruct::HeaderSize);
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter out(argc, argv);
    static QObject client;

    {
        ArchiveQuery query(&client);
        query.setInterval(QDateTime(QDate(2025, 10, 1), QTime(6, 0, 0, 120), Qt::UTC),
                          QDateTime(QDate(2025, 10, 1), QTime(18, 30, 15, 999), Qt::UTC));
        for (unsigned int id : {1u, 2u, 3u, 1000u, 0xFFFFFFFFu})
            query.appendById(id);
        query.setRestoreAperture(true);
        out.add(QStringLiteral("query-interval"), bodyOf('\0', query));
    }
    {
        ArchiveQuery query(&client);
        query.setFromBegin();
        query.setToEnd();
        query.appendById(42);
        out.add(QStringLiteral("query-open"), bodyOf('\0', query));
    }
    {
        ArchiveQuery query(&client);
        query.setFromBegin();
        query.setEndPoint(QDateTime(QDate(2025, 10, 1), QTime(0, 0), QTimeZone(3600)));
        query.appendById(7);
        out.add(QStringLiteral("query-from-begin"), bodyOf('\0', query));
    }
    {
        ArchiveQuery query(&client);
        query.setBeginPoint(QDateTime(QDate(2025, 10, 1), QTime(0, 0), Qt::LocalTime));
        query.setToEnd();
        query.appendById(7);
        query.appendById(8);
        out.add(QStringLiteral("query-to-end"), bodyOf('\0', query));
    }
    {
        ArchiveQuery invalid(&client);
        out.add(QStringLiteral("query-invalid"), bodyOf('\0', invalid));
    }
    {
        ArchiveQueryCancel cancel(&client);
        out.add(QStringLiteral("cancel"), bodyOf('\1', cancel));
    }
    return out.finish();
}
