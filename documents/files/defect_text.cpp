// SPDX-License-Identifier: Apache-2.0
#include "documents/files/defect_text.h"

#include <initializer_list>
#include <string_view>

namespace documents {
namespace {

using vqs::Defect;
using vqs::DefectKind;

std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const auto part : parts) text += part;
  return text;
}

std::string ofHeader(const Defect& defect) {
  const std::string value = std::to_string(defect.value);
  const std::string most = std::to_string(defect.most);
  switch (defect.kind) {
    case DefectKind::kHeaderCut:
      return "the file ends inside its header";
    case DefectKind::kUnknownFormatVersion:
      return joined({"the format version is ", value, ", only 1 is known"});
    case DefectKind::kUnknownRevision:
      return joined({"the revision is ", value, ", only 3, 4 and 5 are known"});
    case DefectKind::kNoMagic:
      return "the magic \"$QTF\" is missing";
    case DefectKind::kNoPolicies:
      return "the file announces no policies";
    case DefectKind::kNoRoom:
      return joined({"the file announces ", value, " policies but has room for at most ", most});
    case DefectKind::kTooManyPolicies:
      return joined({"the file announces ", value, " policies, at most ", most, " are possible"});
    default:
      return {};
  }
}

std::string_view fieldOf(DefectKind kind) {
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
  const std::string value = std::to_string(defect.value);
  switch (defect.kind) {
    case DefectKind::kPolicyCut:
      return "the file ends inside it";
    case DefectKind::kTextWithoutCharacters:
      return "the length of a text is 1, which no text has";
    case DefectKind::kUnknownTextFlag:
      return joined({"a text's flag is ", value, ", 0 and 1 are possible"});
    default:
      return joined({fieldOf(defect.kind), " is ", value, ", ", std::to_string(defect.least), " to ",
                     std::to_string(defect.most), " are possible"});
  }
}

}  // namespace

std::string describe(const Defect& defect, std::uint32_t policyCount) {
  const std::string place = joined({"offset ", std::to_string(defect.offset), ": "});
  if (const auto text = ofHeader(defect); !text.empty()) return place + text;
  return joined({place, "policy ", std::to_string(defect.policy + 1), " of ", std::to_string(policyCount), ": ",
                 ofPolicy(defect)});
}

}  // namespace documents
