#pragma once

#include <utility>

namespace sonnel {

/// Runs an action at the end of its scope, also when an exception ends it. The action throws none.
template <class Action>
class ScopeExit {
  public:
    explicit ScopeExit(Action action) : action_(std::move(action)) {}
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;
    ~ScopeExit() { action_(); }

  private:
    Action action_;
};

}  // namespace sonnel
