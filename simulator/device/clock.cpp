// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/clock.h"

#include "simulator/device/kernel.h"

namespace device::clock {

std::uint64_t now() {
  LARGE_INTEGER time;
  KeQuerySystemTime(&time);
  // A read of the page that the kernel shares with everybody. Wine has no such page and imitates plain loads of it
  // only: none may become part of another instruction.
  __asm__ volatile("" : "+r"(time.QuadPart));
  return static_cast<std::uint64_t>(time.QuadPart);
}

}  // namespace device::clock
