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

/// One line, whatever the file is called.
void report(std::string file, const char* reason) {
  const auto isControl = [](char unit) { return static_cast<unsigned char>(unit) < 0x20 || unit == 0x7F; };
  std::ranges::replace_if(file, isControl, '?');
  std::fprintf(stderr, "vexoqtf simulator: %s %s\n", file.c_str(), reason);
}

SessionId sessionOf(HANDLE handle) { return reinterpret_cast<SessionId>(handle); }

}  // namespace

EmbeddedDriver::EmbeddedDriver(StateFileSource stateFile, std::chrono::milliseconds lockTimeout)
    : stateFile_(std::move(stateFile)), lockTimeout_(lockTimeout) {}

EmbeddedDriver::EmbeddedDriver(std::string stateFile, std::chrono::milliseconds lockTimeout)
    : EmbeddedDriver(StateFileSource{[name = std::move(stateFile)] { return name; }}, lockTimeout) {}

EmbeddedDriver::~EmbeddedDriver() { detach(); }

void EmbeddedDriver::attach() {
  if (std::exchange(attached_, true)) return;
  publishFileVersions();
  host::attachDevice(*this, kInterfaceClass, kInterfacePath);
}

void EmbeddedDriver::detach() {
  if (std::exchange(attached_, false)) {
    host::detachDevice(*this);
    withdrawFileVersions();
  }
  const std::lock_guard lock{mutex_};
  if (std::exchange(openHandles_, 0) != 0) closeLast();
}

bool EmbeddedDriver::open(HANDLE) {
  const std::lock_guard lock{mutex_};
  if (openHandles_ == 0 && !openFirst()) return false;
  ++openHandles_;
  return true;
}

bool EmbeddedDriver::control(HANDLE handle, const host::DeviceRequest& request) {
  const std::lock_guard lock{mutex_};
  return openHandles_ != 0 && runBuffered(*model_, sessionOf(handle), request);
}

void EmbeddedDriver::close(HANDLE) {
  const std::lock_guard lock{mutex_};
  if (openHandles_ != 0 && --openHandles_ == 0) closeLast();
}

bool EmbeddedDriver::openFirst() {
  std::string name;
  try {
    name = stateFile_();
    if (!name.empty()) loadState(name);
    if (model_ == nullptr) model_ = std::make_unique<Driver>();
    return true;
  } catch (const std::exception& error) {
    report(name, error.what());
    return false;
  }
}

void EmbeddedDriver::loadState(const std::string& name) {
  StateFile file{name, lockTimeout_};
  auto fresh = std::make_unique<Driver>();
  auto image = file.read();
  if (image)
    decodeState(*image, *fresh);
  else
    image = encodeState(*fresh);
  model_ = std::move(fresh);
  persistence_.emplace(Persistence{std::move(file), name, std::move(*image)});
}

void EmbeddedDriver::closeLast() {
  if (!persistence_) return;
  try {
    const auto image = encodeState(*model_);
    if (image != persistence_->image) persistence_->file.replace(image);
  } catch (const std::exception& error) {
    report(persistence_->name, error.what());
  }
  persistence_.reset();
}

}  // namespace simulator
