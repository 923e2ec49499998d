#pragma once

#include "platform/StatusItem.h"

#include <QIcon>

namespace nettlecap {

/// Nothing tints a picture here, and nobody tells what colour a panel has: so the shapes are
/// light with a dark outline, and read on everything. In the sizes that panels ask for.
QIcon templateIcon(const TemplateDrawing& drawing);

}  // namespace nettlecap
