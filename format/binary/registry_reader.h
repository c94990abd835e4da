// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vqs {

/// What can be wrong with registry text.
enum class RegistryDefectKind : std::uint8_t {
  kNone,
  /// the first line is not one that registry text begins with
  kNoHeading,
  /// neither a key, nor a value under a key, nor a comment
  kUnknownLine,
  /// a value that should hold a policy binary holds something else than "hex:"
  kNotBinary,
  /// something else than two digits, and than a comma or the end between them
  kNoDigits,
  kNoComma,
  /// the text ends inside a key or a value
  kCut
};

/// The first thing that is wrong with registry text: what stands there, in bytes from the text's start.
struct RegistryDefect {
  RegistryDefectKind kind = RegistryDefectKind::kNone;
  std::size_t offset = 0;
  std::size_t length = 0;
};

/// A value that may hold a policy binary.
struct RegistryBinary {
  /// without its quotes; empty for the key's default value, too
  std::string_view name;
  /// where the value begins, in bytes from the text's start
  std::size_t offset;
  /// what stands behind "hex:", as it stands there
  std::string_view digits;
  /// of the bytes that the digits are
  std::size_t size;
  /// false when the text ends with it: some of it may be missing
  bool hasLineEnd;
};

/// True when the first line says that it is registry text, of whatever version. The text is UTF-8 or another set that
/// has ASCII, with or without a byte order mark.
bool isRegistryText(std::string_view text);

/// Takes the values that writeRegistryText writes out of registry text, whoever has written it: with LF or CR LF,
/// wrapped lines, comments, other values and other keys.
class RegistryReader {
 public:
  explicit RegistryReader(std::string_view text);

  /// The next value of the driver's key that is named as policy binaries are, or not at all. False at the end of the
  /// text, and at a defect.
  bool next(RegistryBinary& value);

  [[nodiscard]] const RegistryDefect& defect() const { return defect_; }

 private:
  [[nodiscard]] bool isAtEnd() const { return position_ == text_.size(); }
  [[nodiscard]] bool isAt(char character) const { return !isAtEnd() && text_[position_] == character; }
  [[nodiscard]] std::size_t endOfLine() const;
  bool skip(char character);
  void skipBlanks();
  bool fail(RegistryDefectKind kind, std::size_t offset, std::size_t length);
  /// Names the line that is being read, from its beginning on; the text's end when that is what is in the way.
  bool failInLine();
  bool takeHeading();
  bool takeKey();
  bool takeQuoted(std::string_view& inner);
  bool takeName(std::string_view& name);
  bool takeBinary(RegistryBinary& value);
  bool takeDigits(RegistryBinary& value);
  bool takeByte();
  /// Blanks, and the ends of lines that go on in the next one.
  bool skipWrapping();
  bool skipData();
  bool endLine();

  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t lineStart_ = 0;
  bool hasKey_ = false;
  bool isOurKey_ = false;
  RegistryDefect defect_;
};

/// The bytes of a value: as many as it says.
void takeBytes(const RegistryBinary& value, std::span<std::byte> bytes);

}  // namespace vqs
