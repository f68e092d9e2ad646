#ifndef EVENTTYPEINFOSTRUCT_H
#define EVENTTYPEINFOSTRUCT_H

#include <QtCore/QHash>

#include "qxmltranslation.h"
#include "telorparams5_export.h"

class QContainerPacket;
class QXmlStreamReader;

/**
 * @brief The description of one type of event: its number, its translatable name and
 * the translatable messages that an event of this type can show.
 *
 * The name is the QXmlTranslation this record derives from. `id` is the event type's
 * number and `messages` holds the message texts by message number. The record is a plain
 * value with public fields and no virtual operations; it is copied by value.
 *
 * Descriptions come from an XML document (the XML constructor) and travel inside the
 * parameter list message in the packet form of read() and write():
 *
 * | Order | Item               | Encoding                                             |
 * |-------|--------------------|------------------------------------------------------|
 * | 1     | the name           | QXmlTranslation stream form                          |
 * | 2     | `id`               | 16 bits                                              |
 * | 3     | number of messages | 32 bits                                              |
 * | 4     | each message       | its number in 8 bits, then its QXmlTranslation form  |
 *
 * The messages are written walking the hash from its last entry to its first, which is
 * Qt's form for an associative container.
 */
class TELORPARAMS5_EXPORT EventTypeInfoStruct : public QXmlTranslation
{
public:
    /** An empty description: no name, `id` 0, no messages. */
    EventTypeInfoStruct();

    /**
     * Parses one `Event` element. The reader must stand on the element's start tag: its
     * `id` and `name` attributes are the first thing read. `id` is read in base 10 and
     * cut to 16 bits (text that is not a number gives 0); `name` becomes the English name.
     *
     * Within the element:
     * - a `translation` start tag (at any depth) adds the text of its character data in
     *   the language of its `lang` attribute, when its `attribute` is empty or "name";
     * - a `Message` start tag (at any depth) adds a message under the low 8 bits of its
     *   `id`, replacing an earlier message of that number. Its `name` is the English text
     *   and its `df` the "ru" text (and the English text too when `name` is empty); its
     *   `translation` children with an `attribute` that is empty, "name" or "df" add
     *   languages through QXmlTranslation::readTranslationFromXMLStream();
     * - everything else is passed over. The first end tag named `Event` ends the element.
     *
     * A complete parse writes the message table to the debug log in Qt's debug form for a
     * hash, and leaves the reader on the `Event` end tag.
     *
     * There is no failure result. A `translation` of the event without `lang` or without
     * text, or one interrupted by another end tag, writes one line to the debug log and
     * ends the parse where it stands: what was parsed so far stays, the reader is not
     * moved on to the end of the element, and the table is not logged. A `translation` of
     * the event with another `attribute` is logged and dropped, and parsing goes on.
     *
     * The parse always ends: when the reader reaches the end of its data or an error of
     * the document before the `Event` end tag, it stops there as it does on an error,
     * with what it read so far and without logging the table. Every well-formed element
     * is parsed to its end tag.
     */
    explicit EventTypeInfoStruct(QXmlStreamReader &xml);

    /** Sets up an empty description, then calls read(). */
    explicit EventTypeInfoStruct(QContainerPacket &packet);

    /**
     * Replaces the contents with the packet form read from @p packet.
     *
     * `messages` is emptied first, and each message is added without replacing one of
     * the same number, so a number that arrives twice is held twice. If the stream's
     * status is no longer good after a message, `messages` is left empty and reading
     * stops. The stream status is handled as Qt's container operators handle it; a
     * truncated packet reads as zeros and empty values.
     */
    void read(QContainerPacket &packet);

    /** Writes the packet form to @p packet. */
    void write(QContainerPacket &packet) const;

    /** The event type's number. */
    unsigned short id = 0;
    /** The message texts of this event type by message number. */
    QHash<unsigned char, QXmlTranslation> messages;
};

#endif // EVENTTYPEINFOSTRUCT_H
