// Writes bodies of ParamGroupRemoveParametersInfo, built with the library's own writer,
// as the seed corpus of its fuzz target.

#include "paramgroupremoveparametersinfo.h"
#include "seedwriter.h"

namespace {

using Data = ParamGroupRemoveParametersInfo::Data;

QByteArray bodyOf(ParamGroupRemoveParametersInfo &message)
{
    return message.write().mid(QProtocolStruct::HeaderSize);
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    ParamGroupRemoveParametersInfo empty;
    seeds.add(QStringLiteral("empty"), bodyOf(empty));

    ParamGroupRemoveParametersInfo two;
    two.extra = QStringLiteral("extra");
    two.removed.insert(QStringLiteral("pumps"), {Data{101, QStringLiteral("Pressure"), QStringLiteral("a"), QString(), QStringLiteral("/plant/pumps")},
                                                 Data{102, QStringLiteral("Flow"), QString(), QStringLiteral("b"), QStringLiteral("/plant/pumps")}});
    two.removed.insert(QStringLiteral("valves"), {Data{7, QStringLiteral("Position"), QString(), QString(), QStringLiteral("/plant/valves")}});
    seeds.add(QStringLiteral("two-groups"), bodyOf(two));

    ParamGroupRemoveParametersInfo emptyList;
    emptyList.removed.insert(QStringLiteral("/empty"), {});
    seeds.add(QStringLiteral("empty-list"), bodyOf(emptyList));
    return seeds.finish();
}
