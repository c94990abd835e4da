// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/texts.h"

#include "documents/bind/list.h"
#include "documents/bind/members.h"
#include "documents/bind/strings.h"
#include "documents/text/utf.h"

namespace documents {
namespace {

constexpr ListLimit kLimit{VQS_POLICY_MAX_TEXTS, Rule::kTooManyTexts, "texts", "a policy"};
constexpr TextLimit kTextLimit{Rule::kTextTooLong, VQS_POLICY_TEXT_UNITS - 1, VQS_POLICY_TEXT_SIZE};

/// `"name"`, or what an element of a list is
std::string subjectOf(const Path& path) {
  return path.name().empty() ? "a text" : '"' + std::string(path.name()) + '"';
}

bool isIn8Bit(const Context& context) { return context.options().structureVersion <= VQS_STRUCTURE_VERSION_1; }

void checkLength(Context& context, Span span, const Path& path, const TextLimit& limit, std::size_t units,
                 std::size_t bytes) {
  const bool isBytes = isIn8Bit(context);
  const std::size_t most = isBytes ? limit.bytes : limit.units;
  const std::size_t length = isBytes ? bytes : units;
  if (length <= most) return;
  context.refuse(limit.rule, span, path, [&] {
    return Words{subjectOf(path) + " cannot be " + std::to_string(length) +
                 (isBytes ? " bytes long: a record of this structure version holds "
                          : " units of UTF-16 long: a record holds ") +
                 std::to_string(most)};
  });
}

/// True for UTF-8 without the three bytes that stand for a surrogate.
bool checkPartners(Context& context, Span span, const Path& path, std::string_view text) {
  if (validUtf8(text) == text.size()) return true;
  context.refuse(Rule::kNotIn8Bit, span, path,
                 [&] { return Words{subjectOf(path) + " holds a surrogate without its partner: no 8-bit text can"}; });
  return false;
}

void bindTextMember(Context& context, NodeId id, const Path& path, PolicyText& text) {
  text.text = bindText(context, id, path, kTextLimit);
}

void bindFlag(Context& context, NodeId id, const Path& path, PolicyText& text) {
  bindField<&PolicyText::flag>(context, id, path, text);
  if (text.flag <= VQS_POLICY_MAX_TEXT_FLAG) return;
  context.say(Rule::kUnknownTextFlag, context.node(id).span, path,
              [&] { return Words{std::to_string(text.flag) + " is no text's flag: 0 or 1 is expected"}; });
}

constexpr Member<PolicyText> kMembers[] = {
    {"text", bindTextMember},
    {"flag", bindFlag},
};

PolicyText bindElement(Context& context, NodeId id, const Path& path) {
  PolicyText text;
  const Node& node = context.node(id);
  if (node.kind == NodeKind::kObject && !node.isBroken)
    bindMembers(context, id, path, "a text", kMembers, text);
  else
    text.text = bindText(context, id, path, kTextLimit);
  return text;
}

/// The byte that a surrogate stands for, which has three bytes itself: U+DC80 to U+DCFF.
std::optional<char> byteOf(std::string_view surrogate) {
  if (surrogate.size() < 3 || surrogate[0] != '\xED') return std::nullopt;
  const auto second = static_cast<unsigned char>(surrogate[1]);
  const auto third = static_cast<unsigned char>(surrogate[2]);
  if (second != 0xB2 && second != 0xB3) return std::nullopt;
  return static_cast<char>((second & 0x03) << 6 | (third & 0x3F));
}

/// The bytes of a description; nothing when there is a surrogate that stands for none.
std::optional<std::string> bytesOf(std::string_view text, std::size_t& raw) {
  std::string bytes;
  while (!text.empty()) {
    const std::size_t plain = validUtf8(text);
    bytes += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) break;
    const auto byte = byteOf(text);
    if (!byte) return std::nullopt;
    bytes += *byte;
    ++raw;
    text.remove_prefix(3);
  }
  return bytes;
}

/// As many bytes as a record holds beside the end, without a part of a character.
std::string_view cut(std::string_view bytes) {
  std::string_view rest = bytes;
  std::size_t length = 0;
  while (!rest.empty()) {
    const auto character = nextCharacter(rest);
    const std::size_t next = character ? character->bytes : 1;
    if (length + next > VQS_POLICY_DESCRIPTION_SIZE - 1) break;
    length += next;
    rest.remove_prefix(next);
  }
  return bytes.substr(0, length);
}

void checkZero(Context& context, Span span, const Path& path, std::string_view text) {
  if (text.find('\0') == std::string_view::npos) return;
  context.refuse(Rule::kZeroCharacter, span, path,
                 [&] { return Words{subjectOf(path) + " holds a zero character, which ends a record's text"}; });
}

}  // namespace

std::u16string bindText(Context& context, NodeId id, const Path& path, const TextLimit& limit) {
  const Node& node = context.node(id);
  if (node.isBroken || node.kind != NodeKind::kString) {
    refuseKind(context, id, path, subjectOf(path), "a string");
    return {};
  }
  const auto characters = Characters::ofString(context.tree(), node);
  checkZero(context, node.span, path, characters.view());
  std::u16string units = toUtf16(characters.view());
  if (!isIn8Bit(context) || checkPartners(context, node.span, path, characters.view()))
    checkLength(context, node.span, path, limit, units.size(), characters.view().size());
  return units;
}

void bindTexts(Context& context, NodeId list, const Path& path, BoundPolicy& policy) {
  policy.texts.clear();
  bindList(context, list, path, kLimit,
           [&](NodeId element, const Path& place) { policy.texts.push_back(bindElement(context, element, place)); });
}

std::string bindDescription(Context& context, NodeId id, const Path& path) {
  const Node& node = context.node(id);
  if (node.isBroken || node.kind != NodeKind::kString) {
    refuseKind(context, id, path, subjectOf(path), "a string");
    return {};
  }
  const auto characters = Characters::ofString(context.tree(), node);
  checkZero(context, node.span, path, characters.view());
  std::size_t raw = 0;
  auto bytes = bytesOf(characters.view(), raw);
  if (!bytes) {
    checkPartners(context, node.span, path, characters.view());
    return {};
  }
  if (raw != 0) {
    context.say(Rule::kDescriptionBytes, node.span, path, [&] {
      return Words{"\"description\" holds " + std::to_string(raw) + (raw == 1 ? " byte" : " bytes") +
                   " of no character: UTF-8 is expected"};
    });
  }
  const auto kept = cut(*bytes);
  if (kept.size() == bytes->size()) return *bytes;
  context.say(Rule::kDescriptionCut, node.span, path, [&] {
    return Words{"\"description\" is cut from " + std::to_string(bytes->size()) + " to " + std::to_string(kept.size()) +
                 " bytes: a record holds " + std::to_string(VQS_POLICY_DESCRIPTION_SIZE - 1)};
  });
  return std::string(kept);
}

}  // namespace documents
