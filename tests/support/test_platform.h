#pragma once
// A whole computer in memory for a station under test.

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "common/failure.h"
#include "common/letter_case.h"
#include "platform/platform.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_files.h"

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

    std::vector<std::vector<std::string>> started;  ///< each program, its arguments behind it
    std::set<std::string> missing;                  ///< programs whose start raises FileNotFound
    std::function<void()> onStart;                  ///< plays the started program's part
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

struct TestPlatform {
    ManualClock clock;
    ManualLoop loop{clock};
    MemoryFiles files{clock};
    RecordingProcesses processes;
    MemoryStore store;
    ScriptedMessageBox messageBox;

    Platform platform{clock, loop, files, processes, store, messageBox};
};

}  // namespace veltrix
