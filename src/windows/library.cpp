// SPDX-License-Identifier: Apache-2.0

// The shared library has no code of its own: exports.def names what it takes from the static one.
