// Descriptions: ParamInfoQuery answered with the library's ParamInfoList; frames the
// server cannot serve are ignored with a log line.

#include "servertest.h"

#include "messageheader.h"
#include "paraminfolist.h"
#include "paraminfoquery.h"
#include "telortagobject.h"

#include <gtest/gtest.h>

using namespace servertest;

TEST(ServerDescriptions, ParamInfoListCarriesDescriptionsTreeCatalogueAndTags)
{
    const Plant plant = loadPlant(examplePlantPath());
    Harness h(plant);
    ASSERT_TRUE(h.started) << qPrintable(h.startError);
    ParamInfoQuery query;
    query.setRoute(11, 12, 13);
    h.send(1, query);
    const QList<QByteArray> frames = h.take(1);
    ASSERT_EQ(frames.size(), 1);

    ParamInfoList list;
    list.setPacket(frames.first());
    ASSERT_TRUE(list.read());
    EXPECT_EQ(telortest::identityOf(list), (QList<qint32>{2, 1, 1}));
    EXPECT_EQ(telortest::routeOf(list), (QList<qint32>{11, 12, 13}));
    EXPECT_EQ(list.params.size(), plant.parameters.size());
    EXPECT_EQ(list.params.first().id, 101u);
    EXPECT_EQ(list.params.first().getName(QStringLiteral("ru")), QStringLiteral("Температура котла"));
    EXPECT_EQ(list.rootItem.children.size(), 4);
    EXPECT_EQ(list.rootItem.children.at(1)->tagValue(QStringLiteral("name")), QStringLiteral("Feed water"));
    EXPECT_EQ(list.eventTypes.size(), 3);
    EXPECT_EQ(list.eventTypes.value(2).engName(), QStringLiteral("Status bit change"));

    TELORTagObject tags(nullptr);
    EXPECT_TRUE(tags.read(list.rawData));
    EXPECT_EQ(tags.getParamTagValue(118, QStringLiteral("area")), QStringLiteral("boiler"));
    EXPECT_EQ(tags.getParamTags(103, QStringLiteral("en")).value(QStringLiteral("Area")), QStringLiteral("feed"));
}

TEST(ServerDescriptions, UnknownAndShortFramesAreLoggedAndIgnored)
{
    Harness h(loadPlant(examplePlantPath()));
    h.log.clear();
    h.server->receive(4, frameOf(QByteArray(10, 'x')));
    h.server->receive(4, frameOf(telortest::packetBytes(3, 99, 1, QByteArray("abc"))));
    h.server->receive(4, frameOf(telortest::packetBytes(2, 1, 3, QByteArray())));
    EXPECT_TRUE(h.take(4).isEmpty());
    EXPECT_EQ(h.log, (QStringList{
                         QStringLiteral("connection 4: opened"),
                         QStringLiteral("connection 4: ignored a frame of 10 bytes, shorter than a header"),
                         QStringLiteral("connection 4: ignored message 3,99,1 that this server does not serve"),
                         QStringLiteral("connection 4: ignored message 2,1,3 that this server does not serve"),
                     }));
}
