#include "clientparamsubscription.h"

#include "abstractparameterbase.h"
#include "parametersunder_p.h"
#include "paramsubscriptionresult.h"
#include "qcontainerpacket.h"

#include <QtCore/QDebug>

ClientParamSubscription::ClientParamSubscription() = default;

ClientParamSubscription::~ClientParamSubscription() = default;

void ClientParamSubscription::append(QSharedPointer<AbstractParameterBase> param, const QObject *client)
{
    ClientObjects &objects = clients[client];
    if (param.isNull())
        return;
    const int id = static_cast<int>(param->getIdParameter());
    objects.insert(id, std::move(param));
}

void ClientParamSubscription::remove(const QObject *client)
{
    if (clients.isEmpty())
        return;
    clients.remove(client);
}

void ClientParamSubscription::removeOld(const QList<QSharedPointer<AbstractParameterBase>> &params,
                                        const QObject *client)
{
    // The address is printed as a plain pointer: the client is never dereferenced.
    qDebug() << "ClientParamSubscription::removeOld" << static_cast<const void *>(client);
    auto found = clients.find(client);
    if (found == clients.end())
        return;

    const QList<QSharedPointer<AbstractParameterBase>> toRemove = params;
    for (const QSharedPointer<AbstractParameterBase> &param : toRemove) {
        if (param.isNull())
            continue;
        const QSharedPointer<AbstractParameterBase> held = param;
        const unsigned int id = held->getIdParameter();
        qDebug() << "ClientParamSubscription::removeOld" << id;
        ClientObjects &objects = found.value();
        const int key = static_cast<int>(id);
        auto it = objects.find(key);
        while (it != objects.end() && it.key() == key) {
            if (it.value().data() == held.data())
                it = objects.erase(it);
            else
                ++it;
        }
    }
}

void ClientParamSubscription::clear()
{
    clients.clear();
}

int ClientParamSubscription::count() const
{
    return clients.size();
}

QDateTime ClientParamSubscription::dateTime() const
{
    return m_dateTime;
}

void ClientParamSubscription::fill(ParamSubscriptionQuery &request, const ClientObjects &objects)
{
    for (auto it = objects.cbegin(), end = objects.cend(); it != end; ++it) {
        const AbstractParameterBase *object = it.value().data();
        const int id = static_cast<int>(object->getIdParameter());
        request.ids.insert(id);
        if (object->isRefreshAnyway())
            request.refreshIds.insert(id);
    }
}

ParamSubscriptionQuery ClientParamSubscription::query(const QObject *client) const
{
    ParamSubscriptionQuery request(client);
    const auto found = clients.constFind(client);
    if (found == clients.cend()) {
        request.setParent(nullptr);
        return request;
    }
    fill(request, found.value());
    return request;
}

QList<ParamSubscriptionQuery> ClientParamSubscription::allQueries() const
{
    QList<ParamSubscriptionQuery> requests;
    for (auto it = clients.cbegin(), end = clients.cend(); it != end; ++it) {
        ParamSubscriptionQuery request(it.key());
        fill(request, it.value());
        requests.append(request);
    }
    return requests;
}

bool ClientParamSubscription::newDataSlot(const QProtocolStruct &message)
{
    ParamSubscriptionResult result;
    result.setPacket(message);
    if (!result.read())
        return false;
    m_dateTime = result.dateTime;

    const QObject *token = result.parent();
    if (!token)
        return true;
    if (!clients.contains(token))
        return true;

    QContainerPacket packet(result.data);
    const QList<int> ids = result.ids;
    TelorExchange::ParameterRun objects;
    for (const int id : ids) {
        // The client's objects are looked up in place for every identifier, so that an
        // object appended from inside a read is seen by the following records.
        const auto client = clients.constFind(token);
        if (client == clients.cend())
            return false;
        TelorExchange::collect(client.value(), id, objects);
        if (objects.isEmpty())
            return false; // nothing knows how long this record is
        const unsigned int position = packet.position();
        for (const QSharedPointer<AbstractParameterBase> &object : objects) {
            packet.at(position);
            if (!object->read(packet))
                return false;
        }
    }
    return true;
}

void ClientParamSubscription::setState(int state)
{
    const QHash<const QObject *, ClientObjects> snapshot = clients;
    for (auto client = snapshot.cbegin(), end = snapshot.cend(); client != end; ++client) {
        const ClientObjects objects = client.value();
        for (auto it = objects.cbegin(), objectsEnd = objects.cend(); it != objectsEnd; ++it) {
            const QSharedPointer<AbstractParameterBase> held = it.value();
            // Through the base: a variant stores the state as it is, without its limits.
            held->setState(static_cast<unsigned int>(state));
        }
    }
}

void ClientParamSubscription::dropFlags()
{
    const QHash<const QObject *, ClientObjects> snapshot = clients;
    for (auto client = snapshot.cbegin(), end = snapshot.cend(); client != end; ++client) {
        const ClientObjects objects = client.value();
        for (auto it = objects.cbegin(), objectsEnd = objects.cend(); it != objectsEnd; ++it) {
            const QSharedPointer<AbstractParameterBase> held = it.value();
            held->cleanChanged();
        }
    }
}
