// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/log_component.h"

#include "simulator/model/context.h"
#include "simulator/model/places.h"
#include "simulator/model/telemetry_keys.h"

namespace simulator {
namespace {

enum LogOperation : std::uint32_t {
  kStartPlain = 0,
  kStopPlain = 1,
  kStartEx = 2,
  kStopEx = 3,
  kGetVersion = 4,
  kGetExVersion = 5,
  kUpdate = 6,
  kStartKeyValue = 7,
  kStopKeyValue = 8,
  kStartExKeyValue = 10,
  kStopExKeyValue = 11,
  kGetInterfaceVersion = 13
};

struct LogRecord {
  std::uint32_t logId;
  std::uint32_t operation;
  std::uint64_t address;
  std::uint64_t reserved0;
  std::uint32_t value;
  std::uint32_t reserved1;
};
static_assert(sizeof(LogRecord) == 32);
static_assert(offsetof(LogRecord, address) == 8);
static_assert(offsetof(LogRecord, value) == 24);

struct LogSupport {
  std::uint32_t isSupported;
  std::uint32_t version;
  std::uint32_t areaSize;
  std::uint32_t keys;
};
static_assert(sizeof(LogSupport) == 16);

constexpr std::uint32_t kInterfaceVersion = 5;
constexpr std::uint32_t kDataVersion = 1;
constexpr std::uint32_t kUnknownDataVersion = 2;
constexpr std::uint32_t kShortestSupport = 4;

constexpr LogSupport kSupport[] = {{.isSupported = 1,
                                    .version = kPlainLogVersion,
                                    .areaSize = kLogAreaSize[static_cast<std::size_t>(LogKind::plain)],
                                    .keys = kKeyValueKeys},
                                   {.isSupported = 1,
                                    .version = kExLogVersion,
                                    .areaSize = kLogAreaSize[static_cast<std::size_t>(LogKind::ex)],
                                    .keys = kExKeyValueKeys}};

bool isKeyValue(LogKind kind) { return kind == LogKind::keyValue || kind == LogKind::exKeyValue; }

Answer answerVersion(const Request& request, std::uint32_t version) {
  request.store(offsetof(LogRecord, value), version);
  return succeeded(sizeof(LogRecord));
}

}  // namespace

Answer LogComponent::control(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(LogRecord), sizeof(LogRecord))) return failed(Outcome::wrongLength);
  switch (request.load<std::uint32_t>(offsetof(LogRecord, operation))) {
    case kStartPlain:
      return start(context, request, LogKind::plain);
    case kStartEx:
      return start(context, request, LogKind::ex);
    case kStartKeyValue:
      return start(context, request, LogKind::keyValue);
    case kStartExKeyValue:
      return start(context, request, LogKind::exKeyValue);
    // The operation does not have to match the kind of log: a session that is closed sends its own kind's.
    case kStopPlain:
    case kStopEx:
    case kStopKeyValue:
    case kStopExKeyValue:
      return stop(context.surroundings, request);
    case kGetVersion:
      return answerVersion(request, kPlainLogVersion);
    case kGetExVersion:
      return answerVersion(request, kExLogVersion);
    case kUpdate:
      return succeeded(sizeof(LogRecord));
    case kGetInterfaceVersion:
      return answerVersion(request, kInterfaceVersion);
    default:
      return failed(Outcome::unknownRequest);
  }
}

Answer answerLogSupport(const Context& /*context*/, const Request& request) {
  if (request.inputLength != 1 || request.outputLength < kShortestSupport) return failed(Outcome::wrongLength);
  const auto generation = request.load<std::uint8_t>(0);
  if (generation >= std::size(kSupport)) return failed(Outcome::malformed);
  const auto support = std::as_bytes(std::span{kSupport}.subspan(generation, 1));
  const std::size_t length = std::min<std::size_t>(support.size(), request.outputLength);
  std::ranges::copy(support.first(length), request.buffer.begin());
  return succeeded(length);
}

Answer LogComponent::start(const Context& context, const Request& request, LogKind kind) {
  Surroundings& surroundings = context.surroundings;
  Log* const place = findPlace(logs_, &Log::address, request.session);
  const auto area = surroundings.logArea(kind);
  if (place == nullptr || area.empty()) return failed(Outcome::refused);
  writeLogArea(area, kind, context.sources(), fault_);
  const std::uint64_t address = surroundings.mapLog(kind);
  if (address == 0) return failed(Outcome::refused);
  *place = {
      .session = request.session, .process = surroundings.process(), .address = address, .id = ++lastId_, .kind = kind};
  const std::uint32_t dataVersion = fault_ == LogFault::version ? kUnknownDataVersion : kDataVersion;
  request.store(0, LogRecord{.logId = place->id,
                             .operation = request.load<std::uint32_t>(offsetof(LogRecord, operation)),
                             .address = address,
                             .reserved0 = 0,
                             .value = isKeyValue(kind) ? dataVersion : 0,
                             .reserved1 = 0});
  return succeeded(sizeof(LogRecord));
}

Answer LogComponent::stop(Surroundings& surroundings, const Request& request) {
  const auto id = request.load<std::uint32_t>(0);
  const std::uint64_t process = surroundings.process();
  const auto log = std::ranges::find_if(
      logs_, [&](const Log& entry) { return entry.address != 0 && entry.id == id && entry.process == process; });
  if (log == std::end(logs_)) return failed(Outcome::refused);
  surroundings.unmapLog(log->kind, log->process, log->address);
  *log = {};
  return succeeded(sizeof(LogRecord));
}

void LogComponent::close(Surroundings& surroundings, SessionId session) {
  for (auto& log : logs_) {
    if (log.address == 0 || log.session != session) continue;
    surroundings.unmapLog(log.kind, log.process, log.address);
    log = {};
  }
}

void LogComponent::refresh(Surroundings& surroundings, const Sources& sources) const {
  for (std::uint32_t kind = 0; kind < kLogKinds; ++kind)
    if (isMapped(static_cast<LogKind>(kind)))
      writeLogArea(surroundings.logArea(static_cast<LogKind>(kind)), static_cast<LogKind>(kind), sources, fault_);
}

bool LogComponent::hasMappedLogs() const {
  return std::ranges::any_of(logs_, [](const Log& log) { return log.address != 0; });
}

bool LogComponent::isMapped(LogKind kind) const {
  return std::ranges::any_of(logs_, [&](const Log& log) { return log.address != 0 && log.kind == kind; });
}

}  // namespace simulator
