// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/policy_component.h"
#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

/// Features by the driver's ids; there is none of id 8.
enum Feature : std::uint32_t {
  kFeatureAutoMode = 0,
  kFeatureInBag = 1,
  kFeatureSlider = 2,
  kFeatureAsmLite = 3,
  kFeatureSliderV4 = 4,
  kFeatureDynamicSlider = 5,
  kFeaturePolicyBuilder = 6,
  kFeatureAsm = 7,
  kFeatureBalanceProfile = 9
};

/// The value of a feature's status: how often its table was set, or how many policies its store holds; 0 while the
/// feature is not active.
std::uint32_t activityOfFeature(const Settings& settings, const PolicyComponent& policies, std::uint32_t feature);

Answer answerFeatureStatus(const Context& context, const Request& request);

Answer controlAutoModeTable(const Context& context, const Request& request);
Answer controlInBagTable(const Context& context, const Request& request);
Answer controlSliderTable(const Context& context, const Request& request);
Answer controlAsmLiteTable(const Context& context, const Request& request);
Answer controlSliderV4Table(const Context& context, const Request& request);

Answer setDynamicSlider(const Context& context, const Request& request);

/// False for tables and a slider that could not have been set.
bool areFeaturesSound(const Settings& settings);

}  // namespace simulator
