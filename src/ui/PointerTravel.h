#pragma once

#include <QPointF>
#include <optional>
#include <utility>

namespace nettlecap {

/// Tells the pointer that enters a row from the row that comes to lie under a pointer at
/// rest, by scrolling or because the list has only just appeared. All positions are of one
/// space, which does not scroll.
class PointerTravel {
public:
    void restsAt(QPointF position) { last_ = position; }
    void leaves() { last_.reset(); }
    /// False: that is where it was before.
    bool movesTo(QPointF position) { return std::exchange(last_, position) != position; }

private:
    std::optional<QPointF> last_;
};

}  // namespace nettlecap
