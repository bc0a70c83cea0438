#pragma once
// An error reporter that writes everything down and answers by a script.

#include <deque>
#include <string>
#include <vector>

#include "platform/error_convention.h"
#include "platform/message_box.h"
#include "support/program_ended.h"

namespace veltrix {

struct RecordingErrors final : ErrorReporter {
    struct Report {
        ErrorContext context;
        Failure failure;
    };

    int ReportRuntimeError(const Failure& failure) override {
        reports.push_back({Context(), failure});
        if (replies.empty()) return reply::Ignore;
        const int next = replies.front();
        replies.pop_front();
        return next;
    }
    void LogLine(std::string_view text) override { lines.emplace_back(text); }
    void LogNote(std::string_view text) override { notes.emplace_back(text); }
    [[noreturn]] void EndProgram() override { throw ProgramEnded{}; }

    std::vector<Report> reports;
    std::vector<std::string> lines;  ///< of the error log, beside the reports
    std::vector<std::string> notes;  ///< all, equal ones in a row included
    std::deque<int> replies;         ///< taken one by one; `reply::Ignore` when there are no more
};

}  // namespace veltrix
