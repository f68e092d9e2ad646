#ifndef BPFIELD_H
#define BPFIELD_H

#include <QtCore/QMap>

#include "abstractparameterbase.h"

class ParamBaseFieldPtr;

/**
 * @brief The sending side of a field parameter: a two-dimensional array of parameters
 * that writes the cells whose parameters changed. Value type 4.
 *
 * Ownership. The field owns one ParamBaseFieldPtr handle per filled cell, and not the
 * parameters in the cells: those belong to the application and must outlive the field,
 * since the handles unregister from them when the field is resized or destroyed.
 *
 * Building. A field is given its size by the constructor BPField(rows, columns) or by
 * setDim(), and is filled with setElement(); a cell cannot be emptied or replaced. A
 * field built with BPField(idParameter) has no array at all until setDim() gives it one.
 * The array holds the filled cells only, so its memory follows the number of elements,
 * not rows times columns.
 *
 * Change tracking. A change of any element (its upFlag(), as its setValue() or
 * setState() make it) raises the field's flag and the flags of the field's own handles.
 * dropFlag() counts: the cells' flags are lowered only when as many drops have come as
 * the field has handles, and with no handles at every call. The field's own flag is never
 * lowered: once raised, changed() stays true for the life of the field.
 *
 * Payload: a 32-bit count, then for each written cell, row by row and by rising column,
 * its row and column as 32-bit integers and the element's parameter record. A cell is
 * written if its handle's flag is up (a new element's is), or every filled cell when
 * `full` is true; the element's own `full` comes from its handle's first write. Writing a
 * cell lowers its handle's flag and the element's flag. The count is written as a
 * placeholder first and patched in place when the cells are done.
 *
 * A field cannot read: readPrivate() returns false and consumes nothing. The receiving
 * side is BPFieldClient.
 */
class TELORPARAMS5_EXPORT BPField : public AbstractParameterBase
{
public:
    /** An empty array of @p rows by @p columns; the identifier stays 0. */
    BPField(unsigned int rows, unsigned int columns);
    /** Identifier @p idParameter, no array, both sizes 0. */
    explicit BPField(unsigned int idParameter);
    /** Deletes every handle; the elements stay with their owners. */
    ~BPField() override;

    /** 4. */
    int valueType() const override;
    /**
     * Counts a client's drop. When the count reaches the number of the field's handles
     * (or at once when it has none), lowers every cell's flags and resets the count. The
     * field's own flag is not touched.
     */
    void dropFlag() override;
    /** Writes the payload; see the class description. */
    void writePrivate(QContainerPacket &packet, bool full) const override;
    /** Always false; nothing is consumed. */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * Gives the field the size @p rows by @p columns. A field that has an array keeps it,
     * with all its elements, unless both sizes differ from the current ones; otherwise the
     * old handles are deleted and a new, empty array is built. A field without an array
     * always gets one.
     */
    void setDim(unsigned int rows, unsigned int columns);

    /**
     * Puts @p element into the cell at @p row, @p column through a new handle, whose flag
     * is up so that the element goes out with the next write.
     *
     * Returns false, changing nothing, for a position outside the array, a cell that is
     * already filled, or a null @p element.
     */
    bool setElement(unsigned int row, unsigned int column, AbstractParameterBase *element);

    /**
     * Writes the whole record, changed cells only: the same bytes as write(packet, false).
     */
    void writeField(QContainerPacket &packet) const;

protected:
    /** The filled cells by position (row in the high 32 bits, column in the low ones), owned. */
    QMap<quint64, ParamBaseFieldPtr *> cells;
    /** The number of rows of the array; 0 until a size is given. */
    unsigned int rows;
    /** The number of columns of the array; 0 until a size is given. */
    unsigned int columns;
    /** The drops counted since the cells were last lowered; see dropFlag(). */
    unsigned int dropCount;

private:
    void deleteCells();

    bool arrayExists;
};

#endif // BPFIELD_H
