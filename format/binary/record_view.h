// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "format/policy/packed_policy.h"

namespace vqs {

/// The name, description and texts of a packed policy, each with its terminating zero. A text whose field holds no zero
/// goes on into the fields behind it (compatibility.md: runs-into-next-field), but never beyond the record: it is empty
/// when there is no zero up to the record's end.
class PackedPolicyView {
 public:
  explicit PackedPolicyView(const VqsPackedPolicy& policy) : record_(std::as_bytes(std::span{&policy, 1})) {}

  [[nodiscard]] std::span<const std::byte> name() const {
    return terminated(offsetof(VqsPackedPolicy, name), sizeof(VqsChar16));
  }
  [[nodiscard]] std::span<const std::byte> description() const {
    return terminated(offsetof(VqsPackedPolicy, description), 1);
  }
  [[nodiscard]] std::span<const std::byte> text(std::size_t index) const {
    const std::size_t slot = offsetof(VqsPackedPolicy, texts) + index * sizeof(VqsPackedText);
    return terminated(slot + offsetof(VqsPackedText, text), sizeof(VqsChar16));
  }

 private:
  [[nodiscard]] std::span<const std::byte> terminated(std::size_t offset, std::size_t unitSize) const {
    for (std::size_t end = offset; end + unitSize <= record_.size(); end += unitSize)
      if (record_[end] == std::byte{0} && record_[end + unitSize - 1] == std::byte{0})
        return record_.subspan(offset, end + unitSize - offset);
    return {};
  }

  std::span<const std::byte> record_;
};

}  // namespace vqs
