#include "ui/ClipboardTextPreview.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

std::string summaryOf(const std::string& text) { return ClipboardTextPreview::summary({.text = text}, true); }

TEST(ClipboardTextPreviewTest, LeavesTwelveHundredCharactersAsTheyAre) {
    const std::string text = " " + std::string(1199, 'a');

    EXPECT_EQ(ClipboardTextPreview::limited(text), text);
}

TEST(ClipboardTextPreviewTest, CutsAndTrimsALongerText) {
    EXPECT_EQ(ClipboardTextPreview::limited(" " + std::string(1198, 'a') + " bb"),
              std::string(1198, 'a') + "...");
}

TEST(ClipboardTextPreviewTest, SummarizesATextOnOneLine) {
    EXPECT_EQ(summaryOf("  um\ndois\r\ntrês\n"), "um dois\r três");
    EXPECT_EQ(summaryOf(std::string(1201, 'a')), std::string(1200, 'a') + "...");
}

TEST(ClipboardTextPreviewTest, NamesWhatHasNoTextToShow) {
    EXPECT_EQ(summaryOf(" \n\t"), "Texto vazio");
    EXPECT_EQ(ClipboardTextPreview::summary({}, true), "Texto vazio");
    EXPECT_EQ(ClipboardTextPreview::summary({.kind = ClipboardContentKind::image}, true), "Imagem copiada");
}

TEST(ClipboardTextPreviewTest, MasksASensitiveTextWhileItIsProtected) {
    const ClipboardEntry secret{.text = "segredo", .sensitiveKind = SensitiveContentKind::secret};

    EXPECT_EQ(ClipboardTextPreview::summary(secret, true), "se••••••");
    EXPECT_EQ(ClipboardTextPreview::summary(secret, false), "segredo");
}

}  // namespace
}  // namespace nettlecap
