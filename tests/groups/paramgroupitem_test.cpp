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

TEST(GroupItem, RemoveParametersOfOneKnownAndOneUnknownRemovesTheKnownAndFails)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    ParamGroupItem *a = param(1);
    ParamGroupItem *b = param(2);
    root.children << a << b;
    EXPECT_FALSE(root.removeParameters({1, 77}));
    ASSERT_EQ(root.children.size(), 1);
    EXPECT_EQ(root.children.at(0), b);
    // Unlinked, not destroyed: the pointer stays usable while the node lives.
    EXPECT_EQ(a->getID(), 1u);
}

TEST(GroupItem, RemoveParametersResults)
{
    {
        ParamGroupItem root(ParamGroupItem::GroupItem);
        EXPECT_FALSE(root.removeParameters({1}));
        EXPECT_FALSE(root.removeParameters({}));
    }
    {
        ParamGroupItem root(ParamGroupItem::GroupItem);
        root.children << param(1) << param(2);
        EXPECT_FALSE(root.removeParameters({}));
        EXPECT_EQ(root.children.size(), 2);
    }
    {
        // All named identifiers found, once each.
        ParamGroupItem root(ParamGroupItem::GroupItem);
        ParamGroupItem *keep = group(QStringLiteral("g"));
        root.children << param(1) << keep << nullptr << param(2) << param(3);
        EXPECT_TRUE(root.removeParameters({3, 1}));
        ASSERT_EQ(root.children.size(), 3);
        EXPECT_EQ(root.children.at(0), keep);
        EXPECT_EQ(root.children.at(1), nullptr);
        EXPECT_EQ(root.children.at(2)->getID(), 2u);
    }
    {
        // One identifier named twice, one matching child: removed, and false.
        ParamGroupItem root(ParamGroupItem::GroupItem);
        root.children << param(4);
        EXPECT_FALSE(root.removeParameters({4, 4}));
        EXPECT_TRUE(root.children.isEmpty());
    }
    {
        // Two children with one identifier, named once: both removed, and false.
        ParamGroupItem root(ParamGroupItem::GroupItem);
        root.children << param(4) << param(5) << param(4);
        EXPECT_FALSE(root.removeParameters({4}));
        ASSERT_EQ(root.children.size(), 1);
        EXPECT_EQ(root.children.at(0)->getID(), 5u);
    }
    {
        // Only parameters are removed: a group or a field with the same "id" stays.
        ParamGroupItem root(ParamGroupItem::GroupItem);
        root.children << new ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("id"), QStringLiteral("6")}})
                      << new ParamGroupItem(ParamGroupItem::FieldItem, false, Tags{{QStringLiteral("id"), QStringLiteral("6")}});
        EXPECT_FALSE(root.removeParameters({6}));
        EXPECT_EQ(root.children.size(), 2);
    }
    {
        // A parameter without a usable "id" has getID() 0 and is removed by 0.
        ParamGroupItem root(ParamGroupItem::GroupItem);
        root.children << param(QStringLiteral("junk")) << param(8);
        EXPECT_TRUE(root.removeParameters({0}));
        ASSERT_EQ(root.children.size(), 1);
        EXPECT_EQ(root.children.at(0)->getID(), 8u);
    }
}

TEST(GroupItem, RemovedChildrenCanBeTakenOver)
{
    QStringList log;
    auto root = std::make_unique<ParamGroupItem>(ParamGroupItem::GroupItem);
    auto *a = new ParamGroupItem(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), QStringLiteral("1")}});
    root->children << a << param(2);
    EXPECT_TRUE(root->removeParameters({1}));
    const QList<ParamGroupItem *> taken = root->takeRemoved();
    ASSERT_EQ(taken.size(), 1);
    EXPECT_EQ(taken.at(0), a);
    EXPECT_TRUE(root->takeRemoved().isEmpty());
    root.reset(); // must not destroy a
    EXPECT_EQ(a->getID(), 1u);
    delete a;
}

TEST(GroupItem, RemovedChildrenAreDestroyedWithTheirFormerParent)
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
    }
    EXPECT_EQ(log, (QStringList{QStringLiteral("kept"), QStringLiteral("removed")}));
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
