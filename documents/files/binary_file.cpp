// SPDX-License-Identifier: Apache-2.0
#include "documents/files/binary_file.h"

#include <algorithm>

#include <vqs/policy_binary_records.h>
#include "documents/documents.h"
#include "documents/files/defect_text.h"
#include "format/binary/builder.h"
#include "format/binary/reader.h"

namespace documents {
namespace {

std::string pathOf(std::size_t policy) { return "policies[" + std::to_string(policy) + "]"; }

/// A defect of the header, and one of the file as a whole, is in no policy.
bool isInPolicy(vqs::DefectKind kind) { return kind >= vqs::DefectKind::kPolicyCut; }

Finding findingOf(const vqs::Defect& defect, std::span<const std::byte> file) {
  return {.rule = Rule::kBadBinary,
          .severity = Severity::kError,
          .span = {.offset = static_cast<std::size_t>(defect.offset), .length = 0},
          .path = isInPolicy(defect.kind) ? pathOf(defect.policy) : std::string{},
          .sentence = "not a valid policy binary: " + describe(defect, vqs::announcedPolicyCount(file)),
          .suggestions = {}};
}

/// A text of a file may fill its field, but then it cannot be written again: what is written ends in a zero.
class EndlessTexts {
 public:
  EndlessTexts(PolicySet& policies, Findings& findings) : policies_{policies}, findings_{findings} {}

  void cut() {
    for (; policy_ < policies_.policies.size(); ++policy_) {
      auto& policy = policies_.policies[policy_];
      cut(policy.name, VQS_POLICY_NAME_UNITS, Rule::kNameTooLong, "name", "units");
      cut(policy.description, VQS_POLICY_DESCRIPTION_SIZE, Rule::kDescriptionCut, "description", "bytes");
      for (std::size_t i = 0; i < policy.texts.size(); ++i)
        cut(policy.texts[i].text, VQS_POLICY_TEXT_UNITS, Rule::kTextTooLong, "texts[" + std::to_string(i) + "]",
            "units");
    }
  }

 private:
  template <class Text>
  void cut(Text& text, std::size_t room, Rule rule, const std::string& field, const char* unit) {
    if (text.size() < room) return;
    text.resize(room - 1);
    addFinding(findings_,
               {.rule = rule,
                .severity = Severity::kWarning,
                .span = {},
                .path = pathOf(policy_) + "." + field,
                .sentence = "fills all " + std::to_string(room) + " " + unit + " of its field and is cut to " +
                            std::to_string(room - 1) + ", so that it has an end",
                .suggestions = {}});
  }

  PolicySet& policies_;
  Findings& findings_;
  std::size_t policy_ = 0;
};

void append(void* target, const vqs::PackedPolicy& policy) {
  static_cast<std::vector<Policy>*>(target)->push_back(fromPacked(policy));
}

}  // namespace

bool isPolicyBinary(std::span<const std::byte> bytes) {
  constexpr std::byte kZero{0};
  if (bytes.size() < 2 || bytes[1] != kZero) return false;
  if (bytes[0] == std::byte{vqs::kFormatVersion}) return true;
  const auto magic = std::as_bytes(std::span{vqs::kMagic});
  return bytes.size() >= vqs::kMagicOffset + magic.size() &&
         std::ranges::equal(bytes.subspan(vqs::kMagicOffset, magic.size()), magic);
}

std::optional<PolicySet> readBinaryFile(std::span<const std::byte> file, Findings& findings) {
  vqs::BinaryVersions versions{};
  vqs::Defect defect{};
  static_cast<void>(vqs::checkBinary(file, versions, &defect));
  if (defect.kind != vqs::DefectKind::kNone) {
    addFinding(findings, findingOf(defect, file));
    return std::nullopt;
  }
  PolicySet read{.version1 = versions.first, .version2 = versions.second, .policies = {}};
  vqs::readEach(file, {.take = append, .target = &read.policies});
  EndlessTexts{read, findings}.cut();
  return read;
}

std::vector<std::byte> writeBinary(const PolicySet& policies) {
  if (policies.policies.size() > VQS_POLICY_BINARY_MAX_POLICIES) return {};
  std::vector<vqs::PackedPolicy> packed;
  packed.reserve(policies.policies.size());
  for (const auto& policy : policies.policies) packed.push_back(toPacked(policy));
  std::vector<std::byte> binary(static_cast<std::size_t>(vqs::policyBinarySize(packed)));
  if (!vqs::buildPolicyBinary(binary, packed, {.first = policies.version1, .second = policies.version2})) return {};
  return binary;
}

}  // namespace documents
