// The drivers: functions of simulated time, and a seeded random walk.

#include "plantdriver.h"
#include "plantsimulation.h"
#include "servertest.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(PlantDriver, SineFollowsTheSimulatedTime)
{
    PlantDriver d;
    d.kind = PlantDriver::Sine;
    d.mean = 10.0;
    d.amplitude = 5.0;
    d.periodMs = 4000;
    EXPECT_DOUBLE_EQ(d.next(0).toDouble(), 10.0);
    EXPECT_DOUBLE_EQ(d.next(1000).toDouble(), 15.0);
    EXPECT_NEAR(d.next(3000).toDouble(), 5.0, 1e-9);
    EXPECT_DOUBLE_EQ(d.next(4000 * 1000 + 1000).toDouble(), 15.0);
    d.phaseMs = 1000;
    EXPECT_DOUBLE_EQ(d.next(0).toDouble(), 15.0);
}

TEST(PlantDriver, RampStepsAndBits)
{
    PlantDriver ramp;
    ramp.kind = PlantDriver::Ramp;
    ramp.from = 0.0;
    ramp.to = 100.0;
    ramp.periodMs = 1000;
    EXPECT_DOUBLE_EQ(ramp.next(250).toDouble(), 25.0);
    EXPECT_DOUBLE_EQ(ramp.next(1000).toDouble(), 0.0);

    PlantDriver steps;
    steps.kind = PlantDriver::Steps;
    steps.periodMs = 60000;
    steps.steps = {qMakePair(qint64(0), QStringLiteral("a")), qMakePair(qint64(20000), QStringLiteral("b"))};
    EXPECT_EQ(steps.next(19999).toString(), QStringLiteral("a"));
    EXPECT_EQ(steps.next(20000).toString(), QStringLiteral("b"));
    EXPECT_EQ(steps.next(60000).toString(), QStringLiteral("a"));

    PlantDriver bits;
    bits.kind = PlantDriver::Bits;
    bits.periodMs = 1000;
    bits.words = {1, 3, 7};
    EXPECT_EQ(bits.next(0).toUInt(), 1u);
    EXPECT_EQ(bits.next(1500).toUInt(), 3u);
    EXPECT_EQ(bits.next(2999).toUInt(), 7u);
    EXPECT_EQ(bits.next(3000).toUInt(), 1u);
    EXPECT_EQ(bits.next(-1).toUInt(), 7u);

    PlantDriver constant;
    constant.constant = QStringLiteral("x");
    EXPECT_EQ(constant.next(123).toString(), QStringLiteral("x"));
}

TEST(PlantDriver, RandomWalkIsReproducibleFromItsSeed)
{
    PlantDriver walk;
    walk.kind = PlantDriver::RandomWalk;
    walk.start = 50.0;
    walk.step = 1.0;
    walk.minimum = 45.0;
    walk.maximum = 55.0;
    PlantDriver same = walk;
    PlantDriver other = walk;
    walk.reset(7);
    same.reset(7);
    other.reset(8);
    bool differs = false;
    for (int i = 0; i < 1000; ++i) {
        const double a = walk.next(i).toDouble();
        EXPECT_EQ(a, same.next(i).toDouble());
        differs = differs || a != other.next(i).toDouble();
        EXPECT_GE(a, 45.0);
        EXPECT_LE(a, 55.0);
    }
    EXPECT_TRUE(differs);
}

TEST(PlantSimulation, SameSeedAndStartGiveTheSameRun)
{
    const Plant plant = servertest::loadPlant(servertest::examplePlantPath());
    PlantSimulation a(plant, 5);
    PlantSimulation b(plant, 5);
    PlantSimulation c(plant, 6);
    bool differs = false;
    for (qint64 t = 0; t < 200 * 250; t += 250) {
        const PlantStep sa = a.step(t);
        const PlantStep sb = b.step(t);
        const PlantStep sc = c.step(t);
        ASSERT_EQ(sa.values.size(), sb.values.size());
        for (int i = 0; i < sa.values.size(); ++i) {
            EXPECT_EQ(sa.values.at(i).id, sb.values.at(i).id);
            EXPECT_EQ(sa.values.at(i).value, sb.values.at(i).value);
            EXPECT_EQ(sa.values.at(i).state, sb.values.at(i).state);
        }
        ASSERT_EQ(sa.events.size(), sb.events.size());
        differs = differs || sa.values.size() != sc.values.size();
        for (int i = 0; !differs && i < sa.values.size(); ++i)
            differs = sa.values.at(i).value != sc.values.at(i).value;
        a.dropFlags();
        b.dropFlags();
        c.dropFlags();
    }
    EXPECT_TRUE(differs) << "the seed must reach the random walks";
}
