#ifndef EVENTSQUERYCANCEL_H
#define EVENTSQUERYCANCEL_H

#include "eventsquerybase.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief Cancels a client's event query. Identity 3, 16, 1.
 *
 * The body is exactly that of EventsQueryBase: `queryType` (always 2 when built here),
 * the token and `queryTag`.
 */
class TELORPARAMS5_EXPORT EventsQueryCancel : public EventsQueryBase
{
public:
    /** A cancellation with `queryType` 2, the token @p parent and `queryTag` 0. */
    explicit EventsQueryCancel(const QObject *parent);
    ~EventsQueryCancel() override;
};

#endif // EVENTSQUERYCANCEL_H
