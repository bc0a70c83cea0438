#pragma once
// Brings to the screen what has changed, all of it together.

#include <QTimer>
#include <cstddef>
#include <functional>
#include <vector>

namespace veltrix {

/// Runs what refreshes the widgets whose models have changed: each once however often its model changed
/// since, and all together at most once a screen frame. Its timer is off while nothing has changed.
class Refresher final {
  public:
    Refresher();

    /// Takes in something to refresh, out of date from the start. Its number stays for good.
    std::size_t Add(std::function<void()> refresh);

    /// Has more done behind what is already done under this number.
    void Append(std::size_t number, std::function<void()> more);

    /// Says that it is out of date.
    void Want(std::size_t number);
    /// Says that all are out of date, as after a change of the palette.
    void WantAll();

    /// Refreshes now what is out of date.
    void Flush();

  private:
    struct Entry {
        std::function<void()> refresh;
        bool wanted = false;
    };

    std::vector<Entry> entries_;
    std::vector<std::size_t> wanted_;
    QTimer frame_;
};

}  // namespace veltrix
