#ifndef PARAMGROUPINFO_H
#define PARAMGROUPINFO_H

#include "paramgroupinfobase.h"
#include "telorparams5_export.h"

/**
 * @brief A group change message with the common fields only, such as creating a group.
 *
 * Identity 2, @p messageId, 1: the application gives the `messageId`, and this library
 * neither checks it nor knows its values. Body, copying and log text are those of
 * ParamGroupInfoBase; a copy keeps the source's `messageId`.
 */
class TELORPARAMS5_EXPORT ParamGroupInfo : public ParamGroupInfoBase
{
public:
    /** Identity 2, @p messageId, 1, with empty fields. */
    explicit ParamGroupInfo(int messageId);
    /** A default header, then the assignment of ParamGroupInfoBase. */
    ParamGroupInfo(const ParamGroupInfo &other);
    ~ParamGroupInfo() override;
    using ParamGroupInfoBase::operator=;
    /** The assignment of ParamGroupInfoBase. */
    ParamGroupInfo &operator=(const ParamGroupInfo &other);
};

#endif // PARAMGROUPINFO_H
