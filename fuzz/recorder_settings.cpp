// SndInput.ini, the source named in the environment, and the command line: the first line of the input is the
// environment's source, the second the arguments, the rest the file.

#include <sstream>
#include <string>
#include <vector>

#include "fuzz_input.h"
#include "recorder/recorder_options.h"
#include "recorder/source_choice.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input{std::string(InputText(data, size))};
    std::string source;
    std::string arguments;
    std::getline(input, source);
    std::getline(input, arguments);
    std::string file;
    std::getline(input, file, '\0');

    try {
        const SourceChoice choice = ChooseSource(source.empty() ? std::nullopt : std::optional(source),
                                                 ParseRecorderIni(file, "input"));
        MustHold(choice.idle.count() > 0);
    } catch (const WrongRecorderOption& wrong) {
        MustHold(wrong.text.find('\n') == std::string::npos);
    }
    try {
        std::istringstream words(arguments);
        std::vector<std::string> list;
        for (std::string word; words >> word;) list.push_back(word);
        const RecorderOptions options = ReadRecorderOptions(list);
        MustHold(options.maxBytes > 0 && options.gain > 0);
    } catch (const WrongRecorderOption& wrong) {
        MustHold(wrong.text.find('\n') == std::string::npos);
    }
    return 0;
}
