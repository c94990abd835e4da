// SPDX-License-Identifier: Apache-2.0
#include <vqs/features.h>

#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/driver/driver_session.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

constexpr std::int32_t kLastFeature = 8;

std::vector<VqsFeatureStatus> readFeatures(const Session& session) {
  std::vector<VqsFeatureStatus> features(kLastFeature + 1);
  for (std::int32_t index = 0; index <= kLastFeature; ++index)
    require(vqsQueryFeatureStatus(session.get(), index, &features[static_cast<std::size_t>(index)]),
            fmt::format("the status of feature {} cannot be read", index));
  return features;
}

std::string featuresAsJson(const std::vector<VqsFeatureStatus>& features) {
  auto array = nlohmann::ordered_json::array();
  for (const auto& feature : features)
    array.push_back(
        {{"index", array.size()}, {"supported", feature.flagA}, {"active", feature.flagB}, {"value", feature.value}});
  return renderJson({{"features", array}});
}

std::string featuresAsText(const std::vector<VqsFeatureStatus>& features) {
  TextTable table{
      {{"INDEX", Align::kRight}, {"SUPPORTED", Align::kLeft}, {"ACTIVE", Align::kLeft}, {"VALUE", Align::kRight}}};
  for (std::size_t index = 0; index < features.size(); ++index)
    table.add({std::to_string(index), yesOrNo(features[index].flagA != 0), yesOrNo(features[index].flagB != 0),
               std::to_string(features[index].value)});
  return table.render();
}

void showFeatures(Context& context, bool json) {
  std::vector<VqsFeatureStatus> features;
  withDriver(context, [&](const Session& session) { features = readFeatures(session); });
  context.out = json ? featuresAsJson(features) : featuresAsText(features);
}

}  // namespace

void setUpFeatures(CLI::App& command, Context& context) {
  const auto json = std::make_shared<bool>(false);
  command.add_flag("--json", *json, "Print JSON with the driver's own bytes instead of a table");
  addOutputOption(command, context);
  command.footer("The driver decides what a feature's value counts.");
  command.callback([&context, json] { showFeatures(context, *json); });
}

}  // namespace tool
