#include "app/AppPreferences.h"

#include <cmath>
#include <limits>
#include <simdjson.h>
#include <utility>

// The record is one compact JSON object under the key "Nettlecap.preferences.v1"; its keys
// are the names of the fields:
//
//   {"previousShortcut":{"keyCode":18,"modifiers":1048576},…,"autoPaste":false,…,
//    "maxHistoryItems":500}
//
// A key that is missing or null has its default. A value of the wrong kind, a shortcut
// without both of its numbers and a key that stands twice spoil the whole record: then all
// is default. Unknown keys are ignored. 3.0 is an integer as much as 3 is.

namespace nettlecap {
namespace {

using simdjson::dom::element;
using simdjson::dom::object;

constexpr std::string_view defaultsKey = "Nettlecap.preferences.v1";

/// Visits the fields with their keys, as they are written, for as long as `visit` is true.
template <class Preferences, class Visit>
bool eachField(Preferences& preferences, Visit visit) {
    return visit("previousShortcut", preferences.previousShortcut) &&
           visit("nextShortcut", preferences.nextShortcut) &&
           visit("openSearchShortcut", preferences.openSearchShortcut) &&
           visit("toggleFavoriteShortcut", preferences.toggleFavoriteShortcut) &&
           visit("autoPaste", preferences.autoPaste) &&
           visit("pasteHistoryOnDoubleClick", preferences.pasteHistoryOnDoubleClick) &&
           visit("captureImages", preferences.captureImages) &&
           visit("protectSensitiveContent", preferences.protectSensitiveContent) &&
           visit("launchAtLogin", preferences.launchAtLogin) &&
           visit("maxHistoryItems", preferences.maxHistoryItems);
}

// Each read is false when the value is not of the kind.

bool read(element value, bool& into) { return value.get(into) == simdjson::SUCCESS; }

template <class Integer, class Whole>
bool takeWhole(Whole whole, Integer& into) {
    if (!std::in_range<Integer>(whole)) return false;
    into = static_cast<Integer>(whole);
    return true;
}

template <class Integer>
bool readInteger(element value, Integer& into) {
    if (std::int64_t whole = 0; value.get(whole) == simdjson::SUCCESS) return takeWhole(whole, into);
    if (std::uint64_t whole = 0; value.get(whole) == simdjson::SUCCESS) return takeWhole(whole, into);
    double number = 0;
    if (value.get(number) != simdjson::SUCCESS || std::trunc(number) != number) return false;
    // Both limits are powers of two, so that no rounding moves them.
    const auto lowest = static_cast<double>(std::numeric_limits<Integer>::min());
    const double end = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    if (number < lowest || number >= end) return false;
    into = static_cast<Integer>(number);
    return true;
}

bool read(element value, std::uint32_t& into) { return readInteger(value, into); }
bool read(element value, std::uint64_t& into) { return readInteger(value, into); }
bool read(element value, std::int64_t& into) { return readInteger(value, into); }
bool read(element value, ShortcutDefinition& into);

/// Missing and null are absent. False: the value is not of the kind, or one of two.
template <class Value>
bool readField(object fields, std::string_view key, std::optional<Value>& into) {
    bool isMet = false;
    for (const auto [name, value] : fields) {
        if (name != key) continue;
        if (std::exchange(isMet, true)) return false;
        if (!value.is_null() && !read(value, into.emplace())) return false;
    }
    return true;
}

bool read(element value, ShortcutDefinition& into) {
    object fields;
    if (value.get(fields) != simdjson::SUCCESS) return false;
    std::optional<KeyCode> keyCode;
    std::optional<ModifierFlags> modifiers;
    if (!readField(fields, "keyCode", keyCode) || !readField(fields, "modifiers", modifiers)) return false;
    if (!keyCode || !modifiers) return false;
    into = {.keyCode = *keyCode, .modifiers = *modifiers};
    return true;
}

bool read(element value, AppPreferences& preferences) {
    object fields;
    if (value.get(fields) != simdjson::SUCCESS) return false;
    return eachField(preferences, [&]<class Value>(std::string_view key, Value& field) {
        std::optional<Value> stored;
        if (!readField(fields, key, stored)) return false;
        if (stored) field = *stored;
        return true;
    });
}

std::string encoded(bool value) { return value ? "true" : "false"; }

template <std::integral Integer>
std::string encoded(Integer value) {
    return std::to_string(value);
}

std::string encoded(const ShortcutDefinition& shortcut) {
    return "{\"keyCode\":" + encoded(shortcut.keyCode) + ",\"modifiers\":" + encoded(shortcut.modifiers) +
           "}";
}

}  // namespace

AppPreferences AppPreferences::load(const UserDefaults& defaults) {
    const auto stored = defaults.data(defaultsKey);
    if (!stored) return {};
    simdjson::dom::parser parser;
    element root;
    const std::string_view text = stored->view();
    AppPreferences preferences;
    // What spoils the record is not told: the next change replaces it.
    if (parser.parse(text.data(), text.size()).get(root) != simdjson::SUCCESS || !read(root, preferences))
        return {};
    return preferences;
}

void AppPreferences::save(UserDefaults& defaults) const {
    std::string text;
    eachField(*this, [&](std::string_view key, const auto& field) {
        text += text.empty() ? "{\"" : ",\"";
        text += key;
        text += "\":" + encoded(field);
        return true;
    });
    defaults.setData(defaultsKey, Bytes(text + "}"));
}

}  // namespace nettlecap
