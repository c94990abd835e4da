// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include <vqs/platform.h>
#include "src/channel/control_codes.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"

namespace vqs {
namespace {

struct OverrideRecord {
  std::uint8_t enable;
  std::uint8_t reserved0[3];
  std::uint32_t key;
  std::uint32_t value;
};
static_assert(sizeof(OverrideRecord) == 12);
static_assert(offsetof(OverrideRecord, key) == 4);
static_assert(offsetof(OverrideRecord, value) == 8);

/// Asks the driver for the list's size and then for the list. The caller's buffer is taken to be as long as that
/// (compatibility.md: key-list-room).
vqsStatus readKeyList(HANDLE handle, void* list) {
  std::uint32_t size = 0;
  if (sendOut(handle, kCodeOverrideKeyListSize, &size, sizeof(size)) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  return sendOut(handle, kCodeOverrideKeyList, list, size);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsOverrideInput(QtfSession* session, uint32_t key, uint8_t enable, uint32_t value) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  vqs::OverrideRecord record{};
  record.enable = enable;
  record.key = key;
  record.value = value;
  return vqs::sendRequest(session->handle, vqs::kCodeOverrideInput, {.request = vqs::bytesOf(record)}, nullptr);
}

vqsStatus VQS_CALL vqsGetInputOverrideKeyValue(QtfSession* session, uint32_t key, VqsOverrideValue* value) {
  if (!vqs::isOpen(session) || value == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::sendSplit(session->handle, vqs::kCodeOverrideKeyValue, key, value);
}

vqsStatus VQS_CALL vqsGetInputOverrideKeyList(QtfSession* session, void* list, uint32_t* size, uint8_t sizeOnly) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  // A null output gives VQS_REQUEST_FAILED here, not VQS_INVALID_PARAMETER (compatibility.md: key-list-output).
  if (sizeOnly != 0) {
    if (size == nullptr) return VQS_REQUEST_FAILED;
    return vqs::sendOut(session->handle, vqs::kCodeOverrideKeyListSize, size, sizeof(*size));
  }
  if (list == nullptr) return VQS_REQUEST_FAILED;
  return vqs::readKeyList(session->handle, list);
}

vqsStatus VQS_CALL vqsGetInputOverrideKeyMetadata(QtfSession* session, uint32_t key, VqsOverrideMetadata* metadata) {
  // A null `metadata` is for the driver to refuse (compatibility.md: unchecked-output).
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::sendSplit(session->handle, vqs::kCodeOverrideKeyMetadata, key, metadata);
}
