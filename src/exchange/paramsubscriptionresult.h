#ifndef PARAMSUBSCRIPTIONRESULT_H
#define PARAMSUBSCRIPTIONRESULT_H

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QList>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief Values delivered to one subscribed client.
 *
 * The identity is not stamped: a result takes it from the packet it is read from.
 *
 * Body, in this order: `ids` (32-bit count, then each identifier as a signed 32-bit
 * integer), `data` as a QByteArray, `dateTime` as a QDateTime, and the token as a signed
 * 64-bit integer holding the pointer's value.
 *
 * `data` is the record stream: the parameter records back to back, one for each element
 * of `ids` and in the same order, with no identifier ahead of them. The message writes
 * and reads it as opaque bytes; ClientParamSubscription::newDataSlot() walks it.
 *
 * readPrivate() always returns true, also for a null token: the consumer decides. An
 * `ids` count that announces more identifiers than the body holds reads as an empty
 * list, without allocating for the announced count. A `dateTime` in a zone that this side
 * doesn't know reads as a null QDateTime, so that the result can be written again; a zone
 * name that climbs out of the zone directory is not looked up.
 */
class TELORPARAMS5_EXPORT ParamSubscriptionResult : public QProtocolStruct
{
public:
    /**
     * An empty result with a null time; the header is the base's default. The token is
     * given a value only by readPrivate() or setParent(); until then it reads as null.
     */
    ParamSubscriptionResult();
    ~ParamSubscriptionResult() override;

    void writePrivate(QContainerPacket &packet) const override;
    /** Reads all four fields; always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The token copied from the query; never dereferenced. */
    const QObject *parent() const;
    /** Sets the token, as the server side does when it answers a query. */
    void setParent(const QObject *parent);

    /** The identifiers answered, in the order of their records in `data`. */
    QList<int> ids;
    /** The record stream. */
    QByteArray data;
    /** The time of the answer. */
    QDateTime dateTime;

private:
    const QObject *m_parent = nullptr;
};

#endif // PARAMSUBSCRIPTIONRESULT_H
