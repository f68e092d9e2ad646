#ifndef GROUPTREEEDITOR_H
#define GROUPTREEEDITOR_H

#include <QtCore/QSet>
#include <QtCore/QString>

class ParamGroupCopyPasteRemoveInfo;
class ParamGroupInfo;
class ParamGroupInsertParametersInfo;
class ParamGroupItem;
class ParamGroupRemoveParametersInfo;

/**
 * @brief Applies the group change messages to the server's group tree.
 *
 * A path names a group by the "name" tags of the groups that lead to it from the root,
 * joined by "/" ("Boiler/Burner"); an empty path or "/" is the root. Each operation either
 * changes the tree as a whole or not at all, and then returns false with @p reason
 * saying why. The tree never grows beyond MaxNodes nodes or MaxDepth levels.
 *
 * - create: the message's `item` must be a group with a "name" that the target group does
 *   not have yet; a copy of it is appended to the group at `path`.
 * - paste: a copy of `item` (a group or field node with its subtree) is appended to the
 *   group at `path`.
 * - remove: the child group named `what` is removed from the group at `path`.
 * - copy: checks that `what` exists at `path`; the tree does not change.
 * - insert parameters: a parameter node (tags "id" and "name") for each entry of `params`,
 *   every identifier one of @p knownIds, goes into the group at `path`, at the place that
 *   `anchor` (the "name" or "id" tag of a child) and `mode` give; with no anchor, or one
 *   that is not found, at the end. In ReplaceMode the anchor goes.
 * - remove parameters: every entry of `removed` takes the parameter `id` out of the group
 *   named by its `path` (the key when `path` is empty).
 */
class GroupTreeEditor
{
public:
    static constexpr int MaxNodes = 20000;
    static constexpr int MaxDepth = 64;

    GroupTreeEditor(ParamGroupItem &root, const QSet<unsigned int> &knownIds);

    bool create(const ParamGroupInfo &message, QString *reason);
    bool paste(const ParamGroupCopyPasteRemoveInfo &message, QString *reason);
    bool copy(const ParamGroupCopyPasteRemoveInfo &message, QString *reason);
    bool remove(const ParamGroupCopyPasteRemoveInfo &message, QString *reason);
    bool insertParameters(const ParamGroupInsertParametersInfo &message, QString *reason);
    bool removeParameters(const ParamGroupRemoveParametersInfo &message, QString *reason);

    /** The group at @p path, or null. */
    ParamGroupItem *findGroup(const QString &path) const;
    /** The number of nodes of @p item's subtree, @p item included; stops counting past MaxNodes. */
    static int countNodes(const ParamGroupItem &item);
    /** The depth of @p item's subtree, 1 for a leaf; stops past MaxDepth. */
    static int depth(const ParamGroupItem &item);

private:
    /**
     * Whether a copy of @p item fits below the group at @p path within MaxNodes and
     * MaxDepth; if not, @p reason says which bound it would pass.
     */
    bool fits(const QString &path, const ParamGroupItem &item, QString *reason) const;

    ParamGroupItem &m_root;
    const QSet<unsigned int> &m_knownIds;
};

#endif // GROUPTREEEDITOR_H
