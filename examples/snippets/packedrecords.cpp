// Packed records and the core map: a fixed binary record turned into bytes and back, and
// the map between core positions and entry numbers read from the core file.
//
// Built and run by the tests (snippets.packedrecords), which put a core file of nine
// positions at "/../config/paramserver/core.xml" below the folder of this program.
#include <TELORParams5.h>

#include <QtCore/QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv); // the core map finds its file from the program's folder

    //! [record]
    ValidityDouble reading;
    reading.value = 1.5;
    reading.validity = 1;
    QByteArray side; // receives the marker of the side stream
    const QByteArray bytes = reading.toByteArray(&side);
    ValidityDouble back;
    back.fromByteArray(bytes);
    //! [record]

    //! [coremap]
    coreMap.init(); // once, after QCoreApplication exists
    if (coreMap.isValid()) {
        const CorePoint position = coreMap.idCoord().value(4);  // entry 4
        const int entry = coreMap.coordId().value(position, -1); // and back: 4
        std::printf("entry 4 at (%d, %d), %d entries\n", position.x(), position.y(), int(coreMap.idCoord().size()));
        if (entry != 4)
            return 1;
    }
    //! [coremap]

    return bytes.size() == reading.size() && side.size() == 4 && back.value == 1.5 && back.validity == 1 && coreMap.isValid()
                   && coreMap.idCoord().size() == 9
               ? 0
               : 1;
}
