#include "ui/qml/QuickViewFactory.h"

#include "ui/ImagePreviewPopover.h"
#include "ui/qml/HistoryPictures.h"
#include "ui/qml/QuickHostedView.h"
#include "ui/qml/QuickItems.h"

namespace nettlecap {

QuickViewFactory::QuickViewFactory(const Path& imagesDirectory) {
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    const auto addPictures = [&](const char* name, HistoryPictures::Use use) {
        pictures_.push_back(new HistoryPictures(imagesDirectory, use));
        engine_.addImageProvider(name, pictures_.back());
    };
    addPictures(ClipboardEntryRow::pictureProvider, HistoryPictures::Use::tile);
    addPictures(NavigationHUDView::pictureProvider, HistoryPictures::Use::card);
    addPictures(ImagePreviewPopover::pictureProvider, HistoryPictures::Use::card);
}

QuickViewFactory::~QuickViewFactory() {
    for (HistoryPictures* pictures : pictures_) pictures->end();
}

std::unique_ptr<HostedView> QuickViewFactory::navigationHUD(std::unique_ptr<NavigationHUDView> view) {
    const QVariantMap shown{{"view", QVariant::fromValue(view.get())}};
    return make("NavigationHUDView", shown, std::move(view));
}

std::unique_ptr<HostedView> QuickViewFactory::menuBarContent(std::unique_ptr<MenuBarContentView> view) {
    const QVariantMap shown{{"view", QVariant::fromValue(view.get())}};
    return make("MenuBarContentView", shown, std::move(view));
}

std::unique_ptr<HostedView> QuickViewFactory::settings(std::unique_ptr<SettingsView> view,
                                                       std::unique_ptr<SettingsNavigationButton> button) {
    const QVariantMap shown{{"view", QVariant::fromValue(view.get())},
                            {"navigation", QVariant::fromValue(button.get())}};
    button.release()->setParent(view.get());
    return make("SettingsContent", shown, std::move(view));
}

std::unique_ptr<HostedView> QuickViewFactory::make(const char* name, const QVariantMap& properties,
                                                   std::unique_ptr<QObject> owned) {
    QQmlEngine::setObjectOwnership(owned.get(), QQmlEngine::CppOwnership);
    auto item = makeItem(engine_, QString::fromLatin1(name), properties);
    return std::make_unique<QuickHostedView>(std::move(item), std::move(owned));
}

/// The components stay: loaded anew, their types have new names, and of those Qt keeps a record.
void QuickViewFactory::releaseMemory() { engine_.collectGarbage(); }

}  // namespace nettlecap
