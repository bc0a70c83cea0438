#pragma once
// The status bar: the health of the station at a glance.

#include <QWidget>

#include "window/bindings.h"

namespace veltrix {

/// One line of text at the foot of the window: a cell for each figure, in words and in the colour of its
/// verdict. A cell that has too little room ends in "…"; its tool tip holds everything.
class StatusRow final : public QWidget {
  public:
    explicit StatusRow(Bindings& bindings, QWidget* parent = nullptr);
};

}  // namespace veltrix
