#pragma once

#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/MenuBarContentView.h"
#include "ui/qml/SheetPlace.h"

#include <QQmlEngine>
#include <QTemporaryDir>

namespace nettlecap {

/// What the QML tests see of the system beneath the views.
class History : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void startAfresh() {
        view_.reset();
        quits_ = 0;
        model_ = std::make_unique<HistoryOnFakes>();
    }
    /// Of the history as it stands; valid until the next call.
    Q_INVOKABLE nettlecap::MenuBarContentView* makeView() {
        MenuBarContentView::Ports ports = contentPorts(model_->fake);
        ports.quit = [this] { ++quits_; };
        view_ = std::make_unique<MenuBarContentView>(model_->app, ports);
        QQmlEngine::setObjectOwnership(view_.get(), QQmlEngine::CppOwnership);
        return view_.get();
    }

    Q_INVOKABLE void add(const QString& text, int minutesAgo) {
        model_->add(text.toStdString(), std::chrono::minutes(minutesAgo));
    }
    Q_INVOKABLE void addFavorite(const QString& text, int minutesAgo) {
        model_->app.store().toggleFavorite(model_->add(text.toStdString(), std::chrono::minutes(minutesAgo)));
    }
    Q_INVOKABLE void addFrom(const QString& source, const QString& text) {
        model_->add(ClipboardEntry{.id = model_->fake.identifiers.next(),
                                   .text = text.toStdString(),
                                   .createdAt = model_->ago(Seconds{0}),
                                   .sourceApplication = source.toStdString(),
                                   .fingerprint = "text:" + text.toStdString()});
    }
    Q_INVOKABLE void addCard(const QString& number) {
        model_->addSensitive(number.toStdString(), SensitiveContentKind::paymentCard);
    }
    Q_INVOKABLE void addPicture(const QString& filename) { model_->addImage(filename.toStdString()); }
    /// For the store; what is seen of it lies in the pictures' folder.
    Q_INVOKABLE void storePicture(const QString& filename) {
        model_->fake.files.put(model_->app.store().imagesDirectory() / filename.toStdString(),
                               std::string(FakeImageCodec::pngSignature));
    }
    Q_INVOKABLE void addSnippet(const QString& title, const QString& content) {
        model_->app.store().addSnippet(title.toStdString(), content.toStdString());
    }
    Q_INVOKABLE void failToSave(const QString& why) {
        model_->fake.files.fail(FileOperation::write, why.toStdString());
        model_->app.store().persist();
    }
    Q_INVOKABLE QString pasteboard() const {
        return QString::fromStdString(model_->fake.pasteboard.string(pasteboardType::text).value_or(""));
    }

    /// Lets time pass for what waits in the views.
    Q_INVOKABLE void advance(double seconds) { model_->fake.time.advance(Seconds{seconds}); }
    Q_INVOKABLE bool hasOpenedSettings() const { return model_->windows.panel == ContentKind::settings; }
    Q_INVOKABLE bool isMonitoring() const { return *model_->app.isMonitoring(); }
    Q_INVOKABLE int entries() const { return static_cast<int>(model_->app.store().entries()->size()); }
    /// Of the saved messages: title, a bar, content each.
    Q_INVOKABLE QStringList snippets() const {
        QStringList result;
        for (const SavedSnippet& snippet : *model_->app.store().snippets())
            result << QString::fromStdString(snippet.title + "|" + snippet.content);
        return result;
    }
    Q_INVOKABLE int quits() const { return quits_; }

    /// As a panel has them; the window's content is in it already.
    Q_INVOKABLE void giveSheets(QQuickWindow* panel) {
        if (!SheetPlace::of(panel)) new SheetPlace(*panel, {.windows = windows_, .screens = screens_});
    }
    /// What is written in over that panel; null: nothing.
    Q_INVOKABLE QQuickItem* sheetOver(const QQuickWindow* panel) const {
        const QuickSheet* sheet = SheetPlace::of(panel)->window();
        return sheet ? sheet->contentItem()->childItems().value(0) : nullptr;
    }

    QString picturesFolder() const { return folder_.path(); }

private:
    QTemporaryDir folder_;
    FakeNativeWindows windows_;
    FakeScreens screens_;
    int quits_ = 0;
    std::unique_ptr<HistoryOnFakes> model_ = std::make_unique<HistoryOnFakes>();
    std::unique_ptr<MenuBarContentView> view_;
};

}  // namespace nettlecap
