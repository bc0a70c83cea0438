#include "station/mark_drag.h"

namespace veltrix {

namespace {

constexpr double PartOfWay = 4;

double PartWay(double from, double to) {
    return (to - from) / PartOfWay + from;
}

}  // namespace

void MarkDrag::Picture4_MouseMove(double x, double y) {
    dLastMoveX = static_cast<float>(x);
    dLastMoveY = static_cast<float>(y);
}

void MarkDrag::Drop(std::int16_t row, double x, double y) {
    taken_.reset();
    marks_.MoveMark(row, PartWay(dLastMoveX, x), PartWay(dLastMoveY, y));
}

void MarkDrag::DropTaken(double x, double y) {
    if (taken_) Drop(*taken_, x, y);
}

}  // namespace veltrix
