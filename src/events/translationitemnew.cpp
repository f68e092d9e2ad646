#include "translationitemnew.h"

TranslationItemNew::TranslationItemNew(const QString &language, const QString &text)
{
    insert(language, text);
}

TranslationItemNew::~TranslationItemNew() = default;
