#include "ui/EntryMetadataPopover.h"
#include "ui/EntryRowFixture.h"
#include "ui/ImagePreviewPopover.h"
#include "ui/TextPreviewPopover.h"

#include <QSignalSpy>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// Which preview a row opens, and how pointer and keyboard reach it. Characters are 10 points
/// wide, so that 32 of them fit into a row.
class ClipboardEntryRowPreviewTest : public EntryRowFixture {
protected:
    template <class Preview>
    Preview* opened(ClipboardEntryRow& row) {
        row.handleRowHover(true);
        history.fake.time.advance(0.3s);
        return qobject_cast<Preview*>(row.preview());
    }
    std::unique_ptr<ClipboardEntryRow> rowOfPicture() {
        putPicture("gato.png");
        return rowOf(history.addImage("gato.png"));
    }
};

TEST_F(ClipboardEntryRowPreviewTest, APictureOpensAsAPicture) {
    const auto row = rowOfPicture();

    const auto* preview = opened<ImagePreviewPopover>(*row);

    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->image(), QUrl("image://preview/gato.png"));
}

TEST_F(ClipboardEntryRowPreviewTest, APictureWhoseFileIsGoneTellsItsAge) {
    const auto row = rowOf(history.addImage("sumiu.png"));

    EXPECT_NE(opened<EntryMetadataPopover>(*row), nullptr);
}

TEST_F(ClipboardEntryRowPreviewTest, APictureWhoseFileIsNoneTellsItsAge) {
    history.fake.files.put(history.app.store().imagesDirectory() / "texto.png", "nada disso");
    const auto row = rowOf(history.addImage("texto.png"));

    EXPECT_NE(opened<EntryMetadataPopover>(*row), nullptr);
}

TEST_F(ClipboardEntryRowPreviewTest, APictureOutsideTheFolderIsNotLookedAt) {
    putPicture("../gato.png");
    const auto row = rowOf(history.addImage("../gato.png"));

    EXPECT_NE(opened<EntryMetadataPopover>(*row), nullptr);
}

TEST_F(ClipboardEntryRowPreviewTest, ATextThatFitsItsRowTellsItsAge) {
    const auto row = rowOf(history.add(std::string(32, 'a'), 5min));

    const auto* preview = opened<EntryMetadataPopover>(*row);

    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->age(), "há 5 minutos");
}

TEST_F(ClipboardEntryRowPreviewTest, ATextThatDoesNotFitItsRowOpensAsText) {
    const auto row = rowOf(history.add(std::string(33, 'a')));

    const auto* preview = opened<TextPreviewPopover>(*row);

    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->text(), QString(33, 'a'));
}

TEST_F(ClipboardEntryRowPreviewTest, LinesThatFitBesideEachOtherOpenNoText) {
    const auto row = rowOf(history.add("  um\ndois\n\n"));

    EXPECT_FALSE(row->shouldShowTextContentPreview());
    EXPECT_EQ(row->textPreview(), "  um\ndois\n\n");
}

TEST_F(ClipboardEntryRowPreviewTest, AnEmptyTextOpensNoText) {
    EXPECT_FALSE(rowOf(history.add(" \n "))->shouldShowTextContentPreview());
    history.fake.text.setCharacterWidth(40);  // "Texto vazio" is 440 points now
    EXPECT_TRUE(rowOf(history.add(" \n "))->shouldShowTextContentPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, AWhitespaceThatBreaksLinesOpensAsText) {
    EXPECT_TRUE(rowOf(history.add("um\u2028dois"))->shouldShowTextContentPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, ALongTextShowsTwelveHundredCharacters) {
    const auto row = rowOf(history.add(std::string(1201, 'a')));

    EXPECT_EQ(row->textPreview(), std::string(1200, 'a') + "...");
}

TEST_F(ClipboardEntryRowPreviewTest, APictureHasNoTextToShow) {
    const auto row = rowOfPicture();

    EXPECT_EQ(row->textPreview(), std::nullopt);
    history.fake.text.setCharacterWidth(40);
    EXPECT_FALSE(row->shouldShowTextContentPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, ASensitiveTextIsMaskedHereToo) {
    const auto row = rowOf(history.addSensitive(std::string(50, 's'), SensitiveContentKind::secret));
    EXPECT_EQ(row->textPreview(), "ss••••••••••••");
    EXPECT_NE(opened<EntryMetadataPopover>(*row), nullptr);

    history.fake.text.setCharacterWidth(30);  // 14 characters don't fit any more
    row->disappear();
    const auto* preview = opened<TextPreviewPopover>(*row);
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->text(), "ss••••••••••••");
}

TEST_F(ClipboardEntryRowPreviewTest, ASensitiveTextShowsWhileProtectionIsOff) {
    prefer([](AppPreferences& preferences) { preferences.protectSensitiveContent = false; });
    const auto row = rowOf(history.addSensitive(std::string(50, 's'), SensitiveContentKind::secret));

    const auto* preview = opened<TextPreviewPopover>(*row);

    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->text(), QString(50, 's'));
}

TEST_F(ClipboardEntryRowPreviewTest, AnOpenPreviewIsMaskedAsSoonAsProtectionIsOn) {
    prefer([](AppPreferences& preferences) { preferences.protectSensitiveContent = false; });
    const auto row = rowOf(history.addSensitive(std::string(50, 's'), SensitiveContentKind::secret));
    ASSERT_NE(opened<TextPreviewPopover>(*row), nullptr);

    prefer([](AppPreferences& preferences) { preferences.protectSensitiveContent = true; });
    row->refreshProtection();

    EXPECT_NE(qobject_cast<EntryMetadataPopover*>(row->preview()), nullptr);
}

TEST_F(ClipboardEntryRowPreviewTest, AnOpenPreviewFollowsItsEntry) {
    ClipboardEntry entry = history.add("um");
    const auto row = rowOf(entry);
    ASSERT_NE(opened<EntryMetadataPopover>(*row), nullptr);

    entry.text = std::string(40, 'b');
    row->setRecord(StoredEntry(entry));

    const auto* preview = qobject_cast<TextPreviewPopover*>(row->preview());
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->text(), QString(40, 'b'));
}

TEST_F(ClipboardEntryRowPreviewTest, SeeingThePictureByHandOutlastsThePointer) {
    const auto row = rowOfPicture();

    row->performMenuItem(3);
    EXPECT_NE(qobject_cast<ImagePreviewPopover*>(row->preview()), nullptr);

    row->handleRowHover(false);
    history.fake.time.advance(10s);
    EXPECT_TRUE(row->isShowingPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, ThePointerOnThePreviewKeepsItOpen) {
    const auto row = rowOf(history.add("um"));
    auto* preview = opened<EntryMetadataPopover>(*row);
    row->handleRowHover(false);
    preview->onHoverChanged(true);
    history.fake.time.advance(10s);
    EXPECT_TRUE(row->isShowingPreview());

    preview->onHoverChanged(false);
    history.fake.time.advance(0.2s);
    EXPECT_FALSE(row->isShowingPreview());
    EXPECT_EQ(row->preview(), nullptr);
}

TEST_F(ClipboardEntryRowPreviewTest, ADroppedPreviewMayStillReportThePointer) {
    auto row = rowOf(history.add("um"));
    auto* preview = opened<EntryMetadataPopover>(*row);

    row->previewDisappeared();
    preview->onHoverChanged(true);
    history.fake.time.advance(1s);
    EXPECT_FALSE(row->isShowingPreview());

    row.reset();
    preview->onHoverChanged(false);
    history.fake.time.advance(1s);
}

TEST_F(ClipboardEntryRowPreviewTest, SelectingARowOpensItsPreview) {
    const auto row = rowOf(history.add("um"));
    const QSignalSpy changes(row.get(), &ClipboardEntryRow::previewChanged);

    row->setKeyboardSelected(true);
    history.fake.time.advance(0.149s);
    EXPECT_FALSE(row->isShowingPreview());
    history.fake.time.advance(0.001s);
    EXPECT_TRUE(row->isShowingPreview());

    row->setKeyboardSelected(false);
    EXPECT_FALSE(row->isShowingPreview());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(ClipboardEntryRowPreviewTest, APreviewClosedFromOutsideIsClosed) {
    const auto row = rowOfPicture();
    row->performMenuItem(3);

    row->previewDisappeared();

    EXPECT_FALSE(row->isShowingPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, APreviewGoesWithItsRow) {
    const auto row = rowOf(history.add("um"));
    row->setKeyboardSelected(true);
    history.fake.time.advance(0.15s);
    row->handleRowHover(true);

    row->disappear();
    EXPECT_FALSE(row->isShowingPreview());

    history.fake.time.advance(1s);
    EXPECT_FALSE(row->isShowingPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, APointerThatEntersTheRowStartsItsHover) {
    const auto row = rowOf(history.add("um"));
    pointer.restsAt({5, 5});

    row->pointerAt({10, 10});
    history.fake.time.advance(0.2s);
    row->pointerAt({11, 10});  // moving within the row does not count anew
    history.fake.time.advance(0.1s);

    EXPECT_TRUE(row->isShowingPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, APointerThatWasThereBeforeDoesNot) {
    const auto row = rowOf(history.add("um"));
    pointer.restsAt({10, 10});

    row->pointerAt({10, 10});
    row->pointerAt({12, 10});  // still the same stay
    history.fake.time.advance(10s);
    EXPECT_FALSE(row->isShowingPreview());

    row->pointerLeft();
    row->pointerAt({14, 10});
    history.fake.time.advance(0.3s);
    EXPECT_TRUE(row->isShowingPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, ARowScrolledUnderTheRestingPointerStartsNoHover) {
    const auto first = rowOf(history.add("um"));
    const auto second = rowOf(history.add("dois"));
    first->pointerAt({10, 10});

    first->pointerLeft();
    second->pointerAt({10, 10});
    history.fake.time.advance(10s);

    EXPECT_FALSE(first->isShowingPreview());
    EXPECT_FALSE(second->isShowingPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, ThePointersLeavingClosesAfterTheGrace) {
    const auto row = rowOf(history.add("um"));
    row->pointerAt({10, 10});
    history.fake.time.advance(0.3s);

    row->pointerLeft();
    history.fake.time.advance(0.199s);
    EXPECT_TRUE(row->isShowingPreview());

    history.fake.time.advance(0.001s);
    EXPECT_FALSE(row->isShowingPreview());
}

TEST_F(ClipboardEntryRowPreviewTest, APointerThatNeverEnteredTakesNothingWithItWhenItLeaves) {
    const auto row = rowOf(history.add("um"));
    pointer.restsAt({10, 10});
    row->pointerAt({10, 10});
    row->setKeyboardSelected(true);

    row->pointerLeft();
    history.fake.time.advance(0.15s);

    EXPECT_TRUE(row->isShowingPreview());
}

}  // namespace
}  // namespace nettlecap
