#include "calclimit.h"

#include <QtCore/QDataStream>

namespace {

constexpr int InsideLimits = 8;
constexpr int BelowLowWarning = 64;
constexpr int AboveHiWarning = 128;
constexpr int BelowLowEmergency = 256;
constexpr int AboveHiEmergency = 512;
constexpr int BelowLowPossible = 1024;
constexpr int AboveHiPossible = 2048;

} // namespace

int BaseLimits::checkValue(double value) const
{
    if (lowPossibleSet && lowPossible > value)
        return BelowLowPossible;
    if (hiPossibleSet && value > hiPossible)
        return AboveHiPossible;
    return InsideLimits;
}

void BaseLimits::write(QDataStream &stream) const
{
    stream << lowPossible << hiPossible << lowPossibleSet << hiPossibleSet;
}

bool BaseLimits::read(QDataStream &stream)
{
    stream >> lowPossible >> hiPossible >> lowPossibleSet >> hiPossibleSet;
    return true;
}

int FullLimits::checkValue(double value) const
{
    if (lowEmergencySet && lowEmergency > value)
        return BelowLowEmergency;
    if (lowWarningSet && lowWarning > value)
        return BelowLowWarning;
    if (hiEmergencySet && value > hiEmergency)
        return AboveHiEmergency;
    if (hiWarningSet && value > hiWarning)
        return AboveHiWarning;
    return InsideLimits;
}

void FullLimits::write(QDataStream &stream) const
{
    stream << lowEmergency << lowWarning << hiWarning << hiEmergency
           << lowEmergencySet << lowWarningSet << hiWarningSet << hiEmergencySet;
}

bool FullLimits::read(QDataStream &stream)
{
    stream >> lowEmergency >> lowWarning >> hiWarning >> hiEmergency
           >> lowEmergencySet >> lowWarningSet >> hiWarningSet >> hiEmergencySet;
    return true;
}

CalcLimit::CalcLimit() = default;

CalcLimit::CalcLimit(const CalcLimit &other)
    : baseLimits(other.baseLimits ? new BaseLimits(*other.baseLimits) : nullptr)
    , fullLimits(other.fullLimits ? new FullLimits(*other.fullLimits) : nullptr)
    , limitsChanged(other.limitsChanged)
{
}

CalcLimit &CalcLimit::operator=(const CalcLimit &other)
{
    if (this != &other) {
        baseLimits.reset(other.baseLimits ? new BaseLimits(*other.baseLimits) : nullptr);
        fullLimits.reset(other.fullLimits ? new FullLimits(*other.fullLimits) : nullptr);
        limitsChanged = other.limitsChanged;
    }
    return *this;
}

CalcLimit::~CalcLimit() = default;

BaseLimits &CalcLimit::base()
{
    if (!baseLimits)
        baseLimits.reset(new BaseLimits);
    return *baseLimits;
}

FullLimits &CalcLimit::full()
{
    if (!fullLimits)
        fullLimits.reset(new FullLimits);
    return *fullLimits;
}

void CalcLimit::assign(bool &storedSet, double &storedValue, bool set, double value)
{
    // "!(a == b)" rather than "a != b" spells out that a NaN on either side differs.
    if (storedSet != set || !(storedValue == value))
        limitsChanged = true;
    storedSet = set;
    storedValue = value;
}

void CalcLimit::setLowPossibleSetpoint(bool set, double value)
{
    BaseLimits &b = base();
    assign(b.lowPossibleSet, b.lowPossible, set, value);
}

void CalcLimit::setHiPossibleSetpoint(bool set, double value)
{
    BaseLimits &b = base();
    assign(b.hiPossibleSet, b.hiPossible, set, value);
}

void CalcLimit::setLowEmergencySetpoint(bool set, double value)
{
    FullLimits &f = full();
    assign(f.lowEmergencySet, f.lowEmergency, set, value);
}

void CalcLimit::setLowWarningSetpoint(bool set, double value)
{
    FullLimits &f = full();
    assign(f.lowWarningSet, f.lowWarning, set, value);
}

void CalcLimit::setHiWarningSetpoint(bool set, double value)
{
    FullLimits &f = full();
    assign(f.hiWarningSet, f.hiWarning, set, value);
}

void CalcLimit::setHiEmergencySetpoint(bool set, double value)
{
    FullLimits &f = full();
    assign(f.hiEmergencySet, f.hiEmergency, set, value);
}

namespace {

template<typename Block>
double getSetpoint(const std::unique_ptr<Block> &block, bool Block::*flag, double Block::*value, bool &set)
{
    if (!block) {
        set = false;
        return 0.0;
    }
    set = (*block).*flag;
    return (*block).*value;
}

} // namespace

double CalcLimit::lowPossibleSetpoint(bool &set) const
{
    return getSetpoint(baseLimits, &BaseLimits::lowPossibleSet, &BaseLimits::lowPossible, set);
}

double CalcLimit::hiPossibleSetpoint(bool &set) const
{
    return getSetpoint(baseLimits, &BaseLimits::hiPossibleSet, &BaseLimits::hiPossible, set);
}

double CalcLimit::lowEmergencySetpoint(bool &set) const
{
    return getSetpoint(fullLimits, &FullLimits::lowEmergencySet, &FullLimits::lowEmergency, set);
}

double CalcLimit::lowWarningSetpoint(bool &set) const
{
    return getSetpoint(fullLimits, &FullLimits::lowWarningSet, &FullLimits::lowWarning, set);
}

double CalcLimit::hiWarningSetpoint(bool &set) const
{
    return getSetpoint(fullLimits, &FullLimits::hiWarningSet, &FullLimits::hiWarning, set);
}

double CalcLimit::hiEmergencySetpoint(bool &set) const
{
    return getSetpoint(fullLimits, &FullLimits::hiEmergencySet, &FullLimits::hiEmergency, set);
}

int CalcLimit::checkValue(double value) const
{
    // Without the possible-limits block the value is inside, whatever the warning and
    // emergency setpoints say.
    if (!baseLimits)
        return InsideLimits;
    const int possible = baseLimits->checkValue(value);
    if (possible != InsideLimits)
        return possible;
    if (!fullLimits)
        return InsideLimits;
    return fullLimits->checkValue(value);
}

bool CalcLimit::hasLimits() const
{
    if (baseLimits && (baseLimits->lowPossibleSet || baseLimits->hiPossibleSet))
        return true;
    return fullLimits
        && (fullLimits->lowEmergencySet || fullLimits->lowWarningSet || fullLimits->hiWarningSet
            || fullLimits->hiEmergencySet);
}

bool CalcLimit::isValid() const
{
    return true;
}

bool CalcLimit::changed() const
{
    return limitsChanged;
}

void CalcLimit::upFlag() const
{
    limitsChanged = true;
}

void CalcLimit::dropFlag()
{
    limitsChanged = false;
}

void CalcLimit::write(QDataStream &stream) const
{
    stream << static_cast<qint8>(limitsChanged ? 1 : 0);
    if (!limitsChanged)
        return;
    if (baseLimits) {
        stream << static_cast<qint8>(1);
        baseLimits->write(stream);
    } else {
        stream << static_cast<qint8>(0);
    }
    if (fullLimits) {
        stream << static_cast<qint8>(1);
        fullLimits->write(stream);
    } else {
        stream << static_cast<qint8>(0);
    }
}

bool CalcLimit::read(QDataStream &stream)
{
    qint8 marker = 0;
    stream >> marker;
    limitsChanged = marker != 0;
    if (!limitsChanged)
        return true;

    marker = 0;
    stream >> marker;
    if (marker != 0 && !base().read(stream))
        return false;

    marker = 0;
    stream >> marker;
    if (marker == 0)
        return true;
    return full().read(stream);
}
