#ifndef PARAMGROUPITEM_H
#define PARAMGROUPITEM_H

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

#include "qxmltranslation.h"
#include "telorparams5_export.h"

class QContainerPacket;
class QXmlStreamWriter;

/**
 * @brief One node of the tree in which operators arrange parameters: a group, a field
 * or a parameter, with a set of string tags and the child nodes it owns.
 *
 * The node has no parent pointer, so every operation works downward from the node it is
 * called on. The tag "id" is the only key with a meaning here: on a ParamItem node it
 * holds the parameter identifier in decimal text, and only ParamItem nodes count as
 * parameters.
 *
 * Ownership: a node owns the non-null entries of `children` and destroys them, front to
 * back, when it is destroyed, and nothing else. Whoever holds the root owns the whole
 * tree. A child that leaves `children` (through removeParameters(), takeParameters() or
 * the caller's own list operations) belongs to whoever holds a pointer to it, as with
 * Qt's own take functions: it may be deleted, or appended to another node's `children`,
 * which then owns it. Every operation skips null entries of `children`.
 *
 * Wire form of a node, one record with its children's records nested inside it:
 *
 * | Order | Item              | Encoding                                                  |
 * |-------|-------------------|-----------------------------------------------------------|
 * | 1     | `type`            | 32-bit signed integer                                     |
 * | 2     | `flag`            | one byte                                                  |
 * | 3     | `tags`            | Qt's form of QHash<QString, QString> (last entry first)  |
 * | 4     | child count       | 32-bit signed integer, the size of `children`             |
 * | 5     | children          | one record for each non-null child, in list order         |
 * | 6     | child count again | the same number as item 4                                 |
 *
 * A null entry is counted but writes no record, so a tree with a null child does not
 * read back. The trailing count is the record's only integrity check.
 *
 * XML form (written only): one element named by getXmlName(), with every tag as an
 * attribute, holding the elements of the non-null children; see writeToXml().
 */
class TELORPARAMS5_EXPORT ParamGroupItem
{
public:
    /**
     * What a node is. Travels as a 32-bit integer, and a node keeps whatever number it
     * received, also one without an enumerator.
     */
    enum ItemType : int {
        NoItem = 0, ///< The state of a node before it is filled.
        GroupItem = 1,
        FieldItem = 2,
        ParamItem = 3,
    };

    /**
     * The deepest level of a tree that read() accepts. The node read() is called on is
     * level 1, its children level 2, and so on. A node at level MaxDepth that announces
     * one or more children makes read() return false without building a child: the
     * stream then stands after that node's child count, and the node is not attached to
     * its parent. Every tree of at most MaxDepth levels reads as it is written.
     */
    static constexpr int MaxDepth = 128;

    /** A node of @p type with @p flag and @p tags, and no children. */
    explicit ParamGroupItem(ItemType type = NoItem, bool flag = false,
                            const QHash<QString, QString> &tags = QHash<QString, QString>());
    /** A NoItem node with no flag, tags or children, then assigned from @p other: a deep copy. */
    ParamGroupItem(const ParamGroupItem &other);
    /** Destroys every non-null entry of `children`, front to back; nothing else. */
    virtual ~ParamGroupItem();

    /**
     * Copies `type`, `flag` and `tags` (shared until written), then appends a deep copy of
     * every non-null child of @p other to `children`.
     *
     * The existing children stay: assigning to a node that has children adds to them, and
     * only an empty node becomes a plain copy. Assigning a node to itself keeps its
     * children and appends a copy of each of them.
     */
    ParamGroupItem &operator=(const ParamGroupItem &other);

    /**
     * A new node, owned by the caller: a NoItem node assigned from this one, so a deep
     * copy of the whole subtree. The argument has no effect.
     */
    ParamGroupItem *clone(bool);
    /** The same copy, from a const node. */
    ParamGroupItem *clone(bool) const;

    /**
     * The "id" tag converted in base 10. A missing tag and a tag that is not an unsigned
     * number both give 0.
     */
    unsigned int getID() const;
    /**
     * True if a direct, non-null ParamItem child has getID() equal to @p id. An @p id of
     * 0 is never found. Grandchildren are not searched.
     */
    bool containsID(unsigned int id) const;
    /**
     * The identifiers of the direct ParamItem children, in list order. A child whose "id"
     * tag is missing or is not an unsigned number in base 10 is left out; a tag "0" is
     * listed as 0.
     */
    QList<unsigned int> getParamList() const;

    /**
     * Unlinks from `children` every direct ParamItem child whose getID() is in @p ids,
     * scanning the whole list. Returns true only if @p ids is not empty and the number of
     * children unlinked equals its size; children that match are unlinked in every case.
     *
     * The unlinked children are not destroyed, and this node no longer owns them: they
     * belong to whoever holds pointers to them, who may delete them or append them to
     * another node. A caller that holds no pointer to them loses them; to receive them,
     * use takeParameters(), which unlinks exactly the same children.
     */
    bool removeParameters(const QList<unsigned int> &ids);
    /**
     * Unlinks exactly the children that removeParameters(@p ids) unlinks, with the same
     * effect on `children`, and returns them in the order they stood in the list. The
     * caller owns the returned nodes from then on (delete them, or append them to
     * another node). If @p complete is not null, it receives what removeParameters()
     * would have returned.
     */
    QList<ParamGroupItem *> takeParameters(const QList<unsigned int> &ids, bool *complete = nullptr);

    /**
     * Stores the value of every key of @p tags that this node already has, when it
     * differs. Keys the node doesn't have are ignored, and tags missing from @p tags stay.
     * Returns true if at least one value changed. Children are not touched.
     */
    bool refresh(const QHash<QString, QString> &tags);

    /** The value of the tag @p key, or a null string if the node has no such tag. */
    QString tagValue(const QString &key) const;
    /** The same as tagValue(@p key). */
    QString name(QString key = QStringLiteral("name")) const;

    /**
     * The XML element name: "Group" for a GroupItem and for a FieldItem, "Param" for a
     * ParamItem, a null string for NoItem and for any other value.
     */
    QString getXmlName() const;
    /**
     * The type's name: "Group", "Field" or "Param", a null string for NoItem and for any
     * other value.
     */
    QString getTypeName() const;

    /**
     * Writes one element for this node into @p writer, which the caller owns and has
     * positioned: named by getXmlName() (an empty name for NoItem), with every tag as an
     * attribute in the hash's forward order, and with the elements of the non-null
     * children inside it, in list order. No document is started, `flag` is not written,
     * and the element has no text.
     */
    void writeToXml(QXmlStreamWriter &writer);

    /** Writes the wire form of this node and its subtree into @p packet. */
    void write(QContainerPacket &packet) const;

    /**
     * Reads the wire form from @p packet into this node; use a fresh node.
     *
     * `type`, `flag` and `tags` are replaced. Children are appended, never cleared first:
     * each child is read into a new NoItem node and attached when its read succeeds.
     * Returns false at once when a child's read fails (that child is destroyed, the
     * children attached before it stay, and no trailing count is read); otherwise
     * returns whether the trailing count equals the size of `children`, so a node that
     * already had children reads as false.
     *
     * If the stream fails while reading the tags, the tags are empty and reading goes on.
     * A record cut short after `flag` reads as a childless node, and true. When the data
     * ends before all announced children are read, read() returns false without building
     * the missing children, as every such record would read as false anyway. A tree
     * deeper than MaxDepth reads as false.
     */
    bool read(QContainerPacket &packet);

    /**
     * The operators' log text of the tags: a line "Tags: " followed by one line per tag,
     * in the hash's forward order, each made of @p prefix and
     * `name="<key>"; value="<value>";`. Empty for a node without tags. The text is
     * translatable through ::multiTranslator.
     */
    QXmlTranslation getTagsDetails(const QString &prefix) const;
    /**
     * The identifiers of the direct ParamItem children, separated by ", ". The separator
     * goes in front of every identifier of a child whose index in `children` is above 0,
     * so the text starts with ", " when the first child is not listed. A child whose "id"
     * tag is not an unsigned number is skipped.
     */
    QXmlTranslation getParamsDetails() const;

    /** What the node is. */
    ItemType type;
    /** A flag the constructor sets and that assignment and the wire carry; not interpreted here. */
    bool flag;
    /** The child nodes, in display order, owned by this node. Entries may be null. */
    QList<ParamGroupItem *> children;
    /** The node's named values. */
    QHash<QString, QString> tags;

private:
    bool readAtLevel(QContainerPacket &packet, int level);
};

#endif // PARAMGROUPITEM_H
