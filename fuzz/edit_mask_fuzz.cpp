// The masked editor's text on any mask and keys: the shown text always has
// one character per mask character, literals stay, input positions hold a
// placeholder or what their mask character accepts, and a value read back
// into the mask gives the same value.
#include "grid/maskedtext.h"

#include <QString>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    if (size == 0)
        return 0;
    // The first byte says how long the mask is; the rest are keys, where
    // byte 0x08 is Backspace and 0x7f is Delete.
    const std::size_t maskSize = std::min<std::size_t>(data[0], size - 1);
    const QString mask = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(maskSize));
    const QString keys = QString::fromUtf8(reinterpret_cast<const char *>(data + 1 + maskSize),
                                           qsizetype(size - 1 - maskSize));
    vyr::MaskedText text(mask, keys);
    int caret = text.nextInput(0);
    for (const QChar key : keys) {
        if (key == u'\b') {
            caret = text.backspace(caret);
        } else if (key == u'\x7f') {
            caret = text.erase(caret);
        } else if (const int next = text.type(caret, key); next >= 0) {
            caret = text.nextInput(next);
        } else {
            caret = text.nextInput(caret % (int(mask.size()) + 1));
        }
        if (caret < 0 || caret > mask.size())
            std::abort();
    }
    const QString &shown = text.display();
    if (shown.size() != mask.size())
        std::abort();
    for (qsizetype i = 0; i < mask.size(); ++i) {
        const QChar m = mask[i];
        if (!vyr::isMaskInput(m)) {
            if (shown[i] != m)
                std::abort();
        } else if (shown[i] != vyr::kMaskPlaceholder && !vyr::maskAccepts(m, shown[i])) {
            std::abort();
        }
    }
    const QString value = text.value();
    if (value.size() > mask.size())
        std::abort();
    if (!value.contains(u' ') && !value.contains(vyr::kMaskPlaceholder)
        && vyr::MaskedText(mask, value).value() != value)
        std::abort();
    return 0;
}
