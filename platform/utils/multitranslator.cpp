#include "multitranslator.h"

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

#include <algorithm>

MultiTranslator multiTranslator;

MultiTranslator::MultiTranslator() = default;
MultiTranslator::~MultiTranslator() = default;

void MultiTranslator::addLanguage(const QString &language)
{
    if (!m_tables.contains(language))
        m_tables.insert(language, QHash<Key, QString>());
}

void MultiTranslator::insert(const QString &language, const QString &context, const QString &source,
                             const QString &translation)
{
    m_tables[language].insert(Key(context, source), translation);
}

void MultiTranslator::clear()
{
    m_tables.clear();
}

QStringList MultiTranslator::languages() const
{
    QStringList result = m_tables.keys();
    std::sort(result.begin(), result.end());
    return result;
}

bool MultiTranslator::load(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QXmlStreamReader xml(&file);
    QString language;
    QString context;
    QString source;
    QString text;
    bool haveLanguage = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const QStringRef name = xml.name();
            if (name == QLatin1String("translations")) {
                language = xml.attributes().value(QLatin1String("lang")).toString();
                haveLanguage = !language.isEmpty();
                if (haveLanguage)
                    addLanguage(language);
            } else if (name == QLatin1String("context")) {
                context = xml.attributes().value(QLatin1String("name")).toString();
            } else if (name == QLatin1String("message")) {
                source.clear();
                text.clear();
            } else if (name == QLatin1String("source")) {
                source = xml.readElementText();
            } else if (name == QLatin1String("translation")) {
                text = xml.readElementText();
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("message")) {
            if (haveLanguage && !source.isEmpty())
                insert(language, context, source, text);
        }
    }
    return haveLanguage && !xml.hasError();
}

QString MultiTranslator::contextKey(const char *context, const char *disambiguation)
{
    QString key = QString::fromUtf8(context);
    if (disambiguation) {
        key += QLatin1Char('|');
        key += QString::fromUtf8(disambiguation);
    }
    return key;
}

QXmlTranslation MultiTranslator::translate(const char *context, const char *source,
                                           const char *disambiguation) const
{
    const QString sourceText = QString::fromUtf8(source);
    QXmlTranslation result(sourceText);
    const Key key(contextKey(context, disambiguation), sourceText);
    for (auto it = m_tables.cbegin(); it != m_tables.cend(); ++it)
        result.setTranslation(it.value().value(key, sourceText), it.key());
    return result;
}
