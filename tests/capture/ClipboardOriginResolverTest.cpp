#include "capture/ClipboardOriginResolver.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class CopyGestureTest : public testing::Test {
protected:
    void record(std::string application, Uptime uptime) {
        resolver.pendingLocalCopy = {.sourceApplication = std::move(application), .uptime = uptime};
    }

    ClipboardOriginResolver resolver;
};

TEST_F(CopyGestureTest, CreditsAGestureOfTheSameInstant) {
    record("Notas", 100s);

    EXPECT_EQ(resolver.consumeSource(100s, std::nullopt), "Notas");
}

TEST_F(CopyGestureTest, ForgetsAGestureMoreThanTwoSecondsOld) {
    record("Notas", 100s);
    EXPECT_EQ(resolver.consumeSource(102s, std::nullopt), "Notas");

    record("Notas", 100s);
    EXPECT_EQ(resolver.consumeSource(102.001s, std::nullopt), "Outro dispositivo");
}

TEST_F(CopyGestureTest, DoesNotCreditAGestureThatCameAfterwards) {
    record("Notas", 100.001s);

    EXPECT_EQ(resolver.consumeSource(100s, std::nullopt), "Outro dispositivo");
}

TEST_F(CopyGestureTest, PrefersTheGestureToWhatWasInferred) {
    record("Notas", 100s);

    EXPECT_EQ(resolver.consumeSource(101s, "Terminal"), "Notas");
}

TEST_F(CopyGestureTest, CreditsAGestureToOneChangeOnly) {
    record("Notas", 100s);

    EXPECT_EQ(resolver.consumeSource(100.5s, "Terminal"), "Notas");
    EXPECT_EQ(resolver.consumeSource(100.6s, "Terminal"), "Terminal");
}

TEST_F(CopyGestureTest, ThrowsAnExpiredGestureAway) {
    record("Notas", 100s);
    resolver.consumeSource(103s, std::nullopt);

    EXPECT_FALSE(resolver.pendingLocalCopy);
    EXPECT_EQ(resolver.consumeSource(101s, std::nullopt), "Outro dispositivo");
}

TEST_F(CopyGestureTest, ThrowsAGestureFromTheFutureAway) {
    record("Notas", 100s);
    resolver.consumeSource(99s, std::nullopt);

    EXPECT_EQ(resolver.consumeSource(100s, std::nullopt), "Outro dispositivo");
}

TEST_F(CopyGestureTest, FallsBackToWhatWasInferredThenToAnotherDevice) {
    EXPECT_EQ(resolver.consumeSource(1s, "Terminal"), "Terminal");
    EXPECT_EQ(resolver.consumeSource(1s, std::nullopt), "Outro dispositivo");
}

TEST(LegacySourcesTest, AreTheLabelsOfEarlierVersions) {
    EXPECT_THAT(ClipboardOriginResolver::legacyUnidentifiedSources,
                ElementsAre("Clipboard Universal / origem não identificada", "Origem não identificada",
                            "Outro dispositivo ou origem desconhecida"));
}

TEST(ActiveApplicationTest, IsKnownByItsTrimmedName) {
    const auto source = ClipboardOriginResolver::activeApplicationSource;

    EXPECT_EQ(source("Notas", "org.exemplo.Notas"), "Notas");
    EXPECT_EQ(source(" \n\u3000Bloco de notas\t\u2029", std::nullopt), "Bloco de notas");
}

TEST(ActiveApplicationTest, IsKnownByItsIdentifierAsItIsWhenTheNameIsBlank) {
    const auto source = ClipboardOriginResolver::activeApplicationSource;

    EXPECT_EQ(source(std::nullopt, "org.exemplo.Notas"), "org.exemplo.Notas");
    EXPECT_EQ(source("", "org.exemplo.Notas"), "org.exemplo.Notas");
    EXPECT_EQ(source(" \r\n", " org.exemplo.Notas "), " org.exemplo.Notas ");
    EXPECT_EQ(source("  ", " "), " ");
}

TEST(ActiveApplicationTest, IsUnknownWithoutNameAndIdentifier) {
    const auto source = ClipboardOriginResolver::activeApplicationSource;

    EXPECT_EQ(source(std::nullopt, std::nullopt), std::nullopt);
    EXPECT_EQ(source(" ", ""), std::nullopt);
}

class BrowserRuleTest : public testing::Test {
protected:
    static std::optional<std::string> source(const std::optional<std::string>& name,
                                             const std::optional<std::string>& bundleIdentifier) {
        return ClipboardOriginResolver::inferredLocalSource(name, bundleIdentifier, {"com.apple.webarchive"});
    }
};

TEST_F(BrowserRuleTest, KnowsTheBrowserByItsIdentifier) {
    EXPECT_EQ(source("Navegador", "com.apple.Safari"), "Navegador");
    EXPECT_EQ(source("Navegador", "com.apple.SafariTechnologyPreview"), "Navegador");
    EXPECT_EQ(source("Navegador", "com.apple.SafariTechnologyPreview.beta"), "Navegador");

    EXPECT_EQ(source("Navegador", "com.apple.Safari.Serviço"), std::nullopt);
    EXPECT_EQ(source("Navegador", "com.apple.safari"), std::nullopt);
    EXPECT_EQ(source("Navegador", "org.com.apple.SafariTechnologyPreview"), std::nullopt);
}

TEST_F(BrowserRuleTest, KnowsTheBrowserByItsNameInAnyCase) {
    EXPECT_EQ(source("Safari", std::nullopt), "Safari");
    EXPECT_EQ(source("meu sAFARi 17", "org.exemplo"), "meu sAFARi 17");

    EXPECT_EQ(source("Safar", std::nullopt), std::nullopt);
    EXPECT_EQ(source("Safári", std::nullopt), std::nullopt);
}

TEST_F(BrowserRuleTest, CallsABrowserWithoutNameSafari) {
    EXPECT_EQ(source(std::nullopt, "com.apple.Safari"), "Safari");
    EXPECT_EQ(source(std::nullopt, "com.apple.SafariTechnologyPreview"), "Safari");
}

TEST_F(BrowserRuleTest, KnowsNobodyElse) {
    EXPECT_EQ(source("Notas", "org.exemplo.Notas"), std::nullopt);
    EXPECT_EQ(source(std::nullopt, std::nullopt), std::nullopt);
}

TEST_F(BrowserRuleTest, NeedsOneOfTheBrowsersMarkers) {
    const auto source = [](const PasteboardTypes& types) {
        return ClipboardOriginResolver::inferredLocalSource("Safari", "com.apple.Safari", types);
    };

    EXPECT_EQ(source({"com.apple.webarchive"}), "Safari");
    EXPECT_EQ(source({"public.html", "Apple Web Archive pasteboard type"}), "Safari");
    EXPECT_EQ(source({"com.apple.WebKit.custom-pasteboard-data", "public.html"}), "Safari");

    EXPECT_EQ(source({}), std::nullopt);
    EXPECT_EQ(source({"public.html", "com.apple.WebArchive"}), std::nullopt);
}

}  // namespace
}  // namespace nettlecap
