#include "ui/qml/History.h"
#include "ui/qml/HistoryPictures.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QtQuickTest>

namespace {

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { QQuickWindow::setGraphicsApi(QSGRendererInterface::Software); }
    void qmlEngineAvailable(QQmlEngine* engine) {
        engine->addImportPath("qrc:/qt/qml");
        engine->addImageProvider(nettlecap::ClipboardEntryRow::pictureProvider,
                                 new nettlecap::HistoryPictures(history_.picturesFolder().toStdString()));
        qmlRegisterSingletonInstance("Nettlecap.Tests", 1, 0, "History", &history_);
    }

private:
    nettlecap::History history_;
};

}  // namespace

QUICK_TEST_MAIN_WITH_SETUP(qml_test, Setup)

#include "QmlTestMain.moc"
