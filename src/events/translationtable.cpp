#include "translationtable.h"

#include "hashwalk_p.h"
#include "wirestream_p.h"

#include <QtCore/QDataStream>

QDataStream &writeTranslationTable(QDataStream &stream, const QHash<int, TranslationItemNew> &table)
{
    stream << quint32(table.size());
    TelorEvents::walkFromLast(table, [&stream](int key, const TranslationItemNew &item) {
        stream << qint32(key);
        stream << quint32(item.size());
        TelorEvents::walkFromLast<QString, QString>(item, [&stream](const QString &language, const QString &text) {
            stream << language << text;
        });
    });
    return stream;
}

QDataStream &readTranslationTable(QDataStream &stream, QHash<int, TranslationItemNew> &table)
{
    // Qt's reader for an associative container on the outer level; each entry's pairs go
    // through Qt's reader for the QHash<QString, QString> that an item is. A bad stream
    // inside an entry clears that entry and then, seen by the outer level, the table.
    return TelorWire::readHash(stream, table);
}
