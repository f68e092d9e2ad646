#ifndef PARAMSUBSCRIPTIONQUERY_H
#define PARAMSUBSCRIPTIONQUERY_H

#include <QtCore/QSet>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief One client's complete standing wish for values. Identity 3, 1, 1.
 *
 * Built by ClientParamSubscription::query() and allQueries(); the application writes it
 * and sends it. A query always states the whole wish of its client, never a difference.
 *
 * Body, in this order: `ids` and `refreshIds` in Qt's sequential container form (32-bit
 * count, then each identifier as a signed 32-bit integer in the set's iteration order,
 * which carries no meaning), then the token as a signed 64-bit integer holding the
 * pointer's value.
 *
 * readPrivate() always returns true, also for a null token. A set is read as Qt reads it:
 * emptied first, then element by element, and left empty if the stream runs out.
 *
 * Copies copy the whole header, so a query can be kept in a QList.
 */
class TELORPARAMS5_EXPORT ParamSubscriptionQuery : public QProtocolStruct
{
public:
    /** An empty wish of the client @p parent, identity 3, 1, 1. */
    explicit ParamSubscriptionQuery(const QObject *parent);
    ~ParamSubscriptionQuery() override;

    void writePrivate(QContainerPacket &packet) const override;
    /** Reads both sets and the token; always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * The client's token; never dereferenced. Null marks a query that stands for no
     * known client.
     */
    const QObject *parent() const;
    /** Replaces the token, as the aggregate does for an unknown client. */
    void setParent(const QObject *parent);

    /** Every identifier the client wants. */
    QSet<int> ids;
    /** The identifiers of `ids` under which some object wants a refresh on every delivery. */
    QSet<int> refreshIds;

private:
    const QObject *m_parent;
};

#endif // PARAMSUBSCRIPTIONQUERY_H
