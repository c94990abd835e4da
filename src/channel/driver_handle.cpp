// SPDX-License-Identifier: Apache-2.0
#include "src/channel/driver_handle.h"

#include "src/channel/work_buffer.h"

namespace vqs {
namespace {

constexpr GUID GUID_DEVINTERFACE_QTF = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};

}  // namespace

vqsStatus QtfOpenDriverHandle(HANDLE* handle) {
  GUID interfaceClass = GUID_DEVINTERFACE_QTF;
  ULONG length = 0;
  // The 8-bit function gives the size, the 16-bit one the list. Interface paths are ASCII: both count as many
  // characters.
  if (CM_Get_Device_Interface_List_SizeA(&length, &interfaceClass, nullptr, 0) != CR_SUCCESS) return VQS_REQUEST_FAILED;
  if (length < 2) return VQS_DRIVER_NOT_FOUND;

  const RuntimeBuffer list{saturatingProduct(length, sizeof(WCHAR))};
  if (!list) return VQS_OUT_OF_MEMORY;
  const auto paths = list.arrayAt<WCHAR>(0, length);
  if (CM_Get_Device_Interface_ListW(&interfaceClass, nullptr, paths.data(), length, 0) != CR_SUCCESS)
    return VQS_REQUEST_FAILED;
  paths.back() = 0;

  const HANDLE opened = CreateFileW(paths.data(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return VQS_REQUEST_FAILED;
  *handle = opened;
  return VQS_SUCCESS;
}

}  // namespace vqs
