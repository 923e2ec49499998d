#pragma once

#include "capture/ClipboardMonitor.h"
#include "platform/fake/FakePlatform.h"

#include <gmock/gmock.h>

namespace nettlecap {

/// A monitor and its store on a system in memory. The monitor is made, not started.
class ClipboardMonitorFixture : public testing::Test {
protected:
    using Offer = FakePasteboard::Offer;

    static Bytes bytes(std::string_view text) { return Bytes(std::string(text)); }
    static Bytes png(std::string_view payload) {
        return Bytes(std::string(FakeImageCodec::pngSignature).append(payload));
    }
    static Bytes tiff(std::string_view payload) { return Bytes(std::string("TIFF:").append(payload)); }
    static Bytes jpeg(std::string_view payload) { return Bytes(std::string("JPEG:").append(payload)); }

    ClipboardMonitor::Ports ports() { return ports(system.pasteboard); }
    ClipboardMonitor::Ports ports(Pasteboard& pasteboard) {
        return {.pasteboard = pasteboard,
                .scheduler = system.time,
                .clock = system.time,
                .identifiers = system.identifiers,
                .files = system.files,
                .images = system.images,
                .background = system.background,
                .workspace = system.workspace,
                .events = system.events};
    }

    /// Takes a millisecond, so that no two copies have one date.
    void copy(const Offer& offer) {
        system.pasteboard.copyFromOutside(offer);
        system.time.advance(Seconds(0.001));
    }
    void copy(std::string text) { copy({{"public.utf8-plain-text", Bytes(std::move(text))}}); }
    /// As on a system that can't tell of changes, or tells of them late.
    void copySilently(const std::string& text) {
        system.pasteboard.clearContents();
        EXPECT_TRUE(system.pasteboard.write(
            {.forms = {{.type = "public.utf8-plain-text", .bytes = [text] { return Bytes(text); }}}}));
    }
    void pressCopyKeyIn(const std::string& application) {
        const auto before = system.workspace.frontmostApplication();
        system.workspace.setFrontmost(RunningApplication{.localizedName = application});
        system.events.sendGlobal(
            {.kind = InputKind::keyDown, .flags = modifier::command, .keyCode = keyCode::c});
        system.workspace.setFrontmost(before);
        system.time.advance(Seconds::zero());
    }
    void convertNext() {
        system.background.runNext();
        system.time.advance(Seconds::zero());
    }

    const ClipboardEntry& entry(std::size_t index) const { return *store.entries()->at(index); }
    /// What the history holds, newest first: texts, and of pictures what follows the PNG signature.
    std::vector<std::string> contents() const {
        std::vector<std::string> result;
        for (const auto& stored : *store.entries()) {
            if (stored->kind == ClipboardContentKind::text)
                result.push_back(stored->text.value());
            else
                result.push_back("PNG:" + system.files.contents(*store.imageFile(*stored)).value().substr(8));
        }
        return result;
    }
    std::vector<std::string> sources() const {
        std::vector<std::string> result;
        for (const auto& stored : *store.entries()) result.push_back(stored->sourceApplication.value());
        return result;
    }
    /// What somebody who pastes would get.
    std::optional<std::string> pasteboardHas(std::string_view type) const {
        const auto data = system.pasteboard.data(type);
        if (!data) return std::nullopt;
        return std::string(data->view());
    }

    FakePlatform system;
    ClipboardStore store{
        {.files = system.files, .clock = system.time, .identifiers = system.identifiers}, std::nullopt, 500};
    int captures = 0;
    std::unique_ptr<ClipboardMonitor> monitor =
        std::make_unique<ClipboardMonitor>(ports(), store, [this] { ++captures; });
};

}  // namespace nettlecap
