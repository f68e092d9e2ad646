#include "azcoord.h"

#include "rawrecord_p.h"
#include "telorstream.h"


AZCoord::AZCoord()
    : first(0), second(0)
{
}

AZCoord::AZCoord(const AZCoord &other) = default;

AZCoord &AZCoord::operator=(const AZCoord &other) = default;

AZCoord::~AZCoord() = default;

int AZCoord::size() const
{
    return 2;
}

void AZCoord::writeBuffer(char *&buffer, TELORDataStream &stream) const
{
    Q_UNUSED(stream)
    TelorRaw::put(buffer, first);
    TelorRaw::put(buffer, second);
}

void AZCoord::readBuffer(char *&buffer, TELORDataStream &stream)
{
    Q_UNUSED(stream)
    TelorRaw::take(buffer, first);
    TelorRaw::take(buffer, second);
}
