// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tool/lsp/client.h"
#include "tool/lsp/document.h"
#include "tool/lsp/framing.h"
#include "tool/lsp/json_rpc.h"

namespace tool::lsp {

/// Answers an editor's messages about the documents that it has open.
class Server {
 public:
  using Send = std::function<void(const Json& message)>;

  Server(const documents::ReadOptions& options, Send send) : options_(options), send_(std::move(send)) {}

  /// Takes a message, whatever it holds, and sends what there is to say to it.
  void take(std::string body);
  /// Says that what came was no message.
  void refuse(ErrorCode code, const std::string& message) { send_(refusalOf(nullptr, code, message)); }

  /// The editor wants nothing more.
  [[nodiscard]] bool hasEnded() const { return phase_ == Phase::kEnded; }
  /// It said so beforehand.
  [[nodiscard]] bool wasShutDown() const { return wasShutDown_; }

 private:
  enum class Phase : std::uint8_t { kNew, kRunning, kShutDown, kEnded };
  struct RequestRow;
  struct NotificationRow;
  static const RequestRow kRequests[];
  static const NotificationRow kNotifications[];

  Json replyTo(const Json& id, const std::string& method, const Json& parameters);
  void takeNotification(const std::string& method, const Json& parameters);
  Json answer(const std::string& method, const Json& parameters);

  Json initialize(const Json& parameters);
  Json shutDown(const Json& parameters);
  Json complete(const Json& parameters);
  Json hover(const Json& parameters);
  Json goToDefinition(const Json& parameters);
  Json listSymbols(const Json& parameters);
  Json findSymbols(const Json& parameters);
  Json format(const Json& parameters);
  Json actOn(const Json& parameters);

  void exit(const Json& parameters);
  void open(const Json& parameters);
  void change(const Json& parameters);
  void close(const Json& parameters);

  [[nodiscard]] const Document& documentOf(const Json& parameters) const;
  void keep(std::unique_ptr<const Document> document);

  documents::ReadOptions options_;
  Send send_;
  Phase phase_ = Phase::kNew;
  bool wasShutDown_ = false;
  Client client_;
  std::map<std::string, std::unique_ptr<const Document>> documents_;
};

/// Serves an editor until it wants nothing more, or is gone. True when it took its leave as it should.
bool serve(MessageReader& reader, Server& server);

}  // namespace tool::lsp
