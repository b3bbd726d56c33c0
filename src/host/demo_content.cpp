#include "host/demo_content.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <numeric>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/demo_building.h"
#include "host/demo_run.h"
#include "host/joined.h"

namespace demo {

namespace {

constexpr std::string_view kRowColumns =
    "id,sgd,floor,component,spec,category,attr,sys_code,cal_item";

/// The ids that a row names, but for its component and its item.
struct SPlace {
  std::int64_t sgd = 0;
  std::int64_t floor = 0;
  std::int64_t spec = 0;
  std::int64_t category = 0;
  std::int64_t attr = 0;
  std::int64_t sys_code = 0;
};

/// The parts that a zone can hold, in turn, each as often as its weight tells. Neighbours in the
/// turn lie apart in the table, so that a short stretch already has something of every discipline.
class CTurns {
 public:
  explicit CTurns(EZone zone) {
    const std::span<const SPart> parts = Parts();
    for (std::size_t part = 0; part < parts.size(); ++part) {
      if (parts[part].zone == EZone::kAnywhere || parts[part].zone == zone) {
        parts_.insert(parts_.end(), static_cast<std::size_t>(parts[part].weight), part);
      }
    }
    while (std::gcd(stride_, parts_.size()) != 1) {
      ++stride_;
    }
  }

  /// Index into Parts().
  std::size_t Next() {
    next_ = (next_ + stride_) % parts_.size();
    return parts_[next_];
  }

 private:
  std::vector<std::size_t> parts_;
  std::size_t next_ = 0;
  std::size_t stride_ = 57;  ///< shares no divisor with the number of parts, so that all come up
};

class CProjectWriter {
 public:
  /// The schema must be there; `rows` is the number of detail rows that is wanted.
  CProjectWriter(const CDatabase& database, std::int64_t rows)
      : database_(database),
        rows_(rows),
        floors_(Floors(rows)),
        systems_(Systems(rows)),
        attrs_(database, "attr", "id,name,value"),
        quotas_(database, "de_item", "id,code,name,unit,library"),
        fittings_(database, "pj_cal_item", "id,text1,name,unit"),
        components_(database, "component", "id,name"),
        componentTexts_(database, "component_text", "component,seq,text"),
        items_(database, "cal_item", "id,name,unit,text3,text4,quantity,expression"),
        detailItems_(database, "detail_cal_item",
                     "id,name,unit,quantity1,quantity2,quantity3,quantity4,expression"),
        hz_(database, "hz_row", kRowColumns),
        gl_(database, "gl_row", kRowColumns),
        cg_(database, "cg_row", kRowColumns),
        detail_(database, "detail_row", kRowColumns),
        pj_(database, "pj_row", kRowColumns),
        qdDe_(database, "qd_de_row",
              "id,is_qd,sgd,floor,component,spec,category,attr,sys_code,cal_item,qd_item,"
              "de_item") {}

  void Write() {
    WriteSettings();
    WriteFloorsAndSections();
    WriteKinds();
    WriteSystemTree();
    WriteSystems();
    WriteLibraries();
    WriteParts();
    WriteResults();
  }

 private:
  /// The ids of what a part has in one size.
  struct SSizeIds {
    std::int64_t attr = 0;
    std::vector<std::int64_t> quotas;  ///< one for each of the part's items
    std::vector<std::int64_t> fittings;
  };

  struct SPartIds {
    std::int64_t category = 0;
    std::int64_t bill = 0;
    std::vector<std::int64_t> ownItems;  ///< one for each of the part's items
    std::vector<SSizeIds> sizes;
    std::vector<std::size_t> systems;  ///< indices into systems_
  };

  /// One of a circuit's calculation items, as records of the database.
  struct SItemIds {
    std::int64_t item = 0;
    std::int64_t detailItem = 0;
    std::int64_t overHeightItem = 0;  ///< 0: nothing of it lies above the working height
  };

  void WriteSettings() {
    CInsert settings(database_, "setting", "name,value");
    for (const SSetting& setting : Settings()) {
      settings.Put(setting.name, setting.value);
    }
  }

  void WriteFloorsAndSections() {
    CInsert allFloors(database_, "all_floor", "id,name,floor_text");
    CInsert floors(database_, "floor", "id,name,floor_text");
    for (const SFloor& floor : floors_) {
      allFloors.Add(floor.name, floor.text);
      floors.Add(floor.name, floor.text);
    }
    CInsert allSections(database_, "all_sgd", "id,name");
    CInsert sections(database_, "sgd", "id,name");
    for (const char* section : Sections()) {
      allSections.Add(section);
      sections.Add(section);
    }
    CInsert specs(database_, "spec", "id,name");
    for (const char* discipline : Disciplines()) {
      specs.Add(discipline);
    }
  }

  void WriteKinds() {
    CInsert kinds(database_, "all_small_index", "id,sort_id,spec,big_category,path");
    std::array<int, 5> sortIds{};
    for (const SPart& part : Parts()) {
      if (part.numbered) {
        kinds.Add(++sortIds[part.discipline], Disciplines()[part.discipline], part.category,
                  std::string(part.category) + "\\" + part.kind);
      }
    }
  }

  /// Every level of every system, each once, with a sort number of its own in its discipline.
  void WriteSystemTree() {
    CInsert codes(database_, "all_sys_code", "id,sort_id,spec,sys_code,remark");
    std::array<int, 5> sortIds{};
    std::set<std::pair<std::size_t, std::string>> known;
    for (const SSystem& system : systems_) {
      const SSystemGroup& group = SystemGroups()[system.group];
      if (!group.numbered) {
        continue;
      }
      std::size_t end = 0;
      while (end != std::string::npos) {
        end = system.path.find('\\', end == 0 ? 0 : end + 1);
        std::string path = system.path.substr(0, end);
        if (!known.emplace(group.discipline, path).second) {
          continue;
        }
        const char* remark = path == group.path ? group.remark : "";
        std::replace(path.begin(), path.end(), '\\', '&');
        codes.Add(++sortIds[group.discipline], Disciplines()[group.discipline], path, remark);
      }
    }
  }

  void WriteSystems() {
    CInsert codes(database_, "sys_code", "id,name");
    for (const SSystem& system : systems_) {
      codes.Add(system.path);
    }
  }

  void WriteLibraries() {
    CInsert billChapters(database_, "qd_chapter", "library,code_prefix,number,name");
    for (const SChapter& chapter : BillChapters()) {
      billChapters.Put(kBillLibrary, chapter.prefix, chapter.number, chapter.name);
    }
    CInsert quotaChapters(database_, "de_chapter", "library,code_prefix,number,path");
    for (const SChapter& chapter : QuotaChapters()) {
      quotaChapters.Put(kQuotaLibrary, chapter.prefix, chapter.number, chapter.name);
    }
    CInsert marks(database_, "qd_mark", "code,seq,name,value");
    for (const SMark& mark : BillMarks()) {
      marks.Put(mark.code, mark.seq, mark.name, mark.value);
    }
  }

  void WriteParts() {
    CInsert categories(database_, "category", "id,category,kind");
    CInsert bills(database_, "qd_item", "id,code,name,unit,library");
    std::map<std::pair<std::string, std::string>, std::int64_t> categoryIds;
    for (const SPart& part : Parts()) {
      SPartIds ids;
      std::int64_t& category = categoryIds[{part.category, part.kind}];
      if (category == 0) {
        category = categories.Add(part.category, part.kind);
      }
      ids.category = category;
      ids.bill = bills.Add(part.bill.code, part.bill.name, part.items[0].unit,
                           part.bill.foreign ? kForeignBillLibrary : kBillLibrary);
      for (const SItemRule& item : part.items) {
        ids.ownItems.push_back(quotas_.Id("", "", item.unit, ""));
      }
      for (std::size_t size = 0; size < part.sizes.size(); ++size) {
        ids.sizes.push_back(WriteSize(part, size));
      }
      for (std::size_t system = 0; system < systems_.size(); ++system) {
        const std::size_t group = systems_[system].group;
        if (group >= part.firstGroup && group < part.firstGroup + part.groupCount) {
          ids.systems.push_back(system);
        }
      }
      parts_.push_back(std::move(ids));
    }
  }

  SSizeIds WriteSize(const SPart& part, std::size_t index) {
    const SSize& size = part.sizes[index];
    SSizeIds ids;
    ids.attr = attrs_.Id(std::string(part.label) + size.text, part.lines);
    const char* library = part.quota.foreign ? kForeignQuotaLibrary : kQuotaLibrary;
    ids.quotas.push_back(
        quotas_.Id(part.quota.chapter + std::to_string(part.quota.number + static_cast<int>(index)),
                   std::string(part.quota.name) + " " + size.text, part.items[0].unit, library));
    for (const SItemRule& item : part.items.subspan(1)) {
      ids.quotas.push_back(quotas_.Id(item.quotaCode, item.quotaName, item.unit, library));
    }
    for (const SFitting& fitting : part.fittings) {
      ids.fittings.push_back(
          fittings_.Id(fitting.type, std::string(fitting.name) + " " + size.text, "个"));
    }
    return ids;
  }

  /// Goes through floors and sections, and puts circuits into each until it has its share of rows.
  void WriteResults() {
    const auto places = static_cast<std::int64_t>(floors_.size() * Sections().size());
    std::int64_t place = 0;
    for (std::size_t floor = 0; floor < floors_.size(); ++floor) {
      for (std::size_t section = 0; section < Sections().size(); ++section) {
        ++place;
        const std::int64_t share = rows_ / places * place + rows_ % places * place / places;
        while (detail_.Last() < share) {
          WriteCircuit(floor, section, share);
        }
      }
    }
  }

  /// A circuit is one to four components alike; together they share their item records.
  void WriteCircuit(std::size_t floor, std::size_t section, std::int64_t share) {
    constexpr std::array<int, 4> kComponents = {2, 3, 1, 4};
    const std::size_t number = circuits_++;
    const std::size_t index = (floors_[floor].plant ? plantTurns_ : roomTurns_).Next();
    const SPart& part = Parts()[index];
    const SPartIds& ids = parts_[index];
    const SSizeIds& sizeIds = ids.sizes[Pick(ids.sizes.size())];
    const SSize& size = part.sizes[static_cast<std::size_t>(&sizeIds - ids.sizes.data())];
    const SPlace place{static_cast<std::int64_t>(section + 1),
                       static_cast<std::int64_t>(floor + 1),
                       static_cast<std::int64_t>(part.discipline + 1),
                       ids.category,
                       sizeIds.attr,
                       static_cast<std::int64_t>(ids.systems[Pick(ids.systems.size())] + 1)};
    const std::vector<SItemIds> items = WriteItems(part, size);
    for (int i = kComponents[number % kComponents.size()]; i > 0 && detail_.Last() < share; --i) {
      WriteComponent(part, ids, sizeIds, place, items);
    }
  }

  std::size_t Pick(std::size_t count) {
    return static_cast<std::size_t>(random_.Below(static_cast<int>(count)));
  }

  /// One eighth of the rows have an over-height quantity: what rises, or all where nothing does.
  std::vector<SItemIds> WriteItems(const SPart& part, const SSize& size) {
    const CRun run(random_);
    const CRun high = run.Rises() ? run.Rising() : run;
    const bool overHeight = cg_.Last() * 8 < detail_.Last();
    std::vector<SItemIds> ids;
    for (const SItemRule& item : part.items) {
      const SAmount whole = run.Measured(item, part, size);
      const double level = run.Level().Measured(item, part, size).quantity;
      const bool ofLength = run.Rises() && level != whole.quantity;
      const double rising = ofLength ? run.Rising().Measured(item, part, size).quantity : 0;
      const SAmount above = overHeight ? high.Measured(item, part, size) : SAmount{};
      SItemIds id;
      id.item = items_.Add(item.name, item.unit, "", "", whole.quantity, whole.expression);
      id.detailItem = detailItems_.Add(item.name, item.unit, whole.quantity, level, rising,
                                       above.quantity, whole.expression);
      if (overHeight) {
        id.overHeightItem = items_.Add(item.name, item.unit, "操作高度3.6m以上", "10m以内",
                                       above.quantity, above.expression);
      }
      ids.push_back(id);
    }
    return ids;
  }

  void WriteComponent(const SPart& part, const SPartIds& ids, const SSizeIds& sizeIds,
                      const SPlace& place, const std::vector<SItemIds>& items) {
    const std::int64_t component = AddComponent(part);
    for (const SItemIds& item : items) {
      AddRow(detail_, place, component, item.detailItem);
      AddRow(hz_, place, component, item.item);
      if (item.overHeightItem != 0) {
        AddRow(cg_, place, component, item.overHeightItem);
      }
    }
    if (part.inOverview) {
      AddRow(gl_, place, component, items[0].item);
    }
    // Fittings keep pace with the detail rows of the whole building.
    while (!sizeIds.fittings.empty() && pj_.Last() * 4 < detail_.Last()) {
      AddRow(pj_, place, component, sizeIds.fittings[Pick(sizeIds.fittings.size())]);
    }
    WriteBill(part, ids, sizeIds, place, component, items);
  }

  std::int64_t AddComponent(const SPart& part) {
    static constexpr std::array<char, 5> kLetters = {'W', 'E', 'V', 'F', 'L'};
    const std::string name = Joined(std::string_view(&kLetters[part.discipline], 1),
                                    std::to_string(components_.Last() + 1));
    const std::int64_t component = components_.Add(name);
    if (component % 100 == 1) {
      componentTexts_.Put(component, 1, part.kind);
      componentTexts_.Put(component, 2, name);
    }
    return component;
  }

  static void AddRow(CInsert& rows, const SPlace& place, std::int64_t component,
                     std::int64_t item) {
    rows.Add(place.sgd, place.floor, component, place.spec, place.category, place.attr,
             place.sys_code, item);
  }

  /// The items that the bill counts itself, then quotas: as many rows as the part has items.
  void WriteBill(const SPart& part, const SPartIds& ids, const SSizeIds& sizeIds,
                 const SPlace& place, std::int64_t component, const std::vector<SItemIds>& items) {
    const auto own = static_cast<std::size_t>(part.bill.ownItems);
    for (std::size_t row = 0; row < items.size(); ++row) {
      const bool isBill = row < own;
      const std::size_t item = isBill ? row : row - own;
      qdDe_.Add(isBill ? 1 : 0, place.sgd, place.floor, component, place.spec, place.category,
                place.attr, place.sys_code, items[item].item, ids.bill,
                isBill ? ids.ownItems[item] : sizeIds.quotas[item]);
    }
  }

  const CDatabase& database_;
  std::int64_t rows_;
  std::vector<SFloor> floors_;
  std::vector<SSystem> systems_;
  std::vector<SPartIds> parts_;

  CDictionary attrs_;
  CDictionary quotas_;
  CDictionary fittings_;
  CInsert components_;
  CInsert componentTexts_;
  CInsert items_;
  CInsert detailItems_;
  CInsert hz_;
  CInsert gl_;
  CInsert cg_;
  CInsert detail_;
  CInsert pj_;
  CInsert qdDe_;

  CRandom random_{20240601};
  CTurns roomTurns_{EZone::kRooms};
  CTurns plantTurns_{EZone::kPlant};
  std::size_t circuits_ = 0;
};

}  // namespace

void WriteContent(const CDatabase& database, std::int64_t rows) {
  CProjectWriter(database, rows).Write();
}

}  // namespace demo
