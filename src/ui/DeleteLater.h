#pragma once

#include <QObject>
#include <memory>

namespace nettlecap {

struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
};

/// For objects that may be dropped from within a call of their own.
template <class Object>
using DeletedLater = std::unique_ptr<Object, DeleteLater>;

}  // namespace nettlecap
