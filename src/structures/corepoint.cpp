#include "corepoint.h"

CorePoint::~CorePoint() = default;

bool CorePoint::operator<(const CorePoint &other) const
{
    if (y() > other.y())
        return true;
    if (y() < other.y())
        return false;
    return x() < other.x();
}
