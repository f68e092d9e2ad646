// Writes valid status-word descriptions, built with the library's own writer, as the
// seed corpus of the bit field fuzz target. Each seed starts with a status word of four
// bytes.

#include "parambitfield.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

#include <QtCore/QtEndian>

namespace {

QByteArray seed(quint32 word, const ParamBitField &field)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(word, bytes.data());
    QContainerPacket out(&bytes);
    field.write(out);
    return bytes;
}

ParamBitField::ParamBitAttributes bit(int number, int stateWhenSet)
{
    ParamBitField::ParamBitAttributes attributes;
    attributes.name.insert(QStringLiteral("en"), QStringLiteral("Bit %1").arg(number));
    attributes.name.insert(QStringLiteral("ru"), QStringLiteral("Бит %1").arg(number));
    ParamBitField::ParamBitAttributes::ParamBitState on;
    on.state = stateWhenSet;
    on.text.insert(QStringLiteral("en"), QStringLiteral("On"));
    ParamBitField::ParamBitAttributes::ParamBitState off;
    off.state = 8;
    off.text.insert(QStringLiteral("ru"), QStringLiteral("Выкл"));
    attributes.states.insert(1, on);
    attributes.states.insert(0, off);
    return attributes;
}

ParamBitCombination fault(const char *name)
{
    ParamBitCombination combination;
    combination.sign = QStringLiteral("==");
    combination.state = 4096;
    combination.shortText.insert(QStringLiteral("en"), QString::fromLatin1(name));
    return combination;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);
    seeds.add(QStringLiteral("disabled"), seed(0, ParamBitField()));

    ParamBitField empty;
    empty.enabled = 1;
    seeds.add(QStringLiteral("empty-tables"), seed(1, empty));

    ParamBitField word16;
    word16.enabled = 1;
    for (int n = 0; n < 16; ++n)
        word16.attributes.insert(n, bit(n, n % 2 ? 4096 : 16));
    word16.combinations.insert(0x10, fault("Trip"));
    word16.combinations.insert(0x3, fault("Double fault"));
    seeds.add(QStringLiteral("word16-trip"), seed(0x10, word16));
    seeds.add(QStringLiteral("word16-bits"), seed(0x8421, word16));

    ParamBitField wide;
    wide.enabled = 1;
    wide.reserved = 5;
    for (int n : {0, 31, 32, 63})
        wide.attributes.insert(n, bit(n, 4096));
    wide.combinations.insert(-1, fault("All"));
    seeds.add(QStringLiteral("wide"), seed(0xFFFFFFFFu, wide));
    return seeds.finish();
}
