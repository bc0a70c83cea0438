// A whole station in memory: it starts on settings, is operated and is fed with samples. The first byte of
// each line of the input tells what the line is: "s" a setting, key and value by "="; "r" a request; "b" a
// block.

#include <sstream>
#include <string>

#include "fuzz_input.h"
#include "station/control_requests.h"
#include "station/frm_veltrix.h"
#include "support/test_platform.h"

using namespace veltrix;

namespace {

void SaveSetting(TestPlatform& computer, const std::string& line) {
    const std::size_t sign = line.find('=');
    if (sign == std::string::npos) return;
    computer.store.SaveSetting("setting", line.substr(0, sign), line.substr(sign + 1));
}

void Operate(TestPlatform& computer, FrmVeltrix& form, const std::string& input) {
    ControlRequests requests(form.Controls(), computer.files, [] {});
    std::istringstream lines(input);
    for (std::string line; std::getline(lines, line);) {
        const std::string rest = line.empty() ? line : line.substr(1);
        if (line.starts_with('r')) {
            const std::vector<std::string> answer = requests.Answer(rest);
            MustHold(!answer.empty() && (answer.back() == "ok" || answer.back().starts_with("error ")));
        }
        if (line.starts_with('b')) {
            computer.files.Put("audio.dat", rest);
            computer.loop.Run(200);
            MustHold(!computer.files.Exists("audio.dat"));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(InputText(data, size));
    TestPlatform computer;
    std::istringstream lines(input);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with('s')) SaveSetting(computer, line.substr(1));
    FrmVeltrix form(computer.platform, {});
    form.Form_Initialize();
    form.Form_Load();
    computer.loop.Run(2500);
    Operate(computer, form, input);
    form.Form_Unload();
    MustHold(computer.messageBox.questions.empty());
    return 0;
}
