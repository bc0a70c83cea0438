#include "window/window_place.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <QSettings>

namespace veltrix {

namespace {

/// So much of a window's top must be on a screen that it can be seen and moved.
constexpr int LeastSeen = 100;

bool CanBeSeen(const QRect& place) {
    const QRect top(place.topLeft(), QSize(place.width(), LeastSeen));
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QRect seen = screen->availableGeometry().intersected(top);
        if (seen.width() >= LeastSeen && seen.height() >= LeastSeen / 2) return true;
    }
    return false;
}

}  // namespace

void WindowPlace::Restore(QWidget& window, QSize usual) const {
    const QRect screen = window.screen()->availableGeometry();
    window.resize(usual.boundedTo(screen.size()));
    if (path_.isEmpty()) return;
    QSettings file(path_, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("Window"));
    const QRect place(file.value(QStringLiteral("Left")).toInt(), file.value(QStringLiteral("Top")).toInt(),
                      file.value(QStringLiteral("Width")).toInt(),
                      file.value(QStringLiteral("Height")).toInt());
    if (CanBeSeen(place)) {
        window.resize(place.size());
        window.move(place.topLeft());
    }
    if (file.value(QStringLiteral("Maximised")).toInt() == 1) window.setWindowState(Qt::WindowMaximized);
}

void WindowPlace::Keep(const QWidget& window) const {
    if (path_.isEmpty()) return;
    QSettings file(path_, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("Window"));
    file.setValue(QStringLiteral("Maximised"), window.isMaximized() ? 1 : 0);
    const bool plain = !window.isMaximized() && !window.isFullScreen();
    const QRect place = plain ? QRect(window.pos(), window.size()) : window.normalGeometry();
    if (!place.isValid()) return;
    file.setValue(QStringLiteral("Left"), place.left());
    file.setValue(QStringLiteral("Top"), place.top());
    file.setValue(QStringLiteral("Width"), place.width());
    file.setValue(QStringLiteral("Height"), place.height());
}

}  // namespace veltrix
