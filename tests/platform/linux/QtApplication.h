#pragma once

#include <functional>

namespace nettlecap {

/// Runs the main loop of the Qt application, which every test of this program has, until
/// the condition holds. False: it did not within half a minute.
bool runMainLoopUntil(const std::function<bool()>& condition);

}  // namespace nettlecap
