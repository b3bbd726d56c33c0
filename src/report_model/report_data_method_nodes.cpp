// The node look-ups of CReportDataMethod.
#include <cstddef>
#include <limits>
#include <memory>
#include <utility>

#include "report_model/report_data_method.h"
#include "report_model/sys_code_path.h"
#include "result_store/report_type_data.h"
#include "result_store/tally_data_mng.h"

namespace {

template <class TNode, class TFill>
TNode* Make(Report::NodeMap& children, Report::NodeMap::const_iterator place, TFill&& fill) {
  auto node = std::make_unique<TNode>();
  fill(*node);
  TNode* made = node.get();
  children.insert(place, std::move(node));
  return made;
}

// The way in which nodes come into being: the child under `key` if it is of the wanted class,
// null if it is of another, and a new one, filled by `fill`, if there is none.
template <class TNode, class TFill>
TNode* FindOrMake(Report::NodeMap& children, const CNodeKey& key, TFill&& fill) {
  const auto at = children.lower_bound(key);
  if (at != children.end() && at.Node()->GetFiledKey().Compare(key) == 0) {
    return NodeAs<TNode>(at.Node().get());
  }
  return Make<TNode>(children, at, fill);
}

void FillIdentity(SResultIdentity& result, const std::wstring& sgdName,
                  const KorDMRec::SKorDMFloorRec& floor) {
  result.sgdName = sgdName;
  result.floorText = floor.floorText;
  result.floorCount = CReportDataMethod::GetFloorCount(floor.floorText);
}

template <class TResult, class TItem, class TFill>
TResult* FindOrMakeResult(Report::NodeMap& children, const std::wstring& sgdName,
                          const KorDMRec::SKorDMFloorRec& floor, const TItem& item,
                          CReportDataMethod::EResultPlace place, TFill&& fillQuantity) {
  const auto fill = [&](TResult& node) {
    FillIdentity(node, sgdName, floor);
    fillQuantity(node);
  };
  return place == CReportDataMethod::EResultPlace::BehindAll
             ? Make<TResult>(children, children.end(), fill)
             : FindOrMake<TResult>(children, CReportDataMethod::GetResultKey(sgdName, floor, item),
                                   fill);
}

template <class TResult>
TResult* WithComponent(TResult* result, const KorDMRec::SKorDMComponentRec& component) {
  if (result != nullptr) {
    result->components.push_back(component.name);
  }
  return result;
}

template <class TRecord>
CReportCalItem* FindOrMakeCalItem(Report::NodeMap& children, const TRecord& record) {
  return FindOrMake<CReportCalItem>(children, {record.name, L"@", record.unit},
                                    [&](CReportCalItem& node) {
                                      node.name = record.name;
                                      node.unit = record.unit;
                                      if constexpr (requires { record.text3; }) {
                                        node.text3 = record.text3;
                                        node.text4 = record.text4;
                                      }
                                    });
}

// The two groups of three texts: duct wall thickness and insulation.
template <class TNode>
TNode* FindOrMakeTriple(Report::NodeMap& children, const std::wstring& text1,
                        const std::wstring& text2, const std::wstring& text3) {
  return FindOrMake<TNode>(children, {text1, text2, text3}, [&](TNode& node) {
    node.text1 = text1;
    node.text2 = text2;
    node.text3 = text3;
  });
}

CReportAttribute* FindOrMakeAttribute(Report::NodeMap& children, const std::wstring& name,
                                      const std::wstring& value, bool byBoth) {
  const CNodeKey key = byBoth ? CNodeKey{name, value} : CNodeKey{name};
  return FindOrMake<CReportAttribute>(children, key, [&](CReportAttribute& node) {
    node.filedByBoth = byBoth;
    node.name = name;
    node.value = value;
  });
}

}  // namespace

CReportSpec* CReportDataMethod::GetSpec(Report::NodeMap& children,
                                        const KorDMRec::SKorDMSpecRec& record) {
  return FindOrMake<CReportSpec>(children, {record.name},
                                 [&](CReportSpec& node) { node.name = record.name; });
}

CReportFloor* CReportDataMethod::GetFloor(Report::NodeMap& children,
                                          const KorDMRec::SKorDMFloorRec& record) {
  return FindOrMake<CReportFloor>(children, {record.name}, [&](CReportFloor& node) {
    node.name = record.name;
    node.floorText = record.floorText;
    node.grade = SFloorGrade(record.name);
  });
}

CReportType* CReportDataMethod::GetType(Report::NodeMap& children, const std::wstring& category,
                                        const std::wstring& name) {
  return FindOrMake<CReportType>(children, {name}, [&](CReportType& node) {
    node.category = category;
    node.name = name;
  });
}

CReportType* CReportDataMethod::GetType(Report::NodeMap& children,
                                        const KorDMRec::SKorDMSpecRec& spec,
                                        const KorDMRec::SKorDMCategoryRec& record) {
  return GetType(
      children, record.category + L"\\" + record.kind,
      CReportTypeData::Instance()->GetCategoryType(spec.name, record.category, record.kind));
}

CReportCategory* CReportDataMethod::GetCategory(Report::NodeMap& children, const std::wstring& spec,
                                                const std::wstring& category,
                                                const std::wstring& kind) {
  return FindOrMake<CReportCategory>(children, {category, L"\\", kind}, [&](CReportCategory& node) {
    node.category = category;
    node.kind = kind;
    node.sortId = CTallyDataMng::Instance()->GetCategorySortId(spec, node.GetKey());
  });
}

CReportCategory* CReportDataMethod::GetCategory(Report::NodeMap& children, const std::wstring& spec,
                                                const KorDMRec::SKorDMCategoryRec& record) {
  return GetCategory(children, spec, record.category, record.kind);
}

CReportSysCode* CReportDataMethod::GetSysCodeNode(Report::NodeMap& children,
                                                  const SSysCodeStep& step) {
  return FindOrMake<CReportSysCode>(children, {step.name}, [&](CReportSysCode& node) {
    node.name = step.name;
    node.fullName = step.fullName;
    node.sortId = step.sortId;
    node.remark = step.remark;
  });
}

CReportSysCode* CReportDataMethod::GetSysCodeNode(Report::NodeMap& children,
                                                  const std::wstring& spec,
                                                  const std::wstring& name,
                                                  const std::wstring& fullName) {
  return GetSysCodeNode(children, SSysCodeStep(spec, name, fullName));
}

CReportSysCode* CReportDataMethod::GetSysCode(Report::NodeMap& children,
                                              const std::vector<SSysCodeStep>& path) {
  Report::NodeMap* level = &children;
  CReportSysCode* node = nullptr;
  for (const SSysCodeStep& step : path) {
    node = GetSysCodeNode(*level, step);
    if (node == nullptr) {
      return nullptr;
    }
    level = &node->children;
  }
  return node;
}

CReportSysCode* CReportDataMethod::GetSysCode(Report::NodeMap& children, const std::wstring& spec,
                                              const KorDMRec::SKorDMSysCodeRec& record) {
  return GetSysCode(children, ReadSysCodePath(spec, record.name));
}

CReportAttribute* CReportDataMethod::GetAttribute(Report::NodeMap& children,
                                                  const std::wstring& name,
                                                  const std::wstring& value) {
  return FindOrMakeAttribute(children, name, value, true);
}

CReportAttribute* CReportDataMethod::GetAttribute(Report::NodeMap& children,
                                                  const KorDMRec::SKorDMAttrRec& record) {
  return FindOrMakeAttribute(children, record.name, record.value, false);
}

CReportAttribute* CReportDataMethod::GetPjAttribute(Report::NodeMap& children,
                                                    const std::wstring& spec,
                                                    const std::wstring& category,
                                                    const KorDMRec::SKorDMAttrRec& record) {
  const std::wstring name = GetPipeLineName(record.name, record.value, spec, category);
  return FindOrMakeAttribute(children, name, {}, false);
}

CReportCalItem* CReportDataMethod::GetCalItem(Report::NodeMap& children,
                                              const KorDMRec::SKorDMCalItemRec& record) {
  return FindOrMakeCalItem(children, record);
}

CReportCalItem* CReportDataMethod::GetCalItem(Report::NodeMap& children,
                                              const KorDMRec::SKorDMCalItemDetailQRec& record) {
  return FindOrMakeCalItem(children, record);
}

CReportPjCalItem* CReportDataMethod::GetPjCalItem(Report::NodeMap& children,
                                                  const KorDMRec::SKorDMPjCalItemRec& record) {
  return FindOrMake<CReportPjCalItem>(children, {record.text1, L"@", record.name},
                                      [&](CReportPjCalItem& node) {
                                        node.text1 = record.text1;
                                        node.name = record.name;
                                        node.unit = record.unit;
                                      });
}

CReportResult* CReportDataMethod::GetResult(Report::NodeMap& children, const std::wstring& sgdName,
                                            const KorDMRec::SKorDMFloorRec& floor,
                                            const KorDMRec::SKorDMCalItemRec& item,
                                            EResultPlace place) {
  return FindOrMakeResult<CReportResult>(children, sgdName, floor, item, place,
                                         [&item](CReportResult& node) {
                                           node.expression = item.expression;
                                           node.quantity = item.quantity;
                                         });
}

CReportResultDetail* CReportDataMethod::GetResult(Report::NodeMap& children,
                                                  const std::wstring& sgdName,
                                                  const KorDMRec::SKorDMFloorRec& floor,
                                                  const KorDMRec::SKorDMCalItemDetailQRec& item,
                                                  EResultPlace place) {
  return FindOrMakeResult<CReportResultDetail>(children, sgdName, floor, item, place,
                                               [&item](CReportResultDetail& node) {
                                                 node.expression = item.expression;
                                                 node.quantity1 = item.quantity1;
                                                 node.quantity2 = item.quantity2;
                                                 node.quantity3 = item.quantity3;
                                                 node.quantity4 = item.quantity4;
                                               });
}

CReportResult* CReportDataMethod::GetResult(Report::NodeMap& children, const std::wstring& sgdName,
                                            const KorDMRec::SKorDMFloorRec& floor,
                                            const KorDMRec::SKorDMPjCalItemRec& item,
                                            EResultPlace place) {
  return FindOrMakeResult<CReportResult>(children, sgdName, floor, item, place,
                                         [](CReportResult& node) {
                                           node.quantity = 1;
                                           node.referencesSize = 0;
                                         });
}

CReportResult* CReportDataMethod::GetResult(Report::NodeMap& children, const std::wstring& sgdName,
                                            const KorDMRec::SKorDMFloorRec& floor,
                                            const KorDMRec::SKorDMCalItemRec& item,
                                            const KorDMRec::SKorDMComponentRec& component) {
  return WithComponent(GetResult(children, sgdName, floor, item, EResultPlace::Anywhere),
                       component);
}

CReportResultDetail* CReportDataMethod::GetResultDetail(
    Report::NodeMap& children, const std::wstring& sgdName, const KorDMRec::SKorDMFloorRec& floor,
    const KorDMRec::SKorDMCalItemDetailQRec& item, const KorDMRec::SKorDMComponentRec& component) {
  return WithComponent(GetResult(children, sgdName, floor, item, EResultPlace::Anywhere),
                       component);
}

CReportResult* CReportDataMethod::GetPjResult(Report::NodeMap& children,
                                              const std::wstring& sgdName,
                                              const KorDMRec::SKorDMFloorRec& floor,
                                              const KorDMRec::SKorDMPjCalItemRec& item,
                                              const KorDMRec::SKorDMComponentRec& component) {
  return WithComponent(GetResult(children, sgdName, floor, item, EResultPlace::Anywhere),
                       component);
}

CNodeKey CReportDataMethod::GetResultKey(std::wstring_view sgdName,
                                         const KorDMRec::SKorDMFloorRec& floor,
                                         const KorDMRec::SKorDMCalItemRec& item) {
  return SResultIdentity::FiledKey(sgdName, floor.floorText, item.expression, item.quantity);
}

CNodeKey CReportDataMethod::GetResultKey(std::wstring_view sgdName,
                                         const KorDMRec::SKorDMFloorRec& floor,
                                         const KorDMRec::SKorDMCalItemDetailQRec& item) {
  return SResultIdentity::FiledKey(sgdName, floor.floorText, item.expression, item.quantity1);
}

CNodeKey CReportDataMethod::GetResultKey(std::wstring_view sgdName,
                                         const KorDMRec::SKorDMFloorRec& floor,
                                         const KorDMRec::SKorDMPjCalItemRec& /*item*/) {
  return {sgdName, floor.floorText};
}

CReportBrushPaint* CReportDataMethod::GetBrushPaint(Report::NodeMap& children, int number1,
                                                    int number2, const std::wstring& text1,
                                                    const std::wstring& text2) {
  return FindOrMake<CReportBrushPaint>(children,
                                       CNodeKey().AddInt(number1).AddText(text2).AddInt(number2),
                                       [&](CReportBrushPaint& node) {
                                         node.number1 = number1;
                                         node.number2 = number2;
                                         node.text1 = text1;
                                         node.text2 = text2;
                                       });
}

CReportDuctHType* CReportDataMethod::GetDuctHType(Report::NodeMap& children,
                                                  const std::wstring& text1,
                                                  const std::wstring& text2,
                                                  const std::wstring& text3) {
  return FindOrMakeTriple<CReportDuctHType>(children, text1, text2, text3);
}

CReportPipeJRBW* CReportDataMethod::GetPipeJRBW(Report::NodeMap& children,
                                                const std::wstring& text1,
                                                const std::wstring& text2,
                                                const std::wstring& text3) {
  return FindOrMakeTriple<CReportPipeJRBW>(children, text1, text2, text3);
}

CReportChapter* CReportDataMethod::GetChapter(Report::NodeMap& children,
                                              const KorDMRec::SKorDMQdDeRec& record, bool isQd) {
  CTallyDataMng* store = CTallyDataMng::Instance();
  int number = std::numeric_limits<int>::max();
  const std::wstring name =
      isQd ? store->GetQdChapter(record.code, number) : store->GetDeChapter(record.code, number);
  return FindOrMake<CReportChapter>(children, CNodeKey().AddInt(number).AddText(L"@").AddText(name),
                                    [&](CReportChapter& node) {
                                      node.name = name;
                                      node.number = number;
                                    });
}

CReportQdDeItem* CReportDataMethod::GetQdDeItem(Report::NodeMap& children,
                                                const KorDMRec::SKorDMQdDeRec& record, bool isQd) {
  const std::wstring feature =
      isQd ? CTallyDataMng::Instance()->GetQdFeather(record.code) : std::wstring();
  return FindOrMake<CReportQdDeItem>(
      children, {record.code, L"@", record.name, L"@", feature, L"@", record.unit},
      [&](CReportQdDeItem& node) {
        node.code = record.code;
        node.name = record.name;
        node.unit = record.unit;
        node.feature = feature;
      });
}

namespace {

const CReportSysCode* FindSysCode(const Report::NodeMap& children, const std::wstring& name) {
  // A few names are compared faster than keys.
  constexpr std::size_t kFew = 16;
  if (children.size() > kFew) {
    return FindChild<CReportSysCode>(children, name);
  }
  for (const auto& child : children.InOrder()) {
    const auto* sysCode = NodeAs<CReportSysCode>(child);
    if (sysCode != nullptr && sysCode->name == name) {
      return sysCode;
    }
  }
  return nullptr;
}

}  // namespace

const CReportSysCode* CReportDataMethod::FindSysCodeItem(const IReportDataNode* node,
                                                         const std::vector<std::wstring>& parts) {
  const CReportSysCode* found = nullptr;
  for (const std::wstring& part : parts) {
    if (node == nullptr) {
      return nullptr;
    }
    found = FindSysCode(node->children, part);
    if (found == nullptr) {
      return nullptr;
    }
    node = found;
  }
  return found;
}
