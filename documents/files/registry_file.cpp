// SPDX-License-Identifier: Apache-2.0
#include "documents/files/registry_file.h"

#include <algorithm>

#include "documents/documents.h"
#include "documents/syntax/tree.h"
#include "documents/text/quote.h"
#include "documents/text/utf.h"
#include "format/binary/registry_reader.h"
#include "format/binary/registry_text.h"

namespace documents {
namespace {

using vqs::RegistryBinary;
using vqs::RegistryDefectKind;

struct DefectRow {
  RegistryDefectKind kind;
  Rule rule;
  std::string_view sentence;
};

constexpr DefectRow kDefectRows[] = {
    {RegistryDefectKind::kNoHeading, Rule::kNoRegistryText,
     "\"Windows Registry Editor Version 5.00\" is expected as the first line"},
    {RegistryDefectKind::kUnknownLine, Rule::kRegistryLine,
     "a key in brackets, a value under a key, or a comment behind \";\" is expected"},
    {RegistryDefectKind::kNotBinary, Rule::kMalformedHex,
     "a policy binary is expected here, as \"hex:\" and its bytes in hexadecimal"},
    {RegistryDefectKind::kNoDigits, Rule::kMalformedHex, "two hexadecimal digits are expected"},
    {RegistryDefectKind::kNoComma, Rule::kMalformedHex,
     "a comma, the end of the line, or \"\\\" at its end is expected behind a byte's two digits"},
    {RegistryDefectKind::kCut, Rule::kRegistryTextCut, "the text ends inside a key or a value"},
};

void add(Findings& findings, Rule rule, Severity severity, Span span, std::string sentence) {
  addFinding(findings, {.rule = rule,
                        .severity = severity,
                        .span = span,
                        .path = {},
                        .sentence = std::move(sentence),
                        .suggestions = {}});
}

void addDefect(Findings& findings, const vqs::RegistryDefect& defect) {
  const auto* const row = std::ranges::find(kDefectRows, defect.kind, &DefectRow::kind);
  add(findings, row->rule, Severity::kError, {.offset = defect.offset, .length = defect.length},
      std::string{row->sentence});
}

Span spanOf(std::string_view text, const RegistryBinary& value) {
  const auto end = static_cast<std::size_t>(value.digits.data() + value.digits.size() - text.data());
  return {.offset = value.offset, .length = end - value.offset};
}

void addNoValue(Findings& findings, std::string_view text) {
  add(findings, Rule::kNoRegistryValue, Severity::kError, {.offset = text.size(), .length = 0},
      "no policy binary is in the text: a value " + quote(vqs::kAsmValueName) + " or " +
          quote(vqs::kBalanceProfileValueName) + " is expected under [" + std::string{vqs::kRegistryKey} + "]");
}

/// The value that is read, and those that are not.
struct Values {
  std::optional<RegistryBinary> chosen;
  std::vector<RegistryBinary> others;

  /// A driver's store is more likely meant than a value without a name.
  void add(const RegistryBinary& value) {
    if (!chosen) {
      chosen = value;
      return;
    }
    const bool isBetter = chosen->name.empty() && !value.name.empty();
    if (others.size() < kMostFindings) others.push_back(isBetter ? *chosen : value);
    if (isBetter) chosen = value;
  }
};

constexpr unsigned char kByteOrderMark[] = {0xFF, 0xFE};

/// One unit of either byte order.
char16_t unitAt(std::span<const std::byte> bytes, std::size_t index, bool isBigEndian) {
  const auto first = std::to_integer<unsigned>(bytes[2 * index]);
  const auto second = std::to_integer<unsigned>(bytes[2 * index + 1]);
  return static_cast<char16_t>(isBigEndian ? first << 8U | second : second << 8U | first);
}

/// The byte order of a text, whose first character is ASCII or a byte order mark.
std::optional<bool> isBigEndian(std::span<const std::byte> bytes) {
  if (bytes.size() < 2) return std::nullopt;
  const auto first = std::to_integer<unsigned char>(bytes[0]);
  const auto second = std::to_integer<unsigned char>(bytes[1]);
  if ((first == kByteOrderMark[0] && second == kByteOrderMark[1]) || (first != 0 && second == 0)) return false;
  if ((first == kByteOrderMark[1] && second == kByteOrderMark[0]) || (first == 0 && second != 0)) return true;
  return std::nullopt;
}

std::u16string unitsOf(std::span<const std::byte> bytes, bool isBigEndian) {
  std::u16string units;
  units.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i < bytes.size() / 2; ++i) units += unitAt(bytes, i, isBigEndian);
  // Half a unit at the end is not lost: it is a character that stands nowhere in registry text.
  if (bytes.size() % 2 != 0) units += u'\0';
  return units;
}

/// The longest beginning of registry text that is looked at to tell it, in bytes.
constexpr std::size_t kHeadBytes = 128;

void appendPiece(void* text, std::string_view piece) { *static_cast<std::string*>(text) += piece; }

/// As registry editors write it: with a byte order mark, and two characters at the end of each line.
std::string toEditorsForm(std::string_view text) {
  std::string bytes;
  bytes.reserve(2 * text.size() + 16);
  const auto put = [&](unsigned char low, unsigned char high) {
    bytes += static_cast<char>(low);
    bytes += static_cast<char>(high);
  };
  put(kByteOrderMark[0], kByteOrderMark[1]);
  for (const char character : text) {
    if (character == '\n') put('\r', 0);
    put(static_cast<unsigned char>(character), 0);
  }
  return bytes;
}

}  // namespace

std::optional<RegistryFile> readRegistryText(std::string_view text, Findings& findings) {
  vqs::RegistryReader reader{text};
  Values values;
  for (RegistryBinary value{}; reader.next(value);) values.add(value);
  if (reader.defect().kind != RegistryDefectKind::kNone) {
    addDefect(findings, reader.defect());
    return std::nullopt;
  }
  if (!values.chosen) {
    addNoValue(findings, text);
    return std::nullopt;
  }
  const auto& chosen = *values.chosen;
  for (const auto& value : values.others)
    add(findings, Rule::kRegistryLine, Severity::kWarning, spanOf(text, value),
        quote(value.name) + " is left out: only the policies of " + quote(chosen.name) + " are read");
  if (!chosen.hasLineEnd)
    add(findings, Rule::kRegistryTextCut, Severity::kWarning, {.offset = text.size(), .length = 0},
        "the text ends without the end of its last line: some of it may be missing");
  RegistryFile file{.binary = std::vector<std::byte>(chosen.size), .span = spanOf(text, chosen)};
  vqs::takeBytes(chosen, file.binary);
  return file;
}

std::optional<std::string> registryTextFromUtf16(std::span<const std::byte> bytes) {
  const auto order = isBigEndian(bytes);
  if (!order) return std::nullopt;
  if (!vqs::isRegistryText(toUtf8(unitsOf(bytes.first(std::min(bytes.size(), kHeadBytes)), *order))))
    return std::nullopt;
  return toUtf8(unitsOf(bytes, *order));
}

std::string writeRegistry(std::span<const std::byte> binary, RegistryValue value, RegistryEncoding encoding) {
  std::string text;
  vqs::writeRegistryText({.take = appendPiece, .target = &text},
                         value == RegistryValue::kAsm ? vqs::kAsmValueName : vqs::kBalanceProfileValueName, binary);
  return encoding == RegistryEncoding::kUtf8 ? text : toEditorsForm(text);
}

}  // namespace documents
