#pragma once
// A flag that is set for the time of a scope.

namespace veltrix {

/// Sets a flag and clears it at its own end, however the scope is left.
class WhileSet {
  public:
    explicit WhileSet(bool& flag) : flag_(flag) { flag_ = true; }
    ~WhileSet() { flag_ = false; }
    WhileSet(const WhileSet&) = delete;
    WhileSet& operator=(const WhileSet&) = delete;

  private:
    bool& flag_;
};

}  // namespace veltrix
