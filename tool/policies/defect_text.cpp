// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/defect_text.h"

#include <fmt/format.h>

namespace tool {
namespace {

using vqs::Defect;
using vqs::DefectKind;

std::string ofHeader(const Defect& defect) {
  switch (defect.kind) {
    case DefectKind::kHeaderCut:
      return "the file ends inside its header";
    case DefectKind::kUnknownFormatVersion:
      return fmt::format("the format version is {}, only 1 is known", defect.value);
    case DefectKind::kUnknownRevision:
      return fmt::format("the revision is {}, only 3, 4 and 5 are known", defect.value);
    case DefectKind::kNoMagic:
      return "the magic \"$QTF\" is missing";
    case DefectKind::kNoPolicies:
      return "the file announces no policies";
    case DefectKind::kNoRoom:
      return fmt::format("the file announces {} policies but has room for at most {}", defect.value, defect.most);
    case DefectKind::kTooManyPolicies:
      return fmt::format("the file announces {} policies, at most {} are possible", defect.value, defect.most);
    default:
      return {};
  }
}

const char* fieldOf(DefectKind kind) {
  switch (kind) {
    case DefectKind::kNameLength:
      return "the length of its name";
    case DefectKind::kDescriptionLength:
      return "the length of its description";
    case DefectKind::kConditionCount:
      return "its number of conditions";
    case DefectKind::kTextCount:
      return "its number of texts";
    case DefectKind::kTextLength:
      return "the length of a text";
    case DefectKind::kActionCount:
      return "its number of actions";
    default:
      return "a comparison";
  }
}

std::string ofPolicy(const Defect& defect) {
  switch (defect.kind) {
    case DefectKind::kPolicyCut:
      return "the file ends inside it";
    case DefectKind::kTextWithoutCharacters:
      return "the length of a text is 1, which no text has";
    case DefectKind::kUnknownTextFlag:
      return fmt::format("a text's flag is {}, 0 and 1 are possible", defect.value);
    default:
      return fmt::format("{} is {}, {} to {} are possible", fieldOf(defect.kind), defect.value, defect.least,
                         defect.most);
  }
}

}  // namespace

std::string describe(const Defect& defect, std::uint32_t policyCount) {
  if (const auto text = ofHeader(defect); !text.empty()) return fmt::format("offset {}: {}", defect.offset, text);
  return fmt::format("offset {}: policy {} of {}: {}", defect.offset, defect.policy + 1, policyCount, ofPolicy(defect));
}

}  // namespace tool
