// Compiled with -fdump-lang-class so that the layout test can read every class layout.
#include "TELORParams5.h"
