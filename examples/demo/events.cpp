// Events: a journal window asks for the events of a morning, the server answers with a
// list of records as it sends it, and the client prints each record with the name of its
// type and the text of its message from the event type catalogue, in two languages.

#include "demosections.h"

#include "eventsarchiveresult.h"
#include "eventsquery.h"
#include "eventsquerycancel.h"
#include "eventsubscription.h"
#include "eventtypeinfostruct.h"

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QXmlStreamReader>

namespace {

const char catalogueXml[] =
    "<Events>"
    "<Event id=\"1\" name=\"Limit\">"
    "<translation lang=\"ru\">Predel</translation>"
    "<Message id=\"1\" name=\"High warning\" df=\"Verkhnyaya preduprezhdayushchaya\"/>"
    "<Message id=\"2\" name=\"Back to normal\" df=\"Norma\"/>"
    "</Event>"
    "<Event id=\"2\" name=\"Status word\">"
    "<translation lang=\"ru\">Slovo sostoyaniya</translation>"
    "<Message id=\"1\" name=\"Bit changed\" df=\"Izmenenie bita\"/>"
    "</Event>"
    "</Events>";

/** The catalogue as the server's configuration describes it, by type number. */
QHash<unsigned int, EventTypeInfoStruct> catalogue()
{
    // The parse writes a trace of each type's messages to the debug log; keep the demo's
    // output to what it prints itself.
    const QtMessageHandler previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QHash<unsigned int, EventTypeInfoStruct> types;
    QXmlStreamReader xml{QByteArray(catalogueXml)};
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.qualifiedName() == QLatin1String("Event")) {
            const EventTypeInfoStruct type(xml);
            types.insert(type.id, type);
        }
    }
    qInstallMessageHandler(previous);
    return types;
}

EventStruct record(unsigned short type, unsigned char message, const QDateTime &when, unsigned int parameter)
{
    EventStruct event;
    event.typeId = type;
    event.eventMessage = message;
    event.dateTime = when;
    event.firstId = parameter;
    event.secondId = 1;
    return event;
}

/** The answer a server sends: the token of the query and the records of the span. */
QByteArray serverAnswer(const EventsQuery &query)
{
    EventsArchiveResult result;
    result.replyTo(query);
    result.parent = static_cast<qint64>(reinterpret_cast<quintptr>(query.parent));
    const QDateTime t0 = query.getBeginDateTime();
    EventStruct high = record(1, 1, t0.addSecs(754), 101);
    high.parameters.insert(QStringLiteral("value"), 21.7);
    EventStruct bit = record(2, 1, t0.addSecs(1903), 103);
    bit.parameters.insert(QStringLiteral("#old_bit_value"), 0x10u);
    bit.parameters.insert(QStringLiteral("#new_bit_value"), 0x11u);
    EventStruct normal = record(1, 2, t0.addSecs(2410), 101);
    normal.parameters.insert(QStringLiteral("value"), 19.9);
    EventStruct unknown = record(9, 4, t0.addSecs(3000), 104);
    result.events = {high, bit, normal, unknown};
    result.value1 = result.events.size();
    return result.write();
}

QString typeName(const QHash<unsigned int, EventTypeInfoStruct> &types, const EventStruct &event, const QString &language)
{
    const auto type = types.constFind(event.typeId);
    if (type == types.constEnd())
        return QStringLiteral("type %1 (not in the catalogue)").arg(event.typeId);
    return type->translate(language);
}

QString messageText(const QHash<unsigned int, EventTypeInfoStruct> &types, const EventStruct &event, const QString &language)
{
    const auto type = types.constFind(event.typeId);
    if (type == types.constEnd() || !type->messages.contains(event.eventMessage))
        return QStringLiteral("message %1").arg(event.eventMessage);
    return type->messages.value(event.eventMessage).translate(language);
}

QString valuesText(const EventStruct &event)
{
    QStringList keys = event.parameters.keys();
    keys.sort();
    QStringList parts;
    for (const QString &key : keys)
        parts << QStringLiteral("%1=%2").arg(key, event.parameters.value(key).toString());
    return parts.join(QStringLiteral(", "));
}

} // namespace

void demoEvents(QTextStream &out)
{
    out << "== Events: a query, the answer of a server, the records with their texts\n\n";

    const QHash<unsigned int, EventTypeInfoStruct> types = catalogue();
    out << "  The catalogue knows " << types.size() << " event types\n";

    QObject journal;
    EventsQuery query(1, &journal);
    out << "  A new query is valid: " << (query.isValid() ? "yes" : "no") << "\n";
    const QDateTime begin(QDate(2025, 11, 3), QTime(8, 0, 0, 400), Qt::UTC);
    query.setInterval(begin, begin.addSecs(3600));
    out << "  Interval " << query.getBeginDateTime().toString(Qt::ISODateWithMs) << " .. "
        << query.getEndDateTime().toString(Qt::ISODateWithMs) << ", valid: " << (query.isValid() ? "yes" : "no")
        << "\n";
    const QByteArray sent = query.write();
    out << "  On the wire: " << sent.size() << " bytes\n";

    // The server reads the query; it cuts the milliseconds, as the query asks.
    EventsQuery received(0, nullptr);
    received.setPacket(sent);
    received.read();
    out << "  The server reads the begin as " << received.getBeginDateTime().toString(Qt::ISODateWithMs) << "\n";

    // The client reads the answer into a fresh result and prints every record.
    EventsArchiveResult result;
    result.setPacket(serverAnswer(received));
    const bool ok = result.read();
    out << "  The answer is for the journal: "
        << (result.parent == static_cast<qint64>(reinterpret_cast<quintptr>(&journal)) ? "yes" : "no")
        << ", read " << (ok ? "ok" : "failed") << ", " << result.events.size() << " records\n";
    for (const QString &language : {QStringLiteral("en"), QStringLiteral("ru")}) {
        out << "\n  In the language \"" << language << "\":\n";
        for (const EventStruct &event : result.events) {
            out << QStringLiteral("    %1  %2: %3  [parameter %4%5]\n")
                       .arg(event.dateTime.toString(QStringLiteral("hh:mm:ss")),
                            typeName(types, event, language),
                            messageText(types, event, language))
                       .arg(event.firstId)
                       .arg(event.parameters.isEmpty() ? QString() : QStringLiteral("; ") + valuesText(event));
        }
    }

    // Equality looks at the four numbers and the date, never at the named values.
    EventStruct copy = result.events.first();
    copy.parameters.clear();
    out << "\n  A record without its named values equals the original: "
        << (copy == result.events.first() ? "yes" : "no") << "\n";

    // From now on the journal follows new events as they occur, and it calls the query off.
    EventSubscription subscription(&journal);
    EventsQueryCancel cancel(&journal);
    const QProtocolHeader s = subscription.getHeader();
    const QProtocolHeader c = cancel.getHeader();
    out << QStringLiteral("  Subscription %1, %2, %3 and cancel %4, %5, %6 carry the journal's token\n\n")
               .arg(s.serviceId)
               .arg(s.messageId)
               .arg(s.messageType)
               .arg(c.serviceId)
               .arg(c.messageId)
               .arg(c.messageType);
}
