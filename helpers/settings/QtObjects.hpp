#pragma once

#include <memory>
#include <utility>

namespace vantrel::qt {

/// A Qt object that its parent owns and deletes, as Qt's parents do with the objects in their constructors' `parent`.
template <typename Object, typename... Arguments>
Object& makeOwnedByParent(Arguments&&... arguments) {
    return *std::make_unique<Object>(std::forward<Arguments>(arguments)...).release();
}

}  // namespace vantrel::qt
