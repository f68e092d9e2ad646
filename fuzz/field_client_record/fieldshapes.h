#ifndef FIELDSHAPES_H
#define FIELDSHAPES_H

// The field descriptions that the field record fuzz target reads its records into, shared
// with the seed program that writes matching records.

#include "describe.h"

#include "paraminfo.h"

#include <QtCore/QString>

namespace fieldfuzz {

enum Shape {
    Mixed,        // 2 by 3: a variant, a list, a map and a cell without a parameter
    Grid,         // 16 by 16 variants
    Huge,         // 65535 by 65537, capacity 0xFFFFFFFF, a variant with identifier 0 at (0,0)
    Negative,     // -1 by -1, a cell at (0,0) that lies outside
    ZeroIdentity, // 1 by 1, a list with identifier 0
    ShapeCount
};

inline ParamInfo cell(unsigned int id, int type)
{
    return describe::described(id, QStringLiteral("cell%1").arg(id), type);
}

/** The identifier of the field of every shape. */
constexpr unsigned int FieldId = 900;

inline ParamInfo description(Shape shape)
{
    ParamInfo field = describe::described(FieldId, QStringLiteral("field"), 4);
    switch (shape) {
    case Mixed:
        field.rows = 2;
        field.columns = 3;
        describe::addCell(field, 0, 0, cell(101, 1));
        describe::addCell(field, 0, 2, cell(102, 6));
        describe::addCell(field, 1, 1, cell(103, 7));
        describe::addCell(field, 1, 0, cell(104, 4));
        break;
    case Grid:
        field.rows = 16;
        field.columns = 16;
        for (int i = 0; i < 256; ++i)
            describe::addCell(field, i / 16, i % 16, cell(1000 + i, 5));
        break;
    case Huge:
        field.rows = 65535;
        field.columns = 65537;
        describe::addCell(field, 0, 0, cell(0, 5));
        describe::addCell(field, 65534, 65536, cell(5, 6));
        break;
    case Negative:
        field.rows = -1;
        field.columns = -1;
        describe::addCell(field, 0, 0, cell(7, 5));
        break;
    case ZeroIdentity:
    case ShapeCount:
        field.rows = 1;
        field.columns = 1;
        describe::addCell(field, 0, 0, cell(0, 6));
        break;
    }
    return field;
}

} // namespace fieldfuzz

#endif // FIELDSHAPES_H
