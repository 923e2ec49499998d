#pragma once

#include "platform/Files.h"
#include "platform/LoginItem.h"

namespace nettlecap {

/// An entry in the user's autostart folder (freedesktop.org, Desktop Application Autostart
/// Specification). One that the user switched off in the desktop's own settings is left as
/// it stands until it is unregistered.
class XdgLoginItem final : public LoginItem {
public:
    struct Places {
        std::optional<Path> folder;  ///< of autostart entries; absent: the user has no home
        Path program;                ///< what to start

        static Places ofProcess();  ///< ask early: an upgrade takes the program away under us
    };

    /// `files` must outlive the item.
    explicit XdgLoginItem(FileSystem& files, Places places = Places::ofProcess());

    /// notFound also for an entry whose program is gone: the desktop passes it over.
    LoginItemStatus status() const override;
    Result<Done> registerItem() override;
    Result<Done> unregisterItem() override;  ///< nothing to remove is no failure
    void openSystemSettings() override;

private:
    FileSystem& files_;
    Places places_;
};

}  // namespace nettlecap
