#include "model/Records.h"

#include "model/ClipboardContentFingerprint.h"
#include "model/Text.h"

namespace nettlecap {

namespace {

std::string shown(const std::optional<std::string>& text) {
    return text ? testing::PrintToString(*text) : "absent";
}

}  // namespace

void PrintTo(const Date& date, std::ostream* out) { *out << date.secondsSince2001 << " s"; }

void PrintTo(const Uuid& id, std::ostream* out) { *out << id.text(); }

void PrintTo(SensitiveContentKind kind, std::ostream* out) {
    *out << (kind == SensitiveContentKind::paymentCard ? "paymentCard" : "secret");
}

void PrintTo(const ClipboardEntry& entry, std::ostream* out) {
    *out << (entry.kind == ClipboardContentKind::text ? "text " : "image ") << entry.id.text()
         << " text=" << shown(entry.text) << " file=" << shown(entry.imageFilename)
         << " at=" << testing::PrintToString(entry.createdAt.secondsSince2001)
         << " source=" << shown(entry.sourceApplication) << ' ' << entry.fingerprint
         << (entry.isFavorite ? " favorite" : "")
         << " sensitive=" << testing::PrintToString(entry.sensitiveKind);
}

void PrintTo(const StoredEntry& entry, std::ostream* out) { PrintTo(*entry, out); }

void PrintTo(const SavedSnippet& snippet, std::ostream* out) {
    *out << snippet.id.text() << ' ' << testing::PrintToString(snippet.title) << ": "
         << testing::PrintToString(snippet.content) << " created=" << snippet.createdAt.secondsSince2001
         << " updated=" << snippet.updatedAt.secondsSince2001;
}

void PrintTo(const ClipboardStorageUsage& usage, std::ostream* out) {
    *out << usage.totalBytes << " = " << usage.databaseBytes << " + " << usage.imageBytes << " bytes, "
         << usage.itemCount << " items, " << usage.imageCount << " images";
}

void PrintTo(const ClipboardStoreMutation& mutation, std::ostream* out) {
    static constexpr const char* names[] = {"inserted ", "promoted ", "unchanged "};
    *out << names[static_cast<int>(mutation.kind)] << mutation.fingerprint;
}

Uuid uuid(std::uint64_t number) { return {.high = 0x4000U, .low = 0x9000'0000'0000'0000U | number}; }

std::string textFingerprint(std::string_view text) {
    return ClipboardContentFingerprint::fingerprint(text::normalized(text), ClipboardContentKind::text);
}

std::string imageFingerprint(std::string_view png) {
    return ClipboardContentFingerprint::fingerprint(png, ClipboardContentKind::image);
}

ClipboardEntry textEntry(std::uint64_t number, std::string text, double at) {
    std::string fingerprint = textFingerprint(text);
    return {.id = uuid(number),
            .kind = ClipboardContentKind::text,
            .text = std::move(text),
            .createdAt = {at},
            .sourceApplication = "Notas",
            .fingerprint = std::move(fingerprint)};
}

ClipboardEntry imageEntry(std::uint64_t number, std::string filename, std::string_view png, double at) {
    return {.id = uuid(number),
            .kind = ClipboardContentKind::image,
            .imageFilename = std::move(filename),
            .createdAt = {at},
            .sourceApplication = "Fotos",
            .fingerprint = imageFingerprint(png)};
}

SavedSnippet snippetRecord(std::uint64_t number, std::string title, std::string content, double at) {
    return {.id = uuid(number),
            .title = std::move(title),
            .content = std::move(content),
            .createdAt = {at},
            .updatedAt = {at}};
}

ClipboardEntry favorite(ClipboardEntry entry) {
    entry.isFavorite = true;
    return entry;
}

}  // namespace nettlecap
