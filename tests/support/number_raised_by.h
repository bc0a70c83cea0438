#pragma once

#include <functional>

#include "common/failure.h"

namespace veltrix {

/// The number of the Failure that `statement` raises; 0 when it raises none.
inline int NumberRaisedBy(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const Failure& failure) {
        return failure.Number();
    }
    return 0;
}

}  // namespace veltrix
