// Event type descriptions parsed from an Event element: attributes, translations,
// messages, the debug log lines of bad translations and the trace of a complete parse.

#include "telortest.h"

#include "eventtypeinfostruct.h"

#include <QtCore/QDebug>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

#include <memory>

namespace {

/**
 * Parses the first Event element of a document the way a caller does: the reader is
 * moved to the element's start tag and handed to the constructor. Keeps the reader, so
 * that a test can see where it stands, and the captured debug lines.
 */
class Parse
{
public:
    explicit Parse(const QString &document)
        : xml(document)
    {
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() && xml.qualifiedName() == QLatin1String("Event"))
                break;
        }
        EXPECT_TRUE(xml.isStartElement()) << "no Event start tag in the document";
        telortest::LogCapture capture;
        event = std::make_unique<EventTypeInfoStruct>(xml);
        log = capture.captured();
    }

    /** The text of message @p number in @p language, without falling back to English. */
    QString text(unsigned char number, const QString &language) const
    {
        return event->messages.value(number).translate(language, false);
    }

    QXmlStreamReader xml;
    std::unique_ptr<EventTypeInfoStruct> event;
    QStringList log;
};

/** What qDebug prints for @p messages, as one log line. */
QString debugLine(const QHash<unsigned char, QXmlTranslation> &messages)
{
    QString line;
    QDebug(&line) << messages;
    // A QDebug that logs drops the one space it adds after the last piece.
    if (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}

const QString Ru = QStringLiteral("ru");

// The lines logged about a bad translation of an event, for the event's number and its
// name as the line quotes it.

QString missingLangLine(int id, const char *name)
{
    return QStringLiteral("Missing translation lang attribute for Event element with id %1 and name \" \"%2\" \"")
        .arg(QString::number(id), QString::fromUtf8(name));
}

QString missingTextLine(const char *lang, int id, const char *name)
{
    return QStringLiteral("Missing translation text for \"%1\" lang for Event element with id %2 and name \" \"%3\" \"")
        .arg(QString::fromUtf8(lang), QString::number(id), QString::fromUtf8(name));
}

QString notClosedLine(const char *lang, int id, const char *name)
{
    return QStringLiteral("Not closed \"%1\" lang translation for Event element with id %2 and name \" \"%3\" \"")
        .arg(QString::fromUtf8(lang), QString::number(id), QString::fromUtf8(name));
}

} // namespace

// --- attributes of the event -------------------------------------------------------------

TEST(EventTypeXml, IdAndNameOfTheEvent)
{
    Parse p(QStringLiteral("<Events><Event id=\"12\" name=\"Pump start\"/></Events>"));
    EXPECT_EQ(p.event->id, 12);
    EXPECT_EQ(p.event->engName(), QStringLiteral("Pump start"));
    EXPECT_TRUE(p.event->translations().isEmpty());
    EXPECT_TRUE(p.event->messages.isEmpty());
}

TEST(EventTypeXml, EventWithoutAttributesStillReadsItsMessages)
{
    Parse p(QStringLiteral("<Event><Message id=\"3\" name=\"Opened\"/><Message id=\"4\" name=\"Closed\"/></Event>"));
    EXPECT_EQ(p.event->id, 0);
    EXPECT_TRUE(p.event->engName().isEmpty());
    EXPECT_EQ(p.event->messages.size(), 2);
    EXPECT_EQ(p.event->messages.value(3).engName(), QStringLiteral("Opened"));
    EXPECT_EQ(p.event->messages.value(4).engName(), QStringLiteral("Closed"));
}

TEST(EventTypeXml, EventId70000IsCutTo16Bits)
{
    Parse p(QStringLiteral("<Event id=\"70000\" name=\"x\"/>"));
    EXPECT_EQ(p.event->id, 4464);
}

TEST(EventTypeXml, NegativeEventIdWrapsIn16Bits)
{
    Parse p(QStringLiteral("<Event id=\"-1\"/>"));
    EXPECT_EQ(p.event->id, 65535);
}

TEST(EventTypeXml, EventIdThatIsNotANumberIsZero)
{
    Parse a(QStringLiteral("<Event id=\"12abc\"/>"));
    EXPECT_EQ(a.event->id, 0);
    Parse b(QStringLiteral("<Event id=\"0x10\"/>"));
    EXPECT_EQ(b.event->id, 0);
    Parse c(QStringLiteral("<Event id=\"99999999999\"/>"));
    EXPECT_EQ(c.event->id, 0);
}

// --- translations of the event name ------------------------------------------------------

TEST(EventTypeXml, TranslationOfTheName)
{
    Parse p(QStringLiteral("<Event id=\"1\" name=\"Pump\"><translation lang=\"ru\">Nasos</translation>"
                           "<translation lang=\"de\">Pumpe</translation></Event>"));
    EXPECT_EQ(p.event->translate(Ru, false), QStringLiteral("Nasos"));
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral("Pumpe"));
    EXPECT_EQ(p.event->engName(), QStringLiteral("Pump"));
}

TEST(EventTypeXml, TranslationTextAroundACommentIsJoined)
{
    Parse p(QStringLiteral("<Event id=\"1\" name=\"Pump\"><translation lang=\"de\">Pum<!-- a comment -->pe"
                           "</translation></Event>"));
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral("Pumpe"));
    EXPECT_EQ(p.log, QStringList{QStringLiteral("QHash()")});
}

TEST(EventTypeXml, TranslationTextKeepsEntitiesCdataAndWhitespace)
{
    Parse p(QStringLiteral("<Event id=\"1\"><translation lang=\"de\"> A &amp; <![CDATA[<B>]]> </translation></Event>"));
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral(" A & <B> "));
}

TEST(EventTypeXml, WhitespaceIsText)
{
    Parse p(QStringLiteral("<Event id=\"1\"><translation lang=\"de\"> </translation></Event>"));
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral(" "));
    EXPECT_EQ(p.log.size(), 1);
}

TEST(EventTypeXml, StartTagsInsideATranslationArePassedOver)
{
    // The document breaks off before the end tag of b, so only its start tag is seen.
    // (Character data at the very end of a broken document is never delivered.)
    Parse p(QStringLiteral("<Event id=\"1\"><translation lang=\"de\">a<b x=\"1\">c<!-- -->"));
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral("ac"));
    EXPECT_TRUE(p.log.isEmpty());
}

TEST(EventTypeXml, EndTagOfAnEmptyElementInsideATranslationEndsTheParse)
{
    Parse p(QStringLiteral("<Event id=\"1\"><translation lang=\"de\">a<br/>b</translation></Event>"));
    // <br/> is a start tag and an end tag named br: the end tag ends the parse.
    EXPECT_EQ(p.log, QStringList{notClosedLine("de", 1, "")});
    EXPECT_TRUE(p.event->translations().isEmpty());
}

TEST(EventTypeXml, NameAttributeAndNoAttributeAreAlike)
{
    Parse named(QStringLiteral("<Event id=\"1\" name=\"Pump\"><translation attribute=\"name\" lang=\"ru\">Nasos"
                               "</translation></Event>"));
    Parse plain(QStringLiteral("<Event id=\"1\" name=\"Pump\"><translation lang=\"ru\">Nasos</translation></Event>"));
    Parse empty(QStringLiteral("<Event id=\"1\" name=\"Pump\"><translation attribute=\"\" lang=\"ru\">Nasos"
                               "</translation></Event>"));
    EXPECT_EQ(named.event->translations(), plain.event->translations());
    EXPECT_EQ(empty.event->translations(), plain.event->translations());
    EXPECT_EQ(named.event->translate(Ru, false), QStringLiteral("Nasos"));
    EXPECT_EQ(named.log, plain.log);
    EXPECT_EQ(empty.log, plain.log);
    EXPECT_EQ(plain.log, QStringList{QStringLiteral("QHash()")});
}

TEST(EventTypeXml, DfAttributeIsRefusedForTheEventAndParsingGoesOn)
{
    Parse p(QStringLiteral("<Event id=\"5\" name=\"Pump\"><translation attribute=\"df\" lang=\"ru\">Nasos</translation>"
                           "<Message id=\"1\" name=\"On\"/><translation lang=\"de\">Pumpe</translation></Event>"));
    EXPECT_TRUE(p.event->translate(Ru, false).isEmpty());
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral("Pumpe"));
    EXPECT_EQ(p.event->messages.size(), 1);
    ASSERT_EQ(p.log.size(), 2);
    EXPECT_EQ(p.log.at(0),
              QStringLiteral("Not translatable attribute \"df\" for Event element with id 5 and name \" \"Pump\" \""));
    EXPECT_EQ(p.log.at(1), debugLine(p.event->messages));
    EXPECT_TRUE(p.xml.isEndElement());
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("Event"));
}

TEST(EventTypeXml, DfAttributeIsAcceptedWithinAMessage)
{
    Parse p(QStringLiteral("<Event id=\"5\"><Message id=\"1\" name=\"On\"><translation attribute=\"df\" lang=\"de\">An"
                           "</translation></Message></Event>"));
    EXPECT_EQ(p.text(1, QStringLiteral("de")), QStringLiteral("An"));
    EXPECT_EQ(p.log.size(), 1);
}

// --- messages -----------------------------------------------------------------------------

TEST(EventTypeXml, MessageWithDfAndNoNameTakesDfAsBoth)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"2\" df=\"Vkl\"/></Event>"));
    EXPECT_EQ(p.event->messages.value(2).engName(), QStringLiteral("Vkl"));
    EXPECT_EQ(p.text(2, Ru), QStringLiteral("Vkl"));
}

TEST(EventTypeXml, MessageWithDfAndNameKeepsTheName)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"2\" name=\"On\" df=\"Vkl\"/></Event>"));
    EXPECT_EQ(p.event->messages.value(2).engName(), QStringLiteral("On"));
    EXPECT_EQ(p.text(2, Ru), QStringLiteral("Vkl"));
    EXPECT_EQ(p.event->messages.value(2).translations().size(), 1);
}

TEST(EventTypeXml, MessageWithoutDfHasNoRussianText)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"2\" name=\"On\"/></Event>"));
    EXPECT_EQ(p.event->messages.value(2).engName(), QStringLiteral("On"));
    EXPECT_TRUE(p.event->messages.value(2).translations().isEmpty());
}

TEST(EventTypeXml, MessageWithoutDfGetsRussianFromATranslation)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"2\" name=\"On\"><translation lang=\"ru\">Vkl</translation>"
                           "</Message></Event>"));
    EXPECT_EQ(p.text(2, Ru), QStringLiteral("Vkl"));
}

TEST(EventTypeXml, TranslationOfAMessageWithAnotherAttributeIsIgnoredSilently)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"2\" name=\"On\">"
                           "<translation attribute=\"unit\" lang=\"ru\">kg</translation>"
                           "<translation attribute=\"name\" lang=\"de\">An</translation></Message></Event>"));
    EXPECT_TRUE(p.text(2, Ru).isEmpty());
    EXPECT_EQ(p.text(2, QStringLiteral("de")), QStringLiteral("An"));
    EXPECT_EQ(p.log, QStringList{debugLine(p.event->messages)});
}

TEST(EventTypeXml, MessageTranslationsWithNameAndWithoutAttributeAreAlike)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"1\" name=\"On\"><translation attribute=\"name\" lang=\"de\">An"
                           "</translation></Message><Message id=\"2\" name=\"On\"><translation lang=\"de\">An"
                           "</translation></Message></Event>"));
    EXPECT_EQ(p.event->messages.value(1), p.event->messages.value(2));
    EXPECT_EQ(p.text(1, QStringLiteral("de")), QStringLiteral("An"));
}

TEST(EventTypeXml, DeeplyNestedMessageTranslationEnds)
{
    QByteArray document = "<Event id=\"1\"><Message id=\"1\" name=\"On\"><translation lang=\"de\">A";
    for (int i = 0; i < 200000; ++i)
        document += "<i>";
    document += 'n';
    for (int i = 0; i < 200000; ++i)
        document += "</i>";
    document += "</translation></Message><Message id=\"2\"/></Event>";
    Parse p(QString::fromLatin1(document));
    EXPECT_EQ(p.text(1, QStringLiteral("de")), QStringLiteral("An"));
    EXPECT_EQ(p.event->messages.size(), 2);
    EXPECT_EQ(p.log.size(), 1);
}

TEST(EventTypeXml, TwoMessagesWithOneIdLeaveTheLater)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"2\" name=\"First\"/><Message id=\"2\" name=\"Second\"/>"
                           "</Event>"));
    EXPECT_EQ(p.event->messages.size(), 1);
    EXPECT_EQ(p.event->messages.count(2), 1);
    EXPECT_EQ(p.event->messages.value(2).engName(), QStringLiteral("Second"));
}

TEST(EventTypeXml, MessageId300IsStoredUnder44)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"300\" name=\"x\"/></Event>"));
    EXPECT_EQ(p.event->messages.keys(), QList<unsigned char>{44});
}

TEST(EventTypeXml, MessageIds256And0AreOneNumber)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"0\" name=\"zero\"/><Message id=\"256\" name=\"wrapped\"/>"
                           "</Event>"));
    EXPECT_EQ(p.event->messages.size(), 1);
    EXPECT_EQ(p.event->messages.value(0).engName(), QStringLiteral("wrapped"));
}

TEST(EventTypeXml, MessageIdWrapsAndBadNumbersAreZero)
{
    Parse p(QStringLiteral("<Event id=\"1\"><Message id=\"-1\" name=\"minus\"/><Message id=\"two\" name=\"text\"/>"
                           "</Event>"));
    EXPECT_EQ(p.event->messages.value(255).engName(), QStringLiteral("minus"));
    EXPECT_EQ(p.event->messages.value(0).engName(), QStringLiteral("text"));
}

TEST(EventTypeXml, ElementsAreRecognisedAtAnyDepth)
{
    Parse p(QStringLiteral("<Event id=\"1\"><group><Message id=\"7\" name=\"deep\"/>"
                           "<inner><translation lang=\"de\">tief</translation></inner></group></Event>"));
    EXPECT_EQ(p.event->messages.value(7).engName(), QStringLiteral("deep"));
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral("tief"));
}

TEST(EventTypeXml, NamesAreComparedExactly)
{
    Parse p(QStringLiteral("<Event id=\"1\" xmlns:x=\"urn:x\"><message id=\"1\" name=\"a\"/>"
                           "<x:Message id=\"2\" name=\"b\"/><Translation lang=\"de\">c</Translation>"
                           "<x:translation lang=\"fr\">d</x:translation></Event>"));
    EXPECT_TRUE(p.event->messages.isEmpty());
    EXPECT_TRUE(p.event->translations().isEmpty());
    EXPECT_EQ(p.log, QStringList{QStringLiteral("QHash()")});
}

TEST(EventTypeXml, OnlyTheFirstEventEndTagEndsTheElement)
{
    Parse p(QStringLiteral("<r><Event id=\"1\" name=\"outer\"><Event id=\"2\" name=\"inner\"><Message id=\"1\" name=\"a\"/>"
                           "</Event><Message id=\"2\" name=\"b\"/></Event><tail/></r>"));
    EXPECT_EQ(p.event->id, 1);
    EXPECT_EQ(p.event->engName(), QStringLiteral("outer"));
    EXPECT_EQ(p.event->messages.keys(), QList<unsigned char>{1});
    EXPECT_TRUE(p.xml.isEndElement());
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("Event"));
    p.xml.readNext();
    EXPECT_TRUE(p.xml.isStartElement());
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("Message"));
}

TEST(EventTypeXml, OtherContentIsPassedOver)
{
    Parse p(QStringLiteral("<Event id=\"1\" name=\"Pump\">loose text<?pi data?><!-- note --><other a=\"b\">more</other>"
                           "<Message id=\"1\" name=\"On\">message text</Message></Event>"));
    EXPECT_TRUE(p.event->translations().isEmpty());
    EXPECT_EQ(p.event->engName(), QStringLiteral("Pump"));
    EXPECT_EQ(p.event->messages.value(1), QXmlTranslation(QStringLiteral("On")));
}

// --- the trace of a complete parse -------------------------------------------------------

TEST(EventTypeXml, CompleteParseTracesTheMessages)
{
    Parse p(QStringLiteral("<Event id=\"1\" name=\"Pump\"><Message id=\"300\" name=\"On\" df=\"Vkl\"/></Event>"));
    ASSERT_EQ(p.log.size(), 1);
    EXPECT_EQ(p.log.at(0), QStringLiteral("QHash((44, QXmlTranslation(\"On\", \"ru\": \"Vkl\")))"));
    EXPECT_EQ(p.log.at(0), debugLine(p.event->messages));
}

TEST(EventTypeXml, EmptyEventTracesAnEmptyHash)
{
    Parse p(QStringLiteral("<Event id=\"1\" name=\"Pump\"></Event>"));
    EXPECT_EQ(p.log, QStringList{QStringLiteral("QHash()")});
}

TEST(EventTypeXml, TraceOfSeveralMessagesIsQtsDebugFormOfTheHash)
{
    Parse p(QStringLiteral("<Event id=\"9\" name=\"Valve\"><Message id=\"1\" name=\"Open\" df=\"Otkr\"/>"
                           "<Message id=\"2\" name=\"Closed\"><translation lang=\"de\">Zu</translation></Message>"
                           "<Message id=\"3\"/></Event>"));
    ASSERT_EQ(p.log.size(), 1);
    EXPECT_EQ(p.log.at(0), debugLine(p.event->messages));
    EXPECT_TRUE(p.log.at(0).startsWith(QLatin1String("QHash(")));
    EXPECT_TRUE(p.log.at(0).contains(QLatin1String("(1, QXmlTranslation(\"Open\", \"ru\": \"Otkr\"))")));
    EXPECT_TRUE(p.log.at(0).contains(QLatin1String("(2, QXmlTranslation(\"Closed\", \"de\": \"Zu\"))")));
    EXPECT_TRUE(p.log.at(0).contains(QLatin1String("(3, QXmlTranslation(\"\"))")));
}

TEST(EventTypeXml, CompleteParseLeavesTheReaderOnTheEventEndTag)
{
    Parse p(QStringLiteral("<r><Event id=\"1\"><Message id=\"1\"/></Event><next/></r>"));
    EXPECT_TRUE(p.xml.isEndElement());
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("Event"));
    p.xml.readNext();
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("next"));
}

// --- bad translations of the event ---------------------------------------------------------

TEST(EventTypeXml, MissingLangEndsTheParse)
{
    Parse p(QStringLiteral("<Event id=\"7\" name=\"Pump\"><Message id=\"1\" name=\"On\"/>"
                           "<translation>Nasos</translation><Message id=\"2\" name=\"Off\"/></Event>"));
    EXPECT_EQ(p.log, QStringList{missingLangLine(7, "Pump")});
    // What was parsed stays; nothing after the translation is read.
    EXPECT_EQ(p.event->messages.keys(), QList<unsigned char>{1});
    EXPECT_TRUE(p.xml.isStartElement());
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("translation"));
}

TEST(EventTypeXml, EmptyLangEndsTheParse)
{
    Parse p(QStringLiteral("<Event id=\"70000\" name=\"Pu&quot;mp\"><translation lang=\"\">Nasos</translation></Event>"));
    EXPECT_EQ(p.log, QStringList{missingLangLine(4464, "Pu\\\"mp")});
    EXPECT_TRUE(p.event->translations().isEmpty());
}

TEST(EventTypeXml, IdInALogLineIsUnsigned)
{
    Parse p(QStringLiteral("<Event id=\"-1\" name=\"x\"><translation lang=\"de\"></translation></Event>"));
    EXPECT_EQ(p.log, QStringList{missingTextLine("de", 65535, "x")});
}

TEST(EventTypeXml, LangIsTestedBeforeTextAndAttribute)
{
    Parse p(QStringLiteral("<Event id=\"7\"><translation attribute=\"unit\"></translation></Event>"));
    EXPECT_EQ(p.log, QStringList{missingLangLine(7, "")});
}

TEST(EventTypeXml, AnotherEndTagInsideATranslationEndsTheParse)
{
    Parse p(QStringLiteral("<Event id=\"7\" name=\"Pump\"><translation lang=\"de\">Pumpe</translation>"
                           "<translation lang=\"ru\">Na<b>so</b>s</translation><Message id=\"1\"/></Event>"));
    EXPECT_EQ(p.log, QStringList{notClosedLine("ru", 7, "Pump")});
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral("Pumpe"));
    EXPECT_TRUE(p.event->translate(Ru, false).isEmpty());
    EXPECT_TRUE(p.event->messages.isEmpty());
    // The reader stays on the end tag that was found.
    EXPECT_TRUE(p.xml.isEndElement());
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("b"));
}

TEST(EventTypeXml, TranslationWithoutTextEndsTheParse)
{
    Parse p(QStringLiteral("<Event id=\"7\" name=\"Pump\"><translation lang=\"ru\"></translation>"
                           "<Message id=\"1\"/></Event>"));
    EXPECT_EQ(p.log, QStringList{missingTextLine("ru", 7, "Pump")});
    EXPECT_TRUE(p.event->messages.isEmpty());
    EXPECT_TRUE(p.xml.isEndElement());
    EXPECT_EQ(p.xml.qualifiedName(), QLatin1String("translation"));
}

TEST(EventTypeXml, EmptyTranslationElementHasNoText)
{
    Parse p(QStringLiteral("<Event id=\"7\" name=\"Pump\"><translation lang=\"ru\"/></Event>"));
    EXPECT_EQ(p.log, QStringList{missingTextLine("ru", 7, "Pump")});
}

TEST(EventTypeXml, WrongAttributeWithoutTextCountsAsNoText)
{
    Parse p(QStringLiteral("<Event id=\"7\" name=\"Pump\"><translation attribute=\"df\" lang=\"ru\"><!-- none -->"
                           "</translation></Event>"));
    EXPECT_EQ(p.log, QStringList{missingTextLine("ru", 7, "Pump")});
}

TEST(EventTypeXml, ErrorKeepsTranslationsAndMessagesReadBefore)
{
    Parse p(QStringLiteral("<Event id=\"2\" name=\"Tank\"><translation lang=\"de\">Tank</translation>"
                           "<Message id=\"4\" name=\"Full\"/><translation lang=\"fr\"></translation></Event>"));
    EXPECT_EQ(p.event->id, 2);
    EXPECT_EQ(p.event->translate(QStringLiteral("de"), false), QStringLiteral("Tank"));
    EXPECT_EQ(p.event->messages.value(4).engName(), QStringLiteral("Full"));
    ASSERT_EQ(p.log.size(), 1);
    EXPECT_TRUE(p.log.at(0).startsWith(QLatin1String("Missing translation text for \"fr\"")));
}

// --- documents that break off --------------------------------------------------------------

TEST(EventTypeXml, DocumentBreakingOffInsideTheEventEnds)
{
    Parse p(QStringLiteral("<Event id=\"3\" name=\"x\"><Message id=\"1\" name=\"m\"/><other>"));
    EXPECT_EQ(p.event->messages.keys(), QList<unsigned char>{1});
    EXPECT_TRUE(p.log.isEmpty());
    EXPECT_TRUE(p.xml.atEnd());
}

TEST(EventTypeXml, DocumentBreakingOffInsideATranslationEnds)
{
    Parse p(QStringLiteral("<Event id=\"3\" name=\"x\"><translation lang=\"ru\">abc<!-- -->"));
    EXPECT_EQ(p.event->translate(Ru, false), QStringLiteral("abc"));
    EXPECT_TRUE(p.log.isEmpty());
}

TEST(EventTypeXml, DocumentBreakingOffInsideAnEmptyTranslationEnds)
{
    Parse p(QStringLiteral("<Event id=\"3\" name=\"x\"><translation lang=\"ru\">"));
    EXPECT_EQ(p.log, QStringList{missingTextLine("ru", 3, "x")});
}

TEST(EventTypeXml, DocumentBreakingOffInsideAMessageEnds)
{
    Parse p(QStringLiteral("<Event id=\"3\"><Message id=\"4\" name=\"m\" df=\"d\"><translation lang=\"de\">t"));
    EXPECT_EQ(p.event->messages.size(), 1);
    EXPECT_EQ(p.event->messages.value(4).engName(), QStringLiteral("m"));
    EXPECT_EQ(p.text(4, Ru), QStringLiteral("d"));
    EXPECT_TRUE(p.log.isEmpty());
}

TEST(EventTypeXml, DocumentThatIsNotWellFormedEnds)
{
    Parse p(QStringLiteral("<Event id=\"3\"><a></b><Message id=\"1\"/></Event>"));
    EXPECT_TRUE(p.event->messages.isEmpty());
    EXPECT_TRUE(p.xml.hasError());
    EXPECT_TRUE(p.log.isEmpty());
}

TEST(EventTypeXml, ElementWithoutEventEndTagEnds)
{
    // A reader handed over on another element walks to the end of the document.
    QXmlStreamReader xml(QStringLiteral("<Root id=\"4\"><Message id=\"1\" name=\"m\"/></Root>"));
    xml.readNext();
    xml.readNext();
    ASSERT_TRUE(xml.isStartElement());
    telortest::LogCapture capture;
    const EventTypeInfoStruct event(xml);
    EXPECT_EQ(event.id, 4);
    EXPECT_EQ(event.messages.keys(), QList<unsigned char>{1});
    EXPECT_TRUE(xml.atEnd());
    EXPECT_TRUE(capture.captured().isEmpty());
}
