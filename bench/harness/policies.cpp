// SPDX-License-Identifier: Apache-2.0
#include "bench/harness/policies.h"

#include <cstring>
#include <fstream>
#include <iterator>

#include <vqs/policy_binary.h>
#include "bench/harness/require.h"
#include "format/policy/conversion.h"

namespace bench {
namespace {

/// A value that no other field has, of any width.
class Values {
 public:
  template <class Field>
  void into(Field& field) {
    // Odd multiples never have all of their bytes zero.
    field = static_cast<Field>((++last_ * 2654435761U) | 1);
  }

 private:
  std::uint32_t last_ = 0;
};

template <class Unit, std::size_t size>
void fillText(Unit (&text)[size], Values& values) {
  for (std::size_t i = 0; i + 1 < size; ++i) values.into(text[i]);
  text[size - 1] = 0;
}

void fillConditions(VqsPolicyV2& policy, Values& values) {
  policy.conditionCount = VQS_POLICY_MAX_CONDITIONS;
  for (auto& condition : policy.conditions) {
    values.into(condition.conditionId);
    condition.op = VQS_POLICY_MAX_OPERATOR;
    values.into(condition.value);
    values.into(condition.value2);
  }
}

void fillTexts(VqsPolicyV2& policy, Values& values) {
  policy.textCount = VQS_POLICY_MAX_TEXTS;
  for (auto& text : policy.texts) {
    fillText(text.text, values);
    text.flag = VQS_POLICY_MAX_TEXT_FLAG;
  }
}

void fillAction(VqsPolicyAction& action, Values& values) {
  values.into(action.actionId);
  values.into(action.value);
  values.into(action.value2);
  values.into(action.option1);
  values.into(action.option2);
  values.into(action.value3);
  values.into(action.option3);
  values.into(action.value4);
}

void fillScalars(VqsPolicyV2& policy, Values& values) {
  values.into(policy.flag0);
  values.into(policy.id);
  values.into(policy.param0);
  values.into(policy.flag1);
  values.into(policy.flag2);
  values.into(policy.param1);
  values.into(policy.param2);
}

void fill(VqsPolicyV2& policy, Values& values) {
  fillText(policy.name, values);
  fillText(policy.description, values);
  fillScalars(policy, values);
  fillConditions(policy, values);
  fillTexts(policy, values);
  policy.actionCount = VQS_POLICY_MAX_ACTIONS;
  for (auto& action : policy.actions) fillAction(action, values);
}

/// Fields one after the other.
class Fields {
 public:
  template <class Field>
  Fields& put(const Field& field) {
    bytes_.append(reinterpret_cast<const char*>(&field), sizeof(field));
    return *this;
  }
  Fields& put(const std::string& bytes) {
    bytes_ += bytes;
    return *this;
  }
  [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

/// In units of 8 bits, without a terminator, as the older revisions have it.
template <class Unit>
std::string narrow(const Unit* text) {
  std::string narrowed;
  for (; *text != 0; ++text) narrowed.push_back(static_cast<char>(*text));
  return narrowed;
}

void putSized(Fields& fields, const std::string& text) {
  fields.put(static_cast<std::uint32_t>(text.size())).put(text);
}

void putOldTexts(Fields& fields, const VqsPolicyV2& policy) {
  for (std::size_t i = 0; i < policy.textCount; ++i) {
    putSized(fields, narrow(policy.texts[i].text) + '\0');
    fields.put(policy.texts[i].flag);
  }
}

void putOldActions(Fields& fields, const VqsPolicyV2& policy) {
  fields.put(policy.actionCount);
  for (std::size_t i = 0; i < policy.actionCount; ++i) {
    const VqsPolicyAction& action = policy.actions[i];
    fields.put(action.actionId).put(action.value).put(action.value2).put(action.option1).put(action.option2);
    fields.put(action.value3).put(action.option3).put(action.value4);
  }
}

std::string oldEntry(const VqsPolicyV2& policy) {
  Fields fields;
  putSized(fields, narrow(policy.name));
  putSized(fields, narrow(policy.description) + '\0');
  fields.put(policy.flag0).put(policy.id).put(policy.param0).put(policy.flag1).put(policy.flag2);
  fields.put(policy.param1).put(policy.param2).put(policy.conditionCount).put(policy.textCount);
  for (std::size_t i = 0; i < policy.conditionCount; ++i) fields.put(policy.conditions[i]);
  putOldTexts(fields, policy);
  putOldActions(fields, policy);
  return fields.bytes();
}

std::string oldHeader(std::size_t count) {
  Fields fields;
  fields.put(std::uint16_t{1}).put(std::uint16_t{4}).put(std::uint32_t{0}).put(static_cast<std::uint32_t>(count));
  fields.put(std::string(24, '\0'));
  constexpr std::uint32_t kLimits[] = {63, 32, 15, 5, 256, 0, 32};
  return fields.put(kLimits).bytes();
}

}  // namespace

std::vector<VqsPolicyV2> fleetPolicies(QtfSession* session) {
  Result result{kFleetSize};
  readThroughExport(session, std::string{VQS_SAMPLES} + "/fleet-r5.bin", result);
  const auto policies = result.policies();
  return {policies.begin(), policies.end()};
}

std::vector<VqsPolicyV2> fullPolicies(std::size_t count) {
  std::vector<VqsPolicyV2> policies(count);
  Values values;
  for (auto& policy : policies) fill(policy, values);
  return policies;
}

std::vector<vqs::PackedPolicy> packed(std::span<const VqsPolicyV2> policies) {
  std::vector<vqs::PackedPolicy> packed(policies.size());
  for (std::size_t i = 0; i < policies.size(); ++i)
    require(vqs::packPolicyV2(&policies[i], &packed[i]), "policies that can be packed");
  return packed;
}

void writeBinary(QtfSession* session, std::span<const VqsPolicyV2> policies, const std::string& path) {
  const VqsPolicyListV2 head{.structureVersion = VQS_STRUCTURE_VERSION_2,
                             .count = static_cast<std::uint32_t>(policies.size()),
                             .size = policies.size_bytes()};
  std::vector<unsigned char> list(sizeof(head) + policies.size_bytes());
  std::memcpy(list.data(), &head, sizeof(head));
  std::memcpy(list.data() + sizeof(head), policies.data(), policies.size_bytes());
  const auto* const first = reinterpret_cast<const VqsPolicyListV2*>(list.data());
  require(vqsPbCreateBinaryV2(session, first, 3, 41, path.c_str()) == VQS_SUCCESS, "a policy binary");
}

void writeOldBinary(std::span<const VqsPolicyV2> policies, std::size_t count, const std::string& path) {
  std::ofstream file{path, std::ios::binary};
  file << oldHeader(count);
  for (std::size_t i = 0; i < count; ++i) file << oldEntry(policies[i % policies.size()]);
  require(file.good(), "a policy binary of revision 4");
}

void readThroughExport(QtfSession* session, const std::string& path, Result& result) {
  std::uint64_t size = result.bytes.size();
  const vqsStatus status = vqsPbReadBinaryV2(session, path.c_str(), result.head(), &size, VQS_STRUCTURE_VERSION_2);
  require(status == VQS_SUCCESS, "a policy binary that can be read");
}

}  // namespace bench
