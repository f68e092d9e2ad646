#ifndef SAMPLEDESCRIPTIONS_H
#define SAMPLEDESCRIPTIONS_H

#include "paraminfo.h"

#include <QtCore/QString>

// Building blocks of the sample descriptions that the demo's sections send and show: the
// two languages the plant speaks, a text in both, the head of a description, a described
// bit of a status word and a whole-word fault combination. Texts are UTF-8.

extern const QString En;
extern const QString Ru;

/** @p english with its Russian translation. */
QXmlTranslation twoLanguages(const QString &english, const QString &russian);

/** A description with only its number, code, type and name in two languages filled in. */
ParamInfo namedDescription(unsigned int id, const char *code, int type, const char *english, const char *russian);

/** A bit named in two languages, whose set state (1) has @p stateWhenSet and a text in two languages. */
ParamBitField::ParamBitAttributes describedBit(const char *english, const char *russian, int stateWhenSet,
                                               const char *setEnglish, const char *setRussian);

/** A combination that takes the whole word as a fault (sign "==", state 4096), named in two languages. */
ParamBitCombination wholeWordFault(const char *english, const char *russian);

#endif // SAMPLEDESCRIPTIONS_H
