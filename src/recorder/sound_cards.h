#pragma once
// The sound cards that this computer has, by PortAudio.

#include <optional>
#include <string>
#include <vector>

namespace veltrix {

/// A device with at least one input channel.
struct SoundCard {
    int device = 0;  ///< PortAudio's number of it, good until PortAudio is ended
    std::string name;
    int channels = 0;  ///< input channels
    bool isDefault = false;
    int nativeRate = 0;   ///< what the sound system calls its own rate, frames a second
    bool isAlsa = false;  ///< reached by ALSA
};

/// PortAudio, from its start to its end. Devices are looked for at the start only, so a card that was plugged
/// in later is found by a new one. What the sound libraries print to standard error at its start and end is
/// thrown away.
class SoundSystem {
  public:
    /// Sets the environment as the sound libraries need it. To be called before the program has threads.
    static void Prepare();

    /// Raises DeviceIo when PortAudio cannot start.
    SoundSystem();
    ~SoundSystem();
    SoundSystem(const SoundSystem&) = delete;
    SoundSystem& operator=(const SoundSystem&) = delete;

    /// Those that can be used now; one that another program holds may be missing.
    std::vector<SoundCard> Cards() const;
    /// The card of that name; else the first whose name contains it, without regard to case. The empty name
    /// is the default card.
    std::optional<SoundCard> Find(const std::string& name) const;
};

/// Sends standard error to nowhere while it lives. The sound libraries print dozens of lines where there is
/// no card.
class QuietErrors {
  public:
    QuietErrors();
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

  private:
    int kept_;
};

}  // namespace veltrix
