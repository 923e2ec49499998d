#pragma once

#include "platform/Values.h"

namespace nettlecap {

enum class ClipboardContentKind { text, image };
enum class SensitiveContentKind { paymentCard, secret };

/// One thing that was copied. Its identity is `id`; what makes it the same content as
/// another is `fingerprint`.
struct ClipboardEntry {
    Uuid id;
    ClipboardContentKind kind = ClipboardContentKind::text;
    std::optional<std::string> text;           ///< exactly as copied; absent for images
    std::optional<std::string> imageFilename;  ///< a plain name in the images folder; absent for text
    Date createdAt;                            ///< of the last capture of this content
    std::optional<std::string> sourceApplication;
    std::string fingerprint;
    bool isFavorite = false;
    std::optional<SensitiveContentKind> sensitiveKind;

    /// What is shown instead of a sensitive text: its first two characters and 6 to 12 bullets.
    std::string maskedDescription() const;
    /// What search looks in. Protected, a sensitive text is left out.
    std::string searchableText(bool protectingSensitiveContent) const;

    bool operator==(const ClipboardEntry&) const = default;
};

/// A text that the user wrote to be pasted again.
struct SavedSnippet {
    Uuid id;
    std::string title;
    std::string content;
    Date createdAt;
    Date updatedAt;

    bool operator==(const SavedSnippet&) const = default;
};

/// Disk use, in bytes, and what stands behind it.
struct ClipboardStorageUsage {
    std::int64_t totalBytes = 0;
    std::int64_t databaseBytes = 0;
    std::int64_t imageBytes = 0;
    std::int64_t itemCount = 0;
    std::int64_t imageCount = 0;

    bool operator==(const ClipboardStorageUsage&) const = default;
};

}  // namespace nettlecap
