#include "ui/SavedSnippetPreviewPopover.h"
#include "ui/PrintQt.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

TEST(SavedSnippetPreviewPopoverTest, ShowsTheWholeContent) {
    const SavedSnippetPreviewPopover preview({.title = "Saudação", .content = "Bom dia,\ntudo bem?"});

    EXPECT_EQ(preview.heading(), "Mensagem salva");
    EXPECT_EQ(preview.text(), "Bom dia,\ntudo bem?");
}

TEST(SavedSnippetPreviewPopoverTest, ShowsTwelveHundredCharactersOfALongOne) {
    const SavedSnippetPreviewPopover preview({.content = std::string(1201, 'a')});

    EXPECT_EQ(preview.text(), QString(1200, 'a') + "...");
}

}  // namespace
}  // namespace nettlecap
