#include "model/random_project.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "model/model_tables.h"
#include "model/model_texts.h"
#include "platform/portable/utf8_text.h"

namespace tally_model {
namespace {

// Where the wide pools begin ------------------------------------------------------------------

const Texts kSpecs = {L"给排水", L"给排水", L"电气", L"暖通", L"暖通",
                      L"消防",   L"弱电",   L"建筑", L"",     L"@P"};

struct SKnownKind {
  const wchar_t* spec;  ///< a discipline that the fixed tables know it in
  const wchar_t* category;
  const wchar_t* kind;
};

constexpr SKnownKind kKinds[] = {
    {L"给排水", L"管道", L"给水管"},
    {L"给排水", L"管道", L"排水管"},
    {L"给排水", L"管道", L""},
    {L"给排水", L"阀门法兰", L"法兰"},
    {L"给排水", L"阀门法兰", L"阀门"},
    {L"给排水", L"设备", L"水箱"},
    {L"给排水", L"零星构件", L"管道沟槽"},
    {L"给排水", L"BIM支架", L"管卡"},
    {L"给排水", L"BIM支架", L"支架"},
    {L"电气", L"管线", L"导管"},
    {L"电气", L"管线", L"软管"},
    {L"电气", L"管线", L"电线"},
    {L"电气", L"电缆桥架", L"桥架"},
    {L"电气", L"电缆桥架", L"电缆"},
    {L"电气", L"防雷接地", L"接地母线"},
    {L"暖通", L"风管", L"矩形风管"},
    {L"暖通", L"风管", L"柔性风管"},
    {L"暖通", L"水管", L"冷水管"},
    {L"暖通", L"BIM附件", L"风管套管"},
    {L"暖通", L"水暖设备", L"水箱"},
    {L"消防", L"管网", L"喷淋管"},
    {L"消防", L"喷头", L"喷头"},
    {L"消防", L"储存装置", L"水箱"},
    {L"弱电", L"线槽桥架", L"线槽"},
    {L"弱电", L"穿管引线", L"配线"},
    {L"弱电", L"箱柜", L"箱"},
    {L"建筑", L"风管", L"风管"},
    {L"", L"", L""},
    {L"", L"管", L"@A"},
    {L"", L"a\\b", L"c"},
};

const Texts kItemNames = {
    L"管道长度", L"管道长度",     L"构件数量",     L"构件长度", L"展开面积", L"外表面积",
    L"刷油面积", L"绝热保温体积", L"风管保温体积", L"保温体积", L"风管长度", L"支架",
    L"",         L"@CI",          L"保温",         L"工程量",   L"A 1",      L"A1"};
const Texts kSpecialItems = {L"外表面积",     L"刷油面积", L"展开面积", L"绝热保温体积",
                             L"风管保温体积", L"保温体积", L"风管长度", L"构件数量"};
const Texts kUnits = {L"m", L"m", L"m", L"m2", L"个", L"", L"@F", L"M"};

const Texts kSizes = {L"DN20",       L"DN100",     L"DN 100",
                      L"DN020",      L"DN20.0",    L"DN20.",
                      L"1",          L"1.0",       L"01",
                      L"1..5",       L"",          L"@A",
                      L"$",          L" ",         L"塑料管",
                      L"紫铜管DN15", L"紫铜管DN9", L"\u4e02管",
                      L"BV2.5",      L"BV10",      L"b",
                      L"B",          L"机械三通",  L"弯头（沟槽式）",
                      L"\U0001F4A7", L"é1",        L"99999999999999999999"};
/// Lines of an attribute; of each group an attribute may have one or none.
const std::vector<Texts> kAttrLines = {
    {L"连接方式:丝接", L"连接方式:", L"前缀 连接方式:焊接", L"DN25", L""},
    {L"材质:PVC", L"材质:", L"样式:国标", L"样式"},
    {L"管道刷油:红丹漆,2;银粉漆,1", L"管道刷油:红丹漆,1", L"管道刷油:调和漆,12",
     L"管道刷油:坏;银粉漆,0;a,1,2;沥青,2x", L"管道刷油:银粉漆,1000;红丹漆,1", L"管道刷油"},
    {L"支架刷油:红丹漆,3", L"支架刷油:银粉漆,1;红丹漆,1", L"支架刷油"},
    {L"保温材料:岩棉", L"保温材料", L"保温材料:玻璃棉"},
    {L"保温厚度:30", L"保温厚度:50", L"保温厚度:0", L"保温厚度:30.0", L"保温厚度:5e1mm",
     L"保温厚度:厚"},
    {L"风管材质:镀锌钢板", L"风管材质:不锈钢", L"套管材质:焊接钢管"},
    {L"风管壁厚H(mm):0.5", L"风管壁厚H(mm):1.2", L"板材厚度:4", L"板材厚度"}};

const Texts kFloorNames = {
    L"1",           L"2",    L"3",  L"-1",   L"0",    L"1.5",      L"2,5",     L"2，4", L"3/5",
    L"2／4/",       L"屋面", L"",   L"01",   L"1层",  L"2~5",      L"3,5",     L"@F",   L" 2",
    L"99999999999", L"1e1",  L"10", L"-100", L"-2,1", L"30000000", L"40000000"};
const Texts kFloorTexts = {
    L"1",       L"2",     L"2,5", L"5,2",   L"2，4",         L"3/5",
    L"1／2／9", L"",      L",3",  L"/3",    L",2/3",         L"/2,4",
    L"a,b",     L"2//4/", L"3,7", L"2,3,9", L"1,2147483647", L"-2147483648,99999999999",
    L"-1",      L"2~5",   L"屋面"};

const Texts kLevelNames = {L"A",  L"A", L"B", L"B",   L"1",    L"10",       L"2",  L"系统甲",
                           L"*A", L"",  L"*", L"@S1", L"一区", L"一区1@@1", L"A&B"};
const Texts kSections = {L"一区", L"一区", L"二区", L"", L"@P"};
const Texts kComponents = {L"c1", L"c2", L"c3", L"", L"c$1", L"@A"};
const Texts kExpressions = {L"", L"", L"1+2", L"3*4", L"2-1", L"(1+2)*3", L"@L", L"%s%d", L"a"};
const Texts kRemarks = {L"", L"", L"给水", L"(备注)", L"@S2"};

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const std::vector<double> kQuantities = {
    0,       1,        2,      2.5,       -1,         0.1,
    1.0 / 3, -0.0,     3,      -2.5,      1e-7,       1e15,
    1234565, 123456.5, 10,     999999.5,  1e-300,     1e300,
    -1e300,  1e308,    5e-324, kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN()};
/// The first so many of them give sums that a reader can follow.
constexpr int kTameQuantities = 12;

const Texts kCodes = {L"030801001", L"030801002", L"8-1", L"8-10", L"8-2", L"08-2",
                      L"8 - 1",     L"",          L"B@1", L"甲1",  L"乙1"};
const Texts kCodeNames = {L"镀锌钢管", L"塑料管", L"", L"@QD", L"阀门"};
const Texts kLibraries = {L"L1", L"L1", L"L1", L"L1", L"L1", L"L2", L""};
const Texts kChapterNames = {L"第一章", L"第二章", L"", L"@C", L"其他章"};

// Numbers that sort, with few values so that they repeat.
const std::vector<int> kSortIds = {1, 1, 2, 3, 0, -1, 7, 1000000, 2147483647, -2147483647 - 1};

// ---------------------------------------------------------------------------------------------

std::wstring Joined(const Texts& parts, const wchar_t* separator) {
  std::wstring joined;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    joined += i == 0 ? L"" : separator;
    joined += parts[i];
  }
  return joined;
}

/// The names of a system code; the code without any has one empty name.
Texts Names(const std::wstring& sysCode) {
  return sysCode.empty() ? Texts(1) : SplitText(sysCode, L'\\');
}

/// Draws the pools of one project.
class CPoolMaker {
 public:
  CPoolMaker(CRandom& random, SModelPools& pools) : random_(random), pools_(pools) {}

  void Make() {
    pools_.specs = random_.PickSome(kSpecs, random_.Between(1, 3));
    MakeCategories();
    MakeFloors();
    MakeAttrs();
    MakeSysCodes();
    pools_.sections = random_.PickSome(kSections, random_.Between(1, 3));
    pools_.components = random_.PickSome(kComponents, random_.Between(1, 4));
    MakeItemNames();
    pools_.units = random_.PickSome(kUnits, random_.Between(1, 3));
    pools_.expressions = random_.PickSome(kExpressions, random_.Between(1, 4));
    MakeQuantities();
    if (random_.Chance(20)) {
      MakeClash();
    }
    MakeQdDe();
  }

 private:
  void MakeCategories() {
    const int count = random_.Between(2, 6);
    for (int i = 0; i < count; ++i) {
      // Mostly kinds that the tables know in one of the disciplines.
      const bool known = random_.Chance(85);
      const std::wstring spec = random_.Pick(pools_.specs);
      std::vector<SKnownKind> kinds;
      for (const SKnownKind& kind : kKinds) {
        if (!known || spec == kind.spec) {
          kinds.push_back(kind);
        }
      }
      if (!kinds.empty()) {
        const SKnownKind kind = random_.Pick(kinds);
        pools_.categories.push_back({0, kind.category, kind.kind});
      }
    }
    if (pools_.categories.empty()) {
      pools_.categories.push_back({0, L"管道", L"给水管"});
    }
  }

  void MakeFloors() {
    const int count = random_.Between(1, 6);
    for (int i = 0; i < count; ++i) {
      const std::wstring name = random_.Pick(kFloorNames);
      // A floor's own name is an expression as well.
      const bool other = random_.Chance(50);
      pools_.floors.push_back({0, name, other ? random_.Pick(kFloorTexts) : name});
    }
  }

  void MakeAttrs() {
    const int count = random_.Between(2, 8);
    for (int i = 0; i < count; ++i) {
      std::wstring name = random_.Pick(kSizes);
      if (random_.Chance(15)) {
        name += L"\n" + AttrLines(30);
      }
      // Many attributes with few lines, and some with most.
      const bool few = random_.Chance(30);
      pools_.attrs.push_back({0, name, AttrLines(few ? 15 : 65)});
    }
  }

  std::wstring AttrLines(int percent) {
    Texts lines;
    for (const Texts& group : kAttrLines) {
      if (random_.Chance(percent)) {
        lines.push_back(random_.Pick(group));
      }
    }
    return Joined(lines, L"\n");
  }

  void MakeSysCodes() {
    const Texts names = random_.PickSome(kLevelNames, random_.Between(1, 5));
    const int count = random_.Between(1, 8);
    const std::vector<int> depths = {0, 1, 1, 2, 2, 3, 3, 3, 4, 5};
    for (int i = 0; i < count; ++i) {
      const int depth = random_.Pick(depths);
      pools_.sysCodes.push_back(Joined(random_.PickSome(names, depth), L"\\"));
    }
  }

  void MakeItemNames() {
    pools_.itemNames = random_.PickSome(kItemNames, random_.Between(1, 4));
    for (const KorDMRec::SKorDMCategoryRec& category : pools_.categories) {
      const std::wstring spec = random_.Pick(pools_.specs);
      const std::wstring main = MainCalItem(spec, category.category, category.kind);
      if (random_.Chance(80)) {
        pools_.itemNames.push_back(main);
      }
    }
  }

  void MakeQuantities() {
    const int count = random_.Between(1, 6);
    const bool tame = random_.Chance(70);
    for (int i = 0; i < count; ++i) {
      const int all = static_cast<int>(kQuantities.size());
      const int at = random_.Below(tame ? kTameQuantities : all);
      pools_.quantities.push_back(kQuantities[static_cast<std::size_t>(at)]);
    }
  }

  /// A system code that has the key of a result beside it.
  void MakeClash() {
    const std::wstring code = Joined(random_.PickSome(kLevelNames, 3), L"\\");
    std::wstring key = random_.Pick(pools_.sections);
    key += random_.Pick(pools_.floors).floorText + L"@";
    key += random_.Pick(pools_.expressions) + L"@";
    key += NumberText(random_.Pick(pools_.quantities));
    pools_.sysCodes.push_back(code);
    pools_.sysCodes.push_back(code + L"\\" + key);
  }

  KorDMRec::SKorDMQdDeRec QdDeItem() {
    KorDMRec::SKorDMQdDeRec item;
    item.code = random_.Pick(kCodes);
    item.name = random_.Pick(kCodeNames);
    item.unit = random_.Pick(kUnits);
    item.library = random_.Pick(kLibraries);
    return item;
  }

  void MakeQdDe() {
    const int bills = random_.Between(1, 5);
    for (int i = 0; i < bills; ++i) {
      pools_.qdItems.push_back(QdDeItem());
    }
    const int own = random_.Between(1, 2);
    for (int i = 0; i < own; ++i) {
      const std::wstring unit = random_.Pick(kUnits);
      const std::wstring library = random_.Pick(kLibraries);
      pools_.deItems.push_back({0, L"", L"", unit, library});
    }
    const int quotas = random_.Between(1, 5);
    for (int i = 0; i < quotas; ++i) {
      pools_.deItems.push_back(QdDeItem());
    }
  }

  CRandom& random_;
  SModelPools& pools_;
};

/// Fills the records of a project from its pools.
class CRecordMaker {
 public:
  CRecordMaker(CRandom& random, SModelProject& project)
      : random_(random), pools_(project.pools), records_(project.records) {}

  void Make() {
    MakeTrees();
    MakeSet(records_.hz);
    MakeSet(records_.gl);
    MakeSet(records_.cg);
    MakeSet(records_.detail);
    MakeSet(records_.pj);
    MakeSet(records_.qdDe);
  }

 private:
  void MakeTrees() {
    for (const std::wstring& spec : pools_.specs) {
      for (const KorDMRec::SKorDMCategoryRec& category : pools_.categories) {
        if (random_.Chance(75)) {
          const std::wstring path = category.category + L"\\" + category.kind;
          records_.smallIndex.push_back({SortId(), spec, category.category, path});
        }
      }
      for (const std::wstring& sysCode : pools_.sysCodes) {
        NumberSysCode(spec, sysCode);
      }
    }
    for (const KorDMRec::SKorDMFloorRec& floor : pools_.floors) {
      if (random_.Chance(80)) {
        records_.floors.push_back(floor);
      }
    }
    records_.sgdNames = pools_.sections;
  }

  /// Numbers a code and those above it; some stay without a number.
  void NumberSysCode(const std::wstring& spec, const std::wstring& sysCode) {
    Texts names = Names(sysCode);
    while (!names.empty()) {
      if (random_.Chance(75)) {
        const int sortId = SortId();
        records_.sysCodes.push_back({sortId, spec, Joined(names, L"&"), random_.Pick(kRemarks)});
      }
      names.pop_back();
    }
  }

  /// Mostly a number of its own.
  int SortId() {
    const bool repeated = random_.Chance(30);
    return repeated ? random_.Pick(kSortIds) : random_.Between(1, 40);
  }

  /// Often the main calculation item of the kind, or one that a special table asks for.
  std::wstring ItemName(const std::wstring& spec, const KorDMRec::SKorDMCategoryRec& category) {
    if (random_.Chance(20)) {
      return random_.Pick(kSpecialItems);
    }
    const bool isMain = random_.Chance(40);
    return isMain ? MainCalItem(spec, category.category, category.kind)
                  : random_.Pick(pools_.itemNames);
  }

  void FillItem(KorDMRec::SKorDMCalItemRec& item) {
    item.text3 = random_.Chance(20) ? L"三" : L"";
    item.text4 = random_.Chance(20) ? L"@F" : L"";
    item.quantity = random_.Pick(pools_.quantities);
    item.expression = random_.Pick(pools_.expressions);
  }

  void FillItem(KorDMRec::SKorDMCalItemDetailQRec& item) {
    for (double* quantity : {&item.quantity1, &item.quantity2, &item.quantity3, &item.quantity4}) {
      *quantity = random_.Pick(pools_.quantities);
    }
    item.expression = random_.Pick(pools_.expressions);
  }

  void FillItem(KorDMRec::SKorDMPjCalItemRec& item) {
    item.text1 = random_.Pick(pools_.units);
    item.value = random_.Below(3);
  }

  template <class TRecord>
  int Index(const std::vector<TRecord>& records) {
    return random_.Below(static_cast<int>(records.size()));
  }

  template <class TRecord>
  static std::vector<TRecord> Named(const Texts& names) {
    std::vector<TRecord> records;
    for (const std::wstring& name : names) {
      TRecord record;
      record.name = name;
      records.push_back(record);
    }
    return records;
  }

  template <class TData>
  void MakeDictionaries(TData& data) const {
    data.sgds = Named<KorDMRec::SKorDMSgdRec>(pools_.sections);
    data.floors = pools_.floors;
    data.specs = Named<KorDMRec::SKorDMSpecRec>(pools_.specs);
    data.categories = pools_.categories;
    data.attrs = pools_.attrs;
    data.sysCodes = Named<KorDMRec::SKorDMSysCodeRec>(pools_.sysCodes);
    data.components = Named<KorDMRec::SKorDMComponentRec>(pools_.components);
  }

  /// A row's calculation item: a new one, now and then one that is there already.
  template <class TData>
  int MakeItem(TData& data, const std::wstring& name) {
    if (!data.calItems.empty() && random_.Chance(20)) {
      return Index(data.calItems);
    }
    auto& item = data.calItems.emplace_back();
    item.name = name;
    item.unit = random_.Pick(pools_.units);
    FillItem(item);
    return static_cast<int>(data.calItems.size()) - 1;
  }

  template <class TData>
  void MakeSet(TData& data) {
    MakeDictionaries(data);
    MakeItems(data);
    const int count = random_.Between(5, 80);
    for (int i = 0; i < count; ++i) {
      auto& row = data.rows.emplace_back();
      row.sgd = Index(data.sgds);
      row.floor = Index(data.floors);
      row.component = Index(data.components);
      row.spec = Index(data.specs);
      row.category = Index(data.categories);
      row.attr = Index(data.attrs);
      row.sysCode = Index(data.sysCodes);
      const std::wstring name = ItemName(data.specs[static_cast<std::size_t>(row.spec)].name,
                                         data.categories[static_cast<std::size_t>(row.category)]);
      row.calItem = MakeItem(data, name);
      ChooseItems(row);
    }
    if (random_.Chance(1)) {
      auto& row = data.rows[static_cast<std::size_t>(Index(data.rows))];
      BreakIndex(row);
    }
  }

  // Bill and quota items; the other sets have none.
  template <class TData>
  static void MakeItems(TData& /*data*/) {}
  void MakeItems(KorDMRec::SKorDMQdDeResultData& data) const {
    data.qdItems = pools_.qdItems;
    data.deItems = pools_.deItems;
  }
  static void ChooseItems(const KorDMRec::SKorDMResultRow& /*row*/) {}
  /// A bill's own row has mostly the item without texts, and a quota's row mostly another one.
  void ChooseItems(KorDMRec::SKorDMQdDeRow& row) {
    row.isQd = random_.Chance(50);
    row.qdItem = Index(pools_.qdItems);
    const bool any = random_.Chance(25);
    row.deItem = row.isQd && !any ? 0 : Index(pools_.deItems);
  }

  template <class TRow>
  void BreakIndex(TRow& row) {
    const std::vector<int*> indices = Indices(row);
    const std::vector<int> bad = {-1, 1000, 2147483647, -2147483647 - 1};
    int* index = random_.Pick(indices);
    *index = random_.Pick(bad);
  }
  static std::vector<int*> Indices(KorDMRec::SKorDMResultRow& row) {
    return {&row.sgd,      &row.floor, &row.component, &row.spec,
            &row.category, &row.attr,  &row.sysCode,   &row.calItem};
  }
  static std::vector<int*> Indices(KorDMRec::SKorDMQdDeRow& row) {
    return {&row.sgd,  &row.floor,   &row.component, &row.spec,   &row.category,
            &row.attr, &row.sysCode, &row.calItem,   &row.qdItem, &row.deItem};
  }

  CRandom& random_;
  const SModelPools& pools_;
  tally_test::SProjectRecords& records_;
};

tally_test::SFakeChapter RandomChapter(CRandom& random, const std::wstring& name) {
  tally_test::SFakeChapter chapter;
  if (random.Chance(85)) {
    chapter.number = random.Between(1, 4);
  }
  chapter.text = name;
  return chapter;
}

void MakeSettings(CRandom& random, SModelProject& project) {
  project.isQdMode = random.Chance(70);
  const bool otherPage = random.Chance(20);
  const std::vector<int> pages = {65001, 1252, 54936};
  project.codePage = otherPage ? random.Pick(pages) : 936;
  for (std::wstring* library : {&project.deCode, &project.qdCode, &project.qdDeCode}) {
    const bool usual = random.Chance(80);
    *library = usual ? L"L1" : random.Pick(kLibraries);
  }
  project.qdDeMode = random.Between(0, 2);
  for (const std::wstring& code : kCodes) {
    if (random.Chance(40)) {
      Texts& cells = project.marks[code];
      const int marks = random.Between(0, 3);
      for (int i = 0; i < marks; ++i) {
        cells.push_back(random.Pick(kCodeNames));
        cells.push_back(random.Pick(kSizes));
        cells.push_back(L"unread");
      }
    }
    if (random.Chance(75)) {
      const std::wstring name = random.Pick(kChapterNames);
      project.billChapters[code] = RandomChapter(random, name);
    }
    if (random.Chance(75)) {
      std::wstring path = random.Pick(kChapterNames);
      path += random.Chance(80) ? L"\\节\\目" : L"";
      project.quotaChapters[code] = RandomChapter(random, path);
    }
  }
}

// Requests ------------------------------------------------------------------------------------

Report::SFloorPair RandomFloorPair(CRandom& random, const SModelPools& pools) {
  const KorDMRec::SKorDMFloorRec& floor = random.Pick(pools.floors);
  const bool known = random.Chance(90);
  Report::SFloorPair pair;
  pair.drawingFloor = known ? floor.name : random.Pick(kFloorNames);
  switch (random.Below(4)) {
    case 0:
      pair.floor = pair.drawingFloor;
      break;
    case 1:
      pair.floor = floor.floorText;
      break;
    case 2:
      pair.floor = random.Pick(pools.floors).name;
      break;
    default:
      pair.floor = random.Pick(kFloorTexts);
  }
  // The reports differ in which of the two they look up.
  if (random.Chance(40)) {
    std::swap(pair.drawingFloor, pair.floor);
  }
  return pair;
}

std::wstring RandomCategoryChoice(CRandom& random, const SModelPools& pools) {
  const KorDMRec::SKorDMCategoryRec& category = random.Pick(pools.categories);
  const std::wstring path = category.category + L"\\" + category.kind;
  switch (random.Below(6)) {
    case 0:
    case 1:
      return category.category;
    case 2:
    case 3:
      return path;
    case 4:
      return category.category.substr(0, 1);
    default:
      return random.Chance(50) ? path + L"\\x" : L"";
  }
}

std::wstring RandomSysCodeChoice(CRandom& random, const SModelPools& pools) {
  const std::wstring code = random.Pick(pools.sysCodes);
  switch (random.Below(5)) {
    case 0:
      return code.substr(0, code.find(L'\\'));
    case 1: {
      const Texts names = Names(code);
      return code + L"\\*" + names.back();
    }
    case 2:
      return random.Pick(kLevelNames);
    default:
      return code;
  }
}

Report::SNewCondition RandomCondition(CRandom& random, const SModelPools& pools) {
  Report::SNewCondition condition;
  if (random.Chance(35)) {
    const int count = random.Between(1, 4);
    for (int i = 0; i < count; ++i) {
      condition.floors.push_back(RandomFloorPair(random, pools));
    }
  }
  if (random.Chance(30)) {
    const int count = random.Between(1, 3);
    for (int i = 0; i < count; ++i) {
      condition.categories.insert(RandomCategoryChoice(random, pools));
    }
  }
  if (random.Chance(30)) {
    const int count = random.Between(1, 4);
    for (int i = 0; i < count; ++i) {
      condition.sysCodes.push_back(RandomSysCodeChoice(random, pools));
    }
  }
  // What a report must not look at.
  condition.allFloors = random.Chance(50);
  condition.curCategory = random.Pick(pools.categories).category;
  condition.curSysCode = random.Pick(pools.sysCodes);
  return condition;
}

int RandomLevel(CRandom& random) {
  const std::vector<int> odd = {-1, 8, 9, 100, -2147483647 - 1, 2147483647};
  const bool inRange = random.Chance(93);
  return inRange ? random.Between(0, 7) : random.Pick(odd);
}

std::string Quoted(const std::wstring& text) {
  std::string quoted = "\"";
  for (const char c : Utf8FromWide(text)) {
    quoted += c == '\n' ? std::string("\\n") : std::string(1, c);
  }
  return quoted + "\"";
}

template <class TTexts>
std::string Listed(const TTexts& texts) {
  std::string listed = "[";
  for (const std::wstring& text : texts) {
    listed += (listed.size() > 1 ? ", " : "") + Quoted(text);
  }
  return listed + "]";
}

}  // namespace

std::uint64_t CRandom::Next() {
  // SplitMix64.
  state_ += 0x9e3779b97f4a7c15U;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
  return mixed ^ (mixed >> 31U);
}

int CRandom::Below(int count) {
  return static_cast<int>(Next() % static_cast<std::uint64_t>(count));
}

int CRandom::Between(int first, int last) {
  return first + Below(last - first + 1);
}

bool CRandom::Chance(int percent) {
  return Below(100) < percent;
}

SModelProject MakeRandomProject(std::uint64_t seed) {
  SModelProject project;
  project.seed = seed;
  CRandom random(seed);
  CPoolMaker(random, project.pools).Make();
  MakeSettings(random, project);
  CRecordMaker(random, project).Make();
  return project;
}

CRandom RequestRandom(std::uint64_t seed) {
  return CRandom(~seed);
}

SModelRequest MakeRandomRequest(CRandom& random, const SModelProject& project,
                                Report::EReportType type) {
  SModelRequest request;
  const bool known = random.Chance(95);
  request.spec = known ? random.Pick(project.pools.specs) : random.Pick(kSpecs);
  request.condition = RandomCondition(random, project.pools);
  request.level = RandomLevel(random);
  const std::vector<int> bySgd = {0, 0, 0, 1, 1, 2, -1};
  request.bySgd = random.Pick(bySgd);
  request.dispSgd = random.PickSome(project.pools.sections, random.Below(4));
  request.isBySgd = random.Chance(30);
  if (type == Report::ReportPipeJRBW) {
    const std::vector<Report::EReportType> totals = {Report::ReportPipeJRBW, Report::ReportXhlHz};
    request.totalType = random.Pick(totals);
  }
  request.divided = type == Report::ReportSysJss && random.Chance(50);
  request.lineSortDown = random.Chance(50);
  return request;
}

std::string Describe(const SModelRequest& request) {
  std::string floors;
  for (const Report::SFloorPair& pair : request.condition.floors) {
    floors += (floors.empty() ? "" : ", ") + Quoted(pair.drawingFloor) + ":" + Quoted(pair.floor);
  }
  return "spec " + Quoted(request.spec) + ", floors [" + floors + "], categories " +
         Listed(request.condition.categories) + ", sysCodes " + Listed(request.condition.sysCodes) +
         ", level " + std::to_string(request.level) + ", bySgd " + std::to_string(request.bySgd) +
         ", totalType " + std::to_string(request.totalType) + ", dispSgd " +
         Listed(request.dispSgd) + ", isBySgd " + std::to_string(request.isBySgd) + ", divided " +
         std::to_string(request.divided) + ", lineSortDown " + std::to_string(request.lineSortDown);
}

}  // namespace tally_model
