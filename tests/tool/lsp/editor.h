// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "tool/lsp/server.h"

namespace test {

using tool::lsp::Json;

inline constexpr char kUri[] = "file:///quiet.json";

/// A place as the protocol says it.
inline Json at(unsigned line, unsigned character) { return {{"line", line}, {"character", character}}; }
inline Json between(const Json& start, const Json& end) { return {{"start", start}, {"end", end}}; }

/// An editor that talks to a server in this process.
class Editor {
 public:
  explicit Editor(const Json& capabilities = Json::object()) {
    answer = request("initialize", {{"processId", nullptr}, {"rootUri", nullptr}, {"capabilities", capabilities}});
    notify("initialized", Json::object());
  }

  /// The whole answer to a request.
  Json request(const std::string& method, const Json& parameters) {
    server.take(Json{{"jsonrpc", "2.0"}, {"id", ++id_}, {"method", method}, {"params", parameters}}.dump());
    return sent.back();
  }
  void notify(const std::string& method, const Json& parameters) {
    server.take(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", parameters}}.dump());
  }

  /// Opens the document, and gives what is said about it.
  Json open(const std::string& text) {
    notify("textDocument/didOpen",
           {{"textDocument", {{"uri", kUri}, {"languageId", "jsonc"}, {"version", 1}, {"text", text}}}});
    return sent.back().at("params").at("diagnostics");
  }
  Json change(int version, const Json& changes) {
    notify("textDocument/didChange",
           {{"textDocument", {{"uri", kUri}, {"version", version}}}, {"contentChanges", changes}});
    return sent.back().at("params").at("diagnostics");
  }
  /// The result of a request about a place in the document.
  Json ask(const std::string& method, const Json& position) {
    return request(method, {{"textDocument", {{"uri", kUri}}}, {"position", position}}).at("result");
  }
  Json ask(const std::string& method) { return request(method, {{"textDocument", {{"uri", kUri}}}}).at("result"); }

  std::vector<Json> sent;
  tool::lsp::Server server{{}, [this](const Json& message) { sent.push_back(message); }};
  /// to "initialize"
  Json answer;

 private:
  int id_ = 0;
};

}  // namespace test
