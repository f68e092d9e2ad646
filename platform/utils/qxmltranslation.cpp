#include "qxmltranslation.h"

#include "recentrecords_p.h"

#include <QtCore/QDataStream>
#include <QtCore/QDebug>
#include <QtCore/QXmlStreamReader>

namespace {

/**
 * Gives @p key the characters of an equal key read shortly before on this thread, so that
 * the many tables of a description list hold one copy of "en" and "ru" between them. A
 * handful of recent keys is kept; a text has few languages.
 */
void shareLanguageKey(QString &key)
{
    constexpr int Kept = 4;
    thread_local QString recent[Kept];
    thread_local int next = 0;
    for (const QString &known : recent) {
        if (known == key) {
            key = known;
            return;
        }
    }
    recent[next] = key;
    next = (next + 1) % Kept;
}

} // namespace

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
    store(language, text);
}

QHash<QString, QString> QXmlTranslation::translations() const
{
    return table();
}

QHash<QString, QString> QXmlTranslation::table() const
{
    // Replaying the stored entries in order builds the hash that storing them into a
    // QHash built: new keys go to the end of their bucket, and a repeated key read from
    // a stream goes in front of its earlier entry, exactly as QMultiHash::insert() puts it.
    QMultiHash<QString, QString> hash;
    for (const Form &form : m_forms)
        hash.insert(form.first, form.second);
    return std::move(hash);
}

void QXmlTranslation::store(const QString &language, const QString &text)
{
    for (int i = m_forms.size() - 1; i >= 0; --i) {
        if (m_forms.at(i).first == language) {
            m_forms[i].second = text;
            return;
        }
    }
    m_forms.append(Form(language, text));
}

const QString *QXmlTranslation::find(const QString &language) const
{
    // The last entry of a key is the one a hash lookup finds.
    for (int i = m_forms.size() - 1; i >= 0; --i) {
        if (m_forms.at(i).first == language)
            return &m_forms.at(i).second;
    }
    return nullptr;
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
        store(language, text);
}

QString QXmlTranslation::translate(const QString &language, bool fallback) const
{
    if (const QString *text = find(language))
        return *text;
    return fallback ? m_engName : QString();
}

QXmlTranslation QXmlTranslation::arg(const QString &a, int fieldWidth, const QChar &fillChar) const
{
    QXmlTranslation result;
    result.m_engName = m_engName.arg(a, fieldWidth, fillChar);
    const QHash<QString, QString> forms = table();
    for (auto it = forms.cbegin(); it != forms.cend(); ++it)
        result.store(it.key(), it.value().arg(a, fieldWidth, fillChar));
    return result;
}

QXmlTranslation QXmlTranslation::arg(const QXmlTranslation &a, int fieldWidth, const QChar &fillChar) const
{
    QXmlTranslation result;
    result.m_engName = m_engName.arg(a.m_engName, fieldWidth, fillChar);
    const QHash<QString, QString> forms = table();
    for (auto it = forms.cbegin(); it != forms.cend(); ++it)
        result.store(it.key(), it.value().arg(a.translate(it.key(), true), fieldWidth, fillChar));
    const QHash<QString, QString> other = a.table();
    for (auto it = other.cbegin(); it != other.cend(); ++it) {
        if (!result.find(it.key()))
            result.store(it.key(), m_engName.arg(it.value(), fieldWidth, fillChar));
    }
    return result;
}

QXmlTranslation &QXmlTranslation::operator+=(const QString &text)
{
    m_engName += text;
    for (Form &form : m_forms)
        form.second += text;
    return *this;
}

QXmlTranslation &QXmlTranslation::operator+=(const QXmlTranslation &other)
{
    const QHash<QString, QString> others = other.table();
    for (auto it = others.cbegin(); it != others.cend(); ++it) {
        if (!find(it.key()))
            store(it.key(), m_engName);
    }
    // Every entry, a key read twice included, gets the other text in its language.
    for (Form &form : m_forms)
        form.second += other.translate(form.first, true);
    m_engName += other.m_engName;
    return *this;
}

bool QXmlTranslation::isEmpty() const
{
    return m_engName.isEmpty() && m_forms.isEmpty();
}

bool QXmlTranslation::operator==(const QXmlTranslation &other) const
{
    if (m_engName != other.m_engName || m_forms.size() != other.m_forms.size())
        return false;
    return m_forms == other.m_forms || table() == other.table();
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
    stream << translation.m_engName;
    // With at most one entry the table's form needs no hash to know its order.
    if (translation.m_forms.size() <= 1) {
        stream << quint32(translation.m_forms.size());
        for (const QXmlTranslation::Form &form : translation.m_forms)
            stream << form.first << form.second;
        return stream;
    }
    return stream << translation.table();
}

namespace {

/**
 * Qt's reader of a QHash<QString, QString>, entry for entry, into the compact list: the
 * same status handling (a failure before the table is set aside while it is read and
 * restored afterwards), and the same entries in the same order.
 */
void readForms(QDataStream &stream, QVector<QPair<QString, QString>> &forms)
{
    QtPrivate::StreamStateSaver stateSaver(&stream);
    forms.clear();
    quint32 count = 0;
    stream >> count;
    // A text has a few translations; room for more is made only as entries arrive.
    constexpr quint32 Plausible = 16;
    forms.reserve(int(qMin(count, Plausible)));
    for (quint32 i = 0; i < count; ++i) {
        QString language;
        QString text;
        stream >> language >> text;
        if (stream.status() != QDataStream::Ok) {
            forms.clear();
            break;
        }
        shareLanguageKey(language);
        RecentRecords::fit(text);
        forms.append(qMakePair(language, text));
    }
    if (forms.capacity() != forms.size())
        forms.squeeze();
}

} // namespace

QDataStream &operator>>(QDataStream &stream, QXmlTranslation &translation)
{
    // Units and state texts arrive in many descriptions with the same bytes: such a text
    // shares its strings and its list with the one read shortly before.
    const qint64 begin = RecentRecords::start(stream);
    stream >> translation.m_engName;
    RecentRecords::fit(translation.m_engName);
    readForms(stream, translation.m_forms);
    if (begin >= 0 && stream.status() == QDataStream::Ok) {
        QXmlTranslation plain;
        plain.m_engName.swap(translation.m_engName);
        plain.m_forms.swap(translation.m_forms);
        RecentRecords::table<QXmlTranslation>().share(stream, begin, plain);
        translation.m_engName.swap(plain.m_engName);
        translation.m_forms.swap(plain.m_forms);
    }
    return stream;
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
