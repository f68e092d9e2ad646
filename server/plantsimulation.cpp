#include "plantsimulation.h"

#include "bpdiscrete.h"
#include "bpdouble.h"
#include "bpfield.h"
#include "bplist.h"
#include "bpmap.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "calclimit.h"
#include "qcontainerpacket.h"

#include <QtCore/QDateTime>
#include <QtCore/QStringList>

#include <cmath>

namespace {

constexpr unsigned int StateNoData = 2;
constexpr unsigned int StateGood = 8;
constexpr unsigned int StateFault = 4096;

/** A discrete parameter that the server can send: the full write is the plain payload. */
class PlantDiscrete : public BPDiscrete
{
public:
    using BPDiscrete::BPDiscrete;
    void writePrivate(QContainerPacket &packet, bool) const override { BPDiscrete::writePrivate(packet); }
    using BPDiscrete::writePrivate;
};

/** Puts the limits of a description into a CalcLimit; the possible block always exists. */
void configureLimits(CalcLimit &limits, const ParamInfo &info)
{
    limits.setLowPossibleSetpoint(info.limits.enabled != 0, info.limits.lo);
    limits.setHiPossibleSetpoint(info.limits.enabled != 0, info.limits.hi);
    bool ok = false;
    double v = info.setpoints.getLowEmergencySetpoint(&ok);
    if (ok)
        limits.setLowEmergencySetpoint(true, v);
    v = info.setpoints.getLowWarningSetpoint(&ok);
    if (ok)
        limits.setLowWarningSetpoint(true, v);
    v = info.setpoints.getUpWarningSetpoint(&ok);
    if (ok)
        limits.setHiWarningSetpoint(true, v);
    v = info.setpoints.getUpEmergencySetpoint(&ok);
    if (ok)
        limits.setHiEmergencySetpoint(true, v);
}

double rounded(double value, int precision)
{
    const double scale = std::pow(10.0, precision);
    return std::round(value * scale) / scale;
}

bool isNumber(const QVariant &v)
{
    return v.type() == QVariant::Double || v.type() == QVariant::UInt || v.type() == QVariant::Int;
}

/** A text item of a list or map: a number where it reads as one, the text otherwise. */
QVariant itemFromText(const QString &text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok ? QVariant(number) : QVariant(text);
}

bool judgedState(unsigned int state)
{
    switch (state) {
    case 8: case 64: case 128: case 256: case 512: case 1024: case 2048:
        return true;
    default:
        return false;
    }
}

int alarmMessage(unsigned int state)
{
    switch (state) {
    case 64: return 2;
    case 128: return 3;
    case 256: return 4;
    case 512: return 5;
    case 1024: return 6;
    case 2048: return 7;
    default: return 1;
    }
}

} // namespace

struct PlantSimulation::Cell
{
    ParamInfo info;
    QSharedPointer<BPVariant> object;
    QVariant value;
    unsigned int state = StateNoData;
};

struct PlantSimulation::Runtime
{
    const PlantParameter *def = nullptr;
    PlantDriver driver;
    CalcLimit judge;
    QVariant value;
    unsigned int state = StateNoData;
    // The cells go after the field: the field's handles reach the cells when it is destroyed.
    QList<Cell> cells;
    QSharedPointer<AbstractParameterBase> object;

    ~Runtime() { object.reset(); }
};

PlantSimulation::PlantSimulation(const Plant &plant, quint64 seed)
    : m_plant(plant)
{
    for (const PlantParameter &p : plant.parameters) {
        std::unique_ptr<Runtime> r(new Runtime);
        r->def = &p;
        r->driver = p.driver;
        r->driver.reset(seed * 0x9E3779B97F4A7C15ULL + p.info.id);
        configureLimits(r->judge, p.info);
        const unsigned int id = p.info.id;
        switch (p.kind) {
        case PlantParameter::Double:
            r->object.reset(new BPDouble(id));
            break;
        case PlantParameter::Discrete:
        case PlantParameter::Status:
            r->object.reset(new PlantDiscrete(id));
            break;
        case PlantParameter::String:
            r->object.reset(new BPString(int(id)));
            break;
        case PlantParameter::Variant: {
            auto *variant = new BPVariant(id);
            configureLimits(variant->limitsPrivate(), p.info);
            r->object.reset(variant);
            break;
        }
        case PlantParameter::List:
            r->object.reset(new BPList(id));
            break;
        case PlantParameter::Map:
            r->object.reset(new BPMap(id));
            break;
        case PlantParameter::Field: {
            auto *field = new BPField(id);
            field->setDim(unsigned(p.info.rows), unsigned(p.info.columns));
            for (const ParamFieldElementInfo &element : p.info.elements) {
                Cell cell;
                cell.info = element.info;
                cell.object.reset(new BPVariant(element.info.id));
                configureLimits(cell.object->limitsPrivate(), element.info);
                field->setElement(unsigned(element.row), unsigned(element.column), cell.object.data());
                m_objects.insert(element.info.id, cell.object);
                r->cells.append(cell);
            }
            r->object.reset(field);
            break;
        }
        }
        m_objects.insert(id, r->object);
        m_runtime.push_back(std::move(r));
    }
}

PlantSimulation::~PlantSimulation()
{
    m_objects.clear();
    m_runtime.clear();
}

QSharedPointer<AbstractParameterBase> PlantSimulation::object(unsigned int id) const
{
    return m_objects.value(id);
}

int PlantSimulation::valueType(unsigned int id) const
{
    const QSharedPointer<AbstractParameterBase> o = m_objects.value(id);
    return o ? o->valueType() : 0;
}

void PlantSimulation::dropFlags()
{
    for (const auto &r : m_runtime) {
        r->object->cleanChanged();
        for (const Cell &cell : qAsConst(r->cells))
            cell.object->cleanChanged();
    }
}

PlantStep PlantSimulation::step(qint64 timeMs)
{
    PlantStep out;
    for (const auto &r : m_runtime)
        stepParameter(*r, timeMs, out);
    return out;
}

void PlantSimulation::stepParameter(Runtime &r, qint64 timeMs, PlantStep &out)
{
    const PlantParameter &p = *r.def;
    const unsigned int id = p.info.id;
    const QVariant oldValue = r.value;
    const unsigned int oldState = r.state;

    if (p.kind == PlantParameter::Field) {
        const int count = r.cells.size();
        for (int k = 0; k < count; ++k) {
            Cell &cell = r.cells[k];
            const qint64 shift = count > 0 ? r.driver.periodMs * k / count : 0;
            const QVariant raw = r.driver.next(timeMs + shift);
            const QVariant value = isNumber(raw) ? QVariant(rounded(raw.toDouble(), cell.info.precision))
                                                 : itemFromText(raw.toString());
            const QVariant cellOld = cell.value;
            const unsigned int cellOldState = cell.state;
            cell.object->setValue(value);
            cell.object->setState(int(StateGood));
            cell.value = value;
            cell.state = cell.object->getState();
            report(cell.info.id, cellOld, cellOldState, cell.value, cell.state, timeMs, true, out);
        }
        if (r.state != StateGood) {
            r.object->setState(StateGood);
            r.state = StateGood;
        }
        return;
    }

    const QVariant raw = r.driver.next(timeMs);
    QVariant value;
    unsigned int state = StateGood;
    bool judged = false;
    switch (p.kind) {
    case PlantParameter::Double: {
        const double number = rounded(isNumber(raw) ? raw.toDouble() : raw.toString().toDouble(), p.info.precision);
        value = number;
        static_cast<BPDouble &>(*r.object).setValue(number);
        const int checked = r.judge.checkValue(number);
        state = checked < 0 ? StateGood : unsigned(checked);
        judged = true;
        break;
    }
    case PlantParameter::Discrete:
    case PlantParameter::Status: {
        qint32 number = 0;
        if (raw.type() == QVariant::UInt)
            number = qint32(raw.toUInt());
        else if (isNumber(raw))
            number = qint32(std::llround(raw.toDouble()));
        else
            number = raw.toString().toInt();
        value = number;
        static_cast<BPDiscrete &>(*r.object).setValue(number);
        if (p.kind == PlantParameter::Discrete) {
            const int checked = r.judge.checkValue(number);
            state = checked < 0 ? StateGood : unsigned(checked);
            judged = true;
        } else {
            bool combination = false;
            ParamBitField::getCombination(quint32(number), &p.info, QStringLiteral("en"), &combination);
            bool faultBit = false;
            for (auto it = p.info.bitField.attributes.constBegin(); it != p.info.bitField.attributes.constEnd(); ++it) {
                if ((quint32(number) >> it.key()) & 1u)
                    faultBit = faultBit || it->states.value(1).state == int(StateFault);
            }
            state = combination || faultBit ? StateFault : StateGood;
        }
        break;
    }
    case PlantParameter::String: {
        const QString text = isNumber(raw) ? QString::number(raw.toDouble(), p.info.format, p.info.precision)
                                           : raw.toString();
        value = text;
        static_cast<BPString &>(*r.object).setValue(text);
        break;
    }
    case PlantParameter::Variant: {
        value = isNumber(raw) ? QVariant(rounded(raw.toDouble(), p.info.precision)) : itemFromText(raw.toString());
        auto &variant = static_cast<BPVariant &>(*r.object);
        variant.setValue(value);
        variant.setState(int(StateGood));
        state = variant.getState();
        judged = true;
        break;
    }
    case PlantParameter::List: {
        QVariantList list;
        if (isNumber(raw)) {
            list.append(rounded(raw.toDouble(), p.info.precision));
        } else {
            const QStringList items = raw.toString().split(QLatin1Char(';'), Qt::SkipEmptyParts);
            for (const QString &item : items)
                list.append(itemFromText(item.trimmed()));
        }
        value = list;
        if (value != oldValue)
            static_cast<BPList &>(*r.object).setList(list);
        break;
    }
    case PlantParameter::Map: {
        QMap<double, QVariant> map;
        if (isNumber(raw)) {
            map.insert(0.0, rounded(raw.toDouble(), p.info.precision));
        } else {
            const QStringList items = raw.toString().split(QLatin1Char(';'), Qt::SkipEmptyParts);
            for (const QString &item : items) {
                const int colon = item.indexOf(QLatin1Char(':'));
                if (colon > 0)
                    map.insert(item.left(colon).trimmed().toDouble(), itemFromText(item.mid(colon + 1).trimmed()));
            }
        }
        QVariantMap byText;
        for (auto it = map.constBegin(); it != map.constEnd(); ++it)
            byText.insert(QString::number(it.key()), it.value());
        value = byText;
        if (value != oldValue)
            static_cast<BPMap &>(*r.object).setMap(map);
        break;
    }
    case PlantParameter::Field:
        break;
    }
    if (p.kind != PlantParameter::Variant)
        r.object->setState(state);
    r.value = value;
    r.state = state;
    report(id, oldValue, oldState, value, state, timeMs, judged, out);
    if (p.kind == PlantParameter::Status && oldState != StateNoData && oldValue != value)
        bitEvent(id, oldValue.toUInt(), value.toUInt(), oldState, state, timeMs, out);
}

void PlantSimulation::report(unsigned int id, const QVariant &oldValue, unsigned int oldState,
                             const QVariant &value, unsigned int state, qint64 timeMs, bool judged, PlantStep &out)
{
    if (oldState == state && oldValue == value && oldValue.type() == value.type())
        return;
    StoredValue stored;
    stored.id = id;
    stored.timeMs = timeMs;
    stored.value = value;
    stored.state = state;
    out.values.append(stored);
    if (judged && oldState != state && judgedState(oldState) && judgedState(state))
        alarmEvent(id, oldState, state, value, timeMs, out);
}

void PlantSimulation::alarmEvent(unsigned int id, unsigned int oldState, unsigned int newState, const QVariant &value,
                                 qint64 timeMs, PlantStep &out)
{
    StoredEvent stored;
    stored.number = m_nextEvent++;
    EventStruct &e = stored.event;
    e.typeId = m_plant.alarmEventType;
    e.eventMessage = static_cast<unsigned char>(alarmMessage(newState));
    e.dateTime = QDateTime::fromMSecsSinceEpoch(timeMs, Qt::UTC);
    e.firstId = id;
    e.secondId = static_cast<unsigned int>(stored.number);
    e.parameters.insert(QStringLiteral("#old_state"), oldState);
    e.parameters.insert(QStringLiteral("#new_state"), newState);
    e.parameters.insert(QStringLiteral("#value"), value);
    out.events.append(stored);
}

void PlantSimulation::bitEvent(unsigned int id, quint32 oldWord, quint32 newWord, unsigned int oldState,
                               unsigned int newState, qint64 timeMs, PlantStep &out)
{
    StoredEvent stored;
    stored.number = m_nextEvent++;
    EventStruct &e = stored.event;
    e.typeId = m_plant.bitEventType;
    e.eventMessage = 1;
    e.dateTime = QDateTime::fromMSecsSinceEpoch(timeMs, Qt::UTC);
    e.firstId = id;
    e.secondId = static_cast<unsigned int>(stored.number);
    e.parameters.insert(QStringLiteral("#old_bit_value"), oldWord);
    e.parameters.insert(QStringLiteral("#new_bit_value"), newWord);
    e.parameters.insert(QStringLiteral("#old_bit_state"), int(oldState));
    e.parameters.insert(QStringLiteral("#new_bit_state"), int(newState));
    out.events.append(stored);
}
