// Runs a recording through the detector alone and prints each pulse with all digits: what another way of
// detecting is compared with.
//
// Usage: detect_recording FILE.wav, two channels of 16 bits. Standard output: a line
// "sample,bearing,dB,points,fit error" for each pulse. Standard error: the seconds of processor time that
// reading and detection took.

#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

#include "bench/ear.h"

using namespace veltrix;

namespace {

constexpr std::size_t BlockSamples = 65536;

/// Moves a WAV file to the samples. False when it holds none.
bool FindSamples(std::istream& file) {
    char header[12];
    if (!file.read(header, sizeof header) || std::memcmp(header + 8, "WAVE", 4) != 0) return false;
    char chunk[8];
    while (file.read(chunk, sizeof chunk)) {
        if (std::memcmp(chunk, "data", 4) == 0) return true;
        std::uint32_t size = 0;
        std::memcpy(&size, chunk + 4, sizeof size);
        file.seekg(size + (size & 1), std::ios::cur);
    }
    return false;
}

/// The most memory that the process has held, kB.
long PeakMemory() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != "VmHWM:") continue;
    long peak = 0;
    status >> peak;
    return peak;
}

double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

}  // namespace

int main(int count, char** words) {
    std::ifstream file(count == 2 ? words[1] : "", std::ios::binary);
    if (!FindSamples(file)) {
        std::fprintf(stderr, "detect_recording: needs a WAV file\n");
        return 1;
    }
    const double start = ProcessorSeconds();
    Ear ear(0);
    std::vector<std::int16_t> samples(BlockSamples);
    do {
        file.read(reinterpret_cast<char*>(samples.data()), BlockSamples * sizeof(std::int16_t));
        const auto read = static_cast<std::size_t>(file.gcount()) / sizeof(std::int16_t);
        ear.Listen(std::span(samples).first(read), 0);
    } while (file);
    const double took = ProcessorSeconds() - start;
    for (const auto& [pulse, delivered] : ear.caught)
        std::printf("%.0f,%.17g,%.17g,%d,%.17g\n", pulse.dLocalSample, pulse.dDir, pulse.dAmp, pulse.N,
                    pulse.dFitError);
    std::fprintf(stderr, "%.6f %ld\n", took, PeakMemory());
    return 0;
}
