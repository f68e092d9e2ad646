#ifndef BPMAP_H
#define BPMAP_H

#include <QtCore/QMap>
#include <QtCore/QVariant>

#include "abstractparameterbase.h"

/**
 * @brief A parameter whose value is a map from a double key to a variant. Value type 7.
 *
 * A map has no limits and no numeric value. Its text form is the health of the
 * parameter, not its content: stringValue() gives "OK" for the state 8, "Fault" for 4096
 * and "Invalid" for every other state, whatever the arguments. The content is to be had
 * from getMap() or getValue(); variantValue() is the base's invalid variant.
 *
 * setMap() assigns the map and raises every flag, without comparing. The state is left
 * alone; the owner assigns it with setState(). setValue() does nothing at all, silently.
 *
 * getValue() gives the map keyed by text: each key as QString::number(key, 'g', 6), so
 * that keys equal in their first six significant digits share one entry (the higher
 * key's value wins), and the result is sorted as text, not by number.
 *
 * Payload: the map in Qt's stream form, a 32-bit count and then each key as a double
 * followed by its value as a QVariant, from the highest key to the lowest. Reading
 * replaces the map (a key repeated on the wire is kept twice, as Qt keeps it) and always
 * returns true; if the data fails in the middle the map ends empty. A received nested
 * container larger than the remaining bytes could describe is not allocated for. A
 * received time in a zone that this side doesn't know, which Qt could not write again,
 * is kept as a null QDateTime.
 */
class TELORPARAMS5_EXPORT BPMap : public AbstractParameterBase
{
public:
    /** An empty map with identifier 0, state 2. */
    BPMap();
    /** An empty map with identifier @p idParameter, state 2. */
    explicit BPMap(unsigned int idParameter);
    ~BPMap() override;

    /** "OK" for the state 8, "Fault" for 4096, "Invalid" otherwise; the arguments are ignored. */
    QString stringValue(int precision = 6, char format = 'g') const override;
    /** Always 0.0. */
    double floatValue() const override;
    using AbstractParameterBase::floatValue;
    /** 7. */
    int valueType() const override;
    /** Writes the map in Qt's stream form, highest key first; @p full is ignored. */
    void writePrivate(QContainerPacket &packet, bool full) const override;
    /**
     * Reads a map in Qt's stream form, replacing the old one. Always true; a map that
     * fails to read leaves the map empty.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /** The map itself, without a copy. */
    const QMap<double, QVariant> &getMap() const;
    /** Assigns @p map and then raises every flag through upFlag(), in every case. */
    void setMap(const QMap<double, QVariant> &map);

    /**
     * A QVariantMap built from the keys in rising order, each under the text
     * QString::number(key, 'g', 6); a later key with the same text replaces the value.
     */
    QVariant getValue() const;
    /** Does nothing. */
    void setValue(const QVariant &value);

protected:
    /** The stored values by numeric key, in rising order of key. */
    QMap<double, QVariant> map;
};

#endif // BPMAP_H
