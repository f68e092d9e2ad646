#ifndef PARAMBASEFIELDPTR_H
#define PARAMBASEFIELDPTR_H

#include "parambaseptr.h"

class BPField;

/**
 * @brief The handle of one cell of a BPField on the parameter in that cell.
 *
 * The handle registers on the element, not on the field, with its refresh flag down.
 * It owns neither the element nor the field; the field owns the handle and deletes it
 * when the field is resized or destroyed, so the element must outlive the field.
 *
 * A change of the element reaches the field: upFlag() raises the field's flag (and so
 * the flags of everyone who watches the field) before the handle's own. dropFlag()
 * lowers the handle's flag and the element's flag.
 */
class TELORPARAMS5_EXPORT ParamBaseFieldPtr : public ParamBasePtr
{
public:
    /** A handle of @p field on @p element; registers on the element if it is not null. */
    ParamBaseFieldPtr(BPField *field, AbstractParameterBase *element);
    /** Unregisters from the element. */
    ~ParamBaseFieldPtr() override;

    /** Raises the field's flag through its upFlag(), if there is a field, then the handle's. */
    void upFlag() override;
    /** Lowers the handle's flag and calls dropFlag() of the element. */
    void dropFlag() override;

protected:
    /** The field that owns this handle, not owned; may be null. */
    BPField *field;
};

#endif // PARAMBASEFIELDPTR_H
