// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstring>

#include "src/channel/control_codes.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"
#include "src/channel/work_buffer.h"
#include "src/policy/action_table.h"
#include "src/policy/condition_table.h"

namespace vqs {
namespace {

enum SupportOperation : std::uint32_t {
  kReadConditionSupport = 0,
  kQueryConditionSupport = 1,
  kReadActionSupport = 2,
  kQueryActionSupport = 3
};

/// The head of a support request; the driver's flags follow it in the answer of a read.
struct CatalogueSupportHead {
  std::uint32_t Operation;
  std::uint32_t reserved0;
  std::uint64_t Size;
};
static_assert(sizeof(CatalogueSupportHead) == 16);
static_assert(offsetof(CatalogueSupportHead, Size) == 8);

/// What the driver says of one catalogue entry.
struct SupportFlags {
  std::uint8_t enabled;
  std::uint8_t driverFlag;
  std::uint8_t reserved0;
};
static_assert(sizeof(SupportFlags) == 3);

template <class Info>
void mark(Info& info, const SupportFlags& flags) {
  // The driver's answer has one byte for it: the higher bytes stay as the library has them.
  info.Enabled = (info.Enabled & ~0xFFU) | flags.enabled;
  info.DriverFlag = flags.driverFlag;
}

/// How many entries can be marked: no more than the answer's size says, the catalogue has, and the buffer has room for.
std::size_t usableFlags(std::uint64_t size, std::size_t entries, std::size_t room) {
  return static_cast<std::size_t>(
      std::min({size / sizeof(SupportFlags), std::uint64_t{entries}, std::uint64_t{room / sizeof(SupportFlags)}}));
}

/// Asks the driver for the size of its answer and then for the answer. A failure is not reported and leaves the flags
/// as they are (compatibility.md: catalogue-flags-kept).
template <class Info, std::size_t N>
void markSupported(HANDLE handle, std::span<Info, N> table, std::uint32_t queryOperation, std::uint32_t readOperation) {
  CatalogueSupportHead query{};
  query.Operation = queryOperation;
  if (sendSame(handle, kCodeCatalogueSupport, query) != VQS_SUCCESS) return;
  constexpr std::uint64_t kLongest = 0xFFFFFFFF - sizeof(CatalogueSupportHead);
  if (query.Size > kLongest) return;
  const ProcessHeapBuffer memory{sizeof(CatalogueSupportHead) + static_cast<std::size_t>(query.Size)};
  if (!memory) return;
  auto& head = memory.template as<CatalogueSupportHead>();
  head.Operation = readOperation;
  head.Size = query.Size;
  if (sendSame(handle, kCodeCatalogueSupport, memory.bytes()) != VQS_SUCCESS) return;
  const std::size_t count = usableFlags(head.Size, N, static_cast<std::size_t>(query.Size));
  const auto flags = memory.template arrayAt<SupportFlags>(sizeof(CatalogueSupportHead), count);
  for (std::size_t i = 0; i < count; ++i) mark(table[i], flags[i]);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsPbGetConditions(QtfSession* session, const QtfConditionInfo** table, uint32_t* count) {
  if (!vqs::isOpen(session) || table == nullptr || count == nullptr) return VQS_INVALID_PARAMETER;
  vqs::markSupported(session->handle, vqs::conditionTable(), vqs::kQueryConditionSupport, vqs::kReadConditionSupport);
  *count = VQS_CONDITION_TYPES;
  *table = vqs::conditionTable().data();
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsPbGetActions(QtfSession* session, const QtfActionInfo** table, uint32_t* count) {
  // Unlike vqsPbGetConditions, it takes a null session or one without a handle (compatibility.md:
  // actions-without-session).
  if (table == nullptr || count == nullptr) return VQS_INVALID_PARAMETER;
  if (session != nullptr)
    vqs::markSupported(session->handle, vqs::actionTable(), vqs::kQueryActionSupport, vqs::kReadActionSupport);
  *count = VQS_ACTION_TYPES;
  *table = vqs::actionTable().data();
  return VQS_SUCCESS;
}
