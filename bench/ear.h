#pragma once
// The detector by itself.

#include <cstdint>
#include <span>
#include <vector>

#include "detection/detector.h"

namespace veltrix {

/// A pulse as the detector measured it.
struct Caught {
    Pulse pulse;
    std::int64_t delivered = 0;  ///< the end of the block, ms
};

/// A detector with nobody behind it.
class Ear final : public PulseReceiver {
  public:
    /// Sample numbers go on from `counter`, so that those of several stations differ.
    explicit Ear(std::int32_t counter) { detector_.lSampleCounter = counter; }

    /// Takes a block that ends at `blockEnd` ms.
    void Listen(std::span<const std::int16_t> samples, std::int64_t blockEnd) {
        blockEnd_ = blockEnd;
        SkipFailures failures;
        detector_.Process(samples, failures);
    }

    void OnTrigger() override {}
    void OnPulseEnd() override {}
    void ShowClipping(bool) override {}
    bool Deliver(const Pulse& pulse, FailureHandler&) override {
        caught.push_back({pulse, blockEnd_});
        return true;
    }

    std::vector<Caught> caught;

  private:
    NoiseControl noise_;
    Detector detector_{noise_, *this, [] { return 0; }};
    std::int64_t blockEnd_ = 0;
};

}  // namespace veltrix
