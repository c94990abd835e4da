// SPDX-License-Identifier: Apache-2.0
#include "tests/support/stub_store.h"

#include <algorithm>
#include <utility>

#include "tests/support/scripted_driver.h"

namespace test {
namespace {

/// Several stores may stand side by side.
std::u16string nextPath() {
  static char16_t last = u'0';
  return std::u16string{u"\\\\?\\stub#store"} + ++last;
}

constexpr std::size_t kFetchSize = 19872;
constexpr std::size_t kPoliciesOffset = 12;
constexpr std::size_t kPackedSize = 3972;

}  // namespace

StubStore::StubStore(std::vector<Bytes> packed)
    : packed_(std::move(packed)), claimed_(static_cast<std::uint32_t>(packed_.size())) {
  const auto path = nextPath();
  host::attachDevice(*this, ScriptedDriver::kInterfaceClass, path);
  session_.handle = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
}

StubStore::~StubStore() {
  CloseHandle(session_.handle);
  host::detachDevice(*this);
}

void StubStore::fetch(Bytes& record) const {
  if (record[0] == 1) {
    const Bytes count = Record{4}.u32(0, claimed_);
    std::ranges::copy(count, record.begin() + 4);
    return;
  }
  const std::size_t first = 5 * std::size_t{record[8]};
  for (std::size_t i = first; i < std::min(packed_.size(), first + 5); ++i)
    std::ranges::copy(packed_[i],
                      record.begin() + static_cast<std::ptrdiff_t>(kPoliciesOffset + (i - first) * kPackedSize));
}

bool StubStore::control(HANDLE /*handle*/, const host::DeviceRequest& request) {
  codes_.push_back(request.code);
  if (static_cast<int>(codes_.size()) == failAt_) return false;
  auto* bytes = static_cast<std::uint8_t*>(request.output);
  Bytes record(bytes, bytes + request.outputLength);
  if (record.size() == kFetchSize) {
    fetch(record);
  } else {
    record.at(3988) = 3;
    record.at(3992) = 41;
  }
  std::ranges::copy(record, bytes);
  return true;
}

}  // namespace test
