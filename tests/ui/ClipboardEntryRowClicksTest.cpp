#include "ui/EntryRowFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// What clicks and the context menu of a row do.
class ClipboardEntryRowClicksTest : public EntryRowFixture {
protected:
    ClipboardEntryRowClicksTest() { history.fake.keyboard.setTrusted(true); }

    bool pasted() {
        history.fake.time.advance(1s);
        return !history.fake.keyboard.typed().empty();
    }
    void preferPasting(bool autoPaste, bool onDoubleClick) {
        prefer([&](AppPreferences& preferences) {
            preferences.autoPaste = autoPaste;
            preferences.pasteHistoryOnDoubleClick = onDoubleClick;
        });
    }
    QStringList labels(ClipboardEntryRow& row) {
        QStringList labels;
        for (const QVariant& item : row.menuItems()) {
            const auto line = item.value<RowMenuItem>();
            labels << (line.isDivider ? "—" : line.label);
        }
        return labels;
    }
    std::optional<std::string> pasteboard() { return history.fake.pasteboard.string(pasteboardType::text); }
};

TEST_F(ClipboardEntryRowClicksTest, ASingleClickPastesWherePastingIsOn) {
    preferPasting(true, false);

    rowOf(history.add("um"))->handleRowClick(1);

    EXPECT_EQ(pasteboard(), "um");
    EXPECT_TRUE(pasted());
}

TEST_F(ClipboardEntryRowClicksTest, ASingleClickOnlyCopiesWhereADoubleOnePastes) {
    preferPasting(true, true);

    rowOf(history.add("um"))->handleRowClick(1);

    EXPECT_EQ(pasteboard(), "um");
    EXPECT_FALSE(pasted());
    EXPECT_EQ(*history.app.statusMessage(), "Copiado — use ⌘V para colar");
}

TEST_F(ClipboardEntryRowClicksTest, ADoubleClickPastesWhereThatIsPreferred) {
    preferPasting(true, true);
    const auto row = rowOf(history.add("um"));

    row->handleRowClick(1);
    row->handleRowClick(2);

    EXPECT_TRUE(pasted());
    EXPECT_EQ(history.fake.pasteboard.changeCount(), 2);
    EXPECT_EQ(selections, 2);
}

TEST_F(ClipboardEntryRowClicksTest, NoClickPastesWherePastingIsOff) {
    for (const bool onDoubleClick : {false, true}) {
        preferPasting(false, onDoubleClick);
        const auto row = rowOf(history.add("um"));

        row->handleRowClick(1);
        row->handleRowClick(2);

        EXPECT_EQ(pasteboard(), "um");
        EXPECT_FALSE(pasted());
    }
}

TEST_F(ClipboardEntryRowClicksTest, AClickSelectsBeforeItCopies) {
    const ClipboardEntry entry = history.add("um");
    bool wasCopied = true;
    ClipboardEntryRow row({.app = history.app,
                           .clock = history.fake.time,
                           .scheduler = history.fake.time,
                           .identifiers = history.fake.identifiers,
                           .images = history.fake.images,
                           .text = history.fake.text,
                           .pointer = pointer},
                          StoredEntry(entry),
                          {.select = [&] { wasCopied = history.fake.pasteboard.changeCount() > 0; },
                           .requestDelete = [](const ClipboardEntry&) {}},
                          false);

    row.handleRowClick(1);

    EXPECT_FALSE(wasCopied);
}

TEST_F(ClipboardEntryRowClicksTest, TheMenuOfATextHasFourLines) {
    const auto row = rowOf(history.add("um"));

    EXPECT_EQ(labels(*row), (QStringList{"Colar agora", "Copiar", "Favoritar", "—", "Excluir…"}));
    EXPECT_TRUE(row->menuItems().last().value<RowMenuItem>().isDestructive);
}

TEST_F(ClipboardEntryRowClicksTest, TheMenuOfAPictureAlsoShowsIt) {
    EXPECT_EQ(labels(*rowOf(history.addImage("gato.png"))),
              (QStringList{"Colar agora", "Copiar", "Favoritar", "Ver imagem", "—", "Excluir…"}));
}

TEST_F(ClipboardEntryRowClicksTest, TheMenuOfAFavouriteTakesThatAway) {
    ClipboardEntry entry = history.add("um");
    entry.isFavorite = true;

    EXPECT_EQ(labels(*rowOf(entry))[2], "Remover dos favoritos");
}

TEST_F(ClipboardEntryRowClicksTest, TheMenuPastesWhateverIsPreferred) {
    preferPasting(false, true);

    rowOf(history.add("um"))->performMenuItem(0);

    EXPECT_EQ(pasteboard(), "um");
    EXPECT_TRUE(pasted());
}

TEST_F(ClipboardEntryRowClicksTest, TheMenuCopiesWithoutPastingWhateverIsPreferred) {
    preferPasting(true, false);

    rowOf(history.add("um"))->performMenuItem(1);

    EXPECT_EQ(pasteboard(), "um");
    EXPECT_FALSE(pasted());
}

TEST_F(ClipboardEntryRowClicksTest, TheMenuTogglesTheFavouriteAsTheStarDoes) {
    rowOf(history.add("um"))->performMenuItem(2);

    EXPECT_TRUE((*history.app.store().entries())[0]->isFavorite);
    EXPECT_EQ(*history.app.statusMessage(), "Adicionado aos favoritos");
}

TEST_F(ClipboardEntryRowClicksTest, TheMenuAsksForTheEntrysDeletion) {
    const ClipboardEntry entry = history.add("um");

    rowOf(entry)->performMenuItem(4);

    EXPECT_EQ(deletionRequests, std::vector{entry.id});
    EXPECT_EQ(history.app.store().entries()->size(), 1U);
}

}  // namespace
}  // namespace nettlecap
