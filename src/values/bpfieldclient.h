#ifndef BPFIELDCLIENT_H
#define BPFIELDCLIENT_H

#include <QtCore/QMap>
#include <QtCore/QVector>

#include "abstractparameterbase.h"

class ParamInfo;
struct FieldElement;

/**
 * @brief The receiving side of a field parameter: a two-dimensional array of cells built
 * from a description, into which received records are read. Value type 4.
 *
 * Ownership. The field owns its cells (FieldElement), and each cell holds its parameter
 * through a QSharedPointer, so param() hands out a strong reference that may outlive the
 * field. The array holds the filled cells only, so its memory follows the number of cells
 * in the description, not rows times columns, whatever sizes a received description
 * announces.
 *
 * Building. The identifier and both sizes come from the description. Each entry of its
 * `elements` fills one cell, in the description's order: an entry outside the array (or
 * at a negative position) is skipped silently, and of two entries for one cell the first
 * wins. A cell whose description has a type that no cell can have still exists, with its
 * description and a null parameter; setState(), getState(), dropFlag() and elementType()
 * pass over such a cell, and a record for it is refused.
 *
 * State. setState() passes the state to the parameter of every cell and raises the
 * field's flag every time; the field's own stored state is not assigned. getState() is
 * the highest state of the cells' parameters, and at least 2, so the state of a received
 * record head is never seen through it. dropFlag() lowers the field's flag and the flag
 * of every cell's parameter.
 *
 * Payload read: a 32-bit count, then for each cell record its row and column as 32-bit
 * integers and the parameter record of that cell. A count above rows times columns
 * (computed in 32 bits) returns false before any cell is read. A count of 0 lowers the
 * field's flag again, since a record without cells is no change. A position outside the
 * array, an empty cell, a cell without a parameter or a record the cell's parameter
 * refuses returns false; cells read before that keep what they read, and the stream
 * stays where it stopped. Writing sends nothing: the payload of a write is empty.
 */
class TELORPARAMS5_EXPORT BPFieldClient : public AbstractParameterBase
{
public:
    /** Builds the array and its cells from @p description; see the class description. */
    explicit BPFieldClient(const ParamInfo &description);
    /** Deletes every cell. */
    ~BPFieldClient() override;

    /** Passes @p newState to the parameter of every cell, then raises every flag of the field. */
    void setState(unsigned int newState) override;
    /** The highest state of the cells' parameters, and at least 2. */
    unsigned int getState() const override;
    /** The parameter of the cell at @p row, @p column; null outside the array or for an empty cell. */
    QSharedPointer<AbstractParameterBase> param(unsigned int row, unsigned int column) const override;
    /**
     * The description of the cell at @p row, @p column, owned by the cell; null outside
     * the array or for an empty cell.
     */
    const ParamInfo *info(unsigned int row, unsigned int column) const override;
    /** 4. */
    int valueType() const override;
    /**
     * The value type of the parameter of the first filled cell that has a parameter, row
     * by row and by rising column; 0 if there is none.
     */
    int elementType() const override;
    /** Lowers the field's flag and calls dropFlag() of every cell's parameter. */
    void dropFlag() override;
    /** Writes nothing. */
    void writePrivate(QContainerPacket &packet, bool full) const override;
    /** Reads the cell records; see the class description. */
    bool readPrivate(QContainerPacket &packet) override;

protected:
    /** The filled cells by position (row in the high 32 bits, column in the low ones), owned. */
    QMap<quint64, FieldElement *> cells;
    /** The number of rows, taken from the description at construction. */
    unsigned int rows;
    /** The number of columns, taken from the description at construction. */
    unsigned int columns;

private:
    FieldElement *cellAt(quint32 row, quint32 column) const;

    /**
     * The cells again, row by row, for a quick lookup by position; built only when the
     * array is at most a few times larger than the number of its cells, so that its size
     * follows the description, not the announced sizes. Empty otherwise.
     */
    QVector<FieldElement *> m_cellIndex;
};

#endif // BPFIELDCLIENT_H
