#ifndef ARCHIVERESULT_H
#define ARCHIVERESULT_H

#include <QtCore/QMap>
#include <QtCore/QString>

#include "archiveparamdata.h"
#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief One piece of the answer to an ArchiveQuery: the series of several parameters.
 *
 * The identity is not stamped: a result takes it from the packet it is read from. A long
 * answer comes as several results; each says which piece it is and how many there are,
 * and each stands alone: pieces are not joined here.
 *
 * Body, in this order: the number of entries in `params` (32 bits, signed), the token as
 * a signed 64-bit integer holding the pointer's value, piecesCount(), pieceNumber(),
 * fileName() (QString form), `auxId`, idQuery() (32 bits each), then every entry of
 * `params` by ascending key: the key (32 bits), a presence flag (one byte, 1 when the entry
 * holds a series, 0 for a null pointer) and, after a flag that isn't 0, the series in the
 * ArchiveParamData form.
 *
 * Ownership: the result owns every ArchiveParamData in `params` and deletes them when it is
 * destroyed. A result is not copied. A client reads a result once, into a fresh object;
 * the side that produces the answer fills it with the setters and setParam() and writes it.
 */
class TELORPARAMS5_EXPORT ArchiveResult : public QProtocolStruct
{
public:
    /** An empty result with a null token; the header is the base's default. */
    ArchiveResult();
    /** Deletes every series in `params`. */
    ~ArchiveResult() override;

    /** Writes the body; see the class description. A null series goes out as its key and flag 0. */
    void writePrivate(QContainerPacket &packet) const override;

    /**
     * Reads the body. The fixed fields are read first. For every entry with a flag that
     * isn't 0 a new series is read and stored under its key; an entry with flag 0 leaves
     * no trace, and a series stored under a key that is already there takes the place of
     * the old one, which is deleted. `params` is not emptied first.
     *
     * Returns false at once when a series doesn't read (its closing word differs from its
     * identifier): that series is dropped, the series read before it stay reachable and
     * the rest of the body stays unread. Otherwise returns true, also for a null token and
     * for a body that ends early; the stream's status is not examined. Entries are read only
     * while bytes are left, so a count larger than the body costs nothing.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * The series of the parameter @p id, owned by the result, or null if there is none.
     * The identifier is looked up as `int`, so one above the range of `int` finds the
     * negative key of the same bits.
     */
    ArchiveParamData *getParam(unsigned int id) const;

    /** The token of the requesting client; never dereferenced. */
    const QObject *parent() const;
    /** How many pieces the answer has. */
    int piecesCount() const;
    /** Which piece this is. */
    int pieceNumber() const;
    /** A file name that travels with the answer; this library opens no file. */
    QString fileName() const;
    /** The number of the query. */
    int idQuery() const;

    /** @name Filling a result on the side that produces the answer */
    ///@{
    /**
     * Stores @p series under @p id and takes ownership of it. A series already stored under
     * @p id is deleted. A null @p series makes an entry that travels as its key and flag 0.
     */
    void setParam(int id, ArchiveParamData *series);
    void setParent(const QObject *parent);
    void setPiecesCount(int piecesCount);
    void setPieceNumber(int pieceNumber);
    void setFileName(const QString &fileName);
    void setIdQuery(int idQuery);
    ///@}

    /**
     * The series by parameter identifier. The result owns the objects: whoever puts a
     * series in hands it over, and must not delete it.
     */
    QMap<int, ArchiveParamData *> params;

private:
    const QObject *m_parent;
    int m_piecesCount;
    int m_pieceNumber;
    QString m_fileName;

public:
    /** A word that travels with the answer; this library gives it no meaning. */
    int auxId;

private:
    int m_idQuery;

    Q_DISABLE_COPY(ArchiveResult)
};

#endif // ARCHIVERESULT_H
