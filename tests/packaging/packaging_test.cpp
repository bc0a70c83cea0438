// What is installed beside the programs: manual pages, the service, the entry in the menu, maintainer and
// other scripts.

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <filesystem>
#include <regex>
#include <set>

#include "support/running_program.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;

const fs::path Source = VELTRIX_SOURCE_DIR;

std::string Content(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string FirstLine(const fs::path& file) {
    std::string line;
    std::ifstream stream(file);
    std::getline(stream, line);
    return line;
}

const std::regex Shell("^#!.*sh$");

/// What a checker says, with its exit code where that is not 0; empty when it is content.
std::string Complaints(const char* tool, const std::vector<fs::path>& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QStringList words;
    for (const fs::path& argument : arguments) words << QString::fromStdString(argument.string());
    process.start(QString::fromLatin1(tool), words);
    if (!process.waitForFinished(90000)) return "no answer";
    const std::string text = process.readAll().toStdString();
    return process.exitCode() == 0 ? text : text + "exit code " + std::to_string(process.exitCode());
}

bool IsInstalled(const char* tool) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty();
}

#define SKIP_WITHOUT(tool) \
    if (!IsInstalled(tool)) GTEST_SKIP() << "there is no " tool

/// The programs of the package, by their manual pages.
std::vector<std::string> Programs() {
    std::vector<std::string> names;
    for (const auto& page : fs::directory_iterator(Source / "packaging/man"))
        names.push_back(page.path().stem().string());
    return names;
}

TEST(ManualPages, NameEveryOptionThatHelpNames) {
    const std::vector<std::string> programs = Programs();
    ASSERT_EQ(programs.size(), 7U);
    for (const std::string& program : programs) {
        RunningProgram asked(program, {"--help"});
        ASSERT_EQ(asked.Wait(), 0) << program;
        // Options as they stand in the source of a page, which writes a hyphen as "\-".
        const std::string page = std::regex_replace(Content(Source / "packaging/man" / (program + ".1")),
                                                    std::regex(R"(\\-)"), "-");
        // At the start of a line of the help, perhaps after others.
        const std::string help = asked.Output();
        const std::regex option(R"((^|\n|, |\[) *((--|/)[a-z?][a-z0-9-]*))");
        std::set<std::string> missing;
        for (std::sregex_iterator found(help.begin(), help.end(), option), end; found != end; ++found)
            if (page.find((*found)[2]) == std::string::npos) missing.insert((*found)[2]);
        EXPECT_TRUE(missing.empty()) << program << ".1 lacks " << testing::PrintToString(missing);
        EXPECT_NE(page.find("--help"), std::string::npos) << program;
    }
}

TEST(ManualPages, AreWellFormed) {
    SKIP_WITHOUT("mandoc");
    for (const std::string& program : Programs())
        EXPECT_EQ(Complaints("mandoc", {"-Tlint", "-Wwarning", Source / "packaging/man" / (program + ".1")}),
                  "");
}

TEST(MenuEntry, IsValidAndNamedByItsDescription) {
    const fs::path desktop = Source / "packaging/desktop";
    EXPECT_NE(Content(desktop / "org.veltrix.veltrix.metainfo.xml").find(">veltrix.desktop<"),
              std::string::npos);
    SKIP_WITHOUT("desktop-file-validate");
    EXPECT_EQ(Complaints("desktop-file-validate", {"--no-hints", desktop / "veltrix.desktop"}), "");
}

TEST(MenuEntry, IsDescribedForSoftwareCentres) {
    SKIP_WITHOUT("appstreamcli");
    const std::string said =
        Complaints("appstreamcli",
                   {"validate", "--no-net", Source / "packaging/desktop/org.veltrix.veltrix.metainfo.xml"});
    EXPECT_EQ(said.find("exit code"), std::string::npos) << said;
}

TEST(MenuEntry, StartsTheStationInAFolderOfItsOwn) {
    // The command as the desktop reads it: escapes of the file, then those within the quotes, twice a
    // backslash each.
    const std::string file = Content(Source / "packaging/desktop/veltrix.desktop");
    std::smatch line;
    ASSERT_TRUE(std::regex_search(file, line, std::regex(R"re(\nExec=sh -c "(.*)"\n)re")));
    const std::string command = std::regex_replace(line[1].str(), std::regex(R"(\\\\(.))"), "$1");
    const ScratchFolder folder;
    folder.Put("veltrix", "#!/bin/sh\nprintf '%s|' \"$@\" >\"$HOME/called\"\n");
    fs::permissions(folder / "veltrix", fs::perms::owner_all);
    QProcess shell;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("HOME"), QString::fromStdString(folder.Text()));
    variables.insert(QStringLiteral("PATH"), QString::fromStdString(folder.Text()));
    shell.setProcessEnvironment(variables);
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromStdString(command)});
    ASSERT_TRUE(shell.waitForFinished(90000));
    EXPECT_EQ(folder.Content("called"), "--dir|" + folder.Text() + "/veltrix|") << command;
}

TEST(Service, IsWellFormedAndItsCommandLineIsUnderstood) {
    for (const char* const unit : {"veltrix.service", "veltrix@.service"}) {
        const std::string text = Content(fs::path(VELTRIX_UNITS_DIR) / unit);
        EXPECT_EQ(text.find("@VELTRIX"), std::string::npos) << unit;
        // Every option is one of the program's.
        const std::string command =
            text.substr(text.find("ExecStart="), text.find("$VELTRIX_OPTIONS") - text.find("ExecStart="));
        RunningProgram asked("veltrix", {"--help"});
        ASSERT_EQ(asked.Wait(), 0);
        const std::regex option("--[a-z]+");
        for (std::sregex_iterator found(command.begin(), command.end(), option), end; found != end; ++found)
            EXPECT_NE(asked.Output().find("  " + found->str() + ' '), std::string::npos) << found->str();
    }
    SKIP_WITHOUT("systemd-analyze");
    // Its program is not installed here, so the one that has been built stands for it.
    const ScratchFolder folder;
    for (const auto& [unit, place] : {std::pair{"veltrix.service", "veltrix.service"},
                                      std::pair{"veltrix@.service", "veltrix@second.service"}}) {
        const std::string text = Content(fs::path(VELTRIX_UNITS_DIR) / unit);
        folder.Put(place, std::regex_replace(text, std::regex("ExecStart=[^ ]*"),
                                             "ExecStart=" VELTRIX_BIN_DIR "/veltrix"));
        const std::string said = Complaints("systemd-analyze", {"--man=no", "verify", folder / place});
        // It may complain of other units of this computer.
        EXPECT_EQ(said.find(place), std::string::npos) << said;
    }
}

TEST(Scripts, HaveNoKnownFault) {
    SKIP_WITHOUT("shellcheck");
    std::vector<fs::path> scripts = {"-x", "--severity=warning", Source / "run", Source / "test",
                                     Source / ".ci/run"};
    for (const char* const folder : {"scripts", "packaging/debian"})
        for (const auto& file : fs::recursive_directory_iterator(Source / folder))
            if (file.is_regular_file() &&
                (file.path().extension() == ".sh" || std::regex_search(FirstLine(file), Shell)))
                scripts.push_back(file);
    scripts.insert(scripts.begin(), "--source-path=" + Source.string());
    EXPECT_EQ(Complaints("shellcheck", scripts), "");
}

}  // namespace
}  // namespace veltrix
