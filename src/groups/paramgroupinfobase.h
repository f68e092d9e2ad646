#ifndef PARAMGROUPINFOBASE_H
#define PARAMGROUPINFOBASE_H

#include <QtCore/QList>
#include <QtCore/QString>

#include "paramgroupitem.h"
#include "qprotocolstruct.h"
#include "qxmltranslation.h"
#include "telorparams5_export.h"

/**
 * @brief The common part of the messages that change the parameter group tree: the
 * group the change happens in, its tree and the parameters concerned.
 *
 * Identity: `serviceId` 2 and `messageType` 1; `messageId` is left as the base
 * constructor made it and comes from the derived message or the received packet.
 *
 * Body, in this order: `path`, `extra1`, `extra2` (QString each), the record of `item`
 * (see ParamGroupItem), the number of `params` (32 bits), each parameter (`id` in 32 bits,
 * then `name`), and the number of `params` again.
 *
 * Copying: assignment copies the identity words `serviceId`, `messageId` and
 * `messageType` one by one and leaves the other words of the target's header as they are;
 * the copy constructor starts from a default header and assigns, so a copy keeps the
 * source's identity but not the routing words of a received message. Assignment
 * appends the children of the source's `item` to those of the target's `item` (see
 * ParamGroupItem::operator=), so only an empty message becomes a plain copy.
 *
 * The assignment operator is virtual and is not overridden by the derived messages:
 * assigning through a ParamGroupInfoBase reference copies only this part.
 */
class TELORPARAMS5_EXPORT ParamGroupInfoBase : public QProtocolStruct
{
public:
    /** One parameter concerned by the change. */
    struct Data {
        /** Parameter identifier. */
        unsigned int id = 0;
        /** Parameter text for the log. */
        QString name;

        /** True when identifier and text are equal. */
        bool operator==(const Data &other) const { return id == other.id && name == other.name; }
        /** The negation of operator==(). */
        bool operator!=(const Data &other) const { return !(*this == other); }
    };

    /** Identity 2, not set, 1; empty strings, a NoItem `item`, no parameters. */
    ParamGroupInfoBase();
    /** A default header and empty fields, then assigned from @p other. */
    ParamGroupInfoBase(const ParamGroupInfoBase &other);
    ~ParamGroupInfoBase() override;

    /** Writes the body. */
    void writePrivate(QContainerPacket &packet) const override;
    /**
     * Reads the body; use a fresh message. Returns false at once, with nothing further
     * read, when `item` does not read (see ParamGroupItem::read()). Parameters are
     * appended to `params`, which is not cleared first, and the result is whether the
     * trailing count equals the size of `params`.
     *
     * When the data ends before all announced parameters are read, the result is false
     * and the missing parameters are not added (each would read as id 0 and an empty
     * name, and the trailing count as 0, which cannot match).
     */
    bool readPrivate(QContainerPacket &packet) override;

    /** See the class description: identity words, strings, `item` (accumulating), `params`. */
    virtual ParamGroupInfoBase &operator=(const ParamGroupInfoBase &other);

    /**
     * One line per parameter, numbered from 1: three spaces and
     * `<n> (ID=<id>): "<name>"`, lines separated by "\n". Empty without parameters.
     */
    QXmlTranslation getParamsIDDetails() const;
    /**
     * The operators' log text of creating a group: the tags of `item` (see
     * ParamGroupItem::getTagsDetails(), prefix three spaces), the line "Path: <path>",
     * then the numbered parameters. Translated through ::multiTranslator.
     */
    QXmlTranslation getCreateGroupLogDetails() const;

    /** The group the change happens in. */
    QString path;
    /** Carried and copied, not read by this library. */
    QString extra1;
    /** Carried and copied, not read by this library. */
    QString extra2;
    /** The group's tree. */
    ParamGroupItem item;
    /** The parameters concerned. */
    QList<Data> params;
};

#endif // PARAMGROUPINFOBASE_H
