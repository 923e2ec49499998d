#pragma once

#include "ui/MenuBarContentView.h"

#include <QQmlEngine>
#include <QQuickItem>

namespace nettlecap {

/// Turns view logic into what a window can show. Needs a QGuiApplication.
class QuickViewFactory {
public:
    /// `imagesDirectory` is where the history's pictures are.
    explicit QuickViewFactory(const Path& imagesDirectory);

    /// The item shows `view`, which must outlive it. Must not outlive the factory.
    std::unique_ptr<QQuickItem> menuBarContent(MenuBarContentView& view);
    /// After an item is gone: gives up what was kept to make the next one sooner.
    void releaseMemory();

private:
    QQmlEngine engine_;
};

}  // namespace nettlecap
