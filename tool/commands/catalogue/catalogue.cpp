// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/catalogue_entries.h"

#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/terminal/render.h"

namespace tool {
namespace {

struct CatalogueArguments {
  std::string filter;
  bool json = false;
};

using CatalogueReader = Catalogue(const Session& session);

std::string catalogueAsJson(const Catalogue& catalogue, const std::vector<CatalogueEntry>& entries) {
  auto array = nlohmann::ordered_json::array();
  for (const auto& entry : entries) array.push_back(toJson(entry));
  return renderJson({{fmt::format("{}s", catalogue.noun), array}});
}

void listCatalogue(Context& context, const CatalogueArguments& arguments, CatalogueReader read) {
  const auto catalogue = read(openIfThere(context));
  const auto entries = select(catalogue, arguments.filter);
  context.out = arguments.json ? catalogueAsJson(catalogue, entries) : renderCatalogue(entries);
}

void addCatalogueCommand(CLI::App& command, Context& context, CatalogueReader read, const std::string& example) {
  const auto arguments = std::make_shared<CatalogueArguments>();
  command
      .add_option("FILTER", arguments->filter, "An id, or a part of the names, whatever its case; all when left out")
      ->type_name("");
  command.add_flag("--json", arguments->json, "Print JSON with every field of every entry instead of a table");
  addOutputOption(command, context);
  command.footer(
      "ENABLED and DRIVER are the driver's two flags: an entry that this platform does not support\n"
      "has none; without a driver they are not known. A filter that nothing matches is an error.\n\n"
      "Examples:\n" +
      example);
  command.callback([&context, arguments, read] { listCatalogue(context, *arguments, read); });
}

}  // namespace

void setUpCatalogueConditions(CLI::App& command, Context& context) {
  addCatalogueCommand(command, context, readConditions,
                      "  vqs catalogue conditions\n"
                      "  vqs catalogue conditions battery\n"
                      "  vqs catalogue conditions 0 --json");
}

void setUpCatalogueActions(CLI::App& command, Context& context) {
  addCatalogueCommand(command, context, readActions,
                      "  vqs catalogue actions\n"
                      "  vqs catalogue actions ppm\n"
                      "  vqs catalogue actions 2 --json");
}

}  // namespace tool
