// Feeds arbitrary bytes to the reader of group tree records. Records are read back to
// back, as a message with several trees would hold them, until one is refused or the
// bytes run out.
//
// Whatever a read returns, the tree it built holds only children that read completely,
// so that tree must write a record that reads back as true into the same tree. Each tree
// is then used as an application uses it: copied, assigned, asked for its parameters
// and its log texts, written as XML, and edited.

#include "multitranslator.h"
#include "paramgroupitem.h"
#include "qcontainerpacket.h"

#include <QtCore/QSet>
#include <QtCore/QXmlStreamWriter>

#include <cstdint>

namespace {

bool sameTree(const ParamGroupItem &a, const ParamGroupItem &b)
{
    if (a.type != b.type || a.flag != b.flag || a.tags != b.tags || a.children.size() != b.children.size())
        return false;
    for (int i = 0; i < a.children.size(); ++i) {
        if (!a.children.at(i) || !b.children.at(i) || !sameTree(*a.children.at(i), *b.children.at(i)))
            return false;
    }
    return true;
}

void useTree(ParamGroupItem &tree)
{
    QByteArray record;
    {
        QContainerPacket out(&record);
        tree.write(out);
    }
    ParamGroupItem back;
    QContainerPacket in(record);
    if (!back.read(in) || in.bytesLeft() != 0 || !sameTree(tree, back))
        __builtin_trap();

    ParamGroupItem copy(tree);
    ParamGroupItem accumulated(tree);
    accumulated = tree;
    if (accumulated.children.size() != 2 * tree.children.size())
        __builtin_trap();
    ParamGroupItem *clone = tree.clone(false);

    const QList<unsigned int> ids = tree.getParamList();
    for (unsigned int id : ids) {
        if (!tree.containsID(id) && id != 0)
            __builtin_trap();
    }
    (void)tree.getID();
    (void)tree.getTypeName();
    (void)tree.name();
    (void)tree.getTagsDetails(QStringLiteral("   ")).translate(QStringLiteral("ru"), false);
    (void)tree.getParamsDetails();

    QString xml;
    QXmlStreamWriter writer(&xml);
    writer.writeStartElement(QStringLiteral("Groups"));
    tree.writeToXml(writer);
    writer.writeEndElement();

    clone->refresh(tree.tags);
    // Both ways of unlinking: the children unlinked belong to the caller either way.
    const QList<ParamGroupItem *> before = clone->children;
    const bool removed = clone->removeParameters(ids);
    const QSet<ParamGroupItem *> kept(clone->children.cbegin(), clone->children.cend());
    for (ParamGroupItem *child : before) {
        if (child && !kept.contains(child))
            delete child;
    }
    bool taken = !removed;
    qDeleteAll(copy.takeParameters(ids, &taken));
    if (taken != removed)
        __builtin_trap();
    delete clone;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool translated = [] {
        multiTranslator.insert(QStringLiteral("ru"), QStringLiteral("ParamGroupInfo"), QStringLiteral("Tags: %0"),
                               QStringLiteral("Metki: %0"));
        multiTranslator.insert(QStringLiteral("ru"), QStringLiteral("ParamGroupItem"),
                               QStringLiteral("name=\"%0\"; value=\"%1\";"), QStringLiteral("%0 = %1"));
        return true;
    }();
    (void)translated;

    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QContainerPacket packet(bytes);
    bool ok = true;
    while (ok && packet.bytesLeft() > 0) {
        ParamGroupItem tree;
        ok = tree.read(packet);
        useTree(tree);
    }
    return 0;
}
