// Sends one request to the control socket of a station and prints the answer.

#include <cstdio>
#include <cstring>
#include <string>

#include "platform/qt/control_client.h"

namespace {

constexpr int Usage = 64;

int Complain(const char* text) {
    std::fprintf(stderr, "veltrix-ctl: %s\n", text);
    return Usage;
}

constexpr const char* Help =
    "veltrix-ctl --control PATH REQUEST...\n"
    "\n"
    "  list                          a line per control: name, kind\n"
    "  get NAME[.PROPERTY]           what a control shows; ForeColor, BackColor, Visible,\n"
    "                                ToolTipText, Caption, Left or Top of it\n"
    "  set NAME VALUE                type a text, tick with 0 or 1, choose an entry or a tab\n"
    "  click NAME [left|right]       click on a control\n"
    "  mouse NAME down|move|up|drop X Y [left|right]\n"
    "  point NAME X Y                the colour of a pixel of a picture or mark; -1 outside\n"
    "  save NAME FILE                write what is painted as a BMP file\n"
    "  quit                          close the station\n"
    "\n"
    "Exit code 0 when the station answers ok, 1 when it answers with an error or cannot be reached.\n";

}  // namespace

int main(int argc, char** argv) {
    std::string path;
    std::string request;
    bool inRequest = false;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (!inRequest && word == "--help") {
            std::fputs(Help, stdout);
            return 0;
        }
        if (!inRequest && word == "--version") {
            std::puts("veltrix-ctl " VELTRIX_VERSION);
            return 0;
        }
        if (!inRequest && word.starts_with("--control=")) {
            path = word.substr(word.find('=') + 1);
            continue;
        }
        if (!inRequest && word == "--control") {
            if (++i == argc) return Complain("--control needs a path");
            path = argv[i];
            continue;
        }
        if (!inRequest && word.starts_with("--")) return Complain(("unknown option '" + word + "'").c_str());
        request += inRequest ? " " + word : word;
        inRequest = true;
    }
    if (path.empty()) return Complain("--control PATH is missing; --help tells more");
    if (!inRequest) return Complain("a request is missing; --help tells more");
    if (request.find('\n') != std::string::npos) return Complain("a request is one line");

    const veltrix::ControlAnswer answer = veltrix::AskStation(path, request);
    for (const std::string& line : answer.lines) std::puts(line.c_str());
    if (!answer.failure.empty()) std::fprintf(stderr, "veltrix-ctl: %s\n", answer.failure.c_str());
    return answer.failure.empty() && !answer.lines.empty() && answer.lines.back() == "ok" ? 0 : 1;
}
