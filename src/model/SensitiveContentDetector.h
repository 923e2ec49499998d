#pragma once

#include "model/ClipboardEntry.h"

namespace nettlecap {

/// Decides whether a text looks like a payment card or a secret. Pure functions; texts
/// that are no valid UTF-8 are read as if each bad byte were U+FFFD.
struct SensitiveContentDetector {
    static std::optional<SensitiveContentKind> classify(std::string_view text);

    /// A run of 13 to 19 digits, single spaces or hyphens between them, that passes Luhn;
    /// anywhere in the text.
    static bool containsValidPaymentCard(std::string_view text);
    /// ISO/IEC 7812-1 annex B check; what has no numeric value is skipped. All zeros fail.
    static bool passesLuhn(std::string_view digits);
    static bool resemblesSecret(std::string_view text);
    /// An address, a UUID or a relative path: never a secret, however mixed its characters.
    static bool isClearlyPublicIdentifier(std::string_view text);
};

}  // namespace nettlecap
