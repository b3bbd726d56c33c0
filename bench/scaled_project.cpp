#include "scaled_project.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "host/demo_building.h"
#include "host/demo_run.h"
#include "platform/portable/utf8_text.h"

namespace {

// Far beyond the size from which on the example building grows no further.
constexpr std::int64_t kFullGrowth = 1000000;

struct SShapeName {
  EProjectShape shape;
  const char* name;
};

constexpr SShapeName kShapeNames[] = {
    {EProjectShape::Example, "example"},
    {EProjectShape::DeepCodes, "deep-codes"},
    {EProjectShape::ManyAttributes, "many-attributes"},
    {EProjectShape::OneFloor, "one-floor"},
    {EProjectShape::OneKind, "one-kind"},
};

std::vector<demo::SFloor> ShapeFloors(EProjectShape shape) {
  std::vector<demo::SFloor> floors = demo::Floors(kFullGrowth);
  if (shape == EProjectShape::OneFloor) {
    // A floor that stands for itself alone.
    floors = {{"1", "1", false}};
  }
  return floors;
}

std::vector<demo::SSystem> ShapeSystems(EProjectShape shape) {
  std::vector<demo::SSystem> systems = demo::Systems(kFullGrowth);
  if (shape != EProjectShape::DeepCodes) {
    return systems;
  }
  constexpr int kBranches = 5;
  constexpr int kFurtherLevels = 9;
  std::vector<demo::SSystem> deep;
  for (const demo::SSystem& system : systems) {
    for (int branch = 1; branch <= kBranches; ++branch) {
      demo::SSystem& added = deep.emplace_back(system);
      for (int level = 1; level <= kFurtherLevels; ++level) {
        added.path += "\\支路" + std::to_string(branch) + "-" + std::to_string(level);
      }
    }
  }
  return deep;
}

// Attributes for each size of a part.
int AttributesOfSize(EProjectShape shape) {
  constexpr int kMany = 40;
  return shape == EProjectShape::ManyAttributes ? kMany : 1;
}

// Its components are paint work, insulation and fittings too.
bool IsOnlyKind(const demo::SPart& part) {
  return part.kind == std::string_view("给水立管");
}

std::wstring SpecName(std::size_t discipline) {
  return WideFromUtf8(demo::Disciplines()[discipline]);
}

/// What a result set is made of.
struct SProjectSize {
  std::int64_t rows;
  std::uint64_t seed;
  EProjectShape shape;
};

/// Components alike in one place, which share their item records.
struct SCircuit {
  std::size_t partIndex = 0;
  std::size_t sizeIndex = 0;
  const demo::SPart* part = nullptr;
  const demo::SSize* size = nullptr;
  int components = 1;
};

/// Fills one result set circuit by circuit.
template <class TData>
class CSetBuilder {
 public:
  using TRow = typename decltype(TData::rows)::value_type;

  CSetBuilder(TData& data, const SProjectSize& size)
      : data_(data),
        rows_(static_cast<std::size_t>(size.rows)),
        random_(size.seed),
        shape_(size.shape) {
    FillDictionaries();
    FillChoices();
  }

  /// `addCircuit(circuit)` adds its rows by AddComponent and AddRow.
  template <class TAddCircuit>
  void Build(TAddCircuit&& addCircuit) {
    const std::size_t places = floors_.size() * data_.sgds.size();
    data_.rows.reserve(rows_ + places * kMostRowsOfCircuit);
    std::size_t place = 0;
    for (std::size_t floor = 0; floor < floors_.size(); ++floor) {
      for (std::size_t section = 0; section < data_.sgds.size(); ++section) {
        ++place;
        const std::size_t share = rows_ * place / places;
        while (data_.rows.size() < share) {
          addCircuit(PlaceCircuit(floor, section));
        }
      }
    }
  }

  demo::CRandom& Random() { return random_; }

  void AddComponent() {
    row_.component = static_cast<int>(data_.components.size());
    auto& component = data_.components.emplace_back();
    component.id = row_.component + 1;
    component.name = L"K" + std::to_wstring(component.id);
  }
  /// A row of the last component.
  TRow& AddRow(std::size_t calItem) {
    row_.calItem = static_cast<int>(calItem);
    return data_.rows.emplace_back(row_);
  }

 private:
  static constexpr std::size_t kMostRowsOfCircuit = 16;

  void FillDictionaries() {
    for (const char* section : demo::Sections()) {
      data_.sgds.emplace_back().name = WideFromUtf8(section);
    }
    for (const demo::SFloor& floor : floors_) {
      data_.floors.push_back({0, WideFromUtf8(floor.name), WideFromUtf8(floor.text)});
    }
    for (std::size_t spec = 0; spec < demo::Disciplines().size(); ++spec) {
      data_.specs.push_back({0, SpecName(spec)});
    }
    for (const demo::SSystem& system : systems_) {
      data_.sysCodes.push_back({0, WideFromUtf8(system.path)});
    }
    for (const demo::SPart& part : demo::Parts()) {
      data_.categories.push_back({0, WideFromUtf8(part.category), WideFromUtf8(part.kind)});
      firstAttrs_.push_back(data_.attrs.size());
      for (const demo::SSize& size : part.sizes) {
        AddAttributes(part, size);
      }
    }
  }

  void AddAttributes(const demo::SPart& part, const demo::SSize& size) {
    const std::wstring name = WideFromUtf8(std::string(part.label) + size.text);
    const std::wstring lines = WideFromUtf8(part.lines);
    data_.attrs.push_back({0, name, lines});
    for (int more = 1; more < attributesOfSize_; ++more) {
      data_.attrs.push_back({0, name + L" T" + std::to_wstring(more), lines});
    }
  }

  void FillChoices() {
    const std::span<const demo::SPart> parts = demo::Parts();
    for (std::size_t index = 0; index < parts.size(); ++index) {
      const demo::SPart& part = parts[index];
      const bool occurs = shape_ != EProjectShape::OneKind || IsOnlyKind(part);
      const auto weight = static_cast<std::size_t>(occurs ? part.weight : 0);
      if (part.zone != demo::EZone::kPlant) {
        roomParts_.insert(roomParts_.end(), weight, index);
      }
      if (part.zone != demo::EZone::kRooms) {
        plantParts_.insert(plantParts_.end(), weight, index);
      }
      std::vector<int>& systems = systemsOfPart_.emplace_back();
      for (std::size_t system = 0; system < systems_.size(); ++system) {
        const std::size_t group = systems_[system].group;
        if (group >= part.firstGroup && group < part.firstGroup + part.groupCount) {
          systems.push_back(static_cast<int>(system));
        }
      }
    }
  }

  template <class T>
  const T& Pick(const std::vector<T>& from) {
    return from[Below(from.size())];
  }
  std::size_t Below(std::size_t count) {
    return static_cast<std::size_t>(random_.Below(static_cast<int>(count)));
  }

  SCircuit PlaceCircuit(std::size_t floor, std::size_t section) {
    SCircuit circuit;
    circuit.partIndex = Pick(floors_[floor].plant ? plantParts_ : roomParts_);
    circuit.part = &demo::Parts()[circuit.partIndex];
    circuit.sizeIndex = Below(circuit.part->sizes.size());
    circuit.size = &circuit.part->sizes[circuit.sizeIndex];
    circuit.components = 1 + random_.Below(4);
    row_.sgd = static_cast<int>(section);
    row_.floor = static_cast<int>(floor);
    row_.spec = static_cast<int>(circuit.part->discipline);
    row_.category = static_cast<int>(circuit.partIndex);
    row_.attr = static_cast<int>(firstAttrs_[circuit.partIndex]) +
                static_cast<int>(circuit.sizeIndex) * attributesOfSize_;
    if (attributesOfSize_ > 1) {
      row_.attr += random_.Below(attributesOfSize_);
    }
    row_.sysCode = Pick(systemsOfPart_[circuit.partIndex]);
    return circuit;
  }

  TData& data_;
  std::size_t rows_;
  demo::CRandom random_;
  EProjectShape shape_;
  int attributesOfSize_ = AttributesOfSize(shape_);
  std::vector<demo::SFloor> floors_ = ShapeFloors(shape_);
  std::vector<demo::SSystem> systems_ = ShapeSystems(shape_);
  std::vector<std::size_t> firstAttrs_;  // of each part
  std::vector<std::size_t> roomParts_;   // each part as often as it weighs
  std::vector<std::size_t> plantParts_;
  std::vector<std::vector<int>> systemsOfPart_;
  TRow row_;
};

// Appends the circuit's item records; answers the place of the first.
std::size_t AddItems(std::vector<KorDMRec::SKorDMCalItemRec>& items, const SCircuit& circuit,
                     demo::CRandom& random) {
  const std::size_t first = items.size();
  const demo::CRun run(random);
  for (const demo::SItemRule& rule : circuit.part->items) {
    const demo::SAmount amount = run.Measured(rule, *circuit.part, *circuit.size);
    auto& item = items.emplace_back();
    item.name = WideFromUtf8(rule.name);
    item.unit = WideFromUtf8(rule.unit);
    item.quantity = amount.quantity;
    item.expression = WideFromUtf8(amount.expression);
  }
  return first;
}

std::size_t AddItems(std::vector<KorDMRec::SKorDMCalItemDetailQRec>& items, const SCircuit& circuit,
                     demo::CRandom& random) {
  constexpr int kOneInHigh = 8;
  const std::size_t first = items.size();
  const demo::CRun run(random);
  const bool isHigh = random.Below(kOneInHigh) == 0;
  for (const demo::SItemRule& rule : circuit.part->items) {
    const demo::SAmount whole = run.Measured(rule, *circuit.part, *circuit.size);
    auto& item = items.emplace_back();
    item.name = WideFromUtf8(rule.name);
    item.unit = WideFromUtf8(rule.unit);
    item.quantity1 = whole.quantity;
    item.quantity2 = run.Level().Measured(rule, *circuit.part, *circuit.size).quantity;
    item.quantity3 = run.Rises() ? whole.quantity - item.quantity2 : 0;
    item.quantity4 = isHigh ? item.quantity3 : 0;
    item.expression = WideFromUtf8(whole.expression);
  }
  return first;
}

/// Rows for every item of every component.
template <class TData>
void BuildFull(TData& data, const SProjectSize& size) {
  CSetBuilder<TData> builder(data, size);
  builder.Build([&](const SCircuit& circuit) {
    const std::size_t first = AddItems(data.calItems, circuit, builder.Random());
    for (int i = 0; i < circuit.components; ++i) {
      builder.AddComponent();
      for (std::size_t item = first; item < data.calItems.size(); ++item) {
        builder.AddRow(item);
      }
    }
  });
}

}  // namespace

const char* ShapeName(EProjectShape shape) {
  for (const SShapeName& known : kShapeNames) {
    if (known.shape == shape) {
      return known.name;
    }
  }
  return "";
}

EProjectShape ShapeOfName(const std::string& name) {
  std::string names;
  for (const SShapeName& known : kShapeNames) {
    if (known.name == name) {
      return known.shape;
    }
    names += names.empty() ? "" : ", ";
    names += known.name;
  }
  throw std::runtime_error("the shapes are " + names);
}

bool CScaledProject::ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& records,
                                      const std::wstring& /*path*/) {
  std::array<int, 5> sortIds{};
  for (const demo::SPart& part : demo::Parts()) {
    if (part.numbered) {
      const std::wstring category = WideFromUtf8(part.category);
      records.push_back({++sortIds.at(part.discipline), SpecName(part.discipline), category,
                         category + L"\\" + WideFromUtf8(part.kind)});
    }
  }
  return true;
}

bool CScaledProject::ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& records,
                                     const std::wstring& /*path*/) {
  std::array<int, 5> sortIds{};
  std::set<std::pair<std::size_t, std::string>> known;
  for (const demo::SSystem& system : ShapeSystems(shape_)) {
    const demo::SSystemGroup& group = demo::SystemGroups()[system.group];
    if (!group.numbered) {
      continue;
    }
    std::size_t end = 0;
    do {
      end = system.path.find('\\', end + 1);
      const std::string path = system.path.substr(0, end);
      if (known.emplace(group.discipline, path).second) {
        std::wstring code = WideFromUtf8(path);
        std::replace(code.begin(), code.end(), L'\\', L'&');
        records.push_back({++sortIds.at(group.discipline), SpecName(group.discipline),
                           std::move(code), WideFromUtf8(path == group.path ? group.remark : "")});
      }
    } while (end != std::string::npos);
  }
  return true;
}

bool CScaledProject::ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& records,
                                   const std::wstring& /*path*/) {
  for (const demo::SFloor& floor : ShapeFloors(shape_)) {
    records.push_back({0, WideFromUtf8(floor.name), WideFromUtf8(floor.text)});
  }
  return true;
}

bool CScaledProject::ReadSgdAttData(std::vector<std::wstring>& names,
                                    const std::wstring& /*path*/) {
  for (const char* section : demo::Sections()) {
    names.push_back(WideFromUtf8(section));
  }
  return true;
}

bool CScaledProject::ReadXhlData(KorDMRec::SKorDMResultData& data, const std::wstring& /*path*/,
                                 bool summary) {
  if (summary) {
    BuildFull(data, {rows_, seed_, shape_});
    return true;
  }
  // The overview has the main item of each component.
  CSetBuilder<KorDMRec::SKorDMResultData> builder(data, {rows_, seed_, shape_});
  builder.Build([&](const SCircuit& circuit) {
    if (circuit.part->inOverview) {
      const std::size_t first = AddItems(data.calItems, circuit, builder.Random());
      data.calItems.resize(first + 1);
      for (int i = 0; i < circuit.components; ++i) {
        builder.AddComponent();
        builder.AddRow(first);
      }
    }
  });
  return true;
}

bool CScaledProject::ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data,
                                       const std::wstring& /*path*/) {
  BuildFull(data, {rows_, seed_, shape_});
  return true;
}

bool CScaledProject::ReadCgData(KorDMRec::SKorDMResultData& data, const std::wstring& /*path*/) {
  BuildFull(data, {rows_, seed_, shape_});
  for (auto& item : data.calItems) {
    item.text3 = L"操作高度3.6m以上";
    item.text4 = L"10m以内";
  }
  return true;
}

bool CScaledProject::ReadPjData(KorDMRec::SKorDMPjResultData& data, const std::wstring& /*path*/) {
  constexpr int kFittingsOfComponent = 3;
  CSetBuilder<KorDMRec::SKorDMPjResultData> builder(data, {rows_, seed_, shape_});
  std::vector<std::vector<std::size_t>> firstItems;  // of each part and size
  for (const demo::SPart& part : demo::Parts()) {
    std::vector<std::size_t>& ofPart = firstItems.emplace_back();
    for (const demo::SSize& size : part.sizes) {
      ofPart.push_back(data.calItems.size());
      for (const demo::SFitting& fitting : part.fittings) {
        data.calItems.push_back({0, WideFromUtf8(fitting.type),
                                 WideFromUtf8(std::string(fitting.name) + " " + size.text), L"个",
                                 0});
      }
    }
  }
  builder.Build([&](const SCircuit& circuit) {
    const auto kinds = static_cast<int>(circuit.part->fittings.size());
    for (int i = 0; kinds > 0 && i < circuit.components; ++i) {
      builder.AddComponent();
      for (int fitting = 0; fitting < kFittingsOfComponent; ++fitting) {
        builder.AddRow(firstItems[circuit.partIndex][circuit.sizeIndex] +
                       static_cast<std::size_t>(builder.Random().Below(kinds)));
      }
    }
  });
  return true;
}

bool CScaledProject::ReadQdDeData(KorDMRec::SKorDMQdDeResultData& data,
                                  const std::wstring& /*path*/, bool /*isQdMode*/) {
  CSetBuilder<KorDMRec::SKorDMQdDeResultData> builder(data, {rows_, seed_, shape_});
  // Of each part the place of its own items, then of the quotas of each size; one for each item.
  std::vector<std::vector<std::size_t>> firstQuotas;
  for (const demo::SPart& part : demo::Parts()) {
    data.qdItems.push_back(
        {0, WideFromUtf8(part.bill.code), WideFromUtf8(part.bill.name),
         WideFromUtf8(part.items[0].unit),
         WideFromUtf8(part.bill.foreign ? demo::kForeignBillLibrary : demo::kBillLibrary)});
    std::vector<std::size_t>& ofPart = firstQuotas.emplace_back();
    ofPart.push_back(data.deItems.size());
    for (const demo::SItemRule& item : part.items) {
      data.deItems.push_back({0, L"", L"", WideFromUtf8(item.unit), L""});
    }
    const std::wstring library =
        WideFromUtf8(part.quota.foreign ? demo::kForeignQuotaLibrary : demo::kQuotaLibrary);
    for (std::size_t size = 0; size < part.sizes.size(); ++size) {
      ofPart.push_back(data.deItems.size());
      data.deItems.push_back(
          {0,
           WideFromUtf8(part.quota.chapter +
                        std::to_string(part.quota.number + static_cast<int>(size))),
           WideFromUtf8(std::string(part.quota.name) + " " + part.sizes[size].text),
           WideFromUtf8(part.items[0].unit), library});
      for (const demo::SItemRule& item : part.items.subspan(1)) {
        data.deItems.push_back({0, WideFromUtf8(item.quotaCode), WideFromUtf8(item.quotaName),
                                WideFromUtf8(item.unit), library});
      }
    }
  }
  builder.Build([&](const SCircuit& circuit) {
    const std::size_t first = AddItems(data.calItems, circuit, builder.Random());
    const auto own = static_cast<std::size_t>(circuit.part->bill.ownItems);
    const std::vector<std::size_t>& quotas = firstQuotas[circuit.partIndex];
    for (int i = 0; i < circuit.components; ++i) {
      builder.AddComponent();
      // The items that the bill counts itself, then quotas: as many rows as the part has items.
      for (std::size_t row = 0; row < circuit.part->items.size(); ++row) {
        const bool isBill = row < own;
        const std::size_t item = isBill ? row : row - own;
        KorDMRec::SKorDMQdDeRow& added = builder.AddRow(first + item);
        added.isQd = isBill;
        added.qdItem = static_cast<int>(circuit.partIndex);
        added.deItem =
            static_cast<int>((isBill ? quotas[0] : quotas[1 + circuit.sizeIndex]) + item);
      }
    }
  });
  return true;
}
