#pragma once

#include "ui/SettingsOnFakes.h"
#include "ui/SettingsView.h"
#include "ui/SnippetEditorView.h"

#include <QQmlEngine>

namespace nettlecap {

/// What the QML tests see of the system beneath the settings and the snippet editor.
class Settings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString saved MEMBER saved_)  ///< by the editor: title, a bar, content
    Q_PROPERTY(bool isOpen MEMBER isOpen_)   ///< the editor

public:
    Q_INVOKABLE void startAfresh() {
        view_.reset();
        editor_.reset();
        saved_.clear();
        system_ = std::make_unique<SettingsOnFakes>();
        system_->fake.pasteboard.setIgnoresInterest(true);
    }
    /// Valid until the next call.
    Q_INVOKABLE nettlecap::SettingsView* makeView() {
        view_ = std::make_unique<SettingsView>(system_->app);
        QQmlEngine::setObjectOwnership(view_.get(), QQmlEngine::CppOwnership);
        return view_.get();
    }
    Q_INVOKABLE nettlecap::SnippetEditorView* makeEditor(const QString& title, const QString& content) {
        std::optional<SavedSnippet> snippet;
        if (!content.isEmpty())
            snippet = SavedSnippet{.title = title.toStdString(), .content = content.toStdString()};
        const auto save = [this](std::string_view newTitle, std::string_view newContent) {
            saved_ = QString::fromStdString(std::string(newTitle) + "|" + std::string(newContent));
        };
        editor_ = std::make_unique<SnippetEditorView>(
            snippet, system_->fake.pasteboard,
            SnippetEditorView::Actions{.save = save, .dismiss = [this] { isOpen_ = false; }});
        isOpen_ = true;
        QQmlEngine::setObjectOwnership(editor_.get(), QQmlEngine::CppOwnership);
        return editor_.get();
    }

    Q_INVOKABLE void add(const QString& text) { system_->add(text.toStdString()); }
    Q_INVOKABLE void copyOutside(const QString& text) {
        system_->fake.pasteboard.copyFromOutside(text.toStdString());
    }
    Q_INVOKABLE void setLimit(int limit) {
        system_->app.updatePreferences(
            [=](AppPreferences& preferences) { preferences.maxHistoryItems = limit; });
    }
    Q_INVOKABLE void setKey(int keyCode) {
        system_->app.updatePreferences([=](AppPreferences& preferences) {
            preferences.previousShortcut.keyCode = static_cast<KeyCode>(keyCode);
        });
    }
    Q_INVOKABLE void requireApproval() {
        system_->services.loginItemRequiresApproval = true;
        system_->app.start();
    }
    Q_INVOKABLE void setTrusted(bool trusted) { system_->fake.keyboard.setTrusted(trusted); }

    Q_INVOKABLE int entries() const { return static_cast<int>(system_->app.store().entries()->size()); }
    Q_INVOKABLE int limit() const { return static_cast<int>(system_->stored().maxHistoryItems); }
    Q_INVOKABLE int updateChecks() const { return system_->services.checks; }
    Q_INVOKABLE int loginItemOpenings() const { return system_->services.loginItemSettingsOpenings; }

private:
    std::unique_ptr<SettingsOnFakes> system_ = std::make_unique<SettingsOnFakes>();
    std::unique_ptr<SettingsView> view_;
    std::unique_ptr<SnippetEditorView> editor_;
    QString saved_;
    bool isOpen_ = false;
};

}  // namespace nettlecap
