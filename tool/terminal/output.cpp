// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/output.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>

#include "tool/system/process.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/text.h"

namespace tool {

void Output::useFile(const std::string& path) {
  if (path != "-") path_ = path;
}

void Output::write(std::string_view text) {
  if (path_ && !file_) file_ = target_.emplace(*path_).open();
  if (!platform::writeText(file_ ? file_.get() : stdout, text))
    throw Failure{fmt::format("{} cannot be written: {}", path_.value_or("standard output"), systemMessage(errno))};
}

void Output::finish() {
  if (!target_) return;
  file_.reset();
  target_->commit();
}

void writeRemarks(std::string_view lines) {
  // There is nowhere left to report a failure to.
  static_cast<void>(platform::writeText(stderr, lines));
}

void writeError(std::string_view message) { writeRemarks("vqs: " + printable(message) + '\n'); }

}  // namespace tool
