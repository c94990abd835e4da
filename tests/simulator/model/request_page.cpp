// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/model/request_page.h"

#include <array>
#include <sstream>

#include "tests/support/temporary_folder.h"

namespace test {
namespace {

enum Column : std::size_t { kCode, kPurpose, kOperation, kIn, kOut, kColumns };
using Row = std::array<std::string, kColumns>;

constexpr std::uint32_t kPoliciesOfStatus = 2;

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Row cellsOf(const std::string& line) {
  std::istringstream text{line.substr(1)};
  Row row;
  for (std::string& cell : row) {
    EXPECT_TRUE(std::getline(text, cell, '|')) << line;
    cell = trimmed(cell);
  }
  return row;
}

std::vector<Row> rowsOfPage() {
  const auto bytes = readFile(VQS_DOCS "/simulator.md");
  std::istringstream text{std::string{bytes.begin(), bytes.end()}};
  std::vector<Row> rows;
  bool isWithin = false;
  for (std::string line; std::getline(text, line);) {
    if (line.rfind("## ", 0) == 0) isWithin = line == "## Requests";
    const bool isHead = line.rfind("| code", 0) == 0 || line.rfind("| ---", 0) == 0;
    if (isWithin && !isHead && line.rfind('|', 0) == 0) rows.push_back(cellsOf(line));
  }
  return rows;
}

std::uint32_t number(const std::string& text) { return static_cast<std::uint32_t>(std::stoul(text, nullptr, 0)); }

/// "0 to 8, 10, 11"
std::vector<std::uint32_t> numbers(const std::string& cell) {
  std::vector<std::uint32_t> all;
  std::istringstream text{cell};
  for (std::string item; std::getline(text, item, ',');) {
    const std::size_t to = item.find(" to ");
    const std::uint32_t last = number(to == std::string::npos ? item : item.substr(to + 4));
    for (std::uint32_t value = number(item); value <= last; ++value) all.push_back(value);
  }
  return all;
}

void readOperations(const std::string& cell, Form& form) {
  if (cell == "-") return;
  const std::size_t colon = cell.find(": ");
  const std::string where = colon == std::string::npos ? "" : cell.substr(0, colon);
  form.operationOffset = where == "second word" ? 4 : 0;
  form.operationWidth = where == "first 16 bits" ? 2 : 4;
  EXPECT_TRUE(where.empty() || form.operationOffset == 4 || form.operationWidth == 2) << cell;
  form.operations = numbers(colon == std::string::npos ? cell : cell.substr(colon + 2));
}

/// "12", "4 or more", "4000 + 140 n"
std::size_t length(const std::string& cell, Form& form) {
  const std::size_t plus = cell.find(" + ");
  if (cell.find(" or more") != std::string::npos) form.isOutputLeast = true;
  if (plus == std::string::npos) return number(cell);
  EXPECT_EQ(cell.substr(cell.size() - 2), " n") << cell;
  form.policies = kPoliciesOfStatus;
  return number(cell) + std::size_t{number(cell.substr(plus + 3))} * kPoliciesOfStatus;
}

Form formOf(std::uint32_t code, const Row& row) {
  Form form;
  form.code = code;
  form.purpose = row[kPurpose];
  readOperations(row[kOperation], form);
  form.inputLength = length(row[kIn], form);
  form.outputLength = length(row[kOut], form);
  return form;
}

bool isFor(std::uint32_t code, const Row& row) {
  return row[kPurpose].find("Asm store only") == std::string::npos || code == kModifyAsm;
}

/// Rows without a code belong to the code above them, and to all of several codes whose operations are "as below".
std::vector<Form> readPage() {
  std::vector<Form> forms;
  std::vector<std::uint32_t> codes;
  bool isBelow = false;
  for (const Row& row : rowsOfPage()) {
    const bool isGroup = row[kOperation] == "as below";
    if (!row[kCode].empty() && !(isGroup && isBelow)) codes.clear();
    if (!row[kCode].empty()) codes.push_back(number(row[kCode]));
    isBelow = isGroup;
    if (isGroup) continue;
    for (const std::uint32_t code : codes)
      if (isFor(code, row)) forms.push_back(formOf(code, row));
  }
  return forms;
}

}  // namespace

Bytes Form::request(std::uint32_t operation) const {
  Record record{inputLength};
  if (!operations.empty() && operationWidth == 2) record.u16(operationOffset, static_cast<std::uint16_t>(operation));
  if (!operations.empty() && operationWidth == 4) record.u32(operationOffset, operation);
  if (policies != 0) record.u32(3976, policies);
  return record;
}

const std::vector<Form>& requestPage() {
  static const auto forms = readPage();
  return forms;
}

std::vector<std::uint32_t> codesOf(const std::vector<Form>& forms) {
  std::vector<std::uint32_t> codes;
  for (const Form& form : forms)
    if (std::ranges::find(codes, form.code) == codes.end()) codes.push_back(form.code);
  return codes;
}

}  // namespace test
