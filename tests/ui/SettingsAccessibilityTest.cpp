#include "ui/PrintQt.h"
#include "ui/SettingsOnFakes.h"
#include "ui/SettingsView.h"
#include "ui/SnippetEditorView.h"
#include "ui/Waiting.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// The settings and the snippet editor as assistive technology sees them.
class SettingsAccessibilityTest : public testing::Test {
protected:
    SettingsAccessibilityTest() {
        QAccessible::setActive(true);
        engine.addImportPath("qrc:/qt/qml");
    }

    void show(const char* name, QObject* shown) {
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Nettlecap/%1.qml").arg(name)));
        content.reset(qobject_cast<QQuickItem*>(
            component.createWithInitialProperties({{"view", QVariant::fromValue(shown)}})));
        ASSERT_NE(content, nullptr) << component.errorString().toStdString();
        content->setParentItem(window.contentItem());
        content->setSize({440, 560});
        window.resize(440, 560);
        window.show();
        ASSERT_TRUE(waitUntilExposed(window));
    }
    void showSettings() { show("SettingsView", &settings); }

    QAccessibleInterface* find(QAccessible::Role role, const QString& name, const QString& description = {}) {
        return find(QAccessible::queryAccessibleInterface(&window), role, name, description);
    }
    static QAccessibleInterface* find(QAccessibleInterface* from, QAccessible::Role role, const QString& name,
                                      const QString& description) {
        if (from->role() == role && from->text(QAccessible::Name) == name &&
            (description.isEmpty() || from->text(QAccessible::Description) == description))
            return from;
        for (int index = 0; index < from->childCount(); ++index)
            if (auto* found = find(from->child(index), role, name, description)) return found;
        return nullptr;
    }
    static void act(QAccessibleInterface* control, const QString& action) {
        ASSERT_NE(control, nullptr);
        ASSERT_TRUE(control->actionInterface()->actionNames().contains(action));
        control->actionInterface()->doAction(action);
    }
    static void press(QAccessibleInterface* control) {
        act(control, QAccessibleActionInterface::pressAction());
    }

    SettingsOnFakes system;
    SettingsView settings{system.app};
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> content;
};

TEST_F(SettingsAccessibilityTest, SectionsAreHeadings) {
    showSettings();

    for (const char* title :
         {"Atualizações", "Atalhos globais", "Comportamento", "Armazenamento", "Privacidade"})
        EXPECT_NE(find(QAccessible::Heading, title), nullptr) << title;
}

TEST_F(SettingsAccessibilityTest, ButtonsCanBePressed) {
    showSettings();

    press(find(QAccessible::Button, "Buscar atualizações…"));
    EXPECT_EQ(system.services.checks, 1);

    system.app.updatePreferences([](AppPreferences& preferences) { preferences.nextShortcut.keyCode = 0; });
    press(find(QAccessible::Button, "Restaurar atalhos padrão"));
    EXPECT_EQ(system.stored(), AppPreferences());
}

TEST_F(SettingsAccessibilityTest, SwitchesAreCheckBoxesThatToggle) {
    showSettings();
    QAccessibleInterface* images = find(QAccessible::CheckBox, "Guardar imagens");
    ASSERT_NE(images, nullptr);
    EXPECT_TRUE(images->state().checkable);
    EXPECT_TRUE(images->state().checked);

    EXPECT_NE(find(images, QAccessible::StaticText, "Ativado", ""), nullptr);

    act(images, QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(images->state().checked);
    EXPECT_NE(find(images, QAccessible::StaticText, "Desativado", ""), nullptr);
    EXPECT_FALSE(system.stored().captureImages);

    press(images);
    EXPECT_TRUE(system.stored().captureImages);
}

TEST_F(SettingsAccessibilityTest, ADisabledSwitchSaysWhyAndDoesNothing) {
    showSettings();
    QAccessibleInterface* twoClicks =
        find(QAccessible::CheckBox, "Usar dois cliques para colar no histórico");
    ASSERT_NE(twoClicks, nullptr);
    EXPECT_TRUE(twoClicks->state().readOnly);
    EXPECT_FALSE(twoClicks->state().focusable);
    EXPECT_EQ(twoClicks->text(QAccessible::Description),
              "Ative a colagem automática para escolher entre um ou dois cliques.");

    press(twoClicks);

    EXPECT_TRUE(system.stored().pasteHistoryOnDoubleClick);
}

TEST_F(SettingsAccessibilityTest, ModifiersAreTogglesOfTheirShortcut) {
    showSettings();
    QAccessibleInterface* shift = find(QAccessible::CheckBox, "⇧", "Item seguinte");
    ASSERT_NE(shift, nullptr);
    EXPECT_TRUE(shift->state().checkable);
    EXPECT_FALSE(shift->state().checked);

    press(shift);

    EXPECT_TRUE(shift->state().checked);
    EXPECT_EQ(system.stored().nextShortcut.modifiers, modifier::command | modifier::shift);
}

TEST_F(SettingsAccessibilityTest, AKeyCanBeChosen) {
    showSettings();
    QAccessibleInterface* picker = find(QAccessible::ComboBox, "Tecla", "Alternar favorito: F");
    press(picker);
    // The last of the list is out of sight.
    ASSERT_TRUE(waitUntil([this] { return find(QAccessible::ListItem, "↑") != nullptr; }));

    EXPECT_TRUE(find(QAccessible::ListItem, "F")->state().focused);
    EXPECT_TRUE(find(QAccessible::ListItem, "F")->state().selected);
    press(find(QAccessible::ListItem, "↑"));

    EXPECT_EQ(system.stored().toggleFavoriteShortcut.keyCode, 126U);
    EXPECT_EQ(picker->text(QAccessible::Description), "Alternar favorito: ↑");
}

TEST_F(SettingsAccessibilityTest, TheLimitGoesUpAndDown) {
    showSettings();
    QAccessibleInterface* stepper = find(QAccessible::SpinBox, "Limite do histórico: 500 itens");

    act(stepper, QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(system.stored().maxHistoryItems, 550);
    EXPECT_EQ(stepper->text(QAccessible::Name), "Limite do histórico: 550 itens");

    act(stepper, QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(system.stored().maxHistoryItems, 500);
}

TEST_F(SettingsAccessibilityTest, TheLimitIsAValueWithinItsScale) {
    showSettings();
    QAccessibleValueInterface* value =
        find(QAccessible::SpinBox, "Limite do histórico: 500 itens")->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toInt(), 500);
    EXPECT_EQ(value->minimumValue().toInt(), 50);
    EXPECT_EQ(value->maximumValue().toInt(), 5000);
    EXPECT_EQ(value->minimumStepSize().toInt(), 50);

    value->setCurrentValue(700);
    EXPECT_EQ(system.stored().maxHistoryItems, 700);
    value->setCurrentValue(20);
    EXPECT_EQ(system.stored().maxHistoryItems, 50);
    value->setCurrentValue(10);
    EXPECT_EQ(value->currentValue().toInt(), 50);

    system.app.updatePreferences([](AppPreferences& preferences) { preferences.maxHistoryItems = 900; });
    EXPECT_EQ(value->currentValue().toInt(), 900);
}

TEST_F(SettingsAccessibilityTest, FiguresAndNotesAreReadOut) {
    showSettings();

    EXPECT_NE(find(QAccessible::StaticText, "Histórico armazenado: 0 itens • 0 imagens"), nullptr);
    EXPECT_NE(find(QAccessible::StaticText, "As alterações são aplicadas imediatamente."), nullptr);
    EXPECT_NE(find(QAccessible::StaticText, "Permissão de Acessibilidade concedida"), nullptr);
}

TEST_F(SettingsAccessibilityTest, ThePurgeIsADialogThatCanBeAnswered) {
    system.add("um");
    showSettings();
    press(find(QAccessible::Button, "Limpar histórico…"));

    EXPECT_NE(find(QAccessible::Dialog, "Limpar o histórico?"), nullptr);
    press(find(QAccessible::Button, "Cancelar"));
    EXPECT_FALSE(settings.showPurgeConfirmation());

    press(find(QAccessible::Button, "Limpar histórico…"));
    press(find(QAccessible::Button, "Limpar"));
    EXPECT_TRUE(system.app.store().entries()->empty());
}

TEST_F(SettingsAccessibilityTest, TheEditorsFieldsAndButtonsHaveNames) {
    std::string saved;
    SnippetEditorView editor(
        SavedSnippet{.title = "a", .content = "b"}, system.fake.pasteboard,
        {.save = [&](std::string_view, std::string_view text) { saved = text; }, .dismiss = [] {}});
    show("SnippetEditorView", &editor);

    ASSERT_NE(find(QAccessible::Dialog, "Editar mensagem"), nullptr);
    ASSERT_NE(find(QAccessible::EditableText, "Título"), nullptr);
    QAccessibleInterface* text = find(QAccessible::EditableText, "Conteúdo");
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->state().multiLine);
    EXPECT_EQ(text->text(QAccessible::Value), "b");
    press(find(QAccessible::Button, "Salvar"));
    EXPECT_EQ(saved, "b");
    content.reset();
}

}  // namespace
}  // namespace nettlecap
