#include "bpvariant.h"

#include "getdtstring.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

#include <QtCore/QDateTime>

namespace {

constexpr int StateGood = 8;
constexpr int ValueTypeVariant = 5;

} // namespace

BPVariant::BPVariant()
    : spare(0)
    , newValuePending(true)
{
}

BPVariant::BPVariant(unsigned int idParameter)
    : AbstractParameterBase(idParameter)
    , spare(0)
    // Same start as the default constructor: a field builds its elements this way, and a
    // first state assignment should be reported whichever constructor made the object.
    , newValuePending(true)
{
}

BPVariant::~BPVariant() = default;

bool BPVariant::changed() const
{
    return changedFlag || limitsStore.changed();
}

QString BPVariant::stringValue(int precision, char format) const
{
    return stringValue(value, precision, format);
}

double BPVariant::floatValue() const
{
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? number : 0.0;
}

QVariant BPVariant::variantValue() const
{
    return value;
}

int BPVariant::valueType() const
{
    return ValueTypeVariant;
}

void BPVariant::dropFlag()
{
    limitsStore.dropFlag();
    changedFlag = false;
}

void BPVariant::writePrivate(QContainerPacket &packet, bool full) const
{
    // A reader that has seen nothing yet gets both limit blocks.
    if (full)
        limitsStore.upFlag();
    packet << value;
    limitsStore.write(packet);
}

bool BPVariant::readPrivate(QContainerPacket &packet)
{
    TelorWire::readVariant(packet, value);
    // A time in a zone unknown here could not be written again.
    TelorWire::forgetUnknownZones(value);
    // The limits' own result carries no verdict on the record.
    limitsStore.read(packet);
    return true;
}

void BPVariant::setState(int newState)
{
    unsigned int target = static_cast<unsigned int>(newState);
    if (newState == StateGood && limitsStore.hasLimits()) {
        if (!newValuePending && state == StateGood) {
            // Neither value nor state can have moved: only the refresh remains.
            if (!changedFlag)
                refreshHandles();
            return;
        }
        bool ok = false;
        const double number = value.toDouble(&ok);
        if (ok) {
            const int verdict = limitsStore.checkValue(number);
            target = static_cast<unsigned int>(verdict == -1 ? StateGood : verdict);
        }
    }
    assignState(target);
}

QVariant BPVariant::getValue() const
{
    return value;
}

void BPVariant::setValue(const QVariant &newValue)
{
    if (newValue == value)
        return;
    newValuePending = true;
    value = newValue;
}

QString BPVariant::stringValue(const QVariant &value, int precision, char format)
{
    if (!value.isValid())
        return QString();
    if (value.type() == QVariant::String)
        return value.toString();
    if (value.type() == QVariant::DateTime)
        return getDTstring(value.toDateTime());
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok)
        return QString();
    return QString::number(number, format, precision);
}

void BPVariant::setStateOnly(int newState)
{
    assignState(static_cast<unsigned int>(newState));
}

CalcLimit &BPVariant::limitsPrivate()
{
    return limitsStore;
}

void BPVariant::assignState(unsigned int newState)
{
    // Unlike the base's setState(unsigned int): a pending value is a change even when the
    // state stays, the state is stored before the handles hear of it, and no refresh is
    // sent while the parameter's own flag is still up.
    if (newState != state || newValuePending) {
        state = newState;
        newValuePending = false;
        upFlag();
        return;
    }
    if (changedFlag)
        return;
    refreshHandles();
}
