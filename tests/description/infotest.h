#ifndef INFOTEST_H
#define INFOTEST_H

// Shared by the tests of the description messages: plain QDataStream writers of the
// parts of the parameter list that are not descriptions (group nodes, event types, the
// table of texts), sample contents, comparisons and the way a server's packet is read.

#include "descriptiontest.h"
#include "plaininfo.h"
#include "telortest.h"

#include "eventtypeinfostruct.h"
#include "paramgroupitem.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"
#include "qprotocolstruct.h"
#include "translationitemnew.h"

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>

namespace infotest {

using Tags = QHash<QString, QString>;

/** A group node written field by field: type, flag, tags, count, children, count again. */
inline void plainNode(QDataStream &s, const ParamGroupItem &node)
{
    s << qint32(node.type) << node.flag;
    telortest::plainHash(s, node.tags);
    s << qint32(node.children.size());
    for (const ParamGroupItem *child : node.children)
        plainNode(s, *child);
    s << qint32(node.children.size());
}

/** An event type written field by field: name, 16-bit id, then its messages in Qt's form. */
inline void plainEventType(QDataStream &s, const EventTypeInfoStruct &type)
{
    s << static_cast<const QXmlTranslation &>(type) << quint16(type.id);
    s << quint32(type.messages.size());
    const QList<unsigned char> keys = type.messages.keys();
    const QList<QXmlTranslation> values = type.messages.values();
    for (int i = keys.size() - 1; i >= 0; --i)
        s << quint8(keys.at(i)) << values.at(i);
}

/** The table of texts by number, written on both levels from the last entry to the first. */
inline void plainTranslations(QDataStream &s, const QHash<int, TranslationItemNew> &table)
{
    s << quint32(table.size());
    const QList<int> keys = table.keys();
    const QList<TranslationItemNew> values = table.values();
    for (int i = keys.size() - 1; i >= 0; --i) {
        s << qint32(keys.at(i));
        telortest::plainHash(s, values.at(i));
    }
}

/** A translatable text with an English form and a Russian one. */
inline QXmlTranslation text(const QString &english, const QString &russian)
{
    QXmlTranslation t(english);
    t.setTranslation(russian, QStringLiteral("ru"));
    return t;
}

/** An event type with two messages. */
inline EventTypeInfoStruct eventType(unsigned short id, const QString &name)
{
    EventTypeInfoStruct type;
    type.setEngName(name);
    type.setTranslation(name.toUpper(), QStringLiteral("ru"));
    type.id = id;
    type.messages.insert(1, text(QStringLiteral("Raised"), QStringLiteral("Возникло")));
    type.messages.insert(2, text(QStringLiteral("Cleared"), QStringLiteral("Снято")));
    return type;
}

/** A group node; the caller owns it. */
inline ParamGroupItem *node(ParamGroupItem::ItemType type, const Tags &tags)
{
    return new ParamGroupItem(type, false, tags);
}

/** A parameter node with the "id" tag @p id; the caller owns it. */
inline ParamGroupItem *paramNode(unsigned int id)
{
    return node(ParamGroupItem::ParamItem, Tags{{QStringLiteral("id"), QString::number(id)}});
}

/** Fills @p root with a tree three levels deep: a plant group, a unit group and parameters. */
inline void fillTree(ParamGroupItem &root)
{
    root.type = ParamGroupItem::GroupItem;
    root.flag = true;
    root.tags.insert(QStringLiteral("name"), QStringLiteral("Plant"));
    ParamGroupItem *boiler = node(ParamGroupItem::GroupItem, Tags{{QStringLiteral("name"), QStringLiteral("Boiler")},
                                                                 {QStringLiteral("path"), QStringLiteral("/Plant/Boiler")}});
    boiler->children << paramNode(101) << paramNode(102);
    ParamGroupItem *field = node(ParamGroupItem::FieldItem, Tags{{QStringLiteral("name"), QStringLiteral("Grid")}});
    root.children << boiler << paramNode(103) << field;
}

/** Whether two trees hold the same nodes in the same order. */
inline bool sameTree(const ParamGroupItem &a, const ParamGroupItem &b)
{
    if (a.type != b.type || a.flag != b.flag || a.tags != b.tags || a.children.size() != b.children.size())
        return false;
    for (int i = 0; i < a.children.size(); ++i) {
        if (!sameTree(*a.children.at(i), *b.children.at(i)))
            return false;
    }
    return true;
}

/** Whether two event types hold the same name, number and messages. */
inline bool sameEventType(const EventTypeInfoStruct &a, const EventTypeInfoStruct &b)
{
    return static_cast<const QXmlTranslation &>(a) == static_cast<const QXmlTranslation &>(b) && a.id == b.id
        && a.messages == b.messages;
}

inline bool sameCombination(const ParamBitCombination &a, const ParamBitCombination &b)
{
    return a.value == b.value && a.state == b.state && a.sign == b.sign && a.shortText == b.shortText
        && a.fullText == b.fullText;
}

inline bool sameSetpoint(double (ParamSetpoints::*get)(bool *) const, const ParamSetpoints &a, const ParamSetpoints &b)
{
    bool hasA = false;
    bool hasB = false;
    const double valueA = (a.*get)(&hasA);
    const double valueB = (b.*get)(&hasB);
    return hasA == hasB && (!hasA || valueA == valueB);
}

/**
 * Whether two descriptions hold the same contents, field by field. Hashes compare as
 * hashes, so that two records read from one another's bytes are the same whatever the
 * iteration order of their hashes (which differs from process to process).
 */
inline bool sameInfo(const ParamInfo &a, const ParamInfo &b)
{
    if (a.id != b.id || a.code != b.code || a.code2 != b.code2 || a.code3 != b.code3 || a.name != b.name
        || a.type != b.type || a.unit != b.unit || a.unitX != b.unitX || a.rows != b.rows || a.columns != b.columns
        || a.valueTable != b.valueTable || a.option != b.option || a.precision != b.precision || a.format != b.format
        || a.idList != b.idList || a.extraText != b.extraText)
        return false;
    if (a.limits.enabled != b.limits.enabled
        || (a.limits.enabled != 0 && (a.limits.lo != b.limits.lo || a.limits.hi != b.limits.hi)))
        return false;
    if (!sameSetpoint(&ParamSetpoints::getLowEmergencySetpoint, a.setpoints, b.setpoints)
        || !sameSetpoint(&ParamSetpoints::getLowWarningSetpoint, a.setpoints, b.setpoints)
        || !sameSetpoint(&ParamSetpoints::getUpWarningSetpoint, a.setpoints, b.setpoints)
        || !sameSetpoint(&ParamSetpoints::getUpEmergencySetpoint, a.setpoints, b.setpoints))
        return false;
    if (a.enumeration.hasCombinations != b.enumeration.hasCombinations
        || a.enumeration.combinations.size() != b.enumeration.combinations.size())
        return false;
    for (int i = 0; i < a.enumeration.combinations.size(); ++i) {
        if (!sameCombination(a.enumeration.combinations.at(i), b.enumeration.combinations.at(i)))
            return false;
    }
    const ParamBitField &fa = a.bitField;
    const ParamBitField &fb = b.bitField;
    if (fa.enabled != fb.enabled || fa.reserved != fb.reserved || fa.attributes.size() != fb.attributes.size()
        || fa.combinations.size() != fb.combinations.size())
        return false;
    for (auto it = fa.attributes.cbegin(); it != fa.attributes.cend(); ++it) {
        const auto other = fb.attributes.constFind(it.key());
        if (other == fb.attributes.cend() || other->name != it->name || other->states.size() != it->states.size())
            return false;
        for (auto st = it->states.cbegin(); st != it->states.cend(); ++st) {
            const auto otherState = other->states.constFind(st.key());
            if (otherState == other->states.cend() || otherState->state != st->state || otherState->text != st->text)
                return false;
        }
    }
    for (auto it = fa.combinations.cbegin(); it != fa.combinations.cend(); ++it) {
        const auto other = fb.combinations.constFind(it.key());
        if (other == fb.combinations.cend() || !sameCombination(*other, *it))
            return false;
    }
    if (a.elements.size() != b.elements.size())
        return false;
    for (int i = 0; i < a.elements.size(); ++i) {
        const ParamFieldElementInfo &ea = a.elements.at(i);
        const ParamFieldElementInfo &eb = b.elements.at(i);
        if (ea.row != eb.row || ea.column != eb.column || !sameInfo(ea.info, eb.info))
            return false;
    }
    return true;
}

/** The bytes of a list of descriptions, one after the other, by plain writes. */
inline void plainInfos(QDataStream &s, const QList<ParamInfo> &infos)
{
    for (const ParamInfo &info : infos)
        desctest::plainInfo(s, info);
}

/**
 * A count, then the descriptions by plain writes: the body of a change notice, and the
 * start of a list's body. The count says @p count records, whatever follows it.
 */
inline QByteArray plainCountedInfos(qint32 count, const QList<ParamInfo> &infos)
{
    return telortest::plainBytes([&](QDataStream &s) {
        s << count;
        plainInfos(s, infos);
    });
}

/** The same with the count of the records that follow. */
inline QByteArray plainCountedInfos(const QList<ParamInfo> &infos)
{
    return plainCountedInfos(qint32(infos.size()), infos);
}

/** The bytes of an empty group root: no type, no flag, no tags, no children. */
inline void plainEmptyRoot(QDataStream &s)
{
    s << qint32(0) << false << quint32(0) << qint32(0) << qint32(0);
}

/** A description the reader refuses: a scalar whose type is 0. */
inline ParamInfo typeless(unsigned int id)
{
    ParamInfo info = desctest::sampleScalar(id);
    info.type = 0;
    return info;
}

/** Reads @p message from a packet built as a server builds it, with a route of its own. */
template<typename Message>
bool receive(Message &message, qint32 serviceId, qint32 messageId, qint32 messageType, const QByteArray &body)
{
    message.setPacket(telortest::packetBytes(serviceId, messageId, messageType, body, 11, 12, 13));
    return message.read();
}

/** Sends @p sent through write(), a new message, setPacket() and read(). */
template<typename Message>
bool roundTrip(Message &sent, Message &received)
{
    sent.write();
    received.setPacket(sent);
    return received.read();
}

/** A message whose readPrivate() can be run on a packet of the test's own. */
template<typename Message>
bool readBody(Message &message, const QByteArray &body, unsigned int *position = nullptr)
{
    QContainerPacket packet(body);
    const bool result = message.readPrivate(packet);
    if (position)
        *position = packet.position();
    return result;
}

} // namespace infotest

#endif // INFOTEST_H
