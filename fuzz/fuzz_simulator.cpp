// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>

#include "fuzz/check.h"
#include "simulator/model/driver.h"
#include "simulator/model/policy_check.h"

// An input is a run of requests on one fresh driver. Each is written as
//   function (1, from 0x800 on), session (1), input length (2), output length (2), number of patches (1)
// and the patches of a buffer of zeros:
//   offset (2), number of bytes (1), the bytes.

namespace {

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  [[nodiscard]] bool empty() const { return size_ == 0; }

  std::uint8_t byte() {
    if (size_ == 0) return 0;
    --size_;
    return *data_++;
  }
  std::uint16_t half() {
    const std::uint8_t low = byte();
    return static_cast<std::uint16_t>(low | byte() << 8);
  }
  void patch(std::span<std::byte> buffer) {
    const std::size_t offset = half();
    const std::size_t length = byte();
    for (std::size_t i = 0; i < length && size_ != 0; ++i) {
      const std::byte value{byte()};
      if (offset + i < buffer.size()) buffer[offset + i] = value;
    }
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

/// The answer lies within its buffer, which is as long as the longer length and not a byte longer.
void request(simulator::Driver& driver, Input& input) {
  const std::uint32_t code = 0x80222000 + 4 * std::uint32_t{input.byte()};
  const simulator::SessionId session = input.byte();
  const std::uint32_t inputLength = input.half();
  const std::uint32_t outputLength = input.half();
  const std::size_t length = std::max(inputLength, outputLength);
  const auto buffer = std::make_unique<std::byte[]>(length);
  const std::span<std::byte> bytes{buffer.get(), length};
  for (int patches = input.byte(); patches > 0 && !input.empty(); --patches) input.patch(bytes.first(inputLength));
  const auto answer = driver.control(session, code, bytes, inputLength, outputLength);
  check(answer.length <= outputLength);
  check(answer.outcome == simulator::Outcome::success || answer.length == 0);
}

/// Whatever was asked of it, a store holds well-formed policies with ids of their own.
void checkStores(const simulator::Driver& driver) {
  for (std::size_t index = 0; index < simulator::kStoreCount; ++index) {
    const auto policies = driver.policies().store(index).policies();
    check(policies.size() <= simulator::PolicyStore::kCapacity);
    std::set<std::uint32_t> ids;
    for (const auto& policy : policies) check(ids.insert(policy.id).second && simulator::isWellFormed(policy));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::unique_ptr<simulator::Driver, Free> driver{
      static_cast<simulator::Driver*>(std::calloc(1, sizeof(simulator::Driver)))};
  check(driver != nullptr);
  for (Input input{data, size}; !input.empty();) request(*driver, input);
  checkStores(*driver);
  return 0;
}
