// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/log_area.h"

#include "simulator/model/request.h"
#include "simulator/model/telemetry_keys.h"

namespace simulator {
namespace {

constexpr std::uint32_t kNegativeKey = 0x80000001;
/// The key that is repeated in a log that shows one key over and over.
constexpr std::uint32_t kRepeatedKey = 25;
constexpr std::uint32_t kRepeatedExKey = 1;
/// The longest value: 100 elements of four bytes.
constexpr std::size_t kLongestValue = 400;

/// Fills an area from its beginning. What does not fit is cut.
class AreaWriter {
 public:
  explicit AreaWriter(std::span<std::byte> area) : rest_(area) {}

  [[nodiscard]] bool isFull() const { return rest_.empty(); }

  void write(std::span<const std::byte> bytes) {
    if (isFull()) return;
    const auto written = bytes.first(std::min(bytes.size(), rest_.size()));
    // The driver rewrites areas while clients look at them: nothing but the new bytes ever stands there.
    std::memcpy(rest_.data(), written.data(), written.size());
    rest_ = rest_.subspan(written.size());
  }

  template <class T>
  void writeValue(const T& value) {
    write(std::as_bytes(std::span{&value, 1}));
  }

  void fillWithZero() { std::ranges::fill(rest_, std::byte{}); }

 private:
  std::span<std::byte> rest_;
};

void writeText(const TelemetryKey& key, const Sources& sources, std::span<char> value) {
  if (key.write != nullptr) return key.write(sources, value);
  const std::size_t choice = key.signal == nullptr ? 0 : static_cast<std::size_t>(key.signal(sources, key.first));
  const char* text = key.texts[choice];
  for (std::size_t i = 0; text[i] != '\0'; ++i) value[i] = text[i];
}

std::uint32_t elementOf(const TelemetryKey& key, const Sources& sources, std::uint32_t index) {
  return static_cast<std::uint32_t>(key.signal == nullptr ? key.constant : key.signal(sources, key.first + index));
}

std::size_t elementWidth(ElementType type) {
  if (type == ElementType::bool8) return 1;
  return type == ElementType::uint16 ? 2 : 4;
}

void writeRecord(AreaWriter& writer, const TelemetryKey& key, const Sources& sources) {
  char value[kLongestValue] = {};
  const std::size_t width = elementWidth(key.type);
  if (key.type == ElementType::bytes)
    writeText(key, sources, std::span{value}.first(key.count));
  else
    for (std::uint32_t i = 0; i < key.count; ++i) {
      const std::uint32_t element = elementOf(key, sources, i);
      std::memcpy(value + i * width, &element, width);
    }
  writer.writeValue(key.id);
  writer.write(std::as_bytes(std::span{value}).first(valueSize(key)));
}

void writeKeys(AreaWriter& writer, std::span<const TelemetryKey> keys, const Sources& sources) {
  for (const auto& key : keys) writeRecord(writer, key, sources);
}

std::span<const TelemetryKey> keysOf(LogKind kind) {
  if (kind == LogKind::keyValue) return keyValueKeys();
  return exKeyValueKeys();
}

void writeKeyValueArea(AreaWriter& writer, LogKind kind, const Sources& sources, LogFault fault) {
  const auto keys = keysOf(kind);
  const std::uint32_t repeated = kind == LogKind::keyValue ? kRepeatedKey : kRepeatedExKey;
  if (fault == LogFault::unknownKey) writer.writeValue(static_cast<std::uint32_t>(keys.size() + 1));
  if (fault == LogFault::negativeKey) writer.writeValue(kNegativeKey);
  if (fault == LogFault::empty) writer.writeValue(std::uint32_t{0});
  while (fault == LogFault::noEnd && !writer.isFull()) writeKeys(writer, keys, sources);
  while (fault == LogFault::repeatedKey && !writer.isFull()) writeRecord(writer, keys[repeated - 1], sources);
  writeKeys(writer, keys, sources);
}

/// The head of the plain and Ex logs, and what both of them show.
struct PlainLog {
  char magic[4];
  std::uint32_t version;
  std::uint32_t seconds;
  std::uint32_t powerSource;
  std::uint32_t powerMode;
  std::uint32_t chargeLevel;
  std::int32_t chargeRate;
  std::uint32_t batteryTemperature;
  std::uint32_t skinTemperature;
  std::uint32_t apuPower;
  std::uint32_t inputs[2];
  std::uint32_t outputs[2];
};
static_assert(sizeof(PlainLog) == 56);

/// What the Ex log shows of each core.
struct CoreLog {
  std::uint16_t frequency;
  std::uint16_t power;
  std::uint16_t temperature;
  std::uint16_t activity;
};
static_assert(sizeof(CoreLog) == 8);

std::uint32_t word(Signal signal, const Sources& sources, std::uint32_t element = 0) {
  return static_cast<std::uint32_t>(signal(sources, element));
}

std::uint16_t half(Signal signal, const Sources& sources, std::uint32_t element) {
  return static_cast<std::uint16_t>(signal(sources, element));
}

void writePlainLog(AreaWriter& writer, std::uint32_t version, const Sources& sources) {
  writer.writeValue(PlainLog{
      .magic = {'V', 'Q', 'T', 'L'},
      .version = version,
      .seconds = word(signal::seconds, sources),
      .powerSource = word(signal::powerSource, sources),
      .powerMode = word(signal::powerMode, sources),
      .chargeLevel = word(signal::chargeLevel, sources),
      .chargeRate = signal::chargeRate(sources, 0),
      .batteryTemperature = word(signal::batteryTemperature, sources),
      .skinTemperature = word(signal::skinTemperature, sources),
      .apuPower = word(signal::apuPower, sources),
      .inputs = {word(signal::appInput, sources, 0), word(signal::appInput, sources, 1)},
      .outputs = {word(signal::appOutput, sources, 0), word(signal::appOutput, sources, 1)},
  });
}

void writeExLog(AreaWriter& writer, const Sources& sources) {
  writePlainLog(writer, kExLogVersion, sources);
  for (std::uint32_t core = 0; core < kCores; ++core)
    writer.writeValue(CoreLog{.frequency = half(signal::coreFrequency, sources, core),
                              .power = half(signal::corePower, sources, core),
                              .temperature = half(signal::coreTemperature, sources, core),
                              .activity = half(signal::coreActivity, sources, core)});
}

}  // namespace

void writeLogArea(std::span<std::byte> area, LogKind kind, const Sources& sources, LogFault fault) {
  AreaWriter writer{area};
  if (kind == LogKind::plain)
    writePlainLog(writer, kPlainLogVersion, sources);
  else if (kind == LogKind::ex)
    writeExLog(writer, sources);
  else
    writeKeyValueArea(writer, kind, sources, fault);
  writer.fillWithZero();
}

}  // namespace simulator
