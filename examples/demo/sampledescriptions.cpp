#include "sampledescriptions.h"

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

QXmlTranslation twoLanguages(const QString &english, const QString &russian)
{
    QXmlTranslation text(english);
    text.setTranslation(russian, Ru);
    return text;
}

ParamInfo namedDescription(unsigned int id, const char *code, int type, const char *english, const char *russian)
{
    ParamInfo info;
    info.id = id;
    info.code = QString::fromUtf8(code);
    info.type = type;
    info.name = twoLanguages(QString::fromUtf8(english), QString::fromUtf8(russian));
    return info;
}

ParamBitField::ParamBitAttributes describedBit(const char *english, const char *russian, int stateWhenSet,
                                               const char *setEnglish, const char *setRussian)
{
    ParamBitField::ParamBitAttributes attributes;
    attributes.name.insert(En, QString::fromUtf8(english));
    attributes.name.insert(Ru, QString::fromUtf8(russian));
    ParamBitField::ParamBitAttributes::ParamBitState set;
    set.state = stateWhenSet;
    set.text.insert(En, QString::fromUtf8(setEnglish));
    set.text.insert(Ru, QString::fromUtf8(setRussian));
    attributes.states.insert(1, set);
    return attributes;
}

ParamBitCombination wholeWordFault(const char *english, const char *russian)
{
    ParamBitCombination fault;
    fault.sign = QStringLiteral("==");
    fault.state = 4096;
    fault.shortText.insert(En, QString::fromUtf8(english));
    fault.shortText.insert(Ru, QString::fromUtf8(russian));
    return fault;
}
