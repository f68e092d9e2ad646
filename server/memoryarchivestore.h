#ifndef MEMORYARCHIVESTORE_H
#define MEMORYARCHIVESTORE_H

#include "archivestore.h"

#include <QtCore/QMap>

/**
 * @brief An archive held in memory only, for tests and the fuzz target: everything is
 * lost with the object. Same answers as the SQLite store for the same calls.
 */
class MemoryArchiveStore : public ArchiveStore
{
public:
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

private:
    QHash<unsigned int, QList<StoredValue>> m_values; // per parameter, in time order
    QMap<qint64, StoredEvent> m_events;               // by number
    QByteArray m_tree;
    qint64 m_lastTime = -1;
};

#endif // MEMORYARCHIVESTORE_H
