// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/named_objects.h"

#include <winternl.h>

#include <cwchar>

namespace test {
namespace {

template <class Function>
Function systemFunction(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll"), name)));
}

using OpenOrCreate = NTSTATUS(NTAPI*)(HANDLE* handle, ACCESS_MASK access, OBJECT_ATTRIBUTES* attributes);

HANDLE callWithName(const char* function, const wchar_t* path, ACCESS_MASK access) {
  const auto size = static_cast<USHORT>(std::wcslen(path) * sizeof(wchar_t));
  UNICODE_STRING name = {size, size, const_cast<wchar_t*>(path)};
  OBJECT_ATTRIBUTES attributes;
  InitializeObjectAttributes(&attributes, &name, 0, nullptr, nullptr);
  HANDLE handle = nullptr;
  return NT_SUCCESS(systemFunction<OpenOrCreate>(function)(&handle, access, &attributes)) ? handle : nullptr;
}

/// A security descriptor in one piece.
Bytes securityOf(HANDLE object, SECURITY_INFORMATION what) {
  DWORD size = 0;
  GetKernelObjectSecurity(object, what, nullptr, 0, &size);
  Bytes security(size);
  if (!GetKernelObjectSecurity(object, what, security.data(), size, &size)) security.clear();
  return security;
}

Bytes bytesAt(const void* memory, std::size_t size) {
  const auto* first = static_cast<const std::uint8_t*>(memory);
  return {first, first + size};
}

}  // namespace

void OwnedHandle::close() {
  if (handle_ != nullptr) CloseHandle(handle_);
  handle_ = nullptr;
}

HANDLE createFolder(const wchar_t* path) {
  constexpr ACCESS_MASK kEverything = 0xF000F;
  return callWithName("NtCreateDirectoryObject", path, kEverything);
}

HANDLE openEvent(const wchar_t* path, DWORD access) { return callWithName("NtOpenEvent", path, access); }

Bytes ownerOf(HANDLE object) {
  Bytes security = securityOf(object, OWNER_SECURITY_INFORMATION);
  PSID owner = nullptr;
  BOOL isDefault = FALSE;
  if (security.empty() || !GetSecurityDescriptorOwner(security.data(), &owner, &isDefault) || owner == nullptr)
    return {};
  return bytesAt(owner, GetLengthSid(owner));
}

Bytes accessListOf(HANDLE object) {
  Bytes security = securityOf(object, DACL_SECURITY_INFORMATION);
  PACL list = nullptr;
  BOOL isPresent = FALSE;
  BOOL isDefault = FALSE;
  if (security.empty() || !GetSecurityDescriptorDacl(security.data(), &isPresent, &list, &isDefault) || list == nullptr)
    return {};
  ACL_SIZE_INFORMATION size{};
  GetAclInformation(list, &size, sizeof(size), AclSizeInformation);
  return bytesAt(list + 1, size.AclBytesInUse - sizeof(ACL));
}

}  // namespace test
