#include "grouptreeeditor.h"

#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupitem.h"
#include "paramgroupremoveparametersinfo.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace {

const QString nameKey = QStringLiteral("name");

int childGroupIndex(const ParamGroupItem &parent, const QString &name)
{
    for (int i = 0; i < parent.children.size(); ++i) {
        const ParamGroupItem *child = parent.children.at(i);
        if (child && child->type == ParamGroupItem::GroupItem && child->tagValue(nameKey) == name)
            return i;
    }
    return -1;
}

int pathDepth(const QString &path)
{
    return path.split(QLatin1Char('/'), Qt::SkipEmptyParts).size();
}

} // namespace

GroupTreeEditor::GroupTreeEditor(ParamGroupItem &root, const QSet<unsigned int> &knownIds)
    : m_root(root)
    , m_knownIds(knownIds)
{
}

int GroupTreeEditor::countNodes(const ParamGroupItem &item)
{
    int count = 1;
    QList<const ParamGroupItem *> stack{&item};
    while (!stack.isEmpty() && count <= MaxNodes) {
        const ParamGroupItem *node = stack.takeLast();
        for (const ParamGroupItem *child : node->children) {
            if (child) {
                ++count;
                stack.append(child);
            }
        }
    }
    return count;
}

int GroupTreeEditor::depth(const ParamGroupItem &item)
{
    QList<QPair<const ParamGroupItem *, int>> stack{qMakePair(&item, 1)};
    int deepest = 1;
    while (!stack.isEmpty() && deepest <= MaxDepth) {
        const auto entry = stack.takeLast();
        deepest = std::max(deepest, entry.second);
        for (const ParamGroupItem *child : entry.first->children) {
            if (child)
                stack.append(qMakePair(child, entry.second + 1));
        }
    }
    return deepest;
}

ParamGroupItem *GroupTreeEditor::findGroup(const QString &path) const
{
    ParamGroupItem *node = &m_root;
    const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const int index = childGroupIndex(*node, part);
        if (index < 0)
            return nullptr;
        node = node->children.at(index);
    }
    return node;
}

bool GroupTreeEditor::create(const ParamGroupInfo &message, QString *reason)
{
    ParamGroupItem *target = findGroup(message.path);
    const QString name = message.item.tagValue(nameKey);
    if (!target)
        *reason = QStringLiteral("no group \"%1\"").arg(message.path);
    else if (message.item.type != ParamGroupItem::GroupItem || name.isEmpty() || name.contains(QLatin1Char('/')))
        *reason = QStringLiteral("the new group must be a group node with a name and no \"/\"");
    else if (childGroupIndex(*target, name) >= 0)
        *reason = QStringLiteral("group \"%1\" already holds a group \"%2\"").arg(message.path, name);
    else if (fits(message.path, message.item, reason)) {
        target->children.append(message.item.clone(false));
        return true;
    }
    return false;
}

bool GroupTreeEditor::fits(const QString &path, const ParamGroupItem &item, QString *reason) const
{
    if (countNodes(m_root) + countNodes(item) > MaxNodes)
        *reason = QStringLiteral("the tree would grow beyond %1 nodes").arg(MaxNodes);
    else if (pathDepth(path) + depth(item) >= MaxDepth)
        *reason = QStringLiteral("the tree would nest deeper than %1 levels").arg(MaxDepth);
    else
        return true;
    return false;
}

bool GroupTreeEditor::paste(const ParamGroupCopyPasteRemoveInfo &message, QString *reason)
{
    ParamGroupItem *target = findGroup(message.path);
    if (!target)
        *reason = QStringLiteral("no group \"%1\"").arg(message.path);
    else if (message.item.type != ParamGroupItem::GroupItem && message.item.type != ParamGroupItem::FieldItem
             && message.item.type != ParamGroupItem::ParamItem)
        *reason = QStringLiteral("there is nothing to paste");
    else if (fits(message.path, message.item, reason)) {
        target->children.append(message.item.clone(false));
        return true;
    }
    return false;
}

bool GroupTreeEditor::copy(const ParamGroupCopyPasteRemoveInfo &message, QString *reason)
{
    const ParamGroupItem *target = findGroup(message.path);
    if (target && childGroupIndex(*target, message.what) >= 0)
        return true;
    *reason = QStringLiteral("no group \"%1\" in \"%2\"").arg(message.what, message.path);
    return false;
}

bool GroupTreeEditor::remove(const ParamGroupCopyPasteRemoveInfo &message, QString *reason)
{
    ParamGroupItem *target = findGroup(message.path);
    const int index = target ? childGroupIndex(*target, message.what) : -1;
    if (index < 0) {
        *reason = QStringLiteral("no group \"%1\" in \"%2\"").arg(message.what, message.path);
        return false;
    }
    delete target->children.takeAt(index);
    return true;
}

bool GroupTreeEditor::insertParameters(const ParamGroupInsertParametersInfo &message, QString *reason)
{
    ParamGroupItem *target = findGroup(message.path);
    if (!target) {
        *reason = QStringLiteral("no group \"%1\"").arg(message.path);
        return false;
    }
    if (message.params.isEmpty()) {
        *reason = QStringLiteral("no parameters to insert");
        return false;
    }
    if (countNodes(m_root) + message.params.size() > MaxNodes) {
        *reason = QStringLiteral("the tree would grow beyond %1 nodes").arg(MaxNodes);
        return false;
    }
    for (const ParamGroupInfoBase::Data &d : message.params) {
        if (!m_knownIds.contains(d.id)) {
            *reason = QStringLiteral("the plant has no parameter %1").arg(d.id);
            return false;
        }
    }
    int anchor = -1;
    if (!message.anchor.isEmpty()) {
        for (int i = 0; i < target->children.size() && anchor < 0; ++i) {
            const ParamGroupItem *child = target->children.at(i);
            if (child && (child->tagValue(nameKey) == message.anchor
                          || child->tagValue(QStringLiteral("id")) == message.anchor))
                anchor = i;
        }
    }
    int position = anchor < 0 ? target->children.size() : message.getInsertPosition(anchor);
    if (anchor >= 0 && message.mode == ParamGroupInsertParametersInfo::ReplaceMode) {
        delete target->children.takeAt(anchor);
        position = anchor;
    }
    position = std::min(std::max(position, 0), int(target->children.size()));
    for (const ParamGroupInfoBase::Data &d : message.params) {
        QHash<QString, QString> tags;
        tags.insert(QStringLiteral("id"), QString::number(d.id));
        tags.insert(nameKey, d.name);
        target->children.insert(position++, new ParamGroupItem(ParamGroupItem::ParamItem, false, tags));
    }
    return true;
}

bool GroupTreeEditor::removeParameters(const ParamGroupRemoveParametersInfo &message, QString *reason)
{
    // Check every group first, so that the edit is all or nothing.
    for (auto it = message.removed.constBegin(); it != message.removed.constEnd(); ++it) {
        for (const ParamGroupRemoveParametersInfo::Data &d : it.value()) {
            const QString path = d.path.isEmpty() ? it.key() : d.path;
            ParamGroupItem *group = findGroup(path);
            if (!group || !group->containsID(d.id)) {
                *reason = QStringLiteral("group \"%1\" holds no parameter %2").arg(path).arg(d.id);
                return false;
            }
        }
    }
    if (message.removed.isEmpty()) {
        *reason = QStringLiteral("nothing to remove");
        return false;
    }
    for (auto it = message.removed.constBegin(); it != message.removed.constEnd(); ++it) {
        for (const ParamGroupRemoveParametersInfo::Data &d : it.value()) {
            ParamGroupItem *group = findGroup(d.path.isEmpty() ? it.key() : d.path);
            if (!group)
                continue;
            qDeleteAll(group->takeParameters({d.id}));
        }
    }
    return true;
}
