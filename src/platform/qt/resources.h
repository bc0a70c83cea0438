#pragma once
// What is built into the program: its files under the names by which Qt reads them.

#include <cstddef>
#include <vector>

namespace veltrix::resources {

/// The names of the files that are part of the program.
inline constexpr char Font[] = ":/fonts/DejaVuSans.ttf";
inline constexpr char Icon[] = ":/pictures/icon.png";
inline constexpr char PolarBackground[] = ":/pictures/polar.png";
inline constexpr char Splash[] = ":/pictures/splash.png";
inline constexpr char Changes[] = ":/CHANGELOG.md";

/// Makes these names readable; to be called before the first of them is read, any number of times.
void Open();

/// The coastlines of the Earth, decompressed; resources/coastlines/README.md tells the format.
std::vector<std::byte> CoastlineBytes();

}  // namespace veltrix::resources
