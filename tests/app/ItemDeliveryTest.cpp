#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto copied = "Copiado — use ⌘V para colar";
constexpr auto needsPermission = "Copiado. Autorize Acessibilidade para colar automaticamente.";

const SavedSnippet greeting{.title = "Saudação", .content = "Olá, tudo bem?"};

class ItemDeliveryTest : public AppModelFixture {
protected:
    void makeWithAutoPaste() {
        make({.autoPaste = true});
        startWith({"um"});
    }
    /// From now on each application that comes to the front is among the happenings.
    void watchActivations() {
        activations = system.workspace.onActivation([this](const RunningApplication& application) {
            windows.happenings.push_back(*application.localizedName + " in front");
        });
    }
    std::string inFront() const {
        const auto application = system.workspace.frontmostApplication();
        return application ? *application->localizedName : "nothing";
    }

    Subscription activations;
};

// Onto the pasteboard.

TEST_F(ItemDeliveryTest, CopiesAnEntryAndStandsOnIt) {
    startWith({"um", "dois"});

    model->copy(entry(1));

    EXPECT_EQ(pasteboardText(), "um");
    EXPECT_EQ(status(), copied);
    EXPECT_EQ(model->navigationEntryID(), entry(1).id);
}

TEST_F(ItemDeliveryTest, CopiesASnippetAndStandsNowhere) {
    startWith({"um"});
    model->store().addSnippet("Saudação", "Olá, tudo bem?");
    model->copy(entry(0));

    model->copy(model->store().snippets()->at(0));

    EXPECT_EQ(pasteboardText(), "Olá, tudo bem?");
    EXPECT_EQ(status(), copied);
    EXPECT_EQ(model->navigationEntryID(), std::nullopt);
}

TEST_F(ItemDeliveryTest, DoesNotCaptureWhatItCopied) {
    startWith({"um", "dois"});

    model->copy(entry(1));
    model->copy(greeting);
    wait();

    EXPECT_THAT(history(), ElementsAre("dois", "um"));
}

TEST_F(ItemDeliveryTest, SaysWhenAnEntryCannotBeRecoveredAndStaysWhereItStood) {
    model->start();
    copyPictureOutside();
    copyOutside("um");
    model->copy(entry(0));
    system.files.fail(FileOperation::read, "Input/output error");

    model->copy(entry(1));

    EXPECT_EQ(status(), "Não foi possível recuperar este item");
    EXPECT_EQ(model->navigationEntryID(), entry(0).id);
    EXPECT_EQ(pasteboardText(), "um");
}

TEST_F(ItemDeliveryTest, SaysWhenASnippetCannotBeCopiedAndStaysWhereItStood) {
    startWith({"um"});
    model->copy(entry(0));
    system.pasteboard.setWritesFail(true);

    model->copy(greeting);

    EXPECT_EQ(status(), "Não foi possível copiar a mensagem salva");
    EXPECT_EQ(model->navigationEntryID(), entry(0).id);
}

TEST_F(ItemDeliveryTest, LeavesPanelAndPopoverAndPastesNothingWhenThereIsNothingToPaste) {
    makeWithAutoPaste();
    model->openNettlecap();
    windows.happenings.clear();
    system.pasteboard.setWritesFail(true);

    model->copy(entry(0), true);
    model->copy(greeting, true);
    wait();

    EXPECT_THAT(windows.happenings, IsEmpty());
    EXPECT_EQ(windows.panel, ContentKind::history);
    EXPECT_THAT(system.keyboard.prompts(), IsEmpty());
    EXPECT_EQ(pastes(), 0U);
    EXPECT_THAT(history(), ElementsAre("um"));
}

TEST_F(ItemDeliveryTest, StandsOnTheEntryBeforeItTellsOfTheMessage) {
    startWith({"um"});
    std::optional<Uuid> whenTold;
    const auto subscription =
        model->statusMessage().subscribe([&] { whenTold = model->navigationEntryID(); });

    model->copy(entry(0));

    EXPECT_EQ(whenTold, entry(0).id);
}

TEST_F(ItemDeliveryTest, LeavesPanelAndPopoverWhenItOnlyCopies) {
    startWith({"um"});

    model->copy(entry(0));
    model->copy(greeting);
    wait();

    EXPECT_THAT(windows.happenings, IsEmpty());
    EXPECT_THAT(system.keyboard.prompts(), IsEmpty());
    EXPECT_EQ(pastes(), 0U);
}

// Whether to paste.

TEST_F(ItemDeliveryTest, PastesWhenThePreferenceSaysSo) {
    makeWithAutoPaste();

    model->copy(entry(0));
    wait();
    EXPECT_EQ(pastes(), 1U);

    model->copy(greeting);
    wait();
    EXPECT_EQ(pastes(), 2U);
}

TEST_F(ItemDeliveryTest, PastesWhenAskedToWhateverThePreferenceSays) {
    startWith({"um"});

    model->copy(entry(0), true);
    wait();
    EXPECT_EQ(pastes(), 1U);

    model->copy(greeting, true);
    wait();
    EXPECT_EQ(pastes(), 2U);
}

TEST_F(ItemDeliveryTest, OnlyCopiesWhenAskedToWhateverThePreferenceSays) {
    makeWithAutoPaste();

    model->copy(entry(0), false);
    model->copy(greeting, false);
    wait();

    EXPECT_EQ(pastes(), 0U);
    EXPECT_EQ(status(), copied);
}

TEST_F(ItemDeliveryTest, ReadsThePreferenceAtEachCopy) {
    startWith({"um"});

    model->updatePreferences([](AppPreferences& preferences) { preferences.autoPaste = true; });
    model->copy(entry(0));
    wait();

    EXPECT_EQ(pastes(), 1U);
}

// The paste.

TEST_F(ItemDeliveryTest, ClosesPanelAndPopoverThenBringsTheApplicationToTheFront) {
    system.workspace.setFrontmost(notes);
    startWith({"um"});
    watchActivations();

    model->copy(entry(0), true);

    EXPECT_THAT(windows.happenings, ElementsAre("panel hidden", "popover closed", "Notas in front"));
}

TEST_F(ItemDeliveryTest, ClosesPanelAndPopoverForASnippetToo) {
    startWith({});

    model->copy(greeting, true);

    EXPECT_THAT(windows.happenings, ElementsAre("panel hidden", "popover closed"));
    EXPECT_EQ(pasteboardText(), "Olá, tudo bem?");
}

TEST_F(ItemDeliveryTest, TypesThePasteTwelveHundredthsOfASecondLater) {
    startWith({"um"});

    model->copy(entry(0), true);
    system.time.advance(119ms);
    EXPECT_EQ(pastes(), 0U);

    system.time.advance(1ms);
    EXPECT_THAT(system.keyboard.typed(),
                ElementsAre(KeyEvent{.keyCode = keyCode::v, .flags = modifier::command, .isDown = true},
                            KeyEvent{.keyCode = keyCode::v, .flags = modifier::command, .isDown = false}));
}

TEST_F(ItemDeliveryTest, SaysNothingWhenItPastes) {
    startWith({"um"});

    model->copy(entry(0), true);
    wait();
    EXPECT_EQ(status(), "none");

    model->setMonitoring(false);
    model->copy(greeting, true);
    wait();
    EXPECT_EQ(status(), "Monitoramento pausado");
}

TEST_F(ItemDeliveryTest, StandsOnThePastedEntry) {
    startWith({"um", "dois"});

    model->copy(entry(1), true);

    EXPECT_EQ(standsOn(), "um");
}

TEST_F(ItemDeliveryTest, PastesEachOfTwoItemsAskedForInARow) {
    startWith({"um"});

    model->copy(entry(0), true);
    system.time.advance(50ms);
    model->copy(greeting, true);
    wait();

    EXPECT_EQ(pastes(), 2U);
}

TEST_F(ItemDeliveryTest, PastesNothingOnceTheModelIsGone) {
    startWith({"um"});
    model->copy(entry(0), true);

    model.reset();
    wait();

    EXPECT_EQ(pastes(), 0U);
}

// Permission.

TEST_F(ItemDeliveryTest, LeavesAnItemOnThePasteboardWhenItMayNotType) {
    system.workspace.setFrontmost(notes);
    startWith({"um", "dois"});
    system.workspace.setFrontmost(system.workspace.current());
    system.keyboard.setTrusted(false);

    model->copy(entry(1), true);
    wait();

    EXPECT_EQ(status(), needsPermission);
    EXPECT_EQ(pasteboardText(), "um");
    EXPECT_EQ(standsOn(), "um");
    EXPECT_EQ(pastes(), 0U);
    EXPECT_EQ(inFront(), "Nettlecap");
}

TEST_F(ItemDeliveryTest, PromptsForThePermissionOnceInARun) {
    startWith({"um"});
    system.keyboard.setTrusted(false);

    model->copy(entry(0), true);
    model->copy(greeting, true);
    model->copy(entry(0), true);

    EXPECT_THAT(system.keyboard.prompts(), ElementsAre(true, false, false));
}

TEST_F(ItemDeliveryTest, ItsFirstQuestionCountsWhateverTheAnswer) {
    startWith({"um"});
    model->copy(entry(0), true);
    system.keyboard.setTrusted(false);

    model->copy(entry(0), true);

    EXPECT_THAT(system.keyboard.prompts(), ElementsAre(true, false));
}

TEST_F(ItemDeliveryTest, PastesAsSoonAsThePermissionIsThere) {
    startWith({"um"});
    system.keyboard.setTrusted(false);
    model->copy(entry(0), true);
    wait();
    EXPECT_EQ(pastes(), 0U);

    system.keyboard.setTrusted(true);
    model->copy(entry(0), true);
    wait();
    EXPECT_EQ(pastes(), 1U);
}

}  // namespace
}  // namespace nettlecap
