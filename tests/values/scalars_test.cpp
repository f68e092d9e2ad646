// The scalar parameters: values, flags on change, and their wire records.

#include "testparameters.h"
#include "telortest.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "qcontainerpacket.h"

#include <gtest/gtest.h>

#include <limits>

using telortest::plainBytes;

namespace {

template<typename Parameter>
QByteArray recordOf(const Parameter &p, bool full = true)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    p.write(out, full);
    return bytes;
}

} // namespace

TEST(Scalars, DoubleSetValueToDefaultRaisesNothing)
{
    BPDouble p(1);
    CountingHandle h(&p, false);
    h.dropFlag();
    p.setValue(0.0);
    EXPECT_FALSE(p.changed());
    EXPECT_FALSE(h.changed());
}

TEST(Scalars, DoubleNaNRaisesEveryTime)
{
    BPDouble p(1);
    CountingHandle h(&p, false);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    p.setValue(nan);
    EXPECT_TRUE(p.changed());
    p.dropFlag();
    h.dropFlag();
    p.setValue(nan);
    EXPECT_TRUE(p.changed());
    EXPECT_TRUE(h.changed());
    EXPECT_EQ(h.ups, 2);
}

TEST(Scalars, DoubleSetValueChangesNoState)
{
    BPDouble p(1);
    p.setValue(3.0);
    EXPECT_EQ(p.getState(), 2u);
    EXPECT_EQ(p.getValue(), 3.0);
    EXPECT_EQ(p.floatValue(), 3.0);
    EXPECT_TRUE(p.changed());
}

namespace {

class ValueWatcher : public ParamBasePtr
{
public:
    using ParamBasePtr::ParamBasePtr;
    void upFlag() override
    {
        seen = getParam()->floatValue();
        ParamBasePtr::upFlag();
    }
    double seen = -1.0;
};

} // namespace

TEST(Scalars, HandleSeesTheOldValue)
{
    BPDouble d(1);
    ValueWatcher wd(&d, false);
    d.setValue(5.0);
    EXPECT_EQ(wd.seen, 0.0);

    TestDiscrete n(2);
    ValueWatcher wn(&n, false);
    n.setValue(9);
    EXPECT_EQ(wn.seen, 0.0);
    EXPECT_EQ(n.getValue(), 9);
}

TEST(Scalars, DiscreteFlagsAndValue)
{
    TestDiscrete p(4);
    EXPECT_EQ(p.valueType(), 2);
    EXPECT_EQ(p.getValue(), 0);
    p.setValue(0);
    EXPECT_FALSE(p.changed());
    p.setValue(-1);
    EXPECT_TRUE(p.changed());
    EXPECT_EQ(p.getValue(), -1);
    EXPECT_EQ(p.floatValue(), 4294967295.0);
    EXPECT_TRUE(p.stringValue().isNull());
}

TEST(Scalars, StringFlagsAndValue)
{
    BPString p(-5);
    EXPECT_EQ(p.getIdParameter(), static_cast<unsigned int>(-5));
    EXPECT_EQ(p.valueType(), 3);
    EXPECT_TRUE(p.getValue().isNull());
    p.setValue(QString());
    EXPECT_FALSE(p.changed());
    p.setValue(QStringLiteral("pump on"));
    EXPECT_TRUE(p.changed());
    p.dropFlag();
    p.setValue(QStringLiteral("pump on"));
    EXPECT_FALSE(p.changed());
    // Its text is only to be had from getValue().
    EXPECT_TRUE(p.stringValue().isNull());
    EXPECT_EQ(p.floatValue(), 0.0);
    EXPECT_FALSE(p.variantValue().isValid());
}

TEST(Scalars, DoubleRecord)
{
    BPDouble p(11);
    p.setValue(1.0 / 3.0);
    p.setState(128);
    const QByteArray expected =
        plainBytes([](QDataStream &s) { s << qint32(11) << qint32(1) << qint32(128) << (1.0 / 3.0); });
    EXPECT_EQ(recordOf(p), expected);
    EXPECT_EQ(recordOf(p, false), expected); // full makes no difference to a scalar
}

TEST(Scalars, DiscreteRecord)
{
    TestDiscrete p(12);
    p.setValue(-2);
    p.setState(8);
    EXPECT_EQ(recordOf(p), plainBytes([](QDataStream &s) { s << qint32(12) << qint32(2) << qint32(8) << qint32(-2); }));

    // Its own payload writer, without the full argument.
    QByteArray payload;
    QContainerPacket out(&payload);
    static_cast<const BPDiscrete &>(p).writePrivate(out);
    EXPECT_EQ(payload, plainBytes([](QDataStream &s) { s << qint32(-2); }));
}

TEST(Scalars, StringRecord)
{
    BPString p(13);
    p.setValue(QStringLiteral("Überdruck"));
    EXPECT_EQ(recordOf(p), plainBytes([](QDataStream &s) {
                  s << qint32(13) << qint32(3) << qint32(2) << QStringLiteral("Überdruck");
              }));
}

TEST(Scalars, RoundTripsThroughRecords)
{
    BPDouble d(21);
    d.setValue(-7.25);
    d.setState(256);
    TestDiscrete n(22);
    n.setValue(0x7FFFFFFF);
    n.setState(4096);
    BPString s(23);
    s.setValue(QStringLiteral("text"));
    s.setState(8);

    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        d.write(out, true);
        n.write(out, true);
        s.write(out, true);
    }

    BPDouble d2(21);
    TestDiscrete n2(22);
    BPString s2(23);
    QContainerPacket in(bytes);
    EXPECT_TRUE(d2.read(in));
    EXPECT_TRUE(n2.read(in));
    EXPECT_TRUE(s2.read(in));
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(d2.getValue(), -7.25);
    EXPECT_EQ(d2.getState(), 256u);
    EXPECT_EQ(n2.getValue(), 0x7FFFFFFF);
    EXPECT_EQ(n2.getState(), 4096u);
    EXPECT_EQ(s2.getValue(), QStringLiteral("text"));
    EXPECT_EQ(s2.getState(), 8u);
    EXPECT_TRUE(d2.dataReceived() && n2.dataReceived() && s2.dataReceived());
}

TEST(Scalars, TruncatedRecordsReadAsZeros)
{
    BPDouble d(1);
    d.setValue(5.0);
    const QByteArray head = plainBytes([](QDataStream &s) { s << qint32(1) << qint32(1) << qint32(8); });
    QContainerPacket in(head + QByteArray(3, '\x40'));
    EXPECT_TRUE(d.read(in));
    EXPECT_EQ(d.getValue(), 0.0);

    BPString s(1);
    s.setValue(QStringLiteral("old"));
    QContainerPacket in2(head + QByteArray::fromHex("000000"));
    EXPECT_TRUE(s.read(in2));
    EXPECT_TRUE(s.getValue().isEmpty());

    BPDouble e(0);
    QContainerPacket empty{QByteArray()};
    // An empty stream reads identifier 0: it matches a parameter with identifier 0.
    EXPECT_TRUE(e.read(empty));
    EXPECT_EQ(e.getState(), 0u);
}
