#include "eventtypeinfostruct.h"

#include "hashwalk_p.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

#include <QtCore/QDebug>
#include <QtCore/QXmlStreamAttributes>
#include <QtCore/QXmlStreamReader>

namespace {

const QLatin1String EventTag("Event");
const QLatin1String MessageTag("Message");
const QLatin1String TranslationTag("translation");

const QLatin1String IdAttribute("id");
const QLatin1String NameAttribute("name");
const QLatin1String LangAttribute("lang");
const QLatin1String TranslatedAttribute("attribute");
const QLatin1String DfAttribute("df");

/** What the parse does after an element of the event has been handled. */
enum class Next {
    GoOn,
    Stop,
};

/**
 * Handles a `translation` start tag of the event itself: gathers its character data up
 * to its end tag and adds it as the text of its language. Returns Stop, after one line
 * on the debug log, where the parse has to end.
 */
Next readEventTranslation(QXmlStreamReader &xml, EventTypeInfoStruct &event)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    const QString attribute = attributes.value(TranslatedAttribute).toString();
    const QString lang = attributes.value(LangAttribute).toString();

    if (lang.isEmpty()) {
        qDebug() << "Missing translation lang attribute for Event element with id" << event.id << "and name \""
                 << event.engName() << "\"";
        return Next::Stop;
    }

    // Start tags inside the translation are passed over, but any end tag other than the
    // translation's own ends the parse.
    QString text;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement()) {
            if (xml.qualifiedName() == TranslationTag)
                break;
            qDebug() << "Not closed" << lang << "lang translation for Event element with id" << event.id
                     << "and name \"" << event.engName() << "\"";
            return Next::Stop;
        }
        if (xml.isCharacters())
            text += xml.text();
    }

    if (text.isEmpty()) {
        qDebug() << "Missing translation text for" << lang << "lang for Event element with id" << event.id
                 << "and name \"" << event.engName() << "\"";
        return Next::Stop;
    }

    if (!attribute.isEmpty() && attribute != NameAttribute) {
        qDebug() << "Not translatable attribute" << attribute << "for Event element with id" << event.id
                 << "and name \"" << event.engName() << "\"";
        return Next::GoOn;
    }

    event.setTranslation(text, lang);
    return Next::GoOn;
}

/**
 * Handles a `Message` start tag: reads the message up to its end tag and returns it,
 * with its number in @p number.
 */
QXmlTranslation readMessage(QXmlStreamReader &xml, unsigned char &number)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    QXmlTranslation message;
    message.setEngName(attributes.value(NameAttribute).toString());
    const QString df = attributes.value(DfAttribute).toString();
    // Cut to 8 bits: 300 is message 44, and 256 is message 0.
    number = static_cast<unsigned char>(attributes.value(IdAttribute).toInt(nullptr, 10));

    if (!df.isEmpty()) {
        if (message.engName().isEmpty())
            message.setEngName(df);
        message.setTranslation(df, QStringLiteral("ru"));
    }

    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.qualifiedName() == TranslationTag) {
            const QStringRef attribute = xml.attributes().value(TranslatedAttribute);
            if (attribute.isEmpty() || attribute == NameAttribute || attribute == DfAttribute)
                message.readTranslationFromXMLStream(xml);
        }
        if (xml.isEndElement() && xml.qualifiedName() == MessageTag)
            break;
    }
    return message;
}

} // namespace

EventTypeInfoStruct::EventTypeInfoStruct() = default;

EventTypeInfoStruct::EventTypeInfoStruct(QXmlStreamReader &xml)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    // Cut to 16 bits: 70000 is event type 4464.
    id = static_cast<unsigned short>(attributes.value(IdAttribute).toInt(nullptr, 10));
    setEngName(attributes.value(NameAttribute).toString());

    // No depth is counted: a translation or a message is recognised at any depth below
    // the event, and the first end tag named Event ends it.
    for (;;) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            if (xml.qualifiedName() == TranslationTag) {
                if (readEventTranslation(xml, *this) == Next::Stop)
                    return;
            } else if (xml.qualifiedName() == MessageTag) {
                unsigned char number = 0;
                const QXmlTranslation message = readMessage(xml, number);
                // The last message of one number wins.
                messages.insert(number, message);
            }
        }

        if (xml.isEndElement() && xml.qualifiedName() == EventTag)
            break;
        if (token == QXmlStreamReader::NoToken)
            break;
        // A document that breaks off or turns out not to be well-formed before the end
        // tag of the event leaves the reader delivering Invalid for ever; stop there, as
        // an error stops the parse, without the trace of a complete one.
        if (xml.atEnd())
            return;
    }

    qDebug() << messages;
}

EventTypeInfoStruct::EventTypeInfoStruct(QContainerPacket &packet)
{
    read(packet);
}

void EventTypeInfoStruct::read(QContainerPacket &packet)
{
    QDataStream &stream = packet;
    stream >> static_cast<QXmlTranslation &>(*this);
    stream >> id;
    // Qt's reader for an associative container: it empties the hash, keeps a repeated
    // number twice, and leaves the hash empty when the stream goes bad after an entry.
    TelorWire::readHash(stream, messages);
}

void EventTypeInfoStruct::write(QContainerPacket &packet) const
{
    QDataStream &stream = packet;
    stream << static_cast<const QXmlTranslation &>(*this);
    stream << quint16(id);
    stream << quint32(messages.size());
    TelorEvents::walkFromLast(messages, [&stream](unsigned char number, const QXmlTranslation &message) {
        stream << quint8(number) << message;
    });
}
