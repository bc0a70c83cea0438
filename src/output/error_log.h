#pragma once
// ErrorLog: the log of failures, the question to the user about each of them, and the log of notes.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "output/form_msg_box.h"
#include "platform/error_convention.h"
#include "platform/platform.h"

namespace veltrix {

/// Owned by the form and handed to every part that reports. Both logs lie in ".\log", which is made on
/// demand, and keep one day: a log file that was not written today is deleted before the next entry.
class ErrorLog final : public ErrorReporter {
  public:
    /// `version` is major, minor and revision, such as "1.2.3". REQUIRES that the platform's services outlive
    /// the log.
    ErrorLog(const Platform& platform, const std::string& version);

    /// strVersion: "V", major, ".", minor, ".", revision.
    const std::string& Version() const { return strVersion; }

    /// Writes `failure` to the error log, asks the user with `buttons` and returns the reply number. Nobody
    /// is asked about error number 0 or with buttons 64, which stand for information; the reply is then 0.
    /// Raises what writing the log raises.
    int ReportError(const Failure& failure, std::string_view procedure, std::string_view kind,
                    std::string_view stage, std::int32_t buttons);

    /// ReportError of the present context, of the kind "Runtime Error". A log that cannot be written is
    /// passed over: the user is asked all the same, so that a station whose disk is full goes on by the
    /// reply.
    int ReportRuntimeError(const Failure& failure) override;

    void LogLine(std::string_view text) override;

    /// Appends one line to the file named after today's weekday. A note counts as equal to the one before
    /// when the sums of their bytes are equal; it is dropped then.
    void LogNote(std::string_view text) override;

    void EndProgram() override;

    /// Failures reported since start, those that could not be written to the log included.
    std::uint64_t Reported() const { return reported_; }

    /// ErrStack, entries 1 to ErrDepth: the running procedures, outermost first. The hooks of the convention
    /// leave it empty, so that an entry lists the failing procedure alone.
    std::vector<std::string> ErrStack;

  private:
    struct Report;

    std::string ErrorText(const Failure& failure, std::string_view stage) const;
    void WriteEntry(const Report& report);
    int Ask(const Report& report);
    void WriteReply(int answer);
    /// Makes the folder and the file if they are missing, and deletes a file that was not written today.
    void PrepareFile(const std::string& name, DateTime now);

    Files& files_;
    Clock& clock_;
    MessageBox& messageBox_;
    EventLoop& loop_;
    const std::string strVersion;
    const std::string logName_;
    FormMsgBox formMsgBox_;
    std::int64_t lastNoteSum_ = 0;
    std::uint64_t reported_ = 0;
};

}  // namespace veltrix
