// The cells of the rows that the summaries show below floors.
#ifndef TALLY_REPORTS_SHARED_SUMMARY_CELLS_H_
#define TALLY_REPORTS_SHARED_SUMMARY_CELLS_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"
#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"

/// Where the extra "$" of a result's references stands.
enum class EChainMark { Behind, Ahead };

/// Appends the component texts of `results`, each with its extra "$".
inline void AppendReferences(std::wstring& text, const std::vector<const CReportResult*>& results,
                             EChainMark mark) {
  constexpr std::size_t kAhead = 8;
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (i + kAhead < results.size()) {
      results[i + kAhead]->PrefetchComponents();
    }
    if (mark == EChainMark::Ahead) {
      text += L'$';
    }
    results[i]->AppendComponentText(text);
    if (mark == EChainMark::Behind) {
      text += L'$';
    }
  }
}

/// What a system code is shown as: its name, and its remark in brackets if it has one.
inline void AppendTitle(std::wstring& text, const CReportSysCode& node) {
  text += node.name;
  if (!node.remark.empty()) {
    text += L'(';
    text += node.remark;
    text += L')';
  }
}

/// What a line shows of a result that counts on `floors` floors.
inline void AppendFormula(std::wstring& text, const CReportResult& result, int floors) {
  AppendRepeated(text, result.expression, static_cast<int>(result.components.size()), floors);
}

inline std::wstring CircuitText(int number) {
  std::wstring text = L"回路";
  AppendInt(text, number);
  return text;
}

// Each calls `add` with the cells of one row.

template <class TAdd, class TText, class TNumber>
void FloorCells(TAdd&& add, const TText& name, const TText& second, std::wstring_view unit,
                const TNumber& quantity) {
  add(L"@F", name, second, unit, quantity);
}

template <class TAdd, class TText, class TNumber, class TReferences>
void SysCodeCells(TAdd&& add, std::size_t depth, const TText& title, std::wstring_view unit,
                  const TNumber& quantity, const TReferences& references) {
  constexpr std::array kMarkers{L"@S1", L"@S2", L"@S3"};
  static_assert(kMarkers.size() == SYSCODE_LEVEL_COUNT);
  add(kMarkers[depth], title, unit, quantity, references);
}

template <class TAdd, class TText, class TNumber, class TReferences>
void LineCells(TAdd&& add, int number, const TText& formula, std::wstring_view unit,
               const TNumber& quantity, const TReferences& references) {
  add(L"@L", CircuitText(number), formula, unit, quantity, references);
}

#endif  // TALLY_REPORTS_SHARED_SUMMARY_CELLS_H_
