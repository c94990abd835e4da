// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>

#include "tests/simulator/model/settings_view.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

/// A row of docs/simulator-telemetry.md.
struct PageRow {
  std::uint32_t key;
  std::string name;
  std::string shows;
};

struct Page {
  std::vector<PageRow> keyValue;
  std::vector<PageRow> exKeyValue;
};

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" `");
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" `") - first + 1);
}

Page readPage() {
  const auto bytes = readFile(VQS_DOCS "/simulator-telemetry.md");
  std::istringstream text{std::string{bytes.begin(), bytes.end()}};
  Page page;
  auto* rows = &page.keyValue;
  for (std::string line; std::getline(text, line);) {
    if (line == "## Ex key/value log") rows = &page.exKeyValue;
    if (line.size() < 3 || line[0] != '|' || line[2] < '0' || line[2] > '9') continue;
    std::istringstream cells{line.substr(1)};
    PageRow row{};
    std::string key;
    std::getline(cells, key, '|');
    std::getline(cells, row.name, '|');
    std::getline(cells, row.shows, '|');
    row.key = static_cast<std::uint32_t>(std::stoul(key));
    row.name = trimmed(row.name);
    row.shows = row.shows.substr(1, row.shows.size() - 2);
    rows->push_back(row);
  }
  return page;
}

/// The number that a cell consists of, if it does.
std::optional<std::uint32_t> constantOf(const std::string& shows) {
  if (shows.empty() || shows.find_first_not_of("0123456789xABCDEF") != std::string::npos) return std::nullopt;
  return static_cast<std::uint32_t>(std::stoul(shows, nullptr, 0));
}

/// The text that a cell consists of, if it does.
std::optional<std::string> textOf(const std::string& shows) {
  const bool isText = shows.size() > 2 && shows.front() == '`' && shows.find('`', 1) == shows.size() - 1;
  return isText ? std::optional{shows.substr(1, shows.size() - 2)} : std::nullopt;
}

/// A value whose elements are all the same.
Bytes repeated(std::uint32_t element, const KeyRow& row) {
  const std::size_t width = row.type == 5 ? 1 : row.type == 6 ? 2 : 4;
  Record value{row.valueSize};
  for (std::size_t i = 0; i < row.count; ++i)
    for (std::size_t byte = 0; byte < width; ++byte)
      value.u8(width * i + byte, static_cast<std::uint8_t>(element >> (8 * byte)));
  return value;
}

void expectSameKeys(const std::vector<PageRow>& page, const std::vector<KeyRow>& rows) {
  ASSERT_EQ(page.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(page[i].key, rows[i].id);
    EXPECT_EQ(page[i].name, rows[i].name);
  }
}

TEST(SimulatorTelemetryPage, lists_every_key) {
  const auto page = readPage();
  expectSameKeys(page.keyValue, kvRows());
  expectSameKeys(page.exKeyValue, exKVRows());
}

TEST(SimulatorTelemetryPage, constants_are_those_of_the_page) {
  const auto page = readPage();
  ModelClient client;
  const Telemetry telemetry{client};
  int constants = 0;
  for (int hour = 0; hour < 3; ++hour) {
    for (const auto& it : page.keyValue)
      if (const auto constant = constantOf(it.shows)) {
        EXPECT_EQ(telemetry.value(it.key), repeated(*constant, kvRows()[it.key - 1])) << it.name;
        ++constants;
      }
    for (const auto& it : page.exKeyValue)
      if (const auto constant = constantOf(it.shows)) {
        EXPECT_EQ(telemetry.exValue(it.key), repeated(*constant, exKVRows()[it.key - 1])) << it.name;
        ++constants;
      }
    client.surroundings.clock += 3600000;
    client.refresh();
  }
  EXPECT_GT(constants, 3 * 60);
}

TEST(SimulatorTelemetryPage, constant_texts_are_those_of_the_page) {
  ModelClient client;
  const Telemetry telemetry{client};
  int texts = 0;
  for (const auto& it : readPage().keyValue)
    if (const auto text = textOf(it.shows)) {
      EXPECT_EQ(telemetry.text(it.key), *text) << it.name;
      ++texts;
    }
  EXPECT_GT(texts, 20);
}

}  // namespace
}  // namespace test
