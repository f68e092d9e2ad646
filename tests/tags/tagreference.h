#ifndef TAGREFERENCE_H
#define TAGREFERENCE_H

// Compares what a TELORTagObject read from a block with the tables that Qt's own
// QDataStream operators read from the same bytes.

#include "tagblock.h"

#include "telortagobject.h"

#include <gtest/gtest.h>

namespace tagtest {

/** getTagTypes() worked out from tables that Qt read. */
inline QHash<QString, QString> expectedTagTypes(const QtTables &qt, const QString &textKey)
{
    QHash<QString, QString> result;
    for (auto it = qt.tagTexts.cbegin(); it != qt.tagTexts.cend(); ++it)
        result.insert(it.key(), it.value().value(textKey));
    return result;
}

/** getParamTags() worked out from tables that Qt read. */
inline QHash<QString, QString> expectedParamTags(const QtTables &qt, unsigned int id, const QString &textKey)
{
    QHash<QString, QString> result;
    if (!qt.paramTags.contains(id))
        return result;
    const QHash<QString, QString> tags = qt.paramTags.value(id);
    for (auto it = tags.cbegin(); it != tags.cend(); ++it)
        result.insert(qt.tagTexts.value(it.key()).value(textKey), it.value());
    return result;
}

/** Reads @p bytes into a fresh store and checks every answer against Qt's reading. */
inline void expectSameAsQt(const QByteArray &bytes)
{
    const QtTables qt = readWithQt(bytes);
    TELORTagObject tags(nullptr);
    const bool ok = tags.read(bytes);
    EXPECT_EQ(ok, !qt.tagTexts.isEmpty() && !qt.paramTags.isEmpty() && !qt.tagParams.isEmpty());

    QSet<QString> textKeys{QStringLiteral("en"), QStringLiteral("none")};
    for (const auto &texts : qt.tagTexts)
        for (auto it = texts.cbegin(); it != texts.cend(); ++it)
            textKeys.insert(it.key());
    for (const QString &textKey : textKeys) {
        EXPECT_EQ(tags.getTagTypes(textKey), expectedTagTypes(qt, textKey));
        for (unsigned int id : qt.paramTags.keys())
            EXPECT_EQ(tags.getParamTags(id, textKey), expectedParamTags(qt, id, textKey));
    }
    for (auto param = qt.paramTags.cbegin(); param != qt.paramTags.cend(); ++param) {
        for (const QString &type : param.value().keys())
            EXPECT_EQ(tags.getParamTagValue(param.key(), type), qt.paramTags.value(param.key()).value(type));
    }
}

} // namespace tagtest

#endif // TAGREFERENCE_H
