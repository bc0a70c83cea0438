#pragma once
// Lays out pages from their tables.

#include <QGridLayout>
#include <QTabWidget>
#include <QWidget>
#include <string_view>

#include "window/bindings.h"
#include "window/form_pages.h"

namespace veltrix {

/// Makes the widgets of a page's controls and sets them in rows of three columns: label, boxes, remark.
/// Strips of tabs and frames inside a page are built with it, pages and all.
class PageBuilder {
  public:
    explicit PageBuilder(Bindings& bindings) : bindings_(bindings) {}

    /// A page on a widget of its own.
    QWidget* Page(std::string_view owner, int tab = 0);
    /// A strip of tabs with all its pages.
    QTabWidget* Tabs(TabStrip& strip);
    /// The widget of any one control.
    QWidget* Make(std::string_view name, bool wraps = false);

  private:
    QWidget* Group(Frame& frame);
    void AddRow(QGridLayout& grid, int row, const RowDesign& design, bool remarks);
    QWidget* Item(std::string_view name, bool wraps);
    QWidget* Middle(const RowDesign& design, bool wraps);
    QString TextOf(std::string_view name) const;

    Bindings& bindings_;
};

}  // namespace veltrix
