// Writes bodies of the group change messages that share the common body, built with the
// library's own writers, as the seed corpus of their fuzz target.

#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"
#include "seedwriter.h"

namespace {

using Tags = QHash<QString, QString>;

QByteArray bodyOf(QProtocolStruct &message)
{
    return message.write().mid(QProtocolStruct::HeaderSize);
}

void fill(ParamGroupInfoBase &message)
{
    message.path = QStringLiteral("/plant/pumps");
    message.extra1 = QStringLiteral("x1");
    message.item = ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), QStringLiteral("Pumps")}});
    message.item.children << new ParamGroupItem(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), QStringLiteral("101")}});
    message.params << ParamGroupInfoBase::Data{101, QStringLiteral("Pressure")} << ParamGroupInfoBase::Data{102, QStringLiteral("Flow")};
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    ParamGroupInfo empty(1);
    seeds.add(QStringLiteral("empty"), bodyOf(empty));

    ParamGroupInfo create(1);
    fill(create);
    seeds.add(QStringLiteral("create"), bodyOf(create));

    ParamGroupCopyPasteRemoveInfo copy(2);
    fill(copy);
    copy.what = QStringLiteral("/plant/valves");
    copy.whatExtra = QStringLiteral("we");
    seeds.add(QStringLiteral("copy"), bodyOf(copy));

    ParamGroupInsertParametersInfo insert;
    fill(insert);
    insert.anchor = QStringLiteral("Pressure");
    insert.mode = ParamGroupInsertParametersInfo::BelowMode;
    seeds.add(QStringLiteral("insert"), bodyOf(insert));

    ParamGroupInsertParametersInfo replace;
    replace.mode = ParamGroupInsertParametersInfo::ReplaceMode;
    replace.anchor = QStringLiteral("%1");
    seeds.add(QStringLiteral("replace"), bodyOf(replace));
    return seeds.finish();
}
