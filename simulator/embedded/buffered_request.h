// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/device.h"
#include "simulator/model/driver.h"

namespace simulator {

/// Carries a request to the driver and its answer back, as an I/O manager does for buffered codes: through one system
/// buffer as long as the longer of both lengths, zero behind the input. The caller's output changes on success only,
/// and no further than the answer reaches. False when the request failed.
bool runBuffered(Driver& driver, Surroundings& surroundings, SessionId session, const host::DeviceRequest& request);

}  // namespace simulator
