#include "paramgroupitem.h"

#include "qcontainerpacket.h"
#include "wirestream_p.h"

#include <QtCore/QXmlStreamWriter>

#include <algorithm>

namespace {

const QString IdTag = QStringLiteral("id");

/** The identifier in the "id" tag of @p item, and whether the tag is an unsigned number. */
unsigned int parsedId(const ParamGroupItem &item, bool *ok)
{
    return item.tagValue(IdTag).toUInt(ok, 10);
}

} // namespace

ParamGroupItem::ParamGroupItem(ItemType type, bool flag, const QHash<QString, QString> &tags)
    : type(type)
    , flag(flag)
    , tags(tags)
{
}

ParamGroupItem::ParamGroupItem(const ParamGroupItem &other)
    : type(NoItem)
    , flag(false)
{
    *this = other;
}

ParamGroupItem::~ParamGroupItem()
{
    for (ParamGroupItem *child : qAsConst(children))
        delete child;
}

ParamGroupItem &ParamGroupItem::operator=(const ParamGroupItem &other)
{
    type = other.type;
    flag = other.flag;
    tags = other.tags;
    // A copy of the list, so that appending to our own list cannot disturb the walk when
    // a node is assigned to itself.
    const QList<ParamGroupItem *> source = other.children;
    for (const ParamGroupItem *child : source) {
        if (child)
            children.append(new ParamGroupItem(*child));
    }
    return *this;
}

ParamGroupItem *ParamGroupItem::clone(bool)
{
    return static_cast<const ParamGroupItem *>(this)->clone(true);
}

ParamGroupItem *ParamGroupItem::clone(bool) const
{
    auto *copy = new ParamGroupItem(NoItem, false, QHash<QString, QString>());
    *copy = *this;
    return copy;
}

unsigned int ParamGroupItem::getID() const
{
    bool ok = false;
    const unsigned int id = tags.value(IdTag, QStringLiteral("0")).toUInt(&ok, 10);
    return ok ? id : 0;
}

bool ParamGroupItem::containsID(unsigned int id) const
{
    if (id == 0)
        return false;
    for (const ParamGroupItem *child : children) {
        if (child && child->type == ParamItem && child->getID() == id)
            return true;
    }
    return false;
}

QList<unsigned int> ParamGroupItem::getParamList() const
{
    QList<unsigned int> ids;
    for (const ParamGroupItem *child : children) {
        if (!child || child->type != ParamItem)
            continue;
        bool ok = false;
        const unsigned int id = parsedId(*child, &ok);
        if (ok)
            ids.append(id);
    }
    return ids;
}

bool ParamGroupItem::removeParameters(const QList<unsigned int> &ids)
{
    bool complete = false;
    // The unlinked children are the caller's from here on; this node forgets them.
    takeParameters(ids, &complete);
    return complete;
}

QList<ParamGroupItem *> ParamGroupItem::takeParameters(const QList<unsigned int> &ids, bool *complete)
{
    QList<ParamGroupItem *> taken;
    for (int i = 0; i < children.size();) {
        ParamGroupItem *child = children.at(i);
        if (child && child->type == ParamItem && ids.contains(child->getID())) {
            children.removeAt(i);
            taken.append(child);
        } else {
            ++i;
        }
    }
    if (complete)
        *complete = !ids.isEmpty() && taken.size() == ids.size();
    return taken;
}

bool ParamGroupItem::refresh(const QHash<QString, QString> &newTags)
{
    bool changed = false;
    for (auto it = newTags.constBegin(); it != newTags.constEnd(); ++it) {
        auto own = tags.find(it.key());
        if (own != tags.end() && own.value() != it.value()) {
            own.value() = it.value();
            changed = true;
        }
    }
    return changed;
}

QString ParamGroupItem::tagValue(const QString &key) const
{
    return tags.value(key);
}

QString ParamGroupItem::name(QString key) const
{
    return tagValue(key);
}

QString ParamGroupItem::getXmlName() const
{
    switch (type) {
    case GroupItem:
    case FieldItem:
        return QStringLiteral("Group");
    case ParamItem:
        return QStringLiteral("Param");
    case NoItem:
        break;
    }
    return QString();
}

QString ParamGroupItem::getTypeName() const
{
    switch (type) {
    case GroupItem:
        return QStringLiteral("Group");
    case FieldItem:
        return QStringLiteral("Field");
    case ParamItem:
        return QStringLiteral("Param");
    case NoItem:
        break;
    }
    return QString();
}

void ParamGroupItem::writeToXml(QXmlStreamWriter &writer)
{
    writer.writeStartElement(getXmlName());
    for (auto it = tags.constBegin(); it != tags.constEnd(); ++it)
        writer.writeAttribute(it.key(), it.value());
    for (ParamGroupItem *child : qAsConst(children)) {
        if (child)
            child->writeToXml(writer);
    }
    writer.writeEndElement();
}

void ParamGroupItem::write(QContainerPacket &packet) const
{
    QDataStream &stream = packet;
    stream << qint32(type) << flag << tags;
    stream << qint32(children.size());
    for (const ParamGroupItem *child : children) {
        if (child)
            child->write(packet);
    }
    stream << qint32(children.size());
}

bool ParamGroupItem::read(QContainerPacket &packet)
{
    return readAtLevel(packet, 1);
}

bool ParamGroupItem::readAtLevel(QContainerPacket &packet, int level)
{
    QDataStream &stream = packet;
    qint32 newType = NoItem;
    stream >> newType >> flag;
    // Qt's reader for an associative container: the old tags are replaced, and a stream
    // that fails between the pairs leaves them empty; reading goes on regardless.
    TelorWire::readHash(stream, tags);
    type = static_cast<ItemType>(newType);

    qint32 count = 0;
    stream >> count;
    for (qint32 i = 0; i < count; ++i) {
        // At the end of the data every further child would read as an empty node and the
        // trailing count as 0, which can't match: the record fails whatever follows, so
        // the empty children are not built.
        if (level >= MaxDepth || TelorWire::bytesLeft(stream) == 0)
            return false;
        auto *child = new ParamGroupItem(NoItem, false, QHash<QString, QString>());
        if (!child->readAtLevel(packet, level + 1)) {
            delete child;
            return false;
        }
        children.append(child);
    }

    qint32 trailing = 0;
    stream >> trailing;
    return trailing == children.size();
}
