// SPDX-License-Identifier: Apache-2.0
#include "src/channel/invalid_parameter.h"

#include <cstdlib>

#include "src/channel/windows_api.h"

namespace vqs {

void raiseInvalidParameter() {
  if (_get_thread_local_invalid_parameter_handler() == nullptr && _get_invalid_parameter_handler() == nullptr) return;
  _invalid_parameter_noinfo();
}

}  // namespace vqs
