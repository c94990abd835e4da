// SPDX-License-Identifier: Apache-2.0
#include "format_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "vqs/policy_binary.h"

namespace tool {
namespace {

constexpr std::uint16_t kFormatVersion = 1;
constexpr std::string_view kMagic = "$QTF";
constexpr std::size_t kHeaderSize = 16;
constexpr std::size_t kOldHeaderSize = 64;
constexpr std::uint32_t kHighestComparison = 4;
constexpr std::uint8_t kHighestTextFlag = 1;

struct Defect {
  std::string text;
};

/// Most and fewest that the fields of an entry may hold. The older revisions state theirs in the header.
struct Limits {
  std::uint32_t name = 128;
  std::uint32_t description = VQS_POLICY_DESCRIPTION_SIZE;
  std::uint32_t conditions = VQS_POLICY_MAX_CONDITIONS;
  std::uint32_t texts = VQS_POLICY_MAX_TEXTS;
  std::uint32_t textSize = 512;
  std::uint32_t actions = VQS_POLICY_MAX_ACTIONS;
};

/// Walks through a file and stops at the first defect, by throwing it.
class FormatCheck {
 public:
  explicit FormatCheck(std::span<const std::byte> file) : file_{file} {}

  void run() {
    checkHeader();
    if (revision_ != 5) readOldLimits();
    for (policy_ = 1; policy_ <= count_; ++policy_) checkPolicy();
  }

 private:
  [[noreturn]] static void fail(std::size_t offset, const std::string& text) {
    throw Defect{fmt::format("offset {}: {}", offset, text)};
  }

  [[noreturn]] void failInPolicy(std::size_t offset, const std::string& text) const {
    fail(offset, fmt::format("policy {} of {}: {}", policy_, count_, text));
  }

  std::uint32_t at(std::size_t offset, std::size_t width) const {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value |= std::to_integer<std::uint32_t>(file_[offset + i]) << (8 * i);
    return value;
  }

  void skip(std::size_t size) {
    if (size > file_.size() - offset_) failInPolicy(file_.size(), "the file ends inside it");
    offset_ += size;
  }

  std::uint32_t take(std::size_t width) {
    skip(width);
    return at(offset_ - width, width);
  }

  std::uint32_t takeWithin(std::uint32_t least, std::uint32_t most, std::string_view what) {
    const std::uint32_t value = take(4);
    if (value < least || value > most)
      failInPolicy(offset_ - 4, fmt::format("{} is {}, {} to {} are possible", what, value, least, most));
    return value;
  }

  void checkHeader() {
    requireHeader(12);
    if (at(0, 2) != kFormatVersion) fail(0, fmt::format("the format version is {}, only 1 is known", at(0, 2)));
    revision_ = at(2, 2);
    if (revision_ < 3 || revision_ > 5)
      fail(2, fmt::format("the revision is {}, only 3, 4 and 5 are known", revision_));
    if (revision_ == 5 && !hasMagic()) fail(8, fmt::format("the magic \"{}\" is missing", kMagic));
    offset_ = revision_ == 5 ? kHeaderSize : kOldHeaderSize;
    requireHeader(offset_);
    checkCount(revision_ == 5 ? 12 : 8);
  }

  void requireHeader(std::size_t size) const {
    if (file_.size() < size) fail(file_.size(), "the file ends inside its header");
  }

  bool hasMagic() const { return std::ranges::equal(file_.subspan(8, 4), std::as_bytes(std::span{kMagic})); }

  void checkCount(std::size_t offset) {
    count_ = at(offset, 4);
    if (count_ == 0) fail(offset, "the file announces no policies");
    const std::size_t most = (file_.size() - offset_) / kSmallestFileEntry;
    if (count_ > most)
      fail(offset, fmt::format("the file announces {} policies but has room for at most {}", count_, most));
    if (revision_ == 5 && count_ > VQS_POLICY_BINARY_MAX_POLICIES)
      fail(offset, fmt::format("the file announces {} policies, at most 400 are possible", count_));
  }

  void readOldLimits() {
    limits_ = {.name = std::min(at(36, 4), std::uint32_t{VQS_POLICY_NAME_UNITS - 1}),
               .description = std::min(at(40, 4), limits_.description),
               .conditions = std::min(at(44, 4), limits_.conditions),
               .texts = std::min(at(48, 4), limits_.texts),
               .textSize = std::min(at(52, 4), std::uint32_t{VQS_POLICY_TEXT_UNITS}),
               .actions = std::min(at(60, 4), limits_.actions)};
  }

  void checkPolicy() {
    constexpr std::size_t kScalarSize = 19;
    skip(takeWithin(1, limits_.name, "the length of its name"));
    skip(takeWithin(1, limits_.description, "the length of its description"));
    skip(kScalarSize);
    const std::uint32_t conditions = takeWithin(1, limits_.conditions, "its number of conditions");
    const std::uint32_t texts = takeWithin(0, limits_.texts, "its number of texts");
    for (std::uint32_t i = 0; i < conditions; ++i) checkCondition();
    for (std::uint32_t i = 0; i < texts; ++i) checkText();
    const std::uint32_t actions = takeWithin(0, limits_.actions, "its number of actions");
    skip(actions * (revision_ == 3 ? std::size_t{8} : std::size_t{23}));
  }

  void checkCondition() {
    skip(4);
    takeWithin(0, kHighestComparison, "a comparison");
    skip(8);
  }

  void checkText() {
    const std::uint32_t size = takeWithin(0, limits_.textSize, "the length of a text");
    if (revision_ != 5 && size == 1) failInPolicy(offset_ - 4, "the length of a text is 1, which no text has");
    skip(size);
    if (size == 0 && revision_ != 4) return;
    const std::uint32_t flag = take(1);
    if (flag > kHighestTextFlag)
      failInPolicy(offset_ - 1, fmt::format("a text's flag is {}, 0 and 1 are possible", flag));
  }

  std::span<const std::byte> file_;
  std::size_t offset_ = 0;
  std::uint32_t revision_ = 0;
  std::uint32_t count_ = 0;
  std::uint32_t policy_ = 0;
  Limits limits_;
};

}  // namespace

std::optional<std::string> findFormatDefect(std::span<const std::byte> file) {
  try {
    FormatCheck{file}.run();
    return std::nullopt;
  } catch (const Defect& defect) {
    return defect.text;
  }
}

}  // namespace tool
