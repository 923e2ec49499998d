#pragma once

#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeWindows.h"
#include "ui/NavigationHUDController.h"

#include <QColor>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QQmlEngine>

namespace nettlecap {

/// Makes the views of cards as the controller makes them, for the QML tests to show.
class Cards : public QObject, private ViewFactory {
    Q_OBJECT

public:
    explicit Cards(QString picturesFolder) : folder_(std::move(picturesFolder)) {}

    /// Each is valid until the next one.
    Q_INVOKABLE nettlecap::NavigationHUDView* ofText(const QString& text) {
        return show({.text = text.toStdString()}, true);
    }
    Q_INVOKABLE nettlecap::NavigationHUDView* ofSecret(const QString& text, bool isProtected) {
        return show({.text = text.toStdString(), .sensitiveKind = SensitiveContentKind::secret}, isProtected);
    }
    /// Of a file that may be missing; without a name there is none to look for.
    Q_INVOKABLE nettlecap::NavigationHUDView* ofPicture(const QString& filename) {
        return show({.kind = ClipboardContentKind::image, .imageFilename = filename.toStdString()}, true);
    }
    Q_INVOKABLE void savePicture(const QString& filename, int width, int height) const {
        QImage picture(width, height, QImage::Format_RGB32);
        picture.fill(Qt::red);
        picture.save(QDir(folder_).filePath(filename), "PNG");
    }
    /// As the desktop's appearance has it.
    Q_INVOKABLE void setWindowColor(const QColor& color) const {
        QPalette palette = QGuiApplication::palette();
        palette.setColor(QPalette::Window, color);
        QGuiApplication::setPalette(palette);
    }

private:
    struct Nothing final : HostedView {
        double fittingHeight(double) override { return 1; }
    };

    NavigationHUDView* show(ClipboardEntry entry, bool protects) {
        std::optional<Path> file;
        if (entry.imageFilename && !entry.imageFilename->empty())
            file = Path(folder_.toStdString()) / *entry.imageFilename;
        controller_.show({.entry = std::move(entry),
                          .imageURL = std::move(file),
                          .position = 3,
                          .total = 12,
                          .protectSensitiveContent = protects});
        QQmlEngine::setObjectOwnership(view_.get(), QQmlEngine::CppOwnership);
        return view_.get();
    }
    std::unique_ptr<HostedView> navigationHUD(std::unique_ptr<NavigationHUDView> view) override {
        view_ = std::move(view);
        return std::make_unique<Nothing>();
    }
    std::unique_ptr<HostedView> menuBarContent(std::unique_ptr<MenuBarContentView>) override {
        return nullptr;
    }
    std::unique_ptr<HostedView> settings(std::unique_ptr<SettingsView>,
                                         std::unique_ptr<SettingsNavigationButton>) override {
        return nullptr;
    }
    void releaseMemory() override {}

    QString folder_;
    FakePanels panels_;
    FakeScreens screens_;
    FakeTime time_;
    std::unique_ptr<NavigationHUDView> view_;
    NavigationHUDController controller_{
        {.panels = panels_, .screens = screens_, .scheduler = time_, .views = *this}};
};

}  // namespace nettlecap
