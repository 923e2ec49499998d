#pragma once

#include "platform/StatusItem.h"

#include <algorithm>

namespace nettlecap {

/// A status item, the pointer on it, and the keyboard beside it. While its menu is open a
/// click anywhere closes the menu and does nothing else.
class FakeStatusItem final : public StatusItem {
public:
    void click(StatusItemClick button) {
        if (isMenuOpen_)
            closeMenu();
        else
            clicked_.emit(button);
    }
    /// As some systems do at a right click that they report to nobody.
    void openMenuByItself() { popUpMenu(); }
    /// Closes the menu; an item that is there and enabled acts.
    void choose(std::string_view title) {
        chooseFirst([&](const MenuItem& item) { return item.title == title; });
    }
    void pressCommand(std::string_view key) {  ///< ⌘ and the key
        chooseFirst([&](const MenuItem& item) { return item.keyEquivalent == key; });
    }
    void closeMenu() {
        if (std::exchange(isMenuOpen_, false) && menu_.didClose) menu_.didClose();
    }

    void setImage(const TemplateDrawing& image) override { image_ = image; }
    void setToolTip(std::string_view text) override { toolTip_ = text; }
    void setMenu(Menu menu) override { menu_ = std::move(menu); }
    void popUpMenu() override {
        if (menu_.willOpen) menu_.willOpen(menu_);
        isMenuOpen_ = true;
    }
    Subscription onClick(std::function<void(StatusItemClick)> handler) override {
        return clicked_.subscribe(std::move(handler));
    }

    const TemplateDrawing& image() const { return image_; }
    const std::string& toolTip() const { return toolTip_; }
    const Menu& menu() const { return menu_; }
    bool isMenuOpen() const { return isMenuOpen_; }

private:
    template <class IsWanted>
    void chooseFirst(IsWanted isWanted) {
        if (!isMenuOpen_) return;
        const auto found = std::find_if(menu_.items.begin(), menu_.items.end(), isWanted);
        const Task action = found != menu_.items.end() && found->isEnabled ? found->action : nullptr;
        closeMenu();
        if (action) action();
    }

    TemplateDrawing image_;
    std::string toolTip_;
    Menu menu_;
    bool isMenuOpen_ = false;
    Signal<StatusItemClick> clicked_;
};

/// Keeps what it shows, also while it is closed.
class FakePopover final : public Popover {
public:
    void goElsewhere() { isShown_ = false; }  ///< as the user does, with a click on another window

    void setContent(std::unique_ptr<HostedView> content) override { content_ = std::move(content); }
    void setContentSize(Size size) override { contentSize_ = size; }
    void setTitle(std::string_view title) override { title_ = title; }
    void showBelowStatusItem() override {
        isShown_ = true;
        ++shows_;
    }
    void close() override { isShown_ = false; }
    bool isShown() const override { return isShown_; }

    const std::shared_ptr<HostedView>& content() const { return content_; }
    Size contentSize() const { return contentSize_; }
    const std::string& title() const { return title_; }
    int shows() const { return shows_; }

private:
    std::shared_ptr<HostedView> content_;
    Size contentSize_;
    std::string title_;
    bool isShown_ = false;
    int shows_ = 0;
};

}  // namespace nettlecap
