#pragma once

#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/MenuBarContentView.h"
#include "ui/PrintQt.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace nettlecap {

/// The main view of a model on a system in memory, once it is shown.
class MenuBarContentViewFixture : public testing::Test {
protected:
    ~MenuBarContentViewFixture() override {
        view.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show() {
        MenuBarContentView::Ports ports = contentPorts(history.fake);
        ports.quit = [this] { ++quits; };
        view = std::make_unique<MenuBarContentView>(history.app, ports);
    }
    void search(const QString& text) { view->searchField()->setText(text); }
    bool press(int key) { return view->searchField()->handleKey(key, Qt::NoModifier, false); }

    ClipboardEntryRow* row(int index) { return rowOf<ClipboardEntryRow>(*view->historyRows(), index); }
    SnippetRow* snippetRow(int index) { return rowOf<SnippetRow>(*view->snippetRows(), index); }
    QStringList summaries() {
        QStringList result;
        for (int index = 0; index < view->historyRows()->rowCount(); ++index) result << row(index)->summary();
        return result;
    }
    QStringList titles() {
        QStringList result;
        for (int index = 0; index < view->snippetRows()->rowCount(); ++index)
            result << snippetRow(index)->title();
        return result;
    }
    bool pasted() {
        history.fake.time.advance(Seconds{1});
        return !history.fake.keyboard.typed().empty();
    }
    std::optional<std::string> pasteboard() { return history.fake.pasteboard.string(pasteboardType::text); }

    HistoryOnFakes history;
    int quits = 0;
    std::unique_ptr<MenuBarContentView> view;

private:
    template <class Row>
    static Row* rowOf(RowList& rows, int index) {
        return qobject_cast<Row*>(rows.data(rows.index(index), Qt::UserRole).value<QObject*>());
    }
};

}  // namespace nettlecap
