#pragma once

#include "model/ClipboardEntry.h"

namespace nettlecap {

/// Names content by what it is: "text:" or "image:" and 64 lower-case hex digits, the
/// SHA-256 of the bytes.
struct ClipboardContentFingerprint {
    static std::string fingerprint(std::string_view content, ClipboardContentKind kind);
};

}  // namespace nettlecap
