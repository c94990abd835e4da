// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include "bench/families.h"
#include "bench/harness/policies.h"
#include "bench/harness/quiet_device.h"
#include "bench/harness/read_over.h"
#include "format/binary/builder.h"
#include "format/binary/registry_text.h"

namespace bench {
namespace {

std::vector<std::byte> built(std::span<const vqs::PackedPolicy> policies) {
  std::vector<std::byte> binary(vqs::policyBinarySize(policies));
  require(vqs::buildPolicyBinary(binary, policies, {3, 41}), "a policy binary in memory");
  return binary;
}

/// As many bytes are copied as a binary has, and the policies are read over.
class Copy {
 public:
  Copy(std::span<const vqs::PackedPolicy> policies, std::size_t size) : policies_(policies), from_(size), to_(size) {}

  void operator()() {
    std::memcpy(to_.data(), from_.data(), to_.size());
    keep(to_.data());
    const std::uint32_t sum = sumOfWords(policies_.data(), policies_.size_bytes());
    keep(&sum);
  }

 private:
  std::span<const vqs::PackedPolicy> policies_;
  std::vector<unsigned char> from_;
  std::vector<unsigned char> to_;
};

void measureBuilding(Report& report, Item item, const std::vector<VqsPolicyV2>& bodies) {
  const auto policies = packed(bodies);
  auto binary = built(policies);
  const auto build = [&] {
    require(vqs::policyBinarySize(policies) == binary.size(), "the size of a policy binary");
    require(vqs::buildPolicyBinary(binary, policies, {3, 41}), "a policy binary in memory");
    keep(binary.data());
  };
  report.addRatio(item, compare(build, Copy{policies, binary.size()}));
}

std::vector<VqsPolicyV2> fleet() {
  const QuietDevice device;
  const Session session;
  return fleetPolicies(session.get());
}

/// Text in memory that has been touched.
class Text {
 public:
  explicit Text(std::size_t size) : characters_(size, ' ') {}

  void clear() { length_ = 0; }
  static void take(void* self, std::string_view piece) { static_cast<Text*>(self)->append(piece); }
  [[nodiscard]] const std::string& characters() const { return characters_; }
  [[nodiscard]] std::size_t length() const { return length_; }

 private:
  void append(std::string_view piece) {
    require(piece.size() <= characters_.size() - length_, "room for a text");
    std::memcpy(characters_.data() + length_, piece.data(), piece.size());
    length_ += piece.size();
  }

  std::string characters_;
  std::size_t length_ = 0;
};

}  // namespace

void measureWriting(Report& report) {
  measureBuilding(report, Item::kWriteFleet, fleet());
  measureBuilding(report, Item::kWriteFull, fullPolicies(kFleetSize));
}

void measureRegistryText(Report& report) {
  const auto binary = built(packed(fleet()));
  Text text{4 * binary.size()};
  const auto write = [&] {
    text.clear();
    vqs::writeRegistryText({.take = &Text::take, .target = &text}, "AsmCurrentRegkeyPolicy", binary);
    keep(&text);
  };
  write();
  std::string copy(text.length(), ' ');
  const auto copyText = [&] {
    std::memcpy(copy.data(), text.characters().data(), copy.size());
    keep(copy.data());
  };
  report.addRatio(Item::kRegistryText, compare(write, copyText));
}

}  // namespace bench
