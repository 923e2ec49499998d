#pragma once

#include "platform/Application.h"
#include "platform/linux/SingleInstance.h"
#include "platform/linux/x11/X11Bell.h"

#include <QIcon>

namespace nettlecap {

/// The program as its one process. It has no menu bar that could be left out, and its
/// windows come and go with what the user asks for, so an accessory is what it always is.
class LinuxApplication final : public Application {
public:
    /// A drawing that the program brings along, by its name; null: there is none.
    using Drawings = std::function<QIcon(const QString& name)>;

    /// The bell and the instance must outlive this.
    LinuxApplication(X11Bell& bell, const SingleInstance& instance, Drawings drawings)
        : bell_(bell), instance_(instance), drawings_(std::move(drawings)) {}

    void beep() override { bell_.ring(); }
    void setAccessory() override {}
    void setIcon(std::string_view name, std::string_view fallbackSymbol) override;
    void terminate() override;
    Subscription onOpenEvent(std::function<void(OpenEvent)> handler) override {
        return instance_.onOpenEvent(std::move(handler));
    }

private:
    X11Bell& bell_;
    const SingleInstance& instance_;
    Drawings drawings_;
};

}  // namespace nettlecap
