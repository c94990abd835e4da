// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/problem.h"

#include <algorithm>
#include <iterator>

namespace setup {
namespace {

struct Problem {
  std::uint32_t code;
  const char* text;
};

constexpr Problem kProblems[] = {
    {1, "it has no driver"},
    {3, "its driver is damaged, or memory has run out"},
    {9, "Windows cannot make it out: its registry key is damaged; remove the driver and install it again"},
    {10, "its driver refused to start"},
    {12, "another device uses what it needs"},
    {14, "it starts with the next restart of Windows"},
    {16, "Windows does not know all that it needs"},
    {18, "its driver has to be installed again"},
    {19, "its registry key is damaged; remove the driver and install it again"},
    {21, "Windows is removing it; wait a few seconds, or restart Windows"},
    {22, "it is disabled; enable it in Device Manager"},
    {24, "it is not there, or its driver is incomplete"},
    {28, "its driver is not installed"},
    {29, "the firmware has disabled it"},
    {31, "Windows cannot load the drivers that it needs"},
    {32, "its driver's service is disabled"},
    {33, "Windows cannot work out what it needs"},
    {34, "it has to be configured by hand"},
    {35, "the firmware does not describe it"},
    {36, "its interrupt cannot be translated"},
    {37, "its driver failed as soon as it was loaded"},
    {38, "an earlier instance of its driver is still loaded; restart Windows"},
    {39, "its driver cannot be loaded: the file is missing or damaged, or Windows does not allow it"},
    {40, "its driver's service key is damaged; remove the driver and install it again"},
    {41, "its driver was loaded, and found no device"},
    {42, "there is another device of its name"},
    {43, "its driver has stopped it because of a problem"},
    {44, "a program or a service has stopped it"},
    {45, "it is not connected"},
    {46, "Windows is shutting down"},
    {47, "it was made ready for removal; restart Windows"},
    {48, "Windows blocks its driver because of known problems"},
    {49, "the registry has become too large"},
    {50, "its properties cannot be set"},
    {51, "it waits for another device"},
    {52,
     "Windows does not trust the signature of its driver; allow test signing (\"bcdedit /set testsigning on\"), "
     "restart "
     "Windows, and use \"install --test-sign\""},
    {53, "a debugger uses it"},
    {54, "it has failed, and is being reset"},
    {55, "it waits until somebody has logged on"},
    {56, "its class is not configured yet"},
    {57, "it could not be given to the virtual machine"},
};

/// Errors of setup functions and of signatures that all mean: this package is not signed by anybody trusted.
constexpr std::uint32_t kSignatureErrors[] = {577,        0xE000022F, 0xE000023F, 0xE0000240, 0xE0000241,
                                              0xE0000242, 0xE0000243, 0xE0000244, 0x800B0100, 0x800B0101,
                                              0x800B0109, 0x800B010A, 0x800B0110, 0x80092026};

}  // namespace

std::string describeProblem(std::uint32_t code) {
  const std::string number = "code " + std::to_string(code);
  const auto* const problem = std::ranges::find(kProblems, code, &Problem::code);
  return problem == std::end(kProblems) ? number + ", which this program does not know" : number + ", " + problem->text;
}

std::string adviceOn(std::uint32_t error) {
  if (std::ranges::find(kSignatureErrors, error) == std::end(kSignatureErrors)) return {};
  return "; Windows installs drivers of trusted signers only: on a test PC, use \"install --test-sign\"";
}

}  // namespace setup
