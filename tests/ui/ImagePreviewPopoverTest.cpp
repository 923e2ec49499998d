#include "ui/ImagePreviewPopover.h"
#include "ui/PrintQt.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

TEST(ImagePreviewPopoverTest, NamesItsPictureByTheFileAlone) {
    const ImagePreviewPopover preview("um gato.png", StoredEntry({}), [](bool) {});

    EXPECT_EQ(preview.heading(), "Imagem copiada");
    EXPECT_EQ(preview.image().toString(QUrl::FullyEncoded), "image://preview/um%20gato.png");
}

TEST(ImagePreviewPopoverTest, ReportsThatThePointerComesAndGoes) {
    std::vector<bool> reports;
    ImagePreviewPopover preview("gato.png", StoredEntry({}), [&](bool inside) { reports.push_back(inside); });

    preview.onHoverChanged(true);
    preview.onHoverChanged(false);

    EXPECT_EQ(reports, (std::vector{true, false}));
}

}  // namespace
}  // namespace nettlecap
