#ifndef PARAMGROUPINSERTPARAMETERSINFO_H
#define PARAMGROUPINSERTPARAMETERSINFO_H

#include <QtCore/QString>

#include "paramgroupinfobase.h"
#include "qxmltranslation.h"
#include "telorparams5_export.h"

/**
 * @brief Inserting parameters at a place in a group, next to an anchor entry.
 *
 * Identity 2, 10, 1. Body: that of ParamGroupInfoBase, then `anchor` and `anchorExtra`
 * (QString each) and `mode` (32 bits).
 */
class TELORPARAMS5_EXPORT ParamGroupInsertParametersInfo : public ParamGroupInfoBase
{
public:
    /** Where the parameters go relative to `anchor`. */
    enum InsertMode {
        ReplaceMode = 0, ///< In place of the anchor.
        AboveMode = 1,   ///< Above the anchor.
        BelowMode = 2,   ///< Below the anchor.
    };

    /** Identity 2, 10, 1, with empty fields and `mode` 0. */
    ParamGroupInsertParametersInfo();
    /** A default header, then assigned from @p other: the identity is copied. */
    ParamGroupInsertParametersInfo(const ParamGroupInsertParametersInfo &other);
    ~ParamGroupInsertParametersInfo() override;

    /** Writes the common body, then `anchor`, `anchorExtra` and `mode`. */
    void writePrivate(QContainerPacket &packet) const override;
    /**
     * Reads the common body and returns false at once if it failed, leaving `anchor`,
     * `anchorExtra` and `mode` unread; otherwise reads them and returns true.
     */
    bool readPrivate(QContainerPacket &packet) override;

    using ParamGroupInfoBase::operator=;
    /** The assignment of ParamGroupInfoBase, then `anchor`, `anchorExtra` and `mode`. */
    virtual ParamGroupInsertParametersInfo &operator=(const ParamGroupInsertParametersInfo &other);

    /**
     * The index at which new entries go when the anchor stands at @p position:
     * @p position + 1 for BelowMode, @p position for every other mode.
     */
    int getInsertPosition(int position) const;

    /**
     * The operators' log text of the insertion: "Path: <path>", the line of the mode
     * ("Replace: ", "Insert above: " or "Insert below: " and `anchor`; none for another
     * mode), then the numbered parameters. Translated through ::multiTranslator.
     */
    QXmlTranslation getInsertLogDetails() const;

    /** The entry that the insertion refers to. */
    QString anchor;
    /** Carried and copied, not read by this library. */
    QString anchorExtra;
    /** The insertion mode, an InsertMode or any other number. */
    int mode;
};

#endif // PARAMGROUPINSERTPARAMETERSINFO_H
