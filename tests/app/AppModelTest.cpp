#include "app/AppModel.h"
#include "platform/fake/FakePlatform.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;
using testing::SizeIs;

const Path folder = "/home/ana/.local/share/Nettlecap";

class AppModelTest : public testing::Test {
protected:
    void make(const AppPreferences& preferences) {
        model.reset();
        model = std::make_unique<AppModel>(system.platform(), preferences);
    }
    /// Takes a millisecond, so that no two copies have one date.
    void copyOutside(const FakePasteboard::Offer& offer) {
        system.pasteboard.copyFromOutside(offer);
        system.time.advance(1ms);
    }
    void copyOutside(std::string text) { copyOutside({{"public.utf8-plain-text", Bytes(std::move(text))}}); }
    const ClipboardEntry& entry(std::size_t index) const { return *model->store().entries()->at(index); }

    FakePlatform system;
    std::unique_ptr<AppModel> model = std::make_unique<AppModel>(system.platform(), AppPreferences());
};

// Construction.

TEST_F(AppModelTest, BeginsWithoutAMessageAndWithCaptureOn) {
    EXPECT_TRUE(*model->isMonitoring());
    EXPECT_EQ(*model->statusMessage(), std::nullopt);
    EXPECT_EQ(model->navigationEntryID(), std::nullopt);
    EXPECT_EQ(*model->preferences(), AppPreferences());
}

TEST_F(AppModelTest, LoadsTheHistoryOfTheUsersFolder) {
    model->start();
    copyOutside("olá");

    make({});

    EXPECT_TRUE(system.files.contents(folder / "history.json"));
    EXPECT_EQ(entry(0).text, "olá");
}

TEST_F(AppModelTest, GivesTheStoreTheLimitAsItStands) {
    model->start();
    for (int i = 1; i <= 12; ++i) copyOutside("texto " + std::to_string(i));

    make({.maxHistoryItems = 11});
    EXPECT_THAT(*model->store().entries(), SizeIs(11));
    make({.maxHistoryItems = 5});
    EXPECT_THAT(*model->store().entries(), SizeIs(10));
}

// Start.

TEST_F(AppModelTest, CapturesFromTheStartOnWhatIsCopiedAfterItsConstruction) {
    copyOutside("antes");
    make({});
    copyOutside("olá");
    EXPECT_THAT(*model->store().entries(), SizeIs(0));

    model->start();
    ASSERT_THAT(*model->store().entries(), SizeIs(1));
    EXPECT_EQ(entry(0).text, "olá");
}

TEST_F(AppModelTest, StartsOnce) {
    model->start();
    const auto tasks = system.time.waitingTasks();

    model->start();

    EXPECT_EQ(system.time.waitingTasks(), tasks);
}

TEST_F(AppModelTest, CapturesPicturesAsThePreferencesSay) {
    const FakePasteboard::Offer picture{{"public.png", Bytes("\x89PNG\r\n\x1a\nflor")}};
    make({.captureImages = false});
    model->start();
    copyOutside(picture);
    EXPECT_THAT(*model->store().entries(), SizeIs(0));

    make({.captureImages = true});
    model->start();
    copyOutside(picture);
    EXPECT_THAT(*model->store().entries(), SizeIs(1));
}

// Copying an item.

TEST_F(AppModelTest, CopiesAnEntryAndStandsOnIt) {
    model->start();
    copyOutside("um");
    copyOutside("dois");

    model->copy(entry(1));

    EXPECT_EQ(system.pasteboard.string("public.utf8-plain-text"), "um");
    EXPECT_EQ(*model->statusMessage(), "Copiado — use ⌘V para colar");
    EXPECT_EQ(model->navigationEntryID(), entry(1).id);
}

TEST_F(AppModelTest, CopiesASnippetAndStandsNowhere) {
    model->start();
    copyOutside("um");
    model->store().addSnippet("Saudação", "Olá, tudo bem?");
    model->copy(entry(0));

    model->copy(model->store().snippets()->at(0));

    EXPECT_EQ(system.pasteboard.string("public.utf8-plain-text"), "Olá, tudo bem?");
    EXPECT_EQ(*model->statusMessage(), "Copiado — use ⌘V para colar");
    EXPECT_EQ(model->navigationEntryID(), std::nullopt);
}

TEST_F(AppModelTest, SaysWhenAnEntryCannotBeRecoveredAndStaysWhereItStood) {
    model->start();
    copyOutside({{"public.png", Bytes("\x89PNG\r\n\x1a\nflor")}});
    copyOutside("um");
    model->copy(entry(0));
    system.files.fail(FileOperation::read, "Input/output error");

    model->copy(entry(1));

    EXPECT_EQ(*model->statusMessage(), "Não foi possível recuperar este item");
    EXPECT_EQ(model->navigationEntryID(), entry(0).id);
    EXPECT_EQ(system.pasteboard.string("public.utf8-plain-text"), "um");
}

TEST_F(AppModelTest, SaysWhenASnippetCannotBeCopiedAndStaysWhereItStood) {
    model->start();
    copyOutside("um");
    model->copy(entry(0));
    system.pasteboard.setWritesFail(true);

    model->copy(SavedSnippet{.title = "Saudação", .content = "Olá"});

    EXPECT_EQ(*model->statusMessage(), "Não foi possível copiar a mensagem salva");
    EXPECT_EQ(model->navigationEntryID(), entry(0).id);
}

TEST_F(AppModelTest, StandsOnTheEntryBeforeItTellsOfTheMessage) {
    model->start();
    copyOutside("um");
    std::optional<Uuid> whenTold;
    const auto subscription =
        model->statusMessage().subscribe([&] { whenTold = model->navigationEntryID(); });

    model->copy(entry(0));

    EXPECT_EQ(whenTold, entry(0).id);
}

TEST_F(AppModelTest, ForgetsWhereItStandsWithEveryCapture) {
    model->start();
    copyOutside("um");
    model->copy(entry(0));
    system.time.advance(1s);
    EXPECT_EQ(model->navigationEntryID(), entry(0).id);

    copyOutside("um");
    EXPECT_EQ(model->navigationEntryID(), std::nullopt);
}

TEST_F(AppModelTest, StandsWhereItStoodThroughWhatIsNotCaptured) {
    model->start();
    copyOutside("um");
    model->copy(entry(0));

    copyOutside("  ");
    copyOutside({{"org.nspasteboard.ConcealedType", Bytes("")}});

    EXPECT_EQ(model->navigationEntryID(), entry(0).id);
}

TEST_F(AppModelTest, KeepsItsMessageUntilTheNextOne) {
    model->start();
    copyOutside("um");
    model->copy(entry(0));

    system.time.advance(3600s);
    copyOutside("dois");

    EXPECT_EQ(*model->statusMessage(), "Copiado — use ⌘V para colar");
}

}  // namespace
}  // namespace nettlecap
