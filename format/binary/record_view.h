// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "format/policy/packed_policy.h"

namespace vqs {

/// Where the name, the description and the texts of a packed policy begin, up to the record's end: a text whose field
/// holds no zero goes on into the fields behind it (compatibility.md: runs-into-next-field), but never beyond the
/// record.
class PackedPolicyView {
 public:
  explicit PackedPolicyView(const PackedPolicy& policy) : record_(std::as_bytes(std::span{&policy, 1})) {}

  [[nodiscard]] std::span<const std::byte> name() const { return record_.subspan(offsetof(PackedPolicy, name)); }
  [[nodiscard]] std::span<const std::byte> description() const {
    return record_.subspan(offsetof(PackedPolicy, description));
  }
  [[nodiscard]] std::span<const std::byte> text(std::size_t index) const {
    const std::size_t slot = offsetof(PackedPolicy, texts) + index * sizeof(PackedText);
    return record_.subspan(slot + offsetof(PackedText, text));
  }

 private:
  std::span<const std::byte> record_;
};

}  // namespace vqs
