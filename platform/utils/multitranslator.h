#ifndef MULTITRANSLATOR_H
#define MULTITRANSLATOR_H

/**
 * @file multitranslator.h
 * @brief The translator class MultiTranslator and the global translator multiTranslator,
 * through which every log text of the library passes.
 */

#include <QtCore/QHash>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include "qxmltranslation.h"
#include "utils5_export.h"

/**
 * @brief Translates the library's fixed texts into every language the application loads.
 *
 * A MultiTranslator knows a set of languages, each with a table from (context, source
 * text) to the text in that language. The application fills it with addLanguage() and
 * insert(), or loads a language from an XML file with load().
 *
 * translate() gives a QXmlTranslation whose English form is the source text and which
 * holds, for every known language, the table's text or else the source text. With no
 * language loaded it holds the English form alone.
 *
 * The global translator is ::multiTranslator. It is filled once, before use, and then
 * only read; it has no locks.
 */
class UTILS5_EXPORT MultiTranslator
{
public:
    /** A translator that knows no language: translate() gives the English text alone. */
    MultiTranslator();
    ~MultiTranslator();

    /** Makes @p language known, with an empty table if it is new. */
    void addLanguage(const QString &language);
    /** Stores the text of @p source in @p context for @p language, making it known. */
    void insert(const QString &language, const QString &context, const QString &source,
                const QString &translation);
    /** Forgets every language. */
    void clear();
    /** The known languages, sorted. */
    QStringList languages() const;

    /**
     * Loads one language from an XML file of this form:
     * @code
     * <translations lang="ru">
     *   <context name="ParamGroupInfo">
     *     <message><source>Tags: %0</source><translation>...</translation></message>
     *   </context>
     * </translations>
     * @endcode
     * Returns false if the file cannot be opened, has no `lang`, or is not well-formed;
     * messages read before an error stay loaded.
     */
    bool load(const QString &fileName);

    /**
     * The translation of @p source in @p context. @p disambiguation, if not null, is
     * appended to the context key so that one source can have several texts.
     */
    QXmlTranslation translate(const char *context, const char *source,
                              const char *disambiguation = nullptr) const;

private:
    Q_DISABLE_COPY(MultiTranslator)
    using Key = QPair<QString, QString>;
    static QString contextKey(const char *context, const char *disambiguation);

    QHash<QString, QHash<Key, QString>> m_tables;
};

/** The global translator of the library's log texts. */
extern UTILS5_EXPORT MultiTranslator multiTranslator;

#endif // MULTITRANSLATOR_H
