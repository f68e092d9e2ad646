#ifndef PARAMGROUPREMOVEPARAMETERSINFO_H
#define PARAMGROUPREMOVEPARAMETERSINFO_H

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>

#include "qprotocolstruct.h"
#include "qxmltranslation.h"
#include "telorparams5_export.h"

/**
 * @brief Removing parameters from several groups: lists of parameter records under
 * string keys.
 *
 * Identity 2, 14, 1, and 14 it stays: assignment copies `serviceId` and `messageType`
 * from the source but always sets `messageId` to 14, and leaves the other words of the
 * target's header as they are. The copy constructor starts from a default header and
 * assigns.
 *
 * Body, in this order: `extra` (QString), the number of groups (32 bits), one entry per
 * key of `removed` in ascending key order, and the number of groups again. An entry is
 * the size of its list (32 bits), the key (QString), each record (`id` in 32 bits, then
 * `name`, `extra1`, `extra2`, `path` as QString), and the size of the list again.
 */
class TELORPARAMS5_EXPORT ParamGroupRemoveParametersInfo : public QProtocolStruct
{
public:
    /** One parameter removed from a group. */
    struct Data {
        /** Parameter identifier. */
        unsigned int id = 0;
        /** Parameter text for the log. */
        QString name;
        /** Carried and copied, not read by this library. */
        QString extra1;
        /** Carried and copied, not read by this library. */
        QString extra2;
        /** The group's path; the log prints that of a list's first record. */
        QString path;

        /** True when all five fields are equal. */
        bool operator==(const Data &other) const
        {
            return id == other.id && name == other.name && extra1 == other.extra1 && extra2 == other.extra2
                && path == other.path;
        }
        /** The negation of operator==(). */
        bool operator!=(const Data &other) const { return !(*this == other); }
    };

    /** Identity 2, 14, 1, with empty `extra` and `removed`. */
    ParamGroupRemoveParametersInfo();
    /** A default header and empty fields, then assigned from @p other. */
    ParamGroupRemoveParametersInfo(const ParamGroupRemoveParametersInfo &other);
    ~ParamGroupRemoveParametersInfo() override;

    /** Writes the body. */
    void writePrivate(QContainerPacket &packet) const override;
    /**
     * Reads the body; use a fresh message. `removed` is not cleared: each group read is
     * stored under its key, replacing the list the key had. Returns false at once, without
     * storing that group, when a group's trailing list count differs from the records
     * read; otherwise returns whether the trailing group count equals the size of
     * `removed`, so a key that arrives twice makes the result false.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * Copies `serviceId` and `messageType`, sets `messageId` to 14, then copies `extra` and
     * `removed`. Not virtual.
     */
    ParamGroupRemoveParametersInfo &operator=(const ParamGroupRemoveParametersInfo &other);

    /**
     * The operators' log text: for each non-empty list in ascending key order, the line
     * "Path: " with the `path` of its first record, then its records numbered from 1
     * (three spaces and `<n> (ID=<id>): "<name>"`). Empty when no list has records.
     * Translated through ::multiTranslator.
     */
    QXmlTranslation getDetails() const;

    /** Carried and copied, not read by this library. */
    QString extra;
    /** What is removed: one list of records per group, by key. */
    QMap<QString, QList<Data>> removed;
};

#endif // PARAMGROUPREMOVEPARAMETERSINFO_H
