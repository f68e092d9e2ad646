// Parameter groups: the tree in which operators arrange parameters, an edit that travels
// as a message, and the text that goes into the operators' log.
//
// A client builds the edit and sends it; the receiver reads it and applies it to its own
// tree (the library carries edits, the application decides what they do), then logs the
// edit in the operators' languages and saves the tree as XML.

#include "demosections.h"

#include "multitranslator.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupitem.h"
#include "paramgroupremoveparametersinfo.h"

#include <QtCore/QStringList>
#include <QtCore/QXmlStreamWriter>

#include <memory>

namespace {

using Tags = QHash<QString, QString>;

ParamGroupItem *groupNode(const QString &name)
{
    return new ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), name}});
}

ParamGroupItem *paramNode(unsigned int id, const QString &name)
{
    return new ParamGroupItem(ParamGroupItem::ParamItem, false,
                              Tags{{QStringLiteral("id"), QString::number(id)}, {QStringLiteral("name"), name}});
}

/** Plant -> Pumps (Pressure, Flow), Valves (Position, Travel time). */
std::unique_ptr<ParamGroupItem> plantTree()
{
    auto plant = std::unique_ptr<ParamGroupItem>(groupNode(QStringLiteral("Plant")));
    ParamGroupItem *pumps = groupNode(QStringLiteral("Pumps"));
    pumps->children << paramNode(101, QStringLiteral("Pressure")) << paramNode(102, QStringLiteral("Flow"));
    ParamGroupItem *valves = groupNode(QStringLiteral("Valves"));
    valves->children << paramNode(201, QStringLiteral("Position")) << paramNode(202, QStringLiteral("Travel time"));
    plant->children << pumps << valves;
    return plant;
}

/** The group at @p path ("/Plant/Pumps"), found by the "name" tags; null if there is none. */
ParamGroupItem *findGroup(ParamGroupItem *root, const QString &path)
{
    const QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (names.isEmpty() || root->name() != names.first())
        return nullptr;
    ParamGroupItem *node = root;
    for (int i = 1; node && i < names.size(); ++i) {
        ParamGroupItem *next = nullptr;
        for (ParamGroupItem *child : qAsConst(node->children)) {
            if (child && child->type == ParamGroupItem::GroupItem && child->name() == names.at(i))
                next = child;
        }
        node = next;
    }
    return node;
}

/** What the receiver does with an insert: the new parameters go next to the anchor. */
bool applyInsert(ParamGroupItem *root, const ParamGroupInsertParametersInfo &edit)
{
    ParamGroupItem *group = findGroup(root, edit.path);
    if (!group)
        return false;
    int anchor = group->children.size();
    for (int i = 0; i < group->children.size(); ++i) {
        if (group->children.at(i) && group->children.at(i)->name() == edit.anchor)
            anchor = i;
    }
    int at = edit.getInsertPosition(anchor);
    if (edit.mode == ParamGroupInsertParametersInfo::ReplaceMode && anchor < group->children.size())
        delete group->children.takeAt(anchor);
    for (const ParamGroupInfoBase::Data &p : edit.params)
        group->children.insert(at++, paramNode(p.id, p.name));
    return true;
}

/** What the receiver does with a removal: each list names its group by the path of its records. */
bool applyRemove(ParamGroupItem *root, const ParamGroupRemoveParametersInfo &edit)
{
    bool all = true;
    for (const QList<ParamGroupRemoveParametersInfo::Data> &list : edit.removed) {
        if (list.isEmpty())
            continue;
        ParamGroupItem *group = findGroup(root, list.first().path);
        QList<unsigned int> ids;
        for (const ParamGroupRemoveParametersInfo::Data &p : list)
            ids << p.id;
        bool complete = false;
        // The unlinked nodes are ours now: this receiver has no further use for them.
        if (group)
            qDeleteAll(group->takeParameters(ids, &complete));
        all = complete && all;
    }
    return all;
}

void loadOperatorLanguage()
{
    const QString ru = QStringLiteral("ru");
    const QString info = QStringLiteral("ParamGroupInfo");
    multiTranslator.insert(ru, info, QStringLiteral("Path: %0"), QStringLiteral("Путь: %0"));
    multiTranslator.insert(ru, info, QStringLiteral("Insert below: %0"), QStringLiteral("Вставить ниже: %0"));
    multiTranslator.insert(ru, QStringLiteral("ParamGroupRemoveParametersInfo"), QStringLiteral("Path: %0"),
                           QStringLiteral("Удалено из: %0"));
}

void printLog(QTextStream &out, const QString &title, const QXmlTranslation &text)
{
    out << "  " << title << ", English:\n";
    for (const QString &line : text.engName().split(QLatin1Char('\n')))
        out << "    | " << line << "\n";
    out << "  " << title << ", Russian:\n";
    for (const QString &line : text.translate(QStringLiteral("ru"), true).split(QLatin1Char('\n')))
        out << "    | " << line << "\n";
}

} // namespace

void demoGroups(QTextStream &out)
{
    out << "== Parameter groups: a tree, an edit as a message, the operators' log\n\n";

    std::unique_ptr<ParamGroupItem> tree = plantTree();
    out << "  Pumps hold the parameters " << tree->children.at(0)->getParamsDetails().engName()
        << "; Valves hold " << tree->children.at(1)->getParamsDetails().engName() << ".\n\n";

    // The client asks for a temperature and a speed below "Pressure" in the pumps group.
    ParamGroupInsertParametersInfo insert;
    insert.path = QStringLiteral("/Plant/Pumps");
    insert.anchor = QStringLiteral("Pressure");
    insert.mode = ParamGroupInsertParametersInfo::BelowMode;
    insert.item = *findGroup(tree.get(), insert.path);
    insert.params << ParamGroupInfoBase::Data{103, QStringLiteral("Temperature")}
                  << ParamGroupInfoBase::Data{104, QStringLiteral("Speed")};
    const QByteArray sent = insert.write();
    out << "  The insert goes out as " << sent.size() << " bytes (identity 2, 10, 1).\n";

    // The receiver reads the packet into a message of its own and applies it.
    ParamGroupInsertParametersInfo received;
    received.setPacket(sent);
    const bool read = received.read();
    out << "  Received: read " << (read ? "true" : "false") << ", applied "
        << (read && applyInsert(tree.get(), received) ? "yes" : "no") << ".\n";

    // A second edit takes the travel time out of the valves group.
    ParamGroupRemoveParametersInfo remove;
    remove.removed.insert(QStringLiteral("valves"), {ParamGroupRemoveParametersInfo::Data{
                                                        202, QStringLiteral("Travel time"), QString(), QString(),
                                                        QStringLiteral("/Plant/Valves")}});
    ParamGroupRemoveParametersInfo removeReceived;
    removeReceived.setPacket(remove.write());
    const bool removeRead = removeReceived.read();
    out << "  Removal received: read " << (removeRead ? "true" : "false") << ", applied "
        << (removeRead && applyRemove(tree.get(), removeReceived) ? "yes" : "no") << ".\n\n";

    loadOperatorLanguage();
    printLog(out, QStringLiteral("Insert"), received.getInsertLogDetails());
    printLog(out, QStringLiteral("Removal"), removeReceived.getDetails());
    multiTranslator.clear();

    out << "\n  The tree now, as XML:\n";
    QString xml;
    QXmlStreamWriter writer(&xml);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(2);
    writer.writeStartElement(QStringLiteral("Groups"));
    tree->writeToXml(writer);
    writer.writeEndElement();
    for (const QString &line : xml.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        out << "    " << line << "\n";
    out << "\n";
}
