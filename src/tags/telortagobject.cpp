#include "telortagobject.h"

#include "telorstream.h"
#include "wirestream_p.h"

#include <QtCore/QByteArray>

TELORTagObject::TELORTagObject(QObject *parent)
    : QObject(parent)
{
}

TELORTagObject::~TELORTagObject() = default;

bool TELORTagObject::read(const QByteArray &data)
{
    TELORDataStream stream(data);
    stream.openToRead();

    // The tables in Qt's container forms, read element by element with Qt's own rules
    // (status reset on entry and restored on exit, a table emptied at its first bad
    // element, repeated hash keys kept twice). Each table is cleared first and a failure
    // inside it leaves it empty; the next table is read from where the stream stands. No
    // count or string length reserves more than the bytes that follow it could describe.
    TelorWire::readHash(stream, tagTexts);
    TelorWire::readHash(stream, paramTags);
    TelorWire::readHash(stream, tagParams);

    return !tagTexts.isEmpty() && !paramTags.isEmpty() && !tagParams.isEmpty();
}

QHash<QString, QString> TELORTagObject::getTagTypes(const QString &textKey) const
{
    // Every entry is visited, repeated keys included; the one visited last stays.
    QHash<QString, QString> result;
    for (auto type = tagTexts.cbegin(); type != tagTexts.cend(); ++type)
        result.insert(type.key(), type.value().value(textKey));
    return result;
}

QHash<QString, QString> TELORTagObject::getParamTags(unsigned int id, const QString &textKey) const
{
    QHash<QString, QString> result;
    const auto param = paramTags.constFind(id);
    if (param == paramTags.cend())
        return result;

    const QHash<QString, QString> &tags = param.value();
    for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
        const auto type = tagTexts.constFind(tag.key());
        const QString text = type == tagTexts.cend() ? QString() : type.value().value(textKey);
        result.insert(text, tag.value());
    }
    return result;
}

QString TELORTagObject::getParamTagValue(unsigned int id, const QString &tagType) const
{
    const auto param = paramTags.constFind(id);
    if (param == paramTags.cend())
        return QString();
    return param.value().value(tagType);
}
