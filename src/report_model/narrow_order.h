// The orderings of narrow text that rows are sorted by.
#ifndef TALLY_REPORT_MODEL_NARROW_ORDER_H_
#define TALLY_REPORT_MODEL_NARROW_ORDER_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The natural three-way compare of two narrow texts: below zero when `a` goes first, above when
/// `b` does. Bytes compare as signed 8-bit values, numbers by their value; with `ascending` false
/// the larger number goes first, letters always run forward. Two numbers of one value that differ
/// as texts count as "greater" either way round, so this is no ordering of such texts.
int CompareNatural(std::string_view a, std::string_view b, bool ascending);

/// The narrow text of a wide one without its blanks (character 32).
std::string NarrowWithoutBlanks(std::wstring_view text);

/// Plain order of two wide texts by their narrow forms, below zero when `a` goes first. Equal wide
/// texts are not converted.
int CompareAsNarrow(std::wstring_view a, std::wstring_view b);

/// Tells whether CompareNatural is an order of some texts.
class CNaturalOrderProof {
 public:
  /// Takes the numbers of a text, which must outlive the object.
  void Add(std::string_view text);
  /// Whether no two of them have one value but differ, and none begins with its point. Then all
  /// texts have an order, that of their keys, and only equal ones are equal.
  bool Holds();
  static std::string Key(std::string_view text, bool ascending);

 private:
  std::vector<std::pair<double, std::string_view>> numbers_;
};

/// What attribute rows are sorted by, kept from the fold on so that no request converts it again.
struct SAttSortKey {
  SAttSortKey(std::wstring_view nameText, std::wstring_view valueText);

  std::wstring name;
  std::wstring value;
  std::string narrowName;
  std::string naturalName;  ///< narrow, without blanks
  std::string narrowValue;
};

#endif  // TALLY_REPORT_MODEL_NARROW_ORDER_H_
