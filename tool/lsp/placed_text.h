// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "documents/documents.h"
#include "tool/lsp/json_rpc.h"

namespace tool::lsp {

/// A text with its places as the protocol says them: lines from 0 on, and units of UTF-16.
class PlacedText {
 public:
  explicit PlacedText(std::string text) : text_(std::move(text)), lines_(text_) {}
  // The lines know where the text is.
  PlacedText(const PlacedText&) = delete;
  PlacedText& operator=(const PlacedText&) = delete;
  ~PlacedText() = default;

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] Json rangeOf(documents::Span span) const;

  /// Throws a RequestError, or what the JSON library throws, when it is no place.
  [[nodiscard]] std::size_t offsetOf(const Json& position) const;
  [[nodiscard]] documents::Span spanOf(const Json& range) const;
  /// True when a place lies between the two units of a character.
  [[nodiscard]] bool isInsidePair(const Json& position) const;

 private:
  [[nodiscard]] Json positionOf(std::size_t offset) const;

  std::string text_;
  documents::LineTable lines_;
};

/// The text after changes, each of which is said in places of the text that those before it leave. Throws as PlacedText
/// does.
std::string textAfter(const PlacedText& text, const Json& changes);

/// The one edit that makes one text of another; of nothing when they are the same. It begins and ends between
/// characters.
documents::Edit smallestEdit(std::string_view before, std::string_view after);

}  // namespace tool::lsp
