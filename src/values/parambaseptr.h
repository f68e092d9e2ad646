#ifndef PARAMBASEPTR_H
#define PARAMBASEPTR_H

#include "telorparams5_export.h"

class AbstractParameterBase;
class QContainerPacket;

/**
 * @brief One client's handle on a parameter, with a change flag of its own.
 *
 * A handle registers itself on its parameter when it is built and unregisters when it is
 * destroyed. It does not own the parameter, and it must be destroyed before the parameter:
 * its destructor reaches the parameter. A handle built on a null pointer is registered
 * nowhere and writes nothing; destroying it is safe, and its id() is 0.
 *
 * A new handle has its flag up, so that a client sees every parameter once.
 *
 * Handles are not copyable: a copy would unregister the original's entry.
 */
class TELORPARAMS5_EXPORT ParamBasePtr
{
public:
    /**
     * Stores @p parameter and @p refreshFlag and registers on the parameter if it is not
     * null. With @p refreshFlag, refresh() raises the handle's flag.
     */
    explicit ParamBasePtr(AbstractParameterBase *parameter, bool refreshFlag = false);
    /** Unregisters from the parameter. */
    virtual ~ParamBasePtr();

    /** Raises the handle's flag. */
    virtual void upFlag();
    /** Lowers the handle's flag; the parameter's flag is not touched. */
    virtual void dropFlag();
    /** Raises the handle's flag; the same as upFlag(). */
    virtual void setNoData();
    /**
     * Writes the parameter's record, with `full` true on the first write through this
     * handle and false afterwards. A handle without a parameter writes nothing and stays
     * at its first write.
     */
    virtual void write(QContainerPacket &packet) const;
    /** Raises the handle's flag if the handle was built with its refresh flag. */
    virtual void refresh();

    /** Whether this client has something new to look at. */
    bool changed() const;
    /** The parameter's identifier; 0 for a handle without a parameter. */
    unsigned int id() const;
    /** The parameter, not owned. */
    AbstractParameterBase *getParam() const;

protected:
    /** The parameter, not owned; null for a handle built without one. */
    AbstractParameterBase *paramPtr;
    /** This client's change flag; up for a new handle. */
    bool changedFlag;
    /** Whether refresh() raises the flag; fixed by the constructor. */
    bool refreshFlag;
    /** True until the first write() that found a parameter; that write is a full one. */
    mutable bool firstWrite;

private:
    ParamBasePtr(const ParamBasePtr &) = delete;
    ParamBasePtr &operator=(const ParamBasePtr &) = delete;
};

#endif // PARAMBASEPTR_H
