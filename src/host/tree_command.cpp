#include "host/tree_command.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "filter_trees/category_tree.h"
#include "filter_trees/floor_tree.h"
#include "filter_trees/sys_code_tree.h"
#include "host/host_error.h"
#include "host/joined.h"
#include "host/open_project.h"
#include "host/shown_name.h"
#include "host/suggestion.h"
#include "report_mng/report_mng.h"

namespace {

// Names below names, in the order of their first mention.
class CNameTree {
 public:
  /// The part of that name, made where it is missing. Valid as long as the tree.
  CNameTree& Part(std::wstring_view name) {
    const auto [at, isNew] = parts_.try_emplace(std::wstring(name), nullptr);
    if (isNew) {
      at->second = std::make_unique<CNameTree>();
      order_.push_back(&*at);
    }
    return *at->second;
  }

  /// A line for each part, `depth` steps from the left.
  void Write(COutput& output, std::size_t depth) const {
    for (const auto* part : order_) {
      output.Write(std::string(2 * depth, ' ') + ShownName(part->first) + "\n");
      part->second->Write(output, depth + 1);
    }
  }

 private:
  using Parts = std::map<std::wstring, std::unique_ptr<CNameTree>>;

  Parts parts_;
  std::vector<const Parts::value_type*> order_;
};

// What stands behind the last separator that counts is one name, whatever it holds.
CNameTree TreeOf(const CSpecTextTree::SpecTextMap& map, wchar_t separator, int mostLevels) {
  CNameTree tree;
  for (const auto& [spec, texts] : map) {
    for (std::wstring_view text : texts) {
      CNameTree* part = &tree.Part(spec);
      for (int level = 1; level < mostLevels; ++level) {
        const std::size_t end = text.find(separator);
        if (end == std::wstring_view::npos) {
          break;
        }
        part = &part->Part(text.substr(0, end));
        text.remove_prefix(end + 1);
      }
      part->Part(text);
    }
  }
  return tree;
}

CNameTree ReadFloors(IReport& tree) {
  CNameTree names;
  for (const CFloorResultData& floor : dynamic_cast<CFloorTree&>(tree).GetFloorData()) {
    names.Part(floor.GetFloorName());
  }
  return names;
}

CNameTree ReadSysCodes(IReport& tree) {
  constexpr int kLevels = 3;
  CSpecTextTree::SpecTextMap map;
  dynamic_cast<CSysCodeTree&>(tree).GetSysCodeMap(map);
  return TreeOf(map, L'&', kLevels);
}

CNameTree ReadCategories(IReport& tree) {
  constexpr int kLevels = 2;
  CSpecTextTree::SpecTextMap map;
  dynamic_cast<CCategoryTree&>(tree).GetCategoryMap(map);
  return TreeOf(map, L'\\', kLevels);
}

struct STree {
  const char* name;
  Report::ETreeType type;
  ERecordSet set;
  CNameTree (*read)(IReport& tree);
};

constexpr STree kTrees[] = {
    {"floors", Report::TreeFloor, ERecordSet::FloorTree, ReadFloors},
    {"sys-codes", Report::TreeSysCode, ERecordSet::SysCodeTree, ReadSysCodes},
    {"categories", Report::TreeCategory, ERecordSet::CategoryTree, ReadCategories},
};

const STree& NamedTree(const std::string& name) {
  std::vector<std::string> names;
  for (const STree& tree : kTrees) {
    if (name == tree.name) {
      return tree;
    }
    names.emplace_back(tree.name);
  }
  throw CHostError(Joined("no tree '", name, "'", KnownWords(name, names)));
}

}  // namespace

void RunTree(const STreeArguments& arguments, COutput& output) {
  const STree& tree = NamedTree(arguments.tree);
  const COpenProject project(arguments.file);
  project.RequireSet(tree.set);
  tree.read(*CReportMng::Instance()->GetTreeData(tree.type)).Write(output, 0);
  output.Flush();
}
