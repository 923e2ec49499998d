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
    void movePointer(Point location) { pointerLocation_ = location; }

    std::optional<Screen> main() const override { return main_; }
    std::vector<Screen> all() const override { return all_; }
    Point pointerLocation() const override { return pointerLocation_; }

private:
    std::optional<Screen> main_ = only;
    std::vector<Screen> all_{only};
    Point pointerLocation_{960, 540};
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

/// What a test can see of a titled panel, and do to it. It outlives the panel.
struct FakeTitledPanelState {
    std::string title;
    std::shared_ptr<HostedView> content;
    Size contentSize;
    std::optional<Point> origin;  ///< absent: the system chose the place
    bool isVisible = false;
    int keyShows = 0;    ///< with the keyboard
    int frontShows = 0;  ///< before every other application
    Signal<> orderedOut;

    void orderOut() {  ///< as its close button does, too
        if (std::exchange(isVisible, false)) orderedOut.emit();
    }
};

class FakePanels final : public PanelFactory {
public:
    std::unique_ptr<TitledPanel> makeTitledPanel() override {
        titled_.push_back(std::make_shared<FakeTitledPanelState>());
        return std::make_unique<FakeTitledPanel>(titled_.back());
    }
    const std::vector<std::shared_ptr<FakeTitledPanelState>>& titled() const { return titled_; }

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
        void dropContent() override { state_->content = nullptr; }
        bool isVisible() const override { return state_->isVisible; }

    private:
        std::shared_ptr<FakePanelState> state_;
    };

    class FakeTitledPanel final : public TitledPanel {
    public:
        explicit FakeTitledPanel(std::shared_ptr<FakeTitledPanelState> state) : state_(std::move(state)) {}

        void setContent(std::unique_ptr<HostedView> content) override {
            state_->content = std::move(content);
        }
        void dropContent() override { state_->content = nullptr; }
        void setContentSize(Size size) override { state_->contentSize = size; }
        void setTitle(std::string_view title) override { state_->title = title; }
        void setOrigin(Point origin) override { state_->origin = origin; }
        void center() override { state_->origin = std::nullopt; }
        void orderFrontRegardless() override {
            state_->isVisible = true;
            ++state_->frontShows;
        }
        void makeKeyAndOrderFront() override {
            state_->isVisible = true;
            ++state_->keyShows;
        }
        void orderOut() override { state_->orderOut(); }
        bool isVisible() const override { return state_->isVisible; }
        Subscription onOrderedOut(Task handler) override {
            return state_->orderedOut.subscribe(std::move(handler));
        }

    private:
        std::shared_ptr<FakeTitledPanelState> state_;
    };

    std::vector<std::shared_ptr<FakePanelState>> made_;
    std::vector<std::shared_ptr<FakeTitledPanelState>> titled_;
};

class FakeNativeWindows final : public NativeWindows {
public:
    void setComposited(bool isComposited) { isComposited_ = isComposited; }

    void prepareToShow(std::uint64_t window) override { prepared_.push_back(window); }
    void keepOffTaskbars(std::uint64_t window) override { keptOff_.push_back(window); }
    void prepareToCover(std::uint64_t window) override { covering_.push_back(window); }
    void bringToFront(std::uint64_t window) override { brought_.push_back(window); }
    bool isComposited() const override { return isComposited_; }

    const std::vector<std::uint64_t>& prepared() const { return prepared_; }
    const std::vector<std::uint64_t>& keptOffTaskbars() const { return keptOff_; }
    const std::vector<std::uint64_t>& covering() const { return covering_; }
    const std::vector<std::uint64_t>& brought() const { return brought_; }

private:
    std::vector<std::uint64_t> prepared_;
    std::vector<std::uint64_t> keptOff_;
    std::vector<std::uint64_t> covering_;
    std::vector<std::uint64_t> brought_;
    bool isComposited_ = true;
};

}  // namespace nettlecap
