#include "parambitfield.h"

#include "descriptionwire_p.h"
#include "qcontainerpacket.h"

void ParamBitField::ParamBitAttributes::ParamBitState::write(QContainerPacket &packet) const
{
    packet << qint32(state) << static_cast<const QHash<QString, QString> &>(text);
}

bool ParamBitField::ParamBitAttributes::ParamBitState::read(QContainerPacket &packet)
{
    qint32 wireState = 0;
    packet >> wireState >> static_cast<QHash<QString, QString> &>(text);
    state = wireState;
    return true;
}

void ParamBitField::ParamBitAttributes::write(QContainerPacket &packet) const
{
    packet << static_cast<const QHash<QString, QString> &>(name);
    const QList<int> keys = states.keys();
    packet << qint32(keys.size());
    for (int key : keys) {
        packet << qint32(key);
        states.value(key).write(packet);
    }
}

bool ParamBitField::ParamBitAttributes::read(QContainerPacket &packet)
{
    qint32 count = 0;
    packet >> static_cast<QHash<QString, QString> &>(name) >> count;
    DescriptionWire::readEntries(packet, count, [&]() {
        qint32 key = 0;
        ParamBitState bitState;
        packet >> key;
        bitState.read(packet);
        states.insert(key, bitState);
        return true;
    });
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

    const QList<int> bits = attributes.keys();
    packet << qint32(bits.size());
    for (int bit : bits) {
        packet << qint32(bit);
        attributes.value(bit).write(packet);
    }

    const QList<int> words = combinations.keys();
    packet << qint32(words.size());
    for (int word : words) {
        packet << qint32(word);
        combinations.value(word).write(packet);
    }
}

bool ParamBitField::read(QContainerPacket &packet)
{
    packet >> enabled >> reserved;
    const quint8 flag = quint8(enabled);
    if (flag == 0)
        return true;
    if (flag != 1)
        return false;

    qint32 count = 0;
    packet >> count;
    DescriptionWire::readEntries(packet, count, [&]() {
        qint32 bit = 0;
        ParamBitAttributes bitAttributes;
        packet >> bit;
        bitAttributes.read(packet);
        attributes.insert(bit, bitAttributes);
        return true;
    });

    count = 0;
    packet >> count;
    DescriptionWire::readEntries(packet, count, [&]() {
        qint32 word = 0;
        ParamBitCombination combination;
        packet >> word;
        combination.read(packet);
        combinations.insert(word, combination);
        return true;
    });
    return true;
}
