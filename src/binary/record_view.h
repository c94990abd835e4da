// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "policy/packed_policy.h"

namespace vqs {

/// A packed policy as the writer reads it: slot after slot and text up to its zero, beyond the field it belongs to if
/// the policy says so, but never beyond the record.
class PackedPolicyView {
 public:
  explicit PackedPolicyView(const VqsPackedPolicy& policy) : record_(std::as_bytes(std::span{&policy, 1})) {}

  // Texts with their terminator; empty when there is none up to the end of the record.
  [[nodiscard]] std::span<const std::byte> name() const {
    return terminated(offsetof(VqsPackedPolicy, name), sizeof(VqsChar16));
  }
  [[nodiscard]] std::span<const std::byte> description() const {
    return terminated(offsetof(VqsPackedPolicy, description), 1);
  }
  [[nodiscard]] std::span<const std::byte> text(std::size_t index) const {
    return terminated(textSlot(index) + offsetof(VqsPackedText, text), sizeof(VqsChar16));
  }

  [[nodiscard]] std::byte textFlag(std::size_t index) const {
    return record_[textSlot(index) + offsetof(VqsPackedText, flag)];
  }

  // Whole runs of slots; empty when they do not lie wholly inside the record.
  [[nodiscard]] std::span<const std::byte> conditions(std::size_t count) const {
    return slots(offsetof(VqsPackedPolicy, conditions), sizeof(VqsPolicyCondition), count);
  }
  [[nodiscard]] std::span<const std::byte> actions(std::size_t count) const {
    return slots(offsetof(VqsPackedPolicy, actions), sizeof(VqsPolicyAction), count);
  }
  [[nodiscard]] bool holdsTexts(std::size_t count) const {
    return holds(offsetof(VqsPackedPolicy, texts), sizeof(VqsPackedText), count);
  }

 private:
  static std::size_t textSlot(std::size_t index) {
    return offsetof(VqsPackedPolicy, texts) + index * sizeof(VqsPackedText);
  }

  [[nodiscard]] bool holds(std::size_t offset, std::size_t slotSize, std::size_t count) const {
    return count <= (record_.size() - offset) / slotSize;
  }

  [[nodiscard]] std::span<const std::byte> slots(std::size_t offset, std::size_t slotSize, std::size_t count) const {
    return holds(offset, slotSize, count) ? record_.subspan(offset, slotSize * count) : std::span<const std::byte>{};
  }

  [[nodiscard]] std::span<const std::byte> terminated(std::size_t offset, std::size_t unitSize) const {
    for (std::size_t end = offset; end + unitSize <= record_.size(); end += unitSize)
      if (record_[end] == std::byte{0} && record_[end + unitSize - 1] == std::byte{0})
        return record_.subspan(offset, end + unitSize - offset);
    return {};
  }

  std::span<const std::byte> record_;
};

}  // namespace vqs
