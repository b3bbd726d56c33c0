#include "reports/calculation_books/ordered_system_rows.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "platform/text_numbers.h"
#include "report_mng/result_config.h"
#include "reports/calculation_books/formula_sum.h"
#include "reports/calculation_books/xhl_jss2s_report.h"

namespace {

using ELevel = CXhlJss2SReport::ELevelType;

// A child of a shown system code.
struct STerm {
  double quantity = 0;
  std::wstring references;
};

// Calls `visit(group)` for each run of equal elements.
template <class T, class TSame, class TVisit>
void ForEachRun(const std::vector<T>& elements, TSame&& isSame, TVisit&& visit) {
  const std::span<const T> all(elements);
  for (std::size_t first = 0, last = 0; first < all.size(); first = last) {
    for (last = first + 1; last < all.size() && isSame(all[first], all[last]); ++last) {
    }
    visit(all.subspan(first, last - first));
  }
}

}  // namespace

bool COrderedSystemRows::SEntry::operator<(const SEntry& other) const {
  const auto numbers = [](const SEntry& entry) {
    return std::tie(entry.sysCodeSortId, entry.categorySortId, entry.place);
  };
  if (numbers(*this) != numbers(other)) {
    return numbers(*this) < numbers(other);
  }
  const int order = Value().compare(other.Value());
  return order != 0 ? order < 0 : number < other.number;
}

bool COrderedSystemRows::Add(CCellBlock& out, CShownSystems& shown, const IReportDataNode& parent) {
  if (items_ == nullptr) {
    return false;
  }
  Collect(shown, parent);
  std::sort(entries_.begin(), entries_.end());
  if (!IsOrder(shown.Level())) {
    return false;
  }
  ForEachRun(
      entries_, [](const SEntry& a, const SEntry& b) { return a.IsOfGroup(b); },
      [&](Group group) { AddGroup(out, shown.Level(), group); });
  return true;
}

void COrderedSystemRows::Collect(CShownSystems& shown, const IReportDataNode& parent) {
  entries_.clear();
  const bool sortsDown = CResultConfig::Instance()->GetLineSortDowm();
  sysCodes_.ForEachChosen(parent, [&](const CReportSysCode& sysCode) {
    const CReportSysCode* holder = nullptr;
    const SBookKind* kind = nullptr;
    SEntry entry{};
    bool takes = false;
    for (const SBookAttribute& attribute : items_->Below(sysCode)) {
      if (attribute.holder != holder) {
        holder = attribute.holder;
        entry.sysCode = &shown.Of(*holder);
        entry.sysCodeSortId = entry.sysCode->sortId;
      }
      if (attribute.kind != kind) {
        kind = attribute.kind;
        takes = Takes(*kind);
        entry.categorySortId = kind->sortId;
        entry.largerFirst = kind->isLineWork && sortsDown;
      }
      if (takes) {
        const SAttPlaces& places = attribute.places;
        entry.place = entry.largerFirst ? places.descending : places.ascending;
        entry.number = static_cast<std::uint32_t>(entries_.size());
        entry.attribute = &attribute;
        entries_.push_back(entry);
      }
    }
  });
}

bool COrderedSystemRows::Takes(const SBookKind& kind) const {
  const auto& chosen = condition_.categories;
  return chosen.empty() || chosen.contains(kind.category) || chosen.contains(kind.path);
}

// Whether the rows' ordering is that of the entries, and the children of a shown system code are
// those of its own rows. Two codes of one sort number have no order, nor have sizes that run up in
// one kind and down in another.
bool COrderedSystemRows::IsOrder(int level) const {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const SEntry& entry = entries_[i];
    if (level != ELevel::LevelNode && entry.sysCode->parentSortId != entry.sysCode->sortId) {
      return false;
    }
    if (i > 0 && entry.sysCodeSortId == entries_[i - 1].sysCodeSortId &&
        (entry.sysCode->text != entries_[i - 1].sysCode->text ||
         (entry.categorySortId == entries_[i - 1].categorySortId &&
          entry.largerFirst != entries_[i - 1].largerFirst))) {
      return false;
    }
  }
  return true;
}

void COrderedSystemRows::AddGroup(CCellBlock& out, int level, Group group) {
  CollectItems(group);
  if (level != ELevel::LevelNode) {
    CollectMainItems(group);
    JoinTerms(level);
  }
  ForEachRun(
      groupItems_,
      [](const SEntryItem& a, const SEntryItem& b) {
        return a.item->place == b.item->place && a.item->IsMain() == b.item->IsMain();
      },
      [&](std::span<const SEntryItem> items) { AddSum(out, level, items); });
  if (level == ELevel::LevelLoop) {
    AddLoops(out);
  }
}

void COrderedSystemRows::CollectItems(Group group) {
  groupItems_.clear();
  for (const SEntry& entry : group) {
    for (const SBookItem& item : items_->ItemsOf(*entry.attribute)) {
      groupItems_.push_back({&entry, &item});
    }
  }
  if (group.size() > 1) {
    const auto key = [](const SEntryItem& each) {
      return std::tuple(!each.item->IsMain(), each.item->place, each.entry->number);
    };
    std::sort(groupItems_.begin(), groupItems_.end(),
              [&key](const SEntryItem& a, const SEntryItem& b) { return key(a) < key(b); });
  }
}

void COrderedSystemRows::CollectMainItems(Group group) {
  mainItems_.clear();
  for (const SEntry& entry : group) {
    const auto first = static_cast<std::ptrdiff_t>(mainItems_.size());
    for (const SBookItem& item : items_->ItemsOf(*entry.attribute)) {
      if (item.IsMain()) {
        mainItems_.push_back({&entry, &item});
      }
    }
    std::sort(mainItems_.begin() + first, mainItems_.end(),
              [this](const SEntryItem& a, const SEntryItem& b) {
                return items_->TextOf(*a.item).unit < items_->TextOf(*b.item).unit;
              });
  }
}

// The formula of the group's main items: the children of their system code.
void COrderedSystemRows::JoinTerms(int level) {
  const bool isByLoop = level == ELevel::LevelLoop;
  keepsTerms_ = isByLoop && mainItems_.size() == 1;
  if (keepsTerms_) {
    const SBookCircuits& circuits = items_->CircuitsOf(*mainItems_.front().item);
    formula_ = circuits.formula;
    references_ = circuits.references;
    return;
  }
  std::map<std::wstring, STerm> terms;  // by path
  for (const SEntryItem& main : mainItems_) {
    const CShownSystems::SSysCode& sysCode = *main.entry->sysCode;
    int number = 1;
    for (const SBookCircuit& circuit : items_->EachOf(items_->CircuitsOf(*main.item))) {
      const auto [at, isNew] = terms.try_emplace(sysCode.ChildPath(number));
      if (isNew) {
        at->second.quantity = circuit.sums[0];
      } else {
        at->second.quantity += circuit.sums[0];
      }
      at->second.references += circuit.references;
      number += isByLoop ? 1 : 0;
    }
  }
  joinedFormula_.clear();
  joinedReferences_.clear();
  for (const auto& [path, term] : terms) {
    AddTerm(joinedFormula_, term.quantity);
    joinedReferences_ += term.references;
    joinedReferences_ += L'$';
  }
  formula_ = joinedFormula_;
  references_ = joinedReferences_;
}

// The row of equal items, the first of which heads it.
void COrderedSystemRows::AddSum(CCellBlock& out, int level, std::span<const SEntryItem> items) {
  const SBookItem& first = *items.front().item;
  std::array<double, 4> quantities = first.quantities;
  for (const SEntryItem& each : items.subspan(1)) {
    ForEachChild<CReportResultDetail>(each.item->node->children,
                                      [&quantities](const CReportResultDetail& detail) {
                                        AddQuantities(quantities, ComponentQuantities(detail), 1);
                                      });
  }
  const SSystemRow row = RowOf(items.front());
  if (level == ELevel::LevelNode) {
    joinedReferences_.clear();
    for (const SEntryItem& each : items) {
      ForEachChild<CReportResultDetail>(each.item->node->children,
                                        [this](const CReportResultDetail& detail) {
                                          AppendReferences(joinedReferences_, detail);
                                        });
    }
    row.AddNodeRow(out, quantities, first.floorCount, CCellSource::Copied(joinedReferences_));
  } else if (!first.IsMain()) {
    row.AddSysCodeRow(out, quantities, first.floorCount, L"", L"");
  } else if (keepsTerms_) {
    row.AddSysCodeRow(out, quantities, first.floorCount, formula_, references_);
  } else {
    row.AddSysCodeRow(out, quantities, first.floorCount, CCellSource::Copied(formula_),
                      CCellSource::Copied(references_));
  }
}

// Of circuits with one number the first is shown.
void COrderedSystemRows::AddLoops(CCellBlock& out) {
  std::size_t shown = 0;
  for (const SEntryItem& main : mainItems_) {
    const SSystemRow row = RowOf(main);
    const auto circuits = items_->EachOf(items_->CircuitsOf(*main.item));
    for (; shown < circuits.size(); ++shown) {
      if (shown == loopNames_.size()) {
        loopNames_.push_back(LoopName(static_cast<int>(shown) + 1));
      }
      const SBookCircuit& circuit = circuits[shown];
      row.AddLoopRow(out, loopNames_[shown], circuit.formula, circuit.references, circuit.sums);
    }
  }
}

SSystemRow COrderedSystemRows::RowOf(const SEntryItem& item) const {
  const SEntry& entry = *item.entry;
  return {entry.sysCode->text, &entry.attribute->kind->path, entry.attribute->texts,
          items_->TextOf(*item.item)};
}
