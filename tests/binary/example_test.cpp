// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "tests/binary/reading.h"
#include "tests/support/results.h"

// The example of docs/policy-binary.md: one policy in 79 bytes, typed by hand into tests/data/one-policy.bin.

namespace test {
namespace {

const std::string kExample = VQS_TEST_DATA "/one-policy.bin";

/// The bytes in front of each "|" of the annotated dump.
Bytes dumpOfThePage() {
  std::ifstream page{VQS_FORMAT_PAGE};
  std::string digits;
  bool inside = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("```")) {
      inside = line == "```hex";
      continue;
    }
    if (inside) digits += line.substr(0, line.find('|'));
  }
  return hex(digits);
}

class Example : public BinaryReading {};

TEST_F(Example, has_79_bytes_as_the_page_shows_them) {
  const Bytes example = readFile(kExample);
  EXPECT_EQ(example.size(), 79U);
  EXPECT_EQ(difference(dumpOfThePage(), example), "");
}

TEST_F(Example, is_what_the_library_writes) {
  const Bytes bodies = policyBody(0, smallPolicy());
  const auto path = folder_.path("written.bin");
  EXPECT_EQ(vqsPbCreateBinary(nullptr, reinterpret_cast<const VqsPolicyV0*>(bodies.data()), 1, 1, 2, path.c_str()),
            kDone);
  EXPECT_EQ(difference(readFile(path), readFile(kExample)), "");
}

TEST_F(Example, reads_as_the_policy_it_describes) {
  const auto outcome = read(kExample, 2, 200 + 3916);
  EXPECT_EQ(outcome.status, kDone);
  EXPECT_EQ(difference(outcome.buffer, joined({headOf(1, 2, 1, 2), policyBody(2, smallPolicy()), Bytes(64, kPoison)})),
            "");
}

}  // namespace
}  // namespace test
