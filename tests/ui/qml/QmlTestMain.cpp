#include "ui/ImagePreviewPopover.h"
#include "ui/qml/Cards.h"
#include "ui/qml/History.h"
#include "ui/qml/HistoryPictures.h"
#include "ui/qml/Settings.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QtQuickTest>

namespace {

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { QQuickWindow::setGraphicsApi(QSGRendererInterface::Software); }
    void qmlEngineAvailable(QQmlEngine* engine) {
        using nettlecap::HistoryPictures;
        const nettlecap::Path folder = history_.picturesFolder().toStdString();
        engine->addImportPath("qrc:/qt/qml");
        engine->addImageProvider(nettlecap::ClipboardEntryRow::pictureProvider,
                                 new HistoryPictures(folder, HistoryPictures::Use::tile));
        engine->addImageProvider(nettlecap::NavigationHUDView::pictureProvider,
                                 new HistoryPictures(folder, HistoryPictures::Use::card));
        engine->addImageProvider(nettlecap::ImagePreviewPopover::pictureProvider,
                                 new HistoryPictures(folder, HistoryPictures::Use::card));
        qmlRegisterSingletonInstance("Nettlecap.Tests", 1, 0, "History", &history_);
        qmlRegisterSingletonInstance("Nettlecap.Tests", 1, 0, "Cards", &cards_);
        qmlRegisterSingletonInstance("Nettlecap.Tests", 1, 0, "Settings", &settings_);
    }

private:
    nettlecap::History history_;
    nettlecap::Settings settings_;
    nettlecap::Cards cards_{history_.picturesFolder()};
};

}  // namespace

QUICK_TEST_MAIN_WITH_SETUP(qml_test, Setup)

#include "QmlTestMain.moc"
