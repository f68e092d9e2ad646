#ifndef TESTPARAMETERS_H
#define TESTPARAMETERS_H

// Small subclasses that the parameter tests need: BPDiscrete is abstract by design, and
// the abnormal-state flags have no accessors, so a test reaches them through a subclass.

#include "bpdiscrete.h"
#include "bpdouble.h"
#include "parambaseptr.h"
#include "qcontainerpacket.h"

/** The smallest usable discrete parameter: the full write is the plain payload. */
class TestDiscrete : public BPDiscrete
{
public:
    using BPDiscrete::BPDiscrete;
    void writePrivate(QContainerPacket &packet, bool) const override { BPDiscrete::writePrivate(packet); }
    using BPDiscrete::writePrivate;
};

/** A double parameter that lets a test see and set the abnormal-state flags. */
class ProbeDouble : public BPDouble
{
public:
    using BPDouble::BPDouble;
    bool latched() const { return abnormalLatched; }
    bool held() const { return abnormalHeld; }
    void setHeld(bool v) { abnormalHeld = v; }
    void setWatch(bool v) { abnormalWatch = v; }
    int handleCount() const { return relatedValues.size(); }
};

/** A handle that counts the calls it gets. */
class CountingHandle : public ParamBasePtr
{
public:
    using ParamBasePtr::ParamBasePtr;
    void upFlag() override { ++ups; ParamBasePtr::upFlag(); }
    void setNoData() override { ++noDatas; ParamBasePtr::setNoData(); }
    void refresh() override { ++refreshes; ParamBasePtr::refresh(); }
    bool isFirstWrite() const { return firstWrite; }
    int ups = 0;
    int noDatas = 0;
    int refreshes = 0;
};

#endif // TESTPARAMETERS_H
