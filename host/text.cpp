// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <clocale>
#include <cstring>
#include <cwchar>
#include <string_view>

#include "host/host.h"

namespace {

constexpr std::size_t kFailed = static_cast<std::size_t>(-1);

std::atomic<host::InvalidParameterHandler> invalidParameterHandler{[] { std::abort(); }};
std::atomic<bool> handlerIsShown{false};

errno_t invalidParameter(errno_t error) {
  errno = error;
  _invalid_parameter_noinfo();
  return error;
}

std::size_t illegalSequence() {
  errno = EILSEQ;
  return kFailed;
}

/// Whether the locale is "C". There the Windows runtime turns each byte into the unit of the same number and back,
/// while other runtimes convert.
bool isPlainLocale() {
  const char* const name = std::setlocale(LC_CTYPE, nullptr);
  return std::strcmp(name, "C") == 0 || std::strcmp(name, "POSIX") == 0;
}

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Writes at most `limit` units; returns how many came before the terminator or the limit.
std::size_t widenBytes(WCHAR* destination, const char* source, std::size_t limit) {
  const std::size_t length = strnlen(source, limit);
  std::transform(source, source + length, destination, [](char byte) { return static_cast<unsigned char>(byte); });
  if (length < limit) destination[length] = 0;
  return length;
}

std::size_t widenCharacters(WCHAR* destination, const char* source, std::size_t limit) {
  std::mbstate_t state{};
  std::size_t count = 0;
  while (count < limit) {
    wchar_t character = 0;
    const std::size_t length = std::mbrtowc(&character, source, MB_LEN_MAX, &state);
    if (length > MB_LEN_MAX) return illegalSequence();
    const auto code = static_cast<char32_t>(character);
    const std::size_t units = code > 0xFFFF ? 2 : 1;
    if (count + units > limit) break;
    destination[count] = static_cast<WCHAR>(units == 1 ? code : 0xD7C0 + (code >> 10));
    if (units == 2) destination[count + 1] = static_cast<WCHAR>(0xDC00 + (code & 0x3FF));
    if (code == 0) return count;
    count += units;
    source += length;
  }
  return count;
}

/// Writes at most `limit` bytes; returns how many came before the terminator or the limit.
std::size_t narrowUnits(char* destination, const WCHAR* source, std::size_t limit) {
  for (std::size_t i = 0; i < limit; ++i) {
    if (source[i] > 0xFF) return illegalSequence();
    destination[i] = static_cast<char>(source[i]);
    if (source[i] == 0) return i;
  }
  return limit;
}

std::size_t narrowCharacters(char* destination, const WCHAR* source, std::size_t limit) {
  std::mbstate_t state{};
  std::size_t count = 0;
  while (count < limit) {
    char32_t code = *source++;
    if (isHighSurrogate(code)) {
      if (!isLowSurrogate(*source)) return illegalSequence();
      code = 0x10000 + ((code - 0xD800) << 10) + (*source++ - 0xDC00U);
    }
    std::array<char, MB_LEN_MAX> bytes{};
    const std::size_t length = std::wcrtomb(bytes.data(), static_cast<wchar_t>(code), &state);
    if (length == kFailed) return illegalSequence();
    if (count + length > limit) return count;
    std::copy_n(bytes.data(), length, destination + count);
    if (code == 0) return count;
    count += length;
  }
  return count;
}

/// What both conversions do with a converted count: terminate, or refuse or cut what is too long.
template <class Unit>
errno_t finish(std::size_t* converted, Unit* destination, std::size_t capacity, std::size_t length, bool truncate) {
  if (length == kFailed) {
    destination[0] = 0;
    return errno;
  }
  errno_t result = 0;
  std::size_t total = length + 1;
  if (total > capacity) {
    if (!truncate) {
      destination[0] = 0;
      return invalidParameter(ERANGE);
    }
    total = capacity;
    result = STRUNCATE;
  }
  destination[total - 1] = 0;
  if (converted != nullptr) *converted = total;
  return result;
}

/// What both conversions do first.
template <class Unit>
errno_t prepare(std::size_t* converted, Unit* destination, std::size_t capacity, const void* source) {
  if (destination == nullptr || capacity == 0) return invalidParameter(EINVAL);
  destination[0] = 0;
  if (converted != nullptr) *converted = 0;
  return source == nullptr ? invalidParameter(EINVAL) : 0;
}

}  // namespace

namespace host {

InvalidParameterHandler setInvalidParameterHandler(InvalidParameterHandler handler) {
  return invalidParameterHandler.exchange(handler);
}

void showInvalidParameterHandler(bool shown) { handlerIsShown = shown; }

}  // namespace host

_invalid_parameter_handler _get_invalid_parameter_handler() {
  return handlerIsShown ? invalidParameterHandler.load() : nullptr;
}

/// Threads have none of their own here.
_invalid_parameter_handler _get_thread_local_invalid_parameter_handler() { return nullptr; }

void _invalid_parameter_noinfo() { invalidParameterHandler.load()(); }

errno_t mbstowcs_s(std::size_t* converted, WCHAR* destination, std::size_t capacity, const char* source,
                   std::size_t count) {
  if (const errno_t error = prepare(converted, destination, capacity, source)) return error;
  const std::size_t limit = std::min(count, capacity);
  const std::size_t length =
      isPlainLocale() ? widenBytes(destination, source, limit) : widenCharacters(destination, source, limit);
  return finish(converted, destination, capacity, length, count == _TRUNCATE);
}

errno_t wcstombs_s(std::size_t* converted, char* destination, std::size_t size, const WCHAR* source,
                   std::size_t count) {
  if (const errno_t error = prepare(converted, destination, size, source)) return error;
  const std::size_t limit = std::min(count, size);
  const std::size_t length =
      isPlainLocale() ? narrowUnits(destination, source, limit) : narrowCharacters(destination, source, limit);
  return finish(converted, destination, size, length, count == _TRUNCATE);
}

errno_t strncpy_s(char* destination, std::size_t size, const char* source, std::size_t count) {
  if (destination == nullptr && size == 0 && count == 0) return 0;
  if (destination == nullptr || size == 0) return invalidParameter(EINVAL);
  destination[0] = '\0';
  if (count == 0) return 0;
  if (source == nullptr) return invalidParameter(EINVAL);
  const std::size_t length = strnlen(source, std::min(count, size));
  if (length == size && count != _TRUNCATE) return invalidParameter(ERANGE);
  const std::size_t kept = std::min(length, size - 1);
  std::copy_n(source, kept, destination);
  destination[kept] = '\0';
  return length == size ? STRUNCATE : 0;
}
