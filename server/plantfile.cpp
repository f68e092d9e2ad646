#include "plantfile.h"

#include "plantduration.h"

#include <QtCore/QFile>
#include <QtCore/QSet>
#include <QtCore/QXmlStreamReader>

#include <cmath>

namespace {

/** Stops the reading with a message; caught in PlantFile::loadData. */
struct ParseError
{
    QString reason;
};

[[noreturn]] void fail(const QString &reason)
{
    throw ParseError{reason};
}

/** The type names of the `type` attribute, with the value type each one has. */
bool kindFromName(const QString &name, PlantParameter::Kind *kind, int *valueType)
{
    static const struct {
        const char *name;
        PlantParameter::Kind kind;
        int valueType;
    } kinds[] = {
        {"double", PlantParameter::Double, 1},   {"discrete", PlantParameter::Discrete, 2},
        {"status", PlantParameter::Status, 2},   {"string", PlantParameter::String, 3},
        {"field", PlantParameter::Field, 4},     {"variant", PlantParameter::Variant, 5},
        {"list", PlantParameter::List, 6},       {"map", PlantParameter::Map, 7},
    };
    for (const auto &k : kinds) {
        if (name == QLatin1String(k.name)) {
            *kind = k.kind;
            *valueType = k.valueType;
            return true;
        }
    }
    return false;
}

class Reader
{
public:
    Reader(QXmlStreamReader &xml, Plant &plant)
        : m_xml(xml)
        , m_plant(plant)
    {
    }

    void readDocument()
    {
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isStartElement()) {
                if (m_xml.name() != QLatin1String("plant"))
                    fail(QStringLiteral("the root element must be <plant>, not <%1>").arg(m_xml.name()));
                readPlant();
                break;
            }
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        if (!m_seenPlant)
            fail(QStringLiteral("no <plant> element"));
        // The rest of the document must still be well formed.
        while (!m_xml.atEnd())
            m_xml.readNext();
        if (m_xml.hasError())
            fail(m_xml.errorString());
    }

private:
    QString attribute(const char *name) const
    {
        return m_xml.attributes().value(QLatin1String(name)).toString();
    }

    bool hasAttribute(const char *name) const { return m_xml.attributes().hasAttribute(QLatin1String(name)); }

    double number(const char *name, double fallback) const
    {
        if (!hasAttribute(name))
            return fallback;
        bool ok = false;
        const double value = attribute(name).toDouble(&ok);
        if (!ok || !std::isfinite(value))
            fail(QStringLiteral("attribute \"%1\" is no number: \"%2\"").arg(QLatin1String(name), attribute(name)));
        return value;
    }

    qint64 integer(const char *name, qint64 fallback, qint64 low, qint64 high) const
    {
        if (!hasAttribute(name))
            return fallback;
        bool ok = false;
        const QString text = attribute(name);
        const qint64 value = text.startsWith(QLatin1String("0x")) ? text.mid(2).toLongLong(&ok, 16)
                                                                 : text.toLongLong(&ok, 10);
        if (!ok || value < low || value > high)
            fail(QStringLiteral("attribute \"%1\" must be a whole number from %2 to %3, not \"%4\"")
                     .arg(QLatin1String(name))
                     .arg(low)
                     .arg(high)
                     .arg(text));
        return value;
    }

    qint64 duration(const char *name, qint64 fallback) const
    {
        if (!hasAttribute(name))
            return fallback;
        const qint64 ms = parsePlantDuration(attribute(name));
        if (ms < 0)
            fail(QStringLiteral("attribute \"%1\" is no duration: \"%2\"").arg(QLatin1String(name), attribute(name)));
        return ms;
    }

    /** Reads to the end of the current element, failing on a malformed document. */
    void skipElement()
    {
        m_xml.skipCurrentElement();
        if (m_xml.hasError())
            fail(m_xml.errorString());
    }

    /**
     * Walks the children of the current element: calls @p onChild for each child start
     * tag (which must leave the reader on that child's end tag), and returns on the
     * current element's end tag.
     */
    template<typename F>
    void forEachChild(F onChild)
    {
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isEndElement())
                return;
            if (m_xml.isStartElement())
                onChild(m_xml.name().toString());
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        fail(QStringLiteral("the document ends inside an element"));
    }

    void unexpected(const QString &child, const char *parent)
    {
        fail(QStringLiteral("unexpected element <%1> in <%2>").arg(child, QLatin1String(parent)));
    }

    void readPlant()
    {
        m_seenPlant = true;
        m_plant.name = attribute("name");
        m_plant.alarmEventType = static_cast<unsigned short>(integer("alarmEventType", 1, 1, 65535));
        m_plant.bitEventType = static_cast<unsigned short>(integer("bitEventType", 2, 1, 65535));
        m_plant.rootItem.tags.insert(QStringLiteral("name"), m_plant.name);
        bool groupsSeen = false;
        forEachChild([&](const QString &name) {
            if (name == QLatin1String("events"))
                readEvents();
            else if (name == QLatin1String("tagTypes"))
                readTagTypes();
            else if (name == QLatin1String("parameters"))
                readParameters();
            else if (name == QLatin1String("groups")) {
                groupsSeen = true;
                readGroups();
            } else
                unexpected(name, "plant");
        });
        if (m_plant.parameters.isEmpty())
            fail(QStringLiteral("the plant has no parameters"));
        if (!m_plant.eventTypes.contains(m_plant.alarmEventType))
            fail(QStringLiteral("the event catalogue has no type %1 for limit alarms").arg(m_plant.alarmEventType));
        if (!m_plant.eventTypes.contains(m_plant.bitEventType))
            fail(QStringLiteral("the event catalogue has no type %1 for status bit changes").arg(m_plant.bitEventType));
        if (!groupsSeen) {
            // Without a tree every parameter stands directly under the root.
            for (const PlantParameter &p : qAsConst(m_plant.parameters))
                m_plant.rootItem.children.append(paramNode(p.info.id, p.kind == PlantParameter::Field));
        }
    }

    void readEvents()
    {
        forEachChild([&](const QString &name) {
            if (name != QLatin1String("Event"))
                unexpected(name, "events");
            EventTypeInfoStruct type(m_xml);
            if (!m_xml.isEndElement() || m_xml.name() != QLatin1String("Event")) {
                if (m_xml.hasError())
                    fail(m_xml.errorString());
                fail(QStringLiteral("event type %1 is incomplete: a translation lacks its language or text").arg(type.id));
            }
            if (type.id == 0)
                fail(QStringLiteral("an event type needs an \"id\" from 1 to 65535"));
            if (m_plant.eventTypes.contains(type.id))
                fail(QStringLiteral("event type %1 is defined twice").arg(type.id));
            m_plant.eventTypes.insert(type.id, type);
        });
    }

    void readTagTypes()
    {
        forEachChild([&](const QString &name) {
            if (name != QLatin1String("tagType"))
                unexpected(name, "tagTypes");
            const QString key = attribute("key");
            if (key.isEmpty())
                fail(QStringLiteral("a tag type needs a \"key\""));
            if (m_plant.tagTexts.contains(key))
                fail(QStringLiteral("tag type \"%1\" is defined twice").arg(key));
            QHash<QString, QString> texts;
            forEachChild([&](const QString &child) {
                if (child != QLatin1String("text"))
                    unexpected(child, "tagType");
                const QString textKey = attribute("key");
                texts.insert(textKey, readText());
            });
            m_plant.tagTexts.insert(key, texts);
        });
    }

    /** The character data of the current element, which must have no child elements. */
    QString readText()
    {
        const QString text = m_xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
        if (m_xml.hasError())
            fail(m_xml.errorString());
        return text.trimmed();
    }

    /** A text with its English form as character data and `translation` children. */
    QXmlTranslation readTranslation()
    {
        QXmlTranslation translation;
        QString english;
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isCharacters())
                english += m_xml.text();
            else if (m_xml.isEndElement())
                break;
            else if (m_xml.isStartElement()) {
                if (m_xml.name() != QLatin1String("translation"))
                    unexpected(m_xml.name().toString(), "text");
                if (attribute("lang").isEmpty())
                    fail(QStringLiteral("a <translation> needs a \"lang\""));
                translation.readTranslationFromXMLStream(m_xml);
                if (!m_xml.isEndElement() || m_xml.name() != QLatin1String("translation"))
                    fail(m_xml.hasError() ? m_xml.errorString() : QStringLiteral("a <translation> is not closed"));
            }
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        translation.setEngName(english.trimmed());
        return translation;
    }

    /** Adds a `lang`-keyed text to @p item. */
    void readKeyedText(TranslationItemNew &item)
    {
        const QString lang = attribute("lang");
        if (lang.isEmpty())
            fail(QStringLiteral("<%1> needs a \"lang\"").arg(m_xml.name()));
        item.insert(lang, readText());
    }

    void readParameters()
    {
        forEachChild([&](const QString &name) {
            if (name != QLatin1String("param"))
                unexpected(name, "parameters");
            readParameter();
        });
    }

    void checkNewId(unsigned int id, const QString &code)
    {
        if (id == 0)
            fail(QStringLiteral("a parameter needs an \"id\" from 1 to 2147483647"));
        if (m_ids.contains(id))
            fail(QStringLiteral("parameter id %1 is used twice").arg(id));
        if (code.isEmpty())
            fail(QStringLiteral("parameter %1 needs a \"code\"").arg(id));
        if (m_codes.contains(code))
            fail(QStringLiteral("parameter code \"%1\" is used twice").arg(code));
        if (m_ids.size() >= PlantFile::MaxParameters)
            fail(QStringLiteral("more than %1 parameters").arg(PlantFile::MaxParameters));
        m_ids.insert(id);
        m_codes.insert(code);
    }

    /** The attributes common to a parameter and a field cell. */
    void readDescriptionAttributes(ParamInfo &info)
    {
        info.id = static_cast<unsigned int>(integer("id", 0, 1, 2147483647));
        info.code = attribute("code");
        info.code2 = attribute("code2");
        info.code3 = attribute("code3");
        info.precision = static_cast<signed char>(integer("precision", 2, 0, 15));
        const QString format = attribute("format");
        if (!format.isEmpty()) {
            if (format.size() != 1 || !QStringLiteral("eEfgG").contains(format))
                fail(QStringLiteral("attribute \"format\" must be one of e, E, f, g, G"));
            info.format = format.at(0).toLatin1();
        }
        info.limits.readFromSource(m_xml);
        info.setpoints = ParamSetpoints(m_xml.attributes());
        info.extraText = attribute("extraText");
    }

    /** The children that a parameter and a cell share; false for any other child. */
    bool readDescriptionChild(const QString &name, ParamInfo &info)
    {
        if (name == QLatin1String("name"))
            info.name = readTranslation();
        else if (name == QLatin1String("unit"))
            info.unit = readTranslation();
        else if (name == QLatin1String("unitX"))
            info.unitX = readTranslation();
        else
            return false;
        return true;
    }

    void readParameter()
    {
        PlantParameter p;
        int valueType = 0;
        const QString typeName = attribute("type");
        if (!kindFromName(typeName, &p.kind, &valueType))
            fail(QStringLiteral("unknown parameter type \"%1\"").arg(typeName));
        readDescriptionAttributes(p.info);
        p.info.type = valueType;
        checkNewId(p.info.id, p.info.code);
        if (p.kind == PlantParameter::Status) {
            p.info.bitField.enabled = 1;
            p.info.bitField.reserved = 0;
        }
        if (p.kind == PlantParameter::Field) {
            p.info.rows = int(integer("rows", 0, 1, 64));
            p.info.columns = int(integer("columns", 0, 1, 64));
            if (p.info.rows == 0 || p.info.columns == 0)
                fail(QStringLiteral("field %1 needs \"rows\" and \"columns\" from 1 to 64").arg(p.info.id));
        }
        bool driverSeen = false;
        QSet<quint64> cellPositions;
        forEachChild([&](const QString &name) {
            if (readDescriptionChild(name, p.info))
                return;
            if (name == QLatin1String("case") && p.kind != PlantParameter::Field)
                p.info.enumeration.combinations.append(readCombination(false));
            else if (name == QLatin1String("bit") && p.kind == PlantParameter::Status)
                readBit(p.info.bitField);
            else if (name == QLatin1String("combination") && p.kind == PlantParameter::Status) {
                const ParamBitCombination c = readCombination(true);
                p.info.bitField.combinations.insert(int(c.value), c);
            } else if (name == QLatin1String("tag")) {
                const QString type = attribute("type");
                if (!m_plant.tagTexts.contains(type))
                    fail(QStringLiteral("unknown tag type \"%1\" (tag types come before the parameters)").arg(type));
                p.tags.insert(type, attribute("value"));
                skipElement();
            } else if (name == QLatin1String("driver")) {
                if (driverSeen)
                    fail(QStringLiteral("parameter %1 has two drivers").arg(p.info.id));
                driverSeen = true;
                p.driver = readDriver(p.kind);
            } else if (name == QLatin1String("cell") && p.kind == PlantParameter::Field)
                readCell(p.info, cellPositions);
            else if (name == QLatin1String("cells") && p.kind == PlantParameter::Field)
                readCells(p.info, cellPositions);
            else
                unexpected(name, "param");
        });
        p.info.enumeration.hasCombinations = !p.info.enumeration.combinations.isEmpty();
        if (!driverSeen)
            fail(QStringLiteral("parameter %1 has no <driver>").arg(p.info.id));
        if (p.kind == PlantParameter::Field && p.info.elements.isEmpty())
            fail(QStringLiteral("field %1 has no cells").arg(p.info.id));
        m_plant.parameters.append(p);
    }

    ParamBitCombination readCombination(bool wordKeyed)
    {
        ParamBitCombination c;
        c.sign = hasAttribute("sign") ? attribute("sign") : QStringLiteral("==");
        if (wordKeyed) {
            c.value = integer("word", -1, 0, 0xFFFFFFFFLL);
            if (c.value < 0)
                fail(QStringLiteral("a <combination> needs a \"word\""));
            c.state = int(integer("state", 4096, 0, 0x7FFFFFFF));
        } else {
            if (!hasAttribute("value"))
                fail(QStringLiteral("a <case> needs a \"value\""));
            c.value = integer("value", 0, -0x7FFFFFFFFFFFFFFFLL, 0x7FFFFFFFFFFFFFFFLL);
            c.state = int(integer("state", 8, 0, 0x7FFFFFFF));
        }
        forEachChild([&](const QString &name) {
            if (name == QLatin1String("short"))
                readKeyedText(c.shortText);
            else if (name == QLatin1String("full"))
                readKeyedText(c.fullText);
            else
                unexpected(name, wordKeyed ? "combination" : "case");
        });
        return c;
    }

    void readBit(ParamBitField &field)
    {
        const int number = int(integer("number", -1, 0, 31));
        if (number < 0)
            fail(QStringLiteral("a <bit> needs a \"number\" from 0 to 31"));
        if (field.attributes.contains(number))
            fail(QStringLiteral("bit %1 is described twice").arg(number));
        ParamBitField::ParamBitAttributes bit;
        forEachChild([&](const QString &name) {
            if (name == QLatin1String("name")) {
                readKeyedText(bit.name);
            } else if (name == QLatin1String("state")) {
                const int value = int(integer("value", -1, 0, 1));
                if (value < 0)
                    fail(QStringLiteral("a bit <state> needs a \"value\" of 0 or 1"));
                ParamBitField::ParamBitAttributes::ParamBitState state;
                state.state = int(integer("state", value ? 4096 : 8, 0, 0x7FFFFFFF));
                forEachChild([&](const QString &child) {
                    if (child != QLatin1String("text"))
                        unexpected(child, "state");
                    readKeyedText(state.text);
                });
                bit.states.insert(value, state);
            } else
                unexpected(name, "bit");
        });
        field.attributes.insert(number, bit);
    }

    PlantDriver readDriver(PlantParameter::Kind kind)
    {
        PlantDriver d;
        const QString kindName = attribute("kind");
        if (!PlantDriver::kindFromName(kindName, &d.kind))
            fail(QStringLiteral("unknown driver kind \"%1\"").arg(kindName));
        d.periodMs = duration("period", 60000);
        if (d.periodMs <= 0)
            fail(QStringLiteral("a driver period must be longer than 0"));
        d.phaseMs = duration("phase", 0);
        d.constant = attribute("value");
        d.mean = number("mean", 0.0);
        d.amplitude = number("amplitude", 1.0);
        d.from = number("from", 0.0);
        d.to = number("to", 1.0);
        d.start = number("start", 0.0);
        d.step = number("step", 1.0);
        d.minimum = number("min", d.start - 100.0);
        d.maximum = number("max", d.start + 100.0);
        if (d.kind == PlantDriver::Constant && !hasAttribute("value"))
            fail(QStringLiteral("a constant driver needs a \"value\""));
        if (d.kind == PlantDriver::Bits) {
            const QStringList texts = attribute("words").split(QLatin1Char(' '), Qt::SkipEmptyParts);
            for (const QString &text : texts) {
                bool ok = false;
                const qulonglong word = text.startsWith(QLatin1String("0x")) ? text.mid(2).toULongLong(&ok, 16)
                                                                            : text.toULongLong(&ok, 10);
                if (!ok || word > 0xFFFFFFFFULL)
                    fail(QStringLiteral("\"words\" holds \"%1\", which is no 32-bit word").arg(text));
                d.words.append(quint32(word));
            }
            if (d.words.isEmpty())
                fail(QStringLiteral("a bits driver needs \"words\""));
        }
        const bool numeric = kind == PlantParameter::Double || kind == PlantParameter::Discrete
            || kind == PlantParameter::Variant || kind == PlantParameter::Field;
        if ((d.kind == PlantDriver::Sine || d.kind == PlantDriver::Ramp || d.kind == PlantDriver::RandomWalk)
            && !numeric && kind != PlantParameter::List && kind != PlantParameter::Map)
            fail(QStringLiteral("a %1 driver cannot move a %2 parameter")
                     .arg(kindName, kind == PlantParameter::Status ? QStringLiteral("status") : QStringLiteral("string")));
        if (d.kind == PlantDriver::Bits && kind != PlantParameter::Status && kind != PlantParameter::Discrete)
            fail(QStringLiteral("a bits driver moves only status and discrete parameters"));
        forEachChild([&](const QString &name) {
            if (name != QLatin1String("step") || d.kind != PlantDriver::Steps)
                unexpected(name, "driver");
            const qint64 at = duration("at", 0);
            if (!d.steps.isEmpty() && at < d.steps.last().first)
                fail(QStringLiteral("steps must come in rising order of \"at\""));
            d.steps.append(qMakePair(at, attribute("value")));
            skipElement();
        });
        if (d.kind == PlantDriver::Steps && d.steps.isEmpty())
            fail(QStringLiteral("a steps driver needs <step> elements"));
        return d;
    }

    void addCell(ParamInfo &field, ParamFieldElementInfo element, QSet<quint64> &positions)
    {
        if (element.row < 0 || element.row >= field.rows || element.column < 0 || element.column >= field.columns)
            fail(QStringLiteral("cell %1,%2 lies outside the %3 x %4 field")
                     .arg(element.row)
                     .arg(element.column)
                     .arg(field.rows)
                     .arg(field.columns));
        const quint64 key = (quint64(element.row) << 32) | quint32(element.column);
        if (positions.contains(key))
            fail(QStringLiteral("cell %1,%2 is filled twice").arg(element.row).arg(element.column));
        positions.insert(key);
        checkNewId(element.info.id, element.info.code);
        element.info.type = 5;
        field.elements.append(element);
    }

    void readCell(ParamInfo &field, QSet<quint64> &positions)
    {
        ParamFieldElementInfo element;
        element.row = int(integer("row", -1, 0, 63));
        element.column = int(integer("column", -1, 0, 63));
        readDescriptionAttributes(element.info);
        forEachChild([&](const QString &name) {
            if (!readDescriptionChild(name, element.info))
                unexpected(name, "cell");
        });
        addCell(field, element, positions);
    }

    /** Every cell of the field at once, numbered from "firstId" row by row. */
    void readCells(ParamInfo &field, QSet<quint64> &positions)
    {
        ParamFieldElementInfo prototype;
        readDescriptionAttributes(prototype.info);
        const unsigned int firstId = static_cast<unsigned int>(integer("firstId", 0, 1, 2147483647 - 64 * 64));
        if (firstId == 0)
            fail(QStringLiteral("<cells> needs a \"firstId\""));
        const QString prefix = prototype.info.code.isEmpty() ? field.code + QLatin1Char('.') : prototype.info.code;
        forEachChild([&](const QString &name) {
            if (!readDescriptionChild(name, prototype.info))
                unexpected(name, "cells");
        });
        for (int r = 0; r < field.rows; ++r) {
            for (int c = 0; c < field.columns; ++c) {
                ParamFieldElementInfo element = prototype;
                element.row = r;
                element.column = c;
                element.info.id = firstId + unsigned(r * field.columns + c);
                element.info.code = prefix + QString::number(r) + QString::number(c);
                addCell(field, element, positions);
            }
        }
    }

    ParamGroupItem *paramNode(unsigned int id, bool field)
    {
        QHash<QString, QString> tags;
        tags.insert(QStringLiteral("id"), QString::number(id));
        const PlantParameter *p = m_plant.parameter(id);
        if (p)
            tags.insert(QStringLiteral("name"), p->info.code);
        return new ParamGroupItem(field ? ParamGroupItem::FieldItem : ParamGroupItem::ParamItem, false, tags);
    }

    QHash<QString, QString> attributeTags() const
    {
        QHash<QString, QString> tags;
        for (const QXmlStreamAttribute &a : m_xml.attributes())
            tags.insert(a.qualifiedName().toString(), a.value().toString());
        return tags;
    }

    void readGroups()
    {
        readGroupChildren(m_plant.rootItem, 0);
    }

    void readGroupChildren(ParamGroupItem &parent, int depth)
    {
        if (depth >= PlantFile::MaxGroupDepth)
            fail(QStringLiteral("groups nest deeper than %1 levels").arg(PlantFile::MaxGroupDepth));
        forEachChild([&](const QString &name) {
            if (name == QLatin1String("group")) {
                const QHash<QString, QString> tags = attributeTags();
                if (tags.value(QStringLiteral("name")).isEmpty())
                    fail(QStringLiteral("a <group> needs a \"name\""));
                if (tags.value(QStringLiteral("name")).contains(QLatin1Char('/')))
                    fail(QStringLiteral("a group name cannot hold \"/\""));
                auto *group = new ParamGroupItem(ParamGroupItem::GroupItem, false, tags);
                parent.children.append(group);
                readGroupChildren(*group, depth + 1);
            } else if (name == QLatin1String("param") || name == QLatin1String("field")) {
                const unsigned int id = static_cast<unsigned int>(integer("id", 0, 1, 2147483647));
                const PlantParameter *p = m_plant.parameter(id);
                if (!p)
                    fail(QStringLiteral("the group tree names parameter %1, which the plant does not have").arg(id));
                ParamGroupItem *node = paramNode(id, p->kind == PlantParameter::Field);
                const QHash<QString, QString> tags = attributeTags();
                for (auto it = tags.constBegin(); it != tags.constEnd(); ++it)
                    node->tags.insert(it.key(), it.value());
                parent.children.append(node);
                skipElement();
            } else
                unexpected(name, "group");
        });
    }

    QXmlStreamReader &m_xml;
    Plant &m_plant;
    QSet<unsigned int> m_ids;
    QSet<QString> m_codes;
    bool m_seenPlant = false;
};

} // namespace

bool PlantFile::load(const QString &path, Plant *plant)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("%1:0:0: cannot open the file: %2").arg(path, file.errorString());
        return false;
    }
    return loadData(file.readAll(), path, plant);
}

bool PlantFile::loadData(const QByteArray &xml, const QString &fileName, Plant *plant)
{
    m_error.clear();
    QXmlStreamReader reader(xml);
    Plant loaded;
    try {
        Reader(reader, loaded).readDocument();
    } catch (const ParseError &error) {
        m_error = QStringLiteral("%1:%2:%3: %4")
                      .arg(fileName)
                      .arg(reader.lineNumber())
                      .arg(reader.columnNumber())
                      .arg(error.reason);
        return false;
    }
    plant->name = loaded.name;
    plant->parameters = loaded.parameters;
    // Assignment of a group item adds to the children it has: empty the target first.
    qDeleteAll(plant->rootItem.children);
    plant->rootItem.children.clear();
    plant->rootItem = loaded.rootItem;
    plant->eventTypes = loaded.eventTypes;
    plant->tagTexts = loaded.tagTexts;
    plant->alarmEventType = loaded.alarmEventType;
    plant->bitEventType = loaded.bitEventType;
    return true;
}
