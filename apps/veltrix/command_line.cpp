#include "command_line.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace veltrix {

namespace {

CommandLine::Print PrintOf(const std::string& word) {
    if (word == "detections") return CommandLine::Print::Detections;
    if (word == "fixes") return CommandLine::Print::Fixes;
    if (word == "none") return CommandLine::Print::Nothing;
    throw WrongCommandLine{"--print takes detections, fixes or none, not '" + word + "'"};
}

std::string AddressOf(const std::string& text) {
    std::array<unsigned, 4> parts{};
    char rest = 0;
    const int read =
        std::sscanf(text.c_str(), "%3u.%3u.%3u.%3u%c", &parts[0], &parts[1], &parts[2], &parts[3], &rest);
    bool good = read == 4;
    for (const unsigned part : parts) good = good && part < 256;
    if (!good) throw WrongCommandLine{"--address takes an IPv4 address, not '" + text + "'"};
    return text;
}

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const std::size_t sign = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        const std::string option = argument.substr(0, sign);
        bool valueTaken = false;
        const auto value = [&]() -> std::string {
            valueTaken = true;
            std::string text;
            if (sign != std::string::npos)
                text = argument.substr(sign + 1);
            else if (i + 1 < arguments.size())
                text = arguments[++i];
            if (text.empty()) throw WrongCommandLine{option + " needs a value"};
            return text;
        };
        if (option == "--headless") {
            line.headless = true;
        } else if (option == "--version") {
            line.version = true;
        } else if (option == "--help") {
            line.help = true;
        } else if (option == "--dir") {
            line.directory = value();
        } else if (option == "--settings") {
            line.settings = value();
        } else if (option == "--address") {
            line.address = AddressOf(value());
        } else if (option == "--recorder") {
            line.recorder = value();
        } else if (option == "--control") {
            line.control = value();
        } else if (option == "--print") {
            line.print = PrintOf(value());
        } else {
            throw WrongCommandLine{"unknown option '" + argument + "'; --help lists them"};
        }
        if (sign != std::string::npos && !valueTaken) throw WrongCommandLine{option + " takes no value"};
    }
    return line;
}

std::string HelpText() {
    return "veltrix - a lightning-observation station\n"
           "\n"
           "  --headless         run without a window\n"
           "  --dir DIR          working directory of the station, made if missing (default: the present "
           "one)\n"
           "  --settings FILE    settings file in place of the per-user store\n"
           "  --address IP       IPv4 address for everything the station listens on or connects from\n"
           "  --recorder CMD     program to start in place of SndInput; none: start no recorder\n"
           "  --control PATH     local socket on which veltrix-ctl operates the station\n"
           "  --print WHAT       detections, fixes (default) or none: what is printed line by line\n"
           "  --version, --help  print this and end\n"
           "\n"
           "The station ends on an interrupt or terminate signal. Manual: docs/ of the source tree.\n";
}

}  // namespace veltrix
