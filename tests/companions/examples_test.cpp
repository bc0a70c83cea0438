// The scripts of packaging/examples, run by the shell as the station runs them.

#include <gtest/gtest.h>

#include <QProcess>
#include <filesystem>

#include "display/bitmap_file.h"
#include "support/running_program.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;

/// A working folder with an example in it.
class Examples : public testing::Test {
  protected:
    void Take(const char* name) {
        fs::copy(fs::path(VELTRIX_SOURCE_DIR) / "packaging/examples" / name, folder_ / name);
    }
    void PutProgram(const char* name, const std::string& commands) {
        folder_.Put(name, "#!/bin/sh\n" + commands);
        fs::permissions(folder_ / name, fs::perms::owner_all);
    }
    /// Runs a script in the folder, which comes first on the search path; returns the exit code.
    int Run(const char* script, const QStringList& arguments = {}) {
        QProcess process;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert(QStringLiteral("PATH"),
                         QString::fromStdString(folder_.Text() + ":" VELTRIX_BIN_DIR ":") +
                             variables.value(QStringLiteral("PATH")));
        process.setProcessEnvironment(variables);
        process.setWorkingDirectory(QString::fromStdString(folder_.Text()));
        process.start(QStringLiteral("/bin/sh"), QStringList(QString::fromLatin1(script)) + arguments);
        return process.waitForFinished(90000) ? process.exitCode() : -1;
    }
    bool Has(const char* name, const std::string& text) const {
        return folder_.Content(name).find(text) != std::string::npos;
    }

    ScratchFolder folder_;
};

TEST_F(Examples, PageNamesStationAndKeepsPicturesThatFail) {
    Take("publish.bat");
    folder_.Put("publish.conf", "STATION = A<b>&\"$(id)\r\nAFTER=cp web/index.html after.html");
    const std::string bitmap = BmpBytes({8, 6, std::vector<ColourValue>(48)});
    folder_.Put("picture4.bmp", bitmap);
    folder_.Put("picture1.bmp", bitmap.substr(0, 60));
    folder_.Put("web/picture1.png", "older");
    fs::last_write_time(folder_ / "web/picture1.png",
                        fs::file_time_type::clock::now() - std::chrono::hours(1));

    EXPECT_EQ(Run("publish.bat"), 0) << folder_.Content("publish.log");
    EXPECT_TRUE(Has("web/index.html", "<h1>Lightning at A&lt;b&gt;&amp;&quot;$(id)</h1>"));
    EXPECT_TRUE(Has("web/index.html", "width=\"8\" height=\"6\""));
    EXPECT_TRUE(Has("web/index.html", "Not renewed since"));
    EXPECT_TRUE(Has("web/index.html", "No picture yet")) << "the history";
    EXPECT_EQ(folder_.Content("web/picture4.png"), folder_.Content("picture4.png"));
    EXPECT_EQ(folder_.Content("web/picture1.png"), "older");
    EXPECT_TRUE(Has("publish.log", "picture1.bmp could not be published"));
    EXPECT_EQ(folder_.Content("after.html"), folder_.Content("web/index.html"));
    for (const auto& entry : fs::directory_iterator(folder_ / "web"))
        EXPECT_NE(entry.path().extension(), ".new") << entry.path();
}

TEST_F(Examples, AlarmHoldsItselfBackAndBearsTheRequestToClose) {
    Take("Alarm.exe");
    PutProgram("notify-send", "kill -TERM $(cat pid); echo \"$3\" >>notices\n");
    for (const char* const player : {"paplay", "pw-play", "aplay"}) PutProgram(player, "exit 1\n");
    PutProgram("canberra-gtk-play", "echo sound >>notices\n");
    const QString strike = QStringLiteral("12.3;8.4;-52.01234;005.43210;2026/11/21 06:30:12");
    EXPECT_EQ(Run("-c", {QStringLiteral("echo $$ >pid; exec ./Alarm.exe '%1'").arg(strike)}), 0);
    EXPECT_EQ(folder_.Content("notices"), "Lightning 8.4 km away\nsound\n");
    EXPECT_EQ(
        folder_.Content("alarm.log"),
        "2026/11/21 06:30:12  12.3 strikes a minute, the last one 8.4 km away at -52.01234, 005.43210\n");
    EXPECT_EQ(Run("Alarm.exe", {strike}), 0);
    EXPECT_EQ(folder_.Content("notices"), "Lightning 8.4 km away\nsound\n") << "within the hold-off";
    EXPECT_EQ(Run("Alarm.exe", {QStringLiteral("nonsense")}), 64);
}

TEST_F(Examples, FtpHandsThePasswordToCurlByAPipe) {
    Take("ftp");
    PutProgram("curl", "echo \"$@\" >arguments; cat >configuration\n");
    folder_.Put(
        "publish.cmd",
        "me\r\np\"a\\ss: w\r\nbinary\r\ncd public\r\nput a b\r\nrename b picture.png\r\nquit\r\nput c");
    folder_.Put("a", "a picture");
    EXPECT_EQ(Run("ftp",
                  {QStringLiteral("-s:publish.cmd"), QStringLiteral("host.invalid"), QStringLiteral("2121")}),
              0)
        << folder_.Content("ftp.log");
    EXPECT_EQ(folder_.Content("arguments"), "-q --config -\n");
    EXPECT_TRUE(Has("configuration", "user = \"me:p\\\"a\\\\ss: w\"\nssl-reqd\n"))
        << folder_.Content("configuration");
    EXPECT_TRUE(Has("configuration",
                    "upload-file = \"a\"\nurl = \"ftp://host.invalid:2121/%70%75%62%6c%69%63/%62\"\nnext\n"));
    EXPECT_TRUE(Has("configuration", "quote = \"*RNFR public/b\"\nquote = \"*RNTO public/picture.png\"\n"));
    EXPECT_EQ(Run("ftp", {QStringLiteral("-s:publish.cmd")}), 64);
}

}  // namespace
}  // namespace veltrix
