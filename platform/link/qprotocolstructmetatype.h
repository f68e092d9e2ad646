#ifndef QPROTOCOLSTRUCTMETATYPE_H
#define QPROTOCOLSTRUCTMETATYPE_H

// QProtocolStruct as a Qt meta-type, so that the link's signals that carry a received
// frame can be queued, spied on and stored in a QVariant. The link classes register it
// when they are constructed.

#include <QtCore/QMetaType>

#include "qprotocolstruct.h"

Q_DECLARE_METATYPE(QProtocolStruct)

#endif // QPROTOCOLSTRUCTMETATYPE_H
