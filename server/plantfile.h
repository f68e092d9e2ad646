#ifndef PLANTFILE_H
#define PLANTFILE_H

#include "plant.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

/**
 * @brief Reads a plant file: the XML document described in docs/plant-file.md.
 *
 * The reader builds the descriptions with the library's own records and attribute
 * constructors (ParamLimits::readFromSource for "lo" and "hi", ParamSetpoints for "les",
 * "lws", "uws" and "ues"), the event catalogue with EventTypeInfoStruct from each `Event`
 * element, and the group tree as ParamGroupItem nodes.
 *
 * On any error, in the XML itself or in what it says (an unknown type, a repeated
 * identifier, a driver that cannot run), load() returns false and error() holds one line
 * "FILE:LINE:COLUMN: REASON", with the position where the reader stood. Every input ends:
 * the document is read once, front to back, and nesting is bounded.
 */
class PlantFile
{
public:
    /** Reads @p path into @p plant. */
    bool load(const QString &path, Plant *plant);
    /** Reads @p xml, naming it @p fileName in error lines. */
    bool loadData(const QByteArray &xml, const QString &fileName, Plant *plant);
    /** The error line of the last failed load, empty after a good one. */
    QString error() const { return m_error; }

    /** The deepest group nesting accepted. */
    static constexpr int MaxGroupDepth = 64;
    /** The largest number of parameters, cells included, accepted. */
    static constexpr int MaxParameters = 100000;

private:
    QString m_error;
};

#endif // PLANTFILE_H
