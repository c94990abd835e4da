// SPDX-License-Identifier: Apache-2.0
#include "channel/invalid_parameter.h"

#include <cstdlib>
#include <cstring>

#include "channel/windows_api.h"

namespace vqs {

void raiseInvalidParameter() {
  if (_get_thread_local_invalid_parameter_handler() == nullptr && _get_invalid_parameter_handler() == nullptr) return;
  // The runtime alone knows how to call a handler; text without room for its end makes it do so.
  char room[1];
  static_cast<void>(strncpy_s(room, sizeof(room), "?", sizeof(room)));
}

}  // namespace vqs
