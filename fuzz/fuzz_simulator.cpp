// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

#include "fuzz/check.h"
#include "simulator/model/driver.h"
#include "simulator/model/policy_check.h"
#include "simulator/model/telemetry_keys.h"

// An input is a run of requests on one fresh driver. Each is written as
//   function (1, from 0x800 on), session (1), input length (2), output length (2), number of patches (1)
// and the patches of a buffer of zeros:
//   offset (2), number of bytes (1), the bytes.
// Two functions are no requests: 0xFF closes the session, and 0xFE makes input length times output length milliseconds
// pass. The caller can read the whole input, from 0x10000 on; a session's process is a quarter of its number.

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

constexpr std::uint64_t kMemory = 0x10000;
constexpr std::uint8_t kClose = 0xFF;
constexpr std::uint8_t kPass = 0xFE;

/// Keeps count of what the driver takes, and holds it to giving back nothing else.
class Surroundings final : public simulator::Surroundings {
 public:
  explicit Surroundings(std::span<const std::uint8_t> memory) : memory_(std::as_bytes(memory)) {
    for (std::size_t i = 0; i < simulator::kLogKinds; ++i) areas_[i].resize(simulator::kLogAreaSize[i]);
  }

  std::uint64_t clock = 0;
  std::uint64_t caller = 0;

  [[nodiscard]] bool isMapped(simulator::LogKind kind) const {
    return std::ranges::any_of(mapped_, [kind](const auto& mapping) { return std::get<0>(mapping) == kind; });
  }
  [[nodiscard]] bool hasNothingLeft() const { return mapped_.empty() && events_.empty(); }

  std::uint64_t now() override { return clock; }
  std::uint64_t process() override { return caller; }
  std::span<std::byte> logArea(simulator::LogKind kind) override { return areas_[static_cast<std::size_t>(kind)]; }
  std::uint64_t mapLog(simulator::LogKind kind) override {
    mapped_.insert({kind, caller, ++last_});
    check(mapped_.size() <= 64);
    return last_;
  }
  void unmapLog(simulator::LogKind kind, std::uint64_t process, std::uint64_t address) override {
    check(mapped_.erase({kind, process, address}) == 1);
  }
  bool readCaller(std::uint64_t address, std::span<std::byte> destination) override {
    if (address < kMemory || address - kMemory > memory_.size()) return false;
    const auto source = memory_.subspan(address - kMemory);
    if (destination.size() > source.size()) return false;
    std::ranges::copy(source.first(destination.size()), destination.begin());
    return true;
  }
  void setOutputEvent(bool /*signalled*/) override {}
  std::uint64_t retainEvent(std::uint64_t handle) override {
    if (handle % 8 == 7) return 0;
    events_.insert(++last_);
    check(events_.size() <= 64);
    return last_;
  }
  void releaseEvent(std::uint64_t event) override { check(events_.erase(event) == 1); }
  void signalEvent(std::uint64_t event) override { check(events_.contains(event)); }

 private:
  std::span<const std::byte> memory_;
  std::array<std::vector<std::byte>, simulator::kLogKinds> areas_;
  std::set<std::tuple<simulator::LogKind, std::uint64_t, std::uint64_t>> mapped_;
  std::set<std::uint64_t> events_;
  std::uint64_t last_ = 0;
};

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

/// The answer lies within its buffer, which is as long as the longer length and not a byte longer.
void request(simulator::Driver& driver, Surroundings& surroundings, Input& input) {
  const std::uint8_t function = input.byte();
  const simulator::SessionId session = input.byte();
  const std::uint32_t inputLength = input.half();
  const std::uint32_t outputLength = input.half();
  surroundings.caller = session / 4;
  if (function == kPass) {
    surroundings.clock += std::uint64_t{inputLength} * outputLength;
    driver.refresh(surroundings);
  }
  if (function == kClose) driver.close(surroundings, session);
  if (function == kPass || function == kClose) return;
  const std::size_t length = std::max(inputLength, outputLength);
  const auto buffer = std::make_unique<std::byte[]>(length);
  const std::span<std::byte> bytes{buffer.get(), length};
  for (int patches = input.byte(); patches > 0 && !input.empty(); --patches) input.patch(bytes.first(inputLength));
  const std::uint32_t code = 0x80222000 + 4 * std::uint32_t{function};
  const auto answer = driver.control(surroundings, session, code, bytes, inputLength, outputLength);
  check(answer.length <= outputLength);
  check(answer.outcome == simulator::Outcome::kSuccess || answer.length == 0);
}

/// Whoever walks the area of a log that is mapped meets every key once, in order, and then the end.
void checkArea(Surroundings& surroundings, simulator::LogKind kind, std::span<const simulator::TelemetryKey> keys) {
  if (!surroundings.isMapped(kind)) return;
  std::span<const std::byte> rest = surroundings.logArea(kind);
  const auto takeId = [&rest] {
    std::uint32_t id = 0;
    check(rest.size() >= sizeof(id));
    std::memcpy(&id, rest.first(sizeof(id)).data(), sizeof(id));
    rest = rest.subspan(sizeof(id));
    return id;
  };
  for (std::uint32_t i = 0; i < keys.size(); ++i) {
    check(takeId() == i + 1 && keys[i].id == i + 1);
    check(rest.size() >= simulator::valueSize(keys[i]));
    rest = rest.subspan(simulator::valueSize(keys[i]));
  }
  check(takeId() == 0);
}

/// Whatever was asked of it, a store holds well-formed policies with ids of their own.
void checkStores(const simulator::Driver& driver) {
  for (std::size_t index = 0; index < simulator::kStoreCount; ++index) {
    const auto& store = driver.policies().store(index);
    check(store.isSound());
    std::set<std::uint32_t> ids;
    for (std::uint32_t i = 0; i < store.count(); ++i)
      check(ids.insert(store.policy(i).id).second && simulator::isWellFormed(store.policy(i)));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::unique_ptr<simulator::Driver, Free> driver{
      static_cast<simulator::Driver*>(std::calloc(1, sizeof(simulator::Driver)))};
  check(driver != nullptr);
  Surroundings surroundings{{data, size}};
  for (Input input{data, size}; !input.empty();) request(*driver, surroundings, input);
  checkStores(*driver);
  check(driver->isSound());
  checkArea(surroundings, simulator::LogKind::kKeyValue, simulator::keyValueKeys());
  checkArea(surroundings, simulator::LogKind::kExKeyValue, simulator::exKeyValueKeys());
  for (simulator::SessionId session = 0; session < 256; ++session) driver->close(surroundings, session);
  check(surroundings.hasNothingLeft() && !driver->hasMappedLogs());
  return 0;
}
