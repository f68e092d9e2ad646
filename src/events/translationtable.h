#ifndef TRANSLATIONTABLE_H
#define TRANSLATIONTABLE_H

#include <QtCore/QHash>

#include "telorparams5_export.h"
#include "translationitemnew.h"

class QDataStream;

/**
 * @file translationtable.h
 * @brief The stream form of a table of texts by number, QHash<int, TranslationItemNew>.
 *
 * The table has Qt's form for an associative container on two levels:
 *
 * | Order | Item              | Encoding                                                 |
 * |-------|-------------------|----------------------------------------------------------|
 * | 1     | number of entries | 32 bits                                                  |
 * | 2     | each entry        | its key in 32 bits, then the number of pairs in 32 bits, |
 * |       |                   | then each pair as two QStrings, language key first       |
 *
 * Both levels are written walking their hash from the last entry to the first.
 *
 * The two operations are free functions rather than stream operators: Qt's own template
 * operators would already accept this type through its QHash<QString, QString> base, and
 * a named reader makes plain at the call site which rules apply.
 */

/** Writes @p table to @p stream in the two-level form. Returns @p stream. */
TELORPARAMS5_EXPORT QDataStream &writeTranslationTable(QDataStream &stream,
                                                       const QHash<int, TranslationItemNew> &table);

/**
 * Reads the two-level form from @p stream into @p table and returns @p stream.
 *
 * The table is emptied first. On neither level does a repeated key replace an earlier
 * one: both entries are kept, and a lookup finds the one read last. When the stream goes
 * bad, the whole table is left empty and the stream keeps its status. The stream status
 * is handled as Qt's container operators handle it. Nothing is reserved ahead of the
 * data, so a hostile count costs no more memory than the bytes that follow it.
 */
TELORPARAMS5_EXPORT QDataStream &readTranslationTable(QDataStream &stream, QHash<int, TranslationItemNew> &table);

#endif // TRANSLATIONTABLE_H
