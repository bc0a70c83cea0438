// What a tick costs: without a block, which is most of them, and with one read from a real folder.

#include <benchmark/benchmark.h>

#include <array>
#include <random>
#include <string>

#include "detection/block_intake.h"
#include "platform/qt/desk_files.h"
#include "station/frm_veltrix.h"
#include "support/scratch_folder.h"
#include "support/test_platform.h"

namespace {

using namespace veltrix;

/// A station on real files and a clock of its own.
struct DeskStation {
    ScratchFolder folder;
    DeskFiles files{folder.Text()};
    TestPlatform computer;
    FrmVeltrix form{{computer.clock, computer.loop, files, computer.processes, computer.store,
                     computer.messageBox, computer.pictures, computer.glyphs, computer.platform.sockets,
                     computer.clipboard, computer.computer},
                    {}};

    DeskStation() {
        form.Form_Initialize();
        form.Form_Load();
        computer.loop.Run(3000);
    }
};

void TickWithoutABlock(benchmark::State& state) {
    DeskStation station;
    for (auto _ : state) station.computer.loop.Run(100);
}
BENCHMARK(TickWithoutABlock);

void TickWithABlockOfHundredMilliseconds(benchmark::State& state) {
    DeskStation station;
    std::string block;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> noise(-20, 20);
    for (int i = 0; i < 2 * 2205; ++i) {
        const int sample = noise(random);
        block += {static_cast<char>(sample), static_cast<char>(sample >> 8)};
    }
    for (auto _ : state) {
        state.PauseTiming();
        station.folder.Put("audio.dat", block);
        state.ResumeTiming();
        station.computer.loop.Run(100);
    }
}
BENCHMARK(TickWithABlockOfHundredMilliseconds);

/// The plain way: two reads of two bytes a frame.
void BlockBySingleReads(benchmark::State& state) {
    const ScratchFolder folder;
    DeskFiles files(folder.Text());
    const std::string block(4 * 32768, '\1');
    for (auto _ : state) {
        state.PauseTiming();
        folder.Put("audio.dat", block);
        state.ResumeTiming();
        const auto file = files.Open("audio.dat");
        std::array<std::byte, 2> sample{};
        while (file->Read(sample) == sample.size()) benchmark::DoNotOptimize(sample);
    }
}
BENCHMARK(BlockBySingleReads);

void BlockByIntake(benchmark::State& state) {
    const ScratchFolder folder;
    DeskFiles files(folder.Text());
    BlockIntake intake(files);
    const std::string block(4 * 32768, '\1');
    for (auto _ : state) {
        state.PauseTiming();
        folder.Put("audio.dat", block);
        state.ResumeTiming();
        intake.Take(
            "audio.dat", [] {},
            [](std::span<const std::int16_t> samples) {
                benchmark::DoNotOptimize(samples.data());
                return true;
            });
    }
}
BENCHMARK(BlockByIntake);

}  // namespace
