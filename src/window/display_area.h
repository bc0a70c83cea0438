#pragma once
// The displays: the square place of the three views, and the two scopes beside it.

#include <QWidget>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "window/bindings.h"
#include "window/page_builder.h"
#include "window/surface_view.h"

namespace veltrix {

/// The dark part of the window. The views take the largest square that leaves room for the scopes; what the
/// models place on the views lies on them. The dialogs of the backgrounds open over the views.
class DisplayArea final : public QWidget {
  public:
    DisplayArea(Bindings& bindings, PageBuilder& builder, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    /// A scope with its texts.
    struct Scope {
        QWidget* whole = nullptr;
        SurfaceView* view = nullptr;
    };

    SurfaceView& MakeView(const char* name, const char* title);
    Scope MakeScope(const char* view, const char* label, const std::vector<std::string_view>& below);
    QWidget* MakeDialog(const char* frame, const char* cancel, QWidget& parent);
    /// A row or column of texts that lies on a view and lets the mouse through.
    QWidget& Labels(Qt::Orientation along, std::initializer_list<const char*> names, bool wraps = false);
    void DressPolarDisplay(SurfaceView& view);
    void DressMap(SurfaceView& view);
    /// Shows what lies on a view together with the control of that name.
    void Cover(QWidget& overlay, const char* seenWith);
    /// The least width of a scope, at which its texts can be read.
    int LeastScope() const;
    void Arrange();

    Bindings& bindings_;
    PageBuilder& builder_;
    std::vector<SurfaceView*> views_;
    Scope amplitude_;
    Scope direction_;
    QWidget* mapDialog_ = nullptr;
};

}  // namespace veltrix
