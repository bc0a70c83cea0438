#pragma once
// The truth about a storm as a text table, for those who check what a station made of it.

#include <string>

#include "storm/propagation.h"
#include "storm/scenario.h"
#include "storm/strike_generator.h"

namespace veltrix {

/// Writes the lines of the table, comma separated, each with its line feed; docs/storm.md tells the columns
/// to the byte. The scenario must outlive it.
class TruthTable {
  public:
    explicit TruthTable(const Scenario& scenario);

    /// The first line, with the titles of the columns.
    std::string Header() const;
    /// The line of one strike.
    std::string Row(const Strike& strike) const;
    /// The lines of all strikes with `from` <= time < `to`, in the order of time.
    std::string Rows(UtcTime from, UtcTime to) const;

  private:
    const Scenario& scenario_;
    StrikeGenerator strikes_;
    Propagation propagation_;
};

}  // namespace veltrix
