#pragma once
// Marks that are dragged over the map.

#include <cstdint>
#include <optional>

#include "station/station_marks.h"

namespace veltrix {

/// A mark goes only a quarter of the way from where the mouse last was on the map to where it is dropped,
/// which makes for fine placing. Owned by the form.
class MarkDrag {
  public:
    explicit MarkDrag(MapMarks& marks) : marks_(marks) {}

    /// The mouse has moved over the map.
    void Picture4_MouseMove(double x, double y);
    /// The mark of a row was dropped there on the map, 0 being that of the local station.
    void Drop(std::int16_t row, double x, double y);

    /// The mouse took the mark of a row.
    void Take(std::int16_t row) { taken_ = row; }
    /// It let go of it without a drag.
    void LetGo() { taken_.reset(); }
    /// What the mouse has taken was dropped there on the map.
    void DropTaken(double x, double y);

  private:
    MapMarks& marks_;
    std::optional<std::int16_t> taken_;
    float dLastMoveX = 0;
    float dLastMoveY = 0;
};

}  // namespace veltrix
