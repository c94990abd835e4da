// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "format/binary/builder.h"
#include "format/binary/reader.h"
#include "format/policy/conversion.h"
#include "src/binary/file.h"
#include "src/binary/registry_export.h"
#include "src/channel/text.h"

// Compare ratios within one run, not times between runs: parsing against a copy of the same bytes, for example.

namespace {

const std::string kFleet = std::string{VQS_SAMPLES} + "/fleet-r5.bin";

auto fleetFile() {
  auto file = vqs::loadFile(kFleet.c_str(), vqs::mostUsefulBytes);
  if (!file) std::abort();
  return *std::move(file);
}

std::vector<vqs::PackedPolicy> fleet() {
  const auto file = fleetFile();
  std::vector<vqs::PackedPolicy> policies(vqs::announcedPolicyCount(file.bytes()));
  vqs::BinaryVersions versions{};
  vqs::readBinary(file.bytes(), policies, versions);
  return policies;
}

void countPolicies(benchmark::State& state, std::size_t policies) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(policies));
}

void copyFile(benchmark::State& state) {
  const auto file = fleetFile();
  std::vector<std::byte> copy(file.bytes().size());
  for (auto _ : state) {
    std::memcpy(copy.data(), file.bytes().data(), copy.size());
    benchmark::DoNotOptimize(copy.data());
    benchmark::ClobberMemory();
  }
  countPolicies(state, 400);
}
BENCHMARK(copyFile);

void parseFile(benchmark::State& state) {
  const auto file = fleetFile();
  std::vector<vqs::PackedPolicy> policies(400);
  vqs::BinaryVersions versions{};
  for (auto _ : state) benchmark::DoNotOptimize(vqs::readBinary(file.bytes(), policies, versions));
  countPolicies(state, policies.size());
}
BENCHMARK(parseFile);

void buildFile(benchmark::State& state) {
  const auto policies = fleet();
  std::vector<std::byte> buffer(vqs::policyBinarySize(policies));
  for (auto _ : state) benchmark::DoNotOptimize(vqs::buildPolicyBinary(buffer, policies, {9, 9}));
  countPolicies(state, policies.size());
}
BENCHMARK(buildFile);

void writeRegistryText(benchmark::State& state) {
  const auto file = fleetFile();
  std::FILE* stream = std::fopen("/dev/null", "wb");
  for (auto _ : state)
    benchmark::DoNotOptimize(vqs::writeRegistryExport(stream, file.bytes(), vqs::RegistryExportKind::kAsm));
  std::fclose(stream);
  countPolicies(state, 400);
}
BENCHMARK(writeRegistryText);

template <class Policy, std::uint32_t version>
void unpack(benchmark::State& state) {
  const auto policies = fleet();
  std::vector<Policy> bodies(policies.size());
  for (auto _ : state)
    for (std::size_t i = 0; i < policies.size(); ++i)
      benchmark::DoNotOptimize(vqs::unpackPolicyBody(version, &policies[i], &bodies[i], vqs::kRuntimeText));
  countPolicies(state, policies.size());
}
BENCHMARK(unpack<VqsPolicyV1, 1>);
BENCHMARK(unpack<VqsPolicyV2, 2>);

template <class Policy, std::uint32_t version>
void pack(benchmark::State& state) {
  const auto policies = fleet();
  std::vector<Policy> bodies(policies.size());
  for (std::size_t i = 0; i < policies.size(); ++i)
    vqs::unpackPolicyBody(version, &policies[i], &bodies[i], vqs::kRuntimeText);
  std::vector<vqs::PackedPolicy> packed(policies.size());
  for (auto _ : state)
    for (std::size_t i = 0; i < packed.size(); ++i)
      benchmark::DoNotOptimize(vqs::packPolicyBody(version, &bodies[i], &packed[i], vqs::kRuntimeText));
  countPolicies(state, policies.size());
}
BENCHMARK(pack<VqsPolicyV1, 1>);
BENCHMARK(pack<VqsPolicyV2, 2>);

}  // namespace
