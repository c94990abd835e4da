// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/driver_session.h"

#include "tool/system/simulated_driver.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

std::string describeRefusal(vqsStatus status, const std::string& messages) {
  if (status == VQS_DRIVER_NOT_FOUND) return "the driver is not loaded: " + platform::driverHint();
  if (status != VQS_REQUEST_FAILED) return "the driver cannot be reached: " + describe(status);
  return "the driver's device cannot be found or opened: " + (messages.empty() ? platform::deviceHint() : messages);
}

Session open(const Context& context) {
  useLibrary(context);
  platform::useDriverState(context.driverState);
  QtfSession* session = nullptr;
  vqsStatus status = VQS_SUCCESS;
  const auto messages = platform::driverMessagesDuring([&] { status = vqsInitialize(&session); });
  if (status != VQS_SUCCESS) throw NoDriver{describeRefusal(status, messages)};
  return Session{session};
}

}  // namespace

void SessionCloser::operator()(QtfSession* session) const { static_cast<void>(vqsUninitialize(session)); }

void useLibrary(const Context& context) { platform::loadLibrary(context.isDriverSimulated); }

void withDriver(const Context& context, const std::function<void(const Session&)>& work) { work(open(context)); }

Session openIfThere(const Context& context) {
  const bool isNamed = context.isDriverSimulated || context.driverState;
  try {
    return open(context);
  } catch (const NoDriver&) {
    if (isNamed) throw;
    return nullptr;
  }
}

}  // namespace tool
