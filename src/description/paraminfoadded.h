#ifndef PARAMINFOADDED_H
#define PARAMINFOADDED_H

#include "paraminfochanged.h"
#include "telorparams5_export.h"

/**
 * @brief A server's notice that parameters are new: their descriptions.
 *
 * Identity 2, 7, 4, stamped after the constructor of ParamInfoChanged has run. Body,
 * reading rules and setMessageType() are those of ParamInfoChanged.
 */
class TELORPARAMS5_EXPORT ParamInfoAdded : public ParamInfoChanged
{
public:
    /** Runs the constructor of ParamInfoChanged, then stamps the identity 2, 7, 4. */
    ParamInfoAdded();
    ~ParamInfoAdded() override;
};

#endif // PARAMINFOADDED_H
