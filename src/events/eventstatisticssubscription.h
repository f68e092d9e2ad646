#ifndef EVENTSTATISTICSSUBSCRIPTION_H
#define EVENTSTATISTICSSUBSCRIPTION_H

#include "eventbasesubscription.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief Asks to receive event statistics as they change. Identity 3, 21, 1.
 *
 * The body is that of EventBaseSubscription: the client's token alone.
 */
class TELORPARAMS5_EXPORT EventStatisticsSubscription : public EventBaseSubscription
{
public:
    /** A message for the client @p parent, with the identity 3, 21, 1. */
    explicit EventStatisticsSubscription(const QObject *parent);
    ~EventStatisticsSubscription() override;
};

#endif // EVENTSTATISTICSSUBSCRIPTION_H
