// SPDX-License-Identifier: Apache-2.0
#include "bench/peers/peer.h"

#include <fstream>

#include "bench/families.h"
#include "bench/harness/floor.h"
#include "bench/harness/policies.h"
#include "bench/harness/quiet_device.h"
#include "bench/harness/scratch_folder.h"
#include "format/binary/builder.h"

namespace bench {
namespace {

/// A peer that lost a field of a policy would be fast for nothing.
void requireRoundTrip(Peer& peer, const std::vector<VqsPolicyV2>& policies) {
  std::vector<VqsPolicyV2> bodies(policies.size());
  std::memset(bodies.data(), 0xA5, std::span{bodies}.size_bytes());
  require(peer.read(peer.write(packed(policies)), bodies), "policies that a peer can read");
  require(std::memcmp(bodies.data(), policies.data(), std::span{bodies}.size_bytes()) == 0,
          "policies that come back from a peer as they were");
}

std::string written(Peer& peer, const std::vector<VqsPolicyV2>& policies, std::string path) {
  const auto bytes = peer.write(packed(policies));
  std::ofstream file{path, std::ios::binary};
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  require(file.good(), "a file of a peer");
  return path;
}

/// What a peer does in place of the export: the file is read, checked and copied out.
class PeerReading {
 public:
  PeerReading(Peer& peer, const std::vector<VqsPolicyV2>& policies, const ScratchFolder& folder)
      : peer_(peer), file_(written(peer, policies, folder.path("peer.bin"))), result_(policies.size()) {}

  void operator()() {
    const std::span bodies{reinterpret_cast<VqsPolicyV2*>(result_.head() + 1), kFleetSize};
    require(peer_.read(file_.read(), bodies), "policies that a peer can read");
    keep(result_.bytes.data());
  }

 private:
  Peer& peer_;
  WholeFile file_;
  Result result_;
};

void comparePeerReading(Report& report, Item item, Peer& peer) {
  const ScratchFolder folder;
  const QuietDevice device;
  const Session session;
  const auto policies = fleetPolicies(session.get());
  const std::string path = folder.path("policies.bin");
  writeBinary(session.get(), policies, path);
  Result result{policies.size()};
  const auto read = [&] { readThroughExport(session.get(), path, result); };
  report.addLead(item, compare(read, PeerReading{peer, policies, folder}));
}

void comparePeerWriting(Report& report, Item item, Peer& peer) {
  const QuietDevice device;
  const Session session;
  const auto policies = packed(fleetPolicies(session.get()));
  std::vector<std::byte> binary(vqs::policyBinarySize(policies));
  const auto write = [&] {
    require(vqs::policyBinarySize(policies) == binary.size(), "the size of a policy binary");
    require(vqs::buildPolicyBinary(binary, policies, {3, 41}), "a policy binary in memory");
    keep(binary.data());
  };
  report.addLead(item, compare(write, [&] { keep(peer.write(policies).data()); }));
}

}  // namespace

void measurePeers(Report& report) {
  const auto flatBuffers = flatBuffersPeer();
  const auto protobuf = protobufPeer();
  for (Peer* const peer : {flatBuffers.get(), protobuf.get()}) requireRoundTrip(*peer, fullPolicies(3));
  comparePeerReading(report, Item::kReadFlatBuffers, *flatBuffers);
  comparePeerReading(report, Item::kReadProtobuf, *protobuf);
  comparePeerWriting(report, Item::kWriteFlatBuffers, *flatBuffers);
  comparePeerWriting(report, Item::kWriteProtobuf, *protobuf);
}

}  // namespace bench
