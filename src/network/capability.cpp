#include "network/capability.h"

#include <algorithm>

namespace veltrix {

std::int32_t ParseMarks(std::string_view line, std::int32_t mask) {
    while (line.starts_with('#')) {
        if (line.starts_with(MarkedEntriesMark)) mask = CapabilitySet(mask, UnderstandsMarkedEntries);
        line.remove_prefix(std::min(MarkedEntriesMark.size(), line.size()));
    }
    return mask;
}

}  // namespace veltrix
