#ifndef PARAMSETPOINTS_H
#define PARAMSETPOINTS_H

#include "telorparams5_export.h"

class QContainerPacket;
class QXmlStreamAttributes;

/**
 * @brief The four alarm thresholds of a parameter description, each present or absent on
 * its own.
 *
 * A threshold that is configured as 0.0 is a different state from one that is absent.
 * Nothing in the library compares a value against the thresholds; that is the
 * application's business.
 *
 * Copies are deep: a copy holds numbers of its own, so changing a copy never changes the
 * original. The object owns its numbers and frees them when it is destroyed.
 *
 * Wire form: four blocks in the order low emergency, low warning, up warning, up
 * emergency. Each block is a flag byte, 1 or 0, followed by the threshold as a double
 * when the flag is not 0. An object with no threshold is exactly four zero bytes.
 */
class TELORPARAMS5_EXPORT ParamSetpoints
{
public:
    /** All four thresholds absent. */
    ParamSetpoints();

    /**
     * Takes the thresholds from the attributes "les" (low emergency), "lws" (low
     * warning), "uws" (up warning) and "ues" (up emergency). An attribute that is there,
     * even with an empty value, makes its threshold present, with the value of
     * QString::toDouble and no error check: text that is no number gives 0.0.
     */
    explicit ParamSetpoints(const QXmlStreamAttributes &attributes);

    /** A deep copy. */
    ParamSetpoints(const ParamSetpoints &other);
    /** Makes this a deep copy of @p other: a threshold absent there becomes absent here. */
    ParamSetpoints &operator=(const ParamSetpoints &other);
    /** Frees the thresholds it holds. */
    virtual ~ParamSetpoints();

    /** Writes the wire form. */
    void write(QContainerPacket &packet) const;

    /**
     * Reads the wire form. A block whose flag is not 0 makes its threshold present with
     * the value that follows (0.0 if the data has run out). A block whose flag is 0
     * leaves that threshold as it was, so reading into a used object keeps a threshold
     * that the data says is absent. Always returns true.
     */
    bool read(QContainerPacket &packet);

    /**
     * The threshold, or 0.0 when it is absent. @p ok may be null; otherwise it receives
     * whether the threshold is present.
     */
    double getLowEmergencySetpoint(bool *ok = nullptr) const;
    /** @copydoc getLowEmergencySetpoint */
    double getLowWarningSetpoint(bool *ok = nullptr) const;
    /** @copydoc getLowEmergencySetpoint */
    double getUpWarningSetpoint(bool *ok = nullptr) const;
    /** @copydoc getLowEmergencySetpoint */
    double getUpEmergencySetpoint(bool *ok = nullptr) const;

    /**
     * Makes the threshold present with @p value. A threshold can't be made absent again,
     * except by assigning an object in which it is absent.
     */
    void setLowEmergencySetpoint(double value);
    /** @copydoc setLowEmergencySetpoint */
    void setLowWarningSetpoint(double value);
    /** @copydoc setLowEmergencySetpoint */
    void setUpWarningSetpoint(double value);
    /** @copydoc setLowEmergencySetpoint */
    void setUpEmergencySetpoint(double value);

    /** True when at least one of the four thresholds is present. */
    bool enabled() const;

private:
    double *lowEmergency;
    double *lowWarning;
    double *upWarning;
    double *upEmergency;
};

#endif // PARAMSETPOINTS_H
