#include "reports/special/attribute_places.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>

#include "report_model/narrow_order.h"

namespace {

struct SPlacedKey {
  const SAttSortKey* key;
  std::string name;  // its name as CNaturalOrderProof::Key
};

using PlacesOfKeys = std::unordered_map<const SAttSortKey*, SAttPlaces>;

int CompareValues(const SAttSortKey& a, const SAttSortKey& b, ETextOrder order) {
  return order == ETextOrder::Plain ? a.value.compare(b.value)
                                    : a.narrowValue.compare(b.narrowValue);
}

// Sets one of the places of all keys; false where different keys are equal in order.
bool SetPlaces(PlacesOfKeys& places, int SAttPlaces::*place, bool ascending, ETextOrder order) {
  std::vector<SPlacedKey> keys;
  keys.reserve(places.size());
  for (const auto& [key, known] : places) {
    keys.push_back({key, CNaturalOrderProof::Key(key->narrowName, ascending)});
  }
  std::sort(keys.begin(), keys.end(), [order](const SPlacedKey& a, const SPlacedKey& b) {
    const int names = a.name.compare(b.name);
    return names != 0 ? names < 0 : CompareValues(*a.key, *b.key, order) < 0;
  });
  int at = 0;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const SAttSortKey& key = *keys[i].key;
    if (i > 0) {
      const SAttSortKey& before = *keys[i - 1].key;
      const bool isSameName = key.name == before.name;
      if (!isSameName || key.value != before.value) {
        if (keys[i].name == keys[i - 1].name &&
            (!isSameName || CompareValues(key, before, order) == 0)) {
          return false;
        }
        ++at;
      }
    }
    places[&key].*place = at;
  }
  return true;
}

}  // namespace

bool PlaceAttributes(const std::vector<SDetailSums*>& groups, ETextOrder valueOrder) {
  // What heads have for an attribute comes first.
  PlacesOfKeys places{{&NoAttribute(), {}}};
  for (const SDetailSums* group : groups) {
    for (const SDetailItem& item : group->items) {
      places.try_emplace(item.attribute.get());
    }
  }
  CNaturalOrderProof proof;
  for (const auto& [key, known] : places) {
    proof.Add(key->narrowName);
  }
  if (!proof.Holds() || !SetPlaces(places, &SAttPlaces::ascending, true, valueOrder) ||
      !SetPlaces(places, &SAttPlaces::descending, false, valueOrder)) {
    return false;
  }
  for (SDetailSums* group : groups) {
    for (SDetailItem& item : group->items) {
      item.attPlaces = places[item.attribute.get()];
    }
  }
  return true;
}
