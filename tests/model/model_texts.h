// The text rules and orderings of the reports, written down a second time: one plain function for
// each rule, slow on purpose.
#ifndef TALLY_TESTS_MODEL_MODEL_TEXTS_H_
#define TALLY_TESTS_MODEL_MODEL_TEXTS_H_

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "report_model/report_types.h"

namespace tally_model {

using Texts = std::vector<std::wstring>;

/// The components of a text, empty ones included; the empty text has none.
Texts SplitText(const std::wstring& text, wchar_t separator);
/// The text up to the first `mark`, all of it where there is none.
std::wstring UpTo(const std::wstring& text, const std::wstring& mark);
bool BeginsWith(const std::wstring& text, const std::wstring& prefix);
std::wstring ReplaceAll(const std::wstring& text, wchar_t from, wchar_t to);

/// "%g" and "%d".
std::wstring NumberText(double number);
std::wstring NumberText(int number);
/// The leading number of a text, 0 where there is none.
double LeadingNumber(const std::wstring& text);
double LeadingNumber(const std::string& text);
/// The leading digits of a text, 0 where there are none; ends at the ends of the type.
int LeadingDigits(const std::wstring& text);

/// The text in the code page of the thread.
std::string Narrow(const std::wstring& text);
std::string WithoutBlanks(const std::string& text);
/// -1, 0 or 1 for two runs of digits and points at `start`.
int CompareRuns(const std::string& a, const std::string& b, std::size_t start);
/// The natural compare of two narrow texts.
int CompareNaturally(const std::string& a, const std::string& b, bool ascending);
/// The natural compare of attribute texts in the rows of the detail and fitting reports.
int AttSort(const std::wstring& a, const std::wstring& b, bool ascending);
/// The natural compare of block records, without the blanks.
int BlockSort(const std::wstring& a, const std::wstring& b, bool ascending);
bool NarrowLess(const std::wstring& a, const std::wstring& b);

/// A system code path of other than three names is completed by "\*" and its last name.
std::wstring CompletedSysCode(const std::wstring& path);
/// The first `level` names; all of the path at level 3.
std::wstring SysCodeAtLevel(const std::wstring& path, int level);
/// One set of names for each level of which there are any.
std::vector<std::set<std::wstring>> NamesByLevel(const Texts& paths);

/// How many floors a floor expression stands for.
int FloorCount(const std::wstring& text);
/// By what a floor's name sorts.
int FloorGrade(const std::wstring& name);

/// What follows the first colon of the first line that holds the key.
std::wstring LineValue(const Texts& lines, const std::wstring& key);
/// The same for the first line that begins with `prefix`: stores the value and answers true.
bool PrefixValue(std::wstring& value, const std::wstring& text, const std::wstring& prefix);
/// Display name of a fitting's pipe line.
std::wstring PipeLineName(const std::wstring& name, const std::wstring& attributes,
                          const std::wstring& spec, const std::wstring& category);

/// Adds up what has the same unit.
void Unite(Report::SResultData& target, const Report::SResultData& source);
void AppendQuantity(Texts& cells, const Report::SResultData& sum);
void AppendQuantityAndComponents(Texts& cells, const Report::SResultData& sum);

void Append(Texts& cells, const Texts& more);

// Blocks of rows ------------------------------------------------------------------------------
//
// A block stands in a set under its key. PutBlock looks it up and inserts it where it is new.

template <class TBlock>
void PutBlock(std::set<TBlock>& blocks, const TBlock& block) {
  if (blocks.find(block) == blocks.end()) {
    blocks.insert(block);
  }
}

template <class TBlock>
Texts Flattened(const std::set<TBlock>& blocks) {
  Texts cells;
  for (const TBlock& block : blocks) {
    Append(cells, block.cells);
  }
  return cells;
}

/// System codes, component kinds, types and chapters: by the number alone.
struct SNumberedBlock {
  int number = 0;
  Texts cells;
  bool operator<(const SNumberedBlock& other) const { return number < other.number; }
};

struct SFloorBlock {
  std::wstring name;
  Texts cells;
  bool operator<(const SFloorBlock& other) const;
};

struct SCalItemBlock {
  std::wstring name;
  std::wstring unit;
  Texts cells;
  bool operator<(const SCalItemBlock& other) const;
};

struct SAttBlock {
  bool largerFirst = false;
  std::wstring value;
  std::wstring name;
  Texts cells;
  bool operator<(const SAttBlock& other) const;
};

struct SQdDeBlock {
  std::wstring code;
  std::wstring name;
  std::wstring feature;
  std::wstring unit;
  Texts cells;
  bool operator<(const SQdDeBlock& other) const;
};

/// Groups of the overview.
struct SGroupBlock {
  int number = 0;
  std::wstring name;
  Texts cells;
  bool operator<(const SGroupBlock& other) const;
};

/// Coats of paint.
struct SPaintBlock {
  int categoryNumber = 0;
  int coat = 0;
  std::wstring name;
  Texts cells;
  bool operator<(const SPaintBlock& other) const;
};

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_MODEL_TEXTS_H_
