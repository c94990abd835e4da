// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "documents/policies/policy_set.h"
#include "documents/syntax/tree.h"

namespace documents {

/// Where a condition or an action stands.
struct EntryPlace {
  Span name;
  /// in the document's list
  std::size_t index = 0;
  /// all of it could be read
  bool isWhole = true;
};

/// Where a policy stands, and what of it.
struct PolicyPlace {
  NodeId self = kNoNode;
  /// of length 0 where there is none
  Span id;
  Span name;
  /// of the value of "when", readable or not; kNoNode where there is none
  NodeId when = kNoNode;
  /// one for each condition and action of the policy
  std::vector<EntryPlace> conditions;
  std::vector<EntryPlace> actions;
};

struct BoundPolicy : Policy {
  PolicyPlace place;
};

/// What a document says, with the places of what it says.
struct BoundSet {
  PolicySet set;
  /// one for each policy
  std::vector<PolicyPlace> places;
  /// of the list of policies; kNoNode where there is none
  NodeId list = kNoNode;
};

}  // namespace documents
