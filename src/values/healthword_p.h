#ifndef HEALTHWORD_P_H
#define HEALTHWORD_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the collection parameters and may change from one version to the next.
//

#include <QtCore/QObject>
#include <QtCore/QString>

namespace TelorHealth {

/**
 * The health word of a collection parameter: "OK" for the state 8, "Fault" for 4096 and
 * "Invalid" for every other state, the limit codes included. Translated in the context of
 * QObject, not of the class.
 */
inline QString word(unsigned int state)
{
    switch (state) {
    case 8:
        return QObject::tr("OK");
    case 4096:
        return QObject::tr("Fault");
    default:
        return QObject::tr("Invalid");
    }
}

} // namespace TelorHealth

#endif // HEALTHWORD_P_H
