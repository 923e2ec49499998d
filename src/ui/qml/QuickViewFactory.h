#pragma once

#include "ui/ViewFactory.h"

#include <QQmlEngine>
#include <vector>

namespace nettlecap {

class HistoryPictures;

/// Makes views of Qt Quick. Needs a QGuiApplication.
class QuickViewFactory final : public ViewFactory {
public:
    /// `imagesDirectory` is where the history's pictures are.
    explicit QuickViewFactory(const Path& imagesDirectory);
    ~QuickViewFactory() override;
    QuickViewFactory(const QuickViewFactory&) = delete;
    QuickViewFactory& operator=(const QuickViewFactory&) = delete;

    std::unique_ptr<HostedView> navigationHUD(std::unique_ptr<NavigationHUDView> view) override;
    std::unique_ptr<HostedView> menuBarContent(std::unique_ptr<MenuBarContentView> view) override;
    std::unique_ptr<HostedView> settings(std::unique_ptr<SettingsView> view,
                                         std::unique_ptr<SettingsNavigationButton> button) override;
    void releaseMemory() override;

    /// Knows the components; for what is shown beside the views.
    QQmlEngine& engine() { return engine_; }

private:
    std::unique_ptr<HostedView> make(const char* name, const QVariantMap& properties,
                                     std::unique_ptr<QObject> owned);

    QQmlEngine engine_;
    std::vector<HistoryPictures*> pictures_;  ///< the engine's
};

}  // namespace nettlecap
