#ifndef SQLITEARCHIVESTORE_H
#define SQLITEARCHIVESTORE_H

#include "archivestore.h"

#include <QtCore/QString>

#include <memory>

/**
 * @brief The archive in one SQLite file through Qt SQL (driver QSQLITE).
 *
 * The file is opened in WAL mode with `synchronous=NORMAL`: every append() is one
 * transaction, so a process killed at any moment loses at most the append that was
 * running. Values are indexed by (parameter, time) and by time, events by time. Values
 * and event records are kept in their stream forms (QDataStream, Qt 5.15).
 *
 * Each store uses a database connection of its own name, so several stores can live in
 * one process. The connection is closed and removed by the destructor.
 */
class SqliteArchiveStore : public ArchiveStore
{
public:
    /** A store in the file @p path; nothing is opened before open(). */
    explicit SqliteArchiveStore(const QString &path);
    ~SqliteArchiveStore() override;

    bool open(QString *error) override;
    bool append(const QList<StoredValue> &values, const QList<StoredEvent> &events) override;
    qint64 countValues(unsigned int id, qint64 fromMs, qint64 toMs) override;
    QList<ArchiveValue> values(unsigned int id, qint64 fromMs, qint64 toMs, qint64 offset, int limit) override;
    bool valueBefore(unsigned int id, qint64 timeMs, ArchiveValue *value) override;
    QList<StoredEvent> events(qint64 fromMs, qint64 toMs, qint64 offset, int limit) override;
    qint64 countEvents(qint64 fromMs, qint64 toMs) override;
    QHash<unsigned short, int> eventCounts(qint64 fromMs, qint64 toMs) override;
    QList<StoredEvent> setReaded(const QList<qint64> &numbers, bool readed) override;
    qint64 lastEventNumber() override;
    qint64 lastTime() override;
    bool prune(qint64 beforeMs) override;
    bool flush() override;
    bool saveGroupTree(const QByteArray &record) override;
    QByteArray groupTree() override;

    /** The text of the last database error, for the log. */
    QString lastError() const { return m_lastError; }

private:
    struct Statements;

    QString m_path;
    QString m_connection;
    QString m_lastError;
    std::unique_ptr<Statements> m_statements;
};

#endif // SQLITEARCHIVESTORE_H
