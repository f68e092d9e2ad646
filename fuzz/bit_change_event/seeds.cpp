// Writes bit-change events in their message form, each followed by a status word
// description, built with the library's own writers, as the seed corpus of the bit
// change fuzz target: bits flipping, fault combinations beginning, ending and replacing
// each other, and an old word without data.

#include "describe.h"
#include "eventstruct.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

namespace {

ParamInfo statusWord()
{
    ParamInfo info = describe::described(42, QStringLiteral("PUMP.STATUS"), 2);
    info.bitField.enabled = 1;
    for (int bit : {0, 1, 2, 5}) {
        ParamBitField::ParamBitAttributes attributes;
        attributes.name.insert(QStringLiteral("en"), QStringLiteral("Bit %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState state;
        state.state = bit == 2 ? 16 : 4096;
        state.text.insert(QStringLiteral("en"), QStringLiteral("Set"));
        attributes.states.insert(bit == 5 ? 0 : 1, state);
        info.bitField.attributes.insert(bit, attributes);
    }
    for (int key : {0x30, 0x40}) {
        ParamBitCombination combination;
        combination.sign = QStringLiteral("==");
        combination.state = 4096;
        combination.shortText.insert(QStringLiteral("en"), QStringLiteral("Fault %1").arg(key));
        info.bitField.combinations.insert(key, combination);
    }
    return info;
}

QByteArray seed(unsigned int oldWord, unsigned int newWord, int oldState, int newState)
{
    EventStruct event;
    event.typeId = 9;
    event.eventMessage = 1;
    event.firstId = 42;
    event.secondId = 1;
    event.dateTime = QDateTime(QDate(2026, 5, 1), QTime(12, 0), Qt::UTC);
    event.parameters.insert(QStringLiteral("#old_bit_value"), oldWord);
    event.parameters.insert(QStringLiteral("#new_bit_value"), newWord);
    event.parameters.insert(QStringLiteral("#old_bit_state"), oldState);
    event.parameters.insert(QStringLiteral("#new_bit_state"), newState);
    QByteArray bytes;
    QContainerPacket out(&bytes);
    event.writePrivate(out);
    statusWord().write(out);
    return bytes;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);
    seeds.add(QStringLiteral("bit-flip"), seed(0x21, 0x23, 8, 8));
    seeds.add(QStringLiteral("combination-begins"), seed(0x05, 0x40, 8, 4096));
    seeds.add(QStringLiteral("combination-ends"), seed(0x30, 0x05, 4096, 8));
    seeds.add(QStringLiteral("combination-replaced"), seed(0x30, 0x40, 4096, 4096));
    seeds.add(QStringLiteral("old-without-data"), seed(0x01, 0x03, 2, 8));
    seeds.add(QStringLiteral("new-without-data"), seed(0x00, 0x04, 8, 2));
    return seeds.finish();
}
