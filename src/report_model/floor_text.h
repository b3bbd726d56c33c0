// The separators of floor expressions.
#ifndef TALLY_REPORT_MODEL_FLOOR_TEXT_H_
#define TALLY_REPORT_MODEL_FLOOR_TEXT_H_

#include <string>

/// The full-width comma and slash count as the plain ones.
inline wchar_t UnifiedSeparator(wchar_t c) {
  if (c == L'，') {
    return L',';
  }
  return c == L'／' ? L'/' : c;
}

inline void UnifySeparators(std::wstring& text) {
  for (wchar_t& c : text) {
    c = UnifiedSeparator(c);
  }
}

#endif  // TALLY_REPORT_MODEL_FLOOR_TEXT_H_
