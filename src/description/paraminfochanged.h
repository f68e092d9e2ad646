#ifndef PARAMINFOCHANGED_H
#define PARAMINFOCHANGED_H

#include <QtCore/QList>

#include "paraminfo.h"
#include "qprotocolstruct.h"
#include "telorparams5_export.h"

/**
 * @brief A server's notice that parameter descriptions changed: the new descriptions.
 *
 * Identity 2, 5, 4. setMessageType() is the one way to give the message another traffic
 * kind. ParamInfoAdded shares this body and differs only in its identity.
 *
 * Body: the number of records in `params` (32 bits), then each ParamInfo in its wire
 * form, in list order. A notice with no records is written as it is, but refused by
 * readPrivate().
 */
class TELORPARAMS5_EXPORT ParamInfoChanged : public QProtocolStruct
{
public:
    /** Stamps the identity 2, 5, 4; `params` is empty. */
    ParamInfoChanged();
    ~ParamInfoChanged() override;

    /** Writes the count of `params` and each record. */
    void writePrivate(QContainerPacket &packet) const override;

    /**
     * Reads the count as a signed 32-bit number; below 1 returns false, with nothing
     * logged. Then reads that many records into fresh ParamInfo objects and appends each
     * one that reads to `params`, which is not cleared first: reading into a used message
     * appends.
     *
     * At the first record that does not read (ParamInfo::read() returns false) the line
     * "Error reading ParamInfo" goes to the debug log and the result is false; that record
     * is dropped and the records read before it stay. Otherwise returns true. A count
     * larger than the records present ends at the first missing one, which cannot read.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /** Replaces the traffic kind of the identity, and nothing else of the header. */
    void setMessageType(int type);

    /** The descriptions, in the sender's order. Filled by the sender, read by the receiver. */
    QList<ParamInfo> params;
};

#endif // PARAMINFOCHANGED_H
