// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

/// What differs between systems about files: files_posix.cpp and files_windows.cpp hold the same functions. Paths are
/// UTF-8, or on POSIX systems whatever bytes the user typed; on Windows they may be of any length and form.
namespace tool::platform {

enum class FileKind { kNone, kRegular, kFolder, kOther };

/// What a path leads to.
FileKind fileKind(const std::string& path);

/// Opens a file as fopen does, with errno telling why not.
std::FILE* openFile(const std::string& path, const char* mode);

/// The size of a file; nothing, with errno telling why, when it cannot be had.
std::optional<std::uintmax_t> fileSize(const std::string& path);

/// False, with errno telling why, when the file cannot get this size.
bool resizeFile(const std::string& path, std::uintmax_t size);

/// Removes a file if it is there.
void removeFile(const std::string& path);

/// The path in the form in which the library hands it to the C runtime. Throws a Failure when there is none.
std::string libraryPath(const std::string& path);

/// Where a symbolic link leads to; of anything else the path itself. Throws a Failure for a link that leads nowhere.
std::string linkTarget(const std::string& path);

/// Creates an empty file with a new name in the target's directory and returns its path. Throws a Failure.
std::string createBeside(const std::string& target);

/// Puts a finished file, once it is stored, in the place of the target: in one step, and with the target's permissions
/// as far as the file system has them. Throws a Failure.
void replaceFile(const std::string& finished, const std::string& target);

}  // namespace tool::platform
