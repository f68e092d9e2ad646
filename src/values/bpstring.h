#ifndef BPSTRING_H
#define BPSTRING_H

#include "abstractparameterbase.h"

/**
 * @brief A parameter whose value is a text. Value type 3.
 *
 * The text is to be had from getValue() only: floatValue() is 0.0 and stringValue() is
 * the base's null string. setValue() raises the flags (before storing) when the text
 * differs. The payload is the value as a QString.
 */
class TELORPARAMS5_EXPORT BPString : public AbstractParameterBase
{
public:
    /** A parameter with identifier 0, a null string and the state 2 (no data). */
    BPString();
    /** Takes the identifier as a signed int. */
    explicit BPString(int idParameter);
    ~BPString() override;

    int valueType() const override;
    void writePrivate(QContainerPacket &packet, bool full) const override;
    /** Reads the value; always true. A truncated payload reads as a null or empty string. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The stored text; a null string for a new parameter. */
    QString getValue() const;
    /** Stores @p value; raises the flags first if it differs from the stored text. */
    void setValue(const QString &value);

protected:
    /** The stored text, the QString of the payload. */
    QString value;
};

#endif // BPSTRING_H
