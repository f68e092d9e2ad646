#ifndef ARCHIVESTORE_H
#define ARCHIVESTORE_H

#include "archivevalue.h"
#include "eventstruct.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

/** One stored value of a parameter: the parameter, the time in milliseconds since the epoch (UTC), value and state. */
struct StoredValue
{
    unsigned int id = 0;
    qint64 timeMs = 0;
    QVariant value;
    unsigned int state = 2;
};

/**
 * One stored event: the record as it travels, its number in the archive (the server
 * puts the same number in the record's `secondId`) and whether it has been read.
 */
struct StoredEvent
{
    qint64 number = 0;
    EventStruct event;
    bool readed = false;
};

/**
 * @brief Where the plant server keeps its value and event archives, behind one small
 * interface, so that another storage (another Qt SQL driver) can take the place of the
 * first without touching the server.
 *
 * Times are milliseconds since the epoch, UTC. Ranges are closed on both ends. A store
 * is used from one thread. Every operation reports failure through its result; none
 * throws. What a failed write leaves behind is the store's business, but a store never
 * holds half of one append() call.
 */
class ArchiveStore
{
public:
    virtual ~ArchiveStore();

    /** Opens or creates the storage; on failure @p error says why. */
    virtual bool open(QString *error) = 0;

    /**
     * Stores the values and events of one tick together: after a crash either all of
     * them are there or none.
     */
    virtual bool append(const QList<StoredValue> &values, const QList<StoredEvent> &events) = 0;

    /** How many values of @p id lie in [@p fromMs, @p toMs]. */
    virtual qint64 countValues(unsigned int id, qint64 fromMs, qint64 toMs) = 0;
    /**
     * The values of @p id in [@p fromMs, @p toMs], oldest first (values of one time in
     * the order stored), skipping the first @p offset and giving at most @p limit.
     */
    virtual QList<ArchiveValue> values(unsigned int id, qint64 fromMs, qint64 toMs, qint64 offset, int limit) = 0;
    /** The newest value of @p id stored before @p timeMs; false when there is none. */
    virtual bool valueBefore(unsigned int id, qint64 timeMs, ArchiveValue *value) = 0;

    /** The events in [@p fromMs, @p toMs], oldest first, after @p offset, at most @p limit. */
    virtual QList<StoredEvent> events(qint64 fromMs, qint64 toMs, qint64 offset, int limit) = 0;
    /** How many events lie in [@p fromMs, @p toMs]. */
    virtual qint64 countEvents(qint64 fromMs, qint64 toMs) = 0;
    /** The number of events of each type in [@p fromMs, @p toMs]. */
    virtual QHash<unsigned short, int> eventCounts(qint64 fromMs, qint64 toMs) = 0;
    /** Sets the read state of the events numbered @p numbers; returns the events that changed. */
    virtual QList<StoredEvent> setReaded(const QList<qint64> &numbers, bool readed) = 0;
    /** The highest event number stored, 0 when there is none. */
    virtual qint64 lastEventNumber() = 0;

    /** The newest time stored of any value or event, or -1 for an empty store. */
    virtual qint64 lastTime() = 0;
    /** Removes every value and event older than @p beforeMs. */
    virtual bool prune(qint64 beforeMs) = 0;
    /** Makes everything appended so far durable. */
    virtual bool flush() = 0;

    /** Stores the group tree (its wire record) in place of the one stored before. */
    virtual bool saveGroupTree(const QByteArray &record) = 0;
    /** The stored group tree, or an empty array when none was stored. */
    virtual QByteArray groupTree() = 0;
};

#endif // ARCHIVESTORE_H
