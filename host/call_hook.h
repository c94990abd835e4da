// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace host {

/// Is given the text of a call before it is carried out; when it returns false, the call fails.
using Watcher = bool (*)(std::string_view call);

/// Null in every program but tests.
Watcher currentWatcher();
void setWatcher(Watcher watcher);

/// A call as text, cut at the end of its fixed room.
class CallText {
 public:
  void add(std::string_view text);
  void add(std::u16string_view text);
  void add(std::uint64_t number);
  void add(const void* pointer);
  [[nodiscard]] std::string_view text() const { return {text_, length_}; }

 private:
  char text_[512];
  std::size_t length_ = 0;
};

/// Shows "name(arguments...)" to a watcher; false when it refuses the call.
template <class... Arguments>
bool show(Watcher watcher, std::string_view name, const Arguments&... arguments) {
  CallText call;
  call.add(name);
  std::string_view separator = "(";
  ((call.add(std::exchange(separator, ", ")), call.add(arguments)), ...);
  call.add(separator == "(" ? std::string_view{"()"} : std::string_view{")"});
  return watcher(call.text());
}

/// The same, if there is a watcher.
template <class... Arguments>
bool permit(std::string_view name, const Arguments&... arguments) {
  const Watcher watcher = currentWatcher();
  return watcher == nullptr || show(watcher, name, arguments...);
}

}  // namespace host
