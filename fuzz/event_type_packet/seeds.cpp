// Writes event type descriptions in their packet form, built with the library's own
// writer, as the seed corpus of the event type packet fuzz target.

#include "eventtypeinfostruct.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

namespace {

QByteArray packetOf(const QList<EventTypeInfoStruct> &events)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    for (const EventTypeInfoStruct &event : events)
        event.write(out);
    return bytes;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    EventTypeInfoStruct pump;
    pump.id = 1;
    pump.setEngName(QStringLiteral("Pump"));
    pump.setTranslation(QStringLiteral("Nasos"), QStringLiteral("ru"));
    pump.setTranslation(QStringLiteral("Pumpe"), QStringLiteral("de"));
    QXmlTranslation started(QStringLiteral("Started"));
    started.setTranslation(QStringLiteral("Zapusk"), QStringLiteral("ru"));
    pump.messages.insert(0, started);
    pump.messages.insert(44, QXmlTranslation(QStringLiteral("Stopped")));
    pump.messages.insert(255, QXmlTranslation());
    seeds.add(QStringLiteral("pump"), packetOf({pump}));

    EventTypeInfoStruct valve;
    valve.id = 65535;
    valve.setEngName(QStringLiteral("Valve"));
    seeds.add(QStringLiteral("two"), packetOf({pump, valve}));
    seeds.add(QStringLiteral("empty"), packetOf({EventTypeInfoStruct()}));

    // A catalogue in which one message number arrives twice.
    EventTypeInfoStruct twice;
    twice.id = 7;
    twice.messages.insert(3, QXmlTranslation(QStringLiteral("first")));
    QHash<unsigned char, QXmlTranslation> &multi = twice.messages;
    static_cast<QMultiHash<unsigned char, QXmlTranslation> &>(multi).insert(3, QXmlTranslation(QStringLiteral("second")));
    seeds.add(QStringLiteral("repeated-number"), packetOf({twice}));
    return seeds.finish();
}
