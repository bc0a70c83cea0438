#pragma once
// What ALSA knows of sound cards that PortAudio does not tell.

#include <string>
#include <vector>

namespace veltrix {

/// What a capture device offers by itself.
struct SoundProbe {
    std::vector<int> rates;  ///< of those that we look for, the ones delivered without a conversion
    bool isServer = false;   ///< a sound server, which says yes to every rate and converts as it likes
    bool isInUse = false;    ///< another program holds it
    std::string holder;      ///< that program, "arecord, process 1234"; empty when it cannot be told
};

/// Looks at a device by PortAudio's name of it; nothing is known of one that ALSA cannot open. Takes
/// milliseconds; the sound libraries may print to standard error.
SoundProbe ProbeSound(const std::string& deviceName);

/// The names of the capture devices that another program holds, in PortAudio's form: PortAudio leaves these
/// out of its list.
std::vector<std::string> SoundCardsInUse();

/// The rates to open a device at, the best one first; the last resort is 22050 Hz, which the sound system
/// then converts to as best it can.
std::vector<int> RatesToTry(const SoundProbe& probe);

/// "is in use by another program (arecord, process 1234)".
std::string InUseText(const std::string& holder);

}  // namespace veltrix
