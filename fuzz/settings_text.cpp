// A settings file as a damaged disk or a hasty editor may leave it: what is written says the same when it is
// read again, and every value is there.

#include <string>

#include "fuzz_input.h"
#include "platform/qt/ini_text.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = InputText(data, size);
    IniText settings(input);
    MustHold(IniText::KeepsAllOf(settings.Text()));

    const std::string section(input.substr(0, input.size() / 4));
    const std::string key(input.substr(input.size() / 4, input.size() / 4));
    const std::string value = StorableText(input.substr(input.size() / 2));
    settings.SetValue(section, key, value);
    MustHold(settings.Value(section, key) == value);
    MustHold(IniText(settings.Text()).Value(section, key) == value);
    return 0;
}
