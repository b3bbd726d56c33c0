#include "reports/shared/summary_references.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

namespace {

// Lays out the references of the results below one system code.
class CLayout {
 public:
  // Keeps its own stack: a code may have any number of levels.
  explicit CLayout(CReportSysCode& first) {
    Enter(first);
    while (!levels_.empty()) {
      SLevel& level = levels_.back();
      if (level.next == level.node->children.InOrder().end()) {
        parts_.push_back({level.node, level.begin, size_ - level.begin});
        levels_.pop_back();
        continue;
      }
      IReportDataNode* child = level.next->get();
      ++level.next;
      if (auto* sysCode = NodeAs<CReportSysCode>(child)) {
        Enter(*sysCode);
      } else if (auto* result = NodeAs<CReportResult>(child)) {
        Add(*result);
      }
    }
  }

  const std::vector<const CReportResult*>& Results() const { return results_; }
  std::size_t Size() const { return size_; }

  // Hands out the parts of the finished text.
  void Share(std::wstring_view text) const {
    for (const SPart& part : parts_) {
      part.node->references = text.substr(part.begin, part.size);
    }
  }

 private:
  struct SLevel {
    CReportSysCode* node;
    Report::NodeMap::Nodes::const_iterator next;
    std::size_t begin;
  };
  struct SPart {
    CReportSysCode* node;
    std::size_t begin;
    std::size_t size;
  };

  void Enter(CReportSysCode& node) {
    levels_.push_back({&node, node.children.InOrder().begin(), size_});
  }
  void Add(CReportResult& result) {
    const std::size_t size = result.ComponentTextSize() + 1;
    // More takes more memory than there is.
    if (size > std::numeric_limits<std::uint32_t>::max()) {
      throw std::bad_alloc();
    }
    result.referencesSize = static_cast<std::uint32_t>(size);
    size_ += size;
    results_.push_back(&result);
  }

  std::vector<SLevel> levels_;
  std::vector<SPart> parts_;
  std::vector<const CReportResult*> results_;
  std::size_t size_ = 0;
};

}  // namespace

void AppendReferences(std::wstring& text, const std::vector<const CReportResult*>& results,
                      EChainMark mark) {
  constexpr std::size_t kAhead = 8;
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (i + kAhead < results.size()) {
      results[i + kAhead]->PrefetchComponents();
    }
    if (mark == EChainMark::Ahead) {
      text += L'$';
    }
    results[i]->AppendComponentText(text);
    if (mark == EChainMark::Behind) {
      text += L'$';
    }
  }
}

void KeepReferences(CReportSysCode& first, EChainMark mark) {
  if (first.keptReferences != nullptr) {
    return;
  }
  const CLayout layout(first);
  auto text = std::make_unique<std::wstring>();
  text->reserve(layout.Size());
  AppendReferences(*text, layout.Results(), mark);
  first.keptReferences = std::move(text);
  layout.Share(*first.keptReferences);
}
