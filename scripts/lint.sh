#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# clang-tidy over everything: what is shipped, which scripts/test.sh looks at as well, and the tests, fuzzers, benchmarks,
# the installer and the kernel driver. What has not changed since is not looked at again.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh test
cmake --preset native -D VQS_LINT=ON -D VQS_PROTOCOL_TESTS=OFF >/dev/null
echo "Looking at everything with clang-tidy ..."
cmake --build --preset native --target tidy -- --quiet
