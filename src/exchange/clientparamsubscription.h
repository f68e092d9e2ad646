#ifndef CLIENTPARAMSUBSCRIPTION_H
#define CLIENTPARAMSUBSCRIPTION_H

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMultiHash>
#include <QtCore/QSharedPointer>

#include "paramsubscriptionquery.h"
#include "telorparams5_export.h"

class AbstractParameterBase;
class QObject;
class QProtocolStruct;

/**
 * @brief The standing subscriptions of many clients in one aggregate.
 *
 * Each client is a QObject address that holds some shared parameter objects. The
 * aggregate turns each client's wish into a ParamSubscriptionQuery, routes a received
 * ParamSubscriptionResult by its token to that client alone and hands each record to the
 * client's objects. It never sends or receives anything itself, and it never
 * dereferences a client's address: the application calls remove() before it destroys a
 * client.
 *
 * A client is known from its first append() until remove() or clear(); removeOld() can
 * leave it known with no objects, and such a client still gets a query with its token and
 * two empty sets. One identifier can hold several objects within a client, also the same
 * object twice, and two clients can share an object.
 *
 * setState() and dropFlags() sweep over copies of the client table and of each client's
 * objects and hold a strong reference to each object while they call it, so an object
 * that changes the aggregate from inside the call does not disturb the running sweep.
 * newDataSlot() works on the served client's objects in place: a reaction inside a read
 * must not call remove() or clear() for that client.
 */
class TELORPARAMS5_EXPORT ClientParamSubscription
{
public:
    /** No clients; dateTime() is null. */
    ClientParamSubscription();
    /**
     * Drops the references to every client's objects; an object whose last reference
     * this was is destroyed with it. The clients themselves are not touched.
     */
    virtual ~ClientParamSubscription();

    /**
     * Adds @p param to the wish of @p client under its identifier, making the client
     * known if it was not. No equal entry is looked for: appending one object twice leaves
     * two entries. A null @p param makes the client known and adds nothing.
     */
    void append(QSharedPointer<AbstractParameterBase> param, const QObject *client);
    /** Forgets @p client and drops the references to its objects; unknown clients are ignored. */
    void remove(const QObject *client);
    /**
     * Takes the given objects out of the wish of @p client; the client stays known, also
     * with no objects left. Every entry of an object is taken (pointer equality); other
     * objects under the same identifier stay.
     *
     * Logs "ClientParamSubscription::removeOld" with the client's address on every call,
     * and for a known client the same text with the identifier of each object passed.
     * Null pointers in @p params are passed over without a line.
     */
    void removeOld(const QList<QSharedPointer<AbstractParameterBase>> &params, const QObject *client);
    /** Forgets all clients. dateTime() stays. */
    void clear();
    /** The number of known clients, those with no objects included. */
    int count() const;
    /** The time of the last result read, whichever client it was for; null until then. */
    QDateTime dateTime() const;

    /**
     * The complete wish of @p client: every identifier it holds, and in `refreshIds` those
     * under which at least one object answers isRefreshAnyway() true at this moment. For
     * an unknown client the query's token is null and both sets are empty.
     */
    ParamSubscriptionQuery query(const QObject *client) const;
    /** The complete wish of every known client, in the client table's iteration order. */
    QList<ParamSubscriptionQuery> allQueries() const;

    /**
     * Applies a received subscription result.
     *
     * Returns false if the message does not read, and then changes nothing. Otherwise the
     * result's time is taken at once. A null token or a token of no known client (a late
     * answer for a client that left) returns true. For a known client each identifier's
     * record is read by every object the client holds under it (the latest appended
     * first), each from the same position. An identifier the client holds nothing under
     * returns false, since nothing knows the record's length, and so does a record that
     * an object refuses. What was applied before a failure stays.
     */
    bool newDataSlot(const QProtocolStruct &message);

    /**
     * Calls the inherited AbstractParameterBase::setState(unsigned int) of every object of
     * every client, once per entry. The limits of a variant are not consulted.
     */
    void setState(int state);
    /** Calls cleanChanged() on every object of every client, once per entry. */
    void dropFlags();

private:
    Q_DISABLE_COPY(ClientParamSubscription)

    using ClientObjects = QMultiHash<int, QSharedPointer<AbstractParameterBase>>;

    static void fill(ParamSubscriptionQuery &request, const ClientObjects &objects);

    QHash<const QObject *, ClientObjects> clients;
    QDateTime m_dateTime;
};

#endif // CLIENTPARAMSUBSCRIPTION_H
