// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/embedded_driver.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "simulator/embedded/buffered_request.h"
#include "simulator/embedded/file_versions.h"
#include "simulator/embedded/state_image.h"

namespace simulator {
namespace {

constexpr GUID kInterfaceClass = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};
constexpr const char16_t* kInterfacePath = u"\\\\?\\root#system#0000#{9dc9718b-59bf-43ee-94ed-34bb823dcedf}";

/// One line, whatever the subject is called.
void report(const std::string& subject, const char* reason) {
  const auto isControl = [](char unit) { return static_cast<unsigned char>(unit) < 0x20 || unit == 0x7F; };
  std::string line = subject + ' ' + reason;
  std::ranges::replace_if(line, isControl, '?');
  std::fprintf(stderr, "vexoqtf simulator: %s\n", line.c_str());
}

SessionId sessionOf(HANDLE handle) { return reinterpret_cast<SessionId>(handle); }

}  // namespace

EmbeddedDriver::EmbeddedDriver(StateFileSource stateFile, std::chrono::milliseconds lockTimeout, OptionsSource options)
    : stateFile_(std::move(stateFile)), options_(std::move(options)), lockTimeout_(lockTimeout) {}

EmbeddedDriver::EmbeddedDriver(std::string stateFile, std::chrono::milliseconds lockTimeout)
    : EmbeddedDriver(StateFileSource{[name = std::move(stateFile)] { return name; }}, lockTimeout) {}

EmbeddedDriver::~EmbeddedDriver() { detach(); }

void EmbeddedDriver::attach() {
  if (std::exchange(attached_, true)) return;
  publishFileVersions();
  host::createEvent(kOutputEventName);
  host::attachDevice(*this, kInterfaceClass, kInterfacePath);
}

void EmbeddedDriver::detach() {
  if (std::exchange(attached_, false)) {
    host::detachDevice(*this);
    host::removeEvent(kOutputEventName);
    withdrawFileVersions();
  }
  {
    const std::lock_guard lock{mutex_};
    const auto handles = std::exchange(openHandles_, {});
    for (HANDLE handle : handles) model_->close(surroundings_, sessionOf(handle));
    if (!handles.empty()) closeLast();
  }
  manageRefresher();
}

void EmbeddedDriver::setTime(std::uint64_t milliseconds) {
  const std::lock_guard lock{mutex_};
  surroundings_.setClock(milliseconds);
}

bool EmbeddedDriver::open(HANDLE handle) {
  const std::lock_guard lock{mutex_};
  if (openHandles_.empty() && !openFirst()) return false;
  openHandles_.insert(handle);
  return true;
}

bool EmbeddedDriver::control(HANDLE handle, const host::DeviceRequest& request) {
  bool isDone = false;
  {
    const std::lock_guard lock{mutex_};
    isDone = !openHandles_.empty() && runBuffered(*model_, surroundings_, sessionOf(handle), request);
  }
  manageRefresher();
  return isDone;
}

void EmbeddedDriver::close(HANDLE handle) {
  {
    const std::lock_guard lock{mutex_};
    const auto open = openHandles_.find(handle);
    if (open == openHandles_.end()) return;
    openHandles_.erase(open);
    model_->close(surroundings_, sessionOf(handle));
    if (openHandles_.empty()) closeLast();
  }
  manageRefresher();
}

void EmbeddedDriver::refresh() {
  const std::lock_guard lock{mutex_};
  if (model_ != nullptr) model_->refresh(surroundings_);
}

void EmbeddedDriver::manageRefresher() {
  refresher_.runWhile([this] {
    const std::lock_guard lock{mutex_};
    return model_ != nullptr && model_->hasMappedLogs();
  });
}

void EmbeddedDriver::apply(const Options& options) {
  if (options_) surroundings_.setClock(options.time);
  model_->setSeed(options.seed);
  model_->setLogFault(options.logFault);
}

bool EmbeddedDriver::openFirst() {
  std::string name;
  try {
    const Options options = options_ ? parseOptions(options_()) : Options{};
    name = stateFile_();
    if (!name.empty()) loadState(name);
    if (model_ == nullptr) model_ = std::make_unique<Driver>();
    apply(options);
    return true;
  } catch (const OptionsError& error) {
    report("VEXOQTF_SIMULATOR_OPTIONS:", error.what());
  } catch (const std::exception& error) {
    report(name, error.what());
  }
  return false;
}

void EmbeddedDriver::loadState(const std::string& name) {
  StateFile file{name, lockTimeout_};
  auto fresh = std::make_unique<Driver>();
  if (const auto image = file.read()) decodeState(*image, *fresh);
  model_ = std::move(fresh);
  persistence_.emplace(Persistence{std::move(file), name, encodeStateWithoutTime(*model_)});
}

void EmbeddedDriver::closeLast() {
  if (!persistence_) return;
  try {
    if (encodeStateWithoutTime(*model_) != persistence_->image) persistence_->file.replace(encodeState(*model_));
  } catch (const std::exception& error) {
    report(persistence_->name, error.what());
  }
  persistence_.reset();
}

}  // namespace simulator
