#pragma once

#include "app/AppModel.h"
#include "ui/ShortcutEditor.h"

#include <QVariant>

#include <array>

namespace nettlecap {

/// The settings form. Every change is written at once, as one change of the preferences, and
/// the form shows whatever the preferences then are.
class SettingsView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel")
    Q_PROPERTY(QVariantList shortcuts READ shortcuts CONSTANT)
    Q_PROPERTY(bool captureImages READ captureImages WRITE setCaptureImages NOTIFY preferencesChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY preferencesChanged)
    Q_PROPERTY(bool autoPaste READ autoPaste WRITE setAutoPaste NOTIFY preferencesChanged)
    Q_PROPERTY(bool pasteHistoryOnDoubleClick READ pasteHistoryOnDoubleClick WRITE
                   setPasteHistoryOnDoubleClick NOTIFY preferencesChanged)
    Q_PROPERTY(bool protectSensitiveContent READ protectSensitiveContent WRITE setProtectSensitiveContent
                   NOTIFY preferencesChanged)
    Q_PROPERTY(double maxHistoryItems READ maxHistoryItems WRITE setMaxHistoryItems NOTIFY preferencesChanged)
    Q_PROPERTY(QString limitLabel READ limitLabel NOTIFY preferencesChanged)
    Q_PROPERTY(bool launchAtLoginRequiresApproval READ launchAtLoginRequiresApproval NOTIFY
                   launchAtLoginRequiresApprovalChanged)
    Q_PROPERTY(bool canPaste READ canPaste NOTIFY canPasteChanged)
    Q_PROPERTY(QString usedSpace READ usedSpace NOTIFY storageChanged)
    Q_PROPERTY(QString storageSummary READ storageSummary NOTIFY storageChanged)
    Q_PROPERTY(bool showPurgeConfirmation READ showPurgeConfirmation WRITE setShowPurgeConfirmation NOTIFY
                   showPurgeConfirmationChanged)

public:
    static constexpr std::int64_t smallestLimit = 50;
    static constexpr std::int64_t largestLimit = 5000;
    static constexpr std::int64_t limitStep = 50;

    /// The model must outlive the view.
    explicit SettingsView(AppModel& app);

    void setCaptureImages(bool on) { set(&AppPreferences::captureImages, on); }
    void setLaunchAtLogin(bool on) { set(&AppPreferences::launchAtLogin, on); }
    void setAutoPaste(bool on) { set(&AppPreferences::autoPaste, on); }
    void setPasteHistoryOnDoubleClick(bool on) { set(&AppPreferences::pasteHistoryOnDoubleClick, on); }
    void setProtectSensitiveContent(bool on) { set(&AppPreferences::protectSensitiveContent, on); }
    void setMaxHistoryItems(double limit);  ///< clamped to what the form offers
    Q_INVOKABLE void stepMaxHistoryItems(int steps);
    Q_INVOKABLE void restoreDefaultShortcuts();
    Q_INVOKABLE void openLoginItems() { app_.openLoginItems(); }
    Q_INVOKABLE void checkForUpdates() { app_.checkForUpdates(); }
    Q_INVOKABLE void refreshPermission();  ///< the user may have been to the system's settings
    void setShowPurgeConfirmation(bool show);
    Q_INVOKABLE void purgeHistory();  ///< the confirmation was given

    QVariantList shortcuts() const;  ///< the editors
    bool captureImages() const { return app_.preferences()->captureImages; }
    bool launchAtLogin() const { return app_.preferences()->launchAtLogin; }
    bool autoPaste() const { return app_.preferences()->autoPaste; }
    bool pasteHistoryOnDoubleClick() const { return app_.preferences()->pasteHistoryOnDoubleClick; }
    bool protectSensitiveContent() const { return app_.preferences()->protectSensitiveContent; }
    double maxHistoryItems() const { return static_cast<double>(app_.preferences()->maxHistoryItems); }
    QString limitLabel() const;
    bool launchAtLoginRequiresApproval() const { return *app_.launchAtLoginRequiresApproval(); }
    bool canPaste() const { return canPaste_; }
    QString usedSpace() const;
    QString storageSummary() const;
    bool showPurgeConfirmation() const { return showPurgeConfirmation_; }

Q_SIGNALS:
    void preferencesChanged();
    void launchAtLoginRequiresApprovalChanged();
    void canPasteChanged();
    void storageChanged();
    void showPurgeConfirmationChanged();

private:
    using Shortcut = ShortcutDefinition AppPreferences::*;

    template <class Value>
    void set(Value AppPreferences::*field, const Value& value) {
        app_.updatePreferences([&](AppPreferences& preferences) { preferences.*field = value; });
    }
    void showPreferences();
    void setLimit(std::int64_t limit);

    AppModel& app_;
    bool canPaste_;
    bool showPurgeConfirmation_ = false;
    std::vector<std::pair<Shortcut, std::unique_ptr<ShortcutEditor>>> editors_;
    std::array<Subscription, 3> changes_;
};

}  // namespace nettlecap
