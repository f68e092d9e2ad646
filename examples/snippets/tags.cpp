// Tags: the server hands out one block with three tables, the texts of each tag type,
// the tags of each parameter and the parameters of each tag; the tag store reads it and
// answers in the operator's language.
//
// Built and run by the tests (snippets.tags); the reference shows the marked part.
#include <TELORParams5.h>

#include <cstdio>

int main()
{
    const QString en = QStringLiteral("en");
    const QString unit = QStringLiteral("unit");

    // The block as a server streams it from its three tables.
    const QHash<QString, QHash<QString, QString>> texts{{unit, {{en, QStringLiteral("Unit")}}}};
    const QHash<unsigned int, QHash<QString, QString>> params{{101u, {{unit, QStringLiteral("1")}}}};
    const QHash<QString, QHash<QString, QSet<unsigned int>>> tagParams{{unit, {{QStringLiteral("1"), {101u}}}}};
    QByteArray block;
    {
        QDataStream out(&block, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_5_15);
        out << texts << params << tagParams;
    }

    //! [read]
    TELORTagObject tags;
    const bool complete = tags.read(block); // true when no table is empty
    const QHash<QString, QString> types = tags.getTagTypes(en);             // {"unit": "Unit"}
    const QString value = tags.getParamTagValue(101, unit);                 // "1"
    const QString none = tags.getParamTagValue(102, unit);                  // null: no such tag
    std::printf("%s of parameter 101: %s\n", qPrintable(types.value(unit)), qPrintable(value));
    //! [read]

    return complete && types.value(unit) == QStringLiteral("Unit") && value == QStringLiteral("1") && none.isNull()
               ? 0
               : 1;
}
