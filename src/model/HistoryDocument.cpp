#include "model/HistoryDocument.h"

#include "model/JsonObjectWriter.h"

#include <simdjson.h>

#include <limits>

// The document is one compact JSON object:
//
//   {"entries":[…],"snippets":[…]}
//
//   entry:   "id" (UUID), "kind" ("text", "image"), "text"?, "imageFilename"?, "createdAt",
//            "sourceApplication"?, "fingerprint", "isFavorite" (bool),
//            "sensitiveKind"? ("paymentCard", "secret")
//   snippet: "id", "title", "content", "createdAt", "updatedAt"
//
// Dates are seconds since 2001-01-01T00:00:00Z, written as the shortest number that reads
// back the same. Keys marked ? may be missing or null. Unknown keys are ignored; of a key
// that stands twice each value must be valid, and the last one counts.

namespace nettlecap {

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

/// ICU counts in 32-bit integers, so no text may be longer than that.
constexpr std::size_t longestDocument = std::numeric_limits<std::int32_t>::max();

std::string_view name(ClipboardContentKind kind) {
    return kind == ClipboardContentKind::text ? "text" : "image";
}

std::string_view name(SensitiveContentKind kind) {
    return kind == SensitiveContentKind::paymentCard ? "paymentCard" : "secret";
}

// Each read is false when the value is not of the kind.

bool read(element value, std::string& into) {
    std::string_view text;
    if (value.get(text) != simdjson::SUCCESS) return false;
    into = text;
    return true;
}

bool read(element value, bool& into) { return value.get(into) == simdjson::SUCCESS; }

bool read(element value, Date& into) { return value.get(into.secondsSince2001) == simdjson::SUCCESS; }

bool read(element value, Uuid& into) {
    std::string_view text;
    if (value.get(text) != simdjson::SUCCESS) return false;
    const auto id = Uuid::parse(text);
    if (id) into = *id;
    return id.has_value();
}

template <class Kind>
bool readName(element value, Kind& into, Kind first, Kind second) {
    std::string_view text;
    if (value.get(text) != simdjson::SUCCESS || (text != name(first) && text != name(second))) return false;
    into = text == name(first) ? first : second;
    return true;
}

bool read(element value, ClipboardContentKind& into) {
    return readName(value, into, ClipboardContentKind::text, ClipboardContentKind::image);
}

bool read(element value, SensitiveContentKind& into) {
    return readName(value, into, SensitiveContentKind::paymentCard, SensitiveContentKind::secret);
}

template <class T>
bool read(element value, std::optional<T>& into) {
    into.reset();
    return value.is_null() || read(value, into.emplace());
}

/// Marks the required keys of one object as they are met.
class RequiredKeys {
public:
    explicit RequiredKeys(unsigned count) : missing_((1U << count) - 1) {}

    bool met(unsigned index, bool valid) {
        missing_ &= ~(1U << index);
        return valid;
    }
    bool all() const { return missing_ == 0; }

private:
    unsigned missing_;
};

bool read(element value, ClipboardEntry& entry) {
    object fields;
    if (value.get(fields) != simdjson::SUCCESS) return false;
    RequiredKeys required(5);
    const auto readField = [&](std::string_view key, element field) {
        if (key == "id") return required.met(0, read(field, entry.id));
        if (key == "kind") return required.met(1, read(field, entry.kind));
        if (key == "createdAt") return required.met(2, read(field, entry.createdAt));
        if (key == "fingerprint") return required.met(3, read(field, entry.fingerprint));
        if (key == "isFavorite") return required.met(4, read(field, entry.isFavorite));
        if (key == "text") return read(field, entry.text);
        if (key == "imageFilename") return read(field, entry.imageFilename);
        if (key == "sourceApplication") return read(field, entry.sourceApplication);
        if (key == "sensitiveKind") return read(field, entry.sensitiveKind);
        return true;
    };
    for (const auto [key, field] : fields)
        if (!readField(key, field)) return false;
    return required.all();
}

bool read(element value, SavedSnippet& snippet) {
    object fields;
    if (value.get(fields) != simdjson::SUCCESS) return false;
    RequiredKeys required(5);
    const auto readField = [&](std::string_view key, element field) {
        if (key == "id") return required.met(0, read(field, snippet.id));
        if (key == "title") return required.met(1, read(field, snippet.title));
        if (key == "content") return required.met(2, read(field, snippet.content));
        if (key == "createdAt") return required.met(3, read(field, snippet.createdAt));
        if (key == "updatedAt") return required.met(4, read(field, snippet.updatedAt));
        return true;
    };
    for (const auto [key, field] : fields)
        if (!readField(key, field)) return false;
    return required.all();
}

template <class Record>
bool read(element value, std::vector<Record>& into) {
    array records;
    if (value.get(records) != simdjson::SUCCESS) return false;
    into.clear();
    into.reserve(records.size());
    for (const element record : records)
        if (!read(record, into.emplace_back())) return false;
    return true;
}

bool read(element value, PersistedState& state) {
    object fields;
    if (value.get(fields) != simdjson::SUCCESS) return false;
    RequiredKeys required(2);
    const auto readField = [&](std::string_view key, element field) {
        if (key == "entries") return required.met(0, read(field, state.entries));
        if (key == "snippets") return required.met(1, read(field, state.snippets));
        return true;
    };
    for (const auto [key, field] : fields)
        if (!readField(key, field)) return false;
    return required.all();
}

/// What one object holds beside its strings, and then some.
constexpr std::size_t sizeOfTheRest = 320;

std::vector<std::string_view> views(const std::vector<std::string>& texts) {
    return {texts.begin(), texts.end()};
}

template <class Record>
std::vector<std::string> encodedRecords(const std::vector<Record>& records) {
    std::vector<std::string> result;
    result.reserve(records.size());
    for (const Record& record : records) result.push_back(HistoryDocument::encode(record));
    return result;
}

void appendList(std::vector<std::string_view>& pieces, const std::vector<std::string_view>& objects) {
    std::string_view separator;
    for (const std::string_view encoded : objects) {
        if (!separator.empty()) pieces.push_back(separator);
        pieces.push_back(encoded);
        separator = ",";
    }
}

}  // namespace

Result<PersistedState> HistoryDocument::decode(const Bytes& document) {
    // The failures carry nothing of what stands in the file.
    simdjson::dom::parser parser(longestDocument);
    element root;
    const std::string_view text = document.view();
    if (parser.parse(text.data(), text.size()).get(root) != simdjson::SUCCESS)
        return Failure{"o arquivo não é um documento JSON válido."};
    PersistedState state;
    if (!read(root, state)) return Failure{"o documento não tem o formato esperado."};
    return state;
}

std::string HistoryDocument::encode(const ClipboardEntry& entry) {
    JsonObjectWriter writer(sizeOfTheRest + (entry.text ? entry.text->size() : 0));
    writer.string("id", entry.id.text());
    writer.string("kind", name(entry.kind));
    writer.optionalString("text", entry.text);
    writer.optionalString("imageFilename", entry.imageFilename);
    writer.number("createdAt", entry.createdAt.secondsSince2001);
    writer.optionalString("sourceApplication", entry.sourceApplication);
    writer.string("fingerprint", entry.fingerprint);
    writer.boolean("isFavorite", entry.isFavorite);
    if (entry.sensitiveKind) writer.string("sensitiveKind", name(*entry.sensitiveKind));
    return std::move(writer).finished();
}

std::string HistoryDocument::encode(const SavedSnippet& snippet) {
    JsonObjectWriter writer(sizeOfTheRest + snippet.title.size() + snippet.content.size());
    writer.string("id", snippet.id.text());
    writer.string("title", snippet.title);
    writer.string("content", snippet.content);
    writer.number("createdAt", snippet.createdAt.secondsSince2001);
    writer.number("updatedAt", snippet.updatedAt.secondsSince2001);
    return std::move(writer).finished();
}

std::string HistoryDocument::encode(const PersistedState& state) {
    const auto entries = encodedRecords(state.entries);
    const auto snippets = encodedRecords(state.snippets);
    std::string result;
    for (const std::string_view piece : pieces(views(entries), views(snippets))) result += piece;
    return result;
}

std::vector<std::string_view> HistoryDocument::pieces(const std::vector<std::string_view>& entries,
                                                      const std::vector<std::string_view>& snippets) {
    std::vector<std::string_view> result;
    result.reserve(2 * (entries.size() + snippets.size()) + 3);
    result.push_back("{\"entries\":[");
    appendList(result, entries);
    result.push_back("],\"snippets\":[");
    appendList(result, snippets);
    result.push_back("]}");
    return result;
}

}  // namespace nettlecap
