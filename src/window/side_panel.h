#pragma once
// The settings beside the displays.

#include <QTabWidget>
#include <QWidget>

#include "window/bindings.h"
#include "window/page_builder.h"

namespace veltrix {

/// The tree of tabs; below it the interval between blocks, the stations on line, the diagnostics and the
/// replay.
class SidePanel final : public QWidget {
  public:
    SidePanel(Bindings& bindings, PageBuilder& builder, QWidget* parent = nullptr);

    /// As narrow as the tabs allow: the width is the displays'.
    QSize sizeHint() const override;

  private:
    QWidget* MakeLists();

    PageBuilder& builder_;
};

}  // namespace veltrix
