// The benchmarks, named <report or set>/<phase>/<rows>. README.md tells what each number means.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <ctime>
#include <exception>
#include <iostream>
#include <limits>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "answer_check.h"
#include "bench_project.h"
#include "formula_project.h"
#include "heap_use.h"
#include "peer_cases.h"
#include "platform/db_operator.h"
#include "report_mng/report_mng.h"
#include "report_table.h"
#include "reports/calculation_books/xhl_jss2s_report.h"
#include "result_store/tally_data_mng.h"
#include "table_steps.h"

namespace {

/// What the program's own flags ask for.
struct SOptions {
  std::vector<std::int64_t> sizes{10000, 100000, 1000000};
  EProjectShape shape = EProjectShape::Example;
  bool checks = true;
  std::string project;      ///< file that stands for the project of the only size
  std::string writes;       ///< file to write a project to, instead of measuring
  std::string peerProject;  ///< file whose comparison with other programs is measured, alone
  std::string answers;      ///< file to write the engine's side of that comparison to
};

// A benchmark whose answer is wrong makes the program fail.
bool anyFailed = false;

template <class TBody>
void Guarded(benchmark::State& state, TBody&& body) {
  try {
    body();
  } catch (const std::exception& failure) {
    anyFailed = true;
    state.SkipWithError(failure.what());
  }
}

template <class TBody>
benchmark::internal::Benchmark* Register(const std::string& name, TBody body) {
  return benchmark::RegisterBenchmark(name.c_str(),
                                      [body = std::move(body)](benchmark::State& state) {
                                        Guarded(state, [&] { body(state); });
                                      })
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
}

void SetRowsPerSecond(benchmark::State& state, std::size_t rows) {
  state.counters["rows_per_s"] =
      benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kIsIterationInvariantRate);
}

double PerRow(std::size_t bytes, std::size_t rows) {
  return static_cast<double>(bytes) / static_cast<double>(std::max<std::size_t>(rows, 1));
}

/// Processor time, which ratios are made of: unlike the time of day it does not count what other
/// programs take from this one.
template <class TBody>
double SecondsOf(TBody&& body) {
  const std::clock_t begin = std::clock();
  body();
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// Does a thing the first time that it hears of it, if at all.
class COnce {
 public:
  void Never() { never_ = true; }
  template <class TBody>
  void Do(const std::string& name, TBody&& body) {
    if (!never_ && !done_.contains(name)) {
      body();
      done_.insert(name);
    }
  }

 private:
  std::set<std::string> done_;
  bool never_ = false;
};

COnce checks;

// ---- Opening and reading ------------------------------------------------------------------------

void BenchOpen(benchmark::State& state, CBenchProject& project, std::int64_t rows) {
  const std::string file = project.File(rows, EProjectShape::Example);
  CBenchProject::Close();
  CBenchProject::OpenFile(file);
  CBenchProject::RequireNoFailure();
  const CTallyDataMng* store = CTallyDataMng::Instance();
  if (static_cast<std::int64_t>(store->GetFloorTree().size()) !=
          CBenchProject::CountRows(file, "all_floor") ||
      static_cast<std::int64_t>(store->GetSysCodeTree().size()) !=
          CBenchProject::CountRows(file, "all_sys_code")) {
    throw std::runtime_error("the project did not open as it is");
  }
  for (auto _ : state) {
    state.PauseTiming();
    CBenchProject::Close();
    state.ResumeTiming();
    CBenchProject::OpenFile(file);
  }
}

void BenchRead(benchmark::State& state, CBenchProject& project, std::int64_t rows, ERecordSet set) {
  const std::string file = project.File(rows, EProjectShape::Example);
  CBenchProject::Close();
  CBenchProject::OpenFile(file);
  const std::size_t read = RowCount(set);
  CBenchProject::RequireNoFailure();
  if (read == 0 ||
      static_cast<std::int64_t>(read) != CBenchProject::CountRows(file, SetTable(set))) {
    throw std::runtime_error("not every row was read");
  }
  std::size_t held = 0;
  for (auto _ : state) {
    state.PauseTiming();
    CBenchProject::Close();
    CBenchProject::OpenFile(file);
    const std::size_t before = CHeapUse::Current();
    state.ResumeTiming();
    benchmark::DoNotOptimize(RowCount(set));
    state.PauseTiming();
    held = CHeapUse::Current() - before;
    state.ResumeTiming();
  }
  SetRowsPerSecond(state, read);
  state.counters["rows"] = static_cast<double>(read);
  state.counters["bytes_per_row"] = PerRow(held, read);
}

/// What a set of a file has, read once.
struct SSetFacts {
  std::wstring biggestSpec;
  std::size_t rows = 0;
};

const SSetFacts& FactsOf(const std::string& file, ERecordSet set) {
  static std::map<std::pair<std::string, ERecordSet>, SSetFacts> known;
  const auto [at, isNew] = known.try_emplace({file, set});
  if (isNew) {
    CBenchProject::Close();
    CBenchProject::OpenFile(file);
    at->second = {BiggestSpec(set), RowCount(set)};
    CBenchProject::RequireNoFailure();
  }
  return at->second;
}

/// From the file to the rows of the first deepest request, and what SQLite alone takes for the same
/// tables.
void BenchCold(benchmark::State& state, CBenchProject& project, std::int64_t rows,
               EProjectShape shape, const SBenchReport& report) {
  const std::string file = project.File(rows, shape);
  const SSetFacts& facts = FactsOf(file, report.set);
  double cold = 0;
  double stepping = 0;
  std::size_t held = 0;
  for (auto _ : state) {
    state.PauseTiming();
    stepping += SecondsOf([&] { benchmark::DoNotOptimize(StepTables(file, report.set)); });
    CReportMng::Instance()->Clear();
    CBenchProject::Close();
    const std::size_t before = CHeapUse::Current();
    state.ResumeTiming();
    Report::CellArray cells;
    cold += SecondsOf([&] {
      CBenchProject::OpenFile(file);
      cells = Request(report, facts.biggestSpec, report.catalog->DeepestLevel());
    });
    state.PauseTiming();
    if (cells.empty()) {
      throw std::runtime_error("no rows");
    }
    Report::CellArray().swap(cells);
    held = CHeapUse::Current() - before;
    state.ResumeTiming();
  }
  SetRowsPerSecond(state, facts.rows);
  state.counters["rows"] = static_cast<double>(facts.rows);
  state.counters["bytes_per_row"] = PerRow(held, facts.rows);
  state.counters["step_ms"] =
      stepping * 1000 / static_cast<double>(std::max<std::int64_t>(state.iterations(), 1));
  state.counters["per_step"] = cold / stepping;
}

// ---- Folding and requesting ---------------------------------------------------------------------

/// A scaled project and what is asked of it.
struct SSubject {
  CBenchProject& project;
  std::int64_t rows;
  EProjectShape shape;
  SBenchReport report;
};

/// Opens the scaled project, reads the report's set and folds the report alone; checks its answer
/// the first time. Answers the discipline that is asked for.
std::wstring Prepare(const SSubject& subject) {
  const SBenchReport& report = subject.report;
  subject.project.OpenScaled(subject.rows, subject.shape);
  std::wstring spec = BiggestSpec(report.set);
  checks.Do(report.name + " " + std::to_string(subject.rows), [&] {
    CReportMng::Instance()->Clear();
    CheckAnswer(report, spec);
  });
  Fold(report);
  return spec;
}

std::size_t RowsOfSpec(ERecordSet set, const std::wstring& spec) {
  std::size_t rows = 0;
  for (const SSpecRows& each : RowsBySpec(set)) {
    rows += each.spec == spec ? each.rows : 0;
  }
  return rows;
}

// The first request makes what the tree keeps for those to come.
void MeasureFirstRequest(benchmark::State& state, const SBenchReport& report,
                         const std::wstring& spec) {
  const std::size_t before = CHeapUse::Current();
  CHeapUse::RestartPeak();
  const Report::CellArray cells = Request(report, spec, report.catalog->DeepestLevel());
  const std::size_t peak = CHeapUse::Peak() - before;
  const std::size_t beforeCopy = CHeapUse::Current();
  const Report::CellArray copy = cells;
  state.counters["first_peak_per_size"] =
      static_cast<double>(peak) / static_cast<double>(CHeapUse::Current() - beforeCopy);
}

void BenchFold(benchmark::State& state, const SSubject& subject) {
  const SBenchReport& report = subject.report;
  const std::wstring spec = Prepare(subject);
  std::size_t held = 0;
  for (auto _ : state) {
    state.PauseTiming();
    // Freeing the tree before is no part of the fold.
    CReportMng::Instance()->Clear();
    CHeapUse::Settle();
    const std::size_t before = CHeapUse::Current();
    state.ResumeTiming();
    benchmark::DoNotOptimize(Fold(report));
    state.PauseTiming();
    held = CHeapUse::Current() - before;
    state.ResumeTiming();
  }
  const std::size_t folded = RowCount(report.set);
  SetRowsPerSecond(state, folded);
  state.counters["bytes_per_row"] = PerRow(held, folded);
  MeasureFirstRequest(state, report, spec);
}

/// The rows of the discipline with the most of them that a request selects.
enum class ESelection { All, OneFloor, OneSysCode, EveryFloor };

SFilterChoice Choose(ESelection selection, ERecordSet set, const std::wstring& spec) {
  switch (selection) {
    case ESelection::OneFloor:
      return OneFloor(set, spec);
    case ESelection::OneSysCode:
      return OneSysCode(set, spec);
    case ESelection::EveryFloor:
      return EveryFloor(set, spec);
    default:
      return {{}, RowsOfSpec(set, spec)};
  }
}

// Freeing an answer is the host's work, not that of the request that comes next.
void Free(Report::CellArray& cells) {
  Report::CellArray().swap(cells);
  CHeapUse::Settle();
}

void BenchRequest(benchmark::State& state, const SSubject& subject, int level,
                  ESelection selection = ESelection::All) {
  const SBenchReport& report = subject.report;
  const std::wstring spec = Prepare(subject);
  const SFilterChoice choice = Choose(selection, report.set, spec);
  // What the tree keeps from its first request on is there when the time begins.
  Report::CellArray warm = Request(report, spec, level, choice.condition);
  Free(warm);
  double requesting = 0;
  double copying = 0;
  std::size_t peak = 0;
  std::size_t size = 0;
  std::size_t cellCount = 0;
  for (auto _ : state) {
    Report::CellArray cells;
    const std::size_t before = CHeapUse::Current();
    CHeapUse::RestartPeak();
    requesting += SecondsOf([&] { cells = Request(report, spec, level, choice.condition); });
    state.PauseTiming();
    peak = CHeapUse::Peak() - before;
    const std::size_t beforeCopy = CHeapUse::Current();
    Report::CellArray copy;
    copying += SecondsOf([&] { copy = cells; });
    size = CHeapUse::Current() - beforeCopy;
    cellCount = cells.size();
    Free(copy);
    Free(cells);
    state.ResumeTiming();
  }
  SetRowsPerSecond(state, choice.rows);
  state.counters["selected"] =
      static_cast<double>(choice.rows) / static_cast<double>(RowsOfSpec(report.set, spec));
  state.counters["cells"] = static_cast<double>(cellCount);
  state.counters["per_copy"] = requesting / copying;
  state.counters["peak_per_size"] = static_cast<double>(peak) / static_cast<double>(size);
}

void BenchCopy(benchmark::State& state, const SSubject& subject) {
  const SBenchReport& report = subject.report;
  const std::wstring spec = Prepare(subject);
  const Report::CellArray cells = Request(report, spec, report.catalog->DeepestLevel());
  const std::size_t before = CHeapUse::Current();
  std::size_t size = 0;
  for (auto _ : state) {
    Report::CellArray copy = cells;
    benchmark::DoNotOptimize(copy.data());
    state.PauseTiming();
    size = CHeapUse::Current() - before;
    Free(copy);
    state.ResumeTiming();
  }
  state.counters["cells"] = static_cast<double>(cells.size());
  state.counters["bytes"] = static_cast<double>(size);
}

// ---- Beside other programs ----------------------------------------------------------------------

/// A request of the consumption summary of the open project, which is folded.
void BenchPeerCase(benchmark::State& state, const SPeerCase& peerCase) {
  const std::size_t cellCount = AnswerOf(peerCase).size();
  for (auto _ : state) {
    Report::CellArray cells = AnswerOf(peerCase);
    state.PauseTiming();
    if (cells.size() != cellCount) {
      throw std::runtime_error("another answer to the same request");
    }
    Free(cells);
    state.ResumeTiming();
  }
  state.counters["cells"] = static_cast<double>(cellCount);
}

void OpenPeerProject(const std::string& file) {
  CBenchProject::Close();
  CBenchProject::OpenFile(file);
  for (const SPeerCase& peerCase : PeerCases()) {
    AnswerOf(peerCase);
  }
  CBenchProject::RequireNoFailure();
}

// ---- The formula scan ---------------------------------------------------------------------------

constexpr int kManyCircuits = 50000;

// The terms of the formulas of all calculation items.
std::size_t CountTerms(const Report::CellArray& cells) {
  constexpr std::size_t kFormulaCell = 3;  // behind "@CI", the item and its unit
  std::size_t terms = 0;
  for (std::size_t at = 0; at + kFormulaCell < cells.size(); ++at) {
    if (cells[at] == L"@CI") {
      const std::wstring& formula = cells[at + kFormulaCell];
      terms += static_cast<std::size_t>(std::count(formula.begin(), formula.end(), L'+')) + 1;
    }
  }
  return terms;
}

void BenchFormulas(benchmark::State& state, CBenchProject& project, int level, int ofAttribute) {
  project.OpenFormula(kManyCircuits, ofAttribute);
  auto* book = dynamic_cast<CXhlJss2SReport*>(
      CReportMng::Instance()->GetReportData(Report::ReportSysJss, 2));
  if (book == nullptr) {
    throw std::runtime_error("there is no system calculation book");
  }
  const auto request = [&](const std::wstring& spec) {
    Report::CellArray cells;
    book->GetSysJssData(cells, spec, Report::SNewCondition(), level, 0);
    return cells;
  };
  const std::wstring whole = CFormulaProject::FullSpec();
  const std::wstring half = CFormulaProject::HalfSpec();
  if (CountTerms(request(whole)) != kManyCircuits ||
      CountTerms(request(half)) != kManyCircuits / 2) {
    throw std::runtime_error("the formulas do not list each circuit once");
  }
  // The best of the runs: the first one pays for the state that the fold left the heap in.
  double wholeSeconds = std::numeric_limits<double>::max();
  double halfSeconds = wholeSeconds;
  for (auto _ : state) {
    Report::CellArray cells;
    wholeSeconds = std::min(wholeSeconds, SecondsOf([&] { cells = request(whole); }));
    state.PauseTiming();
    Report::CellArray().swap(cells);
    halfSeconds = std::min(halfSeconds, SecondsOf([&] { cells = request(half); }));
    Report::CellArray().swap(cells);
    state.ResumeTiming();
  }
  SetRowsPerSecond(state, kManyCircuits);
  state.counters["growth"] = wholeSeconds / halfSeconds;
}

// ---- The program --------------------------------------------------------------------------------

void RegisterRequests(const SSubject& subject) {
  const std::string size = "/" + std::to_string(subject.rows);
  const std::string& name = subject.report.name;
  const int deepest = subject.report.catalog->DeepestLevel();
  const auto request = [&](const char* phase, int level, ESelection selection) {
    Register(name + phase + size,
             [=](auto& state) { BenchRequest(state, subject, level, selection); });
  };
  Register(name + "/fold" + size, [=](auto& state) { BenchFold(state, subject); });
  request("/request-deepest", deepest, ESelection::All);
  request("/request-0", 0, ESelection::All);
  if (subject.shape == EProjectShape::Example) {
    request("/request-floor", deepest, ESelection::OneFloor);
    request("/request-code", deepest, ESelection::OneSysCode);
    request("/request-every-floor", deepest, ESelection::EveryFloor);
  }
  Register(name + "/copy" + size, [=](auto& state) { BenchCopy(state, subject); });
}

void RegisterReading(CBenchProject& project, std::int64_t rows,
                     const std::vector<SBenchReport>& reports) {
  const std::string size = "/" + std::to_string(rows);
  Register("project/open" + size, [=, &project](auto& state) { BenchOpen(state, project, rows); });
  std::vector<ERecordSet> sets;
  for (const SBenchReport& report : reports) {
    if (std::find(sets.begin(), sets.end(), report.set) == sets.end()) {
      sets.push_back(report.set);
      Register(std::string(SetName(report.set)) + "/read" + size,
               [=, &project](auto& state) { BenchRead(state, project, rows, report.set); });
    }
  }
}

// The single kind is no duct.
bool HasRows(const SBenchReport& report, EProjectShape shape) {
  return shape != EProjectShape::OneKind || report.catalog->type != Report::ReportDuctH;
}

void RegisterSize(CBenchProject& project, std::int64_t rows, EProjectShape shape) {
  const std::vector<SBenchReport> reports = ReportTable();
  for (const SBenchReport& report : reports) {
    if (HasRows(report, shape)) {
      RegisterRequests({project, rows, shape, report});
    }
  }
  for (const SBenchReport& report : reports) {
    // The file of another shape has the consumption set alone.
    if (shape == EProjectShape::Example || report.set == ERecordSet::Summary) {
      Register(report.name + "/cold/" + std::to_string(rows),
               [=, &project](auto& state) { BenchCold(state, project, rows, shape, report); });
    }
  }
  if (shape == EProjectShape::Example) {
    RegisterReading(project, rows, reports);
  }
}

void RegisterFormulas(CBenchProject& project) {
  // Either way as many children as circuits.
  constexpr int kRuns = 4;
  for (const auto& [level, ofAttribute] : {std::pair(4, 1), std::pair(5, 10)}) {
    Register("formula-scan/level-" + std::to_string(level) + "/" + std::to_string(kManyCircuits),
             [&project, level = level, ofAttribute = ofAttribute](auto& state) {
               BenchFormulas(state, project, level, ofAttribute);
             })
        ->Iterations(kRuns);
  }
}

void RegisterAll(CBenchProject& project, const SOptions& options) {
  if (!options.peerProject.empty()) {
    OpenPeerProject(options.peerProject);
    for (const SPeerCase& peerCase : PeerCases()) {
      Register("peers/" + peerCase.name, [=](auto& state) { BenchPeerCase(state, peerCase); });
    }
    return;
  }
  for (const std::int64_t rows : options.sizes) {
    RegisterSize(project, rows, options.shape);
  }
  if (options.shape == EProjectShape::Example) {
    RegisterFormulas(project);
  }
}

/// The positive numbers of a list "10000,100000"; throws for anything else.
std::vector<std::int64_t> ReadSizes(std::string_view list) {
  constexpr std::int64_t kMostRows = 100000000;
  std::vector<std::int64_t> sizes;
  while (true) {
    const std::string_view text = list.substr(0, list.find(','));
    std::int64_t rows = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), rows);
    if (failure != std::errc() || end != text.data() + text.size() || rows < 1 ||
        rows > kMostRows) {
      throw std::runtime_error("--rows takes numbers from 1 to " + std::to_string(kMostRows) +
                               ", separated by commas");
    }
    sizes.push_back(rows);
    if (text.size() == list.size()) {
      return sizes;
    }
    list.remove_prefix(text.size() + 1);
  }
}

/// Takes the argument if it is one of the program's own.
bool TakeFlag(std::string_view argument, SOptions& options) {
  const auto value = [&argument](std::string_view flag) {
    return argument.starts_with(flag) ? std::string(argument.substr(flag.size())) : std::string();
  };
  if (argument == "--no-checks") {
    options.checks = false;
  } else if (const std::string rows = value("--rows="); !rows.empty()) {
    options.sizes = ReadSizes(rows);
  } else if (const std::string shape = value("--shape="); !shape.empty()) {
    options.shape = ShapeOfName(shape);
  } else if (const std::string project = value("--project="); !project.empty()) {
    options.project = project;
  } else if (const std::string file = value("--write="); !file.empty()) {
    options.writes = file;
  } else if (const std::string peers = value("--peers="); !peers.empty()) {
    options.peerProject = peers;
  } else if (const std::string answers = value("--answers="); !answers.empty()) {
    options.answers = answers;
  } else {
    return false;
  }
  return true;
}

int Run(int argc, char** argv) {
  SOptions options;
  std::vector<char*> arguments;
  for (int i = 0; i < argc; ++i) {
    if (!TakeFlag(argv[i], options)) {
      arguments.push_back(argv[i]);
    }
  }
  if (!options.writes.empty()) {
    CBenchProject::WriteFile(options.writes, options.sizes.front(), options.shape);
    return 0;
  }
  if (!options.checks) {
    checks.Never();
  }
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
    return 2;
  }
  benchmark::AddCustomContext("compiler", TALLY_BENCH_COMPILER);
  benchmark::AddCustomContext("flags", TALLY_BENCH_FLAGS);
  CBenchProject project;
  project.Take(options.project);
  RegisterAll(project, options);
  if (!options.answers.empty()) {
    WriteAnswers(options.answers);
    return 0;
  }
  benchmark::RunSpecifiedBenchmarks();
  return anyFailed ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "tally_bench: " << failure.what() << '\n';
    return 2;
  }
}
