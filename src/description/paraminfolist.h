#ifndef PARAMINFOLIST_H
#define PARAMINFOLIST_H

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>

#include "eventtypeinfostruct.h"
#include "paramgroupitem.h"
#include "paraminfo.h"
#include "qprotocolstruct.h"
#include "telorparams5_export.h"
#include "translationitemnew.h"

/**
 * @brief The answer to a ParamInfoQuery: every parameter description, the tree of
 * parameter groups and the catalogue of event types.
 *
 * Identity 2, 1, as the query it answers; the traffic kind is not stamped, so a list
 * that is built keeps the default of the header, and one that is received has what the
 * server sent.
 *
 * Body, in this order:
 *
 * | Order | Item                                 | Encoding                                    |
 * |-------|--------------------------------------|---------------------------------------------|
 * | 1     | number of records in `params`        | 32 bits                                     |
 * | 2     | each description, in list order      | wire form of ParamInfo                      |
 * | 3     | number of records in `params` again  | 32 bits                                     |
 * | 4     | `rootItem`                           | wire form of ParamGroupItem                 |
 * | 5     | number of entries of `eventTypes`    | 32 bits                                     |
 * | 6     | each event type, in QHash::keys() order | packet form of EventTypeInfoStruct; the key is not sent |
 * | 7     | `rawData`                            | QByteArray                                  |
 * | 8     | `translations`                       | two-level table of writeTranslationTable()  |
 *
 * Item 3 is the list's only integrity check: the reader compares it with the number of
 * descriptions it holds after item 2.
 *
 * The message owns its group tree through `rootItem`. Copies are deep: copying or
 * assigning a list gives an independent tree equal to the source's (assignment replaces
 * the tree that the target held).
 */
class TELORPARAMS5_EXPORT ParamInfoList : public QProtocolStruct
{
public:
    /** Stamps `serviceId` 2 and `messageId` 1; every field is empty, the root a NoItem node. */
    ParamInfoList();
    /** Copies the header and every field; the group tree is copied deeply. */
    ParamInfoList(const ParamInfoList &other);
    /**
     * Copies the header and every field. The target's group tree is destroyed and
     * replaced by a deep copy of the source's.
     */
    ParamInfoList &operator=(const ParamInfoList &other);
    ~ParamInfoList() override;

    /** Writes the body. Each event type is fetched by its key and written without it. */
    void writePrivate(QContainerPacket &packet) const override;

    /**
     * Reads the body; use a fresh message. Nothing is cleared first, and what was read
     * before a failure stays. No line is logged.
     *
     * 1. Reads the count as a signed 32-bit number and, when it is above 0, that many
     *    descriptions, appending each to `params`; the first that does not read makes the
     *    result false at once.
     * 2. Reads the second count; false when it differs from the size of `params` (so a
     *    used message fails here).
     * 3. Reads `rootItem`; false when that read fails.
     * 4. Reads the number of event types as unsigned and that many descriptions, each
     *    stored under its `id` (widened from 16 bits, so 65535 stays 65535); a repeated
     *    `id` keeps the later description.
     * 5. Reads `rawData` and `translations`, and returns true.
     *
     * Only steps 1 to 3 test anything: a body that ends in steps 4 or 5 reads as zeros and
     * empty values. An event type count larger than the data holds stops where the data
     * ends, with the result that reading every announced entry would have had.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /** All parameter descriptions. */
    QList<ParamInfo> params;
    /** The root of the group tree, owned by the message. */
    ParamGroupItem rootItem;
    /** The event catalogue by event type number. */
    QHash<unsigned int, EventTypeInfoStruct> eventTypes;
    /** A block of bytes carried unchanged. */
    QByteArray rawData;
    /** A table of texts by number, carried unchanged. */
    QHash<int, TranslationItemNew> translations;
};

#endif // PARAMINFOLIST_H
