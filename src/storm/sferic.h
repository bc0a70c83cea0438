#pragma once
// The radio pulse of a lightning discharge as a very-low-frequency receiver hears it.

namespace veltrix {

/// The carrier of the pulse, where the discharges radiate most and the earth-ionosphere guide damps least.
inline constexpr double SfericFrequency = 10000;  // Hz

/// The pulse ends here: what is left of it is a millionth of its peak.
inline constexpr double SfericLength = 0.0077;  // s

/// The field of a pulse of peak 1, `seconds` after its onset: x^2 exp(-x) sin(2 pi 10 kHz t), x = t / 0.35
/// ms. The envelope reaches 1 at 0.7 ms and is down to a tenth at 2 ms. The smooth onset keeps the spectrum
/// narrow: above half the sample rate it is 23 dB down, so that sampling it does not blur it. 0 outside the
/// pulse.
double SfericAt(double seconds);

/// The greatest magnitude of that pulse behind the station's detection filter, which is the mean of eight
/// samples with alternating signs; taken over all places of the pulse between the samples. A pulse on one
/// given row of samples shows 0.85 to 1 of it.
double SfericPeakBehindFilter();

}  // namespace veltrix
