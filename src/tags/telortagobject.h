#ifndef TELORTAGOBJECT_H
#define TELORTAGOBJECT_H

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>

#include "telorparams5_export.h"

class QByteArray;

/**
 * @brief The read-only store of the tags that the server puts on parameters.
 *
 * The store holds three tables, all empty after construction and all owned by the
 * object:
 *
 * - the texts of each tag type: tag type key, then text key, then the text;
 * - the tags of each parameter: parameter identifier, then tag type key, then the tag's
 *   value on that parameter;
 * - the parameters of each tag value: tag type key, then tag value, then the identifiers
 *   of the parameters that carry it. Only read() fills this table, and its only effect
 *   is on the result of read().
 *
 * The application hands the block of tags that it fetched from the server to read() and
 * then asks the getters for texts and values. Nothing ties the three tables together:
 * read() does not check that the third is the inverse of the second. The library has no
 * writer for the block, and read() is the only way to change the store.
 *
 * The object declares no signals, slots or properties of its own. It has no locks and
 * belongs to the thread that reads it.
 */
class TELORPARAMS5_EXPORT TELORTagObject : public QObject
{
    Q_OBJECT

public:
    /** An empty store; @p parent is handed to QObject. */
    explicit TELORTagObject(QObject *parent = nullptr);
    ~TELORTagObject() override;

    /**
     * Replaces all three tables from the tag block @p data.
     *
     * The block is read through a TELORDataStream opened for reading, and holds the three
     * tables in a row, each in Qt's QHash stream form (the third with a QSet of unsigned
     * 32-bit identifiers inside). Each table is cleared before it is read, so nothing of an
     * earlier block survives. A table in which the stream fails ends up empty and reading
     * goes on with the next one; where the block ends early, the tables after that point
     * read as empty. A key that arrives twice is kept twice, and a lookup then finds the
     * entry that arrived last; an identifier that arrives twice in a set is kept once.
     *
     * Returns true only if all three tables are non-empty afterwards. A false result
     * still replaces the tables, and whatever was read stays usable.
     *
     * The reader allocates no more than the block's bytes can describe, whatever counts
     * and string lengths it announces.
     */
    bool read(const QByteArray &data);

    /**
     * Every tag type key with its text under @p textKey. A tag type without that text is
     * in the result with a null string.
     */
    QHash<QString, QString> getTagTypes(const QString &textKey) const;

    /**
     * The tags of parameter @p id, keyed by their tag type's text under @p textKey, with
     * each tag's value as the value. A missing tag type or text gives the null string as
     * the key, and tags whose keys fall together overwrite each other: the one that comes
     * last in the parameter's iteration order wins. An unknown parameter gives an empty
     * hash.
     */
    QHash<QString, QString> getParamTags(unsigned int id, const QString &textKey) const;

    /**
     * The value of the tag of type @p tagType on parameter @p id, or a null string if the
     * parameter or the tag is not known.
     */
    QString getParamTagValue(unsigned int id, const QString &tagType) const;

private:
    Q_DISABLE_COPY(TELORTagObject)

    QHash<QString, QHash<QString, QString>> tagTexts;
    QHash<unsigned int, QHash<QString, QString>> paramTags;
    QHash<QString, QHash<QString, QSet<unsigned int>>> tagParams;
};

#endif // TELORTAGOBJECT_H
