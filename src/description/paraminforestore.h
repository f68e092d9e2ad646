#ifndef PARAMINFORESTORE_H
#define PARAMINFORESTORE_H

#include <QtCore/QList>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

/**
 * @brief A server's notice that parameters were restored: their identifiers.
 *
 * Identity 2, 6, 4. Body: `ids` in Qt's form for a list, a 32-bit count followed by the
 * numbers.
 */
class TELORPARAMS5_EXPORT ParamInfoRestore : public QProtocolStruct
{
public:
    /** Stamps the identity 2, 6, 4; `ids` is empty. */
    ParamInfoRestore();
    ~ParamInfoRestore() override;

    /** Writes `ids`. */
    void writePrivate(QContainerPacket &packet) const override;

    /**
     * Reads `ids`, replacing the list, with the result of Qt's operator for a list: a list
     * that runs out reads as empty. Never allocates for more numbers than the body holds.
     * Always returns true.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /** The restored parameters' identifiers. Filled by the sender, read by the receiver. */
    QList<unsigned int> ids;
};

#endif // PARAMINFORESTORE_H
