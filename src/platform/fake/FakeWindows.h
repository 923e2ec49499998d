#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// One screen with a bar at its top and a dock at its bottom, until a test says otherwise.
class FakeScreens final : public Screens {
public:
    static constexpr Screen only{.frame = {.size = {1920, 1080}},
                                 .visibleFrame = {.origin = {0, 60}, .size = {1920, 990}}};

    void setMain(std::optional<Screen> screen) { main_ = screen; }
    void setAll(std::vector<Screen> screens) { all_ = std::move(screens); }

    std::optional<Screen> main() const override { return main_; }
    std::vector<Screen> all() const override { return all_; }

private:
    std::optional<Screen> main_ = only;
    std::vector<Screen> all_{only};
};

/// What a test can see of a panel. It outlives the panel.
struct FakePanelState {
    PanelKind kind = PanelKind::card;
    std::shared_ptr<HostedView> content;
    Size contentSize;
    Point origin;
    bool isVisible = false;
    int shows = 0;
    int hides = 0;
};

class FakePanels final : public PanelFactory {
public:
    std::unique_ptr<Panel> makePanel(PanelKind kind) override {
        made_.push_back(std::make_shared<FakePanelState>());
        made_.back()->kind = kind;
        return std::make_unique<FakePanel>(made_.back());
    }

    const std::vector<std::shared_ptr<FakePanelState>>& made() const { return made_; }

private:
    class FakePanel final : public Panel {
    public:
        explicit FakePanel(std::shared_ptr<FakePanelState> state) : state_(std::move(state)) {}

        void setContent(std::unique_ptr<HostedView> content) override {
            state_->content = std::move(content);
        }
        void setContentSize(Size size) override { state_->contentSize = size; }
        void setOrigin(Point origin) override { state_->origin = origin; }
        void orderFrontRegardless() override {
            state_->isVisible = true;
            ++state_->shows;
        }
        void orderOut() override {
            state_->isVisible = false;
            ++state_->hides;
        }
        bool isVisible() const override { return state_->isVisible; }

    private:
        std::shared_ptr<FakePanelState> state_;
    };

    std::vector<std::shared_ptr<FakePanelState>> made_;
};

class FakeNativeWindows final : public NativeWindows {
public:
    void setComposited(bool isComposited) { isComposited_ = isComposited; }

    void prepareToShow(std::uint64_t window) override { prepared_.push_back(window); }
    void bringToFront(std::uint64_t window) override { brought_.push_back(window); }
    bool isComposited() const override { return isComposited_; }

    const std::vector<std::uint64_t>& prepared() const { return prepared_; }
    const std::vector<std::uint64_t>& brought() const { return brought_; }

private:
    std::vector<std::uint64_t> prepared_;
    std::vector<std::uint64_t> brought_;
    bool isComposited_ = true;
};

}  // namespace nettlecap
