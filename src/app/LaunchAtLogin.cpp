#include "app/LaunchAtLogin.h"

#include "app/DiagnosticsFile.h"
#include "model/Utf8.h"

namespace nettlecap {

namespace {

constexpr const char* requiresApprovalText = "Autorize o Nettlecap nos Itens de Início do macOS";
constexpr const char* enabledText = "Nettlecap iniciará com o Mac";
constexpr const char* disabledText = "Início automático desativado";

const char* name(LoginItemStatus status) {
    switch (status) {
    case LoginItemStatus::notRegistered: return "notRegistered";
    case LoginItemStatus::enabled: return "enabled";
    case LoginItemStatus::requiresApproval: return "requiresApproval";
    case LoginItemStatus::notFound: return "notFound";
    case LoginItemStatus::unknown: break;
    }
    return "unknown";
}

}  // namespace

void LaunchAtLogin::syncLaunchAtLogin(AppState& state, bool showStatus) {
    const bool desired = state.preferences->launchAtLogin;
    const Error error = desired ? switchOn(state, showStatus) : switchOff(state, showStatus);
    writeLaunchAtLoginDiagnostics(desired, error);
}

LaunchAtLogin::Error LaunchAtLogin::switchOff(AppState& state, bool showStatus) {
    state.launchAtLoginRequiresApproval = false;
    if (ports_.loginItem.status() != LoginItemStatus::notRegistered) {
        const auto unregistered = ports_.loginItem.unregisterItem();
        if (!unregistered) {
            state.statusMessage =
                "Não foi possível desativar o início automático: " + unregistered.description();
            return unregistered.description();
        }
    }
    if (showStatus) state.statusMessage = disabledText;
    return std::nullopt;
}

LaunchAtLogin::Error LaunchAtLogin::switchOn(AppState& state, bool showStatus) {
    switch (ports_.loginItem.status()) {
    case LoginItemStatus::notRegistered:
    case LoginItemStatus::notFound: return registerItem(state, showStatus);
    case LoginItemStatus::enabled:
        state.launchAtLoginRequiresApproval = false;
        if (showStatus) state.statusMessage = enabledText;
        break;
    case LoginItemStatus::requiresApproval:
        state.launchAtLoginRequiresApproval = true;
        state.statusMessage = requiresApprovalText;
        break;
    case LoginItemStatus::unknown: state.launchAtLoginRequiresApproval = false; break;
    }
    return std::nullopt;
}

LaunchAtLogin::Error LaunchAtLogin::registerItem(AppState& state, bool showStatus) {
    const auto registered = ports_.loginItem.registerItem();
    if (!registered) {
        state.launchAtLoginRequiresApproval = false;
        state.statusMessage = "Não foi possível ativar o início automático: " + registered.description();
        return registered.description();
    }
    const bool requiresApproval = ports_.loginItem.status() == LoginItemStatus::requiresApproval;
    state.launchAtLoginRequiresApproval = requiresApproval;
    if (requiresApproval)
        state.statusMessage = requiresApprovalText;
    else if (showStatus)
        state.statusMessage = enabledText;
    return std::nullopt;
}

void LaunchAtLogin::writeLaunchAtLoginDiagnostics(bool desired, const Error& error) {
    DiagnosticsFile::write({.files = ports_.files, .clock = ports_.clock}, "launch-at-login-diagnostics.txt",
                           {{"desiredEnabled", desired ? "true" : "false"},
                            {"status", name(ports_.loginItem.status())},
                            {"bundle", utf8::wellFormed(ports_.bundle.path().native())},
                            {"error", utf8::wellFormed(error.value_or("none"))}});
}

}  // namespace nettlecap
