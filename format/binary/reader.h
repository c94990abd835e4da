// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "format/binary/defect.h"
#include "format/binary/header.h"
#include "format/binary/layout.h"
#include "format/policy/packed_policy.h"
#include "format/policy/text.h"

namespace vqs {

/// Checks a whole file. False at the first field that lies outside the file, breaks a limit of the format, or does not
/// fit the packed policy; the defect says which. A file that is taken may have a defect as well: a value that no policy
/// can have, or no policies at all. The versions are handed out as far as the file has them, whatever else it holds.
bool checkBinary(std::span<const std::byte> file, BinaryVersions& versions, Defect* defect = nullptr);

/// Reads a file into packed policies, as many as its header announces: checkBinary, and the policies of a file that it
/// takes.
bool readBinary(std::span<const std::byte> file, std::span<PackedPolicy> policies, BinaryVersions& versions,
                Defect* defect = nullptr);

/// Takes the next policy of a file.
struct PolicySink {
  void (*take)(void* target, const PackedPolicy& policy);
  void* target;
};

/// Hands out the policies of a file that checkBinary has taken, one after the other.
void readEach(std::span<const std::byte> file, const PolicySink& sink);

/// Reads a file that checkBinary has taken into bodies of a structure version that exists, as many as there is room
/// for. The first policy that does not fit the version ends the conversion: its body may be partly written, and what
/// follows it is zero.
void readBodies(std::span<const std::byte> file, std::uint32_t structureVersion, std::span<std::byte> bodies,
                const TextConversion& text);

}  // namespace vqs
