#ifndef DESCRIBE_H
#define DESCRIBE_H

// Builders of parameter descriptions for the seed programs, and for the targets that read
// records into descriptions of their own: the identity of a description, an English text
// with its Russian translation, field cells, a field whose cells a function gives, a
// status word, and the body of a description message as its writer streams it.

#include "paraminfo.h"
#include "qcontainerpacket.h"
#include "qprotocolstruct.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>

namespace describe {

/** A description with its identifier, code and value type set, and nothing else. */
inline ParamInfo described(unsigned int id, const QString &code, int type)
{
    ParamInfo info;
    info.id = id;
    info.code = code;
    info.type = type;
    return info;
}

/** The text @p english with @p russian as its translation into "ru". */
inline QXmlTranslation translated(const QString &english, const QString &russian)
{
    QXmlTranslation text(english);
    text.setTranslation(russian, QStringLiteral("ru"));
    return text;
}

/** Appends to @p field the cell at @p row and @p column, described by @p info. */
inline void addCell(ParamInfo &field, int row, int column, const ParamInfo &info)
{
    ParamFieldElementInfo element;
    element.row = row;
    element.column = column;
    element.info = info;
    field.elements.append(element);
}

/**
 * A field "F<id>" of @p rows by @p columns with every cell described, row by row: @p cell
 * gives the description of the cell at a row and a column.
 */
inline ParamInfo field(unsigned int id, int rows, int columns,
                       const std::function<ParamInfo(int row, int column)> &cell)
{
    ParamInfo info = described(id, QStringLiteral("F%1").arg(id), 4);
    info.rows = rows;
    info.columns = columns;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c)
            addCell(info, r, c, cell(r, c));
    }
    return info;
}

/**
 * A status word "SW<id>" whose bits 0 to @p bits - 1 are named "Bit <n>" and have an "On"
 * text for the value 1, with the state that @p onState gives for the bit; and a "Trip"
 * combination (sign "==", state 4096) under the word @p tripWord.
 */
inline ParamInfo statusWord(unsigned int id, int bits, int (*onState)(int bit), int tripWord)
{
    ParamInfo info = described(id, QStringLiteral("SW%1").arg(id), 2);
    info.bitField.enabled = 1;
    for (int bit = 0; bit < bits; ++bit) {
        ParamBitField::ParamBitAttributes attributes;
        attributes.name.insert(QStringLiteral("en"), QStringLiteral("Bit %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState on;
        on.state = onState(bit);
        on.text.insert(QStringLiteral("en"), QStringLiteral("On"));
        attributes.states.insert(1, on);
        info.bitField.attributes.insert(bit, attributes);
    }
    ParamBitCombination trip;
    trip.sign = QStringLiteral("==");
    trip.state = 4096;
    trip.shortText.insert(QStringLiteral("en"), QStringLiteral("Trip"));
    info.bitField.combinations.insert(tripWord, trip);
    return info;
}

/** The body of @p message, streamed by its own writer, without a header. */
inline QByteArray bodyOf(const QProtocolStruct &message)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    message.writePrivate(out);
    return bytes;
}

} // namespace describe

#endif // DESCRIBE_H
