// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/log_area.h"
#include "simulator/model/request.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// The logs that are running, and their areas.
class LogComponent {
 public:
  Answer control(Surroundings& surroundings, const Request& request, const Sources& sources);
  static Answer answerSupport(const Request& request);

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

  Answer start(Surroundings& surroundings, const Request& request, LogKind kind, const Sources& sources);
  Answer stop(Surroundings& surroundings, const Request& request);
  [[nodiscard]] bool isMapped(LogKind kind) const;

  Log logs_[kCapacity]{};
  std::uint32_t lastId_ = 0;
  LogFault fault_ = LogFault::none;
};

}  // namespace simulator
