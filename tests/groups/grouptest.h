#ifndef GROUPTEST_H
#define GROUPTEST_H

// Shared by the group tests: nodes built by hand, and node records built with plain
// QDataStream writes, independently of the library's writer.

#include "paramgroupitem.h"
#include "qcontainerpacket.h"
#include "qprotocolstruct.h"
#include "telortest.h"

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

#include <functional>
#include <memory>

namespace grouptest {

using Tags = QHash<QString, QString>;

inline QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/** A ParamItem node with the "id" tag @p id. */
inline ParamGroupItem *param(const QString &id)
{
    return new ParamGroupItem(ParamGroupItem::ParamItem, false, Tags{{QStringLiteral("id"), id}});
}

inline ParamGroupItem *param(unsigned int id)
{
    return param(QString::number(id));
}

/** A GroupItem node with the "name" tag @p name. */
inline ParamGroupItem *group(const QString &name)
{
    return new ParamGroupItem(ParamGroupItem::GroupItem, false, Tags{{QStringLiteral("name"), name}});
}

/** The library's record of @p item. */
inline QByteArray recordOf(const ParamGroupItem &item)
{
    QByteArray bytes;
    QContainerPacket out(&bytes);
    item.write(out);
    return bytes;
}

/** Reads @p bytes into @p item; the read's result. */
inline bool readInto(ParamGroupItem &item, const QByteArray &bytes, unsigned int *position = nullptr)
{
    QContainerPacket in(bytes);
    const bool ok = item.read(in);
    if (position)
        *position = in.position();
    return ok;
}

/**
 * One node record written field by field: type, flag, tags, the leading count, whatever
 * @p children writes, and the trailing count.
 */
inline void plainNode(QDataStream &s, qint32 type, bool flag, const Tags &tags, qint32 leading,
                      const std::function<void(QDataStream &)> &children, qint32 trailing)
{
    s << type << flag;
    telortest::plainHash(s, tags);
    s << leading;
    if (children)
        children(s);
    s << trailing;
}

/** A childless node record with matching counts. */
inline void plainLeaf(QDataStream &s, qint32 type, const Tags &tags, bool flag = false)
{
    plainNode(s, type, flag, tags, 0, nullptr, 0);
}

/** Restores ::multiTranslator to no languages when it goes, so that a failing test leaves it clean. */
struct TranslatorGuard {
    TranslatorGuard() = default;
    ~TranslatorGuard();
    TranslatorGuard(const TranslatorGuard &) = delete;
    TranslatorGuard &operator=(const TranslatorGuard &) = delete;
};

} // namespace grouptest

#include "multitranslator.h"

inline grouptest::TranslatorGuard::~TranslatorGuard()
{
    multiTranslator.clear();
}

#endif // GROUPTEST_H
