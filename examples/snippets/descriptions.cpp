// Descriptions and how values turn into text: a ParamInfo travels as a record, and the
// application renders a discrete value through its enumeration and a status word through
// its bit field, in the operator's language.
//
// Built and run by the tests (snippets.descriptions); the reference shows the marked part.
#include <TELORParams5.h>

#include <cstdio>

int main()
{
    const QString en = QStringLiteral("en");

    // What the server knows about a pump: its mode is a discrete value with texts, its
    // status word has a described bit.
    ParamInfo sent;
    sent.id = 102;
    sent.code = QStringLiteral("PUMP1.MODE");
    sent.type = 2; // discrete
    sent.name = QXmlTranslation(QStringLiteral("Feed pump mode"));
    ParamBitCombination running;
    running.sign = QStringLiteral("==");
    running.value = 1;
    running.shortText.insert(en, QStringLiteral("Running"));
    sent.enumeration.combinations << running;
    sent.enumeration.hasCombinations = true;
    sent.bitField.enabled = 1;
    ParamBitField::ParamBitAttributes overload;
    overload.name.insert(en, QStringLiteral("Overload"));
    ParamBitField::ParamBitAttributes::ParamBitState set;
    set.state = 4096;
    set.text.insert(en, QStringLiteral("Overloaded"));
    overload.states.insert(1, set);
    sent.bitField.attributes.insert(1, overload);
    QByteArray wire;
    {
        QContainerPacket out(&wire);
        sent.write(out);
    }

    //! [render]
    ParamInfo info; // one fresh record for each description received
    QContainerPacket in(wire);
    if (!info.read(in))
        return 1;
    const QString mode = info.enumeration.shortValue(1, en);      // "Running"
    const QString unknown = info.enumeration.shortValue(7, en);   // no rule matches
    bool wholeWord = false;
    const QHash<int, ParamBitInfo> bits = info.bitField.fullWord(0x2, en, 8, true, &wholeWord);
    const ParamBitInfo bit1 = bits.value(1);                      // "Overload": "Overloaded"
    std::printf("%s: %s; bit 1 %s: %s (state %d)\n", qPrintable(info.getName(en)), qPrintable(mode),
                qPrintable(bit1.name), qPrintable(bit1.text), bit1.state);
    //! [render]

    return mode == QStringLiteral("Running") && unknown != mode && !wholeWord && bits.contains(1)
                   && bit1.name == QStringLiteral("Overload") && bit1.text == QStringLiteral("Overloaded")
                   && bit1.state == 4096
               ? 0
               : 1;
}
