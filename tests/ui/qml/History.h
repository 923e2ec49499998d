#pragma once

#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/MenuBarContentView.h"

#include <QQmlEngine>
#include <QTemporaryDir>

namespace nettlecap {

/// What the QML tests see of the system beneath the views.
class History : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void startAfresh() {
        view_.reset();
        model_ = std::make_unique<HistoryOnFakes>();
    }
    /// Of the history as it stands; valid until the next call.
    Q_INVOKABLE nettlecap::MenuBarContentView* makeView() {
        view_ = std::make_unique<MenuBarContentView>(model_->app, contentPorts(model_->fake));
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
    Q_INVOKABLE void failToSave(const QString& why) {
        model_->fake.files.fail(FileOperation::write, why.toStdString());
        model_->app.store().persist();
    }
    Q_INVOKABLE QString pasteboard() const {
        return QString::fromStdString(model_->fake.pasteboard.string(pasteboardType::text).value_or(""));
    }

    QString picturesFolder() const { return folder_.path(); }

private:
    QTemporaryDir folder_;
    std::unique_ptr<HistoryOnFakes> model_ = std::make_unique<HistoryOnFakes>();
    std::unique_ptr<MenuBarContentView> view_;
};

}  // namespace nettlecap
