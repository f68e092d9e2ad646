#include "parambitfield.h"

#include "descriptionwire_p.h"
#include "qcontainerpacket.h"

namespace {

// The keyed tables of a bit field (states of a bit, bits of a word, combinations of a
// word) share one wire form: a 32-bit count, then each key as a 32-bit integer followed by
// its entry's own form.

template<typename Entry>
void writeKeyed(QContainerPacket &packet, const QHash<int, Entry> &table)
{
    const QList<int> keys = table.keys();
    packet << qint32(keys.size());
    for (int key : keys) {
        packet << qint32(key);
        table.value(key).write(packet);
    }
}

template<typename Entry>
void readKeyed(QContainerPacket &packet, QHash<int, Entry> &table)
{
    // The bits of a status word, and their states, repeat across the words of a plant.
    DescriptionWire::readSharedTable(packet, table, [&]() {
        qint32 count = 0;
        packet >> count;
        DescriptionWire::readEntries(packet, count, [&]() {
            qint32 key = 0;
            Entry entry;
            packet >> key;
            entry.read(packet);
            table.insert(key, entry);
            return true;
        });
    });
}

} // namespace

void ParamBitField::ParamBitAttributes::ParamBitState::write(QContainerPacket &packet) const
{
    packet << qint32(state) << static_cast<const QHash<QString, QString> &>(text);
}

bool ParamBitField::ParamBitAttributes::ParamBitState::read(QContainerPacket &packet)
{
    qint32 wireState = 0;
    packet >> wireState;
    DescriptionWire::readTextTable(packet, text);
    state = wireState;
    return true;
}

void ParamBitField::ParamBitAttributes::write(QContainerPacket &packet) const
{
    packet << static_cast<const QHash<QString, QString> &>(name);
    writeKeyed(packet, states);
}

bool ParamBitField::ParamBitAttributes::read(QContainerPacket &packet)
{
    DescriptionWire::readTextTable(packet, name);
    readKeyed(packet, states);
    return true;
}

ParamBitField::ParamBitField()
    : enabled(0)
    , reserved(0)
{
}

void ParamBitField::write(QContainerPacket &packet) const
{
    packet << enabled << reserved;
    if (enabled == 0)
        return;

    writeKeyed(packet, attributes);
    writeKeyed(packet, combinations);
}

bool ParamBitField::read(QContainerPacket &packet)
{
    packet >> enabled >> reserved;
    const quint8 flag = quint8(enabled);
    if (flag == 0)
        return true;
    if (flag != 1)
        return false;

    readKeyed(packet, attributes);
    readKeyed(packet, combinations);
    return true;
}
