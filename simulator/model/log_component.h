// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/log_area.h"
#include "simulator/model/request.h"
#include "simulator/model/surroundings.h"

namespace simulator {

Answer answerLogSupport(const Context& context, const Request& request);

/// The logs that are running, and their areas.
class LogComponent {
 public:
  Answer control(const Context& context, const Request& request);

  /// Stops the logs of a session.
  void close(Surroundings& surroundings, SessionId session);
  /// Writes the areas that are mapped somewhere.
  void refresh(Surroundings& surroundings, const Sources& sources) const;
  [[nodiscard]] bool hasMappedLogs() const;

  void setFault(LogFault fault) { fault_ = fault; }

 private:
  struct Log {
    SessionId session;
    std::uint64_t process;
    /// 0 in a place that is free
    std::uint64_t address;
    std::uint32_t id;
    LogKind kind;
  };

  static constexpr std::size_t kCapacity = 64;

  Answer start(const Context& context, const Request& request, LogKind kind);
  Answer stop(Surroundings& surroundings, const Request& request);
  [[nodiscard]] bool isMapped(LogKind kind) const;

  Log logs_[kCapacity]{};
  std::uint32_t lastId_ = 0;
  LogFault fault_ = LogFault::kNone;
};

}  // namespace simulator
