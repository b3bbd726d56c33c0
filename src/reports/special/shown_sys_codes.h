// System codes as the rows of the paint, duct and insulation tables show them.
#ifndef TALLY_REPORTS_SPECIAL_SHOWN_SYS_CODES_H_
#define TALLY_REPORTS_SPECIAL_SHOWN_SYS_CODES_H_

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "report_model/report_data_node.h"

/// How a system code shows its remark.
enum class ERemark { InBrackets, Bare };

/// The codes of one request, each worked out once.
class CShownSysCodes {
 public:
  struct SCode {
    std::wstring text;  ///< cut to the level, with its remark
    int sortId = 0;
    int number = 0;  ///< equal where the texts are; 0 is no text
  };

  CShownSysCodes(std::wstring spec, int level, ERemark remark)
      : spec_(std::move(spec)), level_(level), remark_(remark) {}

  /// The code of a node; stays as long as this object.
  const SCode& Of(const CReportSysCode& node);
  /// Whether codes of one text, so far, have one sort number, and only those without text have that
  /// of no code.
  bool HasOrder() const { return hasOrder_; }

 private:
  // Tells texts of the store apart by where they stand, which takes no time. Equal texts in two
  // places only make two equal codes.
  struct SSameView {
    std::size_t operator()(std::wstring_view text) const {
      return std::hash<const wchar_t*>()(text.data()) + text.size();
    }
    bool operator()(std::wstring_view a, std::wstring_view b) const {
      return a.data() == b.data() && a.size() == b.size();
    }
  };

  SCode Make(std::wstring_view fullName);

  const std::wstring spec_;
  const int level_;
  const ERemark remark_;
  std::unordered_map<std::wstring_view, SCode, SSameView, SSameView> codes_;  // by full name
  std::unordered_map<std::wstring, std::pair<int, int>> texts_;  // their numbers and sort numbers
  const CReportSysCode* lastNode_ = nullptr;
  const SCode* last_ = nullptr;
  bool hasOrder_ = true;
};

#endif  // TALLY_REPORTS_SPECIAL_SHOWN_SYS_CODES_H_
