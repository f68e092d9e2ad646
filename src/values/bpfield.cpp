#include "bpfield.h"

#include "parambasefieldptr.h"
#include "qcontainerpacket.h"

namespace {

constexpr int ValueTypeField = 4;

quint64 cellKey(unsigned int row, unsigned int column)
{
    return (quint64(row) << 32) | column;
}

} // namespace

BPField::BPField(unsigned int rowCount, unsigned int columnCount)
    : rows(rowCount)
    , columns(columnCount)
    , dropCount(0)
    , arrayExists(true)
{
}

BPField::BPField(unsigned int idParameter)
    : AbstractParameterBase(idParameter)
    , rows(0)
    , columns(0)
    , dropCount(0)
    , arrayExists(false)
{
}

BPField::~BPField()
{
    deleteCells();
}

int BPField::valueType() const
{
    return ValueTypeField;
}

void BPField::dropFlag()
{
    ++dropCount;
    // Every client drops once when it has taken the data; the cells are cleared when the
    // last of them has.
    if (static_cast<int>(dropCount) < relatedValues.size())
        return;
    const QList<ParamBaseFieldPtr *> handles = cells.values();
    for (ParamBaseFieldPtr *handle : handles)
        handle->dropFlag();
    dropCount = 0;
}

void BPField::writePrivate(QContainerPacket &packet, bool full) const
{
    const unsigned int countAt = packet.position();
    packet << qint32(0);
    qint32 count = 0;
    // The map is ordered by row and then by column, which is the order of the wire.
    for (auto it = cells.constBegin(); it != cells.constEnd(); ++it) {
        ParamBaseFieldPtr *handle = it.value();
        if (!full && !handle->changed())
            continue;
        packet << static_cast<qint32>(it.key() >> 32) << static_cast<qint32>(it.key() & 0xFFFFFFFFu);
        handle->write(packet);
        handle->dropFlag();
        ++count;
    }
    const unsigned int endAt = packet.position();
    packet.at(countAt);
    packet << count;
    packet.at(endAt);
}

bool BPField::readPrivate(QContainerPacket &)
{
    return false;
}

void BPField::setDim(unsigned int newRows, unsigned int newColumns)
{
    if (arrayExists && (newRows == rows || newColumns == columns))
        return;
    deleteCells();
    rows = newRows;
    columns = newColumns;
    arrayExists = true;
}

bool BPField::setElement(unsigned int row, unsigned int column, AbstractParameterBase *element)
{
    if (row >= rows || column >= columns || !element)
        return false;
    const quint64 key = cellKey(row, column);
    if (cells.contains(key))
        return false;
    cells.insert(key, new ParamBaseFieldPtr(this, element));
    return true;
}

void BPField::writeField(QContainerPacket &packet) const
{
    write(packet, false);
}

void BPField::deleteCells()
{
    // Each handle unregisters from its element as it goes.
    qDeleteAll(cells);
    cells.clear();
}
