#include "app/ItemDelivery.h"

namespace nettlecap {

namespace {

/// What the application that comes to the front needs to be ready for the keystroke.
constexpr Seconds activationTime{0.12};

}  // namespace

void ItemDelivery::trackApplications() {
    if (const auto frontmost = with_.workspace.frontmostApplication()) remember(*frontmost);
    activationObserver_ = with_.workspace.onActivation(
        guard_([this](const RunningApplication& application) { remember(application); }));
}

void ItemDelivery::remember(const RunningApplication& application) {
    if (application.processIdentifier == with_.workspace.current().processIdentifier) return;
    lastExternalApplication_ = application;
}

void ItemDelivery::copy(const ClipboardEntry& entry, std::optional<bool> pasteImmediately) {
    const Uuid id = entry.id;
    if (!with_.monitor.putOnPasteboard(entry)) {
        with_.state.statusMessage = "Não foi possível recuperar este item";
        return;
    }
    with_.state.navigationEntryID = id;
    deliver(pasteImmediately);
}

void ItemDelivery::copy(const SavedSnippet& snippet, std::optional<bool> pasteImmediately) {
    if (!with_.monitor.putOnPasteboard(snippet)) {
        with_.state.statusMessage = "Não foi possível copiar a mensagem salva";
        return;
    }
    with_.state.navigationEntryID.reset();
    deliver(pasteImmediately);
}

void ItemDelivery::deliver(std::optional<bool> pasteImmediately) {
    const bool paste = pasteImmediately.value_or(with_.state.preferences->autoPaste);
    if (paste) {
        // So that the application that is to be pasted into can have the keyboard.
        with_.searchPanel.hide();
        with_.state.popoverShouldClose.emit();
    }
    performPasteIfNeeded(paste);
}

void ItemDelivery::performPasteIfNeeded(bool paste) {
    if (!paste) {
        with_.state.statusMessage = "Copiado — use ⌘V para colar";
        return;
    }
    const bool isFirstAttempt = !std::exchange(hasPromptedForAccessibility_, true);
    if (!with_.paste.isTrusted(isFirstAttempt)) {
        with_.state.statusMessage = "Copiado. Autorize Acessibilidade para colar automaticamente.";
        return;
    }
    // A copy: the activation is told of before it has returned.
    const auto target = lastExternalApplication_;
    if (target && !with_.workspace.isTerminated(*target)) with_.workspace.activate(*target);
    with_.scheduler.after(activationTime, guard_([this] { with_.paste.postPasteKeystroke(); }));
}

}  // namespace nettlecap
