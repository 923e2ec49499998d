#include "ui/TextPreviewPopover.h"
#include "ui/PrintQt.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

TEST(TextPreviewPopoverTest, ShowsTheTextThatItIsGiven) {
    const TextPreviewPopover preview("um\ndois", StoredEntry({.text = "um\ndois e mais"}), [](bool) {});

    EXPECT_EQ(preview.heading(), "Texto copiado");
    EXPECT_EQ(preview.text(), "um\ndois");
    EXPECT_EQ(preview.entry().text, "um\ndois e mais");
}

TEST(TextPreviewPopoverTest, ReportsThatThePointerComesAndGoes) {
    std::vector<bool> reports;
    TextPreviewPopover preview("um", StoredEntry({}), [&](bool inside) { reports.push_back(inside); });

    preview.onHoverChanged(true);
    preview.onHoverChanged(false);

    EXPECT_EQ(reports, (std::vector{true, false}));
}

}  // namespace
}  // namespace nettlecap
