// Reading one translation from XML: the text of nested elements, and documents that nest
// far deeper than any real translation.

#include "telortest.h"

#include "qxmltranslation.h"

#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

/** Moves @p xml to the first start tag named translation. */
bool toTranslation(QXmlStreamReader &xml)
{
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.qualifiedName() == QLatin1String("translation"))
            return true;
    }
    return false;
}

/** What Qt's own reader gathers for the element the reader stands on. */
QString qtElementText(const QString &document)
{
    QXmlStreamReader xml(document);
    if (!toTranslation(xml))
        return QString();
    return xml.readElementText(QXmlStreamReader::IncludeChildElements);
}

} // namespace

TEST(XmlTranslationNesting, TextOfNestedElementsIsJoined)
{
    const QString document = QStringLiteral(
        "<r><translation lang=\"ru\">a<b>b<c>c</c></b><!-- x -->d<?pi x?>&amp;e<![CDATA[<f>]]></translation><after/></r>");
    QXmlStreamReader xml(document);
    ASSERT_TRUE(toTranslation(xml));
    QXmlTranslation t;
    t.readTranslationFromXMLStream(xml);
    EXPECT_EQ(t.translate(QStringLiteral("ru"), false), QStringLiteral("abcd&e<f>"));
    EXPECT_EQ(t.translate(QStringLiteral("ru"), false), qtElementText(document));
    // The reader stands on the translation's own end tag, not on a nested one.
    EXPECT_TRUE(xml.isEndElement());
    EXPECT_EQ(xml.qualifiedName(), QLatin1String("translation"));
    xml.readNext();
    EXPECT_EQ(xml.qualifiedName(), QLatin1String("after"));
}

TEST(XmlTranslationNesting, EmptyNestedElementsGiveNoText)
{
    QXmlStreamReader xml(QStringLiteral("<translation lang=\"ru\"><a/><b></b></translation>"));
    ASSERT_TRUE(toTranslation(xml));
    QXmlTranslation t;
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(t.translations().isEmpty());
    EXPECT_TRUE(xml.isEndElement());
    EXPECT_EQ(xml.qualifiedName(), QLatin1String("translation"));
}

TEST(XmlTranslationNesting, BrokenNestedDocumentKeepsTheTextReadSoFar)
{
    const QString document = QStringLiteral("<translation lang=\"de\">a<b>b<c>c<!-- -->");
    QXmlStreamReader xml(document);
    ASSERT_TRUE(toTranslation(xml));
    QXmlTranslation t;
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(xml.atEnd());
    EXPECT_EQ(t.translate(QStringLiteral("de"), false), QStringLiteral("abc"));
    EXPECT_EQ(t.translate(QStringLiteral("de"), false), qtElementText(document));
}

TEST(XmlTranslationNesting, NotOnAStartTagReadsNothing)
{
    QXmlStreamReader xml(QStringLiteral("<translation lang=\"ru\">x</translation>"));
    xml.readNext(); // StartDocument
    QXmlTranslation t;
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(t.translations().isEmpty());
    EXPECT_EQ(xml.tokenType(), QXmlStreamReader::StartDocument);
}

TEST(XmlTranslationNesting, DeepNestingEndsWithoutExhaustingTheStack)
{
    // 200000 nested elements: Qt's recursive text reader overflows the stack here.
    const int depth = 200000;
    QByteArray document = "<r><translation lang=\"ru\">x";
    for (int i = 0; i < depth; ++i)
        document += "<a>";
    document += 'y';
    for (int i = 0; i < depth; ++i)
        document += "</a>";
    document += "z</translation><after/></r>";

    QXmlStreamReader xml(document);
    ASSERT_TRUE(toTranslation(xml));
    QXmlTranslation t;
    t.readTranslationFromXMLStream(xml);
    EXPECT_EQ(t.translate(QStringLiteral("ru"), false), QStringLiteral("xyz"));
    EXPECT_TRUE(xml.isEndElement());
    EXPECT_EQ(xml.qualifiedName(), QLatin1String("translation"));
    xml.readNext();
    EXPECT_EQ(xml.qualifiedName(), QLatin1String("after"));
}

TEST(XmlTranslationNesting, DeepUnclosedNestingEnds)
{
    QByteArray document = "<translation lang=\"ru\">x";
    for (int i = 0; i < 200000; ++i)
        document += "<a>";
    QXmlStreamReader xml(document);
    ASSERT_TRUE(toTranslation(xml));
    QXmlTranslation t;
    t.readTranslationFromXMLStream(xml);
    EXPECT_TRUE(xml.atEnd());
    EXPECT_EQ(t.translate(QStringLiteral("ru"), false), QStringLiteral("x"));
}
