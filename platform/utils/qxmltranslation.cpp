#include "qxmltranslation.h"

#include <QtCore/QDataStream>
#include <QtCore/QDebug>
#include <QtCore/QXmlStreamReader>

QXmlTranslation::QXmlTranslation() = default;

QXmlTranslation::QXmlTranslation(const QString &engName)
    : m_engName(engName)
{
}

void QXmlTranslation::setEngName(const QString &engName)
{
    m_engName = engName;
}

QString QXmlTranslation::engName() const
{
    return m_engName;
}

void QXmlTranslation::setTranslation(const QString &text, const QString &language)
{
    m_translations.insert(language, text);
}

QHash<QString, QString> QXmlTranslation::translations() const
{
    return m_translations;
}

void QXmlTranslation::readTranslationFromXMLStream(QXmlStreamReader &xml)
{
    const QString language = xml.attributes().value(QLatin1String("lang")).toString();
    // The text of the element and of every element inside it, gathered as
    // readElementText(IncludeChildElements) gathers it, but with a depth count instead of
    // recursion: Qt recurses once per nested element, and a received document can nest
    // deeply enough to exhaust the stack. The loop stops on the matching end tag, at the
    // end of the document or at an error, so it ends on every input.
    QString text;
    if (xml.isStartElement()) {
        qint64 depth = 0;
        while (!xml.atEnd()) {
            const QXmlStreamReader::TokenType token = xml.readNext();
            if (token == QXmlStreamReader::Characters || token == QXmlStreamReader::EntityReference) {
                text += xml.text();
            } else if (token == QXmlStreamReader::StartElement) {
                ++depth;
            } else if (token == QXmlStreamReader::EndElement) {
                if (depth == 0)
                    break;
                --depth;
            }
        }
    }
    if (!language.isEmpty() && !text.isEmpty())
        m_translations.insert(language, text);
}

QString QXmlTranslation::translate(const QString &language, bool fallback) const
{
    const auto it = m_translations.constFind(language);
    if (it != m_translations.constEnd())
        return it.value();
    return fallback ? m_engName : QString();
}

QXmlTranslation QXmlTranslation::arg(const QString &a, int fieldWidth, const QChar &fillChar) const
{
    QXmlTranslation result;
    result.m_engName = m_engName.arg(a, fieldWidth, fillChar);
    for (auto it = m_translations.cbegin(); it != m_translations.cend(); ++it)
        result.m_translations.insert(it.key(), it.value().arg(a, fieldWidth, fillChar));
    return result;
}

QXmlTranslation QXmlTranslation::arg(const QXmlTranslation &a, int fieldWidth, const QChar &fillChar) const
{
    QXmlTranslation result;
    result.m_engName = m_engName.arg(a.m_engName, fieldWidth, fillChar);
    for (auto it = m_translations.cbegin(); it != m_translations.cend(); ++it)
        result.m_translations.insert(it.key(), it.value().arg(a.translate(it.key(), true), fieldWidth, fillChar));
    for (auto it = a.m_translations.cbegin(); it != a.m_translations.cend(); ++it) {
        if (!result.m_translations.contains(it.key()))
            result.m_translations.insert(it.key(), m_engName.arg(it.value(), fieldWidth, fillChar));
    }
    return result;
}

QXmlTranslation &QXmlTranslation::operator+=(const QString &text)
{
    m_engName += text;
    for (auto it = m_translations.begin(); it != m_translations.end(); ++it)
        it.value() += text;
    return *this;
}

QXmlTranslation &QXmlTranslation::operator+=(const QXmlTranslation &other)
{
    for (auto it = other.m_translations.cbegin(); it != other.m_translations.cend(); ++it) {
        if (!m_translations.contains(it.key()))
            m_translations.insert(it.key(), m_engName);
    }
    for (auto it = m_translations.begin(); it != m_translations.end(); ++it)
        it.value() += other.translate(it.key(), true);
    m_engName += other.m_engName;
    return *this;
}

bool QXmlTranslation::isEmpty() const
{
    return m_engName.isEmpty() && m_translations.isEmpty();
}

bool QXmlTranslation::operator==(const QXmlTranslation &other) const
{
    return m_engName == other.m_engName && m_translations == other.m_translations;
}

QXmlTranslation operator+(const QString &prefix, const QXmlTranslation &translation)
{
    QXmlTranslation result(prefix + translation.engName());
    const QHash<QString, QString> forms = translation.translations();
    for (auto it = forms.cbegin(); it != forms.cend(); ++it)
        result.setTranslation(prefix + it.value(), it.key());
    return result;
}

QDataStream &operator<<(QDataStream &stream, const QXmlTranslation &translation)
{
    return stream << translation.m_engName << translation.m_translations;
}

QDataStream &operator>>(QDataStream &stream, QXmlTranslation &translation)
{
    return stream >> translation.m_engName >> translation.m_translations;
}

QDebug operator<<(QDebug debug, const QXmlTranslation &translation)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "QXmlTranslation(" << translation.engName();
    const QHash<QString, QString> forms = translation.translations();
    for (auto it = forms.cbegin(); it != forms.cend(); ++it)
        debug << ", " << it.key() << ": " << it.value();
    debug << ')';
    return debug;
}
