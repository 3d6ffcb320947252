#include "grid/ugtexts.h"

#include <atomic>

namespace vyr::ug {

namespace {

std::atomic<TextTranslator> installedTranslator{nullptr};

} // namespace

void setTextTranslator(TextTranslator translator)
{
    installedTranslator.store(translator);
}

QString gridText(const char *english)
{
    const TextTranslator translator = installedTranslator.load();
    if (!translator)
        return QString::fromUtf8(english);
    const QString translated = translator(english);
    return translated.isEmpty() ? QString::fromUtf8(english) : translated;
}

} // namespace vyr::ug
