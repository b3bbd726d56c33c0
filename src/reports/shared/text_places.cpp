#include "reports/shared/text_places.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include "platform/code_page.h"
#include "report_model/narrow_order.h"

bool CTextPlaces::Place(EOrder order) {
  if (IsOrder(order) && SetPlaces(order, true, &SAttPlaces::ascending) &&
      SetPlaces(order, false, &SAttPlaces::descending)) {
    return true;
  }
  for (auto& [text, places] : places_) {
    places = {};
  }
  return false;
}

bool CTextPlaces::IsOrder(EOrder order) const {
  if (order == EOrder::Plain) {
    return true;
  }
  std::vector<std::string> texts;
  texts.reserve(places_.size());
  CNaturalOrderProof proof;
  for (const auto& [text, places] : places_) {
    proof.Add(texts.emplace_back(ToNarrowText(text)));
  }
  return proof.Holds();
}

bool CTextPlaces::SetPlaces(EOrder order, bool ascending, int SAttPlaces::*place) {
  std::vector<std::pair<std::string, SAttPlaces*>> keys;
  keys.reserve(places_.size());
  for (auto& [text, places] : places_) {
    std::string narrow = ToNarrowText(text);
    keys.emplace_back(
        order == EOrder::Natural ? CNaturalOrderProof::Key(narrow, ascending) : std::move(narrow),
        &places);
  }
  std::sort(keys.begin(), keys.end());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (i > 0 && keys[i].first == keys[i - 1].first) {
      return false;
    }
    keys[i].second->*place = static_cast<int>(i);
  }
  return true;
}

std::vector<CReportAttribute*> PlaceAttributeNames(const Report::NodeMap& disciplines) {
  std::vector<CReportAttribute*> attributes;
  // Rows of two disciplines never meet, and one whose names have no order leaves the others theirs.
  for (const auto& discipline : disciplines.InOrder()) {
    const std::size_t first = attributes.size();
    CollectNodes(discipline->children, attributes);
    const std::span added = std::span(attributes).subspan(first);
    CTextPlaces names;
    for (const CReportAttribute* attribute : added) {
      names.Add(attribute->name);
    }
    names.Place(CTextPlaces::EOrder::Natural);
    for (CReportAttribute* attribute : added) {
      attribute->places = names.Of(attribute->name);
    }
  }
  return attributes;
}
