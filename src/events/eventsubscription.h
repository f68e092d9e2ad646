#ifndef EVENTSUBSCRIPTION_H
#define EVENTSUBSCRIPTION_H

#include "eventbasesubscription.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief Asks to receive events as they occur. Identity 3, 18, 1.
 *
 * The body is that of EventBaseSubscription: the client's token alone.
 */
class TELORPARAMS5_EXPORT EventSubscription : public EventBaseSubscription
{
public:
    /** A message for the client @p parent, with the identity 3, 18, 1. */
    explicit EventSubscription(const QObject *parent);
    ~EventSubscription() override;
};

#endif // EVENTSUBSCRIPTION_H
