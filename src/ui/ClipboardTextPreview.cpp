#include "ui/ClipboardTextPreview.h"

namespace nettlecap {

std::string ClipboardTextPreview::summary(const ClipboardEntry& entry, bool protectingSensitiveContent) {
    if (isMasked(entry, protectingSensitiveContent)) return entry.maskedDescription();
    if (entry.kind == ClipboardContentKind::image) return "Imagem copiada";
    std::string line = onOneLine(entry.text ? std::string_view(*entry.text) : std::string_view());
    return line.empty() ? "Texto vazio" : line;
}

}  // namespace nettlecap
