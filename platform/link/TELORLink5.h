#ifndef TELORLINK5_H
#define TELORLINK5_H

// Umbrella header of libTELORLink5: framing of the message stream and the client and
// server ends of a TCP link. Link with TELORParams5::TELORLink5 (CMake) or
// `pkg-config --libs TELORLink5`.

#include "qprotocolstructmetatype.h"
#include "telorframereader.h"
#include "telorlink.h"
#include "telorlinkserver.h"

#endif // TELORLINK5_H
