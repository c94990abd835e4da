// SPDX-License-Identifier: Apache-2.0
#include <policies.pb.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "bench/peers/peer.h"

namespace bench {
namespace {

template <class Unit>
void setBytes(std::string& field, std::span<const Unit> units) {
  field.assign(reinterpret_cast<const char*>(units.data()), units.size_bytes());
}

void writeCondition(const VqsPolicyCondition& condition, proto::Condition& message) {
  message.set_condition_id(condition.conditionId);
  message.set_op(condition.op);
  message.set_value(condition.value);
  message.set_value2(condition.value2);
}

void writeAction(const VqsPolicyAction& action, proto::Action& message) {
  message.set_action_id(action.actionId);
  message.set_value(action.value);
  message.set_value2(action.value2);
  message.set_option1(action.option1);
  message.set_option2(action.option2);
  message.set_value3(action.value3);
  message.set_option3(action.option3);
  message.set_value4(action.value4);
}

void writeText(const vqs::PackedText& text, proto::Text& message) {
  setBytes(*message.mutable_units(), textOf(text.text));
  message.set_flag(text.flag);
}

void writeScalars(const vqs::PackedPolicy& policy, proto::Policy& message) {
  message.set_flag0(policy.flag0);
  message.set_id(policy.id);
  message.set_param0(policy.param0);
  message.set_flag1(policy.flag1);
  message.set_flag2(policy.flag2);
  message.set_param1(policy.param1);
  message.set_param2(policy.param2);
}

void writePolicy(const vqs::PackedPolicy& policy, proto::Policy& message) {
  setBytes(*message.mutable_name(), textOf(policy.name));
  setBytes(*message.mutable_description(), textOf(policy.description));
  writeScalars(policy, message);
  for (std::size_t i = 0; i < policy.conditionCount; ++i)
    writeCondition(policy.conditions[i], *message.add_conditions());
  for (std::size_t i = 0; i < policy.textCount; ++i) writeText(policy.texts[i], *message.add_texts());
  for (std::size_t i = 0; i < policy.actionCount; ++i) writeAction(policy.actions[i], *message.add_actions());
}

void readCondition(const proto::Condition& message, VqsPolicyCondition& condition) {
  condition.conditionId = message.condition_id();
  condition.op = message.op();
  condition.value = message.value();
  condition.value2 = message.value2();
}

void readAction(const proto::Action& message, VqsPolicyAction& action) {
  action.actionId = message.action_id();
  action.value = message.value();
  action.value2 = message.value2();
  action.option1 = static_cast<std::uint8_t>(message.option1());
  action.option2 = static_cast<std::uint8_t>(message.option2());
  action.value3 = message.value3();
  action.option3 = static_cast<std::uint8_t>(message.option3());
  action.value4 = message.value4();
}

bool readText(const proto::Text& message, VqsPolicyTextV2& text) {
  text.flag = static_cast<std::uint8_t>(message.flag());
  return copyInto(text.text, message.units().data(), message.units().size());
}

void readScalars(const proto::Policy& message, VqsPolicyV2& policy) {
  policy.flag0 = static_cast<std::uint8_t>(message.flag0());
  policy.id = message.id();
  policy.param0 = message.param0();
  policy.flag1 = static_cast<std::uint8_t>(message.flag1());
  policy.flag2 = static_cast<std::uint8_t>(message.flag2());
  policy.param1 = message.param1();
  policy.param2 = message.param2();
}

/// A list of messages into the front of an array.
template <class Messages, class Record, std::size_t size, class Read>
bool readList(const Messages& messages, Record (&records)[size], std::uint32_t& count, Read read) {
  if (static_cast<std::size_t>(messages.size()) > size) return false;
  count = static_cast<std::uint32_t>(messages.size());
  Record* record = records;
  return std::ranges::all_of(messages, [&](const auto& message) { return read(message, *record++); });
}

/// For readers that cannot fail.
template <class Message, class Record>
auto always(void (*read)(const Message&, Record&)) {
  return [read](const Message& message, Record& record) {
    read(message, record);
    return true;
  };
}

bool readPolicy(const proto::Policy& message, VqsPolicyV2& policy) {
  policy = {};
  readScalars(message, policy);
  return copyInto(policy.name, message.name().data(), message.name().size()) &&
         copyInto(policy.description, message.description().data(), message.description().size()) &&
         readList(message.conditions(), policy.conditions, policy.conditionCount, always(readCondition)) &&
         readList(message.texts(), policy.texts, policy.textCount, readText) &&
         readList(message.actions(), policy.actions, policy.actionCount, always(readAction));
}

class ProtobufPeer final : public Peer {
 public:
  std::span<const unsigned char> write(std::span<const vqs::PackedPolicy> policies) override {
    written_.Clear();
    written_.set_version1(3);
    written_.set_version2(41);
    for (const auto& policy : policies) writePolicy(policy, *written_.add_policies());
    bytes_.resize(written_.ByteSizeLong());
    written_.SerializeWithCachedSizesToArray(bytes_.data());
    return bytes_;
  }

  bool read(std::span<const unsigned char> bytes, std::span<VqsPolicyV2> bodies) override {
    if (!read_.ParseFromArray(bytes.data(), static_cast<int>(bytes.size()))) return false;
    if (static_cast<std::size_t>(read_.policies_size()) != bodies.size()) return false;
    VqsPolicyV2* body = bodies.data();
    return std::ranges::all_of(read_.policies(), [&](const auto& policy) { return readPolicy(policy, *body++); });
  }

 private:
  proto::Policies written_;
  proto::Policies read_;
  std::vector<unsigned char> bytes_;
};

}  // namespace

std::unique_ptr<Peer> protobufPeer() { return std::make_unique<ProtobufPeer>(); }

}  // namespace bench
