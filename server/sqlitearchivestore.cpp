#include "sqlitearchivestore.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

namespace {

// Values and events are kept in the archive in their stream form, at the stream version
// that the messages use.
template<typename T>
QByteArray toBytes(const T &record)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << record;
    return bytes;
}

template<typename T>
T fromBytes(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    T record;
    stream >> record;
    return record;
}

/** The stored value of a row whose first three columns are time, value and state. */
ArchiveValue valueOfRow(const QSqlQuery &query)
{
    return ArchiveValue(QDateTime::fromMSecsSinceEpoch(query.value(0).toLongLong(), Qt::UTC),
                        fromBytes<QVariant>(query.value(1).toByteArray()), query.value(2).toUInt());
}

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS value_archive ("
    " param INTEGER NOT NULL, time INTEGER NOT NULL, state INTEGER NOT NULL, value BLOB)",
    "CREATE INDEX IF NOT EXISTS value_by_param_time ON value_archive (param, time)",
    "CREATE INDEX IF NOT EXISTS value_by_time ON value_archive (time)",
    "CREATE TABLE IF NOT EXISTS event_archive ("
    " number INTEGER PRIMARY KEY, time INTEGER NOT NULL, type INTEGER NOT NULL,"
    " readed INTEGER NOT NULL DEFAULT 0, record BLOB NOT NULL)",
    "CREATE INDEX IF NOT EXISTS event_by_time ON event_archive (time)",
    "CREATE TABLE IF NOT EXISTS plant_state (key TEXT PRIMARY KEY, value BLOB)",
};

} // namespace

/** The prepared statements of the hot paths. */
struct SqliteArchiveStore::Statements
{
    explicit Statements(const QSqlDatabase &db)
        : insertValue(db)
        , insertEvent(db)
    {
    }
    QSqlQuery insertValue;
    QSqlQuery insertEvent;
};

SqliteArchiveStore::SqliteArchiveStore(const QString &path)
    : m_path(path)
    , m_connection(QStringLiteral("telor-archive-%1").arg(quintptr(this)))
{
}

SqliteArchiveStore::~SqliteArchiveStore()
{
    m_statements.reset();
    if (QSqlDatabase::contains(m_connection)) {
        {
            QSqlDatabase db = QSqlDatabase::database(m_connection, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(m_connection);
    }
}

bool SqliteArchiveStore::open(QString *error)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(m_path);
    if (!db.open()) {
        m_lastError = db.lastError().text();
        if (error)
            *error = QStringLiteral("cannot open the archive %1: %2").arg(m_path, m_lastError);
        return false;
    }
    QSqlQuery query(db);
    const char *const pragmas[] = {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL"};
    for (const char *pragma : pragmas) {
        if (!query.exec(QLatin1String(pragma))) {
            m_lastError = query.lastError().text();
            if (error)
                *error = QStringLiteral("cannot set up the archive %1: %2").arg(m_path, m_lastError);
            return false;
        }
    }
    for (const char *statement : schema) {
        if (!query.exec(QLatin1String(statement))) {
            m_lastError = query.lastError().text();
            if (error)
                *error = QStringLiteral("cannot create the archive tables in %1: %2").arg(m_path, m_lastError);
            return false;
        }
    }
    m_statements.reset(new Statements(db));
    m_statements->insertValue.prepare(
        QStringLiteral("INSERT INTO value_archive (param, time, state, value) VALUES (?, ?, ?, ?)"));
    m_statements->insertEvent.prepare(
        QStringLiteral("INSERT OR REPLACE INTO event_archive (number, time, type, readed, record) VALUES (?, ?, ?, ?, ?)"));
    return true;
}

bool SqliteArchiveStore::append(const QList<StoredValue> &values, const QList<StoredEvent> &events)
{
    if (!m_statements)
        return false;
    if (values.isEmpty() && events.isEmpty())
        return true;
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    if (!db.transaction()) {
        m_lastError = db.lastError().text();
        return false;
    }
    QSqlQuery &insertValue = m_statements->insertValue;
    for (const StoredValue &v : values) {
        insertValue.bindValue(0, qint64(v.id));
        insertValue.bindValue(1, v.timeMs);
        insertValue.bindValue(2, qint64(v.state));
        insertValue.bindValue(3, toBytes(v.value));
        if (!insertValue.exec()) {
            m_lastError = insertValue.lastError().text();
            db.rollback();
            return false;
        }
    }
    QSqlQuery &insertEvent = m_statements->insertEvent;
    for (const StoredEvent &e : events) {
        insertEvent.bindValue(0, e.number);
        insertEvent.bindValue(1, e.event.dateTime.toMSecsSinceEpoch());
        insertEvent.bindValue(2, int(e.event.typeId));
        insertEvent.bindValue(3, e.readed ? 1 : 0);
        insertEvent.bindValue(4, toBytes(e.event));
        if (!insertEvent.exec()) {
            m_lastError = insertEvent.lastError().text();
            db.rollback();
            return false;
        }
    }
    if (!db.commit()) {
        m_lastError = db.lastError().text();
        db.rollback();
        return false;
    }
    return true;
}

qint64 SqliteArchiveStore::countValues(unsigned int id, qint64 fromMs, qint64 toMs)
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.prepare(QStringLiteral("SELECT COUNT(*) FROM value_archive WHERE param = ? AND time >= ? AND time <= ?"));
    query.addBindValue(qint64(id));
    query.addBindValue(fromMs);
    query.addBindValue(toMs);
    if (!query.exec() || !query.next())
        return 0;
    return query.value(0).toLongLong();
}

QList<ArchiveValue> SqliteArchiveStore::values(unsigned int id, qint64 fromMs, qint64 toMs, qint64 offset, int limit)
{
    QList<ArchiveValue> result;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT time, value, state FROM value_archive WHERE param = ? AND time >= ? AND time <= ?"
                                 " ORDER BY time, rowid LIMIT ? OFFSET ?"));
    query.addBindValue(qint64(id));
    query.addBindValue(fromMs);
    query.addBindValue(toMs);
    query.addBindValue(limit);
    query.addBindValue(offset);
    if (!query.exec())
        return result;
    while (query.next()) {
        result.append(valueOfRow(query));
    }
    return result;
}

bool SqliteArchiveStore::valueBefore(unsigned int id, qint64 timeMs, ArchiveValue *value)
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.prepare(QStringLiteral("SELECT time, value, state FROM value_archive WHERE param = ? AND time < ?"
                                 " ORDER BY time DESC, rowid DESC LIMIT 1"));
    query.addBindValue(qint64(id));
    query.addBindValue(timeMs);
    if (!query.exec() || !query.next())
        return false;
    *value = valueOfRow(query);
    return true;
}

QList<StoredEvent> SqliteArchiveStore::events(qint64 fromMs, qint64 toMs, qint64 offset, int limit)
{
    QList<StoredEvent> result;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT number, readed, record FROM event_archive WHERE time >= ? AND time <= ?"
                                 " ORDER BY time, number LIMIT ? OFFSET ?"));
    query.addBindValue(fromMs);
    query.addBindValue(toMs);
    query.addBindValue(limit);
    query.addBindValue(offset);
    if (!query.exec())
        return result;
    while (query.next()) {
        StoredEvent e;
        e.number = query.value(0).toLongLong();
        e.readed = query.value(1).toInt() != 0;
        e.event = fromBytes<EventStruct>(query.value(2).toByteArray());
        result.append(e);
    }
    return result;
}

qint64 SqliteArchiveStore::countEvents(qint64 fromMs, qint64 toMs)
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.prepare(QStringLiteral("SELECT COUNT(*) FROM event_archive WHERE time >= ? AND time <= ?"));
    query.addBindValue(fromMs);
    query.addBindValue(toMs);
    if (!query.exec() || !query.next())
        return 0;
    return query.value(0).toLongLong();
}

QHash<unsigned short, int> SqliteArchiveStore::eventCounts(qint64 fromMs, qint64 toMs)
{
    QHash<unsigned short, int> counts;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.prepare(QStringLiteral("SELECT type, COUNT(*) FROM event_archive WHERE time >= ? AND time <= ? GROUP BY type"));
    query.addBindValue(fromMs);
    query.addBindValue(toMs);
    if (!query.exec())
        return counts;
    while (query.next())
        counts.insert(static_cast<unsigned short>(query.value(0).toUInt()), query.value(1).toInt());
    return counts;
}

QList<StoredEvent> SqliteArchiveStore::setReaded(const QList<qint64> &numbers, bool readed)
{
    QList<StoredEvent> changed;
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    if (!db.transaction())
        return changed;
    QSqlQuery select(db);
    select.prepare(QStringLiteral("SELECT readed, record FROM event_archive WHERE number = ?"));
    QSqlQuery update(db);
    update.prepare(QStringLiteral("UPDATE event_archive SET readed = ? WHERE number = ?"));
    for (const qint64 number : numbers) {
        select.addBindValue(number);
        if (!select.exec() || !select.next())
            continue;
        const bool was = select.value(0).toInt() != 0;
        const QByteArray record = select.value(1).toByteArray();
        select.finish();
        if (was == readed)
            continue;
        update.addBindValue(readed ? 1 : 0);
        update.addBindValue(number);
        if (!update.exec())
            continue;
        StoredEvent e;
        e.number = number;
        e.readed = readed;
        e.event = fromBytes<EventStruct>(record);
        changed.append(e);
    }
    if (!db.commit()) {
        db.rollback();
        return {};
    }
    return changed;
}

qint64 SqliteArchiveStore::lastEventNumber()
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!query.exec(QStringLiteral("SELECT MAX(number) FROM event_archive")) || !query.next())
        return 0;
    return query.value(0).toLongLong();
}

qint64 SqliteArchiveStore::lastTime()
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!query.exec(QStringLiteral("SELECT MAX(t) FROM (SELECT MAX(time) AS t FROM value_archive"
                                   " UNION ALL SELECT MAX(time) FROM event_archive)"))
        || !query.next() || query.value(0).isNull())
        return -1;
    return query.value(0).toLongLong();
}

bool SqliteArchiveStore::prune(qint64 beforeMs)
{
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    QSqlQuery query(db);
    if (!db.transaction())
        return false;
    query.prepare(QStringLiteral("DELETE FROM value_archive WHERE time < ?"));
    query.addBindValue(beforeMs);
    bool ok = query.exec();
    query.prepare(QStringLiteral("DELETE FROM event_archive WHERE time < ?"));
    query.addBindValue(beforeMs);
    ok = query.exec() && ok;
    if (!ok) {
        m_lastError = query.lastError().text();
        db.rollback();
        return false;
    }
    return db.commit();
}

bool SqliteArchiveStore::flush()
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    // Moves the write-ahead log into the main file; the log itself is durable already.
    return query.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
}

bool SqliteArchiveStore::saveGroupTree(const QByteArray &record)
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.prepare(QStringLiteral("INSERT OR REPLACE INTO plant_state (key, value) VALUES ('group_tree', ?)"));
    query.addBindValue(record);
    return query.exec();
}

QByteArray SqliteArchiveStore::groupTree()
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!query.exec(QStringLiteral("SELECT value FROM plant_state WHERE key = 'group_tree'")) || !query.next())
        return QByteArray();
    return query.value(0).toByteArray();
}
