#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
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
        panel.setContent(views.menuBarContent(
            std::make_unique<MenuBarContentView>(history.app, contentPorts(history.fake))));
        panel.makeKeyAndOrderFront();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    }

    QAccessibleInterface* find(QAccessible::Role role, const QString& name) {
        return find(QAccessible::queryAccessibleInterface(&panel), role, name);
    }
    static QAccessibleInterface* find(QAccessibleInterface* from, QAccessible::Role role,
                                      const QString& name) {
        if (from->role() == role && from->text(QAccessible::Name) == name) return from;
        for (int index = 0; index < from->childCount(); ++index)
            if (auto* found = find(from->child(index), role, name)) return found;
        return nullptr;
    }

    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    FakeNativeWindows native;
    QuickPanel panel{{430, 560}, native};
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

TEST_F(AccessibilityTest, TheSelectedRowSaysSoAndHasTheFocus) {
    history.add("um", 1min);
    show();
    QAccessibleInterface* row = find(QAccessible::ListItem, "um");
    EXPECT_TRUE(row->state().selectable);
    EXPECT_FALSE(row->state().selected);

    QTest::keyClick(&panel, Qt::Key_Down);

    EXPECT_TRUE(row->state().selected);
    EXPECT_TRUE(row->state().focused);
    EXPECT_EQ(panel.activeFocusItem(), row->object());
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
