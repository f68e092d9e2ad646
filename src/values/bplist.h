#ifndef BPLIST_H
#define BPLIST_H

#include <QtCore/QList>
#include <QtCore/QVariant>

#include "abstractparameterbase.h"

/**
 * @brief A parameter whose value is an ordered list of variants. Value type 6.
 *
 * A list has no limits and no numeric value. Its text form is the health of the
 * parameter, not its content: stringValue() gives "OK" for the state 8, "Fault" for 4096
 * and "Invalid" for every other state, whatever the arguments. The content is to be had
 * from getList() or getValue(); variantValue() is the base's invalid variant.
 *
 * setList() assigns the list and raises every flag, without comparing: assigning the
 * same content is a change too. The state is left alone; the owner assigns it with
 * setState(). setValue() is refused: it changes nothing and writes a line to the debug
 * log.
 *
 * Payload: the list in Qt's stream form, a 32-bit count and then each entry as a
 * QVariant, first to last. Reading replaces the list and always returns true; if the
 * data fails in the middle the list ends empty. A received count or nested container
 * larger than the remaining bytes could describe is not allocated for. A received time
 * in a zone that this side doesn't know, which Qt could not write again, is kept as a
 * null QDateTime.
 */
class TELORPARAMS5_EXPORT BPList : public AbstractParameterBase
{
public:
    /** An empty list with identifier 0, state 2. */
    BPList();
    /** An empty list with identifier @p idParameter, state 2. */
    explicit BPList(unsigned int idParameter);
    ~BPList() override;

    /** "OK" for the state 8, "Fault" for 4096, "Invalid" otherwise; the arguments are ignored. */
    QString stringValue(int precision = 6, char format = 'g') const override;
    /** Always 0.0. */
    double floatValue() const override;
    using AbstractParameterBase::floatValue;
    /** 6. */
    int valueType() const override;
    /** Writes the list in Qt's stream form; @p full is ignored. */
    void writePrivate(QContainerPacket &packet, bool full) const override;
    /**
     * Reads a list in Qt's stream form, replacing the old one. Always true; a list that
     * fails to read leaves the list empty.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /** The list itself, without a copy. */
    const QList<QVariant> &getList() const;
    /** Assigns @p list and then raises every flag through upFlag(), in every case. */
    void setList(const QList<QVariant> &list);

    /** The list as a QVariant holding a QVariantList. */
    QVariant getValue() const;
    /**
     * Refused: changes nothing and logs
     * "Invalid method void BPList::setValue(const QVariant &)".
     */
    void setValue(const QVariant &value);

protected:
    /** The stored elements, in the order of the wire. */
    QList<QVariant> list;
};

#endif // BPLIST_H
