// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdarg>
#include <cstdio>

namespace simulator {

/// Why something cannot be done, as the end of a sentence about its subject; without text when it can.
class Reason {
 public:
  Reason() = default;
  [[gnu::format(printf, 2, 3)]] explicit Reason(const char* format, ...) {
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(text_, sizeof(text_), format, values);
    va_end(values);
  }

  explicit operator bool() const { return text_[0] != '\0'; }
  [[nodiscard]] const char* text() const { return text_; }

 private:
  char text_[256] = {};
};

}  // namespace simulator
