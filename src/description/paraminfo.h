#ifndef PARAMINFO_H
#define PARAMINFO_H

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>

#include "parambitfield.h"
#include "paramenum.h"
#include "paramlimits.h"
#include "paramsetpoints.h"
#include "qxmltranslation.h"
#include "telorparams5_export.h"

class QContainerPacket;
class ParamFieldElementInfo;

/**
 * @brief Everything known about a parameter apart from its current value.
 *
 * A value type: copied and assigned member by member; `setpoints` makes copies of its
 * numbers of its own, and everything else is implicitly shared. A field parameter
 * (`type` 4) holds one more ParamInfo for each of its cells in `elements`, so the record
 * is recursive.
 *
 * Wire form, in this order, which is not the order of the members: `id` (32 bits),
 * `code`, `code2`, `code3`, `type` (32 bits), `name`, `unitX`, `unit` (each in the
 * stream form of QXmlTranslation), `rows`, `columns` (32 bits each), `option`,
 * `precision`, `format` (one byte each), `limits`, `enumeration`, `bitField` (their own
 * wire forms), the number of `elements` (32 bits) and each element (`row`, `column`,
 * then its `info` in this same form), the number of `valueTable` entries (32 bits) and
 * each entry in ascending key order (key as double, value as 32 bits), `setpoints`,
 * `idList` in Qt's form for a list, and `extraText`.
 *
 * Nesting of cells is bounded when a record is read: see MaxCellNesting.
 */
class TELORPARAMS5_EXPORT ParamInfo
{
public:
    /**
     * The deepest level of cells that read() accepts. The cells of the record being read
     * are level 1, their own cells level 2, and so on. A well-formed description has
     * cells at level 1 only, since a field can't hold a field; a record that announces
     * cells below level 8 is refused: read() returns false at the first such cell,
     * without reading it, and the stream stands inside the record.
     */
    static constexpr int MaxCellNesting = 8;

    /** An empty, invalid description: zeros, null strings and empty parts, `format` 'f'. */
    ParamInfo();
    /** Member by member; the setpoints are copied deeply. */
    ParamInfo(const ParamInfo &other);
    /** Member by member, in declaration order; the setpoints are copied deeply. */
    ParamInfo &operator=(const ParamInfo &other);
    virtual ~ParamInfo();

    /**
     * True when `id`, `code` and `type` are equal. Nothing else is compared: two records
     * that differ in their texts or limits are equal.
     */
    bool operator==(const ParamInfo &other) const;

    /** True when `code` is not empty, `id` is not 0 and `type` is not 0. */
    bool isValid() const;

    /** The name in @p language, or its English form when it has none for that language. */
    QString getName(const QString &language) const;
    /** The unit in @p language, or its English form when it has none for that language. */
    QString getUnit(const QString &language) const;
    /** The X unit in @p language, or its English form when it has none for that language. */
    QString getUnitX(const QString &language) const;

    /** Writes the wire form. `option` goes out as 1 or 0. */
    void write(QContainerPacket &packet) const;

    /**
     * Reads the wire form into a freshly constructed record; on a used one, what the
     * data does not overwrite stays.
     *
     * Returns false at once, with the stream inside the record, when `limits`,
     * `enumeration` or `bitField` refuses its data, or when a cell fails to read; the
     * failed cell is dropped and the cells read before it stay. The element and value
     * table counts are unsigned; a repeated value table key keeps the later value. The
     * result of the setpoints is not looked at. `idList` is replaced.
     *
     * After reading to its end, the result is whether `type` is not 0: a well-formed
     * record with `type` 0 is read whole and then reported as failed. `id` and `code`
     * are not tested here; that is what isValid() is for.
     */
    bool read(QContainerPacket &packet);

    /** The parameter's identifier; 0 is not valid. */
    unsigned int id;
    /** The parameter's non-translated name; empty is not valid. */
    QString code;
    /** A second non-translated string, carried unchanged. */
    QString code2;
    /** A third non-translated string, carried unchanged. */
    QString code3;
    /** Display name by language. */
    QXmlTranslation name;
    /** The parameter's kind, 1 to 7, as the value type of its parameter object; 0 is not valid. */
    int type;
    /** Scale of the value. */
    ParamLimits limits;
    /** Unit of the value by language. */
    QXmlTranslation unit;
    /** The X unit by language. */
    QXmlTranslation unitX;
    /** Texts for values. */
    ParamEnum enumeration;
    /** Description of a status word. */
    ParamBitField bitField;
    /** First size of a field parameter. */
    int rows;
    /** Second size of a field parameter. */
    int columns;
    /** The cells of a field parameter, in the sender's order. */
    QList<ParamFieldElementInfo> elements;
    /** A table from a value to a number, sorted by value; carried unchanged. */
    QMap<double, unsigned int> valueTable;
    /** Alarm thresholds. */
    ParamSetpoints setpoints;
    /** One more attribute, carried unchanged. */
    bool option;
    /** Digits for the display of a value, as passed to the parameter's stringValue(). */
    signed char precision;
    /** Number format letter for the display of a value, as QString::number takes it. */
    char format;
    /** Further identifiers, carried unchanged. */
    QList<unsigned int> idList;
    /** One last free string, carried unchanged. */
    QString extraText;
};

/**
 * @brief One cell of a field parameter: its position and its full description.
 *
 * A plain record. Wire form: `row` and `column` as 32 bits each, then `info` in the wire
 * form of ParamInfo.
 */
class TELORPARAMS5_EXPORT ParamFieldElementInfo
{
public:
    /** Row and column -1 and a default description. */
    ParamFieldElementInfo();

    /** Writes `row`, `column`, then `info`. */
    void write(QContainerPacket &packet) const;
    /**
     * Reads `row` and `column`, then `info`, and returns what ParamInfo::read() returns.
     * The cells of `info` count from level 1 for ParamInfo::MaxCellNesting.
     */
    bool read(QContainerPacket &packet);

    /** Index of the cell in `rows`. */
    int row;
    /** Index of the cell in `columns`. */
    int column;
    /** Full description of the cell. */
    ParamInfo info;
};

#endif // PARAMINFO_H
