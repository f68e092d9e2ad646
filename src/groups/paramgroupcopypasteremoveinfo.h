#ifndef PARAMGROUPCOPYPASTEREMOVEINFO_H
#define PARAMGROUPCOPYPASTEREMOVEINFO_H

#include <QtCore/QString>

#include "paramgroupinfobase.h"
#include "qxmltranslation.h"
#include "telorparams5_export.h"

/**
 * @brief Copying, pasting or removing a group.
 *
 * Identity 2, @p messageId, 1: the application gives the `messageId`. Body: that of
 * ParamGroupInfoBase, then `what` and `whatExtra` (QString each).
 *
 * Its reader is the one group message reader that reports nothing: it reads `what` and
 * `whatExtra` after the common part whatever became of that, and accepts every body.
 */
class TELORPARAMS5_EXPORT ParamGroupCopyPasteRemoveInfo : public ParamGroupInfoBase
{
public:
    /** Identity 2, @p messageId, 1, with empty fields. */
    explicit ParamGroupCopyPasteRemoveInfo(int messageId);
    /** A default header, then assigned from @p other: the identity is copied. */
    ParamGroupCopyPasteRemoveInfo(const ParamGroupCopyPasteRemoveInfo &other);
    ~ParamGroupCopyPasteRemoveInfo() override;

    /** Writes the common body, then `what` and `whatExtra`. */
    void writePrivate(QContainerPacket &packet) const override;
    /**
     * Reads the common body and ignores its result, then reads `what` and `whatExtra`.
     * Always returns true.
     */
    bool readPrivate(QContainerPacket &packet) override;

    using ParamGroupInfoBase::operator=;
    /** The assignment of ParamGroupInfoBase, then `what` and `whatExtra`. */
    virtual ParamGroupCopyPasteRemoveInfo &operator=(const ParamGroupCopyPasteRemoveInfo &other);

    /**
     * The operators' log text of a copy: "What:", three spaces and `what`, "Where:", three
     * spaces and `path`; four lines, also when the strings are empty.
     */
    QXmlTranslation getCopyLogDetails() const;
    /** The log text of a removal: as getCopyLogDetails(), with "From where:" for "Where:". */
    QXmlTranslation getRemoveLogDetails() const;

    /** The object copied or removed. */
    QString what;
    /** Carried and copied, not read by this library. */
    QString whatExtra;
};

#endif // PARAMGROUPCOPYPASTEREMOVEINFO_H
