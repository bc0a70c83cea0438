#pragma once
// What every fuzz target shares: its entry point, and the check that ends the run.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Runs one input; called by libFuzzer, or by corpus_main.cpp for each file of the corpus.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace veltrix {

inline std::string_view InputText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the run when what must hold for every input does not.
inline void MustHold(bool condition) {
    if (!condition) std::abort();
}

}  // namespace veltrix
