#ifndef EVENTSUBSCRIPTIONCANCEL_H
#define EVENTSUBSCRIPTIONCANCEL_H

#include "eventbasesubscription.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief Stops a client's subscription to events. Identity 3, 19, 1.
 *
 * The body is that of EventBaseSubscription: the client's token alone.
 */
class TELORPARAMS5_EXPORT EventSubscriptionCancel : public EventBaseSubscription
{
public:
    /** A message for the client @p parent, with the identity 3, 19, 1. */
    explicit EventSubscriptionCancel(const QObject *parent);
    ~EventSubscriptionCancel() override;
};

#endif // EVENTSUBSCRIPTIONCANCEL_H
