#include "reports/consumption/fittings_maker.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "reports/shared/text_places.h"

namespace {

// Places fittings by their texts.
void PlaceFittings(const std::vector<SFitting*>& fittings) {
  // Those of one record view its texts.
  std::unordered_map<const wchar_t*, std::size_t> records;
  std::vector<const SFitting*> firsts;
  for (const SFitting* fitting : fittings) {
    if (records.try_emplace(fitting->text1.data(), firsts.size()).second) {
      firsts.push_back(fitting);
    }
  }
  constexpr std::array kTexts{&SFitting::text1, &SFitting::name, &SFitting::unit};
  using Places = std::array<int, kTexts.size()>;
  std::vector<Places> placesOf(firsts.size());
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    CTextPlaces places;
    for (const SFitting* fitting : firsts) {
      places.Add(fitting->*kTexts[i]);
    }
    places.Place(CTextPlaces::EOrder::Plain);
    for (std::size_t record = 0; record < firsts.size(); ++record) {
      placesOf[record][i] = places.Of(firsts[record]->*kTexts[i]).ascending;
      if (placesOf[record][i] < 0) {
        return;
      }
    }
  }
  std::vector<Places> sorted = placesOf;
  std::sort(sorted.begin(), sorted.end());
  for (SFitting* fitting : fittings) {
    const Places& places = placesOf[records.find(fitting->text1.data())->second];
    fitting->place =
        static_cast<int>(std::lower_bound(sorted.begin(), sorted.end(), places) - sorted.begin());
  }
}

// The places of a discipline's component categories. Their kinds are not told apart, so there are
// none where the sort numbers of one category reach into those of another.
std::unordered_map<std::wstring_view, int> PlacesOfCategories(const CReportSpec& spec) {
  struct SSortIds {
    int least = std::numeric_limits<int>::max();
    int most = std::numeric_limits<int>::min();
  };
  std::vector<CReportCategory*> kinds;
  CollectNodes(spec.children, kinds);
  std::unordered_map<std::wstring_view, SSortIds> sortIds;
  for (const CReportCategory* kind : kinds) {
    SSortIds& of = sortIds[kind->category];
    of.least = std::min(of.least, kind->sortId);
    of.most = std::max(of.most, kind->sortId);
  }
  std::map<int, std::pair<int, std::wstring_view>> inOrder;
  for (const auto& [category, of] : sortIds) {
    inOrder.try_emplace(of.least, of.most, category);
  }
  std::unordered_map<std::wstring_view, int> places;
  int before = std::numeric_limits<int>::min();
  for (const auto& [least, other] : inOrder) {
    const auto& [most, category] = other;
    if (!places.empty() && least <= before) {
      return {};
    }
    places.emplace(category, static_cast<int>(places.size()));
    before = most;
  }
  return places.size() == sortIds.size() ? places : decltype(places)();
}

// Adds up what counts where all results of a fitting do.
void KeepWhole(SFitting& fitting, const std::vector<CReportResult*>& results,
               const std::wstring& floorText) {
  std::size_t size = 0;
  for (CReportResult* result : results) {
    result->PrefetchComponents();
    result->referencesSize = static_cast<std::uint32_t>(result->ComponentTextSize() + 1);
    size += result->referencesSize;
    fitting.quantity += result->Quantity(result->floorCount);
    fitting.hasFloorsText = fitting.hasFloorsText && result->floorText == floorText;
  }
  fitting.references.reserve(size);
  for (const CReportResult* result : results) {
    result->AppendComponentText(fitting.references);
    fitting.references += L'$';
  }
}

void ListFittings(CReportCategory& kind, int categoryPlace, const std::wstring& floorText) {
  std::vector<CReportResult*> results;
  ForEachChild<CReportAttribute>(kind.children, [&](const CReportAttribute& attribute) {
    ForEachChild<CReportPjCalItem>(attribute.children, [&](const CReportPjCalItem& item) {
      SFitting& fitting = kind.fittings.emplace_back();
      fitting.attribute = &attribute;
      fitting.item = &item;
      fitting.line = attribute.sortKey->name;
      fitting.text1 = item.text1;
      fitting.name = item.name;
      fitting.unit = item.unit;
      fitting.linePlaces = attribute.places;
      fitting.categoryPlace = categoryPlace;
      results.clear();
      CollectNodes(item.children, results);
      KeepWhole(fitting, results, floorText);
    });
  });
  kind.fittings.shrink_to_fit();
}

// Lists the fittings of a discipline and adds them to `fittings`.
void ListFittings(const CReportSpec& spec, std::vector<SFitting*>& fittings) {
  const std::unordered_map<std::wstring_view, int> places = PlacesOfCategories(spec);
  ForEachChild<CReportFloor>(spec.children, [&](const CReportFloor& floor) {
    std::vector<CReportCategory*> kinds;
    CollectNodes(floor.children, kinds);
    for (CReportCategory* kind : kinds) {
      const auto place = places.find(kind->category);
      ListFittings(*kind, place == places.end() ? -1 : place->second, floor.floorText);
      for (SFitting& fitting : kind->fittings) {
        fittings.push_back(&fitting);
      }
    }
  });
}

}  // namespace

void MakeFittings(const Report::NodeMap& root) {
  std::vector<SFitting*> fittings;
  ForEachChild<CReportSpec>(
      root, [&](const CReportSpec& discipline) { ListFittings(discipline, fittings); });
  PlaceFittings(fittings);
}
