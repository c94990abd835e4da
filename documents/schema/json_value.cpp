// SPDX-License-Identifier: Apache-2.0
#include "documents/schema/json_value.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace documents {
namespace {

constexpr std::size_t kLineWidth = 120;
constexpr std::size_t kIndent = 2;

void appendQuoted(std::string& target, std::string_view characters) {
  constexpr char kDigits[] = "0123456789abcdef";
  target += '"';
  for (const char character : characters) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20) {
      target += "\\u00";
      target += kDigits[byte >> 4];
      target += kDigits[byte & 0xF];
      continue;
    }
    if (character == '"' || character == '\\') target += '\\';
    target += character;
  }
  target += '"';
}

std::string quoted(std::string_view characters) {
  std::string result;
  appendQuoted(result, characters);
  return result;
}

void beginLine(std::string& target, std::size_t indent) {
  target += '\n';
  target.append(indent, ' ');
}

}  // namespace

JsonValue JsonValue::text(std::string_view characters) {
  JsonValue value;
  value.scalar_ = quoted(characters);
  return value;
}

JsonValue JsonValue::number(std::int64_t value) {
  JsonValue result;
  result.scalar_ = std::to_string(value);
  return result;
}

JsonValue JsonValue::boolean(bool value) {
  JsonValue result;
  result.scalar_ = value ? "true" : "false";
  return result;
}

JsonValue JsonValue::list(std::vector<JsonValue> elements) {
  JsonValue result;
  result.kind_ = Kind::kList;
  for (JsonValue& element : elements) result.add(std::move(element));
  return result;
}

JsonValue JsonValue::object(std::vector<JsonMember> members) {
  JsonValue result;
  result.kind_ = Kind::kObject;
  result.members_ = std::move(members);
  return result;
}

JsonValue& JsonValue::add(std::string_view name, JsonValue value) {
  members_.push_back({std::string(name), std::move(value)});
  return *this;
}

JsonValue& JsonValue::add(JsonValue element) { return add({}, std::move(element)); }

JsonValue& JsonValue::addAll(JsonValue other) {
  std::ranges::move(other.members_, std::back_inserter(members_));
  return *this;
}

bool JsonValue::operator==(const JsonValue& other) const {
  return kind_ == other.kind_ && scalar_ == other.scalar_ && members_ == other.members_;
}

std::size_t JsonValue::width() const {
  std::string line;
  writeInLine(line);
  return line.size();
}

void JsonValue::writeInLine(std::string& target) const {
  if (kind_ == Kind::kScalar) {
    target += scalar_;
    return;
  }
  const bool isObject = kind_ == Kind::kObject;
  // Braces stand apart from what they hold, brackets do not.
  const bool isSpaced = isObject && !members_.empty();
  target += isObject ? '{' : '[';
  if (isSpaced) target += ' ';
  bool isFirst = true;
  for (const JsonMember& member : members_) {
    if (!isFirst) target += ", ";
    isFirst = false;
    if (isObject) {
      appendQuoted(target, member.name);
      target += ": ";
    }
    member.value.writeInLine(target);
  }
  if (isSpaced) target += ' ';
  target += isObject ? '}' : ']';
}

bool JsonValue::isListOfScalars() const {
  const auto isScalar = [](const JsonMember& member) { return member.value.kind_ == Kind::kScalar; };
  return kind_ == Kind::kList && std::ranges::all_of(members_, isScalar);
}

/// As many elements in a line as fit.
void JsonValue::writeFilled(std::string& target, std::size_t indent) const {
  std::size_t column = kLineWidth;
  target += '[';
  for (std::size_t i = 0; i < members_.size(); ++i) {
    const std::string& element = members_[i].value.scalar_;
    const bool isLast = i + 1 == members_.size();
    const std::size_t taken = element.size() + (isLast ? 0 : 1);
    if (column + 1 + taken > kLineWidth) {
      beginLine(target, indent + kIndent);
      column = indent + kIndent;
    } else {
      target += ' ';
      ++column;
    }
    target += element;
    if (!isLast) target += ',';
    column += taken;
  }
  beginLine(target, indent);
  target += ']';
}

void JsonValue::writeInLines(std::string& target, std::size_t indent) const {
  const bool isObject = kind_ == Kind::kObject;
  target += isObject ? '{' : '[';
  const std::size_t inner = indent + kIndent;
  for (std::size_t i = 0; i < members_.size(); ++i) {
    const JsonMember& member = members_[i];
    const bool isLast = i + 1 == members_.size();
    const std::string name = isObject ? quoted(member.name) + ": " : "";
    beginLine(target, inner);
    target += name;
    member.value.write(target, inner, inner + name.size() + (isLast ? 0 : 1));
    if (!isLast) target += ',';
  }
  beginLine(target, indent);
  target += isObject ? '}' : ']';
}

void JsonValue::write(std::string& target, std::size_t indent, std::size_t taken) const {
  if (kind_ == Kind::kScalar || members_.empty() || taken + width() <= kLineWidth)
    writeInLine(target);
  else if (isListOfScalars())
    writeFilled(target, indent);
  else
    writeInLines(target, indent);
}

std::string JsonValue::laidOut() const {
  std::string result;
  write(result, 0, 0);
  result += '\n';
  return result;
}

}  // namespace documents
