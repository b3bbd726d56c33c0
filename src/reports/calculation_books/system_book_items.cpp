#include "reports/calculation_books/system_book_items.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "platform/code_page.h"
#include "platform/prefetch.h"
#include "platform/text_numbers.h"
#include "report_model/report_data_method.h"
#include "reports/calculation_books/formula_sum.h"
#include "reports/shared/category_blocks.h"
#include "reports/shared/text_places.h"

namespace {

// Numbers the names and units of items as they come, and ranks them by their narrow forms.
class CItemTexts {
 public:
  int NumberOf(const CReportCalItem& item) {
    // The items of one attribute mostly are those of the one before.
    int& guess = last_ < 0 ? first_ : texts_[static_cast<std::size_t>(last_)].next;
    if (guess < 0 || !texts_[static_cast<std::size_t>(guess)].Is(item)) {
      const auto [at, isNew] =
          numbers_.try_emplace({item.name, item.unit}, static_cast<int>(texts_.size()));
      guess = at->second;
      last_ = guess;
      if (isNew) {
        texts_.emplace_back(item);
      }
    } else {
      last_ = guess;
    }
    return last_;
  }
  void StartAttribute() { last_ = -1; }

  /// Puts the texts in the order of their narrow forms, and the place of each number into `places`;
  /// false where two texts have one narrow form.
  bool Place(std::vector<SBookItemText>& texts, std::vector<int>& places) const {
    using Key = std::tuple<std::string, std::string, std::size_t>;
    std::vector<Key> keys;
    for (const SText& text : texts_) {
      keys.emplace_back(ToNarrowText(text.name), ToNarrowText(text.unit), keys.size());
    }
    std::sort(keys.begin(), keys.end());
    places.resize(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const auto& [name, unit, number] = keys[i];
      if (i > 0 && std::get<0>(keys[i - 1]) == name &&
          (std::get<1>(keys[i - 1]) == unit || texts.back().name != texts_[number].name)) {
        return false;
      }
      texts.push_back(texts_[number]);
      places[number] = static_cast<int>(i);
    }
    return true;
  }

 private:
  struct SText : SBookItemText {
    explicit SText(const CReportCalItem& item) : SBookItemText{item.name, item.unit} {}
    bool Is(const CReportCalItem& item) const { return name == item.name && unit == item.unit; }
    int next = -1;
  };

  std::vector<SText> texts_;
  std::map<std::pair<std::wstring_view, std::wstring_view>, int> numbers_;
  int first_ = -1;
  int last_ = -1;
};

/// Keeps texts of circuits, many in one allocation.
class CTextKeeper {
 public:
  explicit CTextKeeper(std::deque<std::wstring>& to) : to_(to) {}

  std::wstring_view Keep(std::wstring_view text) {
    if (to_.empty() || to_.back().capacity() - to_.back().size() < text.size()) {
      to_.emplace_back().reserve(std::max(text.size(), kSize));
    }
    const std::size_t begin = to_.back().size();
    to_.back() += text;
    return std::wstring_view(to_.back()).substr(begin);
  }

 private:
  static constexpr std::size_t kSize = 4096;
  std::deque<std::wstring>& to_;
};

// As a row prints it: a negative zero keeps its sign.
std::array<double, 4> SumsOf(const CReportResultDetail& detail) {
  std::array<double, 4> sums = ComponentQuantities(detail);
  for (double& sum : sums) {
    sum *= detail.floorCount;
  }
  return sums;
}

// Calls `visit(i)` for all numbers below `count` in the order of the texts of i + 1.
template <class TVisit>
void ForEachByText(std::size_t count, TVisit&& visit) {
  constexpr std::size_t kTen = 10;
  std::size_t number = 1;
  for (std::size_t i = 0; i < count; ++i) {
    visit(number - 1);
    if (number * kTen <= count) {
      number *= kTen;
      continue;
    }
    while (number == count || number % kTen == kTen - 1) {
      number /= kTen;
    }
    ++number;
  }
}

}  // namespace

class CSystemBookItems::CBuilder {
 public:
  CBuilder(CSystemBookItems& to, const std::wstring& spec)
      : to_(to), spec_(spec), keeper_(to.circuitTexts_) {}

  /// Adds all that lies below.
  void Add(CReportSpec& spec) {
    std::vector<SStep> path{{&spec, 0}};
    while (!path.empty()) {
      IReportDataNode& node = *path.back().node;
      auto* sysCode = NodeAs<CReportSysCode>(&node);
      if (path.back().next == node.children.size()) {
        if (sysCode != nullptr) {
          sysCode->items.last = to_.attributes_.size();
        }
        path.pop_back();
        continue;
      }
      IReportDataNode& child = *node.children.InOrder()[path.back().next++];
      if (const auto* category = NodeAs<CReportCategory>(&child)) {
        AddCategory(sysCode, *category);
        continue;
      }
      if (auto* deeper = NodeAs<CReportSysCode>(&child)) {
        deeper->items.first = to_.attributes_.size();
      }
      path.push_back({&child, 0});
    }
  }

  /// When all have been added: places the attributes, and brings the items of each into the order
  /// of rows. False where there is no order.
  bool Place() {
    std::vector<int> places;
    if (!PlaceAttributes() || !itemTexts_.Place(to_.texts_, places)) {
      return false;
    }
    for (SBookItem& item : to_.items_) {
      item.place = places[static_cast<std::size_t>(item.place)];
    }
    for (const SBookAttribute& attribute : to_.attributes_) {
      const auto items =
          std::span(to_.items_)
              .subspan(attribute.items.first, attribute.items.last - attribute.items.first);
      std::sort(items.begin(), items.end(), [](const SBookItem& a, const SBookItem& b) {
        return std::pair(!a.IsMain(), a.place) < std::pair(!b.IsMain(), b.place);
      });
    }
    to_.attributes_.shrink_to_fit();
    to_.items_.shrink_to_fit();
    to_.circuitsOfItems_.shrink_to_fit();
    to_.circuits_.shrink_to_fit();
    return true;
  }

 private:
  struct SStep {
    IReportDataNode* node;
    std::size_t next;
  };
  struct SAttribute {
    CReportAttribute* node;
    std::size_t name;
  };
  struct SCircuit {
    const CReportResultDetail* detail;
    std::size_t formulaSize;
    std::size_t referencesSize;
  };

  bool PlaceAttributes() {
    CTextPlaces texts;
    for (const SAttSortKey* name : names_) {
      texts.Add(name->name);
    }
    texts.Place(CTextPlaces::EOrder::Natural);
    std::vector<SAttPlaces> places;
    for (const SAttSortKey* name : names_) {
      places.push_back(texts.Of(name->name));
    }
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      nodes_[i].node->places = to_.attributes_[i].places = places[nodes_[i].name];
    }
    return !places.empty() && places.front().ascending >= 0;
  }

  void AddCategory(const CReportSysCode* holder, const CReportCategory& category) {
    const SBookKind& kind = KindOf(category);
    for (const auto& child : category.children.InOrder()) {
      if (auto* node = NodeAs<CReportAttribute>(child.get())) {
        const SAttSortKey* texts = node->sortKey.get();
        const auto [name, isNew] = nameNumbers_.try_emplace(texts, names_.size());
        if (isNew) {
          names_.push_back(texts);
        }
        nodes_.push_back({node, name->second});
        const std::size_t first = to_.items_.size();
        AddItems(node->children, kind);
        to_.attributes_.push_back({holder, &kind, texts, {}, {first, to_.items_.size()}});
      }
    }
  }

  const SBookKind& KindOf(const CReportCategory& category) {
    const SBookKind*& kind = kinds_[{category.sortId, category.category, category.kind}];
    if (kind == nullptr) {
      kind = &to_.kinds_.emplace_back(SBookKind{
          category.sortId,
          CReportTypeData::Instance()->IsPipeType(spec_, category.category, category.kind),
          category.category, category.GetKey(), MainCalItemOf(spec_, category)});
    }
    return *kind;
  }

  void AddItems(const Report::NodeMap& children, const SBookKind& kind) {
    itemTexts_.StartAttribute();
    ForEachChild<CReportCalItem>(children, [&](const CReportCalItem& node) {
      SBookItem item;
      item.node = &node;
      item.place = itemTexts_.NumberOf(node);
      AddUp(item);
      if (!circuits_.empty()) {
        if (node.name == kind.mainItem) {
          item.circuits = static_cast<int>(to_.circuitsOfItems_.size());
          AddCircuits();
        }
        to_.items_.push_back(item);
      }
    });
  }

  void AddUp(SBookItem& item) {
    circuits_.clear();
    ForEachChild<CReportResultDetail>(item.node->children, [&](const CReportResultDetail& detail) {
      const std::array<double, 4> quantities = ComponentQuantities(detail);
      if (circuits_.empty()) {
        item.floorCount = detail.floorCount;
        item.quantities = quantities;
      } else {
        AddQuantities(item.quantities, quantities, 1);
      }
      circuits_.push_back({&detail, 0, 0});
    });
  }

  // The circuits of the item that has just been added up. Its formula has their terms in the order
  // of their numbers' texts; so have the references, of which each circuit shows its part.
  void AddCircuits() {
    text_.clear();
    for (const SCircuit& circuit : circuits_) {
      Prefetch(circuit.detail->expression.data());
      circuit.detail->PrefetchComponents();
    }
    const std::size_t first = to_.circuits_.size();
    for (SCircuit& circuit : circuits_) {
      const CReportResultDetail& detail = *circuit.detail;
      to_.circuits_.emplace_back().sums = SumsOf(detail);
      circuit.formulaSize = Added([&] { AppendCircuitFormula(text_, detail, detail.floorCount); });
    }
    const std::size_t formulaSize = Added([&] {
      ForEachByText(circuits_.size(), [&](std::size_t i) {
        text_.append(i > 0 ? 1 : 0, L'+');  // the first number is that of the first text too
        AppendNumber(text_, to_.circuits_[first + i].sums[0]);
      });
    });
    ForEachByText(circuits_.size(), [&](std::size_t i) {
      circuits_[i].referencesSize = Added([&] { AppendReferences(text_, *circuits_[i].detail); });
      text_ += L'$';
    });
    SetViews(first, formulaSize);
  }

  // How many characters `append` adds to the text.
  template <class TAppend>
  std::size_t Added(TAppend&& append) {
    const std::size_t before = text_.size();
    append();
    return text_.size() - before;
  }

  void SetViews(std::size_t first, std::size_t formulaSize) {
    std::wstring_view rest = keeper_.Keep(text_);
    const auto take = [&rest](std::size_t size) {
      const std::wstring_view taken = rest.substr(0, size);
      rest.remove_prefix(size);
      return taken;
    };
    const std::size_t count = circuits_.size();
    for (std::size_t i = 0; i < count; ++i) {
      to_.circuits_[first + i].formula = take(circuits_[i].formulaSize);
    }
    const std::wstring_view formula = take(formulaSize);
    to_.circuitsOfItems_.push_back({first, first + count, formula, rest});
    ForEachByText(count, [&](std::size_t i) {
      to_.circuits_[first + i].references = take(circuits_[i].referencesSize);
      take(1);
    });
  }

  CSystemBookItems& to_;
  const std::wstring& spec_;
  CTextKeeper keeper_;
  std::map<std::tuple<int, std::wstring_view, std::wstring_view>, const SBookKind*> kinds_;
  std::vector<SAttribute> nodes_;  // of the attributes
  std::unordered_map<const SAttSortKey*, std::size_t> nameNumbers_;
  std::vector<const SAttSortKey*> names_;
  CItemTexts itemTexts_;
  // Of one item.
  std::vector<SCircuit> circuits_;
  std::wstring text_;
};

std::shared_ptr<const CSystemBookItems> CSystemBookItems::Of(CReportSpec& spec) {
  auto items = std::make_shared<CSystemBookItems>();
  CBuilder builder(*items, spec.name);
  builder.Add(spec);
  return builder.Place() ? items : nullptr;
}
