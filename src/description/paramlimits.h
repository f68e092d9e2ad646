#ifndef PARAMLIMITS_H
#define PARAMLIMITS_H

#include <QtCore/QtGlobal>

#include "telorparams5_export.h"

class QContainerPacket;
class QXmlStreamReader;

/**
 * @brief The configured scale of a parameter: a low and a high bound that exist together
 * or not at all.
 *
 * A plain copyable record. `lo` and `hi` are stored as they come; nothing checks that
 * `lo` is below `hi`, and nothing in the library compares a value against them.
 *
 * Wire form: `enabled` as one byte, then, when that byte is not 0, `lo` and `hi` as
 * doubles. An unset record is exactly one zero byte.
 */
class TELORPARAMS5_EXPORT ParamLimits
{
public:
    /** No bounds: `enabled` 0, `lo` and `hi` 0.0. */
    ParamLimits();

    /** Writes the wire form. Any `enabled` other than 0 counts as set and writes both bounds. */
    void write(QContainerPacket &packet) const;

    /**
     * Reads the wire form. The flag byte is stored in `enabled` and judged as unsigned:
     * 0 returns true and reads nothing more, leaving `lo` and `hi` as they were; 1 reads
     * `lo` then `hi` and returns true; any other byte returns false after that one byte,
     * and the byte stays in `enabled`. So what write() produces from a flag above 1 is
     * refused here.
     */
    bool read(QContainerPacket &packet);

    /**
     * Takes the bounds from the attributes "lo" and "hi" of the reader's current element.
     * When either attribute is missing, nothing changes. Otherwise both values are
     * converted with QString::toDouble without an error check (text that is no number
     * gives 0.0) and `enabled` becomes 1. An empty attribute counts as present.
     */
    void readFromSource(const QXmlStreamReader &reader);

    /** 0: no bounds. 1: `lo` and `hi` are set. Held as the byte that travels. */
    qint8 enabled;
    /** Low bound, from the attribute "lo". */
    double lo;
    /** High bound, from the attribute "hi". */
    double hi;
};

#endif // PARAMLIMITS_H
