#ifndef COREPOINT_H
#define COREPOINT_H

#include <QtCore/QPoint>

#include "telorparams5_export.h"

/**
 * @brief A position in the core: a QPoint with the order that the core map sorts by.
 *
 * CorePoint adds no fields to QPoint. Its order runs by falling y() and, for equal y(),
 * by rising x().
 */
class TELORPARAMS5_EXPORT CorePoint : public QPoint
{
public:
    /** The point (0, 0). */
    CorePoint()
        : QPoint()
    {
    }
    /** The point (@p x, @p y). */
    CorePoint(int x, int y)
        : QPoint(x, y)
    {
    }
    virtual ~CorePoint();

    /**
     * True if this point comes before @p other: its y() is greater, or the two y() are
     * equal and its x() is less.
     */
    virtual bool operator<(const CorePoint &other) const;
};

#endif // COREPOINT_H
