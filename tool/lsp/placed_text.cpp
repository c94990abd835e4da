// SPDX-License-Identifier: Apache-2.0
#include "tool/lsp/placed_text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tool::lsp {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// The largest number that the protocol has, which is more than any text has lines and units.
constexpr std::uint64_t kLargest = 0x7FFFFFFF;

/// Bytes of a character of two units in UTF-8, and the least that its first byte is.
constexpr std::size_t kPairSize = 4;
constexpr unsigned char kPairFirst = 0xF0;

std::size_t countAt(const Json& position, const char* name) {
  const Json& count = position.at(name);
  if (!count.is_number_unsigned())
    throw RequestError{ErrorCode::kInvalidParams, "a position needs a line and a character"};
  return static_cast<std::size_t>(std::min(count.get<std::uint64_t>(), kLargest));
}

bool isInsideCharacter(std::string_view text, std::size_t offset) {
  return offset < text.size() && (static_cast<unsigned char>(text[offset]) & 0xC0U) == 0x80;
}

/// Applies changes one after the other.
class Changes {
 public:
  explicit Changes(const PlacedText& text) : base_(&text), text_(text.text()) {}

  void apply(const Json& change) {
    const auto& written = change.at("text").get_ref<const std::string&>();
    const auto range = change.find("range");
    if (range == change.end() || range->is_null())
      replaceAll(written);
    else
      replace(*range, written);
  }

  std::string take() { return std::move(text_); }

 private:
  void replaceAll(const std::string& written) {
    text_ = written;
    unchanged_ = 0;
  }

  void replace(const Json& range, const std::string& written) {
    auto span = base_->spanOf(range);
    // To find the lines of a text takes longer than to change it, and editors change many places from the last to the
    // first: those before the last change are where they were.
    if (span.end() >= unchanged_) {
      latest_ = std::make_unique<const PlacedText>(text_);
      base_ = latest_.get();
      span = base_->spanOf(range);
    }
    unchanged_ = span.offset;
    // An editor may take one half of a character of two units: the other half stays there as a character of one unit,
    // so that everything behind it is where the editor has it.
    std::string replacement = written;
    if (base_->isInsidePair(range.at("start"))) replacement.insert(0, kReplacement);
    if (base_->isInsidePair(range.at("end"))) {
      replacement += kReplacement;
      span.length += kPairSize;
    }
    text_.replace(span.offset, span.length, replacement);
  }

  /// the text whose places are known, how much of its beginning still stands, and the text as it is
  const PlacedText* base_;
  std::unique_ptr<const PlacedText> latest_;
  std::size_t unchanged_ = std::string::npos;
  std::string text_;
};

}  // namespace

Json PlacedText::positionOf(std::size_t offset) const {
  const auto position = lines_.positionOf(offset);
  return {{"line", position.line - 1}, {"character", position.unit}};
}

Json PlacedText::rangeOf(documents::Span span) const {
  return {{"start", positionOf(span.offset)}, {"end", positionOf(span.end())}};
}

std::size_t PlacedText::offsetOf(const Json& position) const {
  return lines_.offsetOf(countAt(position, "line") + 1, countAt(position, "character"));
}

documents::Span PlacedText::spanOf(const Json& range) const {
  const std::size_t begin = offsetOf(range.at("start"));
  const std::size_t end = offsetOf(range.at("end"));
  if (end < begin) throw RequestError{ErrorCode::kInvalidParams, "a range ends before it begins"};
  return {.offset = begin, .length = end - begin};
}

bool PlacedText::isInsidePair(const Json& position) const {
  const std::size_t offset = offsetOf(position);
  const bool isPair = offset < text_.size() && static_cast<unsigned char>(text_[offset]) >= kPairFirst;
  return isPair && lines_.positionOf(offset).unit < countAt(position, "character");
}

std::string textAfter(const PlacedText& text, const Json& changes) {
  Changes applied{text};
  for (const Json& change : changes) applied.apply(change);
  return applied.take();
}

documents::Edit smallestEdit(std::string_view before, std::string_view after) {
  auto same = static_cast<std::size_t>(std::ranges::mismatch(before, after).in1 - before.begin());
  while (same > 0 && (isInsideCharacter(before, same) || isInsideCharacter(after, same))) --same;
  before.remove_prefix(same);
  after.remove_prefix(same);
  const std::size_t most = std::min(before.size(), after.size());
  std::size_t tail = 0;
  while (tail < most && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
  while (tail > 0 && isInsideCharacter(before, before.size() - tail)) --tail;
  return {.span = {.offset = same, .length = before.size() - tail},
          .replacement = std::string{after.substr(0, after.size() - tail)}};
}

}  // namespace tool::lsp
