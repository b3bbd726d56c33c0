#include "reports/calculation_books/book_figures_maker.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "report_model/narrow_order.h"
#include "reports/shared/category_blocks.h"

namespace {

void SetPlaces(std::map<std::string_view, SAttPlaces>& names, bool ascending,
               int SAttPlaces::*place) {
  std::vector<std::pair<std::string, SAttPlaces*>> keys;
  keys.reserve(names.size());
  for (auto& [name, places] : names) {
    keys.emplace_back(CNaturalOrderProof::Key(name, ascending), &places);
  }
  std::sort(keys.begin(), keys.end());
  int next = 0;
  for (const auto& [key, places] : keys) {
    places->*place = next++;
  }
}

}  // namespace

// Sorted by name, then by unit, both as narrow text.
struct CBookFiguresMaker::SMinorItem {
  const SText* name;
  const SText* unit;
  SFigureRow row;
  bool counts;

  bool operator<(const SMinorItem& other) const {
    return name != other.name ? name->narrow < other.name->narrow
                              : unit->narrow < other.unit->narrow;
  }
};

SBookFigures CBookFiguresMaker::Make(const Report::NodeMap& children, const std::wstring& spec,
                                     const ReadItem& readItem) {
  const auto addCategories = [&](const Report::NodeMap& nodes) {
    for (const auto& child : nodes.InOrder()) {
      if (auto* category = NodeAs<CReportCategory>(child.get())) {
        AddCategory(*category, spec, readItem);
      }
    }
  };
  made_ = {};
  addCategories(children);
  ForEachChild<CReportType>(children,
                            [&](const CReportType& type) { addCategories(type.children); });
  made_.attributes.shrink_to_fit();
  made_.rows.shrink_to_fit();
  made_.texts.shrink_to_fit();
  return std::move(made_);
}

void CBookFiguresMaker::AddCategory(CReportCategory& category, const std::wstring& spec,
                                    const ReadItem& readItem) {
  const std::wstring main = MainCalItemOf(spec, category);
  category.figures.isLineWork =
      CReportTypeData::Instance()->IsPipeType(spec, category.category, category.kind);
  category.figures.first = made_.attributes.size();
  ForEachChild<CReportAttribute>(category.children, [&](const CReportAttribute& attribute) {
    AddAttribute(attribute, main, readItem);
  });
  category.figures.last = made_.attributes.size();
}

void CBookFiguresMaker::AddAttribute(const CReportAttribute& attribute, const std::wstring& main,
                                     const ReadItem& readItem) {
  const std::size_t first = made_.rows.size();
  std::set<SMinorItem> others;
  ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
    SFigureRow row;
    row.node = &item;
    row.isMain = item.name == main;
    const SText& name = Keep(item.name);
    const SText& unit = Keep(item.unit);
    row.name = name.text;
    row.unit = unit.text;
    const bool counts = readItem(row, made_);
    if (!row.isMain) {
      // Put in without results as well: it then holds the place of its key.
      SMinorItem other{&name, &unit, row, counts};
      if (others.find(other) == others.end()) {
        others.insert(other);
      }
    } else if (counts) {
      made_.rows.push_back(row);
    }
  });
  for (const SMinorItem& other : others) {
    if (other.counts) {
      made_.rows.push_back(other.row);
    }
  }
  if (made_.rows.size() > first) {
    made_.attributes.push_back({&attribute, attribute.sortKey.get(), {}, first, made_.rows.size()});
  }
}

const CBookFiguresMaker::SText& CBookFiguresMaker::Keep(const std::wstring& text) {
  const auto [at, isNew] = kept_.try_emplace(text);
  if (isNew) {
    at->second = {&text, ToNarrowText(text)};
  }
  return at->second;
}

void CBookFiguresMaker::PlaceAttributes(const std::vector<SBookFigures*>& discipline) {
  std::unordered_map<const SAttSortKey*, SAttPlaces*> placeOf;
  std::map<std::string_view, SAttPlaces> places;
  CNaturalOrderProof proof;
  for (const SBookFigures* figures : discipline) {
    for (const SFigureAttribute& attribute : figures->attributes) {
      SAttPlaces*& place = placeOf[attribute.key];
      if (place == nullptr) {
        place = &places[attribute.key->naturalName];
        proof.Add(attribute.key->naturalName);
      }
    }
  }
  if (!proof.Holds()) {
    return;
  }
  SetPlaces(places, true, &SAttPlaces::ascending);
  SetPlaces(places, false, &SAttPlaces::descending);
  for (SBookFigures* figures : discipline) {
    for (SFigureAttribute& attribute : figures->attributes) {
      attribute.places = *placeOf[attribute.key];
    }
  }
}
