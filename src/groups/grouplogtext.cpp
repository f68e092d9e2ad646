// The operators' log texts of group items and group change messages. Their lines and
// indentation are read by operators and kept to the character; translated parts come
// from ::multiTranslator under fixed contexts, which must stay as they are because the
// translations are keyed by them.

#include "grouplogtext_p.h"
#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfobase.h"
#include "paramgroupinsertparametersinfo.h"
#include "paramgroupitem.h"
#include "paramgroupremoveparametersinfo.h"

using namespace TelorGroupLog;

QXmlTranslation ParamGroupItem::getTagsDetails(const QString &prefix) const
{
    QXmlTranslation lines;
    for (auto it = tags.constBegin(); it != tags.constEnd(); ++it) {
        const QXmlTranslation tag = logText("ParamGroupItem", "name=\"%0\"; value=\"%1\";").arg(it.key()).arg(it.value());
        lines += newline();
        lines += prefix;
        lines += tag;
    }
    if (lines.isEmpty())
        return lines;
    // The label takes the lines as a translation, so that they stay translatable. Its
    // context is that of the messages, although an item builds it.
    return logText("ParamGroupInfo", "Tags: %0").arg(lines);
}

QXmlTranslation ParamGroupItem::getParamsDetails() const
{
    QXmlTranslation text;
    for (int i = 0; i < children.size(); ++i) {
        const ParamGroupItem *child = children.at(i);
        if (!child || child->type != ParamItem)
            continue;
        bool ok = false;
        const unsigned int id = child->tagValue(QStringLiteral("id")).toUInt(&ok, 10);
        if (!ok)
            continue;
        // The separator follows the index in the list, not the number of identifiers
        // already written.
        const QString separator = i > 0 ? QStringLiteral(", ") : QString();
        text += QStringLiteral("%0%1").arg(separator).arg(id);
    }
    return text;
}

QXmlTranslation ParamGroupInfoBase::getParamsIDDetails() const
{
    QXmlTranslation text;
    for (int i = 0; i < params.size(); ++i) {
        if (!text.isEmpty())
            text += newline();
        text += indent() + numberedLine(i + 1, params.at(i).id, params.at(i).name);
    }
    return text;
}

QXmlTranslation ParamGroupInfoBase::getCreateGroupLogDetails() const
{
    QXmlTranslation text;
    const QXmlTranslation tagsText = item.getTagsDetails(indent());
    if (!tagsText.isEmpty())
        text += tagsText;
    if (!text.isEmpty())
        text += newline();
    text += logText("ParamGroupInfo", "Path: %0").arg(path);
    const QXmlTranslation paramsText = getParamsIDDetails();
    if (!paramsText.isEmpty()) {
        text += newline();
        text += paramsText;
    }
    return text;
}

namespace {

/** What both log texts of ParamGroupCopyPasteRemoveInfo print, with @p whereLabel as the third line. */
QXmlTranslation whatAndWhere(const QString &what, const QXmlTranslation &whereLabel, const QString &path)
{
    QXmlTranslation text;
    text += logText("ParamGroupInfo", "What:");
    text += newline();
    text += indent();
    text += what;
    text += newline();
    text += whereLabel;
    text += newline();
    text += indent();
    text += path;
    return text;
}

} // namespace

QXmlTranslation ParamGroupCopyPasteRemoveInfo::getCopyLogDetails() const
{
    return whatAndWhere(what, logText("ParamGroupInfo", "Where:"), path);
}

QXmlTranslation ParamGroupCopyPasteRemoveInfo::getRemoveLogDetails() const
{
    return whatAndWhere(what, logText("ParamGroupInfo", "From where:"), path);
}

QXmlTranslation ParamGroupInsertParametersInfo::getInsertLogDetails() const
{
    QXmlTranslation text;
    text += logText("ParamGroupInfo", "Path: %0").arg(path);

    const char *modeText = nullptr;
    switch (mode) {
    case ReplaceMode:
        modeText = "Replace: %0";
        break;
    case AboveMode:
        modeText = "Insert above: %0";
        break;
    case BelowMode:
        modeText = "Insert below: %0";
        break;
    default:
        break;
    }
    if (modeText) {
        text += newline();
        text += logText("ParamGroupInfo", modeText).arg(anchor);
    }

    const QXmlTranslation paramsText = getParamsIDDetails();
    if (!paramsText.isEmpty()) {
        text += newline();
        text += paramsText;
    }
    return text;
}

QXmlTranslation ParamGroupRemoveParametersInfo::getDetails() const
{
    QXmlTranslation text;
    for (auto group = removed.constBegin(); group != removed.constEnd(); ++group) {
        const QList<Data> &list = group.value();
        if (list.isEmpty())
            continue;
        if (!text.isEmpty())
            text += newline();
        // The heading is the path of the list's first record; the key is not printed.
        text += logText("ParamGroupRemoveParametersInfo", "Path: %0").arg(list.first().path);

        QXmlTranslation inner;
        for (int i = 0; i < list.size(); ++i) {
            if (!inner.isEmpty())
                inner += newline();
            inner += indent() + numberedLine(i + 1, list.at(i).id, list.at(i).name);
        }
        if (!inner.isEmpty()) {
            text += newline();
            text += inner;
        }
    }
    return text;
}
