#ifndef ARCHIVEQUERY_H
#define ARCHIVEQUERY_H

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSet>

#include "archivevalue.h"
#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class AbstractParameterBase;
class QObject;

/**
 * @brief A request for the stored values of a set of parameters over a time span.
 * Identity 3, 7, 1.
 *
 * A client constructs a query bound to its token, names the parameters and the span and
 * sends it. The span is open at the start when `fromBegin` is set and open at the end
 * when `toEnd` is set; otherwise `beginTime` and `endTime` bound it. The section
 * constructor narrows a query to a list of identifiers in one section of one archive.
 *
 * Body, in this order: whether the query isValid() at the moment of writing (one byte),
 * the token as a signed 64-bit integer holding the pointer's value, and only for a valid
 * query: `fromBegin`, `beginTime` unless `fromBegin`, `toEnd`, `endTime` unless `toEnd`,
 * `ids` in Qt's set form (32-bit count, 32-bit identifiers in the set's iteration order),
 * idEventQuery() in 32 bits and restoreAperture() in one byte. `lastValues`, idArchive(),
 * idSection(), sectionCount() and idQuery() never travel, so an invalid query is nine
 * bytes: flag and token.
 *
 * readPrivate() always returns true. It cuts the milliseconds off both times, so the
 * receiver of a query has whole seconds.
 *
 * Copies, with the copy constructor as with the section constructor, copy the header.
 */
class TELORPARAMS5_EXPORT ArchiveQuery : public QProtocolStruct
{
public:
    /** A new query bound to the token @p parent: no points, no identifiers, all numbers 0. */
    explicit ArchiveQuery(QObject *parent);

    /** Copies the header and every field. */
    ArchiveQuery(const ArchiveQuery &other);

    /**
     * A section of @p query: the header, `fromBegin`, `toEnd`, the token, idEventQuery()
     * and restoreAperture() come from @p query; @p idArchive, @p idSection,
     * @p sectionCount and @p idQuery from the arguments; `ids` from @p ids, where repeats
     * fall together. The times of @p query are deliberately not taken over: both start
     * null, and `lastValues` starts empty. A section with either flag false is therefore
     * not valid until the matching setter has given it a point.
     */
    ArchiveQuery(const ArchiveQuery &query, int idArchive, int idSection, int sectionCount,
                 const QList<int> &ids, int idQuery);

    /** Copies the header and every field of @p other. */
    ArchiveQuery &operator=(const ArchiveQuery &other);
    ~ArchiveQuery() override;

    /** Writes the body; see the class description. */
    void writePrivate(QContainerPacket &packet) const override;
    /**
     * Reads the body. An invalid query's flag leaves every field apart from the token as it
     * was. A time that the flags leave out keeps its former value. Reading `ids` empties
     * the set first and leaves it empty if the body ends inside it. A point in a zone that
     * this side doesn't know (invalid either way), or whose zone name has a ".." section,
     * reads as a null QDateTime, so that the query can be written again. Returns true.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * Sets both points after testing them: false, with nothing changed, if @p begin is
     * not valid, if @p end is not valid or if @p end lies before @p begin (an equal end
     * is accepted). Otherwise stores both in UTC, clears `fromBegin` and `toEnd` and
     * returns true.
     */
    bool setInterval(const QDateTime &begin, const QDateTime &end);
    /** Stores @p begin in UTC and clears `fromBegin`, without any test. Returns true. */
    bool setBeginPoint(const QDateTime &begin);
    /** Stores @p end in UTC and clears `toEnd`, without any test. Returns true. */
    bool setEndPoint(const QDateTime &end);
    /** Opens the span at the start: sets `fromBegin` and makes `beginTime` null. */
    void setFromBegin();
    /** Opens the span at the end: sets `toEnd` and makes `endTime` null. */
    void setToEnd();
    /** The stored begin point, as it stands (in UTC if a setter stored it). */
    QDateTime getBeginTime() const;
    /** The stored end point, as it stands (in UTC if a setter stored it). */
    QDateTime getEndTime() const;

    /**
     * Whether the query can be served. False if `fromBegin` is false and `beginTime` is
     * not valid; if `toEnd` is false and `endTime` is not valid; if both times are valid
     * and `endTime` lies before `beginTime`; or if `ids` is empty.
     */
    bool isValid() const;

    /** Adds an identifier; a repeat changes nothing. */
    void appendById(unsigned int id);
    /** Adds the identifier of @p param. A null @p param adds nothing. */
    void appendParam(AbstractParameterBase *param);
    /** Takes an identifier out; an absent one is passed over. */
    void removeIdentifier(int id);
    /** Empties `ids`. */
    void clearIdentifiers();
    /** The identifiers, without copying them. */
    const QSet<unsigned int> &getIds() const;

    /** The requesting client's token; never dereferenced. */
    QObject *parent() const;
    /** Which archive this section asks; set only by the section constructor, 0 otherwise. Never travels. */
    int idArchive() const;
    /** Which section of the archive; set only by the section constructor, 0 otherwise. Never travels. */
    int idSection() const;
    /** The number of sections of the whole query; set only by the section constructor. Never travels. */
    int sectionCount() const;
    /** The number of the query; set only by the section constructor, 0 otherwise. Never travels. */
    int idQuery() const;
    /**
     * The number of the event query that goes with this one. It has no setter: it comes
     * from the stream (in a valid query's body) or from the query a section is cut from.
     */
    int idEventQuery() const;

    /** The stored last value of @p id, or a default ArchiveValue (state 2) if there is none. */
    ArchiveValue lastValue(unsigned int id) const;
    /** Stores a last value: creates the entry of @p id or overwrites it. */
    void setLastValue(unsigned int id, const ArchiveValue &value);
    /** A copy of the last values by identifier. */
    QMap<unsigned int, ArchiveValue> lastValueMap() const;
    /** Replaces the last values. */
    void setLastValueMap(const QMap<unsigned int, ArchiveValue> &values);

    /** A request option that the server interprets. */
    void setRestoreAperture(bool restore);
    /** The option as set or read; false for a new query. It travels only in a valid query. */
    bool restoreAperture() const;

    /** Begin of the span; does not apply while `fromBegin` is set. */
    QDateTime beginTime;
    /** End of the span; does not apply while `toEnd` is set. */
    QDateTime endTime;
    /** The span runs from the archive's beginning. */
    bool fromBegin;
    /** The span runs to the archive's end. */
    bool toEnd;
    /** The parameters asked for. */
    QSet<unsigned int> ids;
    /** The last known value by parameter; never travels. */
    QMap<unsigned int, ArchiveValue> lastValues;

private:
    QObject *m_parent;
    int m_idArchive;
    int m_idSection;
    int m_sectionCount;
    int m_idQuery;
    int m_idEventQuery;
    bool m_restoreAperture;
};

#endif // ARCHIVEQUERY_H
