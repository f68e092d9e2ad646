// The group tree node: names of its types, identifiers of its parameters, removal and
// refreshing, and the ownership and copying of its children.

#include "grouptest.h"

#include <gtest/gtest.h>

using namespace grouptest;

namespace {

/** A node that records its destruction, in order, in a shared log. */
class LoggedItem : public ParamGroupItem
{
public:
    LoggedItem(QStringList *log, const QString &name)
        : ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), name}})
        , m_log(log)
    {
    }
    ~LoggedItem() override { m_log->append(tagValue(QStringLiteral("name"))); }

private:
    QStringList *m_log;
};

} // namespace

TEST(GroupItem, ConstructorCopiesItsValuesAndHasNoChildren)
{
    const Tags tags{{QStringLiteral("name"), QStringLiteral("Pumps")}};
    ParamGroupItem item(ParamGroupItem::GroupItem, true, tags);
    EXPECT_EQ(item.type, ParamGroupItem::GroupItem);
    EXPECT_TRUE(item.flag);
    EXPECT_EQ(item.tags, tags);
    EXPECT_TRUE(item.children.isEmpty());

    ParamGroupItem empty;
    EXPECT_EQ(empty.type, ParamGroupItem::NoItem);
    EXPECT_FALSE(empty.flag);
    EXPECT_TRUE(empty.tags.isEmpty());
}

TEST(GroupItem, TypeNamesAndXmlNames)
{
    const struct {
        int type;
        const char *typeName;
        const char *xmlName;
    } rows[] = {{1, "Group", "Group"}, {2, "Field", "Group"}, {3, "Param", "Param"}};
    for (const auto &row : rows) {
        const ParamGroupItem item(static_cast<ParamGroupItem::ItemType>(row.type));
        EXPECT_EQ(item.getTypeName(), QLatin1String(row.typeName)) << row.type;
        EXPECT_EQ(item.getXmlName(), QLatin1String(row.xmlName)) << row.type;
    }
    for (int type : {0, 4, -1, 1000}) {
        const ParamGroupItem item(static_cast<ParamGroupItem::ItemType>(type));
        EXPECT_TRUE(item.getTypeName().isNull()) << type;
        EXPECT_TRUE(item.getXmlName().isNull()) << type;
    }
}

TEST(GroupItem, FieldIsWrittenAsGroupButNamedField)
{
    const ParamGroupItem field(ParamGroupItem::FieldItem);
    EXPECT_EQ(field.getXmlName(), QStringLiteral("Group"));
    EXPECT_EQ(field.getTypeName(), QStringLiteral("Field"));
}

TEST(GroupItem, TagValueAndNameGiveNullForAMissingKey)
{
    const ParamGroupItem item(ParamGroupItem::GroupItem, false,
                              Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}, {QStringLiteral("empty"), QString()}});
    EXPECT_EQ(item.tagValue(QStringLiteral("name")), QStringLiteral("Pumps"));
    EXPECT_EQ(item.name(QStringLiteral("name")), QStringLiteral("Pumps"));
    EXPECT_EQ(item.name(), QStringLiteral("Pumps"));
    EXPECT_TRUE(item.tagValue(QStringLiteral("other")).isNull());
    EXPECT_TRUE(item.name(QStringLiteral("other")).isNull());
    EXPECT_TRUE(item.tagValue(QStringLiteral("empty")).isEmpty());
}

TEST(GroupItem, GetIdReadsTheIdTagInDecimal)
{
    EXPECT_EQ(ParamGroupItem(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), QStringLiteral("42")}}).getID(), 42u);
    EXPECT_EQ(ParamGroupItem(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), QStringLiteral("4294967295")}}).getID(),
              4294967295u);
    // Missing, unparsable, hexadecimal, negative and too large all give 0.
    EXPECT_EQ(ParamGroupItem(ParamGroupItem::ParamItem).getID(), 0u);
    for (const char *text : {"abc", "0x10", "-1", "4294967296", "", "1.5"}) {
        const ParamGroupItem item(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), s(text)}});
        EXPECT_EQ(item.getID(), 0u) << text;
    }
    // A group answers too: getID looks at the tag, not at the type.
    EXPECT_EQ(ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("id"), QStringLiteral("7")}}).getID(), 7u);
}

TEST(GroupItem, ContainsIdLooksAtDirectParameterChildrenOnly)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    root.children << param(5) << nullptr;
    ParamGroupItem *sub = group(QStringLiteral("sub"));
    sub->children << param(9);
    root.children << sub;
    auto *field = new ParamGroupItem(ParamGroupItem::FieldItem, false, Tags{{QStringLiteral("id"), QStringLiteral("11")}});
    root.children << field;

    EXPECT_TRUE(root.containsID(5));
    EXPECT_FALSE(root.containsID(9));  // a grandchild
    EXPECT_FALSE(root.containsID(11)); // a field with an "id" tag is not a parameter
    EXPECT_FALSE(root.containsID(6));
}

TEST(GroupItem, ContainsIdOfZeroIsFalseEvenIfAChildHasIdZero)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    root.children << param(QStringLiteral("0")) << param(QStringLiteral("junk"));
    EXPECT_EQ(root.children.at(0)->getID(), 0u);
    EXPECT_FALSE(root.containsID(0));
}

TEST(GroupItem, ParamListSkipsUnparsableIdsAndKeepsZero)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    ParamGroupItem *sub = group(QStringLiteral("sub"));
    sub->children << param(99);
    root.children << param(3) << sub << nullptr << param(QStringLiteral("x1")) << param(QStringLiteral("0"))
                  << new ParamGroupItem(ParamGroupItem::ParamItem) << param(1);
    root.children << new ParamGroupItem(ParamGroupItem::FieldItem, false, Tags{{QStringLiteral("id"), QStringLiteral("8")}});
    EXPECT_EQ(root.getParamList(), (QList<unsigned int>{3, 0, 1}));
    EXPECT_TRUE(ParamGroupItem().getParamList().isEmpty());
}

namespace {

/**
 * The children of @p before that are no longer in @p node's list, in their old order: what
 * a removal unlinked. The test owns them from then on.
 */
QList<ParamGroupItem *> unlinkedSince(const QList<ParamGroupItem *> &before, const ParamGroupItem &node)
{
    QList<ParamGroupItem *> gone;
    for (ParamGroupItem *child : before) {
        if (child && !node.children.contains(child))
            gone << child;
    }
    return gone;
}

/** The identifiers of @p items, null entries as -1, in list order. */
QList<int> idsOf(const QList<ParamGroupItem *> &items)
{
    QList<int> ids;
    for (const ParamGroupItem *item : items)
        ids << (item ? int(item->getID()) : -1);
    return ids;
}

} // namespace

TEST(GroupItem, RemoveParametersOfOneKnownAndOneUnknownRemovesTheKnownAndFails)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    ParamGroupItem *a = param(1);
    ParamGroupItem *b = param(2);
    root.children << a << b;
    EXPECT_FALSE(root.removeParameters({1, 77}));
    ASSERT_EQ(root.children.size(), 1);
    EXPECT_EQ(root.children.at(0), b);
    // Unlinked, not destroyed: the pointer stays usable, and the caller deletes it.
    EXPECT_EQ(a->getID(), 1u);
    delete a;
}

namespace {

/** One removal: the tree's children, the identifiers named, and what must come of it. */
struct RemovalCase {
    const char *what;
    std::function<QList<ParamGroupItem *>()> children;
    QList<unsigned int> ids;
    bool result;
    QList<int> kept;  ///< identifiers left in `children`, null entries as -1
    QList<int> taken; ///< identifiers unlinked, in list order
};

QList<RemovalCase> removalCases()
{
    const auto typed = [](ParamGroupItem::ItemType type, const char *id) {
        return new ParamGroupItem(type, false, Tags{{QStringLiteral("id"), QLatin1String(id)}});
    };
    return {
        {"no children", [] { return QList<ParamGroupItem *>(); }, {1}, false, {}, {}},
        {"no children, no identifiers", [] { return QList<ParamGroupItem *>(); }, {}, false, {}, {}},
        {"no identifiers", [] { return QList<ParamGroupItem *>{param(1), param(2)}; }, {}, false, {1, 2}, {}},
        {"all found once each",
         [] { return QList<ParamGroupItem *>{param(1), group(QStringLiteral("g")), nullptr, param(2), param(3)}; },
         {3, 1}, true, {0, -1, 2}, {1, 3}},
        {"an identifier that no child has", [] { return QList<ParamGroupItem *>{param(1), param(2)}; }, {1, 77},
         false, {2}, {1}},
        {"one identifier twice, one matching child", [] { return QList<ParamGroupItem *>{param(4)}; }, {4, 4}, false,
         {}, {4}},
        {"two children with one identifier, named once",
         [] { return QList<ParamGroupItem *>{param(4), param(5), param(4)}; }, {4}, false, {5}, {4, 4}},
        {"only parameters are removed",
         [typed] {
             return QList<ParamGroupItem *>{typed(ParamGroupItem::GroupItem, "6"), typed(ParamGroupItem::FieldItem, "6")};
         },
         {6}, false, {6, 6}, {}},
        {"a parameter without a usable id is removed by 0",
         [] { return QList<ParamGroupItem *>{param(QStringLiteral("junk")), param(8)}; }, {0}, true, {8}, {0}},
    };
}

} // namespace

TEST(GroupItem, RemoveParametersResultsAndEffects)
{
    for (const RemovalCase &c : removalCases()) {
        SCOPED_TRACE(c.what);
        ParamGroupItem root(ParamGroupItem::GroupItem);
        root.children = c.children();
        const QList<ParamGroupItem *> before = root.children;
        EXPECT_EQ(root.removeParameters(c.ids), c.result);
        const QList<ParamGroupItem *> gone = unlinkedSince(before, root);
        EXPECT_EQ(idsOf(root.children), c.kept);
        EXPECT_EQ(idsOf(gone), c.taken);
        // The node no longer owns them: the caller deletes them before the node dies.
        qDeleteAll(gone);
    }
}

TEST(GroupItem, TakeParametersUnlinksTheSameChildrenAndHandsThemOverInListOrder)
{
    for (const RemovalCase &c : removalCases()) {
        SCOPED_TRACE(c.what);
        ParamGroupItem root(ParamGroupItem::GroupItem);
        root.children = c.children();
        const QList<ParamGroupItem *> before = root.children;
        bool complete = !c.result;
        const QList<ParamGroupItem *> taken = root.takeParameters(c.ids, &complete);
        EXPECT_EQ(complete, c.result);
        EXPECT_EQ(idsOf(root.children), c.kept);
        EXPECT_EQ(taken, unlinkedSince(before, root));
        EXPECT_EQ(idsOf(taken), c.taken);
        qDeleteAll(taken);
    }
    // Without the flag, the same children come back.
    ParamGroupItem root(ParamGroupItem::GroupItem);
    ParamGroupItem *second = param(2);
    root.children << param(1) << second << param(3);
    const QList<ParamGroupItem *> taken = root.takeParameters({2});
    EXPECT_EQ(taken, (QList<ParamGroupItem *>{second}));
    qDeleteAll(taken);
}

TEST(GroupItem, UnlinkedChildrenDeletedByTheCallerAreNotDestroyedAgain)
{
    QStringList log;
    {
        ParamGroupItem root(ParamGroupItem::GroupItem);
        auto *removed = new LoggedItem(&log, QStringLiteral("removed"));
        removed->type = ParamGroupItem::ParamItem;
        removed->tags.insert(QStringLiteral("id"), QStringLiteral("3"));
        root.children << new LoggedItem(&log, QStringLiteral("kept")) << removed;
        EXPECT_TRUE(root.removeParameters({3}));
        EXPECT_TRUE(log.isEmpty());
        delete removed;
        EXPECT_EQ(log, QStringList{QStringLiteral("removed")});
    }
    // The node destroyed only what was still in its list.
    EXPECT_EQ(log, (QStringList{QStringLiteral("removed"), QStringLiteral("kept")}));
}

TEST(GroupItem, ChildMovedToAnotherGroupIsDestroyedOnceByItsNewOwner)
{
    for (const bool formerFirst : {true, false}) {
        SCOPED_TRACE(formerFirst ? "former group destroyed first" : "new group destroyed first");
        QStringList log;
        auto former = std::make_unique<LoggedItem>(&log, QStringLiteral("former"));
        auto next = std::make_unique<LoggedItem>(&log, QStringLiteral("next"));
        auto *moved = new LoggedItem(&log, QStringLiteral("moved"));
        moved->type = ParamGroupItem::ParamItem;
        moved->tags.insert(QStringLiteral("id"), QStringLiteral("5"));
        former->children << moved;
        EXPECT_TRUE(former->removeParameters({5}));
        next->children << moved;

        if (formerFirst) {
            former.reset();
            EXPECT_EQ(log, QStringList{QStringLiteral("former")});
            EXPECT_EQ(moved->getID(), 5u); // still alive, held by the new group
            next.reset();
            EXPECT_EQ(log, (QStringList{QStringLiteral("former"), QStringLiteral("next"), QStringLiteral("moved")}));
        } else {
            next.reset();
            EXPECT_EQ(log, (QStringList{QStringLiteral("next"), QStringLiteral("moved")}));
            former.reset();
            EXPECT_EQ(log, (QStringList{QStringLiteral("next"), QStringLiteral("moved"), QStringLiteral("former")}));
        }
        EXPECT_EQ(log.count(QStringLiteral("moved")), 1);
    }
}

TEST(GroupItem, RefreshChangesOnlyKnownKeys)
{
    ParamGroupItem item(ParamGroupItem::GroupItem, false,
                        Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}, {QStringLiteral("color"), QStringLiteral("red")}});
    EXPECT_FALSE(item.refresh(Tags()));
    EXPECT_FALSE(item.refresh(Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}}));

    EXPECT_TRUE(item.refresh(Tags{{QStringLiteral("name"), QStringLiteral("Valves")}, {QStringLiteral("new"), QStringLiteral("x")}}));
    EXPECT_EQ(item.tags, (Tags{{QStringLiteral("name"), QStringLiteral("Valves")}, {QStringLiteral("color"), QStringLiteral("red")}}));
}

TEST(GroupItem, RefreshWithANewKeyReturnsFalseAndAddsNothing)
{
    ParamGroupItem item(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}});
    item.children << param(1);
    EXPECT_FALSE(item.refresh(Tags{{QStringLiteral("new"), QStringLiteral("x")}}));
    EXPECT_EQ(item.tags, (Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}}));
    // Children are not touched even when they have the key.
    EXPECT_TRUE(item.refresh(Tags{{QStringLiteral("name"), QStringLiteral("P")}, {QStringLiteral("id"), QStringLiteral("2")}}));
    EXPECT_EQ(item.children.at(0)->getID(), 1u);
}

TEST(GroupItem, DestructorDestroysChildrenFrontToBackAndSkipsNull)
{
    QStringList log;
    {
        ParamGroupItem root(ParamGroupItem::GroupItem);
        auto *first = new LoggedItem(&log, QStringLiteral("first"));
        first->children << new LoggedItem(&log, QStringLiteral("first.inner"));
        root.children << first << nullptr << new LoggedItem(&log, QStringLiteral("second"));
    }
    // A node logs before its base destroys its own children.
    EXPECT_EQ(log, (QStringList{QStringLiteral("first"), QStringLiteral("first.inner"), QStringLiteral("second")}));
}

namespace {

/** root(name=R) -> [g(name=G) -> [p 1, p 2], null, p 3] */
ParamGroupItem *sampleTree()
{
    auto *root = new ParamGroupItem(ParamGroupItem::GroupItem, true, Tags{{QStringLiteral("name"), QStringLiteral("R")}});
    ParamGroupItem *g = group(QStringLiteral("G"));
    g->children << param(1) << param(2);
    root->children << g << nullptr << param(3);
    return root;
}

void expectSameTree(const ParamGroupItem &a, const ParamGroupItem &b, bool skipNull)
{
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(a.flag, b.flag);
    EXPECT_EQ(a.tags, b.tags);
    QList<ParamGroupItem *> ac = a.children;
    QList<ParamGroupItem *> bc = b.children;
    if (skipNull) {
        ac.removeAll(nullptr);
        bc.removeAll(nullptr);
    }
    ASSERT_EQ(ac.size(), bc.size());
    for (int i = 0; i < ac.size(); ++i) {
        ASSERT_TRUE(ac.at(i) && bc.at(i));
        EXPECT_NE(ac.at(i), bc.at(i));
        expectSameTree(*ac.at(i), *bc.at(i), skipNull);
    }
}

} // namespace

TEST(GroupItem, CopyConstructorMakesADeepCopyWithoutNullEntries)
{
    std::unique_ptr<ParamGroupItem> root(sampleTree());
    const ParamGroupItem copy(*root);
    EXPECT_EQ(copy.children.size(), 2);
    expectSameTree(*root, copy, true);
    // The copy is independent of the source.
    root->children.at(0)->tags.insert(QStringLiteral("name"), QStringLiteral("changed"));
    EXPECT_EQ(copy.children.at(0)->tagValue(QStringLiteral("name")), QStringLiteral("G"));
}

TEST(GroupItem, CloneTrueAndCloneFalseGiveTheSameCopy)
{
    std::unique_ptr<ParamGroupItem> root(sampleTree());
    std::unique_ptr<ParamGroupItem> a(root->clone(true));
    std::unique_ptr<ParamGroupItem> b(root->clone(false));
    expectSameTree(*root, *a, true);
    expectSameTree(*a, *b, false);
    EXPECT_EQ(recordOf(*a), recordOf(*b));

    const ParamGroupItem &constRoot = *root;
    std::unique_ptr<ParamGroupItem> c(constRoot.clone(false));
    expectSameTree(*a, *c, false);
}

TEST(GroupItem, AssigningATwoChildNodeToAOneChildNodeGivesThreeChildren)
{
    ParamGroupItem target(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), QStringLiteral("target")}});
    ParamGroupItem *own = param(1);
    target.children << own;
    ParamGroupItem source(ParamGroupItem::FieldItem, true, Tags{{QStringLiteral("name"), QStringLiteral("source")}});
    source.children << param(2) << param(3);

    target = source;
    EXPECT_EQ(target.type, ParamGroupItem::FieldItem);
    EXPECT_TRUE(target.flag);
    EXPECT_EQ(target.tags, source.tags);
    ASSERT_EQ(target.children.size(), 3);
    EXPECT_EQ(target.children.at(0), own);
    EXPECT_EQ(target.children.at(1)->getID(), 2u);
    EXPECT_EQ(target.children.at(2)->getID(), 3u);
    EXPECT_NE(target.children.at(1), source.children.at(0));
}

TEST(GroupItem, AssigningANodeToItselfAppendsCopiesOfItsChildren)
{
    std::unique_ptr<ParamGroupItem> root(sampleTree());
    ParamGroupItem &self = *root;
    *root = self;
    ASSERT_EQ(root->children.size(), 5);
    EXPECT_EQ(root->children.at(1), nullptr);
    EXPECT_EQ(root->children.at(3)->children.size(), 2);
    EXPECT_EQ(root->children.at(4)->getID(), 3u);
    EXPECT_NE(root->children.at(3), root->children.at(0));
}

TEST(GroupItem, AssigningFromOwnChildCopiesItsSubtree)
{
    std::unique_ptr<ParamGroupItem> root(sampleTree());
    *root = *root->children.at(0);
    EXPECT_EQ(root->tagValue(QStringLiteral("name")), QStringLiteral("G"));
    ASSERT_EQ(root->children.size(), 5);
    EXPECT_EQ(root->children.at(3)->getID(), 1u);
    EXPECT_EQ(root->children.at(4)->getID(), 2u);
}
