// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vqs/vqs.h>

#include <functional>

#include "tests/tool/run_tool.h"

namespace test {

/// Another client of the tool's driver does some work, on POSIX systems while its clock stands at 0.
void useDriver(const Tool& tool, const std::function<void(QtfSession*)>& work);

/// Another client of the tool's driver puts a policy without any condition into the Asm store.
void addUnconditionalPolicy(const Tool& tool, std::uint32_t id);

}  // namespace test
