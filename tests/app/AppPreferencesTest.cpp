#include "app/AppPreferences.h"

#include "platform/fake/FakeUserDefaults.h"

#include <gtest/gtest.h>
#include <limits>

namespace nettlecap {

void PrintTo(const AppPreferences& preferences, std::ostream* out) {
    FakeUserDefaults defaults;
    preferences.save(defaults);
    *out << defaults.data("Nettlecap.preferences.v1")->view();
}

namespace {

constexpr std::string_view key = "Nettlecap.preferences.v1";

/// Every field differs from its default.
const AppPreferences changed{
    .previousShortcut = {.keyCode = 123, .modifiers = modifier::control},
    .nextShortcut = {.keyCode = 124, .modifiers = modifier::control | modifier::option},
    .openSearchShortcut = {.keyCode = 0, .modifiers = modifier::all},
    .toggleFavoriteShortcut = {.keyCode = 999, .modifiers = 0},
    .autoPaste = true,
    .pasteHistoryOnDoubleClick = false,
    .captureImages = false,
    .protectSensitiveContent = false,
    .launchAtLogin = false,
    .maxHistoryItems = 3,
};

const AppPreferences defaultRecord;

using Fields = std::vector<std::pair<std::string, std::string>>;

const Fields changedFields = {
    {"previousShortcut", R"({"keyCode":123,"modifiers":262144})"},
    {"nextShortcut", R"({"keyCode":124,"modifiers":786432})"},
    {"openSearchShortcut", R"({"keyCode":0,"modifiers":1966080})"},
    {"toggleFavoriteShortcut", R"({"keyCode":999,"modifiers":0})"},
    {"autoPaste", "true"},
    {"pasteHistoryOnDoubleClick", "false"},
    {"captureImages", "false"},
    {"protectSensitiveContent", "false"},
    {"launchAtLogin", "false"},
    {"maxHistoryItems", "3"},
};

std::string object(const Fields& fields) {
    std::string result;
    for (const auto& [name, value] : fields) {
        result += result.empty() ? "{\"" : ",\"";
        result += name + "\":" + value;
    }
    return result + "}";
}

Fields without(Fields fields, std::string_view name) {
    std::erase_if(fields, [&](const auto& field) { return field.first == name; });
    return fields;
}

Fields with(Fields fields, std::string_view name, const std::string& value) {
    for (auto& field : fields)
        if (field.first == name) field.second = value;
    return fields;
}

AppPreferences load(std::string blob) {
    FakeUserDefaults defaults;
    defaults.setData(key, Bytes(std::move(blob)));
    return AppPreferences::load(defaults);
}

/// Of a record that is otherwise in order.
AppPreferences loadWith(std::string_view name, const std::string& value) {
    return load(object(with(changedFields, name, value)));
}

/// What `changed` looks like when this field has its default.
AppPreferences changedBut(std::string_view name) {
    AppPreferences result = changed;
    if (name == "previousShortcut") result.previousShortcut = {.keyCode = 18, .modifiers = 0x100000};
    if (name == "nextShortcut") result.nextShortcut = {.keyCode = 19, .modifiers = 0x100000};
    if (name == "openSearchShortcut") result.openSearchShortcut = {.keyCode = 9, .modifiers = 0x120000};
    if (name == "toggleFavoriteShortcut")
        result.toggleFavoriteShortcut = {.keyCode = 3, .modifiers = 0x80000};
    if (name == "autoPaste") result.autoPaste = false;
    if (name == "pasteHistoryOnDoubleClick") result.pasteHistoryOnDoubleClick = true;
    if (name == "captureImages") result.captureImages = true;
    if (name == "protectSensitiveContent") result.protectSensitiveContent = true;
    if (name == "launchAtLogin") result.launchAtLogin = true;
    if (name == "maxHistoryItems") result.maxHistoryItems = 500;
    return result;
}

std::string saved(const AppPreferences& preferences) {
    FakeUserDefaults defaults;
    preferences.save(defaults);
    return std::string(defaults.data(key)->view());
}

TEST(AppPreferencesTest, AtFirstEverythingIsDefault) {
    const AppPreferences preferences = AppPreferences::load(FakeUserDefaults());

    EXPECT_EQ(preferences, (AppPreferences{
                               .previousShortcut = {.keyCode = 18, .modifiers = 0x100000},
                               .nextShortcut = {.keyCode = 19, .modifiers = 0x100000},
                               .openSearchShortcut = {.keyCode = 9, .modifiers = 0x120000},
                               .toggleFavoriteShortcut = {.keyCode = 3, .modifiers = 0x80000},
                               .autoPaste = false,
                               .pasteHistoryOnDoubleClick = true,
                               .captureImages = true,
                               .protectSensitiveContent = true,
                               .launchAtLogin = true,
                               .maxHistoryItems = 500,
                           }));
}

TEST(AppPreferencesTest, ComparesEveryField) {
    for (const auto& [name, value] : changedFields) {
        EXPECT_NE(changedBut(name), changed) << name;
        EXPECT_EQ(changedBut(name), changedBut(name)) << name;
    }
}

TEST(AppPreferencesTest, ComparesBothPartsOfAShortcut) {
    AppPreferences otherModifiers;
    otherModifiers.previousShortcut.modifiers = modifier::option;
    AppPreferences otherKey;
    otherKey.previousShortcut.keyCode = 20;

    EXPECT_NE(otherModifiers, AppPreferences());
    EXPECT_NE(otherKey, AppPreferences());
}

// What is written.

TEST(AppPreferencesTest, WritesAllFieldsAndNothingElse) {
    EXPECT_EQ(saved(AppPreferences()),
              R"({"previousShortcut":{"keyCode":18,"modifiers":1048576},)"
              R"("nextShortcut":{"keyCode":19,"modifiers":1048576},)"
              R"("openSearchShortcut":{"keyCode":9,"modifiers":1179648},)"
              R"("toggleFavoriteShortcut":{"keyCode":3,"modifiers":524288},)"
              R"("autoPaste":false,"pasteHistoryOnDoubleClick":true,"captureImages":true,)"
              R"("protectSensitiveContent":true,"launchAtLogin":true,"maxHistoryItems":500})");
    EXPECT_EQ(saved(changed), object(changedFields));
}

TEST(AppPreferencesTest, ReadsBackWhatItWrote) {
    EXPECT_EQ(load(saved(changed)), changed);
    EXPECT_EQ(load(saved(AppPreferences())), AppPreferences());
}

TEST(AppPreferencesTest, KeepsEveryNumberExactly) {
    AppPreferences large;
    large.previousShortcut = {.keyCode = 0xFFFF'FFFF, .modifiers = 0xFFFF'FFFF'FFFF'FFFF};
    large.nextShortcut.modifiers = (std::uint64_t{1} << 53U) + 1;
    large.maxHistoryItems = std::numeric_limits<std::int64_t>::max();
    AppPreferences small;
    small.maxHistoryItems = std::numeric_limits<std::int64_t>::min();

    EXPECT_EQ(load(saved(large)), large);
    EXPECT_EQ(load(saved(small)), small);
}

TEST(AppPreferencesTest, NeverClampsTheLimit) {
    for (const std::int64_t limit : {3, 0, -1, 5001}) {
        AppPreferences preferences;
        preferences.maxHistoryItems = limit;

        EXPECT_EQ(load(saved(preferences)).maxHistoryItems, limit);
    }
}

TEST(AppPreferencesTest, ReplacesWhatWasThere) {
    FakeUserDefaults defaults;
    defaults.setData(key, Bytes("garbage"));
    changed.save(defaults);

    AppPreferences().save(defaults);

    EXPECT_EQ(AppPreferences::load(defaults), AppPreferences());
}

TEST(AppPreferencesTest, AFailureToWriteIsSilent) {
    FakeUserDefaults defaults;
    changed.save(defaults);
    defaults.setRefusesWrites(true);

    AppPreferences().save(defaults);

    EXPECT_EQ(AppPreferences::load(defaults), changed);
}

// What is read.

TEST(AppPreferencesTest, AMissingFieldHasItsDefaultAndTheOthersTheirs) {
    for (const auto& [name, value] : changedFields)
        EXPECT_EQ(load(object(without(changedFields, name))), changedBut(name)) << name;
}

TEST(AppPreferencesTest, TakesNullForMissing) {
    for (const auto& [name, value] : changedFields)
        EXPECT_EQ(loadWith(name, "null"), changedBut(name)) << name;
}

TEST(AppPreferencesTest, TakesAnEmptyRecordForDefaults) {
    EXPECT_EQ(load("{}"), AppPreferences());
    EXPECT_EQ(load(R"({"autoPaste":true})").autoPaste, true);
}

TEST(AppPreferencesTest, OneValueOfTheWrongKindSpoilsTheRecord) {
    for (const auto& [name, value] : changedFields) {
        const bool isSwitch = value == "true" || value == "false";
        for (const std::string wrong : {"\"abc\"", "[]", "\"true\"", "\"3\"", "1.5"})
            EXPECT_EQ(loadWith(name, wrong), defaultRecord) << name << wrong;
        EXPECT_EQ(loadWith(name, isSwitch ? "1" : "true"), defaultRecord) << name;
        EXPECT_EQ(loadWith(name, isSwitch ? "0" : "false"), defaultRecord) << name;
        EXPECT_EQ(loadWith(name, "{}"), defaultRecord) << name;
    }
}

TEST(AppPreferencesTest, AShortcutNeedsBothItsNumbers) {
    for (const std::string wrong :
         {R"({"keyCode":3})", R"({"modifiers":0})", R"({"keyCode":null,"modifiers":0})",
          R"({"keyCode":3,"modifiers":null})", R"({"keyCode":"3","modifiers":0})",
          R"({"keyCode":3,"modifiers":true})", "3", R"([3,0])"})
        for (const std::string name :
             {"previousShortcut", "nextShortcut", "openSearchShortcut", "toggleFavoriteShortcut"})
            EXPECT_EQ(loadWith(name, wrong), defaultRecord) << name << wrong;
}

TEST(AppPreferencesTest, AKeyCodeHas32Bits) {
    const auto loadKeyCode = [](const std::string& number) {
        return loadWith("previousShortcut", R"({"keyCode":)" + number + R"(,"modifiers":0})");
    };

    EXPECT_EQ(loadKeyCode("4294967295").previousShortcut.keyCode, 4294967295U);
    EXPECT_EQ(loadKeyCode("4294967295.0").previousShortcut.keyCode, 4294967295U);
    for (const std::string wrong : {"4294967296", "4294967296.0", "-1", "-1.0", "18446744073709551615"})
        EXPECT_EQ(loadKeyCode(wrong), defaultRecord) << wrong;
}

TEST(AppPreferencesTest, ModifiersHave64Bits) {
    const auto loadModifiers = [](const std::string& number) {
        return loadWith("nextShortcut", R"({"keyCode":0,"modifiers":)" + number + "}");
    };

    EXPECT_EQ(loadModifiers("18446744073709551615").nextShortcut.modifiers, 18446744073709551615U);
    EXPECT_EQ(loadModifiers("18446744073709549568.0").nextShortcut.modifiers, 18446744073709549568U);
    for (const std::string wrong : {"18446744073709551616", "1.8446744073709551616e19", "-1", "1e300"})
        EXPECT_EQ(loadModifiers(wrong), defaultRecord) << wrong;
}

TEST(AppPreferencesTest, TheLimitHas64BitsAndASign) {
    const auto loadLimit = [](const std::string& number) { return loadWith("maxHistoryItems", number); };

    EXPECT_EQ(loadLimit("9223372036854775807").maxHistoryItems, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(loadLimit("-9223372036854775808").maxHistoryItems, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(loadLimit("-9.223372036854775808e18").maxHistoryItems,
              std::numeric_limits<std::int64_t>::min());
    for (const std::string wrong : {"9223372036854775808", "9.223372036854775808e18", "-9223372036854775809",
                                    "-9.2233720368547778e18", "1e999"})
        EXPECT_EQ(loadLimit(wrong), defaultRecord) << wrong;
}

TEST(AppPreferencesTest, TakesAWholeNumberHoweverItIsWritten) {
    EXPECT_EQ(loadWith("maxHistoryItems", "3.0").maxHistoryItems, 3);
    EXPECT_EQ(loadWith("maxHistoryItems", "3e2").maxHistoryItems, 300);
    EXPECT_EQ(loadWith("maxHistoryItems", "-0.0").maxHistoryItems, 0);
    EXPECT_EQ(loadWith("maxHistoryItems", "3.5"), defaultRecord);
    EXPECT_EQ(loadWith("maxHistoryItems", "3.0000001"), defaultRecord);
}

TEST(AppPreferencesTest, IgnoresWhatItDoesNotKnow) {
    for (const std::string unknown : {"null", "\"x\"", "{\"autoPaste\":3}", "[[1.5]]"}) {
        Fields fields = changedFields;
        fields.emplace_back("futuro", unknown);
        fields.emplace_back("autopaste", unknown);  // keys are exact

        EXPECT_EQ(load(object(fields)), changed) << unknown;
    }
    EXPECT_EQ(loadWith("previousShortcut", R"({"keyCode":123,"modifiers":262144,"futuro":"x"})"), changed);
}

TEST(AppPreferencesTest, ReadsAnyWritingOfTheSameRecord) {
    Fields reversed(changedFields.rbegin(), changedFields.rend());
    EXPECT_EQ(load(object(reversed)), changed);

    EXPECT_EQ(load(" \n{ \"auto\\u0050aste\" :\ttrue } \n").autoPaste, true);
}

TEST(AppPreferencesTest, AKeyThatStandsTwiceSpoilsTheRecord) {
    for (const auto& field : changedFields) {
        Fields fields = changedFields;
        fields.push_back(field);
        EXPECT_EQ(load(object(fields)), defaultRecord) << field.first;

        fields.back().second = "null";
        EXPECT_EQ(load(object(fields)), defaultRecord) << field.first;
    }
    EXPECT_EQ(loadWith("nextShortcut", R"({"keyCode":1,"keyCode":1,"modifiers":0})"), defaultRecord);
}

TEST(AppPreferencesTest, SurvivesWhatIsNoRecord) {
    const std::string good = object(changedFields);
    for (const std::string& blob :
         {std::string(), std::string("{"), std::string("garbage"), std::string("[]"), std::string("null"),
          std::string("3"), "[" + good + "]", good + "x", good + good, good.substr(0, good.size() - 1),
          std::string("{\"futuro\":\"\xFF\"}"), std::string(5, '\0'), "\"" + good, "bplist00" + good})
        EXPECT_EQ(load(blob), defaultRecord) << blob;
}

TEST(AppPreferencesTest, SurvivesDeepNesting) {
    const std::string deep(1'000'000, '[');

    EXPECT_EQ(load(deep), defaultRecord);
    EXPECT_EQ(load(R"({"autoPaste":true,"futuro":)" + deep), defaultRecord);
    EXPECT_EQ(load(R"({"previousShortcut":)" + deep + std::string(deep.size(), ']') + "}"), defaultRecord);
}

TEST(AppPreferencesTest, LeavesWhatItCannotReadWhereItIs) {
    FakeUserDefaults defaults;
    defaults.setData(key, Bytes("garbage"));

    EXPECT_EQ(AppPreferences::load(defaults), AppPreferences());

    EXPECT_EQ(defaults.data(key), Bytes("garbage"));
}

TEST(AppPreferencesTest, ReadsItsOwnKeyOnly) {
    FakeUserDefaults defaults;
    defaults.setData("Nettlecap.preferences.v2", Bytes(object(changedFields)));

    EXPECT_EQ(AppPreferences::load(defaults), AppPreferences());
}

}  // namespace
}  // namespace nettlecap
