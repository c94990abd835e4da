// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include <vqs/status.h>
#include "tool/exit_code.h"

namespace tool {

/// The command could not be carried out; the message becomes the one line on standard error.
class Failure : public std::runtime_error {
 public:
  /// The details are lines that are printed before the message.
  explicit Failure(const std::string& message, ExitCode code = ExitCode::kCouldNotRun, std::string details = {})
      : std::runtime_error{message}, code_{code}, details_{std::make_shared<const std::string>(std::move(details))} {}

  [[nodiscard]] ExitCode exitCode() const { return code_; }
  [[nodiscard]] const std::string& details() const { return *details_; }

 private:
  ExitCode code_;
  /// shared, because copying an exception must not throw
  std::shared_ptr<const std::string> details_;
};

/// The command line is wrong.
class UsageError : public Failure {
 public:
  explicit UsageError(const std::string& message) : Failure{message} {}
};

/// There is no driver, or none that this program can work with.
class NoDriver : public Failure {
 public:
  explicit NoDriver(const std::string& message) : Failure{message, ExitCode::kNoDriver} {}
};

/// What a result of the library means, as the end of a sentence.
std::string describe(vqsStatus status);

/// Throws a Failure "<what>: <meaning of the result>" unless the result is VQS_SUCCESS, and a NoDriver when the result
/// says that there is no driver or another one than the library is for.
void require(vqsStatus status, const std::string& what);

/// The system's words for an error number.
std::string systemMessage(int error);

}  // namespace tool
