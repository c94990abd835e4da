// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace vqs {

/// What registry text begins with, up to the value's name: written in two pieces, as each costs a call.
inline constexpr std::string_view kRegistryHead = "Windows Registry Editor Version 5.00\n\n";
inline constexpr std::string_view kRegistryKeyHead =
    "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n\"";
/// Of these the heading by itself, and where the driver keeps its policies.
inline constexpr std::string_view kRegistryHeading = kRegistryHead.substr(0, kRegistryHead.size() - 2);
inline constexpr std::string_view kRegistryKey = kRegistryKeyHead.substr(1, kRegistryKeyHead.size() - 4);
inline constexpr std::string_view kAsmValueName = "AsmCurrentRegkeyPolicy";
inline constexpr std::string_view kBalanceProfileValueName = "BalanceProfileCurrentRegkeyPolicy";

/// Takes the next piece of a text.
struct TextSink {
  void (*take)(void* target, std::string_view piece);
  void* target;

  void put(std::string_view piece) const { take(target, piece); }
};

/// Writes a binary as registry export text, piece by piece: one value of the driver's key, on one line. Without a name
/// it is the key's default value.
void writeRegistryText(const TextSink& sink, std::string_view valueName, std::span<const std::byte> binary);

}  // namespace vqs
