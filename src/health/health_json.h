#pragma once
// The figures of a station for other programs, as JSON.

#include <string>

#include "health/health_report.h"

namespace veltrix {

/// The content of "stats.json": one object, indented, in UTF-8, with a line end behind it. Keys, units and
/// healthy values stand in docs/health.md. What is not known is null, and so is a level of no sound.
std::string HealthJson(const HealthReport& report);

}  // namespace veltrix
