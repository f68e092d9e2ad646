#ifndef TRANSLATIONITEMNEW_H
#define TRANSLATIONITEMNEW_H

#include <QtCore/QHash>
#include <QtCore/QString>

#include "telorparams5_export.h"

/**
 * @brief A table of texts by language key, such as "en" or "ru".
 *
 * Descriptions carry their plain-text tables in this form. It is a QHash<QString,
 * QString> in every respect, streamed in Qt's form for a hash, and looked up by exact
 * language key with no fallback.
 */
class TELORPARAMS5_EXPORT TranslationItemNew : public QHash<QString, QString>
{
public:
    /** An empty table: every lookup finds nothing. */
    TranslationItemNew() = default;
    /** A table holding the one text @p text under @p language. */
    TranslationItemNew(const QString &language, const QString &text);
    /** A copy of the table; Qt shares the entries until one side changes. */
    TranslationItemNew(const TranslationItemNew &) = default;
    /** Replaces the table by a copy of the other one. */
    TranslationItemNew &operator=(const TranslationItemNew &) = default;
    virtual ~TranslationItemNew();
};

#endif // TRANSLATIONITEMNEW_H
