// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

namespace bench {

/// The rows of the table, in its order.
enum class Item {
  kSameTwice,
  kReadFleet1,
  kReadFleet20,
  kReadFleet400,
  kReadFull1,
  kReadFull20,
  kReadFull400,
  kReadFlatBuffers,
  kReadProtobuf,
  kFirstCallTime,
  kFirstCallFaults,
  kLaterCallFaults,
  kReadAllocations,
  kReadPeak,
  kSize1,
  kSize20,
  kSize400,
  kGrowthTime,
  kGrowthPeak,
  kPackFull,
  kUnpackFull,
  kPackFleet,
  kUnpackFleet,
  kWriteFleet,
  kWriteFull,
  kWriteProtobuf,
  kWriteFlatBuffers,
  kRegistryText,
  kParseDocument,
  kFormatDocument,
  kTelemetryWalk,
  kAdd,
  kAddV2,
  kReplace,
  kReplaceV2,
  kCount,
  kCountV2,
  kIoCommand,
  kListCommand,
  kSaveCommand,
  kVersionCommand,
  kSaveRequests,
  kOverrideRequests,
  kCountOfItems
};

/// What a figure has to be.
enum class Bound { kNone, kAtMost, kAtLeast };

struct Aim {
  Item item;
  std::string_view work;
  std::string_view unit;
  Bound bound = Bound::kNone;
  double limit = 0;
  /// counts, of bytes too, are the same in every run; all else is a time, which other programs disturb
  bool isCount = false;
};

// "floor" is opening, reading and closing the same file, and writing the bytes of the result into memory that has been
// touched before: what no reader can do without.
inline constexpr std::array kAims = {
    Aim{Item::kSameTwice, "the same work as both sides", "x", Bound::kAtMost, 1.05},
    Aim{Item::kReadFleet1, "read 1 policy", "x floor", Bound::kAtMost, 1.2},
    Aim{Item::kReadFleet20, "read 20 policies", "x floor", Bound::kAtMost, 1.2},
    Aim{Item::kReadFleet400, "read 400 policies", "x floor", Bound::kAtMost, 1.4},
    Aim{Item::kReadFull1, "read 1 full policy", "x floor"},
    Aim{Item::kReadFull20, "read 20 full policies", "x floor"},
    Aim{Item::kReadFull400, "read 400 full policies", "x floor"},
    Aim{Item::kReadFlatBuffers, "read 400 policies", "x as fast as FlatBuffers", Bound::kAtLeast, 1.25},
    Aim{Item::kReadProtobuf, "read 400 policies", "x as fast as protobuf", Bound::kAtLeast, 3},
    Aim{Item::kFirstCallTime, "read 400 policies, first call in a process", "ms", Bound::kAtMost, 0.1},
    Aim{Item::kFirstCallFaults, "read 400 policies, first call in a process", "page faults", Bound::kAtMost, 40, true},
    Aim{Item::kLaterCallFaults, "read 400 policies, fifth call in a process", "page faults", Bound::kNone, 0, true},
    Aim{Item::kReadAllocations, "read 400 policies", "allocations", Bound::kNone, 0, true},
    Aim{Item::kReadPeak, "read 400 policies, most memory", "x result and file", Bound::kAtMost, 1.1, true},
    Aim{Item::kSize1, "size call, 1 policy", "x open, read, close", Bound::kAtMost, 1.2},
    Aim{Item::kSize20, "size call, 20 policies", "x open, read, close", Bound::kAtMost, 1.2},
    Aim{Item::kSize400, "size call, 400 policies", "x open, read, close", Bound::kAtMost, 1.2},
    Aim{Item::kGrowthTime, "read 100,000 policies", "us a policy", Bound::kAtMost, 0.1},
    Aim{Item::kGrowthPeak, "read 100,000 policies, most memory", "x result and file", Bound::kAtMost, 1.1, true},
    Aim{Item::kPackFull, "pack a full policy", "x memcpy", Bound::kAtMost, 4},
    Aim{Item::kUnpackFull, "unpack a full policy", "x memcpy", Bound::kAtMost, 4},
    Aim{Item::kPackFleet, "pack a fleet policy", "x memcpy", Bound::kAtMost, 1.3},
    Aim{Item::kUnpackFleet, "unpack a fleet policy", "x memcpy", Bound::kAtMost, 1.3},
    Aim{Item::kWriteFleet, "write 400 policies in memory", "x copy and read over", Bound::kAtMost, 1.2},
    Aim{Item::kWriteFull, "write 400 full policies in memory", "x copy and read over", Bound::kAtMost, 1.2},
    Aim{Item::kWriteProtobuf, "write 400 policies in memory", "x as fast as protobuf", Bound::kAtLeast, 1.5},
    Aim{Item::kWriteFlatBuffers, "write 400 policies in memory", "x as fast as FlatBuffers"},
    Aim{Item::kRegistryText, "registry text of 400 policies", "x memcpy of the text", Bound::kAtMost, 6},
    Aim{Item::kParseDocument, "parse a document of 400 policies", "x bare parse by nlohmann", Bound::kAtMost, 1},
    Aim{Item::kFormatDocument, "format a document of 400 policies", "ms", Bound::kAtMost, 10},
    Aim{Item::kTelemetryWalk, "telemetry walk", "ns a record", Bound::kAtMost, 2.5},
    Aim{Item::kAdd, "AddPolicy", "ns beside the request", Bound::kAtMost, 60},
    Aim{Item::kAddV2, "AddPolicyV2", "ns beside the request", Bound::kAtMost, 60},
    Aim{Item::kReplace, "ReplacePolicy", "ns beside the requests", Bound::kAtMost, 60},
    Aim{Item::kReplaceV2, "ReplacePolicyV2", "ns beside the requests", Bound::kAtMost, 60},
    Aim{Item::kCount, "GetPolicies, count", "ns beside the request", Bound::kAtMost, 60},
    Aim{Item::kCountV2, "GetPoliciesV2, count", "ns beside the request", Bound::kAtMost, 60},
    Aim{Item::kIoCommand, "vqs io, full stores", "ms", Bound::kAtMost, 4},
    Aim{Item::kListCommand, "vqs store list, full stores", "ms", Bound::kAtMost, 4},
    Aim{Item::kSaveCommand, "vqs store save, full stores", "ms", Bound::kAtMost, 4},
    Aim{Item::kVersionCommand, "vqs --version", "x an empty program", Bound::kAtMost, 1.2},
    Aim{Item::kSaveRequests, "vqs store save, 400 policies", "requests", Bound::kAtMost, 83, true},
    Aim{Item::kOverrideRequests, "vqs override KEY VALUE", "requests", Bound::kAtMost, 4, true},
};

constexpr bool isInOrder() {
  for (std::size_t i = 0; i < kAims.size(); ++i)
    if (kAims[i].item != static_cast<Item>(i)) return false;
  return kAims.size() == static_cast<std::size_t>(Item::kCountOfItems);
}
static_assert(isInOrder());

}  // namespace bench
