#include "model/HistoryDocument.h"
#include "model/Records.h"

#include <random>

namespace nettlecap {
namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

const Fields entryFields = {{"id", R"("E621E1F8-C36C-495A-93FC-0C247A3E6E5F")"},
                            {"kind", R"("text")"},
                            {"text", R"("Olá")"},
                            {"imageFilename", R"("A.png")"},
                            {"createdAt", "782000000.5"},
                            {"sourceApplication", R"("Notas")"},
                            {"fingerprint", R"("text:00")"},
                            {"isFavorite", "true"},
                            {"sensitiveKind", R"("secret")"}};

const Fields snippetFields = {{"id", R"("E621E1F8-C36C-495A-93FC-0C247A3E6E5F")"},
                              {"title", R"("Saudação")"},
                              {"content", R"("Bom dia")"},
                              {"createdAt", "1"},
                              {"updatedAt", "2"}};

std::string object(const Fields& fields) {
    std::string result;
    for (const auto& [key, value] : fields) {
        result += result.empty() ? "{\"" : ",\"";
        result += key;
        result += "\":";
        result += value;
    }
    return result + "}";
}

Fields without(Fields fields, std::string_view key) {
    std::erase_if(fields, [&](const auto& field) { return field.first == key; });
    return fields;
}

Fields with(Fields fields, std::string_view key, const std::string& value) {
    for (auto& field : fields)
        if (field.first == key) field.second = value;
    return fields;
}

std::string entryDocument(const Fields& fields) {
    return R"({"entries":[)" + object(fields) + R"(],"snippets":[]})";
}

std::string snippetDocument(const Fields& fields) {
    return R"({"entries":[],"snippets":[)" + object(fields) + "]}";
}

/// An entry document with a key that nobody knows.
std::string documentWith(std::string value) {
    Fields fields = entryFields;
    fields.emplace_back("futuro", std::move(value));
    return entryDocument(fields);
}

Result<PersistedState> decode(std::string document) {
    return HistoryDocument::decode(Bytes(std::move(document)));
}

ClipboardEntry onlyEntry(const Fields& fields) {
    const auto state = decode(entryDocument(fields));
    EXPECT_TRUE(state);
    return state && state->entries.size() == 1 ? state->entries[0] : ClipboardEntry();
}

TEST(HistoryDecodingTest, TakesAnEntryAsItStands) {
    EXPECT_EQ(onlyEntry(entryFields),
              (ClipboardEntry{.id = *Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"),
                              .kind = ClipboardContentKind::text,
                              .text = "Olá",
                              .imageFilename = "A.png",
                              .createdAt = {782'000'000.5},
                              .sourceApplication = "Notas",
                              .fingerprint = "text:00",
                              .isFavorite = true,
                              .sensitiveKind = SensitiveContentKind::secret}));
}

TEST(HistoryDecodingTest, TakesASnippetAsItStands) {
    const auto state = decode(snippetDocument(snippetFields));

    ASSERT_TRUE(state);
    EXPECT_EQ(state->snippets,
              (std::vector{SavedSnippet{.id = *Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"),
                                        .title = "Saudação",
                                        .content = "Bom dia",
                                        .createdAt = {1},
                                        .updatedAt = {2}}}));
}

TEST(HistoryDecodingTest, WantsEveryRequiredKeyOfAnEntry) {
    for (const std::string key : {"id", "kind", "createdAt", "fingerprint", "isFavorite"}) {
        EXPECT_FALSE(decode(entryDocument(without(entryFields, key)))) << key;
        EXPECT_FALSE(decode(entryDocument(with(entryFields, key, "null")))) << key;
    }
}

TEST(HistoryDecodingTest, WantsEveryKeyOfASnippet) {
    for (const auto& [key, value] : snippetFields) {
        EXPECT_FALSE(decode(snippetDocument(without(snippetFields, key)))) << key;
        EXPECT_FALSE(decode(snippetDocument(with(snippetFields, key, "null")))) << key;
    }
}

TEST(HistoryDecodingTest, TakesMissingAndNullOptionalKeysForAbsent) {
    for (const bool isNull : {false, true}) {
        Fields fields = entryFields;
        for (const auto* key : {"text", "imageFilename", "sourceApplication", "sensitiveKind"})
            fields = isNull ? with(fields, key, "null") : without(fields, key);

        const ClipboardEntry entry = onlyEntry(fields);

        EXPECT_EQ(entry.text, std::nullopt);
        EXPECT_EQ(entry.imageFilename, std::nullopt);
        EXPECT_EQ(entry.sourceApplication, std::nullopt);
        EXPECT_EQ(entry.sensitiveKind, std::nullopt);
    }
}

TEST(HistoryDecodingTest, RefusesValuesOfTheWrongType) {
    const std::string wrong[] = {"1", "1.5", "true", R"("x")", R"("5")", "[]", "{}", R"(["a"])"};
    const auto isRight = [](const std::string& key, const std::string& value) {
        const bool isDate = key == "createdAt" || key == "updatedAt";
        if (isDate) return value == "1" || value == "1.5";
        if (key == "isFavorite") return value == "true";
        if (key == "id" || key == "kind" || key == "sensitiveKind") return false;
        return value.starts_with('"');
    };
    for (const auto& [key, unused] : entryFields)
        for (const auto& value : wrong)
            EXPECT_EQ(static_cast<bool>(decode(entryDocument(with(entryFields, key, value)))),
                      isRight(key, value))
                << key << ": " << value;
    for (const auto& [key, unused] : snippetFields)
        for (const auto& value : wrong)
            EXPECT_EQ(static_cast<bool>(decode(snippetDocument(with(snippetFields, key, value)))),
                      isRight(key, value))
                << key << ": " << value;
}

TEST(HistoryDecodingTest, RefusesUnknownNamesOfKinds) {
    EXPECT_FALSE(decode(entryDocument(with(entryFields, "kind", R"("file")"))));
    EXPECT_FALSE(decode(entryDocument(with(entryFields, "kind", R"("Text")"))));
    EXPECT_FALSE(decode(entryDocument(with(entryFields, "kind", R"("")"))));
    EXPECT_FALSE(decode(entryDocument(with(entryFields, "sensitiveKind", R"("password")"))));
    EXPECT_TRUE(decode(entryDocument(with(entryFields, "kind", R"("image")"))));
    EXPECT_TRUE(decode(entryDocument(with(entryFields, "sensitiveKind", R"("paymentCard")"))));
}

TEST(HistoryDecodingTest, RefusesIdsThatAreNoUUIDs) {
    EXPECT_FALSE(decode(entryDocument(with(entryFields, "id", R"("1")"))));
    EXPECT_FALSE(decode(entryDocument(with(entryFields, "id", R"("E621E1F8C36C495A93FC0C247A3E6E5F")"))));
    EXPECT_TRUE(decode(entryDocument(with(entryFields, "id", R"("e621e1f8-c36c-495a-93fc-0c247a3e6e5f")"))));
}

TEST(HistoryDecodingTest, TakesWholeNumbersForDates) {
    EXPECT_EQ(onlyEntry(with(entryFields, "createdAt", "782000000")).createdAt, Date{782'000'000});
    EXPECT_EQ(onlyEntry(with(entryFields, "createdAt", "-1")).createdAt, Date{-1});
    EXPECT_EQ(onlyEntry(with(entryFields, "createdAt", "18446744073709551615")).createdAt,
              Date{18446744073709551615.0});
    EXPECT_EQ(onlyEntry(with(entryFields, "createdAt", "7.82E+8")).createdAt, Date{782'000'000});
}

TEST(HistoryDecodingTest, RefusesNumbersOutOfRange) {
    for (const std::string number :
         {"1e999", "-1e999", "NaN", "Infinity", "18446744073709551616", "0x10", "01", "1.", ".5", "+1", "-"})
        EXPECT_FALSE(decode(entryDocument(with(entryFields, "createdAt", number)))) << number;
}

TEST(HistoryDecodingTest, RoundsNumbersTooSmallForADateToZero) {
    EXPECT_EQ(onlyEntry(with(entryFields, "createdAt", "1e-999")).createdAt, Date{0});
}

TEST(HistoryDecodingTest, WantsBothListsAndNothingButAnObject) {
    EXPECT_TRUE(decode(R"({"entries":[],"snippets":[]})"));
    EXPECT_TRUE(decode(" { \"snippets\" : [ ] , \"entries\" : [ ] } \n"));
    for (const std::string document :
         {R"({"entries":[]})", R"({"snippets":[]})", "{}", "[]", "null", "1", "\"a\"",
          R"({"entries":null,"snippets":[]})", R"({"entries":{},"snippets":[]})",
          R"({"entries":[null],"snippets":[]})", R"({"entries":[[]],"snippets":[]})",
          R"({"entries":[],"snippets":[1]})", R"([{"entries":[],"snippets":[]}])"})
        EXPECT_FALSE(decode(document)) << document;
}

TEST(HistoryDecodingTest, IgnoresUnknownKeys) {
    for (const std::string value :
         {"null", "1", "-1.5e3", "\"x\"", "[[1,[2]],{\"id\":3}]", "{\"a\":{}}", "true"})
        EXPECT_TRUE(decode(documentWith(value))) << value;
    EXPECT_TRUE(decode(R"({"version":2,"entries":[],"more":{"entries":1},"snippets":[]})"));
}

TEST(HistoryDecodingTest, RefusesDamagedValuesUnderUnknownKeys) {
    for (const std::string value : {"nul", "truu", "01", "\"\\q\"", "\"a", "[1,]", "{\"a\"}", "1e999", ""})
        EXPECT_FALSE(decode(documentWith(value))) << value;
}

TEST(HistoryDecodingTest, FailsWholeForOneBadEntry) {
    const std::string good = object(entryFields);
    const std::string bad = object(without(entryFields, "isFavorite"));

    EXPECT_TRUE(decode(R"({"entries":[)" + good + "," + good + R"(],"snippets":[]})"));
    EXPECT_FALSE(decode(R"({"entries":[)" + good + "," + bad + R"(],"snippets":[]})"));
}

TEST(HistoryDecodingTest, LeavesDuplicateIdsAlone) {
    const std::string entry = object(entryFields);

    const auto state = decode(R"({"entries":[)" + entry + "," + entry + R"(],"snippets":[]})");

    ASSERT_TRUE(state);
    EXPECT_EQ(state->entries.size(), 2U);
}

TEST(HistoryDecodingTest, TakesTheLastOfADuplicatedKeyAndChecksAll) {
    Fields fields = entryFields;
    fields.emplace_back("text", R"("depois")");
    fields.emplace_back("sourceApplication", "null");
    EXPECT_EQ(onlyEntry(fields).text, "depois");
    EXPECT_EQ(onlyEntry(fields).sourceApplication, std::nullopt);

    fields.insert(fields.begin(), {"text", "1"});
    EXPECT_FALSE(decode(entryDocument(fields)));

    const auto state = decode(R"({"entries":[)" + object(entryFields) + R"(],"snippets":[],"entries":[]})");
    ASSERT_TRUE(state);
    EXPECT_TRUE(state->entries.empty());
}

TEST(HistoryDecodingTest, ReadsEscapes) {
    EXPECT_EQ(onlyEntry(with(entryFields, "text", R"("\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00")")).text,
              "\"\\/\b\f\n\r\té\U0001F600");
    EXPECT_EQ(onlyEntry(with(entryFields, "text", R"("a\u0000b")")).text, std::string("a\0b", 3));

    Fields escapedKey = without(entryFields, "text");
    escapedKey.emplace_back(R"(\u0074ext)", R"("b")");
    EXPECT_EQ(onlyEntry(escapedKey).text, "b");
}

TEST(HistoryDecodingTest, RefusesWhatIsNoText) {
    for (const std::string text :
         {R"("\ud83d")", R"("\ude00")", R"("\ud83dx")", R"("\ud83d\u0041")", R"("\u12")", "\"\xFF\"",
          "\"\xC0\x80\"", "\"\xED\xA0\x80\"", "\"\xF4\x90\x80\x80\"", "\"\xC3\"", "\"a\nb\""})
        EXPECT_FALSE(decode(entryDocument(with(entryFields, "text", text)))) << testing::PrintToString(text);
    EXPECT_FALSE(decode(entryDocument(with(entryFields, "text", std::string("\"a\0b\"", 5)))));
}

TEST(HistoryDecodingTest, RefusesWhatStandsAroundTheDocument) {
    const std::string document = entryDocument(entryFields);

    EXPECT_FALSE(decode(document + "x"));
    EXPECT_FALSE(decode(document + document));
    EXPECT_FALSE(decode(document + std::string(1, '\0')));
    EXPECT_FALSE(decode(std::string(1, '\0') + document));
    EXPECT_FALSE(decode("\xEF\xBB\xBF" + document));
    EXPECT_FALSE(decode("// nota\n" + document));
    EXPECT_FALSE(decode(document + "\xFF"));
}

TEST(HistoryDecodingTest, RefusesADocumentCutOffAnywhere) {
    const std::string document =
        R"({"entries":[)" + object(entryFields) + R"(],"snippets":[)" + object(snippetFields) + "]}";
    ASSERT_TRUE(decode(document));
    for (std::size_t length = 0; length < document.size(); ++length)
        ASSERT_FALSE(decode(document.substr(0, length))) << length;
}

TEST(HistoryDecodingTest, RefusesDeepNestingInsteadOfOverflowingTheStack) {
    for (const std::size_t depth : {100'000U, 2'000'000U}) {
        const std::string open(depth, '[');
        EXPECT_FALSE(decode(open));
        EXPECT_FALSE(decode(documentWith(open + std::string(depth, ']'))));
        std::string objects;
        for (std::size_t n = 0; n < depth; ++n) objects += "{\"a\":";
        EXPECT_FALSE(decode(documentWith(objects + "1" + std::string(depth, '}'))));
    }
    EXPECT_TRUE(decode(documentWith(std::string(1000, '[') + std::string(1000, ']'))));
}

TEST(HistoryDecodingTest, TakesHugeTexts) {
    std::string huge;
    huge.resize(20'000'000, 'x');

    const ClipboardEntry entry = onlyEntry(with(entryFields, "text", '"' + huge + '"'));

    EXPECT_TRUE(entry.text == huge);
}

TEST(HistoryDecodingTest, SaysNothingOfWhatTheFileHolds) {
    for (const std::string& document :
         {std::string("hunter2"), std::string("{\"hunter2\":"), documentWith("hunter2"),
          entryDocument(with(entryFields, "kind", R"("hunter2")")),
          entryDocument(with(entryFields, "id", R"("hunter2")")), std::string("\"hunter2\"")}) {
        const auto state = decode(document);
        ASSERT_FALSE(state);
        EXPECT_EQ(state.description().find("hunter2"), std::string::npos);
        EXPECT_TRUE(state.description() == "o arquivo não é um documento JSON válido." ||
                    state.description() == "o documento não tem o formato esperado.")
            << state.description();
    }
}

TEST(HistoryDecodingTest, NeverTakesADamagedDocumentForAnother) {
    const std::string document =
        R"({"entries":[)" + object(entryFields) + R"(],"snippets":[)" + object(snippetFields) + "]}";
    std::mt19937 random(5);
    for (int round = 0; round < 5000; ++round) {
        std::string damaged = document;
        for (int n = 0; n < 3; ++n) damaged[random() % damaged.size()] = static_cast<char>(random());

        const auto state = decode(damaged);

        if (!state) continue;
        ASSERT_EQ(*decode(HistoryDocument::encode(*state)), *state);
    }
}

}  // namespace
}  // namespace nettlecap
