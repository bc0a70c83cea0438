#pragma once
// A menu of the form on the screen.

#include <QMenu>

#include "window/bindings.h"
#include "window/surface_view.h"

namespace veltrix {

/// Opens when its model does, at the model's place on a surface. Each entry pushes its button; one that
/// nobody handles is greyed. Child of the view.
class PopUpMenu final : public QMenu {
  public:
    PopUpMenu(Bindings& bindings, Menu& menu, SurfaceView& view);
    ~PopUpMenu() override;

  private:
    void AddEntry(Bindings& bindings, Control& button);

    Menu& menu_;
};

}  // namespace veltrix
