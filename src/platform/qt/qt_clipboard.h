#pragma once
// The clipboard as Qt reaches it.

#include <QClipboard>
#include <QGuiApplication>

#include "platform/clipboard.h"

namespace veltrix {

/// REQUIRES an application object (QGuiApplication).
class QtClipboard final : public Clipboard {
  public:
    void SetText(const std::string& text) override {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    }
};

}  // namespace veltrix
