// The plant file: the example plant and the error line of a malformed file.

#include "servertest.h"

#include "plantduration.h"
#include "telortagobject.h"

#include <gtest/gtest.h>

#include <QtCore/QSet>

using namespace servertest;

namespace {

/** The error line of @p xml, read as "bad.xml". */
QString errorOf(const QByteArray &xml)
{
    Plant plant;
    PlantFile file;
    EXPECT_FALSE(file.loadData(xml, QStringLiteral("bad.xml"), &plant));
    return file.error();
}

const QByteArray head = "<plant name=\"P\">\n"
                        "<events><Event id=\"1\" name=\"A\"/><Event id=\"2\" name=\"B\"/></events>\n";

} // namespace

TEST(PlantFile, ExamplePlantHasEveryKindOfValue)
{
    const Plant plant = loadPlant(examplePlantPath());
    EXPECT_EQ(plant.name, QStringLiteral("Boiler house"));
    EXPECT_GE(plant.parameters.size(), 20);
    QSet<int> kinds;
    QSet<int> driverKinds;
    for (const PlantParameter &p : plant.parameters) {
        kinds.insert(p.kind);
        driverKinds.insert(p.driver.kind);
        EXPECT_TRUE(p.info.isValid()) << p.info.id;
        EXPECT_FALSE(p.info.name.translate(QStringLiteral("ru"), false).isEmpty()) << p.info.id;
    }
    EXPECT_EQ(kinds.size(), 8); // double, discrete, status, string, variant, list, map, field
    EXPECT_EQ(driverKinds.size(), 6);
}

TEST(PlantFile, VariantCarriesAllSixSetpoints)
{
    const Plant plant = loadPlant(examplePlantPath());
    const PlantParameter *boiler = plant.parameter(101);
    ASSERT_TRUE(boiler);
    EXPECT_EQ(boiler->info.type, 5);
    EXPECT_EQ(boiler->info.limits.enabled, 1);
    EXPECT_EQ(boiler->info.limits.lo, 0.0);
    EXPECT_EQ(boiler->info.limits.hi, 200.0);
    bool ok = false;
    EXPECT_EQ(boiler->info.setpoints.getLowEmergencySetpoint(&ok), 20.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(boiler->info.setpoints.getLowWarningSetpoint(&ok), 40.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(boiler->info.setpoints.getUpWarningSetpoint(&ok), 80.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(boiler->info.setpoints.getUpEmergencySetpoint(&ok), 95.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(boiler->info.getName(QStringLiteral("ru")), QStringLiteral("Температура котла"));
    EXPECT_EQ(boiler->info.getName(QStringLiteral("en")), QStringLiteral("Boiler temperature"));
    EXPECT_EQ(boiler->info.getUnit(QStringLiteral("en")), QStringLiteral("°C"));
}

TEST(PlantFile, EnumerationStatusWordAndField)
{
    const Plant plant = loadPlant(examplePlantPath());
    const PlantParameter *mode = plant.parameter(110);
    ASSERT_TRUE(mode);
    EXPECT_TRUE(mode->info.enumeration.hasCombinations);
    EXPECT_EQ(mode->info.enumeration.shortValue(2, QStringLiteral("ru")), QStringLiteral("ручн"));

    const PlantParameter *status = plant.parameter(112);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->info.type, 2);
    EXPECT_EQ(status->info.bitField.enabled, 1);
    EXPECT_EQ(status->info.bitField.attributes.size(), 4);
    const QHash<int, ParamBitInfo> bits = status->info.bitField.fullWord(0x5, QStringLiteral("en"), 8, true, nullptr);
    EXPECT_EQ(bits.value(0).name, QStringLiteral("Flame"));
    EXPECT_EQ(bits.value(0).text, QStringLiteral("flame on"));
    bool found = false;
    const ParamBitInfo failure = ParamBitField::getCombination(255, &status->info, QStringLiteral("ru"), &found);
    EXPECT_TRUE(found);
    EXPECT_EQ(failure.name, QStringLiteral("Отказ горелки"));

    const PlantParameter *grid = plant.parameter(118);
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->info.type, 4);
    EXPECT_EQ(grid->info.rows, 4);
    EXPECT_EQ(grid->info.columns, 4);
    ASSERT_EQ(grid->info.elements.size(), 16);
    EXPECT_EQ(grid->info.elements.at(5).info.id, 205u);
    EXPECT_EQ(grid->info.elements.at(5).row, 1);
    EXPECT_EQ(grid->info.elements.at(5).column, 1);
    EXPECT_EQ(grid->info.elements.at(5).info.code, QStringLiteral("FURNACE.T11"));
}

TEST(PlantFile, CatalogueTagsAndGroups)
{
    const Plant plant = loadPlant(examplePlantPath());
    ASSERT_TRUE(plant.eventTypes.contains(1));
    EXPECT_EQ(plant.eventTypes.value(1).engName(), QStringLiteral("Limit alarm"));
    EXPECT_EQ(plant.eventTypes.value(1).messages.size(), 7);
    EXPECT_EQ(plant.eventTypes.value(1).messages.value(3).translate(QStringLiteral("ru"), false),
              QStringLiteral("Верхняя предупредительная"));
    EXPECT_TRUE(plant.eventTypes.contains(2));

    TELORTagObject tags(nullptr);
    EXPECT_TRUE(tags.read(plant.tagBlock()));
    EXPECT_EQ(tags.getParamTagValue(101, QStringLiteral("sensor")), QStringLiteral("thermocouple"));
    EXPECT_EQ(tags.getTagTypes(QStringLiteral("ru")).value(QStringLiteral("area")), QStringLiteral("Участок"));

    EXPECT_EQ(plant.rootItem.type, ParamGroupItem::GroupItem);
    ASSERT_EQ(plant.rootItem.children.size(), 4);
    const ParamGroupItem *boiler = plant.rootItem.children.at(0);
    EXPECT_EQ(boiler->tagValue(QStringLiteral("name")), QStringLiteral("Boiler"));
    EXPECT_TRUE(boiler->containsID(101));
    EXPECT_EQ(boiler->children.last()->type, ParamGroupItem::FieldItem);
    const ParamGroupItem *steam = plant.rootItem.children.at(2)->children.last();
    EXPECT_EQ(steam->getParamList(), QList<unsigned int>{105});
}

TEST(PlantFile, MalformedXmlGivesOneLineWithPosition)
{
    EXPECT_EQ(errorOf("<plant name=\"P\">\n<parameters>\n</plant>\n"),
              QStringLiteral("bad.xml:3:8: Opening and ending tag mismatch."));
}

TEST(PlantFile, UnknownTypeGivesItsPosition)
{
    EXPECT_EQ(errorOf(head + "<parameters>\n  <param id=\"1\" code=\"A\" type=\"complex\"/>\n</parameters></plant>"),
              QStringLiteral("bad.xml:4:41: unknown parameter type \"complex\""));
}

TEST(PlantFile, RepeatedIdentifier)
{
    const QByteArray xml = head
        + "<parameters>\n"
          "<param id=\"1\" code=\"A\" type=\"double\"><driver kind=\"constant\" value=\"1\"/></param>\n"
          "<param id=\"1\" code=\"B\" type=\"double\"><driver kind=\"constant\" value=\"1\"/></param>\n"
          "</parameters></plant>";
    EXPECT_EQ(errorOf(xml), QStringLiteral("bad.xml:5:37: parameter id 1 is used twice"));
}

TEST(PlantFile, ParameterWithoutDriver)
{
    const QByteArray xml = head + "<parameters>\n<param id=\"1\" code=\"A\" type=\"double\">\n</param>\n</parameters></plant>";
    EXPECT_EQ(errorOf(xml), QStringLiteral("bad.xml:5:8: parameter 1 has no <driver>"));
}

TEST(PlantFile, BadDurationAndUnknownDriver)
{
    EXPECT_EQ(errorOf(head
                      + "<parameters>\n<param id=\"1\" code=\"A\" type=\"double\">"
                        "<driver kind=\"sine\" period=\"soon\"/></param></parameters></plant>"),
              QStringLiteral("bad.xml:4:72: attribute \"period\" is no duration: \"soon\""));
    EXPECT_EQ(errorOf(head
                      + "<parameters>\n<param id=\"1\" code=\"A\" type=\"double\">"
                        "<driver kind=\"chaos\"/></param></parameters></plant>"),
              QStringLiteral("bad.xml:4:59: unknown driver kind \"chaos\""));
}

TEST(PlantFile, MissingCatalogueEntry)
{
    const QByteArray xml = "<plant>\n<events><Event id=\"1\" name=\"A\"/></events>\n<parameters>"
                           "<param id=\"1\" code=\"A\" type=\"double\"><driver kind=\"constant\" value=\"1\"/></param>"
                           "</parameters>\n</plant>";
    EXPECT_EQ(errorOf(xml), QStringLiteral("bad.xml:4:8: the event catalogue has no type 2 for status bit changes"));
}

TEST(PlantFile, GroupNamingAnUnknownParameter)
{
    const QByteArray xml = head
        + "<parameters><param id=\"1\" code=\"A\" type=\"double\"><driver kind=\"constant\" value=\"1\"/></param>"
          "</parameters>\n<groups><group name=\"G\">\n<param id=\"9\"/></group></groups></plant>";
    EXPECT_EQ(errorOf(xml),
              QStringLiteral("bad.xml:5:15: the group tree names parameter 9, which the plant does not have"));
}

TEST(PlantFile, EmptyAndMissingFiles)
{
    EXPECT_EQ(errorOf(""), QStringLiteral("bad.xml:1:0: Premature end of document."));
    Plant plant;
    PlantFile file;
    EXPECT_FALSE(file.load(QStringLiteral("/nonexistent/plant.xml"), &plant));
    EXPECT_TRUE(file.error().startsWith(QStringLiteral("/nonexistent/plant.xml:0:0: cannot open the file")));
}

TEST(PlantFile, DeepGroupNestingIsRefused)
{
    QByteArray xml = head
        + "<parameters><param id=\"1\" code=\"A\" type=\"double\"><driver kind=\"constant\" value=\"1\"/></param>"
          "</parameters><groups>";
    for (int i = 0; i < 70; ++i)
        xml += "<group name=\"g\">";
    for (int i = 0; i < 70; ++i)
        xml += "</group>";
    xml += "</groups></plant>";
    EXPECT_TRUE(errorOf(xml).endsWith(QStringLiteral("groups nest deeper than 64 levels")));
}

TEST(PlantDuration, UnitsAndErrors)
{
    EXPECT_EQ(parsePlantDuration(QStringLiteral("250ms")), 250);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("250")), 250);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("30s")), 30000);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("30m")), 1800000);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("1h")), 3600000);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("7d")), qint64(7) * 24 * 3600000);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("")), -1);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("-5s")), -1);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("5y")), -1);
    EXPECT_EQ(parsePlantDuration(QStringLiteral("99999999999d")), -1);
}
