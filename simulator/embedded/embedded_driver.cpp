// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/embedded_driver.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <mutex>
#include <utility>

#include "simulator/embedded/buffered_request.h"
#include "simulator/embedded/file_versions.h"

namespace simulator {
namespace {

constexpr GUID kInterfaceClass = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};
template <std::size_t kLength>
constexpr std::array<WCHAR, kLength> widened(const char (&text)[kLength]) {
  std::array<WCHAR, kLength> wide{};
  std::ranges::copy(text, wide.begin());
  return wide;
}

constexpr auto kInterfacePath = widened("\\\\?\\root#system#0000#{9dc9718b-59bf-43ee-94ed-34bb823dcedf}");

/// Writes one line to standard error, even if the subject's name holds line ends.
void report(const char* subject, const Reason& reason) {
  char line[Configuration::kLongestText + 512];
  const int length = std::snprintf(line, sizeof(line) - 1, "vexoqtf simulator: %s %s", subject, reason.text());
  const std::span<char> text{line, std::min(static_cast<std::size_t>(length), sizeof(line) - 2)};
  std::ranges::replace_if(text, [](char unit) { return static_cast<unsigned char>(unit) < 0x20 || unit == 0x7F; }, '?');
  line[text.size()] = '\n';
  line[text.size() + 1] = '\0';
  system::writeError(line);
}

SessionId sessionOf(HANDLE handle) { return reinterpret_cast<SessionId>(handle); }

}  // namespace

EmbeddedDriver::~EmbeddedDriver() {
  detach();
  std::free(own_);
}

bool EmbeddedDriver::attach() {
  if (attached_) return true;
  publishFileVersions();
  system::createOutputEvent();
  attached_ = host::attachDevice(*this, kInterfaceClass, kInterfacePath.data());
  return attached_;
}

void EmbeddedDriver::detach() {
  if (std::exchange(attached_, false)) {
    host::detachDevice(*this);
    system::removeOutputEvent();
    withdrawFileVersions();
  }
  {
    const std::lock_guard lock{mutex_};
    for (HANDLE handle : openHandles_) model_->close(surroundings_, sessionOf(handle));
    openHandles_.clear();
    closeLast();
  }
  refresher_.update();
}

void EmbeddedDriver::setTime(std::uint64_t milliseconds) {
  const std::lock_guard lock{mutex_};
  surroundings_.setClock(milliseconds);
}

/// True in a process that was forked from the one whose handles are open. To be asked before taking a lock: the thread
/// that held it at the time of the fork does not exist in the new process, and would never release it.
bool EmbeddedDriver::isOfAnotherProcess() const {
  const std::uint32_t owner = owner_;
  return owner != 0 && owner != system::processId();
}

bool EmbeddedDriver::open(HANDLE handle) {
  if (isOfAnotherProcess()) {
    report("the driver", Reason{"is in use by the process that this one was forked from"});
    return false;
  }
  const std::lock_guard lock{mutex_};
  if (!openHandles_.add(handle)) return false;
  if (model_ != nullptr || openFirst()) return true;
  openHandles_.remove(openHandles_.end() - 1);
  return false;
}

bool EmbeddedDriver::control(HANDLE handle, const host::DeviceRequest& request) {
  if (isOfAnotherProcess()) return false;
  bool isDone = false;
  {
    const std::lock_guard lock{mutex_};
    isDone = model_ != nullptr && runBuffered(*model_, surroundings_, sessionOf(handle), request);
  }
  refresher_.update();
  return isDone;
}

void EmbeddedDriver::close(HANDLE handle) {
  if (isOfAnotherProcess()) return;
  {
    const std::lock_guard lock{mutex_};
    HANDLE* const found = std::ranges::find(openHandles_, handle);
    if (found == openHandles_.end()) return;
    openHandles_.remove(found);
    model_->close(surroundings_, sessionOf(handle));
    if (openHandles_.isEmpty()) closeLast();
  }
  refresher_.update();
}

void EmbeddedDriver::refresh(void* self) {
  auto& driver = *static_cast<EmbeddedDriver*>(self);
  const std::lock_guard lock{driver.mutex_};
  if (driver.model_ != nullptr) driver.model_->refresh(driver.surroundings_);
}

bool EmbeddedDriver::hasMappedLogs(void* self) {
  auto& driver = *static_cast<EmbeddedDriver*>(self);
  const std::lock_guard lock{driver.mutex_};
  return driver.model_ != nullptr && driver.model_->hasMappedLogs();
}

bool EmbeddedDriver::openFirst() {
  Configuration configuration{};
  Options options;
  Reason reason = source_(sourceContext_, configuration);
  const char* subject = "VEXOQTF_SIMULATOR_STATE:";
  if (!reason) {
    subject = "VEXOQTF_SIMULATOR_OPTIONS:";
    reason = parseOptions(configuration.options, options);
  }
  if (!reason) {
    subject = configuration.stateFile;
    reason = useState(configuration.stateFile);
  }
  if (reason) {
    report(subject, reason);
    return false;
  }
  owner_ = system::processId();
  surroundings_.setClock(options.time);
  model_->setSeed(options.seed);
  model_->setLogFault(options.logFault);
  return true;
}

Reason EmbeddedDriver::useState(const char* path) {
  if (*path != '\0') {
    if (Reason reason = kept_.open(path, longestWait_)) return reason;
    model_ = &kept_.driver();
    return {};
  }
  if (own_ == nullptr) own_ = static_cast<Driver*>(std::calloc(1, sizeof(Driver)));
  model_ = own_;
  return own_ != nullptr ? Reason{} : Reason{"The driver needs more memory than there is"};
}

void EmbeddedDriver::closeLast() {
  owner_ = 0;
  model_ = nullptr;
  kept_.close();
}

}  // namespace simulator
