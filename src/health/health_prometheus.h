#pragma once
// The figures of a station for a monitoring system, in the text format of Prometheus.

#include <string>
#include <string_view>

#include "health/health_report.h"

namespace veltrix {

/// The content of "stats.prom": text format 0.0.4, each metric with HELP and TYPE. Names and units stand in
/// docs/health.md. A metric whose figure is not known is left out.
std::string HealthPrometheus(const HealthReport& report);

/// The value of a label as that format writes it between quotes: "\", quotes and line ends escaped.
std::string EscapedLabel(std::string_view value);

}  // namespace veltrix
