// The parameter base: validity of states, change flags and their fan-out to the client
// handles, and the wire record.

#include "testparameters.h"
#include "telortest.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "qcontainerpacket.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using telortest::plainBytes;

TEST(ParameterBase, IsValid)
{
    const bool expected[] = {false, true, false, true, false};
    for (unsigned int s = 0; s < 5; ++s)
        EXPECT_EQ(AbstractParameterBase::isValid(s), expected[s]) << s;
    for (unsigned int s : {5u, 8u, 64u, 4096u, 0xFFFFFFFFu})
        EXPECT_TRUE(AbstractParameterBase::isValid(s)) << s;
}

TEST(ParameterBase, NewDouble)
{
    BPDouble p(7);
    EXPECT_EQ(p.getIdParameter(), 7u);
    EXPECT_EQ(p.getState(), 2u);
    EXPECT_FALSE(p.changed());
    EXPECT_FALSE(p.dataReceived());
    EXPECT_EQ(p.getValue(), 0.0);
    EXPECT_EQ(p.valueType(), 1);
    EXPECT_EQ(p.elementType(), 0);
    EXPECT_FALSE(p.isRefreshAnyway());
    EXPECT_FALSE(p.limits().hasLimits());
    EXPECT_FALSE(p.variantValue().isValid());
    EXPECT_TRUE(p.stringValue().isNull());
    EXPECT_TRUE(p.param(0, 0).isNull());
    EXPECT_EQ(p.info(0, 0), nullptr);
    bool ok = true;
    EXPECT_EQ(p.floatValue(1, 2, &ok), 0.0);
    EXPECT_TRUE(ok); // left alone
    BPDouble unnamed;
    EXPECT_EQ(unnamed.getIdParameter(), 0u);
}

TEST(ParameterBase, RefreshAnywayIsOnlyStored)
{
    BPDouble p(1);
    ParamBasePtr h(&p, false);
    h.dropFlag();
    p.setRefreshAnyway(true);
    EXPECT_TRUE(p.isRefreshAnyway());
    EXPECT_FALSE(p.changed());
    EXPECT_FALSE(h.changed());
}

TEST(ParameterBase, NewHandleHasItsFlagUp)
{
    BPDouble p(3);
    ParamBasePtr h(&p, false);
    EXPECT_TRUE(h.changed());
    EXPECT_EQ(h.id(), 3u);
    EXPECT_EQ(h.getParam(), &p);
    EXPECT_FALSE(p.changed());
}

TEST(ParameterBase, SetStateSameStateRefreshesOnlyRefreshingHandles)
{
    BPDouble p(1);
    CountingHandle refreshing(&p, true);
    CountingHandle plain(&p, false);
    refreshing.dropFlag();
    plain.dropFlag();

    p.setState(2); // the state it already has
    EXPECT_FALSE(p.changed());
    EXPECT_TRUE(refreshing.changed());
    EXPECT_FALSE(plain.changed());
    EXPECT_EQ(refreshing.refreshes, 1);
    EXPECT_EQ(plain.refreshes, 1);
    EXPECT_EQ(plain.ups, 0);

    // With the parameter's flag up, the same state still leaves it up.
    p.upFlag();
    p.setState(2);
    EXPECT_TRUE(p.changed());
}

TEST(ParameterBase, SetStateNewStateRaisesEverything)
{
    BPDouble p(1);
    CountingHandle refreshing(&p, true);
    CountingHandle plain(&p, false);
    refreshing.dropFlag();
    plain.dropFlag();

    p.setState(8);
    EXPECT_EQ(p.getState(), 8u);
    EXPECT_TRUE(p.changed());
    EXPECT_TRUE(refreshing.changed());
    EXPECT_TRUE(plain.changed());
    EXPECT_EQ(plain.ups, 1);
    EXPECT_EQ(plain.refreshes, 0);
}

namespace {

/** A handle that looks at the parameter's state when it is told of a change. */
class StateWatcher : public ParamBasePtr
{
public:
    using ParamBasePtr::ParamBasePtr;
    void upFlag() override
    {
        seenState = getParam()->getState();
        ParamBasePtr::upFlag();
    }
    unsigned int seenState = 0;
};

} // namespace

TEST(ParameterBase, StateIsStoredAfterHandlesAreTold)
{
    BPDouble p(1);
    StateWatcher w(&p, false);
    p.setState(64);
    EXPECT_EQ(w.seenState, 2u);
    EXPECT_EQ(p.getState(), 64u);
}

TEST(ParameterBase, SetNoDataRaisesAllEvenWhenStateWasTwo)
{
    BPDouble p(1);
    CountingHandle refreshing(&p, true);
    CountingHandle plain(&p, false);
    refreshing.dropFlag();
    plain.dropFlag();
    ASSERT_EQ(p.getState(), 2u);

    p.setNoData();
    EXPECT_EQ(p.getState(), 2u);
    EXPECT_TRUE(p.changed());
    EXPECT_TRUE(refreshing.changed());
    EXPECT_TRUE(plain.changed());
    EXPECT_EQ(plain.noDatas, 1);
    EXPECT_EQ(plain.refreshes, 1); // from the repeated state 2
}

TEST(ParameterBase, SetNoDataKeepsDataReceived)
{
    BPDouble p(5);
    QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(5) << qint32(1) << qint32(8) << 1.0; });
    QContainerPacket in(bytes);
    ASSERT_TRUE(p.read(in));
    p.setNoData();
    EXPECT_TRUE(p.dataReceived());
    EXPECT_EQ(p.getState(), 2u);
}

TEST(ParameterBase, SetInvalidBeyondDepthDoesNothing)
{
    BPDouble p(1);
    CountingHandle h(&p, true);
    h.dropFlag();
    p.setState(8);
    p.dropFlag();
    h.dropFlag();
    h.ups = 0;
    h.refreshes = 0;

    p.setInvalid(5);
    EXPECT_EQ(p.getState(), 8u);
    EXPECT_FALSE(p.changed());
    EXPECT_EQ(h.ups + h.refreshes, 0);
}

TEST(ParameterBase, SetInvalidAtDepthFourVisitsEachHandleOnce)
{
    BPDouble p(1);
    CountingHandle a(&p, true);
    CountingHandle b(&p, false);
    p.setState(8);
    a.ups = b.ups = 0;

    p.setInvalid(4);
    EXPECT_EQ(p.getState(), 2u);
    // One change from 8 to 2; the nested calls at depth 5 return at once.
    EXPECT_EQ(a.ups, 1);
    EXPECT_EQ(b.ups, 1);
    EXPECT_EQ(a.refreshes, 0);
    EXPECT_EQ(b.refreshes, 0);
}

TEST(ParameterBase, SetInvalidFromZeroIsBoundedAndRepeatsTheState)
{
    BPDouble p(1);
    CountingHandle a(&p, true);
    CountingHandle b(&p, false);
    p.setState(8);
    a.ups = b.ups = 0;

    p.setInvalid(0);
    EXPECT_EQ(p.getState(), 2u);
    EXPECT_EQ(a.ups, 1);
    // Levels 0..4 with two handles each: 1 + 2 + 4 + 8 + 16 calls of setInvalid; every
    // call but the first repeats state 2 and refreshes both handles.
    EXPECT_EQ(a.refreshes, 2 + 4 + 8 + 16);
    EXPECT_EQ(b.refreshes, a.refreshes);
}

TEST(ParameterBase, DropFlagLeavesHandles)
{
    BPDouble p(1);
    ParamBasePtr a(&p, true);
    ParamBasePtr b(&p, false);
    p.upFlag();
    p.dropFlag();
    EXPECT_FALSE(p.changed());
    EXPECT_TRUE(a.changed());
    EXPECT_TRUE(b.changed());
    p.upFlag();
    p.cleanChanged();
    EXPECT_FALSE(p.changed());
    EXPECT_TRUE(a.changed());
}

TEST(ParameterBase, HandleFlagsAreTheirOwn)
{
    BPDouble p(1);
    ParamBasePtr a(&p, true);
    ParamBasePtr b(&p, false);
    a.dropFlag();
    EXPECT_FALSE(a.changed());
    EXPECT_TRUE(b.changed());
    a.setNoData();
    EXPECT_TRUE(a.changed());
    a.dropFlag();
    a.refresh();
    EXPECT_TRUE(a.changed());
    b.dropFlag();
    b.refresh();
    EXPECT_FALSE(b.changed());
    b.upFlag();
    EXPECT_TRUE(b.changed());
}

TEST(ParameterBase, WrongIdentifierRecord)
{
    BPDouble p(7);
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint32(8) << qint32(1) << qint32(128) << qint32(0x11223344) << qint32(0x55667788);
    });
    QContainerPacket in(bytes);
    EXPECT_FALSE(p.read(in));
    EXPECT_EQ(p.getState(), 128u);
    EXPECT_FALSE(p.changed());
    EXPECT_FALSE(p.dataReceived());
    EXPECT_EQ(p.getValue(), 0.0);
    qint32 next = 0;
    in >> next;
    EXPECT_EQ(next, 0x11223344);
}

TEST(ParameterBase, RightIdentifierRecord)
{
    BPDouble p(7);
    CountingHandle h(&p, true);
    h.dropFlag();
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(7) << qint32(1) << qint32(64) << 12.5; });
    QContainerPacket in(bytes);
    EXPECT_TRUE(p.read(in));
    EXPECT_EQ(p.getState(), 64u);
    EXPECT_EQ(p.getValue(), 12.5);
    EXPECT_TRUE(p.changed());
    EXPECT_TRUE(p.dataReceived());
    // The direct flag: no fan-out to the handles.
    EXPECT_FALSE(h.changed());
    EXPECT_EQ(h.ups + h.refreshes, 0);
}

TEST(ParameterBase, TypeWordIsNotCompared)
{
    BPDouble p(7);
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(7) << qint32(3) << qint32(8) << 2.5; });
    QContainerPacket in(bytes);
    EXPECT_TRUE(p.read(in));
    EXPECT_EQ(p.getValue(), 2.5);
}

TEST(ParameterBase, GoodStateClearsAbnormalHeld)
{
    ProbeDouble p(7);
    p.setHeld(true);
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(7) << qint32(1) << qint32(8) << 1.0; });
    QContainerPacket in(bytes);
    EXPECT_TRUE(p.read(in));
    EXPECT_FALSE(p.held());
    EXPECT_FALSE(p.latched());
}

TEST(ParameterBase, AbnormalValidStateLatchesWhenWatched)
{
    // 64 has no bit 8 and is valid.
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(7) << qint32(1) << qint32(64) << 1.0; });
    {
        ProbeDouble p(7);
        p.setWatch(true);
        QContainerPacket in(bytes);
        p.read(in);
        EXPECT_TRUE(p.latched());
    }
    {
        ProbeDouble p(7); // not watched
        QContainerPacket in(bytes);
        p.read(in);
        EXPECT_FALSE(p.latched());
    }
    {
        ProbeDouble p(7); // watched but held
        p.setWatch(true);
        p.setHeld(true);
        QContainerPacket in(bytes);
        p.read(in);
        EXPECT_FALSE(p.latched());
        EXPECT_TRUE(p.held());
    }
    {
        ProbeDouble p(7); // watched, state 2 is not valid
        p.setWatch(true);
        const QByteArray noData = plainBytes([](QDataStream &s) { s << qint32(7) << qint32(1) << qint32(2) << 1.0; });
        QContainerPacket in(noData);
        p.read(in);
        EXPECT_FALSE(p.latched());
    }
}

TEST(ParameterBase, RecordHeadAndPayload)
{
    BPDouble p(0x01020304);
    p.setValue(-3.75);
    p.setState(4096);
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        p.write(out, true);
    }
    EXPECT_EQ(bytes, plainBytes([](QDataStream &s) { s << qint32(0x01020304) << qint32(1) << qint32(4096) << -3.75; }));
}

TEST(ParameterBase, HandleWritesFullThenNot)
{
    // A parameter that records the full flag it is written with.
    class FullProbe : public BPDouble
    {
    public:
        using BPDouble::BPDouble;
        void writePrivate(QContainerPacket &packet, bool full) const override
        {
            fulls.push_back(full);
            BPDouble::writePrivate(packet, full);
        }
        mutable std::vector<bool> fulls;
    };
    FullProbe p(9);
    CountingHandle first(&p, false);
    CountingHandle second(&p, false);
    QByteArray bytes;
    QContainerPacket out(&bytes);
    first.write(out);
    first.write(out);
    second.write(out);
    EXPECT_EQ(p.fulls, (std::vector<bool>{true, false, true}));
    EXPECT_FALSE(first.isFirstWrite());
    EXPECT_FALSE(second.isFirstWrite());
    EXPECT_EQ(bytes.size(), 3 * 20);
}

TEST(ParameterBase, HandleWithoutParameterWritesNothing)
{
    CountingHandle h(nullptr, true);
    QByteArray bytes;
    QContainerPacket out(&bytes);
    h.write(out);
    EXPECT_TRUE(bytes.isEmpty());
    EXPECT_TRUE(h.isFirstWrite());
    EXPECT_EQ(h.getParam(), nullptr);
}

TEST(ParameterBase, HandleOnNullIsNotRegistered)
{
    ProbeDouble p(1);
    {
        ParamBasePtr h(nullptr, false);
        EXPECT_EQ(p.handleCount(), 0);
    }
    EXPECT_EQ(p.handleCount(), 0);
}

TEST(ParameterBase, HandlesRegisterAndUnregister)
{
    ProbeDouble p(1);
    {
        ParamBasePtr a(&p, false);
        ParamBasePtr b(&p, false);
        EXPECT_EQ(p.handleCount(), 2);
    }
    EXPECT_EQ(p.handleCount(), 0);
}

TEST(ParameterBase, UnregisterRemovesOneOfTwoEntries)
{
    ProbeDouble p(1);
    CountingHandle h(&p, false); // registered once by its constructor
    p.registerRelatedValue(&h);  // and once more by hand
    EXPECT_EQ(p.handleCount(), 2);
    h.dropFlag();
    p.upFlag();
    EXPECT_EQ(h.ups, 2); // visited once per entry
    p.unregisterRelatedValue(&h);
    EXPECT_EQ(p.handleCount(), 1);
    p.unregisterRelatedValue(nullptr); // absent: nothing happens
    EXPECT_EQ(p.handleCount(), 1);
    // The destructor of h removes the remaining entry.
}

namespace {

/** A handle that registers a new handle on its parameter while it is being told. */
class GrowingHandle : public ParamBasePtr
{
public:
    using ParamBasePtr::ParamBasePtr;
    void upFlag() override
    {
        ParamBasePtr::upFlag();
        ++calls;
        if (!spawned)
            spawned.reset(new CountingHandle(getParam(), false));
    }
    int calls = 0;
    std::unique_ptr<CountingHandle> spawned;
};

/** A handle that unregisters another handle while it is being told. */
class PruningHandle : public ParamBasePtr
{
public:
    using ParamBasePtr::ParamBasePtr;
    void upFlag() override
    {
        ParamBasePtr::upFlag();
        if (victim)
            getParam()->unregisterRelatedValue(victim);
    }
    ParamBasePtr *victim = nullptr;
};

} // namespace

TEST(ParameterBase, FanOutWalksACopyOfTheHandles)
{
    ProbeDouble p(1);
    {
        GrowingHandle grower(&p, false);
        CountingHandle after(&p, false);
        after.ups = 0;
        p.upFlag();
        EXPECT_EQ(grower.calls, 1);
        EXPECT_EQ(after.ups, 1);
        ASSERT_TRUE(grower.spawned);
        EXPECT_EQ(grower.spawned->ups, 0); // registered during the pass, not visited
        EXPECT_EQ(p.handleCount(), 3);
        grower.spawned.reset();
    }
    {
        PruningHandle pruner(&p, false);
        CountingHandle victim(&p, false);
        pruner.victim = &victim;
        p.upFlag();
        EXPECT_EQ(victim.ups, 1); // still visited: the walk goes over the copy
        EXPECT_EQ(p.handleCount(), 1);
        p.registerRelatedValue(&victim); // put it back for its destructor
    }
    EXPECT_EQ(p.handleCount(), 0);
}
