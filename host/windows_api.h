// SPDX-License-Identifier: Apache-2.0
#pragma once

// The part of the Windows API that the library uses, for systems that lack it.

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using ULONG = std::uint32_t;
using UINT = std::uint32_t;
using SIZE_T = std::size_t;
using CHAR = char;
using WCHAR = char16_t;
using HANDLE = void*;
using CONFIGRET = DWORD;
using errno_t = int;

struct GUID {
  DWORD Data1;
  WORD Data2;
  WORD Data3;
  BYTE Data4[8];
};

struct VS_FIXEDFILEINFO {
  DWORD dwSignature;
  DWORD dwStrucVersion;
  DWORD dwFileVersionMS;
  DWORD dwFileVersionLS;
  DWORD dwProductVersionMS;
  DWORD dwProductVersionLS;
  DWORD dwFileFlagsMask;
  DWORD dwFileFlags;
  DWORD dwFileOS;
  DWORD dwFileType;
  DWORD dwFileSubtype;
  DWORD dwFileDateMS;
  DWORD dwFileDateLS;
};
static_assert(sizeof(VS_FIXEDFILEINFO) == 52);

struct OVERLAPPED;
struct SECURITY_ATTRIBUTES;

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(-1);

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD HEAP_ZERO_MEMORY = 8;
inline constexpr DWORD SYNCHRONIZE = 0x100000;
inline constexpr DWORD INFINITE = 0xFFFFFFFF;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_TIMEOUT = 258;
inline constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;

inline constexpr CONFIGRET CR_SUCCESS = 0x00;
inline constexpr CONFIGRET CR_OUT_OF_MEMORY = 0x02;
inline constexpr CONFIGRET CR_FAILURE = 0x13;
inline constexpr CONFIGRET CR_BUFFER_SMALL = 0x1A;
inline constexpr ULONG CM_GET_DEVICE_INTERFACE_LIST_PRESENT = 0;

inline constexpr std::size_t _TRUNCATE = static_cast<std::size_t>(-1);
inline constexpr errno_t STRUNCATE = 80;

extern "C" {

/// 64 bits wide, where a long may have fewer.
inline std::int64_t _ftelli64(std::FILE* stream) { return std::ftell(stream); }

CONFIGRET CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, CHAR* deviceId, ULONG flags);
CONFIGRET CM_Get_Device_Interface_ListW(GUID* interfaceClass, WCHAR* deviceId, WCHAR* buffer, ULONG length,
                                        ULONG flags);

HANDLE CreateFileW(const WCHAR* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile);
BOOL DeviceIoControl(HANDLE handle, DWORD code, void* input, DWORD inputLength, void* output, DWORD outputLength,
                     DWORD* returned, OVERLAPPED* overlapped);
BOOL CloseHandle(HANDLE handle);

HANDLE OpenEventW(DWORD access, BOOL inherit, const WCHAR* name);
DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

DWORD GetFileVersionInfoSizeA(const CHAR* name, DWORD* handle);
BOOL GetFileVersionInfoA(const CHAR* name, DWORD handle, DWORD length, void* data);
BOOL VerQueryValueA(const void* block, const CHAR* subBlock, void** value, UINT* length);

HANDLE GetProcessHeap();
void* HeapAlloc(HANDLE heap, DWORD flags, SIZE_T size);
BOOL HeapFree(HANDLE heap, DWORD flags, void* memory);

errno_t mbstowcs_s(std::size_t* converted, WCHAR* destination, std::size_t capacity, const char* source,
                   std::size_t count);
errno_t wcstombs_s(std::size_t* converted, char* destination, std::size_t size, const WCHAR* source, std::size_t count);
/// Called with the place of the mistake on Windows, where that is known.
using _invalid_parameter_handler = void (*)();
_invalid_parameter_handler _get_invalid_parameter_handler();
_invalid_parameter_handler _get_thread_local_invalid_parameter_handler();
/// Raises the condition that bounded functions end in.
void _invalid_parameter_noinfo();

errno_t strncpy_s(char* destination, std::size_t size, const char* source, std::size_t count);
}
