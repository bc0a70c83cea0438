#pragma once
// A whole station on a computer in memory.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "station/control_requests.h"
#include "station/frm_veltrix.h"
#include "support/samples.h"
#include "support/test_platform.h"

namespace veltrix {

struct TestStation {
    TestPlatform& computer;
    std::vector<std::string> warnings;
    FrmVeltrix form{computer.platform,
                    {"1.2.3", {}, [this](const std::string& line) { warnings.push_back(line); }}};
    ControlRequests requests{form.Controls(), computer.files, [this] { computer.loop.Quit(); }};

    void Start() {
        form.Form_Initialize();
        form.Form_Load();
    }
    /// Lays a block there and waits for the next tick.
    void Feed(const Samples& samples) {
        computer.files.Put("audio.dat", BytesOf(samples));
        computer.loop.Run(100);
    }
    /// The answer to a request, its lines joined by "|".
    std::string Ask(const std::string& request) {
        std::string text;
        for (const std::string& line : requests.Answer(request)) text += text.empty() ? line : "|" + line;
        return text;
    }
    std::string Get(const std::string& name) { return requests.Answer("get " + name).front().substr(2); }
    /// Calls `check` with name and text of each of "NAME=TEXT|NAME=TEXT ...".
    template <class Check>
    static void ForEach(const std::string& texts, Check&& check) {
        std::istringstream all(texts);
        for (std::string name, text; std::getline(all, name, '=') && std::getline(all, text, '|');)
            check(name, text);
    }
    /// Expects that controls show what `texts` says, as "NAME=TEXT|NAME=TEXT ...".
    void ExpectShown(const std::string& texts) {
        ForEach(texts, [&](const std::string& name, const std::string& text) {
            EXPECT_EQ(Get(name), text) << name;
        });
    }
    std::ptrdiff_t LoggedStrikes() {
        return std::ranges::count(computer.files.Content("Data\\20240615N.csv"), '\n');
    }
};

struct StationTest : ::testing::Test {
    TestPlatform computer;
    TestStation station{computer, {}};

    /// Starts, and lets the two seconds pass in which the first block would be thrown away.
    void StartAndSettle() {
        station.Start();
        computer.loop.Run(2500);
    }
};

}  // namespace veltrix
