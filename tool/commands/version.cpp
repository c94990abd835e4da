// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <array>

#include "tool/commands/command.h"
#include "tool/driver/driver_session.h"
#include "tool/system/simulated_driver.h"

namespace tool {
namespace {

using Words = std::array<std::uint32_t, 4>;

/// The words come as the product's major number, the file's minor number, and its fourth before its third.
std::string describeFile(vqsStatus status, const Words& words, const char* file) {
  if (status != VQS_SUCCESS) return fmt::format("unknown, the version of \"{}\" cannot be read", file);
  return fmt::format("{}.{}.{}.{}{}", words[0], words[1], words[3], words[2],
                     platform::isDriverSimulated() ? " (simulated)" : "");
}

void showVersions(Context& context) {
  useLibrary(context);
  Words library{};
  const vqsStatus libraryStatus = vqsGetVersion(library.data());
  Words driver{};
  const vqsStatus driverStatus = vqsGetDriverVersion(driver.data());
  context.out = fmt::format("tool     {}\nlibrary  {}\ndriver   {}\n", VQS_TOOL_VERSION,
                            describeFile(libraryStatus, library, "VexoQTFServices.dll"),
                            describeFile(driverStatus, driver, "vexoqtf.sys"));
}

}  // namespace

void setUpVersion(CLI::App& command, Context& context) {
  command.footer(
      "The library's version and the driver's are those of their files, major.minor.third.fourth;\n"
      "\"simulated\" says that the driver is part of the library.");
  command.callback([&context] { showVersions(context); });
}

}  // namespace tool
