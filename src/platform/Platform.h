#pragma once

#include "platform/Application.h"
#include "platform/Files.h"
#include "platform/HotKeyService.h"
#include "platform/Identifiers.h"
#include "platform/Images.h"
#include "platform/InputEvents.h"
#include "platform/Keyboard.h"
#include "platform/Pasteboard.h"
#include "platform/Time.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace nettlecap {

/// Everything a backend offers. Only AppModel and main take it whole; all others name
/// the ports they use.
struct Platform {
    Clock& clock;
    Scheduler& scheduler;
    BackgroundWork& background;
    Identifiers& identifiers;
    FileSystem& files;
    UserDefaults& defaults;
    Pasteboard& pasteboard;
    ImageCodec& images;
    TextMeasure& text;
    Workspace& workspace;
    EventMonitors& events;
    HotKeyService& hotKeys;
    Keyboard& keyboard;
    Application& application;
};

}  // namespace nettlecap
