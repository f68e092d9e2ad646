#include "paramsetpoints.h"

#include "qcontainerpacket.h"

#include <QtCore/QXmlStreamAttributes>

namespace {

double *fromAttribute(const QXmlStreamAttributes &attributes, const char *name)
{
    const QStringRef text = attributes.value(QLatin1String(name));
    if (text.isNull())
        return nullptr;
    return new double(text.toString().toDouble());
}

// Replaces what *target points to by a copy of *source (or by nothing). The copy is made
// before the old number is freed, so assigning an object to itself keeps its values.
void assignCopy(double *&target, const double *source)
{
    double *copy = source ? new double(*source) : nullptr;
    delete target;
    target = copy;
}

void setValue(double *&target, double value)
{
    if (!target)
        target = new double(value);
    else
        *target = value;
}

double valueOf(const double *threshold, bool *ok)
{
    if (ok)
        *ok = threshold != nullptr;
    return threshold ? *threshold : 0.0;
}

void writeBlock(QContainerPacket &packet, const double *threshold)
{
    packet << qint8(threshold ? 1 : 0);
    if (threshold)
        packet << *threshold;
}

// A block with a flag that is not 0 gives a new number; the number that the threshold
// held before is freed (a caller sees only that the threshold now holds the new value).
void readBlock(QContainerPacket &packet, double *&threshold)
{
    qint8 flag = 0;
    packet >> flag;
    if (flag == 0)
        return;
    double value = 0.0;
    packet >> value;
    delete threshold;
    threshold = new double(value);
}

} // namespace

ParamSetpoints::ParamSetpoints()
    : lowEmergency(nullptr)
    , lowWarning(nullptr)
    , upWarning(nullptr)
    , upEmergency(nullptr)
{
}

ParamSetpoints::ParamSetpoints(const QXmlStreamAttributes &attributes)
    : lowEmergency(fromAttribute(attributes, "les"))
    , lowWarning(fromAttribute(attributes, "lws"))
    , upWarning(fromAttribute(attributes, "uws"))
    , upEmergency(fromAttribute(attributes, "ues"))
{
}

ParamSetpoints::ParamSetpoints(const ParamSetpoints &other)
    : ParamSetpoints()
{
    *this = other;
}

ParamSetpoints &ParamSetpoints::operator=(const ParamSetpoints &other)
{
    assignCopy(lowEmergency, other.lowEmergency);
    assignCopy(lowWarning, other.lowWarning);
    assignCopy(upWarning, other.upWarning);
    assignCopy(upEmergency, other.upEmergency);
    return *this;
}

ParamSetpoints::~ParamSetpoints()
{
    delete lowEmergency;
    delete lowWarning;
    delete upWarning;
    delete upEmergency;
}

void ParamSetpoints::write(QContainerPacket &packet) const
{
    writeBlock(packet, lowEmergency);
    writeBlock(packet, lowWarning);
    writeBlock(packet, upWarning);
    writeBlock(packet, upEmergency);
}

bool ParamSetpoints::read(QContainerPacket &packet)
{
    readBlock(packet, lowEmergency);
    readBlock(packet, lowWarning);
    readBlock(packet, upWarning);
    readBlock(packet, upEmergency);
    return true;
}

double ParamSetpoints::getLowEmergencySetpoint(bool *ok) const
{
    return valueOf(lowEmergency, ok);
}

double ParamSetpoints::getLowWarningSetpoint(bool *ok) const
{
    return valueOf(lowWarning, ok);
}

double ParamSetpoints::getUpWarningSetpoint(bool *ok) const
{
    return valueOf(upWarning, ok);
}

double ParamSetpoints::getUpEmergencySetpoint(bool *ok) const
{
    return valueOf(upEmergency, ok);
}

void ParamSetpoints::setLowEmergencySetpoint(double value)
{
    setValue(lowEmergency, value);
}

void ParamSetpoints::setLowWarningSetpoint(double value)
{
    setValue(lowWarning, value);
}

void ParamSetpoints::setUpWarningSetpoint(double value)
{
    setValue(upWarning, value);
}

void ParamSetpoints::setUpEmergencySetpoint(double value)
{
    setValue(upEmergency, value);
}

bool ParamSetpoints::enabled() const
{
    return lowEmergency || lowWarning || upWarning || upEmergency;
}
