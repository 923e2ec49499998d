#include "ui/RowMenu.h"
#include "ui/PrintQt.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

class RowMenuTest : public testing::Test {
protected:
    RowMenuTest() {
        menu.add("Copiar", [this] { log += "copy "; }).addDivider().addDestructive("Excluir", [this] {
            log += "delete ";
        });
    }

    std::string log;
    RowMenu menu;
};

TEST_F(RowMenuTest, ShowsItsLinesInOrder) {
    const QVariantList items = menu.items();

    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items[0].value<RowMenuItem>(), (RowMenuItem{.label = "Copiar"}));
    EXPECT_EQ(items[1].value<RowMenuItem>(), (RowMenuItem{.isDivider = true}));
    EXPECT_EQ(items[2].value<RowMenuItem>(), (RowMenuItem{.label = "Excluir", .isDestructive = true}));
}

TEST_F(RowMenuTest, DoesWhatALineSays) {
    menu.perform(2);
    menu.perform(0);

    EXPECT_EQ(log, "delete copy ");
}

TEST_F(RowMenuTest, DoesNothingForADividerOrNoLineAtAll) {
    for (const int index : {-1, 1, 3}) menu.perform(index);

    EXPECT_EQ(log, "");
}

}  // namespace
}  // namespace nettlecap
