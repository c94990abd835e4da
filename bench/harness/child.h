// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

namespace bench {

/// Milliseconds from the start of a program to its end; its output goes nowhere. It must end with 0.
double runProgram(const std::vector<std::string>& command);

/// The numbers that a program prints.
std::vector<double> numbersFrom(const std::vector<std::string>& command);

double median(std::vector<double> values);

}  // namespace bench
