#include "model/special_project.h"

#include <map>
#include <string>
#include <vector>

#include "model/model_texts.h"

namespace tally_model {
namespace {

struct SSpecialKind {
  std::wstring spec;
  std::wstring category;
  std::wstring kind;
  Texts items;
};

/// What a table is drawn from.
struct SSpecialPools {
  std::vector<SSpecialKind> kinds;
  Texts lines;  ///< of attributes
};

const Texts kPaintedPipe = {L"外表面积", L"外表面积", L"管道长度"};
const Texts kPaintedSupport = {L"刷油面积", L"刷油面积", L"构件数量", L"构件重量"};
const SSpecialPools kPaint = {
    {{L"给排水", L"管道", L"给水管", kPaintedPipe},
     {L"给排水", L"管道", L"2回路1", kPaintedPipe},
     {L"给排水", L"BIM支架", L"支架", kPaintedSupport},
     {L"暖通", L"水管", L"冷水管", kPaintedPipe},
     {L"暖通", L"BIM支架", L"管卡", kPaintedSupport},
     {L"消防", L"管网", L"喷淋管", kPaintedPipe}},
    {L"管道刷油:红丹漆,2;银粉漆,1\n支架刷油:红丹漆,1", L"支架刷油:银粉漆,11\n管道刷油:银粉漆,1"}};

const Texts kDuct = {L"展开面积", L"展开面积", L"风管长度"};
const SSpecialPools kPlates = {{{L"暖通", L"风管", L"矩形风管", kDuct},
                                {L"暖通", L"风管", L"圆形风管", kDuct},
                                {L"暖通", L"风管", L"柔性风管", kDuct},
                                {L"暖通", L"BIM附件", L"风管套管", kDuct},
                                {L"暖通", L"BIM附件", L"套管", kDuct}},
                               {L"风管材质:镀锌钢板\n风管壁厚H(mm):10", L"板材厚度:2"}};

const Texts kInsulatedPipe = {L"绝热保温体积", L"绝热保温体积", L"管道长度", L"外表面积"};
const Texts kInsulatedTank = {L"保温体积", L"构件数量"};
const SSpecialPools kInsulation = {
    {{L"给排水", L"管道", L"给水管", kInsulatedPipe},
     {L"给排水", L"管道", L"水箱", kInsulatedPipe},
     {L"给排水", L"设备", L"水箱", kInsulatedTank},
     {L"暖通", L"水管", L"冷水", kInsulatedPipe},
     {L"暖通", L"风管", L"矩形风管", {L"风管保温体积", L"风管保温体积", L"展开面积"}},
     {L"暖通", L"水暖设备", L"水箱", kInsulatedTank},
     {L"消防", L"管网", L"喷淋管", kInsulatedPipe}},
    {L"保温材料:岩棉\n保温厚度:30", L"保温厚度:30mm"}};

const SSpecialPools& PoolsOf(Report::EReportType type) {
  switch (type) {
    case Report::ReportBrushPaint:
      return kPaint;
    case Report::ReportDuctH:
      return kPlates;
    default:
      return kInsulation;
  }
}

/// Another name for most of the disciplines, everywhere the same.
void ReplaceSpecs(CRandom& random, SModelProject& project, const SSpecialPools& pools) {
  std::map<std::wstring, std::wstring> names;
  for (std::wstring& spec : project.pools.specs) {
    if (!names.contains(spec)) {
      const bool other = random.Chance(85);
      const std::wstring name = random.Pick(pools.kinds).spec;
      names[spec] = other ? name : spec;
    }
  }
  for (std::wstring& spec : project.pools.specs) {
    spec = names[spec];
  }
  for (KorDMRec::SKorDMSpecRec& record : project.records.detail.specs) {
    record.name = names[record.name];
  }
  for (KorDMRec::SKorDMAllSmallIndexRec& record : project.records.smallIndex) {
    record.spec = names[record.spec];
  }
  for (KorDMRec::SKorDMAllSysCodeRec& record : project.records.sysCodes) {
    record.spec = names[record.spec];
  }
}

/// Mostly kinds of the project's disciplines; they take over the numbers of those they replace.
void ReplaceCategories(CRandom& random, SModelProject& project, const SSpecialPools& pools) {
  std::vector<SSpecialKind> kinds;
  for (const SSpecialKind& kind : pools.kinds) {
    for (const std::wstring& spec : project.pools.specs) {
      if (spec == kind.spec) {
        kinds.push_back(kind);
      }
    }
  }
  for (KorDMRec::SKorDMCategoryRec& record : project.pools.categories) {
    if (kinds.empty() || random.Chance(15)) {
      continue;
    }
    const std::wstring oldPath = record.category + L"\\" + record.kind;
    const SSpecialKind kind = random.Pick(kinds);
    record.category = kind.category;
    record.kind = kind.kind;
    for (KorDMRec::SKorDMAllSmallIndexRec& numbered : project.records.smallIndex) {
      if (numbered.path == oldPath) {
        numbered.bigCategory = record.category;
        numbered.path = record.category + L"\\" + record.kind;
      }
    }
  }
  project.records.detail.categories = project.pools.categories;
}

/// Mostly items of the row's kind; a row with an index outside its vector stays.
void ReplaceItems(CRandom& random, KorDMRec::SKorDMDetailResultData& data,
                  const SSpecialPools& pools) {
  for (const KorDMRec::SKorDMResultRow& row : data.rows) {
    const auto category = static_cast<std::size_t>(row.category);
    const auto item = static_cast<std::size_t>(row.calItem);
    if (category >= data.categories.size() || item >= data.calItems.size() || random.Chance(15)) {
      continue;
    }
    for (const SSpecialKind& kind : pools.kinds) {
      if (kind.category == data.categories[category].category) {
        data.calItems[item].name = random.Pick(kind.items);
      }
    }
  }
}

void AddLines(CRandom& random, KorDMRec::SKorDMDetailResultData& data, const SSpecialPools& pools) {
  for (KorDMRec::SKorDMAttrRec& record : data.attrs) {
    if (random.Chance(50)) {
      record.value += L"\n" + random.Pick(pools.lines);
    }
  }
}

}  // namespace

SModelProject MakeSpecialProject(std::uint64_t seed, Report::EReportType type) {
  SModelProject project = MakeRandomProject(seed);
  const SSpecialPools& pools = PoolsOf(type);
  CRandom random(seed * 3 + 1);
  ReplaceSpecs(random, project, pools);
  ReplaceCategories(random, project, pools);
  ReplaceItems(random, project.records.detail, pools);
  AddLines(random, project.records.detail, pools);
  return project;
}

}  // namespace tally_model
