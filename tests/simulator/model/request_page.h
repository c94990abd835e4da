// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "simulator/model/requests.h"
#include "tests/simulator/model/client.h"

namespace test {

/// A row of the table "Requests" of docs/simulator.md, for one code.
struct Form {
  std::uint32_t code = 0;
  std::string purpose;
  /// none where any bytes will do
  std::vector<std::uint32_t> operations;
  std::size_t operationOffset = 0;
  std::size_t operationWidth = 4;
  std::size_t inputLength = 0;
  std::size_t outputLength = 0;
  /// "or more"
  bool isOutputLeast = false;
  /// status entries of this many policies, where the lengths depend on them
  std::uint32_t policies = 0;

  /// Zeros, with an operation.
  [[nodiscard]] Bytes request(std::uint32_t operation) const;
};

/// In the order of the page.
const std::vector<Form>& requestPage();

/// Each once.
std::vector<std::uint32_t> codesOf(const std::vector<Form>& forms);

}  // namespace test
