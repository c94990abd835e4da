// SPDX-License-Identifier: Apache-2.0
#include <policies_generated.h>

#include <array>
#include <cstddef>
#include <vector>

#include "bench/peers/peer.h"

namespace bench {
namespace {

// Conditions and actions have the caller's layout, so that a list of them is one copy.
static_assert(sizeof(flat::Condition) == sizeof(VqsPolicyCondition));
static_assert(sizeof(flat::Action) == sizeof(VqsPolicyAction));

template <class Unit>
using Vector = flatbuffers::Offset<flatbuffers::Vector<Unit>>;

/// Of the same width.
template <class To, class From>
const To* as(const From* records) {
  static_assert(sizeof(To) == sizeof(From));
  return reinterpret_cast<const To*>(records);
}

flatbuffers::Offset<flat::Text> writeText(flatbuffers::FlatBufferBuilder& builder, const vqs::PackedText& text) {
  const auto units = textOf(text.text);
  return flat::CreateText(builder, builder.CreateVector(as<std::uint16_t>(units.data()), units.size()), text.flag);
}

auto writeTexts(flatbuffers::FlatBufferBuilder& builder, const vqs::PackedPolicy& policy) {
  std::array<flatbuffers::Offset<flat::Text>, VQS_POLICY_MAX_TEXTS> texts;
  for (std::size_t i = 0; i < policy.textCount; ++i) texts[i] = writeText(builder, policy.texts[i]);
  return builder.CreateVector(texts.data(), policy.textCount);
}

flatbuffers::Offset<flat::Policy> writePolicy(flatbuffers::FlatBufferBuilder& builder,
                                              const vqs::PackedPolicy& policy) {
  const auto nameText = textOf(policy.name);
  const auto descriptionText = textOf(policy.description);
  const auto name = builder.CreateVector(as<std::uint16_t>(nameText.data()), nameText.size());
  const auto description = builder.CreateVector(as<std::uint8_t>(descriptionText.data()), descriptionText.size());
  const auto conditions = builder.CreateVectorOfStructs(as<flat::Condition>(policy.conditions), policy.conditionCount);
  const auto texts = writeTexts(builder, policy);
  const auto actions = builder.CreateVectorOfStructs(as<flat::Action>(policy.actions), policy.actionCount);
  return flat::CreatePolicy(builder, name, description, policy.flag0, policy.id, policy.param0, policy.flag1,
                            policy.flag2, policy.param1, policy.param2, conditions, texts, actions);
}

/// A list or a text into the front of a field of the caller; one that is missing is empty.
template <class Units, class Unit, std::size_t size>
bool readUnits(const Units* units, Unit (&field)[size]) {
  return units == nullptr || copyInto(field, units->Data(), units->size() * sizeof(Unit));
}

template <class Units, class Record, std::size_t size>
bool readList(const Units* records, Record (&field)[size], std::uint32_t& count) {
  count = records == nullptr ? 0 : records->size();
  return readUnits(records, field);
}

bool readTexts(const flat::Policy& table, VqsPolicyV2& policy) {
  policy.textCount = table.texts() == nullptr ? 0 : table.texts()->size();
  if (policy.textCount > VQS_POLICY_MAX_TEXTS) return false;
  for (std::uint32_t i = 0; i < policy.textCount; ++i) {
    const flat::Text* const text = table.texts()->Get(i);
    policy.texts[i].flag = text->flag();
    if (!readUnits(text->units(), policy.texts[i].text)) return false;
  }
  return true;
}

void readScalars(const flat::Policy& table, VqsPolicyV2& policy) {
  policy.flag0 = table.flag0();
  policy.id = table.id();
  policy.param0 = table.param0();
  policy.flag1 = table.flag1();
  policy.flag2 = table.flag2();
  policy.param1 = table.param1();
  policy.param2 = table.param2();
}

bool readPolicy(const flat::Policy& table, VqsPolicyV2& policy) {
  policy = {};
  readScalars(table, policy);
  return readUnits(table.name(), policy.name) && readUnits(table.description(), policy.description) &&
         readList(table.conditions(), policy.conditions, policy.conditionCount) && readTexts(table, policy) &&
         readList(table.actions(), policy.actions, policy.actionCount);
}

class FlatBuffersPeer final : public Peer {
 public:
  std::span<const unsigned char> write(std::span<const vqs::PackedPolicy> policies) override {
    builder_.Clear();
    offsets_.clear();
    for (const auto& policy : policies) offsets_.push_back(writePolicy(builder_, policy));
    builder_.Finish(flat::CreatePolicies(builder_, 3, 41, builder_.CreateVector(offsets_)));
    return {builder_.GetBufferPointer(), builder_.GetSize()};
  }

  bool read(std::span<const unsigned char> bytes, std::span<VqsPolicyV2> bodies) override {
    flatbuffers::Verifier verifier{bytes.data(), bytes.size()};
    if (!flat::VerifyPoliciesBuffer(verifier)) return false;
    const auto* const policies = flat::GetPolicies(bytes.data())->policies();
    if (policies == nullptr || policies->size() != bodies.size()) return false;
    for (std::uint32_t i = 0; i < policies->size(); ++i)
      if (!readPolicy(*policies->Get(i), bodies[i])) return false;
    return true;
  }

 private:
  flatbuffers::FlatBufferBuilder builder_;
  std::vector<flatbuffers::Offset<flat::Policy>> offsets_;
};

}  // namespace

std::unique_ptr<Peer> flatBuffersPeer() { return std::make_unique<FlatBuffersPeer>(); }

}  // namespace bench
