// The core map: reading the core file below the application directory, both maps, and
// what a good, a bad or a missing file leaves behind.

#include "corefile.h"
#include "telortest.h"

#include "corefunctions.h"

#include <gtest/gtest.h>

using structtest::CoreFile;

namespace {

class CoreMapFile : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(file.locked()); }

    /** A fresh map that has read @p content as its core file. */
    void readFresh(const QByteArray &content)
    {
        file.write(content);
        map.init();
    }

    CoreFile file;
    CoreMap map;
};

QByteArray core(const QByteArray &entries)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Core>\n" + entries + "</Core>\n";
}

QList<CorePoint> keysOf(const QMap<CorePoint, int> &map)
{
    return map.keys();
}

} // namespace

TEST(CoreMap, BeforeInitInvalidAndEmpty)
{
    CoreMap map;
    EXPECT_FALSE(map.isValid());
    EXPECT_TRUE(map.coordId().isEmpty());
    EXPECT_TRUE(map.idCoord().isEmpty());
}

TEST(CoreMap, GlobalMapIsEmptyUntilInit)
{
    EXPECT_FALSE(coreMap.isValid());
    EXPECT_TRUE(coreMap.coordId().isEmpty());
    EXPECT_TRUE(coreMap.idCoord().isEmpty());
}

TEST(CoreMap, AccessorsGiveTheMapsWithoutCopies)
{
    CoreMap map;
    EXPECT_EQ(&map.coordId(), &map.coordId());
    EXPECT_EQ(&map.idCoord(), &map.idCoord());
}

TEST_F(CoreMapFile, OnlyTheCoreElementGivesAnInvalidMap)
{
    readFresh(core(""));
    EXPECT_FALSE(map.isValid());
    EXPECT_TRUE(map.coordId().isEmpty());
    EXPECT_TRUE(map.idCoord().isEmpty());
}

TEST_F(CoreMapFile, EntryNumberStartsAtZeroAndAxesCross)
{
    readFresh(core("<FA id=\"1\" x=\"2\" y=\"3\"/>\n"));
    EXPECT_TRUE(map.isValid());
    ASSERT_EQ(map.idCoord().size(), 1);
    ASSERT_TRUE(map.idCoord().contains(0));
    const CorePoint point = map.idCoord().value(0);
    EXPECT_EQ(point.x(), 3);
    EXPECT_EQ(point.y(), 2);
    ASSERT_EQ(map.coordId().size(), 1);
    EXPECT_EQ(map.coordId().firstKey(), CorePoint(3, 2));
    EXPECT_EQ(map.coordId().value(CorePoint(3, 2), -99), 0);
}

TEST_F(CoreMapFile, PositionsRunByFallingYThenRisingX)
{
    // Points (1, 5), (2, 5) and (1, 9): the file's y is x(), the file's x is y().
    readFresh(core("<FA id=\"1\" x=\"5\" y=\"1\"/>\n"
                   "<FA id=\"2\" x=\"5\" y=\"2\"/>\n"
                   "<FA id=\"3\" x=\"9\" y=\"1\"/>\n"));
    const QList<CorePoint> keys = keysOf(map.coordId());
    ASSERT_EQ(keys.size(), 3);
    EXPECT_EQ(keys.at(0), CorePoint(1, 9));
    EXPECT_EQ(keys.at(1), CorePoint(1, 5));
    EXPECT_EQ(keys.at(2), CorePoint(2, 5));
    EXPECT_EQ(map.coordId().values(), (QList<int>{2, 0, 1}));
}

TEST_F(CoreMapFile, RepeatedIdKeepsTheLaterPositionUnderTheNumber)
{
    readFresh(core("<FA id=\"4\" x=\"1\" y=\"1\"/>\n"
                   "<FA id=\"4\" x=\"7\" y=\"8\"/>\n"));
    ASSERT_EQ(map.idCoord().size(), 1);
    EXPECT_EQ(map.idCoord().value(3), CorePoint(8, 7));
    ASSERT_EQ(map.coordId().size(), 2);
    EXPECT_EQ(map.coordId().value(CorePoint(1, 1)), 3);
    EXPECT_EQ(map.coordId().value(CorePoint(8, 7)), 3);
    EXPECT_TRUE(map.isValid());
}

TEST_F(CoreMapFile, RepeatedPositionKeepsTheLaterNumber)
{
    readFresh(core("<FA id=\"4\" x=\"1\" y=\"2\"/>\n"
                   "<FA id=\"9\" x=\"1\" y=\"2\"/>\n"));
    ASSERT_EQ(map.coordId().size(), 1);
    EXPECT_EQ(map.coordId().value(CorePoint(2, 1)), 8);
    ASSERT_EQ(map.idCoord().size(), 2);
    EXPECT_EQ(map.idCoord().value(3), CorePoint(2, 1));
    EXPECT_EQ(map.idCoord().value(8), CorePoint(2, 1));
}

TEST_F(CoreMapFile, OtherElementAfterEntriesMakesTheMapInvalid)
{
    telortest::LogCapture log;
    readFresh(core("<FA id=\"1\" x=\"1\" y=\"1\"/>\n"
                   "<FA id=\"2\" x=\"2\" y=\"2\"/>\n"
                   "<Fuel id=\"3\" x=\"3\" y=\"3\"/>\n"
                   "<FA id=\"4\" x=\"4\" y=\"4\"/>\n"));
    EXPECT_FALSE(map.isValid());
    EXPECT_EQ(map.coordId().size(), 2);
    EXPECT_EQ(map.idCoord().size(), 2);
    EXPECT_FALSE(map.idCoord().contains(3));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("corefunctions invalid tag  \"Fuel\"")});
}

TEST_F(CoreMapFile, OtherElementAsRootStopsAtOnce)
{
    telortest::LogCapture log;
    readFresh("<Cores><Core><FA id=\"1\" x=\"1\" y=\"1\"/></Core></Cores>");
    EXPECT_FALSE(map.isValid());
    EXPECT_TRUE(map.idCoord().isEmpty());
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("corefunctions invalid tag  \"Cores\"")});
}

TEST_F(CoreMapFile, PrefixedNameIsNotAnEntryAndIsLoggedByItsLocalName)
{
    telortest::LogCapture log;
    readFresh("<Core xmlns:c=\"urn:core\"><c:FA id=\"1\" x=\"1\" y=\"1\"/></Core>");
    EXPECT_FALSE(map.isValid());
    EXPECT_TRUE(map.idCoord().isEmpty());
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("corefunctions invalid tag  \"FA\"")});
}

TEST_F(CoreMapFile, ReadingTwiceLeavesTheMapsAsAfterTheFirst)
{
    readFresh(core("<FA id=\"1\" x=\"5\" y=\"1\"/>\n"
                   "<FA id=\"2\" x=\"5\" y=\"2\"/>\n"
                   "<FA id=\"1\" x=\"9\" y=\"1\"/>\n"));
    const QMap<CorePoint, int> coordId = map.coordId();
    const QMap<int, CorePoint> idCoord = map.idCoord();
    map.init();
    EXPECT_TRUE(map.isValid());
    EXPECT_EQ(map.coordId(), coordId);
    EXPECT_EQ(map.idCoord(), idCoord);
}

TEST_F(CoreMapFile, InitAddsToWhatIsThere)
{
    readFresh(core("<FA id=\"1\" x=\"1\" y=\"1\"/>\n"));
    file.write(core("<FA id=\"2\" x=\"2\" y=\"2\"/>\n"));
    map.init();
    EXPECT_EQ(map.idCoord().keys(), (QList<int>{0, 1}));
    EXPECT_EQ(map.coordId().size(), 2);
}

TEST_F(CoreMapFile, FileBrokenOffInsideAnElementStillCountsAsGood)
{
    readFresh("<?xml version=\"1.0\"?>\n<Core>\n<FA id=\"1\" x=\"1\" y=\"1\"/>\n<FA id=\"2\" x=\"2\" y=\"2\"/>\n<FA id=\"3\" x=");
    EXPECT_TRUE(map.isValid());
    EXPECT_EQ(map.idCoord().keys(), (QList<int>{0, 1}));
}

TEST_F(CoreMapFile, SyntaxErrorAfterEntriesEndsTheReadAsGood)
{
    readFresh("<Core><FA id=\"1\" x=\"1\" y=\"1\"/><FA id=\"2\" x=\"2\" y=\"2\"></Core><FA id=\"3\" x=\"3\" y=\"3\"/>");
    EXPECT_TRUE(map.isValid());
    EXPECT_EQ(map.idCoord().keys(), (QList<int>{0, 1}));
}

TEST_F(CoreMapFile, EntryWithoutAttributesIsMinusOneAtTheOrigin)
{
    readFresh(core("<FA/>\n"));
    ASSERT_EQ(map.idCoord().size(), 1);
    EXPECT_EQ(map.idCoord().firstKey(), -1);
    EXPECT_EQ(map.idCoord().first(), CorePoint(0, 0));
    EXPECT_EQ(map.coordId().value(CorePoint(0, 0)), -1);
    EXPECT_TRUE(map.isValid());
}

TEST_F(CoreMapFile, BadAttributesReadAsZero)
{
    readFresh(core("<FA id=\"seven\" x=\"0x10\" y=\"2.5\"/>\n"
                   "<FA id=\"3\" x=\"99999999999\" y=\"-4\"/>\n"));
    EXPECT_EQ(map.idCoord().value(-1), CorePoint(0, 0));
    EXPECT_EQ(map.idCoord().value(2), CorePoint(-4, 0));
    EXPECT_TRUE(map.isValid());
}

TEST_F(CoreMapFile, LowestIdWrapsInsteadOfOverflowing)
{
    readFresh(core("<FA id=\"-2147483648\" x=\"1\" y=\"1\"/>\n"));
    ASSERT_EQ(map.idCoord().size(), 1);
    EXPECT_EQ(map.idCoord().firstKey(), std::numeric_limits<int>::max());
}

TEST_F(CoreMapFile, NestingTextCommentsAndOtherAttributesAreSkipped)
{
    readFresh("<?xml version=\"1.0\"?>\n"
              "<!-- core of unit 1 -->\n"
              "<Core name=\"unit 1\">\n"
              "  text between entries\n"
              "  <FA id=\"1\" x=\"1\" y=\"2\" type=\"fuel\"><Core><FA id=\"2\" x=\"3\" y=\"4\"/></Core></FA>\n"
              "  <?processing instruction?>\n"
              "  <![CDATA[<Other/>]]>\n"
              "</Core>\n");
    EXPECT_TRUE(map.isValid());
    EXPECT_EQ(map.idCoord().value(0), CorePoint(2, 1));
    EXPECT_EQ(map.idCoord().value(1), CorePoint(4, 3));
}

TEST_F(CoreMapFile, EntriesNeedNoRoot)
{
    readFresh("<FA id=\"5\" x=\"1\" y=\"1\"/>");
    EXPECT_TRUE(map.isValid());
    EXPECT_EQ(map.idCoord().keys(), QList<int>{4});
}

TEST_F(CoreMapFile, EmptyFileGivesAnInvalidMap)
{
    readFresh(QByteArray());
    EXPECT_FALSE(map.isValid());
    EXPECT_TRUE(map.idCoord().isEmpty());
}

TEST_F(CoreMapFile, MissingFileLeavesTheMapsAndCountsAsGood)
{
    map.init();
    EXPECT_FALSE(map.isValid());
    EXPECT_TRUE(map.idCoord().isEmpty());

    readFresh(core("<FA id=\"1\" x=\"1\" y=\"1\"/>\n"));
    file.remove();
    map.init();
    EXPECT_TRUE(map.isValid());
    EXPECT_EQ(map.idCoord().size(), 1);
}

TEST_F(CoreMapFile, MissingFileAfterABadReadMakesTheMapValidAgain)
{
    readFresh(core("<FA id=\"1\" x=\"1\" y=\"1\"/><Bad/>\n"));
    EXPECT_FALSE(map.isValid());
    file.remove();
    map.init();
    EXPECT_TRUE(map.isValid());
}

TEST_F(CoreMapFile, FileThatCannotBeOpenedCountsAsMissing)
{
    readFresh(core("<FA id=\"1\" x=\"1\" y=\"1\"/><Bad/>\n"));
    EXPECT_FALSE(map.isValid());
    file.blockWithFolder();
    map.init();
    EXPECT_TRUE(map.isValid());
    EXPECT_EQ(map.idCoord().size(), 1);
}

TEST_F(CoreMapFile, GoodReadAfterABadOneIsValid)
{
    telortest::LogCapture log;
    readFresh(core("<Bad/>\n"));
    EXPECT_FALSE(map.isValid());
    file.write(core("<FA id=\"1\" x=\"1\" y=\"1\"/>\n"));
    map.init();
    EXPECT_TRUE(map.isValid());
}

TEST_F(CoreMapFile, PathIsBelowTheApplicationDirectory)
{
    // The file that the map reads is the one this test wrote at the documented path.
    readFresh(core("<FA id=\"10\" x=\"-3\" y=\"6\"/>\n"));
    EXPECT_TRUE(QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/../config/paramserver/core.xml")));
    EXPECT_EQ(map.idCoord().value(9), CorePoint(6, -3));
}

TEST_F(CoreMapFile, GlobalMapReadsTheSameFile)
{
    // The global map is read once, here, as an application does after QCoreApplication.
    readFresh(core("<FA id=\"1\" x=\"2\" y=\"3\"/>\n"));
    coreMap.init();
    EXPECT_TRUE(coreMap.isValid());
    EXPECT_EQ(coreMap.idCoord(), map.idCoord());
}
