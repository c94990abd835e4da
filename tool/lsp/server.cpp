// SPDX-License-Identifier: Apache-2.0
#include "tool/lsp/server.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "tool/lsp/answers.h"

namespace tool::lsp {

struct Server::RequestRow {
  std::string_view method;
  Json (Server::*answer)(const Json& parameters);
};

struct Server::NotificationRow {
  std::string_view method;
  void (Server::*take)(const Json& parameters);
};

// clang-format off
const Server::RequestRow Server::kRequests[] = {
    {"initialize", &Server::initialize},
    {"shutdown", &Server::shutDown},
    {"textDocument/codeAction", &Server::actOn},
    {"textDocument/completion", &Server::complete},
    {"textDocument/definition", &Server::goToDefinition},
    {"textDocument/documentSymbol", &Server::listSymbols},
    {"textDocument/formatting", &Server::format},
    {"textDocument/hover", &Server::hover},
    {"workspace/symbol", &Server::findSymbols},
};

const Server::NotificationRow Server::kNotifications[] = {
    {"exit", &Server::exit},
    {"textDocument/didChange", &Server::change},
    {"textDocument/didClose", &Server::close},
    {"textDocument/didOpen", &Server::open},
};
// clang-format on

namespace {

constexpr int kIncremental = 2;

Json capabilities(const Client& client) {
  Json result = {
      // Every editor counts in these units, whatever else it can.
      {"positionEncoding", "utf-16"},
      {"textDocumentSync", {{"openClose", true}, {"change", kIncremental}}},
      {"completionProvider", {{"triggerCharacters", {"\"", ":", "{", "["}}}},
      {"hoverProvider", true},
      {"definitionProvider", true},
      {"documentSymbolProvider", true},
      {"workspaceSymbolProvider", true},
      {"documentFormattingProvider", true},
  };
  if (client.hasCodeActions) result["codeActionProvider"] = {{"codeActionKinds", {"quickfix", "source.fixAll"}}};
  return result;
}

bool isIdentifier(const Json& id) { return id.is_string() || id.is_number_integer(); }

const std::string& uriOf(const Json& parameters) {
  return parameters.at("textDocument").at("uri").get_ref<const std::string&>();
}

}  // namespace

void Server::take(std::string body) {
  const auto message = parseMessage(std::move(body));
  if (!message) return refuse(ErrorCode::kParseError, "the message is not JSON, or has too many levels");
  if (!message->is_object() || message->value("jsonrpc", Json{}) != "2.0")
    return refuse(ErrorCode::kInvalidRequest, "the message is no object of JSON-RPC 2.0");
  const Json id = message->value("id", Json{});
  const Json method = message->value("method", Json{});
  const bool isRequest = message->contains("id");
  // Nothing is asked of the editor that it would answer.
  if (method.is_null() && isRequest && (message->contains("result") || message->contains("error"))) return;
  if (!method.is_string() || (isRequest && !isIdentifier(id)))
    return send_(refusalOf(isIdentifier(id) ? id : Json{}, ErrorCode::kInvalidRequest,
                           "the message has no method, or an id that is none"));
  const Json parameters = message->value("params", Json{});
  if (isRequest)
    send_(replyTo(id, method, parameters));
  else
    takeNotification(method, parameters);
}

/// The answer to a request, or why there is none.
Json Server::replyTo(const Json& id, const std::string& method, const Json& parameters) {
  try {
    return answerTo(id, answer(method, parameters));
  } catch (const RequestError& error) {
    return refusalOf(id, error.code(), error.what());
  } catch (const Json::exception& error) {
    return refusalOf(id, ErrorCode::kInvalidParams, error.what());
  } catch (const std::exception& error) {
    return refusalOf(id, ErrorCode::kInternalError, error.what());
  }
}

Json Server::answer(const std::string& method, const Json& parameters) {
  if (phase_ == Phase::kShutDown) throw RequestError{ErrorCode::kInvalidRequest, "the server was shut down"};
  const bool isIntroduction = method == "initialize";
  if (phase_ == Phase::kNew && !isIntroduction)
    throw RequestError{ErrorCode::kServerNotInitialized, "the server is not initialized"};
  if (phase_ == Phase::kRunning && isIntroduction)
    throw RequestError{ErrorCode::kInvalidRequest, "the server is initialized"};
  const auto* const row = std::ranges::find(kRequests, method, &RequestRow::method);
  if (row == std::end(kRequests))
    throw RequestError{ErrorCode::kMethodNotFound, "there is no method \"" + method + '"'};
  return (this->*row->answer)(parameters);
}

/// Nothing is said to a notification, so one that makes no sense is left alone.
void Server::takeNotification(const std::string& method, const Json& parameters) {
  if (phase_ != Phase::kRunning && method != "exit") return;
  const auto* const row = std::ranges::find(kNotifications, method, &NotificationRow::method);
  if (row == std::end(kNotifications)) return;
  try {
    (this->*row->take)(parameters);
  } catch (const RequestError&) {
    return;
  } catch (const Json::exception&) {
    return;
  }
}

Json Server::initialize(const Json& parameters) {
  client_ = clientOf(parameters);
  phase_ = Phase::kRunning;
  return {{"capabilities", capabilities(client_)}, {"serverInfo", {{"name", "vqs"}, {"version", VQS_TOOL_VERSION}}}};
}

Json Server::shutDown(const Json& /*parameters*/) {
  phase_ = Phase::kShutDown;
  wasShutDown_ = true;
  documents_.clear();
  return nullptr;
}

void Server::exit(const Json& /*parameters*/) { phase_ = Phase::kEnded; }

Json Server::complete(const Json& parameters) {
  const Document& document = documentOf(parameters);
  return completionItems(document, document.placed.offsetOf(parameters.at("position")), client_);
}

Json Server::hover(const Json& parameters) {
  const Document& document = documentOf(parameters);
  return hoverText(document, document.placed.offsetOf(parameters.at("position")), client_);
}

Json Server::goToDefinition(const Json& parameters) {
  const Document& document = documentOf(parameters);
  return definition(document, document.placed.offsetOf(parameters.at("position")));
}

Json Server::listSymbols(const Json& parameters) { return symbolsOf(documentOf(parameters), client_); }

Json Server::findSymbols(const Json& parameters) {
  const auto& query = parameters.at("query").get_ref<const std::string&>();
  Json found = Json::array();
  for (const auto& [uri, document] : documents_) addMatchingSymbols(found, *document, query);
  return found;
}

Json Server::format(const Json& parameters) { return formattingEdits(documentOf(parameters)); }

Json Server::actOn(const Json& parameters) {
  const Document& document = documentOf(parameters);
  const Json& context = parameters.at("context");
  return codeActions(document, document.placed.spanOf(parameters.at("range")), context.value("only", Json{}), client_);
}

void Server::open(const Json& parameters) {
  const Json& item = parameters.at("textDocument");
  keep(std::make_unique<const Document>(item.at("uri"), item.at("version"), item.at("text"), options_));
}

void Server::change(const Json& parameters) {
  const Document& before = documentOf(parameters);
  keep(std::make_unique<const Document>(before.uri, parameters.at("textDocument").at("version"),
                                        textAfter(before.placed, parameters.at("contentChanges")), options_));
}

void Server::close(const Json& parameters) {
  const std::string uri = uriOf(parameters);
  if (documents_.erase(uri) == 0) return;
  send_(notification("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", Json::array()}}));
}

const Document& Server::documentOf(const Json& parameters) const {
  const auto found = documents_.find(uriOf(parameters));
  if (found == documents_.end()) throw RequestError{ErrorCode::kInvalidParams, "the document is not open"};
  return *found->second;
}

void Server::keep(std::unique_ptr<const Document> document) {
  const Document& kept = *document;
  documents_[kept.uri] = std::move(document);
  send_(notification("textDocument/publishDiagnostics",
                     {{"uri", kept.uri}, {"version", kept.version}, {"diagnostics", diagnosticsOf(kept, client_)}}));
}

bool serve(MessageReader& reader, Server& server) {
  while (!server.hasEnded()) {
    Incoming incoming = reader.next();
    switch (incoming.kind) {
      case Incoming::Kind::kMessage:
        server.take(std::move(incoming.body));
        break;
      case Incoming::Kind::kTooLong:
        server.refuse(ErrorCode::kInvalidRequest, "the message is too long");
        break;
      case Incoming::Kind::kBroken:
        server.refuse(ErrorCode::kParseError, "the message has no header that says its length, or ends too early");
        return false;
      case Incoming::Kind::kEnd:
        return false;
    }
  }
  return server.wasShutDown();
}

}  // namespace tool::lsp
