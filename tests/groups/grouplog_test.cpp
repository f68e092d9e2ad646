// The operators' log texts of group items and group change messages, compared line for
// line in English and with a second language loaded into the global translator.

#include "grouptest.h"

#include "multitranslator.h"
#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupremoveparametersinfo.h"

#include <gtest/gtest.h>

using namespace grouptest;

namespace {

const QString Ru = QStringLiteral("ru");

/** Loads a Russian table of every group log text into ::multiTranslator. */
void loadRussian()
{
    const struct {
        const char *context, *source, *text;
    } rows[] = {
        {"ParamGroupItem", "name=\"%0\"; value=\"%1\";", "имя=\"%0\"; значение=\"%1\";"},
        {"ParamGroupInfo", "Tags: %0", "Теги: %0"},
        {"ParamGroupInfo", "Path: %0", "Путь: %0"},
        {"ParamGroupInfo", "What:", "Что:"},
        {"ParamGroupInfo", "Where:", "Куда:"},
        {"ParamGroupInfo", "From where:", "Откуда:"},
        {"ParamGroupInfo", "Replace: %0", "Заменить: %0"},
        {"ParamGroupInfo", "Insert above: %0", "Вставить выше: %0"},
        {"ParamGroupInfo", "Insert below: %0", "Вставить ниже: %0"},
        {"ParamGroupRemoveParametersInfo", "Path: %0", "Группа: %0"},
    };
    for (const auto &row : rows)
        multiTranslator.insert(Ru, QString::fromUtf8(row.context), QString::fromUtf8(row.source), QString::fromUtf8(row.text));
}

class GroupLog : public ::testing::Test
{
protected:
    void SetUp() override { multiTranslator.clear(); }
    void TearDown() override { multiTranslator.clear(); }
};

QString en(const QXmlTranslation &t)
{
    return t.engName();
}

QString ru(const QXmlTranslation &t)
{
    return t.translate(Ru, false);
}

} // namespace

TEST_F(GroupLog, TagsOfANodeWithoutTagsAreEmpty)
{
    const ParamGroupItem item(ParamGroupItem::GroupItem);
    EXPECT_TRUE(item.getTagsDetails(QStringLiteral("   ")).isEmpty());
    loadRussian();
    EXPECT_TRUE(item.getTagsDetails(QStringLiteral("   ")).isEmpty());
}

TEST_F(GroupLog, TagsWithAPrefixGiveALabelLineAndOneLinePerTag)
{
    ParamGroupItem item(ParamGroupItem::ParamItem, false,
                        Tags{{QStringLiteral("id"), QStringLiteral("17")}, {QStringLiteral("name"), QStringLiteral("Pressure")}});
    QString lines;
    QString ruLines;
    for (auto it = item.tags.constBegin(); it != item.tags.constEnd(); ++it) {
        lines += QStringLiteral("\n   name=\"%1\"; value=\"%2\";").arg(it.key(), it.value());
        ruLines += QStringLiteral("\n   имя=\"%1\"; значение=\"%2\";").arg(it.key(), it.value());
    }
    const QXmlTranslation text = item.getTagsDetails(QStringLiteral("   "));
    EXPECT_EQ(en(text), QStringLiteral("Tags: ") + lines);
    EXPECT_EQ(en(text).count(QLatin1Char('\n')), 2);
    EXPECT_TRUE(text.translations().isEmpty());

    loadRussian();
    const QXmlTranslation translated = item.getTagsDetails(QStringLiteral("   "));
    EXPECT_EQ(en(translated), QStringLiteral("Tags: ") + lines);
    EXPECT_EQ(ru(translated), QStringLiteral("Теги: ") + ruLines);
}

TEST_F(GroupLog, TagsTakeAnyPrefix)
{
    const ParamGroupItem item(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), QStringLiteral("G")}});
    EXPECT_EQ(en(item.getTagsDetails(QString())), QStringLiteral("Tags: \nname=\"name\"; value=\"G\";"));
    EXPECT_EQ(en(item.getTagsDetails(QStringLiteral("> "))), QStringLiteral("Tags: \n> name=\"name\"; value=\"G\";"));
}

TEST_F(GroupLog, ParamsDetailsStartWithTheSeparatorWhenTheFirstChildIsAGroup)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    root.children << group(QStringLiteral("g")) << param(11) << param(12);
    EXPECT_EQ(en(root.getParamsDetails()), QStringLiteral(", 11, 12"));
}

TEST_F(GroupLog, ParamsDetailsOfParamGroupParamHaveOneSeparator)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    root.children << param(11) << group(QStringLiteral("g")) << param(12);
    EXPECT_EQ(en(root.getParamsDetails()), QStringLiteral("11, 12"));
}

TEST_F(GroupLog, ParamsDetailsSkipAnUnparsableIdAndTheNextKeepsItsSeparator)
{
    ParamGroupItem root(ParamGroupItem::GroupItem);
    root.children << param(QStringLiteral("bad")) << param(12) << nullptr << param(QStringLiteral("0"))
                  << new ParamGroupItem(ParamGroupItem::ParamItem);
    EXPECT_EQ(en(root.getParamsDetails()), QStringLiteral(", 12, 0"));

    ParamGroupItem none(ParamGroupItem::GroupItem);
    none.children << group(QStringLiteral("g"));
    EXPECT_TRUE(none.getParamsDetails().isEmpty());

    loadRussian(); // nothing of this text is translated
    EXPECT_TRUE(root.getParamsDetails().translations().isEmpty());
}

TEST_F(GroupLog, ParamsIdDetailsAreNumberedFromOne)
{
    ParamGroupInfo info(1);
    EXPECT_TRUE(info.getParamsIDDetails().isEmpty());
    info.params << ParamGroupInfoBase::Data{101, QStringLiteral("Pressure")} << ParamGroupInfoBase::Data{0, QString()}
                << ParamGroupInfoBase::Data{4294967295u, QStringLiteral("%1 \"q\"")};
    EXPECT_EQ(en(info.getParamsIDDetails()), QStringLiteral("   1 (ID=101): \"Pressure\"\n"
                                                            "   2 (ID=0): \"\"\n"
                                                            "   3 (ID=4294967295): \"%1 \"q\"\""));
}

TEST_F(GroupLog, CreateGroupWithoutTagsStartsWithThePathLine)
{
    ParamGroupInfo info(1);
    info.path = QStringLiteral("/plant/pumps");
    EXPECT_EQ(en(info.getCreateGroupLogDetails()), QStringLiteral("Path: /plant/pumps"));
    info.params << ParamGroupInfoBase::Data{5, QStringLiteral("Level")};
    EXPECT_EQ(en(info.getCreateGroupLogDetails()), QStringLiteral("Path: /plant/pumps\n   1 (ID=5): \"Level\""));

    loadRussian();
    EXPECT_EQ(ru(info.getCreateGroupLogDetails()), QStringLiteral("Путь: /plant/pumps\n   1 (ID=5): \"Level\""));
}

TEST_F(GroupLog, CreateGroupWithOneTagAndTwoParametersGivesFiveLines)
{
    ParamGroupInfo info(1);
    info.path = QStringLiteral("/plant");
    info.item = ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}});
    info.item.children << param(101); // the children play no part
    info.params << ParamGroupInfoBase::Data{101, QStringLiteral("Pressure")} << ParamGroupInfoBase::Data{102, QStringLiteral("Flow")};
    const QString expected = QStringLiteral("Tags: \n"
                                            "   name=\"name\"; value=\"Pumps\";\n"
                                            "Path: /plant\n"
                                            "   1 (ID=101): \"Pressure\"\n"
                                            "   2 (ID=102): \"Flow\"");
    EXPECT_EQ(en(info.getCreateGroupLogDetails()), expected);
    EXPECT_EQ(en(info.getCreateGroupLogDetails()).split(QLatin1Char('\n')).size(), 5);

    loadRussian();
    const QXmlTranslation text = info.getCreateGroupLogDetails();
    EXPECT_EQ(en(text), expected);
    EXPECT_EQ(ru(text), QStringLiteral("Теги: \n"
                                       "   имя=\"name\"; значение=\"Pumps\";\n"
                                       "Путь: /plant\n"
                                       "   1 (ID=101): \"Pressure\"\n"
                                       "   2 (ID=102): \"Flow\""));
    EXPECT_EQ(text.translations().keys(), (QList<QString>{Ru}));
}

TEST_F(GroupLog, CopyLogWithEmptyStringsStillHasFourLines)
{
    const ParamGroupCopyPasteRemoveInfo info(3);
    EXPECT_EQ(en(info.getCopyLogDetails()), QStringLiteral("What:\n   \nWhere:\n   "));
    EXPECT_EQ(en(info.getRemoveLogDetails()), QStringLiteral("What:\n   \nFrom where:\n   "));
    loadRussian();
    EXPECT_EQ(ru(info.getCopyLogDetails()), QStringLiteral("Что:\n   \nКуда:\n   "));
}

TEST_F(GroupLog, CopyAndRemoveLogsPrintWhatAndPath)
{
    ParamGroupCopyPasteRemoveInfo info(3);
    info.what = QStringLiteral("/plant/pumps/P1");
    info.path = QStringLiteral("/plant/spare");
    info.whatExtra = QStringLiteral("not printed");
    info.params << ParamGroupInfoBase::Data{1, QStringLiteral("not printed either")};
    EXPECT_EQ(en(info.getCopyLogDetails()), QStringLiteral("What:\n   /plant/pumps/P1\nWhere:\n   /plant/spare"));
    EXPECT_EQ(en(info.getRemoveLogDetails()), QStringLiteral("What:\n   /plant/pumps/P1\nFrom where:\n   /plant/spare"));

    loadRussian();
    EXPECT_EQ(ru(info.getCopyLogDetails()), QStringLiteral("Что:\n   /plant/pumps/P1\nКуда:\n   /plant/spare"));
    EXPECT_EQ(ru(info.getRemoveLogDetails()), QStringLiteral("Что:\n   /plant/pumps/P1\nОткуда:\n   /plant/spare"));
    EXPECT_EQ(en(info.getRemoveLogDetails()), QStringLiteral("What:\n   /plant/pumps/P1\nFrom where:\n   /plant/spare"));
}

TEST_F(GroupLog, InsertLogByMode)
{
    ParamGroupInsertParametersInfo info;
    info.path = QStringLiteral("/plant");
    info.anchor = QStringLiteral("Flow");
    info.params << ParamGroupInfoBase::Data{7, QStringLiteral("Level")};
    const struct {
        int mode;
        const char *line;
        const char *ruLine;
    } rows[] = {{0, "Replace: Flow", "Заменить: Flow"},
                {1, "Insert above: Flow", "Вставить выше: Flow"},
                {2, "Insert below: Flow", "Вставить ниже: Flow"}};
    for (const auto &row : rows) {
        info.mode = row.mode;
        EXPECT_EQ(en(info.getInsertLogDetails()),
                  QStringLiteral("Path: /plant\n") + QLatin1String(row.line) + QStringLiteral("\n   1 (ID=7): \"Level\""));
    }
    loadRussian();
    for (const auto &row : rows) {
        info.mode = row.mode;
        EXPECT_EQ(ru(info.getInsertLogDetails()),
                  QStringLiteral("Путь: /plant\n") + QString::fromUtf8(row.ruLine) + QStringLiteral("\n   1 (ID=7): \"Level\""));
    }
}

TEST_F(GroupLog, InsertLogWithModeThreeAndNoParametersIsThePathLineAlone)
{
    ParamGroupInsertParametersInfo info;
    info.path = QStringLiteral("/plant");
    info.anchor = QStringLiteral("Flow");
    info.mode = 3;
    EXPECT_EQ(en(info.getInsertLogDetails()), QStringLiteral("Path: /plant"));
    info.mode = -1;
    info.params << ParamGroupInfoBase::Data{7, QStringLiteral("Level")};
    EXPECT_EQ(en(info.getInsertLogDetails()), QStringLiteral("Path: /plant\n   1 (ID=7): \"Level\""));
}

TEST_F(GroupLog, RemoveDetailsWithTwoGroupsAreEachNumberedFromOne)
{
    using Data = ParamGroupRemoveParametersInfo::Data;
    ParamGroupRemoveParametersInfo info;
    info.removed.insert(QStringLiteral("b-valves"), {Data{7, QStringLiteral("Position"), QString(), QString(), QStringLiteral("/plant/valves")}});
    info.removed.insert(QStringLiteral("a-pumps"),
                        {Data{101, QStringLiteral("Pressure"), QString(), QString(), QStringLiteral("/plant/pumps")},
                         Data{102, QStringLiteral("Flow"), QString(), QString(), QStringLiteral("/elsewhere")}});
    info.removed.insert(QStringLiteral("c-empty"), {});
    const QString expected = QStringLiteral("Path: /plant/pumps\n"
                                            "   1 (ID=101): \"Pressure\"\n"
                                            "   2 (ID=102): \"Flow\"\n"
                                            "Path: /plant/valves\n"
                                            "   1 (ID=7): \"Position\"");
    EXPECT_EQ(en(info.getDetails()), expected);

    loadRussian();
    const QXmlTranslation text = info.getDetails();
    EXPECT_EQ(en(text), expected);
    // The removal message has a path text of its own context.
    EXPECT_EQ(ru(text), QStringLiteral("Группа: /plant/pumps\n"
                                       "   1 (ID=101): \"Pressure\"\n"
                                       "   2 (ID=102): \"Flow\"\n"
                                       "Группа: /plant/valves\n"
                                       "   1 (ID=7): \"Position\""));
}

TEST_F(GroupLog, RemoveDetailsOfNothingAreEmpty)
{
    ParamGroupRemoveParametersInfo info;
    EXPECT_TRUE(info.getDetails().isEmpty());
    info.removed.insert(QStringLiteral("a"), {});
    info.removed.insert(QStringLiteral("b"), {});
    EXPECT_TRUE(info.getDetails().isEmpty());
    loadRussian();
    EXPECT_TRUE(info.getDetails().isEmpty());
}

TEST_F(GroupLog, RemoveDetailsSkipAnEmptyGroupBetweenTwo)
{
    using Data = ParamGroupRemoveParametersInfo::Data;
    ParamGroupRemoveParametersInfo info;
    info.removed.insert(QStringLiteral("a"), {Data{1, QStringLiteral("A"), QString(), QString(), QStringLiteral("/a")}});
    info.removed.insert(QStringLiteral("b"), {});
    info.removed.insert(QStringLiteral("c"), {Data{2, QStringLiteral("C"), QString(), QString(), QString()}});
    EXPECT_EQ(en(info.getDetails()), QStringLiteral("Path: /a\n   1 (ID=1): \"A\"\nPath: \n   1 (ID=2): \"C\""));
}

TEST_F(GroupLog, TranslatorWithoutTheseTextsFallsBackToTheSourceText)
{
    multiTranslator.addLanguage(QStringLiteral("de"));
    ParamGroupCopyPasteRemoveInfo info(1);
    info.what = QStringLiteral("x");
    const QXmlTranslation text = info.getCopyLogDetails();
    EXPECT_EQ(text.translate(QStringLiteral("de"), false), QStringLiteral("What:\n   x\nWhere:\n   "));
}
