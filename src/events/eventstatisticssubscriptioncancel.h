#ifndef EVENTSTATISTICSSUBSCRIPTIONCANCEL_H
#define EVENTSTATISTICSSUBSCRIPTIONCANCEL_H

#include "eventbasesubscription.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief Stops a client's subscription to event statistics. Identity 3, 22, 1.
 *
 * The body is that of EventBaseSubscription: the client's token alone.
 */
class TELORPARAMS5_EXPORT EventStatisticsSubscriptionCancel : public EventBaseSubscription
{
public:
    /** A message for the client @p parent, with the identity 3, 22, 1. */
    explicit EventStatisticsSubscriptionCancel(const QObject *parent);
    ~EventStatisticsSubscriptionCancel() override;
};

#endif // EVENTSTATISTICSSUBSCRIPTIONCANCEL_H
