// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstring>
#include <map>
#include <span>
#include <string>
#include <thread>

#include "tests/journey/client.h"
#include "tests/support/listings.h"
#include "tests/support/results.h"

namespace test {

/// The functions of one generation of key/value logs.
struct Generation {
  vqsStatus(VQS_CALL* start)(QtfSession*, QtfLogKV**);
  vqsStatus (*stop)(QtfSession*, QtfLogKV*);
  vqsStatus(VQS_CALL* next)(QtfLogKVIter*);
  vqsStatus(VQS_CALL* done)(const QtfLogKVIter*, std::uint8_t*);
  vqsStatus(VQS_CALL* data)(const QtfLogKVIter*, std::uint32_t*, std::uint64_t*);
  vqsStatus(VQS_CALL* metadata)(QtfLogKeyInfo*, std::uint32_t*);
  std::uint32_t keys;
};

inline const Generation kKeyValue = {
    vqsStartQTFLogKV,       [](QtfSession* session, QtfLogKV* log) { return vqsStopQTFLogKV(session, log); },
    vqsNextQTFLogKVIter,    vqsDoneQTFLogKVIter,
    vqsGetQTFLogKVIterData, vqsGetQTFLogKVMetadata_V2,
    listedIn(kKeyListing)};
inline const Generation kExKeyValue = {
    vqsExStartQTFLogExKV,       [](QtfSession* session, QtfLogKV*) { return vqsExStopQTFLogExKV(session); },
    vqsExNextQTFLogExKVIter,    vqsExDoneQTFLogExKVIter,
    vqsExGetQTFLogExKVIterData, vqsExGetQTFLogExKVMetadata_V2,
    listedIn(kExKeyListing)};

/// A running key/value log with an iterator on it.
class Log {
 public:
  Log(QtfSession* session, const Generation& generation) : session_(session), generation_(generation) {
    EXPECT_EQ(generation_.start(session_, &log_), kDone);
    EXPECT_EQ(vqsCreateQTFLogKVIter(log_, &iterator_), kDone);
  }
  ~Log() {
    EXPECT_EQ(vqsDestroyQTFLogKVIter(iterator_), kDone);
    EXPECT_EQ(generation_.stop(session_, log_), kDone);
  }
  Log(Log&&) = delete;

  /// The places of all values, by key id, as one walk finds them.
  std::map<std::uint32_t, const void*> walk() {
    std::map<std::uint32_t, const void*> found;
    EXPECT_EQ(vqsResetQTFLogKVIter(log_, iterator_), kDone);
    while (!isDone() && found.size() <= generation_.keys) {
      std::uint32_t key = 0;
      std::uint64_t address = 0;
      EXPECT_EQ(generation_.data(iterator_, &key, &address), kDone);
      EXPECT_TRUE(found.emplace(key, reinterpret_cast<const void*>(address)).second) << "key " << key << " comes twice";
      if (generation_.next(iterator_) != kDone) break;
    }
    return found;
  }

  std::string text(std::uint32_t key) {
    const auto places = walk();
    const auto place = places.find(key);
    return place == places.end() ? "" : static_cast<const char*>(place->second);
  }

  template <class T>
  T value(std::uint32_t key, std::size_t index = 0) {
    const auto places = walk();
    const auto place = places.find(key);
    T result{};
    if (place == places.end())
      ADD_FAILURE() << "key " << key << " is missing";
    else
      std::memcpy(&result, static_cast<const char*>(place->second) + index * sizeof(T), sizeof(T));
    return result;
  }

 private:
  bool isDone() {
    std::uint8_t done = 0;
    return generation_.done(iterator_, &done) != kDone || done != 0;
  }

  QtfSession* session_;
  const Generation& generation_;
  QtfLogKV* log_ = nullptr;
  QtfLogKVIter* iterator_ = nullptr;
};

/// A session of a test's own.
class OpenedSession {
 public:
  OpenedSession() { EXPECT_EQ(vqsInitialize(&session_), kDone); }
  ~OpenedSession() { EXPECT_EQ(vqsUninitialize(session_), kDone); }
  OpenedSession(OpenedSession&&) = delete;
  operator QtfSession*() const { return session_; }  // NOLINT(google-explicit-constructor)

 private:
  QtfSession* session_ = nullptr;
};

/// An override that ends with its scope.
class Override {
 public:
  Override(QtfSession* session, std::uint32_t key, std::uint32_t value) : session_(session), key_(key) {
    EXPECT_EQ(vqsOverrideInput(session_, key_, 1, value), kDone);
  }
  ~Override() { EXPECT_EQ(vqsOverrideInput(session_, key_, 0, 0), kDone); }
  Override(Override&&) = delete;

 private:
  QtfSession* session_;
  std::uint32_t key_;
};

/// True as soon as the condition holds, false when it has not for ten seconds.
template <class Condition>
bool eventually(Condition condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds{10};
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds{20});
  }
  return true;
}

}  // namespace test
