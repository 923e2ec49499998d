#include "ui/EntryMetadataPopover.h"
#include "platform/fake/FakeTime.h"
#include "ui/PrintQt.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class EntryMetadataPopoverTest : public testing::Test {
protected:
    std::unique_ptr<EntryMetadataPopover> previewOf(Date createdAt) {
        return std::make_unique<EntryMetadataPopover>(
            EntryMetadataPopover::Ports{.clock = time, .scheduler = time},
            StoredEntry({.text = "um", .createdAt = createdAt}),
            [this](bool inside) { reports.push_back(inside); });
    }

    FakeTime time;
    std::vector<bool> reports;
};

TEST_F(EntryMetadataPopoverTest, SaysWhenTheEntryWasCopied) {
    const auto preview = previewOf({time.now().secondsSince2001 - 300});

    EXPECT_EQ(preview->symbol(), "clock");
    EXPECT_EQ(preview->label(), "Copiado");
    EXPECT_EQ(preview->age(), "há 5 minutos");
}

TEST_F(EntryMetadataPopoverTest, KeepsItsAgeCurrentWhileItIsShown) {
    const auto preview = previewOf(time.now());
    EXPECT_EQ(preview->age(), "agora");
    const QSignalSpy changes(preview.get(), &EntryMetadataPopover::ageChanged);

    time.advance(0.999s);
    EXPECT_EQ(changes.count(), 0);

    time.advance(1.001s);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(preview->age(), "há 2 segundos");
}

TEST_F(EntryMetadataPopoverTest, NothingTicksOnceItIsGone) {
    auto preview = previewOf(time.now());
    EXPECT_EQ(time.waitingTasks(), 1U);

    preview.reset();
    time.advance(1s);

    EXPECT_EQ(time.waitingTasks(), 0U);
}

TEST_F(EntryMetadataPopoverTest, ReportsThatThePointerComesAndGoes) {
    const auto preview = previewOf(time.now());

    preview->onHoverChanged(true);
    preview->onHoverChanged(false);

    EXPECT_EQ(reports, (std::vector{true, false}));
}

}  // namespace
}  // namespace nettlecap
