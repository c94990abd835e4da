// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace host {

/// True when a hook is set; the text of a call is made only then.
bool callsAreWatched();
/// Shows a call to the hook; false when the hook refuses it.
bool permitCall(std::string_view call);

std::string describe(std::string_view text);
std::string describe(std::u16string_view text);
std::string describe(std::uint64_t number);
std::string describe(const void* pointer);

/// Shows "name(arguments...)" to the hook, if there is one.
template <class... Arguments>
bool permit(std::string_view name, const Arguments&... arguments) {
  if (!callsAreWatched()) return true;
  std::string call{name};
  std::string separator = "(";
  ((call += std::exchange(separator, ", ") + describe(arguments)), ...);
  call += separator == "(" ? "()" : ")";
  return permitCall(call);
}

}  // namespace host
