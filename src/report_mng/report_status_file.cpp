#include "report_mng/report_status_file.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "platform/text_numbers.h"

namespace {

// The words of the file. Some name two things, told apart by the element around them.
constexpr const wchar_t* kRoot = L"报表状态数据";
constexpr const wchar_t* kVersion = L"Version";
constexpr const wchar_t* kName = L"Name";
constexpr const wchar_t* kCurReport = L"当前报表类型";
constexpr const wchar_t* kCurSpec = L"当前专业";
constexpr const wchar_t* kIsDividedNode = L"系统计算书包含设备";
constexpr const wchar_t* kIsBySgd = L"是否按施工段统计";
constexpr const wchar_t* kSpec = L"专业";
constexpr const wchar_t* kCondition = L"Condition";
constexpr const wchar_t* kSysCode = L"系统编号";
constexpr const wchar_t* kCurSysCode = L"选中的系统编号";
constexpr const wchar_t* kMember = L"构件";
constexpr const wchar_t* kCurMember = L"选中的构件";
constexpr const wchar_t* kFloors = L"楼层信息";
constexpr const wchar_t* kAllFloors = L"是否选中全部楼层";
constexpr const wchar_t* kDrawingFloor = L"图纸对应楼层";
constexpr const wchar_t* kChosenFloor = L"选择楼层";
constexpr const wchar_t* kReport = L"报表类型";
constexpr const wchar_t* kReportVisible = L"报表页是否显示";
constexpr const wchar_t* kReportLevel = L"报表展开的级别";
constexpr const wchar_t* kColumns = L"报表列状态";
constexpr const wchar_t* kColumn = L"报表列";
constexpr const wchar_t* kColumnVisible = L"Visible";
constexpr const wchar_t* kSections = L"施工段名称显示";
constexpr const wchar_t* kSection = L"名称";
constexpr const wchar_t* kTrees = L"筛选条件树";
constexpr const wchar_t* kSysCodeTree = L"系统编号筛选条件树";
constexpr const wchar_t* kAllSysCodes = L"系统编号筛选树是否选择全部";
constexpr const wchar_t* kFloorTree = L"楼层筛选条件树";
constexpr const wchar_t* kAllTreeFloors = L"楼层筛选树是否选择全部";
constexpr const wchar_t* kTreeFloor = L"楼层";
constexpr const wchar_t* kMemberTree = L"构件筛选条件树";
constexpr const wchar_t* kAllMembers = L"构件筛选树是否选择全部";

// Flags have two forms: these below the root's children, kSwitchOn and kSwitchOff above.
constexpr const wchar_t* kYes = L"是";
constexpr const wchar_t* kNo = L"否";
constexpr const wchar_t* kSwitchOn = L"1";
constexpr const wchar_t* kSwitchOff = L"0";

template <class TPointer>
const TPointer& Require(const TPointer& pointer) {
  if (pointer == nullptr) {
    throw CXmlError(CXmlError::kNullPointer, "the XML service handed out no node");
  }
  return pointer;
}

using NodePtr = std::shared_ptr<IXmlNode>;
using ElementPtr = std::shared_ptr<IXmlElement>;

// Makes the elements of one document.
class CStatusWriter {
 public:
  explicit CStatusWriter(IXmlDocument& document) : document_(document) {}

  void Write(const SReportStatus& status, const std::wstring& version);

 private:
  ElementPtr Create(const wchar_t* name) { return Require(document_.createElement(name)); }

  ElementPtr Append(IXmlNode& parent, const wchar_t* name) {
    ElementPtr element = Create(name);
    parent.appendChild(element);
    return element;
  }

  ElementPtr AppendNamed(IXmlNode& parent, const wchar_t* name, const std::wstring& value) {
    ElementPtr element = Create(name);
    element->setAttribute(kName, value);
    parent.appendChild(element);
    return element;
  }

  void AppendText(IXmlNode& parent, const wchar_t* name, const std::wstring& text) {
    const ElementPtr element = Create(name);
    element->put_text(text);
    parent.appendChild(element);
  }

  void AppendFlag(IXmlNode& parent, const wchar_t* name, bool flag) {
    AppendText(parent, name, flag ? kYes : kNo);
  }

  template <class TTexts>
  void AppendTexts(IXmlNode& parent, const wchar_t* name, const TTexts& texts) {
    for (const std::wstring& text : texts) {
      AppendText(parent, name, text);
    }
  }

  void AppendPairs(IXmlNode& parent, const wchar_t* name,
                   const std::vector<Report::SFloorPair>& pairs) {
    for (const Report::SFloorPair& pair : pairs) {
      const ElementPtr element = Append(parent, name);
      AppendText(*element, kDrawingFloor, pair.drawingFloor);
      AppendText(*element, kChosenFloor, pair.floor);
    }
  }

  void AppendCondition(IXmlNode& root, const std::wstring& spec,
                       const Report::SNewCondition& condition);
  void AppendReport(IXmlNode& root, const std::wstring& name, const NewReportConfigRec& report);
  void AppendSections(IXmlNode& root, const std::vector<std::wstring>& sections);
  void AppendTree(IXmlNode& trees, const std::wstring& spec, const TJTreeRec& tree);

  IXmlDocument& document_;
};

void CStatusWriter::Write(const SReportStatus& status, const std::wstring& version) {
  const ElementPtr root = Create(kRoot);
  root->setAttribute(kVersion, version);
  document_.appendChild(root);
  AppendText(*root, kCurReport, status.curReport);
  AppendText(*root, kCurSpec, status.curSpec);
  // The divided-node switch lasts for the process alone: it is read, but never written.
  AppendText(*root, kIsBySgd, status.isBySgd ? kSwitchOn : kSwitchOff);
  for (const auto& [spec, condition] : status.conditions) {
    AppendCondition(*root, spec, condition);
  }
  for (const auto& [name, report] : status.reports) {
    AppendReport(*root, name, report);
  }
  AppendSections(*root, status.dispSgd);
  const ElementPtr trees = Append(*root, kTrees);
  for (const auto& [spec, tree] : status.trees) {
    AppendTree(*trees, spec, tree);
  }
}

// A list without a current text, and the floors when all are chosen, are left out. The reader takes
// them from the discipline's trees.
void CStatusWriter::AppendCondition(IXmlNode& root, const std::wstring& spec,
                                    const Report::SNewCondition& condition) {
  const ElementPtr element = Append(*AppendNamed(root, kSpec, spec), kCondition);

  const ElementPtr sysCodes = Append(*element, kSysCode);
  AppendText(*sysCodes, kCurSysCode, condition.curSysCode);
  if (!condition.curSysCode.empty()) {
    AppendTexts(*sysCodes, kSysCode, condition.sysCodes);
  }

  const ElementPtr members = Append(*element, kMember);
  AppendText(*members, kCurMember, condition.curCategory);
  if (!condition.curCategory.empty()) {
    AppendTexts(*members, kMember, condition.categories);
  }

  const ElementPtr floors = Append(*element, kFloors);
  AppendFlag(*floors, kAllFloors, condition.allFloors);
  if (!condition.allFloors) {
    AppendPairs(*floors, kFloors, condition.floors);
  }
}

void CStatusWriter::AppendReport(IXmlNode& root, const std::wstring& name,
                                 const NewReportConfigRec& report) {
  const ElementPtr element = AppendNamed(root, kReport, name);
  AppendFlag(*element, kReportVisible, report.visible);
  AppendText(*element, kReportLevel, IntText(report.expandLevel));
  const ElementPtr columns = Append(*element, kColumns);
  for (const Report::SColumnState& column : report.columns) {
    AppendNamed(*columns, kColumn, column.name)->setAttribute(kColumnVisible, column.visible);
  }
}

void CStatusWriter::AppendSections(IXmlNode& root, const std::vector<std::wstring>& sections) {
  const ElementPtr element = Create(kSections);
  for (const std::wstring& section : sections) {
    AppendNamed(*element, kSection, section);
  }
  root.appendChild(element);
}

void CStatusWriter::AppendTree(IXmlNode& trees, const std::wstring& spec, const TJTreeRec& tree) {
  const ElementPtr element = AppendNamed(trees, kSpec, spec);

  const ElementPtr sysCodes = Append(*element, kSysCodeTree);
  AppendFlag(*sysCodes, kAllSysCodes, tree.sysCode.allSelected);
  AppendTexts(*sysCodes, kSysCode, tree.sysCode.names);

  const ElementPtr floors = Append(*element, kFloorTree);
  AppendFlag(*floors, kAllTreeFloors, tree.floor.allSelected);
  AppendPairs(*floors, kTreeFloor, tree.floor.floors);

  const ElementPtr members = Append(*element, kMemberTree);
  AppendFlag(*members, kAllMembers, tree.member.allSelected);
  AppendTexts(*members, kMember, tree.member.names);
}

template <class TUse>
void ForEach(const IXmlNodeList& list, TUse use) {
  const std::size_t count = list.length();
  for (std::size_t i = 0; i < count; ++i) {
    use(*Require(list.item(i)));
  }
}

// Calls `use` with the name of each child and the child, in the order of the document.
template <class TUse>
void ForEachChild(const IXmlNode& node, TUse use) {
  ForEach(*Require(node.childNodes()),
          [&](const IXmlNode& child) { use(child.nodeName(), child); });
}

std::optional<std::wstring> Attribute(const IXmlNode& node, const wchar_t* name) {
  std::optional<std::wstring> value;
  if (const std::shared_ptr<IXmlNodeList> attributes = node.attributes()) {
    ForEach(*attributes, [&](const IXmlNode& attribute) {
      if (attribute.nodeName() == name) {
        value = attribute.nodeValue();
      }
    });
  }
  return value;
}

std::wstring NameOf(const IXmlNode& node) {
  return Attribute(node, kName).value_or(std::wstring());
}

bool IsYes(const IXmlNode& node) {
  return node.nodeTypedValue() == kYes;
}

bool IsSwitchedOn(const IXmlNode& node) {
  return node.nodeTypedValue() == kSwitchOn;
}

void AppendPair(const IXmlNode& node, std::vector<Report::SFloorPair>& pairs) {
  Report::SFloorPair pair;
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    if (name == kDrawingFloor) {
      pair.drawingFloor = child.nodeTypedValue();
    } else if (name == kChosenFloor) {
      pair.floor = child.nodeTypedValue();
    }
  });
  if (!pair.drawingFloor.empty() && !pair.floor.empty()) {
    pairs.push_back(std::move(pair));
  }
}

// One text for the whole path, its names being the children.
void ReadOldSysCode(const IXmlNode& node, Report::SNewCondition& condition) {
  std::wstring path;
  const wchar_t* separator = L"";
  ForEachChild(node, [&](const std::wstring&, const IXmlNode& child) {
    path += separator + child.nodeTypedValue();
    separator = L"\\";
  });
  condition.curSysCode = path;
  condition.sysCodes.clear();
  if (!path.empty()) {
    condition.sysCodes.push_back(std::move(path));
  }
}

void ReadOldMember(const IXmlNode& node, Report::SNewCondition& condition) {
  condition.curCategory = node.nodeTypedValue();
  condition.categories.clear();
  if (!condition.curCategory.empty()) {
    condition.categories.insert(condition.curCategory);
  }
}

void ReadOldConditionPart(const std::wstring& name, const IXmlNode& node,
                          Report::SNewCondition& condition) {
  if (name == kSysCode) {
    ReadOldSysCode(node, condition);
  } else if (name == kMember) {
    ReadOldMember(node, condition);
  } else if (name == kFloors) {
    AppendPair(node, condition.floors);
  }
}

void ReadSysCodes(const IXmlNode& node, Report::SNewCondition& condition) {
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    std::wstring text = child.nodeTypedValue();
    if (name == kCurSysCode) {
      condition.curSysCode = std::move(text);
    } else if (!text.empty()) {
      condition.sysCodes.push_back(std::move(text));
    }
  });
}

void ReadMembers(const IXmlNode& node, Report::SNewCondition& condition) {
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    std::wstring text = child.nodeTypedValue();
    if (name == kCurMember) {
      condition.curCategory = std::move(text);
    } else if (!text.empty()) {
      condition.categories.insert(std::move(text));
    }
  });
}

void ReadFloors(const IXmlNode& node, Report::SNewCondition& condition) {
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    if (name == kAllFloors) {
      condition.allFloors = IsYes(child);
    } else if (name == kFloors) {
      AppendPair(child, condition.floors);
    }
  });
}

void ReadConditionPart(const std::wstring& name, const IXmlNode& node,
                       Report::SNewCondition& condition) {
  if (name == kSysCode) {
    ReadSysCodes(node, condition);
  } else if (name == kMember) {
    ReadMembers(node, condition);
  } else if (name == kFloors) {
    ReadFloors(node, condition);
  }
}

void ReadNameTree(const IXmlNode& node, const wchar_t* flag, const wchar_t* member,
                  SysCodeMemTJInfo& tree) {
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    if (name == flag) {
      tree.allSelected = IsYes(child);
    } else if (name == member) {
      std::wstring text = child.nodeTypedValue();
      if (!text.empty()) {
        tree.names.push_back(std::move(text));
      }
    }
  });
}

void ReadFloorTree(const IXmlNode& node, FloorTJInfo& tree) {
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    if (name == kAllTreeFloors) {
      tree.allSelected = IsYes(child);
    } else if (name == kTreeFloor) {
      AppendPair(child, tree.floors);
    }
  });
}

void ReadSections(const IXmlNode& node, std::vector<std::wstring>& sections) {
  ForEachChild(node, [&](const std::wstring&, const IXmlNode& child) {
    if (std::optional<std::wstring> name = Attribute(child, kName)) {
      sections.push_back(std::move(*name));
    }
  });
}

std::vector<Report::SColumnState> ReadColumns(const IXmlNode& node) {
  std::vector<Report::SColumnState> columns;
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    if (name == kColumn) {
      const std::optional<std::wstring> visible = Attribute(child, kColumnVisible);
      columns.push_back({NameOf(child), !visible.has_value() || XmlBoolean(*visible)});
    }
  });
  return columns;
}

void ReadReport(const IXmlNode& node, std::map<std::wstring, NewReportConfigRec>& reports) {
  const std::wstring key = NameOf(node);
  NewReportConfigRec report;
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    if (name == kReportVisible) {
      report.visible = IsYes(child);
    } else if (name == kReportLevel) {
      report.expandLevel = ReadLeadingInt(child.nodeTypedValue());
    } else if (name == kColumns) {
      report.columns = ReadColumns(child);
    }
  });
  reports[key] = std::move(report);
}

// A condition without a current text takes the list from the tree of its discipline, and one with
// all floors the floors. A tree that selects everything has no list to give.
void FillIn(const TJTreeRec& tree, Report::SNewCondition& condition) {
  if (condition.curSysCode.empty() && !tree.sysCode.allSelected && !tree.sysCode.names.empty()) {
    condition.sysCodes = tree.sysCode.names;
  }
  if (condition.curCategory.empty() && !tree.member.allSelected) {
    condition.categories.insert(tree.member.names.begin(), tree.member.names.end());
  }
  if (condition.allFloors && !tree.floor.allSelected && !tree.floor.floors.empty()) {
    condition.floors = tree.floor.floors;
  }
}

}  // namespace

void WriteStatusDocument(IXmlDocument& document, const SReportStatus& status,
                         const std::wstring& version) {
  CStatusWriter(document).Write(status, version);
}

bool ReadStatusDocument(IXmlDocument& document, SReportStatus& status, std::wstring& version) {
  const NodePtr root = document.selectSingleNode(kRoot);
  if (root == nullptr) {
    return false;
  }
  if (std::optional<std::wstring> stamp = Attribute(*root, kVersion)) {
    version = std::move(*stamp);
  }
  const std::shared_ptr<IXmlNodeList> children = root->childNodes();
  if (children == nullptr) {
    return false;
  }
  const CKorVersion layout(version);
  ForEach(*children, [&](const IXmlNode& child) {
    const std::wstring name = child.nodeName();
    if (name == kCurReport) {
      status.curReport = child.nodeTypedValue();
    } else if (name == kIsDividedNode) {
      status.isDividedNode = IsSwitchedOn(child);
    } else if (name == kIsBySgd) {
      status.isBySgd = IsSwitchedOn(child);
    } else if (name == kSections) {
      ReadSections(child, status.dispSgd);
    } else if (name == kCurSpec) {
      status.curSpec = child.nodeTypedValue();
    } else if (name == kSpec) {
      ReadConditionElement(child, layout, status.conditions);
    } else if (name == kTrees) {
      ReadTreesElement(child, status.trees);
    } else if (name == kReport) {
      ReadReport(child, status.reports);
    }
  });
  for (auto& [spec, condition] : status.conditions) {
    if (const auto tree = status.trees.find(spec); tree != status.trees.end()) {
      FillIn(tree->second, condition);
    }
  }
  return true;
}

void ReadConditionElement(const IXmlNode& node, const CKorVersion& version,
                          std::map<std::wstring, Report::SNewCondition>& conditions) {
  const std::wstring key = NameOf(node);
  const auto readPart =
      version < KorProfile::g_Version_16_2_0 ? ReadOldConditionPart : ReadConditionPart;
  Report::SNewCondition condition;
  ForEachChild(node, [&](const std::wstring& name, const IXmlNode& child) {
    if (name == kCondition) {
      ForEachChild(child, [&](const std::wstring& part, const IXmlNode& partNode) {
        readPart(part, partNode, condition);
      });
    }
  });
  conditions[key] = std::move(condition);
}

void ReadTreesElement(const IXmlNode& node, std::map<std::wstring, TJTreeRec>& trees) {
  ForEachChild(node, [&](const std::wstring&, const IXmlNode& spec) {
    const std::wstring key = NameOf(spec);
    TJTreeRec tree;
    ForEachChild(spec, [&](const std::wstring& name, const IXmlNode& child) {
      if (name == kSysCodeTree) {
        ReadNameTree(child, kAllSysCodes, kSysCode, tree.sysCode);
      } else if (name == kFloorTree) {
        ReadFloorTree(child, tree.floor);
      } else if (name == kMemberTree) {
        ReadNameTree(child, kAllMembers, kMember, tree.member);
      }
    });
    trees[key] = std::move(tree);
  });
}
