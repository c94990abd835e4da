// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

#include "host/device.h"
#include "host/shared.h"

namespace host {

using Path = std::basic_string_view<WCHAR>;

/// A device that is present, or that was: openings of it outlive its attachment.
struct Attachment : Counted {
  static constexpr std::size_t kLongestPath = 128;

  /// null once the device is gone
  Device* device;
  GUID interfaceClass;
  WCHAR units[kLongestPath];
  std::size_t length;

  [[nodiscard]] Path path() const { return {units, length}; }
};

/// The device that is present at a path, if there is one.
Shared<Attachment> findAttachment(Path path);

/// How long the list of the present paths of a class is: each is ended by a zero unit, and so is the list.
std::size_t pathListLength(const GUID& interfaceClass);
/// Writes that list; false when there is no room for it.
bool copyPathList(const GUID& interfaceClass, WCHAR* list, std::size_t room);

/// Opens a device, under a handle that nothing else has. False when it refuses, when it is gone, and when there is no
/// memory for it.
bool openDevice(Shared<Attachment> attachment, HANDLE handle);
/// What was opened under a handle; null when nothing was, and once the device is gone.
Device* openedDevice(HANDLE handle);
/// Closes a handle; false when it is no device's.
bool closeDevice(HANDLE handle);

}  // namespace host
