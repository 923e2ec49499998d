#include "ui/qml/QuickViewFactory.h"

#include "ui/qml/HistoryPictures.h"

#include <QQmlComponent>

namespace nettlecap {

QuickViewFactory::QuickViewFactory(const Path& imagesDirectory) {
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine_.addImageProvider(ClipboardEntryRow::pictureProvider, new HistoryPictures(imagesDirectory));
}

std::unique_ptr<QQuickItem> QuickViewFactory::menuBarContent(MenuBarContentView& view) {
    QQmlComponent component(&engine_, QUrl(QStringLiteral("qrc:/qt/qml/Nettlecap/MenuBarContentView.qml")));
    if (!component.isReady()) qFatal("%s", qPrintable(component.errorString()));  // a broken build
    std::unique_ptr<QObject> content(
        component.createWithInitialProperties({{"view", QVariant::fromValue(&view)}}));
    QQmlEngine::setObjectOwnership(content.get(), QQmlEngine::CppOwnership);
    return std::unique_ptr<QQuickItem>(qobject_cast<QQuickItem*>(content.release()));
}

void QuickViewFactory::releaseMemory() {
    engine_.collectGarbage();
    engine_.trimComponentCache();
}

}  // namespace nettlecap
