#pragma once

#include <functional>

namespace nettlecap {

/// Runs the main loop of the Qt application, which every test of this program has, until
/// the condition holds. False: it did not within ten seconds.
bool runMainLoopUntil(const std::function<bool()>& condition);

}  // namespace nettlecap
