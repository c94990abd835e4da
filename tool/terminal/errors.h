// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>

#include <vqs/status.h>

namespace tool {

/// The operation failed; the message becomes the one line on standard error. Exit code 1.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The command line is wrong. Exit code 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What a result of the library means, as the end of a sentence.
std::string describe(vqsStatus status);

/// Throws a Failure "<what>: <meaning of the result>" unless the result is VQS_SUCCESS.
void require(vqsStatus status, const std::string& what);

/// The system's words for an error number.
std::string systemMessage(int error);

}  // namespace tool
