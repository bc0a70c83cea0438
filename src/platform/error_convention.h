#pragma once
// The error convention: a procedure is a row of steps, and what happens when a step fails is a handler's
// decision.

#include <cstdint>
#include <string>
#include <string_view>

#include "common/failure.h"

namespace veltrix {

/// The context that a procedure under the convention sets on entry; an error report names it. It is not
/// restored on leaving, so that a failure behind a called procedure is reported under the name of that one.
/// The texts REQUIRE to last as long as the program, as literals do: two procedures are entered with every
/// frame.
struct ErrorContext {
    std::string_view ErrProcedure;  ///< name of the last procedure that was entered
    std::string_view ErrStage;      ///< "Init" on entry; a procedure may change it at its steps
    std::int32_t ErrButtons = 2;    ///< 2 is abort, retry, ignore; 64 is information: log only
};

/// Writes failures to the error log and asks the user, and keeps the log of notes. One object for the whole
/// program, handed to every room that reports.
class ErrorReporter {
  public:
    virtual ~ErrorReporter() = default;

    /// The context of the procedure that runs; a procedure changes stage and buttons in it.
    ErrorContext& Context() { return context_; }

    /// Reports `failure` under the present context and returns the user's reply number.
    virtual int ReportRuntimeError(const Failure& failure) = 0;

    /// Writes one line to the error log, as what a failing procedure has to say besides the report that
    /// follows. Never fails.
    virtual void LogLine(std::string_view text) = 0;

    /// Writes one line to the note log of the weekday, unless it equals the note before. Never fails.
    virtual void LogNote(std::string_view text) = 0;

    /// Ends the program at once, at the user's wish; does not return.
    virtual void EndProgram() = 0;

    /// Sets the context of a procedure that begins. `name` as in ErrorContext.
    void EnterProcedure(std::string_view name) { context_ = {name, "Init", 2}; }
    /// Hook on leaving a procedure. It does nothing: it runs with every frame.
    void LeaveProcedure(std::string_view) {}

  private:
    ErrorContext context_;
};

/// What to do about a failed step.
enum class AfterFailure { RunAgain, NextStep, LeaveProcedure };

/// Decides about failed steps.
class FailureHandler {
  public:
    virtual ~FailureHandler() = default;
    /// What the procedure does about a step that raised `failure`.
    virtual AfterFailure OnFailure(const Failure& failure) = 0;
};

/// Passes over every failed step.
class SkipFailures final : public FailureHandler {
  public:
    AfterFailure OnFailure(const Failure&) override { return AfterFailure::NextStep; }
};

/// Reports every failed step and acts on the user's reply: cancel and abort end the program, retry runs the
/// step again, ignore goes on with the next one, anything else leaves the procedure.
class ReportFailures final : public FailureHandler {
  public:
    explicit ReportFailures(ErrorReporter& errors) : errors_(errors) {}
    AfterFailure OnFailure(const Failure& failure) override;

  private:
    ErrorReporter& errors_;
};

/// Runs one step until it succeeds or is given up. False when the procedure is to be left.
template <class Step>
bool RunStep(FailureHandler& handler, Step&& step) {
    for (;;) {
        AfterFailure next = AfterFailure::LeaveProcedure;
        try {
            step();
            return true;
        } catch (const Failure& failure) {
            next = handler.OnFailure(failure);
        }
        if (next != AfterFailure::RunAgain) return next == AfterFailure::NextStep;
    }
}

/// Runs the steps in their order. False when the procedure was left before its end.
template <class... Steps>
bool RunSteps(FailureHandler& handler, Steps&&... steps) {
    return (RunStep(handler, steps) && ...);
}

/// Runs the steps in their order, passing over those that fail.
template <class... Steps>
void SkippingErrors(Steps&&... steps) {
    SkipFailures handler;
    RunSteps(handler, steps...);
}

/// Runs the steps as the procedure `name` under the full convention: context, report and reply. `name` as in
/// ErrorContext. False when the procedure was left before its end.
template <class... Steps>
bool UnderErrorConvention(ErrorReporter& errors, std::string_view name, Steps&&... steps) {
    errors.EnterProcedure(name);
    ReportFailures handler(errors);
    if (!RunSteps(handler, steps...)) return false;
    errors.LeaveProcedure(name);
    return true;
}

}  // namespace veltrix
