#ifndef EVENTBASESUBSCRIPTION_H
#define EVENTBASESUBSCRIPTION_H

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief What the event subscription messages share: the subscribing client's token.
 *
 * The base stamps no identity; EventSubscription, EventSubscriptionCancel,
 * EventStatisticsSubscription and EventStatisticsSubscriptionCancel do.
 *
 * Body: parent() as a signed 64-bit integer holding the pointer's value. readPrivate()
 * reads it straight back and always returns true; a truncated body reads as a null token.
 * The token is never dereferenced.
 */
class TELORPARAMS5_EXPORT EventBaseSubscription : public QProtocolStruct
{
public:
    ~EventBaseSubscription() override;

    /** Writes the token. */
    void writePrivate(QContainerPacket &packet) const override;
    /** Reads the token. Always true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The subscribing client's token: a pointer value that is never dereferenced. */
    const QObject *parent() const;

    /**
     * Whether @p other is the same query as this message: the eighth, seventh and sixth
     * header words (sequence, session, source), compared in that order, and then the
     * tokens must be equal. Identity words are not compared.
     */
    bool checkQuery(const EventBaseSubscription &other) const;

protected:
    /** A base with the token @p parent; no identity is stamped. */
    explicit EventBaseSubscription(const QObject *parent = nullptr);
    /** Copies the header, the kept packet and the token. */
    EventBaseSubscription(const EventBaseSubscription &other) = default;
    /** Copies the header, the kept packet and the token of @p other. */
    EventBaseSubscription &operator=(const EventBaseSubscription &other) = default;

private:
    const QObject *m_parent;
};

#endif // EVENTBASESUBSCRIPTION_H
