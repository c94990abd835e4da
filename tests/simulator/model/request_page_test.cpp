// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/request_page.h"

// The table "Requests" of docs/simulator.md, against the driver's list and against what the driver does.

namespace test {
namespace {

std::vector<std::uint32_t> operationsOf(const Form& form) {
  return form.operations.empty() ? std::vector<std::uint32_t>{0} : form.operations;
}

/// What became of a request of a form, with other lengths than those of its row.
Outcome outcomeOf(const Form& form, std::uint32_t operation, std::size_t inputLength, std::size_t outputLength) {
  static ModelClient client;
  Bytes request = form.request(operation);
  request.resize(inputLength);
  return client.outcome(form.code, request, outputLength);
}

std::string nameOf(const Form& form, std::uint32_t operation) {
  std::ostringstream name;
  name << std::hex << form.code << ' ' << form.purpose << ", operation " << operation;
  return name.str();
}

TEST(SimulatorRequestPage, lists_the_requests_of_the_driver_in_its_order) {
  std::vector<std::uint32_t> codes;
  for (const auto& row : simulator::requests()) codes.push_back(row.code);
  EXPECT_EQ(codesOf(requestPage()), codes)
      << "add the row that is missing, to docs/simulator.md or to simulator/model/requests.cpp";
}

TEST(SimulatorRequestPage, has_rows_for_each_form_of_a_request) {
  const auto count = [](std::uint32_t code) { return std::ranges::count(requestPage(), code, &Form::code); };
  EXPECT_EQ(count(kModifyPb), 5);
  EXPECT_EQ(count(kModifyAsm), 7);
  EXPECT_EQ(count(kModifyBalanceProfile), 5);
  EXPECT_EQ(count(0x80222044), 3) << "catalogue support";
  EXPECT_EQ(count(0x80222010), 2) << "battery";
  EXPECT_EQ(count(kAppIo), 1);
}

TEST(SimulatorRequestPage, has_the_operations_and_lengths_that_the_driver_takes) {
  for (const Form& form : requestPage())
    for (const std::uint32_t operation : operationsOf(form)) {
      const Outcome outcome = outcomeOf(form, operation, form.inputLength, form.outputLength);
      EXPECT_NE(outcome, Outcome::kWrongLength) << nameOf(form, operation);
      EXPECT_NE(outcome, Outcome::kUnknownRequest) << nameOf(form, operation);
    }
}

TEST(SimulatorRequestPage, has_no_lengths_too_few) {
  for (const Form& form : requestPage())
    for (const std::uint32_t operation : operationsOf(form))
      for (const std::size_t change : {std::size_t{1}, std::size_t{0} - 1}) {
        const std::size_t in = form.inputLength + change;
        const std::size_t out = form.outputLength + change;
        if (form.inputLength != 0 || change == 1) {
          EXPECT_EQ(outcomeOf(form, operation, in, form.outputLength), Outcome::kWrongLength)
              << nameOf(form, operation);
        }
        const bool isRight = form.isOutputLeast && change == 1;
        if (form.outputLength != 0 || change == 1) {
          EXPECT_EQ(outcomeOf(form, operation, form.inputLength, out) == Outcome::kWrongLength, !isRight)
              << nameOf(form, operation);
        }
      }
}

/// Every operation of a code, in whichever row.
std::vector<std::uint32_t> allOperationsOf(std::uint32_t code) {
  std::vector<std::uint32_t> all;
  for (const Form& form : requestPage())
    if (form.code == code) all.insert(all.end(), form.operations.begin(), form.operations.end());
  return all;
}

TEST(SimulatorRequestPage, has_no_operations_too_few) {
  int unknown = 0;
  for (const Form& form : requestPage()) {
    const auto known = allOperationsOf(form.code);
    for (const std::uint32_t operation : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 11U, 12U, 13U, 14U, 0xFFFFU}) {
      if (form.operations.empty() || std::ranges::find(known, operation) != known.end()) continue;
      EXPECT_EQ(outcomeOf(form, operation, form.inputLength, form.outputLength), Outcome::kUnknownRequest)
          << nameOf(form, operation);
      ++unknown;
    }
  }
  EXPECT_GT(unknown, 200);
}

}  // namespace
}  // namespace test
