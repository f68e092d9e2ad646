#ifndef PARAMINFOQUERY_H
#define PARAMINFOQUERY_H

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

/**
 * @brief A client's request for the whole list of parameter descriptions.
 *
 * Identity 2, 1, 1. The message has no body: it keeps the base's writePrivate(), which
 * writes nothing, and readPrivate(), which accepts an empty body and returns true. The
 * server answers with a ParamInfoList.
 */
class TELORPARAMS5_EXPORT ParamInfoQuery : public QProtocolStruct
{
public:
    /** Stamps the identity 2, 1, 1. */
    ParamInfoQuery();
    ~ParamInfoQuery() override;
};

#endif // PARAMINFOQUERY_H
