// Section: the application's start, and what it hears later about its descriptions.
//
// An application asks once for everything it needs to label values: it sends a
// ParamInfoQuery, and the server answers with one ParamInfoList holding every parameter
// description, the tree in which operators arrange the parameters and the catalogue of
// event types. Later the server announces changed descriptions with a ParamInfoChanged,
// and a status word that changes produces a bit-change event, which the application
// turns into text with ParamBitField::getNewBitWord and the description it keeps.

#include "demosections.h"

#include "eventstruct.h"
#include "paraminfochanged.h"
#include "paraminfolist.h"
#include "paraminfoquery.h"
#include "sampledescriptions.h"

#include <QtCore/QDateTime>
#include <QtCore/QHash>

#include <algorithm>

namespace {

ParamInfo temperature()
{
    ParamInfo info = namedDescription(201, "BOILER2.TT201", 1, "Flue gas temperature", "Температура уходящих газов");
    info.unit = twoLanguages(QStringLiteral("degC"), QStringLiteral("°C"));
    info.precision = 1;
    info.limits.enabled = 1;
    info.limits.lo = 0.0;
    info.limits.hi = 400.0;
    info.setpoints.setUpWarningSetpoint(250.0);
    return info;
}

ParamInfo fanStatus()
{
    ParamInfo info = namedDescription(202, "BOILER2.FAN.STATUS", 2, "Draught fan status", "Состояние дымососа");
    info.bitField.enabled = 1;
    info.bitField.attributes.insert(0, describedBit("Running", "Работает", 16, "Yes", "Да"));
    info.bitField.attributes.insert(1, describedBit("Vibration", "Вибрация", 4096, "High", "Высокая"));
    info.bitField.attributes.insert(2, describedBit("Bearing hot", "Перегрев подшипника", 4096, "Hot", "Перегрев"));
    info.bitField.combinations.insert(0x6, wholeWordFault("Emergency stop", "Аварийный останов"));
    return info;
}

ParamGroupItem *paramNode(unsigned int id)
{
    return new ParamGroupItem(ParamGroupItem::ParamItem, false, {{QStringLiteral("id"), QString::number(id)}});
}

EventTypeInfoStruct bitChangeType()
{
    EventTypeInfoStruct type;
    type.setEngName(QStringLiteral("Status word"));
    type.setTranslation(QStringLiteral("Слово состояния"), Ru);
    type.id = 2;
    type.messages.insert(1, twoLanguages(QStringLiteral("Bit changed"), QStringLiteral("Изменение бита")));
    return type;
}

/** The server's side: the answer to a query, written as it goes on the wire. */
QByteArray serverAnswer(const QByteArray &queryPacket)
{
    ParamInfoQuery query;
    query.setPacket(queryPacket);
    query.read();

    ParamInfoList list;
    list.replyTo(query);
    list.params << temperature() << fanStatus();
    list.rootItem.type = ParamGroupItem::GroupItem;
    list.rootItem.tags.insert(QStringLiteral("name"), QStringLiteral("Boiler house"));
    auto *boiler = new ParamGroupItem(ParamGroupItem::GroupItem, false, {{QStringLiteral("name"), QStringLiteral("Boiler 2")}});
    boiler->children << paramNode(201) << paramNode(202);
    list.rootItem.children << boiler;
    list.eventTypes.insert(2, bitChangeType());
    return list.write();
}

void printTree(QTextStream &out, const ParamGroupItem &node, const QHash<unsigned int, const ParamInfo *> &byId,
               int depth)
{
    const QString indent(4 + 2 * depth, QLatin1Char(' '));
    if (node.type == ParamGroupItem::ParamItem) {
        const ParamInfo *info = byId.value(node.getID());
        out << indent << QStringLiteral("%1 %2\n").arg(node.getID()).arg(info ? info->getName(En) : QStringLiteral("?"));
    } else {
        out << indent << QStringLiteral("%1 \"%2\"\n").arg(node.getTypeName(), node.name(QStringLiteral("name")));
    }
    for (const ParamGroupItem *child : node.children) {
        if (child)
            printTree(out, *child, byId, depth + 1);
    }
}

EventStruct bitChange(unsigned int oldWord, unsigned int newWord, int oldState, int newState, const QDateTime &when)
{
    EventStruct event;
    event.typeId = 2;
    event.eventMessage = 1;
    event.dateTime = when;
    event.firstId = 202;
    event.secondId = 1;
    event.parameters.insert(QStringLiteral("#old_bit_value"), oldWord);
    event.parameters.insert(QStringLiteral("#new_bit_value"), newWord);
    event.parameters.insert(QStringLiteral("#old_bit_state"), oldState);
    event.parameters.insert(QStringLiteral("#new_bit_state"), newState);
    return event;
}

void printBitChange(QTextStream &out, const EventStruct &event, const ParamInfoList &list, const QString &language)
{
    const ParamInfo *info = nullptr;
    for (const ParamInfo &candidate : list.params) {
        if (candidate.id == event.firstId)
            info = &candidate;
    }
    const EventTypeInfoStruct type = list.eventTypes.value(event.typeId);
    out << QStringLiteral("    %1  %2: %3, %4  0x%5 -> 0x%6\n")
               .arg(event.dateTime.toString(QStringLiteral("hh:mm:ss")))
               .arg(type.translate(language, true))
               .arg(type.messages.value(event.eventMessage).translate(language, true))
               .arg(info ? info->getName(language) : QString())
               .arg(event.parameters.value(QStringLiteral("#old_bit_value")).toUInt(), 2, 16, QLatin1Char('0'))
               .arg(event.parameters.value(QStringLiteral("#new_bit_value")).toUInt(), 2, 16, QLatin1Char('0'));
    const QHash<unsigned int, ParamBitInfo> shown = ParamBitField::getNewBitWord(event, info, language);
    QList<unsigned int> keys = shown.keys();
    std::sort(keys.begin(), keys.end());
    if (keys.isEmpty())
        out << "      nothing to show\n";
    for (unsigned int key : keys) {
        const ParamBitInfo record = shown.value(key);
        const bool combination = info && info->bitField.combinations.contains(int(key)) && record.value == int(key)
            && record.text.isEmpty();
        out << QStringLiteral("      %1  %2  %3\n")
                   .arg(combination ? QStringLiteral("word 0x%1").arg(key, 0, 16) : QStringLiteral("bit %1").arg(key), -9)
                   .arg(record.name, -22)
                   .arg(combination ? (record.state == 8 ? QStringLiteral("ended") : QStringLiteral("began"))
                                    : QStringLiteral("%1 (state %2)").arg(record.text).arg(record.state));
    }
}

} // namespace

void demoInfoList(QTextStream &out)
{
    out << "== The application's start: the parameter list, change notices and bit changes\n\n";

    // 1. Ask for everything.
    ParamInfoQuery query;
    query.setRoute(1, 77, 1);
    const QByteArray queryPacket = query.write();
    out << QStringLiteral("  The query goes out: %1 bytes, a header and no body.\n").arg(queryPacket.size());

    // 2. Receive it whole.
    const QByteArray answer = serverAnswer(queryPacket);
    QProtocolStruct received;
    received.setPacket(answer);
    ParamInfoList list;
    list.setPacket(received);
    if (!list.read()) {
        out << "  The list did not read.\n\n";
        return;
    }
    out << QStringLiteral("  The list arrives: %1 bytes, %2 descriptions, %3 event type(s), answering query %4.\n")
               .arg(answer.size())
               .arg(list.params.size())
               .arg(list.eventTypes.size())
               .arg(list.getHeader().session);
    QHash<unsigned int, const ParamInfo *> byId;
    for (const ParamInfo &info : list.params)
        byId.insert(info.id, &info);
    out << "  The group tree:\n";
    printTree(out, list.rootItem, byId, 0);
    for (auto it = list.eventTypes.cbegin(); it != list.eventTypes.cend(); ++it)
        out << QStringLiteral("  Event type %1: %2 / %3\n").arg(it.key()).arg(it->translate(En, true), it->translate(Ru, true));

    // 3. A change notice: the warning threshold of the flue gas temperature moved.
    ParamInfoChanged notice;
    ParamInfo changed = temperature();
    changed.setpoints.setUpWarningSetpoint(270.0);
    notice.params << changed;
    ParamInfoChanged heard;
    heard.setPacket(notice.write());
    if (heard.read()) {
        for (const ParamInfo &info : qAsConst(heard.params)) {
            for (ParamInfo &kept : list.params) {
                if (kept == info)
                    kept = info;
            }
            bool ok = false;
            const double warning = info.setpoints.getUpWarningSetpoint(&ok);
            out << QStringLiteral("\n  Changed description of %1: up warning now %2 %3.\n")
                       .arg(info.code)
                       .arg(warning)
                       .arg(info.getUnit(En));
        }
    }

    // 4. Bit-change events of the draught fan, each shown as text.
    out << "\n  Bit changes of the draught fan:\n";
    const QDateTime start(QDate(2026, 1, 1), QTime(9, 0), Qt::UTC);
    const QList<EventStruct> events{bitChange(0x0, 0x1, 8, 16, start), bitChange(0x1, 0x3, 16, 4096, start.addSecs(40)),
                                    bitChange(0x3, 0x6, 4096, 4096, start.addSecs(55)),
                                    bitChange(0x6, 0x1, 4096, 16, start.addSecs(300))};
    for (const EventStruct &event : events) {
        // Each travels as a message of its own.
        EventStruct copy = event;
        EventStruct arrived;
        arrived.setPacket(copy.write());
        arrived.read();
        printBitChange(out, arrived, list, En);
    }
    out << "  The last one in Russian:\n";
    printBitChange(out, events.last(), list, Ru);
    out << "\n";
}
