// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace tool::lsp {

using Json = nlohmann::json;

/// What JSON-RPC and the protocol call what can be wrong with a request.
enum class ErrorCode : std::int32_t {
  kParseError = -32700,
  kInvalidRequest = -32600,
  kMethodNotFound = -32601,
  kInvalidParams = -32602,
  kInternalError = -32603,
  kServerNotInitialized = -32002
};

/// A request that cannot be answered. The message becomes its answer.
class RequestError : public std::runtime_error {
 public:
  RequestError(ErrorCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  [[nodiscard]] ErrorCode code() const { return code_; }

 private:
  ErrorCode code_;
};

/// The most levels of a message.
inline constexpr std::size_t kMostMessageLevels = 64;

/// What a message says; nothing when it is not JSON, or has too many levels. Programs whose strings may hold half of a
/// surrogate pair send it as an escape: it becomes U+FFFD, which is as long.
std::optional<Json> parseMessage(std::string body);

/// A message as it is sent.
std::string printMessage(const Json& message);

Json answerTo(const Json& id, Json result);
Json refusalOf(const Json& id, ErrorCode code, const std::string& message);
Json notification(const std::string& method, Json params);

}  // namespace tool::lsp
