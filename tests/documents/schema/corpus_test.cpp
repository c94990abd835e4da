// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "documents/documents.h"
#include "tests/support/temporary_folder.h"

// The documents of tests/data/documents, each about one thing, and what is to be said about each.

namespace documents {
namespace {

const std::string kCorpus = VQS_TEST_DATA "/documents";

struct ListedDocument {
  std::string file;
  /// "P0104 P0108", by their places
  std::string codes;
};

std::vector<ListedDocument> readList() {
  std::ifstream list{kCorpus + "/findings.tsv"};
  std::vector<ListedDocument> documents;
  std::string line;
  // The first line names the columns.
  std::getline(list, line);
  while (std::getline(list, line)) {
    const std::size_t tab = line.find('\t');
    documents.push_back({line.substr(0, tab), line.substr(tab + 1)});
  }
  return documents;
}

std::string folderOf(const std::string& file) { return file.substr(0, file.find('/')); }

std::string textOf(const std::string& file) {
  const auto bytes = test::readFile(kCorpus + '/' + file);
  return {bytes.begin(), bytes.end()};
}

std::string codesOf(const Findings& findings) {
  std::string codes;
  for (const Finding& finding : findings) codes += (codes.empty() ? "" : " ") + codeOf(finding.rule);
  return codes;
}

TEST(DocumentCorpus, lists_every_document_of_its_folders) {
  std::set<std::string> listed;
  for (const auto& document : readList()) EXPECT_TRUE(listed.insert(document.file).second) << document.file;
  std::set<std::string> stored;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(kCorpus))
    if (entry.path().extension() == ".json")
      stored.insert(std::filesystem::relative(entry.path(), kCorpus).generic_string());
  EXPECT_EQ(listed, stored);
  EXPECT_GE(listed.size(), 360U);
}

TEST(DocumentCorpus, is_judged_as_its_list_says) {
  for (const auto& document : readList()) {
    const std::string text = textOf(document.file);
    const auto result = readDocument(text);
    EXPECT_EQ(codesOf(result.findings), document.codes)
        << document.file << ": " << (result.findings.empty() ? "" : result.findings.front().sentence);
  }
}

TEST(DocumentCorpus, has_errors_in_the_folders_of_what_is_refused_only) {
  const std::set<std::string> fine = {"accepted", "more-than-json", "warned"};
  for (const auto& document : readList()) {
    const auto result = readDocument(textOf(document.file));
    const std::string folder = folderOf(document.file);
    EXPECT_EQ(hasErrors(result.findings), !fine.contains(folder)) << document.file;
    EXPECT_EQ(result.findings.empty(), folder == "accepted" || folder == "more-than-json") << document.file;
    EXPECT_TRUE(result.policies || !fine.contains(folder)) << document.file;
  }
}

}  // namespace
}  // namespace documents
