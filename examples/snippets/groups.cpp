// The group tree and its log text: a tree of groups and parameters, an insertion as a
// message, and the text that the insertion puts into the operators' log, in English and
// in a language the application loaded into the global translator.
//
// Built and run by the tests (snippets.groups); the reference shows the marked part.
#include <TELORParams5.h>

#include <cstdio>
#include <memory>

int main()
{
    //! [tree]
    using Tags = QHash<QString, QString>;
    // A node owns its children: deleting the root deletes the tree.
    auto pumps = std::make_unique<ParamGroupItem>(ParamGroupItem::GroupItem, false,
                                                  Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}});
    pumps->children << new ParamGroupItem(ParamGroupItem::ParamItem, false,
                                          Tags{{QStringLiteral("id"), QStringLiteral("101")},
                                               {QStringLiteral("name"), QStringLiteral("Pressure")}});
    const QList<unsigned int> ids = pumps->getParamList(); // {101}
    //! [tree]

    //! [log]
    multiTranslator.insert(QStringLiteral("de"), QStringLiteral("ParamGroupInfo"), QStringLiteral("Path: %0"),
                           QStringLiteral("Pfad: %0"));
    ParamGroupInsertParametersInfo insert;
    insert.path = QStringLiteral("/Plant/Pumps");
    insert.anchor = QStringLiteral("Pressure");
    insert.mode = ParamGroupInsertParametersInfo::BelowMode;
    insert.params << ParamGroupInfoBase::Data{102, QStringLiteral("Flow")};

    ParamGroupInsertParametersInfo received; // the receiving side reads the bytes
    received.setPacket(insert.write());
    if (!received.read())
        return 1;
    const QXmlTranslation log = received.getInsertLogDetails();
    std::printf("%s\n--\n%s\n", qPrintable(log.engName()),
                qPrintable(log.translate(QStringLiteral("de"), true)));
    //! [log]

    multiTranslator.clear();
    const QString english = QStringLiteral("Path: /Plant/Pumps\nInsert below: Pressure\n   1 (ID=102): \"Flow\"");
    return ids == QList<unsigned int>{101} && log.engName() == english
                   && log.translate(QStringLiteral("de"), true).startsWith(QStringLiteral("Pfad: /Plant/Pumps\n"))
               ? 0
               : 1;
}
