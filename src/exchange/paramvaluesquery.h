#ifndef PARAMVALUESQUERY_H
#define PARAMVALUESQUERY_H

#include <QtCore/QList>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief A one-shot request for the current values of some parameters. Identity 3, 8, 1.
 *
 * Built by ParamValuesStruct::query() and sent by the application; a server answers with
 * one ParamValuesResult that carries the same token.
 *
 * Body, in this order: `parent` as a signed 64-bit integer holding the pointer's value,
 * then `ids` in Qt's sequential container form (32-bit count, then 32-bit identifiers).
 * The token leads here and closes the result.
 *
 * readPrivate() returns true exactly when the token read is not null. A count that
 * announces more identifiers than the body holds reads as an empty list, without
 * allocating for the announced count.
 */
class TELORPARAMS5_EXPORT ParamValuesQuery : public QProtocolStruct
{
public:
    /** An empty request with a null token, identity 3, 8, 1. */
    ParamValuesQuery();
    ~ParamValuesQuery() override;

    void writePrivate(QContainerPacket &packet) const override;
    /** Reads token and identifiers; false if the token is null, although all was read. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The requesting client's token; never dereferenced. */
    const QObject *parent = nullptr;
    /** The identifiers asked for, repeats kept. */
    QList<unsigned int> ids;
};

#endif // PARAMVALUESQUERY_H
