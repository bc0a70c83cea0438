#include "platform/error_convention.h"

#include "platform/message_box.h"

namespace veltrix {

AfterFailure ReportFailures::OnFailure(const Failure& failure) {
    const int answer = errors_.ReportRuntimeError(failure);
    if (answer == reply::Cancel || answer == reply::Abort) errors_.EndProgram();
    if (answer == reply::Retry) return AfterFailure::RunAgain;
    return answer == reply::Ignore ? AfterFailure::NextStep : AfterFailure::LeaveProcedure;
}

}  // namespace veltrix
