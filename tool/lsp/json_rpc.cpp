// SPDX-License-Identifier: Apache-2.0
#include "tool/lsp/json_rpc.h"

#include <string_view>
#include <utility>

#include "tool/terminal/numbers.h"

namespace tool::lsp {
namespace {

/// Of `\uXXXX`
constexpr std::size_t kEscapeSize = 6;

/// Lists and objects take memory for each level, and to free them takes the processor's stack.
bool isTooDeep(std::string_view body) {
  std::size_t depth = 0;
  bool isInString = false;
  for (std::size_t at = 0; at < body.size(); ++at) {
    const char byte = body[at];
    if (byte == '"') isInString = !isInString;
    if (isInString) {
      if (byte == '\\') ++at;
      continue;
    }
    if (byte == '[' || byte == '{') ++depth;
    if ((byte == ']' || byte == '}') && depth > 0) --depth;
    if (depth > kMostMessageLevels) return true;
  }
  return false;
}

/// The unit that an escape at this place stands for.
std::optional<std::uint32_t> unitAt(std::string_view body, std::size_t at) {
  if (body.size() - at < kEscapeSize || body[at] != '\\' || body[at + 1] != 'u') return std::nullopt;
  return parseNumber<std::uint32_t>(body.substr(at + 2, 4), 16);
}

constexpr bool isHigh(std::uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool isLow(std::uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Mends the escape at a place, and says how long it is, with its partner.
std::size_t mendEscape(std::string& body, std::size_t at) {
  const auto unit = unitAt(body, at);
  if (!unit) return 2;
  if (isHigh(*unit)) {
    const auto partner = at + kEscapeSize < body.size() ? unitAt(body, at + kEscapeSize) : std::nullopt;
    if (partner && isLow(*partner)) return 2 * kEscapeSize;
  }
  if (isHigh(*unit) || isLow(*unit)) body.replace(at + 2, 4, "FFFD");
  return kEscapeSize;
}

void mendSurrogates(std::string& body) {
  std::size_t at = body.find("\\u") == std::string::npos ? std::string::npos : body.find('\\');
  while (at != std::string::npos) at = body.find('\\', at + mendEscape(body, at));
}

}  // namespace

std::optional<Json> parseMessage(std::string body) {
  if (isTooDeep(body)) return std::nullopt;
  mendSurrogates(body);
  Json message = Json::parse(body, nullptr, false);
  if (message.is_discarded()) return std::nullopt;
  return message;
}

std::string printMessage(const Json& message) {
  return message.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace);
}

Json answerTo(const Json& id, Json result) { return {{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}}; }

Json refusalOf(const Json& id, ErrorCode code, const std::string& message) {
  return {{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", static_cast<int>(code)}, {"message", message}}}};
}

Json notification(const std::string& method, Json params) {
  return {{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}};
}

}  // namespace tool::lsp
