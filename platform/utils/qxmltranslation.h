#ifndef QXMLTRANSLATION_H
#define QXMLTRANSLATION_H

/**
 * @file qxmltranslation.h
 * @brief The translatable text QXmlTranslation with its stream form and operators.
 */

#include <QtCore/QChar>
#include <QtCore/QHash>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QVector>

#include "utils5_export.h"

class QDataStream;
class QDebug;
class QXmlStreamReader;

/**
 * @brief A translatable text: an English form and translations by language key.
 *
 * A value type: copyable, assignable and streamable, with no virtual operations so that
 * records such as event type descriptions can derive from it and stay plain values.
 *
 * Stream form: the English text as QString, then the translations as Qt's
 * QHash<QString, QString>. A translation table read from a stream keeps Qt's rules: a
 * key that arrives twice is kept twice, and a lookup finds the entry read last.
 *
 * In memory the translations are kept as a compact list in the order they were stored,
 * not as a hash: a text usually has one or two translations, and a hash costs several
 * hundred bytes even for one. Everything that hands out or writes the table builds the
 * very hash that storing the same translations into a QHash would have built, so its
 * order, and therefore the stream form, is exactly Qt's. Language keys read from a
 * stream share their characters with the keys read just before them.
 */
class UTILS5_EXPORT QXmlTranslation
{
public:
    /** An empty text: no English form and no translations. */
    QXmlTranslation();
    /** A text with the English form @p engName and no translations. */
    explicit QXmlTranslation(const QString &engName);

    /** Sets the English form. */
    void setEngName(const QString &engName);
    /** The English form. */
    QString engName() const;

    /** Adds the text of one language: the text first, then the language key, such as "ru". */
    void setTranslation(const QString &text, const QString &language);
    /** The translations by language key. */
    QHash<QString, QString> translations() const;

    /**
     * Reads one translation from XML. The reader stands on a `translation` start tag; its
     * `lang` attribute names the language and its character data is the text. Returns
     * with the reader on the matching end tag, or at the end of the document or at an
     * error if the element never closes. A translation without a language key or without
     * text is not stored.
     */
    void readTranslationFromXMLStream(QXmlStreamReader &xml);

    /**
     * The text in @p language. If there is no translation for it, the English form when
     * @p fallback is true and an empty string when it is false.
     */
    QString translate(const QString &language, bool fallback = true) const;

    /**
     * A copy in which the lowest-numbered place marker of every language form is
     * replaced by @p a, with the semantics of QString::arg.
     */
    QXmlTranslation arg(const QString &a, int fieldWidth = 0, const QChar &fillChar = QLatin1Char(' ')) const;
    /**
     * A copy in which the lowest-numbered place marker of every language form is
     * replaced by the form of @p a in the same language. A language that @p a does not
     * have gets its English form; a language that only @p a has starts from this text's
     * English form.
     */
    QXmlTranslation arg(const QXmlTranslation &a, int fieldWidth = 0, const QChar &fillChar = QLatin1Char(' ')) const;

    /** Appends @p text to every language form. */
    QXmlTranslation &operator+=(const QString &text);
    /**
     * Appends @p other to every language form: its English form to the English form, and
     * to each translation the form of @p other in that language, or its English form.
     * A language that only @p other has starts from this text's English form.
     */
    QXmlTranslation &operator+=(const QXmlTranslation &other);

    /** True for a text with no English form and no translations. */
    bool isEmpty() const;

    /** True when the English forms are equal and both hold the same translations. */
    bool operator==(const QXmlTranslation &other) const;
    /** The negation of operator==(). */
    bool operator!=(const QXmlTranslation &other) const { return !(*this == other); }

private:
    friend UTILS5_EXPORT QDataStream &operator<<(QDataStream &, const QXmlTranslation &);
    friend UTILS5_EXPORT QDataStream &operator>>(QDataStream &, QXmlTranslation &);

    /** One translation: the language key, then the text. */
    using Form = QPair<QString, QString>;

    QHash<QString, QString> table() const;
    void store(const QString &language, const QString &text);
    const QString *find(const QString &language) const;

    QString m_engName;
    /**
     * The translations in the order they were stored. A key stored again replaces the
     * text of its last entry, as QHash::insert() replaces the entry a lookup finds; a
     * stream may bring a key twice, and then both entries stay, as in Qt's hash.
     */
    QVector<Form> m_forms;
};

/** A copy of @p translation with @p prefix put in front of every language form. */
UTILS5_EXPORT QXmlTranslation operator+(const QString &prefix, const QXmlTranslation &translation);

/** Writes the stream form: English text, then the translation table. */
UTILS5_EXPORT QDataStream &operator<<(QDataStream &stream, const QXmlTranslation &translation);
/**
 * Reads the stream form. On a stream that runs out, the fields read so far stay and the
 * translation table is left empty, as Qt's container operators do.
 */
UTILS5_EXPORT QDataStream &operator>>(QDataStream &stream, QXmlTranslation &translation);
/** Debug output: the English form and the translations. */
UTILS5_EXPORT QDebug operator<<(QDebug debug, const QXmlTranslation &translation);

#endif // QXMLTRANSLATION_H
