#include "report_model/node_map.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "report_model/report_data_node.h"

namespace Report {

NodeMap::NodeMap() = default;

NodeMap::~NodeMap() {
  clear();
}

NodeMap::SEntry NodeMap::const_iterator::operator*() const {
  return {Node()->GetFiledKey().Text(), Node()};
}

NodeMap::const_iterator NodeMap::lower_bound(const CNodeKey& key) const {
  const auto stands = [&key](const auto& node) { return node->GetFiledKey().Compare(key) < 0; };
  // A fold adds in order, or comes back to the node that it added last.
  if (nodes_.empty() || stands(nodes_.back())) {
    return end();
  }
  const Nodes nodes = InOrder();
  return const_iterator(std::partition_point(nodes.begin(), nodes.end() - 1, stands));
}

NodeMap::const_iterator NodeMap::find(const CNodeKey& key) const {
  const auto at = lower_bound(key);
  return at != end() && at.Node()->GetFiledKey().Compare(key) == 0 ? at : end();
}

void NodeMap::reserve(std::size_t size) {
  nodes_.reserve(size);
}

void NodeMap::insert(const_iterator place, std::unique_ptr<IReportDataNode>&& node) {
  nodes_.insert(static_cast<std::size_t>(place.at_ - InOrder().begin()), std::move(node));
}

std::size_t NodeMap::CountAll() const {
  std::size_t count = 0;
  std::vector<Nodes> left = {InOrder()};
  while (!left.empty()) {
    const Nodes nodes = left.back();
    left.pop_back();
    count += nodes.size();
    for (const std::unique_ptr<IReportDataNode>& node : nodes) {
      left.push_back(node->children.InOrder());
    }
  }
  return count;
}

void NodeMap::clear() {
  // Freeing must not allocate, so the way back is kept for a limited number of levels: when a
  // deeper tree has used it up, the descent starts again at the root.
  constexpr std::size_t kLevels = 256;
  std::array<CFewItems<std::unique_ptr<IReportDataNode>>*, kLevels> path;
  while (!nodes_.empty()) {
    std::size_t count = 0;
    auto* at = &nodes_;
    while (!at->empty() || count > 0) {
      if (at->empty()) {
        at = path[--count];
        continue;
      }
      auto& below = at->back()->children.nodes_;
      if (below.empty()) {
        at->pop_back();
        continue;
      }
      if (count == kLevels) {
        count = kLevels / 2;
        std::copy(path.end() - kLevels / 2, path.end(), path.begin());
      }
      path[count++] = at;
      at = &below;
    }
  }
}

}  // namespace Report
