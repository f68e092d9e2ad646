// Feeds arbitrary bytes to TELORTagObject::read as a tag block, asks every getter about
// what it read, and checks the answers against the same bytes read by Qt's own QHash and
// QSet operators (which reserve nothing ahead for these containers). A difference traps.

#include "fuzztarget.h"

#include "telortagobject.h"

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QSet>

#include <cstddef>
#include <cstdint>

using fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size > (1u << 20))
        return 0;
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size));

    TELORTagObject tags(nullptr);
    const bool ok = tags.read(bytes);

    QHash<QString, QHash<QString, QString>> tagTexts;
    QHash<unsigned int, QHash<QString, QString>> paramTags;
    QHash<QString, QHash<QString, QSet<unsigned int>>> tagParams;
    QDataStream qt(bytes);
    qt.setVersion(QDataStream::Qt_5_15);
    qt >> tagTexts >> paramTags >> tagParams;
    check(ok == (!tagTexts.isEmpty() && !paramTags.isEmpty() && !tagParams.isEmpty()));

    QSet<QString> textKeys{QString(), QStringLiteral("en")};
    for (const auto &texts : qAsConst(tagTexts))
        for (auto it = texts.cbegin(); it != texts.cend(); ++it)
            textKeys.insert(it.key());
    for (const QString &textKey : qAsConst(textKeys)) {
        QHash<QString, QString> expected;
        for (auto type = tagTexts.cbegin(); type != tagTexts.cend(); ++type)
            expected.insert(type.key(), type.value().value(textKey));
        check(tags.getTagTypes(textKey) == expected);
    }
    for (auto param = paramTags.cbegin(); param != paramTags.cend(); ++param) {
        const QHash<QString, QString> own = paramTags.value(param.key());
        for (auto tag = own.cbegin(); tag != own.cend(); ++tag)
            check(tags.getParamTagValue(param.key(), tag.key()) == own.value(tag.key()));
        for (const QString &textKey : qAsConst(textKeys)) {
            QHash<QString, QString> expected;
            for (auto tag = own.cbegin(); tag != own.cend(); ++tag)
                expected.insert(tagTexts.value(tag.key()).value(textKey), tag.value());
            check(tags.getParamTags(param.key(), textKey) == expected);
        }
    }
    if (!paramTags.contains(0xFFFFFFFFu))
        check(tags.getParamTags(0xFFFFFFFFu, QString()).isEmpty());

    // A second read replaces everything the first left.
    tags.read(QByteArray());
    check(tags.getTagTypes(QString()).isEmpty());
    return 0;
}
