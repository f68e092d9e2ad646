#include "simulatedserver.h"

#include "abstractparameterbase.h"
#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "parambaseptr.h"
#include "paramsubscriptionquery.h"
#include "paramsubscriptionresult.h"
#include "paramvaluesquery.h"
#include "paramvaluesresult.h"
#include "qcontainerpacket.h"

#include <QtCore/QtEndian>

#include <cmath>

namespace {

constexpr int StateGood = 8;

/** The identity words of a packet, so that the server knows which request it holds. */
bool identityOf(const QByteArray &packet, qint32 &serviceId, qint32 &messageId)
{
    if (packet.size() < QProtocolStruct::HeaderSize)
        return false;
    serviceId = qFromBigEndian<qint32>(packet.constData());
    messageId = qFromBigEndian<qint32>(packet.constData() + 4);
    return true;
}

double wave(int tick, double middle, double amplitude, double period, double phase = 0.0)
{
    return middle + amplitude * std::sin(2.0 * M_PI * (tick + phase) / period);
}

} // namespace

SimulatedServer::SimulatedServer(const QDateTime &start, int stepMs)
    : m_now(start)
    , m_stepMs(stepMs)
{
}

SimulatedServer::~SimulatedServer()
{
    // The handles first: each one unregisters from a parameter that must still be there.
    m_subscribers.clear();
}

void SimulatedServer::addParameter(const QSharedPointer<AbstractParameterBase> &param, const QString &name,
                                   Driver driver)
{
    if (param.isNull())
        return;
    if (driver)
        driver(*param, 0);
    param->cleanChanged();
    m_parameters.insert(param->getIdParameter(), Parameter{param, name, std::move(driver)});
}

void SimulatedServer::addStandardPlant()
{
    // A judged variant: the state comes from the limits.
    const auto judged = [](double (*curve)(int)) {
        return [curve](AbstractParameterBase &param, int tick) {
            auto &variant = static_cast<BPVariant &>(param);
            variant.setValue(std::round(curve(tick) * 10.0) / 10.0);
            variant.setState(StateGood);
        };
    };

    QSharedPointer<BPVariant> boiler(new BPVariant(101));
    CalcLimit &boilerLimits = boiler->limitsPrivate();
    boilerLimits.setLowPossibleSetpoint(true, 0.0);
    boilerLimits.setHiPossibleSetpoint(true, 200.0);
    boilerLimits.setLowEmergencySetpoint(true, 20.0);
    boilerLimits.setLowWarningSetpoint(true, 40.0);
    boilerLimits.setHiWarningSetpoint(true, 80.0);
    boilerLimits.setHiEmergencySetpoint(true, 95.0);
    addParameter(boiler, QStringLiteral("boiler temperature"),
                 judged([](int tick) { return wave(tick, 60.0, 45.0, 8.0); }));

    QSharedPointer<BPVariant> pressure(new BPVariant(102));
    CalcLimit &pressureLimits = pressure->limitsPrivate();
    pressureLimits.setLowPossibleSetpoint(true, 0.0);
    pressureLimits.setHiWarningSetpoint(true, 6.0);
    addParameter(pressure, QStringLiteral("feed pressure"),
                 judged([](int tick) { return wave(tick, 4.0, 3.0, 6.0, 1.5); }));

    addParameter(QSharedPointer<BPString>(new BPString(103)), QStringLiteral("pump mode"),
                 [](AbstractParameterBase &param, int tick) {
                     auto &mode = static_cast<BPString &>(param);
                     mode.setValue((tick / 4) % 2 ? QStringLiteral("manual") : QStringLiteral("auto"));
                     mode.setState(StateGood);
                 });

    addParameter(QSharedPointer<BPDouble>(new BPDouble(104)), QStringLiteral("flow"),
                 [](AbstractParameterBase &param, int tick) {
                     auto &flow = static_cast<BPDouble &>(param);
                     // Steady for two ticks out of three, so that unchanged values show.
                     flow.setValue(12.5 + (tick / 3) * 0.5);
                     flow.setState(StateGood);
                 });

    QSharedPointer<BPVariant> sample(new BPVariant(105));
    const QDateTime start = m_now;
    const int step = m_stepMs;
    addParameter(sample, QStringLiteral("last sample"), [start, step](AbstractParameterBase &param, int tick) {
        auto &variant = static_cast<BPVariant &>(param);
        // A new sample every other tick; in between the same value is confirmed.
        variant.setValue(start.addMSecs(qint64(tick / 2) * 2 * step));
        variant.setState(StateGood);
    });
}

QSharedPointer<AbstractParameterBase> SimulatedServer::parameter(unsigned int id) const
{
    return m_parameters.value(id).object;
}

QString SimulatedServer::name(unsigned int id) const
{
    return m_parameters.value(id).name;
}

QList<unsigned int> SimulatedServer::ids() const
{
    return m_parameters.keys();
}

QList<QByteArray> SimulatedServer::receive(const QByteArray &packet)
{
    qint32 serviceId = 0;
    qint32 messageId = 0;
    if (!identityOf(packet, serviceId, messageId) || serviceId != 3)
        return {};
    if (messageId == 1)
        return subscribe(packet);
    if (messageId == 8)
        return answerValues(packet);
    return {};
}

QList<QByteArray> SimulatedServer::subscribe(const QByteArray &packet)
{
    ParamSubscriptionQuery query(nullptr);
    query.setPacket(packet);
    if (!query.read() || !query.parent())
        return {};
    const QObject *token = query.parent();
    if (query.ids.isEmpty()) {
        m_subscribers.erase(token);
        return {};
    }

    Subscriber &subscriber = m_subscribers[token];
    subscriber.queryPacket = packet;
    // The query is the whole wish: watches of identifiers no longer wished go, and a
    // handle whose refresh wish changed is built anew.
    for (auto it = subscriber.watches.begin(); it != subscriber.watches.end();) {
        if (!query.ids.contains(it->first))
            it = subscriber.watches.erase(it);
        else
            ++it;
    }
    for (const int id : query.ids) {
        const auto found = m_parameters.constFind(static_cast<unsigned int>(id));
        if (found == m_parameters.cend())
            continue;
        const bool refresh = query.refreshIds.contains(id);
        Watch &watch = subscriber.watches[id];
        if (!watch.handle || watch.refresh != refresh) {
            watch.handle.reset(new ParamBasePtr(found->object.data(), refresh));
            watch.refresh = refresh;
        }
    }
    const QByteArray first = resultFor(token, subscriber, true);
    if (first.isEmpty())
        return {};
    return {first};
}

QList<QByteArray> SimulatedServer::answerValues(const QByteArray &packet)
{
    ParamValuesQuery query;
    query.setPacket(packet);
    if (!query.read()) // a null token is no request
        return {};

    ParamValuesResult result;
    result.replyTo(query);
    {
        QContainerPacket records(&result.data);
        for (const unsigned int id : qAsConst(query.ids)) {
            const auto found = m_parameters.constFind(id);
            if (found == m_parameters.cend())
                continue;
            result.ids.append(id);
            records << static_cast<qint32>(id);
            // The asking client has seen nothing: the record is a full one.
            found->object->write(records, true);
        }
    }
    result.dateTime = m_now;
    result.parent = query.parent;
    return {result.write()};
}

QByteArray SimulatedServer::resultFor(const QObject *token, Subscriber &subscriber, bool everything)
{
    ParamSubscriptionQuery query(nullptr);
    query.setPacket(subscriber.queryPacket);
    query.read();

    ParamSubscriptionResult result;
    result.replyTo(query);
    {
        QContainerPacket records(&result.data);
        for (auto &entry : subscriber.watches) {
            ParamBasePtr &handle = *entry.second.handle;
            if (!everything && !handle.changed())
                continue;
            result.ids.append(entry.first);
            handle.write(records);
            handle.dropFlag();
        }
    }
    if (result.ids.isEmpty())
        return QByteArray();
    result.dateTime = m_now;
    result.setParent(token);
    return result.write();
}

QList<QByteArray> SimulatedServer::tick()
{
    ++m_tick;
    m_now = m_now.addMSecs(m_stepMs);
    for (const Parameter &param : qAsConst(m_parameters)) {
        if (param.driver)
            param.driver(*param.object, m_tick);
    }
    QList<QByteArray> packets;
    for (auto &entry : m_subscribers) {
        const QByteArray packet = resultFor(entry.first, entry.second, false);
        if (!packet.isEmpty())
            packets.append(packet);
    }
    dropParameterFlags();
    return packets;
}

void SimulatedServer::dropParameterFlags()
{
    for (const Parameter &param : qAsConst(m_parameters))
        param.object->cleanChanged();
}

int SimulatedServer::subscriberCount() const
{
    return static_cast<int>(m_subscribers.size());
}

QDateTime SimulatedServer::now() const
{
    return m_now;
}

int SimulatedServer::tickNumber() const
{
    return m_tick;
}
