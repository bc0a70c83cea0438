#pragma once
// A whole computer in memory for a station under test.

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "common/failure.h"
#include "common/letter_case.h"
#include "platform/platform.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_files.h"
#include "support/memory_sockets.h"
#include "support/plain_glyphs.h"

namespace veltrix {

/// Processes that are only written down.
struct RecordingProcesses final : Processes {
    long long Start(std::string_view program, const std::vector<std::string>& arguments,
                    WindowStyle) override {
        if (missing.contains(std::string(program)))
            throw Failure(errors::FileNotFound, "File not found: " + std::string(program), "Processes");
        started.push_back({std::string(program)});
        started.back().insert(started.back().end(), arguments.begin(), arguments.end());
        if (onStart) onStart();
        return 1000 + static_cast<long long>(started.size());
    }
    void AskToClose(long long process) override { askedToClose.push_back(process); }

    std::vector<long long> askedToClose;
    std::vector<std::vector<std::string>> started;  ///< each program, its arguments behind it
    std::set<std::string> missing;                  ///< programs whose start raises FileNotFound
    std::function<void()> onStart;                  ///< plays the started program's part
};

/// A clipboard in memory.
struct MemoryClipboard final : Clipboard {
    void SetText(const std::string& newText) override { text = newText; }
    std::string text = "untouched";
};

/// A computer in the state that a test has given it.
struct SetComputer final : Computer {
    std::optional<DiskSpace> Space() override { return space; }
    std::optional<bool> IsClockSynchronised() override { return clockSynchronised; }

    std::optional<DiskSpace> space = DiskSpace{8'000'000'000, 16'000'000'000};
    std::optional<bool> clockSynchronised = true;
};

/// A settings store in memory.
struct MemoryStore final : SettingsStore {
    std::string GetSetting(std::string_view section, std::string_view key,
                           std::string_view defaultText) override {
        const auto found = values_.find(Place(section, key));
        return found == values_.end() ? std::string(defaultText) : found->second;
    }
    void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override {
        values_[Place(section, key)] = value;
        ++saves;
    }

    int saves = 0;  ///< calls of SaveSetting

  private:
    static std::string Place(std::string_view section, std::string_view key) {
        return LowerCase(section) + "\n" + LowerCase(key);
    }

    std::map<std::string, std::string> values_;
};

/// A message box that answers by a script.
struct ScriptedMessageBox final : MessageBox {
    int Ask(const Question& question) override {
        questions.push_back(question);
        if (onAsk) onAsk();
        if (replies.empty()) return reply::Ignore;
        const int next = replies.front();
        replies.pop_front();
        return next;
    }

    std::vector<Question> questions;
    std::deque<int> replies;      ///< taken one by one; `reply::Ignore` when there are no more
    std::function<void()> onAsk;  ///< runs while the box stands
};

/// Pictures that a test has laid there.
struct MemoryPictures final : Pictures {
    Bitmap Load(std::string_view name) override {
        const auto found = all.find(LowerCase(name));
        if (found == all.end()) throw Failure(errors::FileNotFound, "File not found", "Pictures");
        if (found->second.pixels.empty())
            throw Failure(errors::InvalidPicture, "Invalid picture", "Pictures");
        return found->second;
    }
    Bitmap BuiltIn(BuiltInPicture which) override {
        const int side = which == BuiltInPicture::PolarBackground ? 557 : 48;
        return {side, side, std::vector<ColourValue>(static_cast<std::size_t>(side * side), Ground)};
    }

    /// None: a station under test draws its maps without them.
    std::vector<std::byte> Coastlines() override { return {}; }

    static constexpr ColourValue Ground = Rgb(8, 9, 10);  ///< of those built in
    std::map<std::string, Bitmap, std::less<>> all;  ///< by name in lower case; one without pixels is damaged
};

/// What the computers of a test have in common.
struct TestWorld {
    ManualClock clock;
    ManualLoop loop{clock};
    MemoryNetwork network{loop};
};

/// One computer; it lives in a world of its own or in that of a neighbour.
struct TestPlatform {
    TestPlatform() : TestPlatform(std::make_shared<TestWorld>(), "10.0.0.1") {}
    TestPlatform(TestPlatform& neighbour, std::string itsAddress)
        : TestPlatform(neighbour.world, std::move(itsAddress)) {}
    TestPlatform(std::shared_ptr<TestWorld> itsWorld, std::string itsAddress)
        : world(std::move(itsWorld)), address(std::move(itsAddress)) {}
    TestPlatform(const TestPlatform&) = delete;
    TestPlatform& operator=(const TestPlatform&) = delete;

    std::shared_ptr<TestWorld> world;
    std::string address;  ///< on the network
    ManualClock& clock = world->clock;
    ManualLoop& loop = world->loop;
    MemoryNetwork& network = world->network;
    MemoryFiles files{clock};
    RecordingProcesses processes;
    MemoryStore store;
    ScriptedMessageBox messageBox;
    MemoryPictures pictures;
    PlainGlyphs glyphs;
    MemoryClipboard clipboard;
    SetComputer computer;

    Platform platform{clock,      loop,     files,  processes,           store,
                      messageBox, pictures, glyphs, network.At(address), clipboard,
                      computer};
};

}  // namespace veltrix
