// The XML form of a group tree node, written into a writer the caller owns.

#include "grouptest.h"

#include <QtCore/QXmlStreamWriter>

#include <gtest/gtest.h>

using namespace grouptest;

namespace {

/** What writeToXml() puts into a writer that is inside a "Root" element. */
QString xmlOf(ParamGroupItem &item)
{
    QString text;
    QXmlStreamWriter writer(&text);
    writer.writeStartElement(QStringLiteral("Root"));
    item.writeToXml(writer);
    writer.writeEndElement();
    return text;
}

/** The attributes of a node in the hash's forward order, as the writer escapes them. */
QString attributesOf(const Tags &tags)
{
    QString text;
    for (auto it = tags.constBegin(); it != tags.constEnd(); ++it)
        text += QStringLiteral(" %1=\"%2\"").arg(it.key(), it.value().toHtmlEscaped());
    return text;
}

} // namespace

TEST(GroupItemXml, ParamWithIdIsAParamElementWithItsAttributes)
{
    ParamGroupItem item(ParamGroupItem::ParamItem, true,
                        Tags{{QStringLiteral("id"), QStringLiteral("17")}, {QStringLiteral("name"), QStringLiteral("Pressure")}});
    EXPECT_EQ(xmlOf(item), QStringLiteral("<Root><Param") + attributesOf(item.tags) + QStringLiteral("/></Root>"));
}

TEST(GroupItemXml, ParamWithoutIdTagHasNoIdAttribute)
{
    ParamGroupItem item(ParamGroupItem::ParamItem);
    EXPECT_EQ(xmlOf(item), QStringLiteral("<Root><Param/></Root>"));
}

TEST(GroupItemXml, FieldIsWrittenAsAGroupElement)
{
    ParamGroupItem field(ParamGroupItem::FieldItem, false, Tags{{QStringLiteral("name"), QStringLiteral("Cells")}});
    EXPECT_EQ(xmlOf(field), QStringLiteral("<Root><Group name=\"Cells\"/></Root>"));
}

TEST(GroupItemXml, NoItemStartsAnElementWithAnEmptyName)
{
    ParamGroupItem item;
    QString text;
    QXmlStreamWriter writer(&text);
    item.writeToXml(writer);
    // The writer is given an empty element name, and writes what it makes of it.
    QString expected;
    QXmlStreamWriter reference(&expected);
    reference.writeStartElement(QString());
    reference.writeEndElement();
    EXPECT_EQ(text, expected);
    EXPECT_TRUE(text.startsWith(QLatin1Char('<')));
    EXPECT_FALSE(text.contains(QLatin1String("Group")));
}

TEST(GroupItemXml, ChildrenAreNestedInOrderAndNullEntriesSkipped)
{
    ParamGroupItem root(ParamGroupItem::GroupItem, true, Tags{{QStringLiteral("name"), QStringLiteral("Plant & <co>")}});
    ParamGroupItem *g = group(QStringLiteral("Pumps"));
    g->children << param(2) << nullptr << param(1);
    root.children << g << nullptr << param(3);
    EXPECT_EQ(xmlOf(root), QStringLiteral("<Root><Group name=\"Plant &amp; &lt;co&gt;\">"
                                          "<Group name=\"Pumps\"><Param id=\"2\"/><Param id=\"1\"/></Group>"
                                          "<Param id=\"3\"/></Group></Root>"));
}

TEST(GroupItemXml, ManyTagsFollowTheForwardOrderAndTheFlagIsNotWritten)
{
    Tags tags;
    for (int i = 0; i < 10; ++i)
        tags.insert(QStringLiteral("k%1").arg(i), QString::number(i * i));
    ParamGroupItem item(ParamGroupItem::GroupItem, true, tags);
    const QString xml = xmlOf(item);
    EXPECT_EQ(xml, QStringLiteral("<Root><Group") + attributesOf(item.tags) + QStringLiteral("/></Root>"));
    EXPECT_FALSE(xml.contains(QLatin1String("flag")));
    EXPECT_FALSE(xml.contains(QLatin1String("true")));
}

TEST(GroupItemXml, StartsNoDocumentAndLeavesTheWriterUsable)
{
    ParamGroupItem a(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), QStringLiteral("1")}});
    ParamGroupItem b(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), QStringLiteral("2")}});
    QString text;
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("Groups"));
    a.writeToXml(writer);
    b.writeToXml(writer);
    writer.writeEndElement();
    writer.writeEndDocument();
    EXPECT_EQ(text, QStringLiteral("<?xml version=\"1.0\"?>\n<Groups>\n    <Param id=\"1\"/>\n"
                                   "    <Param id=\"2\"/>\n</Groups>\n"));
    EXPECT_FALSE(writer.hasError());
}
