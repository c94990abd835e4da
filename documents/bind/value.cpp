// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/value.h"

#include "documents/bind/number.h"
#include "documents/bind/strings.h"
#include "documents/text/quote.h"

namespace documents {
namespace {

std::string noOption(const Word& word, std::string_view written) {
  return std::string(written) + " is no option of " + quote(word.name) + ": " + expectation(word);
}

std::optional<std::uint32_t> bindNumberOf(Context& context, NodeId id, const Path& path, const Word& word) {
  NumberField field{.name = {}, .word = &word};
  if (word.form == ValueForm::kSigned) {
    field.least = std::numeric_limits<std::int32_t>::min();
    field.most = std::numeric_limits<std::int32_t>::max();
  }
  const auto value = bindNumber(context, id, path, field);
  if (!value) return std::nullopt;
  checkValue(context, context.node(id).span, path, word, *value);
  return static_cast<std::uint32_t>(*value);
}

/// What an option's number in quotes, or a text near another one's, was meant to be.
std::vector<Suggestion> insteadOf(std::string_view written, Span span, const Word& word) {
  const auto number = wholeNumber(written);
  if (number && *number >= 0 && *number <= std::numeric_limits<std::uint32_t>::max() &&
      optionText(word, static_cast<std::uint32_t>(*number)))
    return {rewrite(span, std::string(written), true)};
  return rewrites(span, nearestOptions(word, written));
}

/// An option by its text.
std::optional<std::uint32_t> bindText(Context& context, NodeId id, const Path& path, const Word& word) {
  const Node& node = context.node(id);
  const auto characters = Characters::ofString(context.tree(), node);
  const auto written = characters.view();
  if (const auto value = optionValue(word, written)) return value;
  if (const auto* option = foldedOption(word, written)) {
    context.say(Rule::kOtherCase, node.span, path, [&] {
      const auto text = textOf(*option);
      return Words{quote(written) + " is written " + quote(text), {rewriteName(node.span, text, true)}};
    });
    return static_cast<std::uint32_t>(option->Value);
  }
  context.refuse(Rule::kNoSuchOption, node.span, path,
                 [&] { return Words{noOption(word, quote(written)), insteadOf(written, node.span, word)}; });
  return std::nullopt;
}

std::optional<std::uint32_t> bindOption(Context& context, NodeId id, const Path& path, const Word& word) {
  const Node& node = context.node(id);
  const bool isText = node.kind == NodeKind::kString && !node.isBroken;
  return isText ? bindText(context, id, path, word) : bindNumberOf(context, id, path, word);
}

/// An element of a list of options.
std::optional<std::uint32_t> bindElement(Context& context, NodeId id, const Path& path, const Word& word) {
  const NodeKind kind = context.node(id).kind;
  if (kind == NodeKind::kString || kind == NodeKind::kNumber) return bindOption(context, id, path, word);
  refuseKind(context, id, path, "an option of " + quote(word.name), "its text or its number");
  return std::nullopt;
}

std::optional<std::uint32_t> bindBits(Context& context, NodeId id, const Path& path, const Word& word) {
  const Node& node = context.node(id);
  if (node.kind != NodeKind::kArray || node.isBroken) return bindOption(context, id, path, word);
  std::uint32_t bits = 0;
  bool isWhole = true;
  std::size_t index = 0;
  for (NodeId element = node.firstChild; element != kNoNode; element = context.node(element).next, ++index) {
    const Path place = path.element(index);
    const auto value = bindElement(context, element, place, word);
    isWhole = isWhole && value;
    if (value && *value != 0 && (bits & *value) == *value) {
      const Span span = context.node(element).span;
      context.say(Rule::kOptionTwice, span, place,
                  [&] { return Words{std::string(context.tree().slice(span)) + " is in the list already"}; });
    }
    bits |= value.value_or(0);
  }
  if (!isWhole) return std::nullopt;
  return bits;
}

}  // namespace

void checkValue(Context& context, Span span, const Path& path, const Word& word, std::int64_t value) {
  const auto number = static_cast<std::uint32_t>(value);
  switch (word.form) {
    case ValueForm::kOption:
      if (optionText(word, number)) return;
      return context.sayUnknown(Rule::kNoSuchOption, span, path,
                                [&] { return Words{noOption(word, std::to_string(value))}; });
    case ValueForm::kBits:
      if ((number & ~word.allBits()) == 0) return;
      return context.sayUnknown(Rule::kForeignBit, span, path, [&] {
        return Words{std::to_string(number) + " has bits that no option of " + quote(word.name) +
                     " has: " + expectation(word)};
      });
    case ValueForm::kUnsigned:
    case ValueForm::kSigned:
      break;
  }
  if (value >= word.least && value <= word.most) return;
  context.say(Rule::kOutOfRange, span, path, [&] {
    return Words{std::to_string(value) + " is out of the range of " + quote(word.name) + ": " + expectation(word)};
  });
}

std::optional<std::uint32_t> bindValue(Context& context, NodeId id, const Path& path, const Word* word) {
  if (word != nullptr && word->form == ValueForm::kOption) return bindOption(context, id, path, *word);
  if (word != nullptr && word->form == ValueForm::kBits) return bindBits(context, id, path, *word);
  if (word != nullptr) return bindNumberOf(context, id, path, *word);
  const auto value = bindNumber(context, id, path, {.name = "value"});
  if (!value) return std::nullopt;
  return static_cast<std::uint32_t>(*value);
}

}  // namespace documents
