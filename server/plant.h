#ifndef PLANT_H
#define PLANT_H

#include "eventtypeinfostruct.h"
#include "paramgroupitem.h"
#include "paraminfo.h"
#include "plantdriver.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

/**
 * @brief One parameter of the plant: its description as clients receive it, its driver
 * and its tags.
 *
 * `kind` tells which parameter object the server keeps for it; a status word is a
 * discrete parameter (value type 2) whose description has a bit field. A field's cells
 * are described in `info.elements`; each cell is a variant parameter with an identifier
 * of its own, moved by the field's driver with a phase that grows with the cell's index.
 */
struct PlantParameter
{
    enum Kind { Double, Discrete, Status, String, Variant, List, Map, Field };

    Kind kind = Double;
    ParamInfo info;
    PlantDriver driver;
    /** Tag type key to the tag's value on this parameter. */
    QHash<QString, QString> tags;
};

/**
 * @brief Everything a plant file describes: parameters, the group tree, the event type
 * catalogue and the tag types.
 *
 * A value: copy it freely. The group tree is held by value and owns its nodes.
 */
class Plant
{
public:
    Plant() = default;
    Plant(const Plant &other) = default;
    Plant &operator=(const Plant &other) = delete;

    /** The plant's display name (attribute "name" of the root element). */
    QString name;
    /** The parameters in file order. */
    QList<PlantParameter> parameters;
    /** The root of the group tree: a GroupItem whose "name" tag is the plant's name. */
    ParamGroupItem rootItem{ParamGroupItem::GroupItem};
    /** The event type catalogue by type number. */
    QHash<unsigned int, EventTypeInfoStruct> eventTypes;
    /** Tag type key, then text key (a language), then the text. */
    QHash<QString, QHash<QString, QString>> tagTexts;
    /** The event type of limit alarm transitions. */
    unsigned short alarmEventType = 1;
    /** The event type of status-word bit changes. */
    unsigned short bitEventType = 2;

    /** The parameter with identifier @p id, or null; cells of a field are not parameters here. */
    const PlantParameter *parameter(unsigned int id) const;
    /** The descriptions of every parameter, in file order. */
    QList<ParamInfo> descriptions() const;
    /**
     * The tag block that clients hand to TELORTagObject::read: the tag type texts, the
     * tags of each parameter and, for each tag type and value, the parameters that carry
     * it. Written through a TELORDataStream opened for writing.
     */
    QByteArray tagBlock() const;
};

#endif // PLANT_H
