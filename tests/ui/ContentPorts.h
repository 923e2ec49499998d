#pragma once

#include "platform/fake/FakePlatform.h"
#include "ui/MenuBarContentView.h"

namespace nettlecap {

inline MenuBarContentView::Ports contentPorts(FakePlatform& fake) {
    return {.clock = fake.time,
            .scheduler = fake.time,
            .identifiers = fake.identifiers,
            .images = fake.images,
            .text = fake.text,
            .pasteboard = fake.pasteboard,
            .quit = [] {}};
}

}  // namespace nettlecap
