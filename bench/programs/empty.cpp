// SPDX-License-Identifier: Apache-2.0
// What every C++ program costs.
int main() { return 0; }
