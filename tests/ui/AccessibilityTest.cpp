#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickPanel.h"
#include "ui/qml/QuickViewFactory.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// The panel as assistive technology sees it.
class AccessibilityTest : public testing::Test {
protected:
    AccessibilityTest() { QAccessible::setActive(true); }
    ~AccessibilityTest() override {
        panel.dropContent();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show() {
        MenuBarContentView::Ports ports = contentPorts(history.fake);
        ports.quit = [this] { ++quits; };
        panel.setContent(views.menuBarContent(std::make_unique<MenuBarContentView>(history.app, ports)));
        panel.setContentSize({430, 560});
        panel.makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntilActive(panel));
    }

    /// In the panel, or in the sheet over it.
    QAccessibleInterface* find(QAccessible::Role role, const QString& name) {
        if (auto* found = find(QAccessible::queryAccessibleInterface(&panel), role, name)) return found;
        QuickSheet* sheet = SheetPlace::of(&panel)->window();
        return sheet ? find(QAccessible::queryAccessibleInterface(sheet), role, name) : nullptr;
    }
    static QAccessibleInterface* find(QAccessibleInterface* from, QAccessible::Role role,
                                      const QString& name) {
        if (from->role() == role && from->text(QAccessible::Name) == name) return from;
        for (int index = 0; index < from->childCount(); ++index)
            if (auto* found = find(from->child(index), role, name)) return found;
        return nullptr;
    }

    static void act(QAccessibleInterface* control, const QString& action) {
        ASSERT_NE(control, nullptr);
        ASSERT_TRUE(control->actionInterface()->actionNames().contains(action));
        control->actionInterface()->doAction(action);
    }
    void press(QAccessible::Role role, const QString& name) {
        SCOPED_TRACE(name.toStdString());
        act(find(role, name), QAccessibleActionInterface::pressAction());
    }

    HistoryOnFakes history;
    int quits = 0;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    FakeNativeWindows native;
    FakeScreens screens;
    QuickPanel panel{native, screens};
};

TEST_F(AccessibilityTest, RowsAreItemsOfAListWithNamesAndDescriptions) {
    history.add("um", 5min);
    show();

    QAccessibleInterface* row = find(QAccessible::ListItem, "um");

    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->text(QAccessible::Description), "Notas · há 5 minutos");
    EXPECT_NE(find(QAccessible::List, "Histórico"), nullptr);
}

TEST_F(AccessibilityTest, AMaskedTextIsMaskedHereToo) {
    history.addSensitive("4111 1111 1111 1111", SensitiveContentKind::paymentCard);
    show();

    EXPECT_NE(find(QAccessible::ListItem, "41••••••••••••"), nullptr);
    EXPECT_EQ(find(QAccessible::ListItem, "4111 1111 1111 1111"), nullptr);
}

TEST_F(AccessibilityTest, PressingARowCopiesIt) {
    history.add("um", 1min);
    history.add("dois", 2min);
    show();
    QAccessibleInterface* row = find(QAccessible::ListItem, "dois");

    ASSERT_TRUE(row->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());

    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "dois");
}

TEST_F(AccessibilityTest, TheSelectedRowSaysSo) {
    history.add("um", 1min);
    show();
    QAccessibleInterface* row = find(QAccessible::ListItem, "um");
    EXPECT_TRUE(row->state().selectable);
    EXPECT_FALSE(row->state().selected);

    QTest::keyClick(&panel, Qt::Key_Down);

    EXPECT_TRUE(row->state().selected);
}

TEST_F(AccessibilityTest, ARowThatIsGivenTheFocusIsSelectedAndTheSearchFieldKeepsTheKeyboard) {
    history.add("um", 1min);
    const ClipboardEntry second = history.add("dois", 2min);
    show();

    act(find(QAccessible::ListItem, "dois"), QAccessibleActionInterface::setFocusAction());

    EXPECT_TRUE(find(QAccessible::ListItem, "dois")->state().selected);
    EXPECT_EQ(history.app.navigationEntryID(), second.id);
    EXPECT_TRUE(find(QAccessible::EditableText, "Buscar no histórico")->state().focused);
}

TEST_F(AccessibilityTest, TheSelectedRowClaimsTheFocusSoThatItIsReadOut) {
    history.add("um", 1min);
    history.add("dois", 2min);
    show();

    QTest::keyClick(&panel, Qt::Key_Down);
    EXPECT_TRUE(find(QAccessible::ListItem, "um")->state().focused);

    QTest::keyClick(&panel, Qt::Key_Down);
    EXPECT_FALSE(find(QAccessible::ListItem, "um")->state().focused);
    EXPECT_TRUE(find(QAccessible::ListItem, "dois")->state().focused);
}

TEST_F(AccessibilityTest, TheSelectedRowDoesNotClaimTheFocusWhileSomethingIsAsked) {
    history.add("um", 1min);
    show();
    QTest::keyClick(&panel, Qt::Key_Down);
    ASSERT_TRUE(find(QAccessible::ListItem, "um")->state().focused);

    QTest::keyClick(&panel, Qt::Key_Delete);
    EXPECT_FALSE(find(QAccessible::ListItem, "um")->state().focused);
    EXPECT_TRUE(find(QAccessible::ListItem, "um")->state().selected);

    QTest::keyClick(&panel, Qt::Key_Escape);
    EXPECT_TRUE(find(QAccessible::ListItem, "um")->state().focused);
}

TEST_F(AccessibilityTest, TheKeyboardStandsOnTheLinesOfAMenu) {
    history.add("um", 1min);
    show();
    QTest::keyClick(&panel, Qt::Key_Down);

    QTest::keyClick(&panel, Qt::Key_Menu);
    EXPECT_TRUE(find(QAccessible::PopupMenu, "")->state().focused);

    for (const char* line : {"Colar agora", "Copiar", "Favoritar", "Excluir…"}) {
        QTest::keyClick(&panel, Qt::Key_Down);
        EXPECT_TRUE(find(QAccessible::MenuItem, line)->state().focused) << line;
    }
    act(find(QAccessible::MenuItem, "Copiar"), QAccessibleActionInterface::setFocusAction());
    QTest::keyClick(&panel, Qt::Key_Return);
    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "um");
}

TEST_F(AccessibilityTest, TheMenuOfARowIsOpenedAndUsed) {
    history.add("um", 1min);
    show();

    act(find(QAccessible::ListItem, "um"), QAccessibleActionInterface::toggleAction());
    ASSERT_NE(find(QAccessible::PopupMenu, ""), nullptr);
    press(QAccessible::MenuItem, "Favoritar");

    EXPECT_TRUE(history.app.store().entries()->front()->isFavorite);
    EXPECT_EQ(find(QAccessible::MenuItem, "Favoritar"), nullptr);
}

TEST_F(AccessibilityTest, TheStarOfARowIsAButtonThatSaysWhatItDoes) {
    history.add("um", 1min);
    show();

    press(QAccessible::Button, "Favoritar");
    EXPECT_TRUE(history.app.store().entries()->front()->isFavorite);

    press(QAccessible::Button, "Remover dos favoritos");
    EXPECT_FALSE(history.app.store().entries()->front()->isFavorite);
}

TEST_F(AccessibilityTest, TheSectionsAreAChoiceOfTwo) {
    show();
    EXPECT_TRUE(find(QAccessible::RadioButton, "Histórico")->state().checked);

    press(QAccessible::RadioButton, "Salvos");

    EXPECT_TRUE(find(QAccessible::RadioButton, "Salvos")->state().checked);
    EXPECT_FALSE(find(QAccessible::RadioButton, "Histórico")->state().checked);
    EXPECT_NE(find(QAccessible::EditableText, "Buscar no salvos"), nullptr);
}

TEST_F(AccessibilityTest, HeaderAndFooterCanBePressed) {
    show();

    press(QAccessible::Button, "Monitorando");
    EXPECT_FALSE(*history.app.isMonitoring());
    press(QAccessible::Button, "Pausado");
    EXPECT_TRUE(*history.app.isMonitoring());

    press(QAccessible::Button, "Ajustes");
    EXPECT_EQ(history.windows.panel, ContentKind::settings);

    press(QAccessible::Button, "Sair");
    EXPECT_EQ(quits, 1);
}

TEST_F(AccessibilityTest, AConfirmationIsADialogThatCanBeAnswered) {
    history.add("um", 1min);
    show();

    press(QAccessible::Button, "Limpar");
    ASSERT_NE(find(QAccessible::Dialog, "Limpar os itens não favoritados?"), nullptr);
    press(QAccessible::Button, "Cancelar");
    EXPECT_EQ(history.app.store().entries()->size(), 1U);

    press(QAccessible::Button, "Limpar");
    press(QAccessible::Button, "Limpar histórico");
    EXPECT_TRUE(history.app.store().entries()->empty());
}

TEST_F(AccessibilityTest, AMessageIsAnItemThatCanBePressedAndEdited) {
    history.app.store().addSnippet("Assinatura", "Até logo");
    show();
    press(QAccessible::RadioButton, "Salvos");
    ASSERT_NE(find(QAccessible::List, "Salvos"), nullptr);
    EXPECT_EQ(find(QAccessible::ListItem, "Assinatura")->text(QAccessible::Description),
              "Clique para colar esta mensagem");
    EXPECT_NE(find(QAccessible::StaticText, "Até logo"), nullptr);

    press(QAccessible::ListItem, "Assinatura");
    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "Até logo");

    press(QAccessible::Button, "Editar mensagem");
    EXPECT_NE(find(QAccessible::Dialog, "Editar mensagem"), nullptr);
}

TEST_F(AccessibilityTest, TheFirstMessageIsCreatedFromTheEmptyList) {
    show();
    press(QAccessible::RadioButton, "Salvos");

    press(QAccessible::Button, "Criar mensagem");

    EXPECT_NE(find(QAccessible::Dialog, "Nova mensagem salva"), nullptr);
}

TEST_F(AccessibilityTest, StatusAndStorageErrorAreAnnounced) {
    history.add("um");
    show();

    find(QAccessible::ListItem, "um")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    history.fake.files.fail(FileOperation::write, "No space left on device");
    history.app.store().persist();

    EXPECT_NE(find(QAccessible::AlertMessage, "Copiado — use ⌘V para colar"), nullptr);
    EXPECT_NE(find(QAccessible::AlertMessage, "Não foi possível salvar o histórico: No space left on device"),
              nullptr);
}

TEST_F(AccessibilityTest, AnEmptyHistoryIsReadOut) {
    show();

    EXPECT_NE(find(QAccessible::StaticText, "Nenhuma cópia ainda"), nullptr);
    EXPECT_NE(find(QAccessible::StaticText, "Textos e imagens copiados aparecerão aqui."), nullptr);
}

}  // namespace
}  // namespace nettlecap
