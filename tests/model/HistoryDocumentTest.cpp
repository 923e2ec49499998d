#include "model/HistoryDocument.h"

#include "model/Records.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace nettlecap {
namespace {

std::string encoded(const ClipboardEntry& entry) { return HistoryDocument::encode(entry); }

PersistedState decoded(std::string document) {
    auto state = HistoryDocument::decode(Bytes(std::move(document)));
    EXPECT_TRUE(state) << state.description();
    return state ? *state : PersistedState();
}

PersistedState roundTrip(const PersistedState& state) { return decoded(HistoryDocument::encode(state)); }

TEST(HistoryDocumentTest, WritesATextEntry) {
    EXPECT_EQ(encoded({.id = {.high = 0x0123456789ABCDEFU, .low = 0xFEDCBA9876543210U},
                       .kind = ClipboardContentKind::text,
                       .text = "Olá",
                       .createdAt = {782'000'000.25},
                       .sourceApplication = "Notas",
                       .fingerprint = "text:00",
                       .isFavorite = true,
                       .sensitiveKind = SensitiveContentKind::paymentCard}),
              R"({"id":"01234567-89AB-CDEF-FEDC-BA9876543210","kind":"text","text":"Olá",)"
              R"("createdAt":782000000.25,"sourceApplication":"Notas","fingerprint":"text:00",)"
              R"("isFavorite":true,"sensitiveKind":"paymentCard"})");
}

TEST(HistoryDocumentTest, LeavesAbsentFieldsOut) {
    EXPECT_EQ(encoded({.id = {.high = 0, .low = 1},
                       .kind = ClipboardContentKind::image,
                       .imageFilename = "A.png",
                       .createdAt = {-3},
                       .fingerprint = "image:00"}),
              R"({"id":"00000000-0000-0000-0000-000000000001","kind":"image","imageFilename":"A.png",)"
              R"("createdAt":-3,"fingerprint":"image:00","isFavorite":false})");
}

TEST(HistoryDocumentTest, WritesASnippet) {
    EXPECT_EQ(HistoryDocument::encode(SavedSnippet{.id = {.high = 0, .low = 2},
                                                   .title = "Saudação",
                                                   .content = "Bom dia",
                                                   .createdAt = {1},
                                                   .updatedAt = {2.5}}),
              R"({"id":"00000000-0000-0000-0000-000000000002","title":"Saudação","content":"Bom dia",)"
              R"("createdAt":1,"updatedAt":2.5})");
}

TEST(HistoryDocumentTest, WritesOneCompactObject) {
    EXPECT_EQ(HistoryDocument::encode(PersistedState()), R"({"entries":[],"snippets":[]})");

    const PersistedState state{.entries = {textEntry(1, "a", 1), textEntry(2, "b", 2)},
                               .snippets = {snippetRecord(3, "t", "c", 3)}};
    EXPECT_EQ(HistoryDocument::encode(state), R"({"entries":[)" + encoded(state.entries[0]) + "," +
                                                  encoded(state.entries[1]) + R"(],"snippets":[)" +
                                                  HistoryDocument::encode(state.snippets[0]) + "]}");
}

TEST(HistoryDocumentTest, JoinsObjectsThatAreEncodedAlready) {
    std::string document;
    for (const auto piece : HistoryDocument::pieces({"{1}", "{2}"}, {"{3}"})) document += piece;

    EXPECT_EQ(document, R"({"entries":[{1},{2}],"snippets":[{3}]})");
}

TEST(HistoryDocumentTest, EscapesWhatJSONWantsEscapedAndNothingElse) {
    ClipboardEntry entry = textEntry(1, "", 0);
    entry.text = std::string("\"\\/\b\f\n\r\t\0\x1F\x7F", 11) + "\u2028é\U0001F468";

    EXPECT_NE(encoded(entry).find(R"("text":"\"\\/\b\f\n\r\t\u0000\u001f)"
                                  "\x7F\u2028é\U0001F468\""),
              std::string::npos);
}

TEST(HistoryDocumentTest, ReadsBackWhatItWrote) {
    ClipboardEntry secret = favorite(textEntry(2, "482913", -1.5));
    secret.sensitiveKind = SensitiveContentKind::secret;
    ClipboardEntry bare = imageEntry(3, "A.png", "png", 1e-300);
    bare.sourceApplication.reset();
    const PersistedState state{.entries = {textEntry(1, "Olá", 782'000'000.123456), secret, bare},
                               .snippets = {snippetRecord(4, "", "", 0), snippetRecord(5, "a", "b", 1)}};

    EXPECT_EQ(roundTrip(state), state);
}

TEST(HistoryDocumentTest, KeepsEveryScalarOfAText) {
    std::string everything;
    for (int byte = 0; byte < 0x80; ++byte) everything += static_cast<char>(byte);
    everything += "\u0080\u07FF\u0800\uD7FF\uE000\uFFFD\uFFFE\uFFFF\U00010000\U0010FFFF e\u0301\r\n";
    const PersistedState state{.entries = {textEntry(1, everything, 0)}, .snippets = {}};

    EXPECT_EQ(roundTrip(state), state);
}

TEST(HistoryDocumentTest, ReadsAnEmptyTextAsAText) {
    const PersistedState state{.entries = {textEntry(1, "", 0)}, .snippets = {}};

    EXPECT_EQ(roundTrip(state).entries[0].text, "");
}

TEST(HistoryDocumentTest, KeepsEveryFiniteDateExactly) {
    PersistedState state;
    const auto add = [&](double seconds) {
        if (!std::isfinite(seconds)) return;
        state.entries.push_back(textEntry(1, "a", seconds));
    };
    for (const double seconds :
         {0.0, -0.0, 0.1, 1e15, 1e15 - 1, 9007199254740993.0, 1e19, 1e22, 1e23, 18446744073709551616.0,
          -9223372036854775808.0, 123456789012345680000.0, std::numeric_limits<double>::max(),
          std::numeric_limits<double>::min(), std::numeric_limits<double>::denorm_min()})
        add(seconds);
    std::mt19937_64 random(4);
    for (int n = 0; n < 5000; ++n) {
        const std::uint64_t bits = random();
        double seconds = 0;
        std::memcpy(&seconds, &bits, sizeof seconds);
        add(seconds);
        add(7.8e8 + static_cast<double>(bits >> 11U) / 1e10);
    }

    EXPECT_EQ(roundTrip(state), state);
}

TEST(HistoryDocumentTest, WritesWhatIsNoUTF8SoThatItCanBeReadAgain) {
    ClipboardEntry entry = textEntry(1, "a", 0);
    entry.sourceApplication = "Bloco\xFF";

    EXPECT_EQ(roundTrip({.entries = {entry}, .snippets = {}}).entries[0].sourceApplication, "Bloco\uFFFD");
}

}  // namespace
}  // namespace nettlecap
