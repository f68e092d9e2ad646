#ifndef GROUPLOGTEXT_P_H
#define GROUPLOGTEXT_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the builders of the group log texts and may change from one version to the next.
//

#include <QtCore/QString>

#include "multitranslator.h"
#include "qxmltranslation.h"

namespace TelorGroupLog {

/** Separates the lines of a log text. */
inline QString newline()
{
    return QStringLiteral("\n");
}

/** The prefix of a detail line. */
inline QString indent()
{
    return QStringLiteral("   ");
}

/**
 * One parameter of a numbered list: its line number from 1, its identifier and its name.
 * A plain string, never translated.
 */
inline QString numberedLine(int number, unsigned int id, const QString &name)
{
    return QStringLiteral("%0 (ID=%1): \"%2\"").arg(number).arg(id).arg(name);
}

/** The text @p source of @p context in every language that ::multiTranslator knows. */
inline QXmlTranslation logText(const char *context, const char *source)
{
    return multiTranslator.translate(context, source, nullptr);
}

} // namespace TelorGroupLog

#endif // GROUPLOGTEXT_P_H
