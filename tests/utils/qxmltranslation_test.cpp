// Translatable text: language forms, place markers, appending, stream form, XML, and the
// display form of dates.

#include "getdtstring.h"
#include "qxmltranslation.h"
#include "telortest.h"

#include <gtest/gtest.h>

#include <QtCore/QDebug>
#include <QtCore/QXmlStreamReader>

using telortest::plainBytes;

namespace {

QXmlTranslation twoLanguages(const QString &en, const QString &ru, const QString &de)
{
    QXmlTranslation t(en);
    t.setTranslation(ru, QStringLiteral("ru"));
    t.setTranslation(de, QStringLiteral("de"));
    return t;
}

} // namespace

TEST(XmlTranslation, EmptyAndValueSemantics)
{
    QXmlTranslation t;
    EXPECT_TRUE(t.isEmpty());
    EXPECT_TRUE(t.engName().isEmpty());
    t.setEngName(QStringLiteral("Pressure"));
    EXPECT_FALSE(t.isEmpty());
    QXmlTranslation onlyTranslated;
    onlyTranslated.setTranslation(QStringLiteral("Druck"), QStringLiteral("de"));
    EXPECT_FALSE(onlyTranslated.isEmpty());

    QXmlTranslation copy(t);
    copy.setEngName(QStringLiteral("Other"));
    EXPECT_EQ(t.engName(), QStringLiteral("Pressure"));
    QXmlTranslation assigned;
    assigned = t;
    EXPECT_EQ(assigned, t);
}

TEST(XmlTranslation, TranslateWithAndWithoutFallback)
{
    const QXmlTranslation t = twoLanguages(QStringLiteral("Pressure"), QStringLiteral("Давление"), QStringLiteral("Druck"));
    EXPECT_EQ(t.translate(QStringLiteral("ru"), true), QStringLiteral("Давление"));
    EXPECT_EQ(t.translate(QStringLiteral("de"), false), QStringLiteral("Druck"));
    EXPECT_EQ(t.translate(QStringLiteral("fr"), true), QStringLiteral("Pressure"));
    EXPECT_TRUE(t.translate(QStringLiteral("fr"), false).isEmpty());
    EXPECT_EQ(t.translate(QStringLiteral("RU"), true), QStringLiteral("Pressure")); // exact key only
}

TEST(XmlTranslation, ArgReplacesTheLowestMarkerInEveryForm)
{
    const QXmlTranslation t = twoLanguages(QStringLiteral("Tags: %0 of %1"), QStringLiteral("Теги: %0 из %1"),
                                           QStringLiteral("%1 hat %0"));
    const QXmlTranslation once = t.arg(QStringLiteral("A"), 0, QLatin1Char(' '));
    EXPECT_EQ(once.engName(), QStringLiteral("Tags: A of %1"));
    EXPECT_EQ(once.translate(QStringLiteral("ru"), false), QStringLiteral("Теги: A из %1"));
    EXPECT_EQ(once.translate(QStringLiteral("de"), false), QStringLiteral("%1 hat A"));
    const QXmlTranslation twice = once.arg(QStringLiteral("B"));
    EXPECT_EQ(twice.engName(), QStringLiteral("Tags: A of B"));
    EXPECT_EQ(twice.translate(QStringLiteral("ru"), false), QStringLiteral("Теги: A из B"));
    EXPECT_EQ(twice.translate(QStringLiteral("de"), false), QStringLiteral("B hat A"));
    // The original is untouched.
    EXPECT_EQ(t.engName(), QStringLiteral("Tags: %0 of %1"));
}

TEST(XmlTranslation, ArgWithMarkersOneAndTwo)
{
    const QXmlTranslation t = twoLanguages(QStringLiteral("%2/%1"), QStringLiteral("%1-%2"), QStringLiteral("%1%1"));
    const QXmlTranslation r = t.arg(QStringLiteral("x"));
    EXPECT_EQ(r.engName(), QStringLiteral("%2/x"));
    EXPECT_EQ(r.translate(QStringLiteral("ru"), false), QStringLiteral("x-%2"));
    EXPECT_EQ(r.translate(QStringLiteral("de"), false), QStringLiteral("xx"));
}

TEST(XmlTranslation, ArgWithATranslationUsesTheSameLanguage)
{
    const QXmlTranslation text = twoLanguages(QStringLiteral("Tags: %0"), QStringLiteral("Теги: %0"),
                                              QStringLiteral("Etiketten: %0"));
    QXmlTranslation tags(QStringLiteral("alarm"));
    tags.setTranslation(QStringLiteral("тревога"), QStringLiteral("ru"));
    tags.setTranslation(QStringLiteral("Alarm"), QStringLiteral("fr"));
    const QXmlTranslation r = text.arg(tags, 0, QLatin1Char(' '));
    EXPECT_EQ(r.engName(), QStringLiteral("Tags: alarm"));
    EXPECT_EQ(r.translate(QStringLiteral("ru"), false), QStringLiteral("Теги: тревога"));
    // "de" has no form in the argument: its English form is used.
    EXPECT_EQ(r.translate(QStringLiteral("de"), false), QStringLiteral("Etiketten: alarm"));
    // "fr" exists only in the argument: it starts from the English text.
    EXPECT_EQ(r.translate(QStringLiteral("fr"), false), QStringLiteral("Tags: Alarm"));
}

TEST(XmlTranslation, AppendString)
{
    QXmlTranslation t = twoLanguages(QStringLiteral("Group"), QStringLiteral("Группа"), QStringLiteral("Gruppe"));
    t += QStringLiteral(" 5\n");
    EXPECT_EQ(t.engName(), QStringLiteral("Group 5\n"));
    EXPECT_EQ(t.translate(QStringLiteral("ru"), false), QStringLiteral("Группа 5\n"));
    EXPECT_EQ(t.translate(QStringLiteral("de"), false), QStringLiteral("Gruppe 5\n"));
}

TEST(XmlTranslation, AppendTranslation)
{
    QXmlTranslation built; // a log text starts empty
    QXmlTranslation head(QStringLiteral("Removed: "));
    head.setTranslation(QStringLiteral("Удалено: "), QStringLiteral("ru"));
    built += head;
    built += QStringLiteral("pump");
    QXmlTranslation tail(QStringLiteral(" (group)"));
    tail.setTranslation(QStringLiteral(" (Gruppe)"), QStringLiteral("de"));
    built += tail;
    EXPECT_EQ(built.engName(), QStringLiteral("Removed: pump (group)"));
    EXPECT_EQ(built.translate(QStringLiteral("ru"), false), QStringLiteral("Удалено: pump (group)"));
    EXPECT_EQ(built.translate(QStringLiteral("de"), false), QStringLiteral("Removed: pump (Gruppe)"));
}

TEST(XmlTranslation, PrefixOperator)
{
    const QXmlTranslation t = twoLanguages(QStringLiteral("valve"), QStringLiteral("клапан"), QStringLiteral("Ventil"));
    const QXmlTranslation r = QStringLiteral("  ") + t;
    EXPECT_EQ(r.engName(), QStringLiteral("  valve"));
    EXPECT_EQ(r.translate(QStringLiteral("ru"), false), QStringLiteral("  клапан"));
    EXPECT_EQ(r.translate(QStringLiteral("de"), false), QStringLiteral("  Ventil"));
    EXPECT_EQ(t.engName(), QStringLiteral("valve"));
}

TEST(XmlTranslation, StreamFormAndRoundTrip)
{
    QXmlTranslation t(QStringLiteral("Level"));
    t.setTranslation(QStringLiteral("Уровень"), QStringLiteral("ru"));
    QByteArray bytes;
    {
        QDataStream s(&bytes, QIODevice::WriteOnly);
        s << t;
    }
    QHash<QString, QString> table;
    table.insert(QStringLiteral("ru"), QStringLiteral("Уровень"));
    EXPECT_EQ(bytes, plainBytes([&](QDataStream &s) { s << QStringLiteral("Level") << table; }));

    QXmlTranslation back;
    QDataStream in(bytes);
    in >> back;
    EXPECT_EQ(back, t);
    EXPECT_TRUE(in.atEnd());

    // Several translations and an empty text go through unchanged too.
    const QXmlTranslation many = twoLanguages(QString(), QStringLiteral("a"), QStringLiteral("b"));
    QByteArray more;
    {
        QDataStream s(&more, QIODevice::WriteOnly);
        s << many << QXmlTranslation();
    }
    QXmlTranslation x, y(QStringLiteral("stale"));
    QDataStream in2(more);
    in2 >> x >> y;
    EXPECT_EQ(x, many);
    EXPECT_TRUE(y.isEmpty());
}

TEST(XmlTranslation, ReadFromXml)
{
    QXmlStreamReader xml(QStringLiteral(
        "<Message><translation lang=\"ru\">Тре<!-- c -->вога</translation><translation lang=\"de\"/>"
        "<translation>orphan</translation><after/></Message>"));
    QXmlTranslation t(QStringLiteral("Alarm"));
    while (!xml.atEnd() && !(xml.isStartElement() && xml.name() == QLatin1String("translation")))
        xml.readNext();
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(xml.isEndElement());
    EXPECT_EQ(xml.name(), QLatin1String("translation"));
    EXPECT_EQ(t.translate(QStringLiteral("ru"), false), QStringLiteral("Тревога"));

    xml.readNext(); // the empty "de" translation
    ASSERT_TRUE(xml.isStartElement());
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(xml.isEndElement());
    EXPECT_TRUE(t.translate(QStringLiteral("de"), false).isEmpty());

    xml.readNext(); // a translation without language
    ASSERT_TRUE(xml.isStartElement());
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(xml.isEndElement());
    EXPECT_EQ(t.translations().size(), 1);

    xml.readNext();
    EXPECT_EQ(xml.name(), QLatin1String("after"));
}

TEST(XmlTranslation, ReadFromBrokenXmlEnds)
{
    QXmlStreamReader xml(QStringLiteral("<translation lang=\"ru\">never closed"));
    xml.readNext();
    xml.readNext();
    ASSERT_TRUE(xml.isStartElement());
    QXmlTranslation t;
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(xml.hasError() || xml.atEnd());
}

TEST(XmlTranslation, DebugForm)
{
    QString text;
    QDebug(&text) << QXmlTranslation(QStringLiteral("Flow"));
    EXPECT_EQ(text, QStringLiteral("QXmlTranslation(\"Flow\") "));
}

TEST(DateTimeText, Format)
{
    const QDateTime dt(QDate(2026, 3, 5), QTime(14, 7, 9, 42));
    EXPECT_EQ(getDTstring(dt), QStringLiteral("05.03.2026 14:07:09.042"));
    EXPECT_TRUE(getDTstring(QDateTime()).isEmpty());
}
