// Feeds arbitrary text to the XML constructor of an event type description.
//
// The first byte chooses how the text reaches it. Even: the text is a whole document,
// and every Event start tag in it is handed to the constructor in turn, as a caller
// walks a catalogue. Odd: the text is the content of an Event element that the target
// opens and closes around it. Each description that comes out is written in its packet
// form and read back.

#include "fuzztarget.h"

#include "eventtypeinfostruct.h"
#include "qcontainerpacket.h"

#include <QtCore/QXmlStreamReader>

#include <cstdint>

namespace {

void roundTrip(const EventTypeInfoStruct &event)
{
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        event.write(out);
    }
    QContainerPacket in(bytes);
    const EventTypeInfoStruct back(in);
    if (back.id != event.id || back.messages.size() != event.messages.size())
        __builtin_trap();
}

void parseDocument(const QByteArray &document)
{
    QXmlStreamReader xml(document);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.qualifiedName() == QLatin1String("Event"))
            roundTrip(EventTypeInfoStruct(xml));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();
    if (size < 1)
        return 0;
    const QByteArray text(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    if (data[0] % 2 == 0)
        parseDocument(text);
    else
        parseDocument(QByteArray("<Event id=\"7\" name=\"fuzz\">") + text + QByteArray("</Event>"));
    return 0;
}
