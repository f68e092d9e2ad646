#include "bpfieldclient.h"

#include "fieldelement.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <limits>

namespace {

constexpr int ValueTypeField = 4;
constexpr unsigned int StateNoData = 2;
// The position index may hold this many entries per cell, plus a few for tiny fields.
constexpr quint64 IndexEntriesPerCell = 4;
constexpr quint64 IndexSlack = 64;

quint64 cellKey(quint32 row, quint32 column)
{
    return (quint64(row) << 32) | column;
}

} // namespace

BPFieldClient::BPFieldClient(const ParamInfo &description)
    : AbstractParameterBase(description.id)
    , rows(static_cast<unsigned int>(description.rows))
    , columns(static_cast<unsigned int>(description.columns))
{
    const int signedRows = static_cast<int>(rows);
    const int signedColumns = static_cast<int>(columns);
    for (const ParamFieldElementInfo &entry : description.elements) {
        // The sizes and positions are compared as signed numbers; a negative position is
        // below every size, and is skipped here as lying outside the array.
        if (entry.row < 0 || entry.column < 0 || entry.row >= signedRows || entry.column >= signedColumns)
            continue;
        const quint64 key = cellKey(quint32(entry.row), quint32(entry.column));
        if (cells.contains(key))
            continue;
        cells.insert(key, new FieldElement(entry.info));
    }

    const quint64 positions = quint64(rows) * columns;
    if (signedRows > 0 && signedColumns > 0 && positions <= quint64(std::numeric_limits<int>::max())
        && positions <= IndexEntriesPerCell * quint64(cells.size()) + IndexSlack) {
        m_cellIndex.fill(nullptr, int(positions));
        for (auto it = cells.constBegin(); it != cells.constEnd(); ++it)
            m_cellIndex[int((it.key() >> 32) * columns + (it.key() & 0xFFFFFFFFu))] = it.value();
    }
}

BPFieldClient::~BPFieldClient()
{
    qDeleteAll(cells);
}

void BPFieldClient::setState(unsigned int newState)
{
    for (FieldElement *cell : qAsConst(cells)) {
        if (cell->param)
            cell->param->setState(newState);
    }
    upFlag();
}

unsigned int BPFieldClient::getState() const
{
    unsigned int highest = StateNoData;
    for (const FieldElement *cell : cells) {
        if (cell->param)
            highest = qMax(highest, cell->param->getState());
    }
    return highest;
}

QSharedPointer<AbstractParameterBase> BPFieldClient::param(unsigned int row, unsigned int column) const
{
    if (row >= rows || column >= columns)
        return QSharedPointer<AbstractParameterBase>();
    const FieldElement *cell = cellAt(row, column);
    return cell ? cell->param : QSharedPointer<AbstractParameterBase>();
}

const ParamInfo *BPFieldClient::info(unsigned int row, unsigned int column) const
{
    if (row >= rows || column >= columns)
        return nullptr;
    const FieldElement *cell = cellAt(row, column);
    return cell ? &cell->info : nullptr;
}

int BPFieldClient::valueType() const
{
    return ValueTypeField;
}

int BPFieldClient::elementType() const
{
    // The map is ordered by row and then by column.
    for (const FieldElement *cell : cells) {
        if (cell->param)
            return cell->param->valueType();
    }
    return 0;
}

void BPFieldClient::dropFlag()
{
    changedFlag = false;
    for (FieldElement *cell : qAsConst(cells)) {
        if (cell->param)
            cell->param->dropFlag();
    }
}

void BPFieldClient::writePrivate(QContainerPacket &, bool) const
{
}

bool BPFieldClient::readPrivate(QContainerPacket &packet)
{
    qint32 announced = 0;
    packet >> announced;
    const quint32 count = static_cast<quint32>(announced);
    // The capacity is computed in 32 bits, as the sender computes it.
    if (count > rows * columns)
        return false;
    if (count == 0) {
        // read() has just raised the flag, and a record without cells is no change.
        changedFlag = false;
        return true;
    }

    // Once the bytes are used up, every further cell record reads as zeros and has the
    // same effect as the one before: when two such records in a row start from the same
    // stream status, the rest of a huge count would change nothing more, and the loop
    // ends with the result that reading them all would give.
    bool exhaustedRecordRead = false;
    QDataStream::Status exhaustedStatus = QDataStream::Ok;
    for (quint32 i = 0; i < count; ++i) {
        if (packet.bytesLeft() <= 0) {
            if (exhaustedRecordRead && packet.status() == exhaustedStatus)
                return true;
            exhaustedRecordRead = true;
            exhaustedStatus = packet.status();
        }
        qint32 row = 0;
        qint32 column = 0;
        packet >> row >> column;
        if (quint32(row) >= rows || quint32(column) >= columns)
            return false;
        FieldElement *cell = cellAt(quint32(row), quint32(column));
        if (!cell || !cell->param)
            return false;
        if (!cell->param->read(packet))
            return false;
    }
    return true;
}

FieldElement *BPFieldClient::cellAt(quint32 row, quint32 column) const
{
    // The caller has checked the position against the sizes.
    if (!m_cellIndex.isEmpty())
        return m_cellIndex.at(int(row * columns + column));
    return cells.value(cellKey(row, column));
}
