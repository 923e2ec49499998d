#pragma once

#include "platform/Platform.h"
#include "platform/fake/FakeApplication.h"
#include "platform/fake/FakeBackgroundWork.h"
#include "platform/fake/FakeBundleInfo.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeHotKeyService.h"
#include "platform/fake/FakeIdentifiers.h"
#include "platform/fake/FakeImageCodec.h"
#include "platform/fake/FakeKeyboard.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakePasteboard.h"
#include "platform/fake/FakeSoftwareUpdater.h"
#include "platform/fake/FakeStatusItem.h"
#include "platform/fake/FakeTextMeasure.h"
#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeUserDefaults.h"
#include "platform/fake/FakeWorkspace.h"

namespace nettlecap {

/// A whole system in memory, for tests to build on.
struct FakePlatform {
    FakeTime time;
    FakeBackgroundWork background{time};
    FakeIdentifiers identifiers;
    FakeFileSystem files;
    FakeUserDefaults defaults;
    FakePasteboard pasteboard;
    FakeImageCodec images{files};
    FakeTextMeasure text;
    FakeWorkspace workspace;
    FakeEventMonitors events;
    FakeHotKeyService hotKeys;
    FakeKeyboard keyboard;
    FakeApplication application;
    FakeStatusItem statusItem;
    FakePopover popover;
    FakeLoginItem loginItem;
    FakeSoftwareUpdaters updaters;
    FakeBundleInfo bundle;

    Platform platform() {
        return {.clock = time,
                .scheduler = time,
                .background = background,
                .identifiers = identifiers,
                .files = files,
                .defaults = defaults,
                .pasteboard = pasteboard,
                .images = images,
                .text = text,
                .workspace = workspace,
                .events = events,
                .hotKeys = hotKeys,
                .keyboard = keyboard,
                .application = application};
    }
};

}  // namespace nettlecap
