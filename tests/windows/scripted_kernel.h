// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/bytes.h"

namespace test {

using Status = std::int32_t;
using Calls = std::vector<std::string>;

inline constexpr Status kSuccess = 0;
inline constexpr Status kPending = 0x103;
inline constexpr Status kNameExists = 0x40000000;
inline constexpr Status kInvalidHandle = static_cast<Status>(0xC0000008);
inline constexpr Status kUnsuccessful = static_cast<Status>(0xC0000001);
inline constexpr Status kAccessDenied = static_cast<Status>(0xC0000022);
inline constexpr Status kTypeMismatch = static_cast<Status>(0xC0000024);
inline constexpr Status kPathNotFound = static_cast<Status>(0xC000003A);
inline constexpr Status kDeletePending = static_cast<Status>(0xC0000056);
inline constexpr Status kInsufficientResources = static_cast<Status>(0xC000009A);
inline constexpr Status kNotSupported = static_cast<Status>(0xC00000BB);
inline constexpr Status kRequestNotAccepted = static_cast<Status>(0xC00000D0);
inline constexpr Status kNoSuchDevice = static_cast<Status>(0xC000000E);
inline constexpr Status kReparsePoint = static_cast<Status>(0xC000050B);

/// What the system asks of a device that comes or goes, by the number of the request.
enum Pnp : std::uint8_t {
  kStart = 0x00,
  kQueryRemove = 0x01,
  kRemove = 0x02,
  kCancelRemove = 0x03,
  kStop = 0x04,
  kQueryStop = 0x05,
  kCancelStop = 0x06,
  kQueryCapabilities = 0x09,
  kUsageNotification = 0x16,
  kSurpriseRemoval = 0x17
};

/// A kernel of Windows, as far as the driver sees one: the driver's own code runs on it, inside of this program. It
/// does what a test says, remembers what the driver did, and watches the rules that Windows watches, or suffers from.
class ScriptedKernel {
 public:
  ScriptedKernel();
  ~ScriptedKernel();
  ScriptedKernel(ScriptedKernel&&) = delete;

  struct Allocation {
    std::uint32_t tag;
    bool isPaged;
    bool isExecutable;
  };
  /// What is told to whoever creates the named event.
  struct EventRequest {
    std::wstring name;
    std::uint32_t attributes;
    std::uint32_t access;
    bool isNotification;
    bool isSignalled;
    bool isOnDriversThread;
    /// of the security descriptor: the owner, and the entries of the access list one after the other
    Bytes owner;
    Bytes accessList;
  };

  // What a test decides.
  std::uint32_t lowerFlags = 0;
  Status lowerStatus = kSuccess;
  bool isLowerSlow = false;
  Status interfaceStatus = kSuccess;
  bool canAttach = true;
  Status eventStatus = kSuccess;
  Status securityStatus = kSuccess;
  bool canStartThreads = true;
  /// names that the kernel exports beside those that every kernel has
  std::set<std::wstring> symbols = {L"ExAllocatePool2", L"MmCopyMemory"};
  /// how many allocations succeed from now on
  int allocationsLeft = 1'000'000;
  std::map<std::uint64_t, Bytes> userMemory;
  /// called in the middle of a copy from user memory
  std::function<void()> duringCopy;

  // What the driver did.
  std::map<void*, Allocation> allocated;
  std::vector<EventRequest> eventRequests;
  int handles = 0;
  /// of the named event, while the driver has it
  bool isOutputEventSignalled = false;
  int referencedObjects = 0;
  int mappedViews = 0;
  std::uint32_t deviceFlags = 0;
  bool isDeleted = false;

  /// The calls since this was asked last whose text begins with one of these words.
  Calls calls(std::initializer_list<std::string_view> beginnings);

  // What the system does.
  Status addDevice();
  Status pnp(Pnp minor) { return request(0x1B, minor); }
  Status power() { return request(0x16, 0x02); }
  /// A request of the I/O manager, to its end.
  Status request(std::uint8_t major, std::uint8_t minor);

  /// An open file of the device, from its create to its close.
  using File = void*;
  Status create(File& file);
  Status control(File& file, std::uint32_t code, Bytes& buffer, std::size_t outputLength);
  /// As other drivers can send it.
  Status controlWithoutFile(std::uint32_t code, Bytes& buffer, std::size_t outputLength);
  Status cleanup(File& file);
  Status close(File& file);

  /// Lets a second pass, and waits until the driver's thread has nothing more to do.
  void passSecond();

  /// For the functions of the kernel.
  struct State;
  std::unique_ptr<State> state;

 private:
  Status send(std::uint8_t major, std::uint8_t minor, File* file, std::uint32_t code, Bytes* buffer,
              std::size_t outputLength);
};

}  // namespace test
