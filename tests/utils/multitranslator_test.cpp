// The translator of the library's log texts.

#include "multitranslator.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

TEST(MultiTranslator, WithoutLanguagesHoldsTheEnglishFormAlone)
{
    MultiTranslator translator;
    const QXmlTranslation t = translator.translate("ParamGroupInfo", "Tags: %0", nullptr);
    EXPECT_EQ(t.engName(), QStringLiteral("Tags: %0"));
    EXPECT_TRUE(t.translations().isEmpty());
    EXPECT_TRUE(translator.languages().isEmpty());
}

TEST(MultiTranslator, EveryKnownLanguageGetsTextOrSource)
{
    MultiTranslator translator;
    translator.insert(QStringLiteral("ru"), QStringLiteral("ParamGroupInfo"), QStringLiteral("Tags: %0"),
                      QStringLiteral("Теги: %0"));
    translator.addLanguage(QStringLiteral("de"));
    const QXmlTranslation t = translator.translate("ParamGroupInfo", "Tags: %0", nullptr);
    EXPECT_EQ(t.engName(), QStringLiteral("Tags: %0"));
    EXPECT_EQ(t.translate(QStringLiteral("ru"), false), QStringLiteral("Теги: %0"));
    EXPECT_EQ(t.translate(QStringLiteral("de"), false), QStringLiteral("Tags: %0"));
    EXPECT_EQ(translator.languages(), (QStringList{QStringLiteral("de"), QStringLiteral("ru")}));

    // Another context does not see the text.
    const QXmlTranslation other = translator.translate("ParamGroupItem", "Tags: %0", nullptr);
    EXPECT_EQ(other.translate(QStringLiteral("ru"), false), QStringLiteral("Tags: %0"));

    // The result fills its markers in every form.
    EXPECT_EQ(t.arg(QStringLiteral("x")).translate(QStringLiteral("ru"), false), QStringLiteral("Теги: x"));
}

TEST(MultiTranslator, DisambiguationSeparatesTexts)
{
    MultiTranslator translator;
    translator.insert(QStringLiteral("ru"), QStringLiteral("Ctx|verb"), QStringLiteral("Open"), QStringLiteral("Открыть"));
    EXPECT_EQ(translator.translate("Ctx", "Open", "verb").translate(QStringLiteral("ru"), false), QStringLiteral("Открыть"));
    EXPECT_EQ(translator.translate("Ctx", "Open", nullptr).translate(QStringLiteral("ru"), false), QStringLiteral("Open"));
}

TEST(MultiTranslator, LoadsALanguageFile)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("ru.xml"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("<translations lang=\"ru\"><context name=\"ParamGroupInfo\">"
                              "<message><source>Group</source><translation>Группа</translation></message>"
                              "</context></translations>")
                   .toUtf8());
    file.close();

    MultiTranslator translator;
    EXPECT_TRUE(translator.load(path));
    EXPECT_EQ(translator.translate("ParamGroupInfo", "Group").translate(QStringLiteral("ru"), false),
              QStringLiteral("Группа"));
    EXPECT_FALSE(translator.load(dir.filePath(QStringLiteral("missing.xml"))));
    translator.clear();
    EXPECT_TRUE(translator.languages().isEmpty());
}

TEST(MultiTranslator, GlobalInstanceStartsEmpty)
{
    EXPECT_TRUE(multiTranslator.languages().isEmpty());
    EXPECT_TRUE(multiTranslator.translate("ParamGroupInfo", "Group", nullptr).translations().isEmpty());
}
