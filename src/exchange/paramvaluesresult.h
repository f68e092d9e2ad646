#ifndef PARAMVALUESRESULT_H
#define PARAMVALUESRESULT_H

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QList>

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class QObject;

/**
 * @brief A server's answer to a ParamValuesQuery: the current records of the parameters
 * asked for.
 *
 * The identity is not stamped: a result takes it from the packet it is read from.
 *
 * Body, in this order: `ids` in Qt's sequential container form, `data` as a QByteArray,
 * `dateTime` as a QDateTime, and `parent` as a signed 64-bit integer holding the pointer's
 * value.
 *
 * `data` is the record stream: for every element of `ids`, in the same order and back to
 * back, the identifier again as a signed 32-bit integer, then the parameter record as
 * AbstractParameterBase::write() produces it. The message writes and reads `data` as
 * opaque bytes; ParamValuesStruct::newDataSlot() walks it.
 *
 * readPrivate() returns true exactly when the token read is not null. An `ids` count that
 * announces more identifiers than the body holds reads as an empty list, without
 * allocating for the announced count. A `dateTime` in a zone that this side doesn't know
 * reads as a null QDateTime, so that the result can be written again; a zone name that
 * climbs out of the zone directory is not looked up.
 */
class TELORPARAMS5_EXPORT ParamValuesResult : public QProtocolStruct
{
public:
    /** An empty result with a null token and a null time; the header is the base's default. */
    ParamValuesResult();
    ~ParamValuesResult() override;

    void writePrivate(QContainerPacket &packet) const override;
    /** Reads all four fields; false if the token is null, although all was read. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The token copied from the query. */
    const QObject *getQObject() const;

    /** The identifiers answered, in the order of their records in `data`. */
    QList<unsigned int> ids;
    /** The record stream. */
    QByteArray data;
    /** The time of the answer. */
    QDateTime dateTime;
    /** The token copied from the query; never dereferenced. */
    const QObject *parent = nullptr;
};

#endif // PARAMVALUESRESULT_H
