#ifndef PARAMVALUESSTRUCT_H
#define PARAMVALUESSTRUCT_H

#include <QtCore/QDateTime>
#include <QtCore/QMultiHash>
#include <QtCore/QSharedPointer>

#include "paramvaluesquery.h"
#include "telorparams5_export.h"

class AbstractParameterBase;
class ParamValuesResult;
class QObject;

/**
 * @brief One client's one-shot request for current values: the parameter objects it
 * wants, the request that asks for them, and the application of the answer.
 *
 * The structure shares ownership of its parameter objects with the application. It is
 * bound to a client token for its whole life; the token travels to the server and back so
 * that an answer finds the structure that asked, and it is never dereferenced.
 *
 * Use: append() as often as needed, query() to get the request (which the application
 * writes and sends), then newDataSlot() for each ParamValuesResult that arrives. query()
 * may be called again at any time, and the structure can be refilled after clear().
 *
 * One identifier can hold several objects, also the same object twice; every one of them
 * reads the one record of that identifier.
 */
class TELORPARAMS5_EXPORT ParamValuesStruct
{
public:
    /** An empty structure bound to @p parent; dateTime() is null. */
    explicit ParamValuesStruct(const QObject *parent);
    /** Drops the references to its objects; an object whose last reference this was is destroyed. */
    virtual ~ParamValuesStruct();

    /**
     * Registers @p param under its identifier, without looking for an equal entry:
     * appending one object twice leaves two entries. A null pointer adds nothing.
     */
    void append(QSharedPointer<AbstractParameterBase> param);
    /** Forgets every parameter object. The token and dateTime() stay. */
    void clear();
    /**
     * The request for everything registered: the token, and the identifier of every
     * entry in the structure's iteration order, repeats included (an identifier under
     * which three objects stand is listed three times).
     */
    ParamValuesQuery query() const;
    /** The time of the last result accepted by newDataSlot(); null until then. */
    QDateTime dateTime() const;

    /**
     * Applies a result.
     *
     * A result for another token returns false and changes nothing. Otherwise the
     * result's time is taken first, and then the record stream is walked in the order of
     * the result's identifiers: the leading identifier must equal the element of `ids`,
     * and every object registered under it (the latest appended first) reads the record
     * that follows, each from the same position. The first mismatch or refused record
     * returns false; objects already read keep their values, and the time stays.
     *
     * An identifier under which nothing is registered reads no record, so the next
     * comparison meets that record's own identifier word. Each object is held by a strong
     * reference while it reads.
     */
    bool newDataSlot(const ParamValuesResult &result);

private:
    Q_DISABLE_COPY(ParamValuesStruct)

    QMultiHash<unsigned int, QSharedPointer<AbstractParameterBase>> params;
    QDateTime m_dateTime;
    const QObject *parent;
};

#endif // PARAMVALUESSTRUCT_H
