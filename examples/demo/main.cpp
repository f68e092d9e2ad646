// A walk through libTELORParams5 for newcomers: each section shows one part of the
// road a parameter value takes, from the objects that hold it to the text on a screen.

#include "demosections.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTextStream>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);

    demoParameterValues(out);
    demoRoadOfAValue(out);
    demoDescriptions(out);
    demoInfoList(out);
    demoFields(out);
    demoArchive(out);
    demoGroups(out);
    demoEvents(out);
    demoTagsAndCore(out);

    out.flush();
    return 0;
}
