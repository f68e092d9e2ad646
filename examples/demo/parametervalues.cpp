#include "demosections.h"
void demoParameterValues(QTextStream &) {}
