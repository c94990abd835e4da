// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/host.h"

namespace test {

/// The Windows API calls that were made while it lives, as text, in order; some of them can be refused.
class WindowsCalls {
 public:
  WindowsCalls() {
    host::setCallHook([this](std::string_view call) { return see(std::string{call}); });
  }
  ~WindowsCalls() { host::setCallHook({}); }
  WindowsCalls(const WindowsCalls&) = delete;
  WindowsCalls& operator=(const WindowsCalls&) = delete;

  /// Every call of this function fails from now on.
  void refuse(const std::string& function) { refused_.push_back(function); }
  /// Something to do whenever this function is called, before the call is carried out.
  void before(const std::string& function, std::function<void()> action) { actions_[function] = std::move(action); }

  [[nodiscard]] const std::vector<std::string>& all() const { return calls_; }
  /// The calls of one function.
  [[nodiscard]] std::vector<std::string> of(std::string_view function) const {
    std::vector<std::string> found;
    std::ranges::copy_if(calls_, std::back_inserter(found),
                         [&](const std::string& call) { return functionOf(call) == function; });
    return found;
  }

 private:
  static std::string functionOf(const std::string& call) { return call.substr(0, call.find('(')); }

  bool see(const std::string& call) {
    const auto function = functionOf(call);
    calls_.push_back(call);
    if (const auto found = actions_.find(function); found != actions_.end()) found->second();
    return std::ranges::find(refused_, function) == refused_.end();
  }

  std::vector<std::string> calls_;
  std::vector<std::string> refused_;
  std::map<std::string, std::function<void()>> actions_;
};

}  // namespace test
