#ifndef FIELDELEMENT_H
#define FIELDELEMENT_H

#include <QtCore/QSharedPointer>

#include "abstractparameterbase.h"
#include "paraminfo.h"
#include "telorparams5_export.h"

/**
 * @brief One cell of a BPFieldClient: the cell's parameter and a copy of its description.
 *
 * A plain structure. The parameter is chosen by `type` of the description: a BPVariant
 * for 1, 2, 3 and 5 (so a numeric or text cell receives a variant, whatever its type), a
 * BPList for 6 and a BPMap for 7, each built with the description's `id`. For any other
 * type (0, 4, or above 7) "Invalid field element" goes to the debug log and `param`
 * stays null, while `info` still holds the description.
 *
 * The parameter lives as long as the element, or longer if someone holds a copy of the
 * shared pointer.
 */
struct TELORPARAMS5_EXPORT FieldElement
{
    /** Copies @p description and builds the parameter its `type` calls for. */
    explicit FieldElement(const ParamInfo &description);

    /** The cell's parameter; null if the description's type is not usable in a cell. */
    QSharedPointer<AbstractParameterBase> param;
    /** A copy of the cell's description, every field of it. */
    ParamInfo info;
};

#endif // FIELDELEMENT_H
