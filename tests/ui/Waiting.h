#pragma once

#include <QTest>

namespace nettlecap {

constexpr int patience = 30'000;  // milliseconds, so that no slowness of the machine is a failure

/// Runs the main loop until it holds. False: long past the time for it.
template <class Condition>
bool waitUntil(Condition condition) {
    return QTest::qWaitFor(condition, patience);
}
inline bool waitUntilActive(QWindow& window) { return QTest::qWaitForWindowActive(&window, patience); }
inline bool waitUntilExposed(QWindow& window) { return QTest::qWaitForWindowExposed(&window, patience); }

}  // namespace nettlecap
