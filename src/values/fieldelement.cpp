#include "fieldelement.h"

#include "bplist.h"
#include "bpmap.h"
#include "bpvariant.h"

#include <QtCore/QDebug>

FieldElement::FieldElement(const ParamInfo &description)
    : info(description)
{
    switch (description.type) {
    case 1:
    case 2:
    case 3:
    case 5:
        param.reset(new BPVariant(description.id));
        break;
    case 6:
        param.reset(new BPList(description.id));
        break;
    case 7:
        param.reset(new BPMap(description.id));
        break;
    default:
        qDebug() << "Invalid field element";
        break;
    }
}
