// The order of core positions: by falling y(), then by rising x().

#include "corepoint.h"

#include <gtest/gtest.h>

#include <QtCore/QMap>

TEST(CorePoint, IsAQPointWithItsCoordinates)
{
    const CorePoint point(3, -2);
    EXPECT_EQ(point.x(), 3);
    EXPECT_EQ(point.y(), -2);
    const QPoint &plain = point;
    EXPECT_EQ(plain, QPoint(3, -2));
    EXPECT_EQ(CorePoint(), CorePoint(0, 0));
}

TEST(CorePoint, GreaterYComesFirst)
{
    EXPECT_TRUE(CorePoint(5, 9) < CorePoint(1, 5));
    EXPECT_FALSE(CorePoint(1, 5) < CorePoint(5, 9));
}

TEST(CorePoint, EqualYOrdersByRisingX)
{
    EXPECT_TRUE(CorePoint(1, 5) < CorePoint(2, 5));
    EXPECT_FALSE(CorePoint(2, 5) < CorePoint(1, 5));
}

TEST(CorePoint, EqualPointsAreNotLess)
{
    EXPECT_FALSE(CorePoint(4, 4) < CorePoint(4, 4));
}

TEST(CorePoint, ExtremeCoordinatesCompareWithoutOverflow)
{
    const int lo = std::numeric_limits<int>::min();
    const int hi = std::numeric_limits<int>::max();
    EXPECT_TRUE(CorePoint(0, hi) < CorePoint(0, lo));
    EXPECT_TRUE(CorePoint(lo, 0) < CorePoint(hi, 0));
}

TEST(CorePoint, MapRunsInThatOrder)
{
    QMap<CorePoint, int> map;
    map.insert(CorePoint(1, 5), 0);
    map.insert(CorePoint(2, 5), 1);
    map.insert(CorePoint(1, 9), 2);
    const QList<CorePoint> keys = map.keys();
    ASSERT_EQ(keys.size(), 3);
    EXPECT_EQ(keys.at(0), CorePoint(1, 9));
    EXPECT_EQ(keys.at(1), CorePoint(1, 5));
    EXPECT_EQ(keys.at(2), CorePoint(2, 5));
}

namespace {

/** A point whose order an application turned around. */
class ReversedPoint : public CorePoint
{
public:
    using CorePoint::CorePoint;
    bool operator<(const CorePoint &other) const override { return other.CorePoint::operator<(*this); }
};

} // namespace

TEST(CorePoint, OrderIsVirtual)
{
    const ReversedPoint reversed(1, 5);
    const CorePoint &asBase = reversed;
    EXPECT_FALSE(asBase < CorePoint(2, 5));
    EXPECT_TRUE(asBase < CorePoint(0, 5));
}
