// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct JsonMember;

/// A value of JSON that is made to be written. Members keep the order that they are added in.
class JsonValue {
 public:
  static JsonValue text(std::string_view characters);
  static JsonValue number(std::int64_t value);
  static JsonValue boolean(bool value);
  static JsonValue list(std::vector<JsonValue> elements = {});
  static JsonValue object(std::vector<JsonMember> members = {});

  JsonValue& add(std::string_view name, JsonValue value);
  JsonValue& add(JsonValue element);
  /// Adds what another list or object has.
  JsonValue& addAll(JsonValue other);

  /// True of a list or an object of nothing.
  [[nodiscard]] bool isEmpty() const { return members_.empty(); }

  /// A value stands in one line where it fits, and its members in a line each where it does not.
  [[nodiscard]] std::string laidOut() const;

  bool operator==(const JsonValue& other) const;

 private:
  [[nodiscard]] std::size_t width() const;
  void writeInLine(std::string& target) const;
  /// In one line, if that leaves room for what else the line takes.
  void write(std::string& target, std::size_t indent, std::size_t taken) const;
  void writeInLines(std::string& target, std::size_t indent) const;
  void writeFilled(std::string& target, std::size_t indent) const;
  [[nodiscard]] bool isListOfScalars() const;

  enum class Kind : std::uint8_t { kScalar, kList, kObject } kind_ = Kind::kScalar;
  /// of a scalar, as it is written
  std::string scalar_;
  /// of a list without names
  std::vector<JsonMember> members_;
};

struct JsonMember {
  std::string name;
  JsonValue value;

  bool operator==(const JsonMember&) const = default;
};

}  // namespace documents
