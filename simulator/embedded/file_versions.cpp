// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/file_versions.h"

#include "host/file_versions.h"

namespace simulator {
namespace {

constexpr const char* kLibraryFile = "VexoQTFServices.dll";
constexpr const char* kDriverFile = "vexoqtf.sys";

constexpr DWORD kFileTypeLibrary = 2;
constexpr DWORD kFileTypeDriver = 3;

constexpr VS_FIXEDFILEINFO fileVersion(DWORD fileType) {
  constexpr DWORD kHigh = DWORD{VQS_SIMULATOR_MAJOR} << 16 | DWORD{VQS_SIMULATOR_MINOR};
  constexpr DWORD kLow = DWORD{VQS_SIMULATOR_PATCH} << 16;
  return {.dwSignature = 0xFEEF04BD,
          .dwStrucVersion = 0x00010000,
          .dwFileVersionMS = kHigh,
          .dwFileVersionLS = kLow,
          .dwProductVersionMS = kHigh,
          .dwProductVersionLS = kLow,
          .dwFileFlagsMask = 0x3F,
          .dwFileFlags = 0,
          .dwFileOS = 0x00040004,
          .dwFileType = fileType,
          .dwFileSubtype = 0,
          .dwFileDateMS = 0,
          .dwFileDateLS = 0};
}

}  // namespace

void publishFileVersions() {
  host::setFileVersion(kLibraryFile, fileVersion(kFileTypeLibrary));
  host::setFileVersion(kDriverFile, fileVersion(kFileTypeDriver));
}

void withdrawFileVersions() {
  host::removeFileVersion(kLibraryFile);
  host::removeFileVersion(kDriverFile);
}

}  // namespace simulator
