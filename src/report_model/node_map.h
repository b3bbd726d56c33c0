// The children of a node.
#ifndef TALLY_REPORT_MODEL_NODE_MAP_H_
#define TALLY_REPORT_MODEL_NODE_MAP_H_

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "report_model/few_items.h"
#include "report_model/node_key.h"

class IReportDataNode;

namespace Report {

/// Nodes in plain order of the texts that they are filed under (IReportDataNode::GetFiledKey). Owns
/// them. The texts are those of the nodes: nothing is kept beside the pointers, which a walk reads
/// forwards. Adding behind the last node is cheap; in front of n others it moves n pointers.
class NodeMap {
 public:
  using Nodes = std::span<const std::unique_ptr<IReportDataNode>>;
  using Place = Nodes::iterator;

  /// A key and its node, as a map holds them; the key is composed when it is asked for.
  struct SEntry {
    std::wstring first;
    const std::unique_ptr<IReportDataNode>& second;
    const SEntry* operator->() const { return this; }
  };
  class const_iterator {
   public:
    explicit const_iterator(Place at) : at_(at) {}
    /// The node without its key.
    const std::unique_ptr<IReportDataNode>& Node() const { return *at_; }
    SEntry operator*() const;
    SEntry operator->() const { return **this; }
    const_iterator& operator++() {
      ++at_;
      return *this;
    }
    bool operator==(const const_iterator& other) const = default;

   private:
    friend class NodeMap;
    Place at_;
  };

  NodeMap();
  ~NodeMap();
  NodeMap(const NodeMap&) = delete;
  NodeMap& operator=(const NodeMap&) = delete;

  bool empty() const { return nodes_.empty(); }
  std::size_t size() const { return nodes_.size(); }
  const_iterator begin() const { return const_iterator(InOrder().begin()); }
  const_iterator end() const { return const_iterator(InOrder().end()); }
  /// The nodes without their keys, as a walk reads them.
  Nodes InOrder() const { return nodes_.Items(); }

  /// The node under a key, or `end`.
  const_iterator find(const CNodeKey& key) const;
  const_iterator find(std::wstring_view key) const { return find(CNodeKey{key}); }
  /// The first node whose key does not stand before `key`.
  const_iterator lower_bound(const CNodeKey& key) const;
  const_iterator lower_bound(std::wstring_view key) const { return lower_bound(CNodeKey{key}); }

  /// Files a node at `place`. REQUIRES: lower_bound of its key answers `place`, and that place does
  /// not hold the key.
  void insert(const_iterator place, std::unique_ptr<IReportDataNode>&& node);
  void reserve(std::size_t size);
  /// How many nodes there are, with all that lies below them.
  std::size_t CountAll() const;
  /// Frees the nodes and all that lies below them, however deep.
  void clear();

 private:
  CFewItems<std::unique_ptr<IReportDataNode>> nodes_;
};

}  // namespace Report

#endif  // TALLY_REPORT_MODEL_NODE_MAP_H_
