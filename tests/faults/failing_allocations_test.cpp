// Every allocation of the engine, of SQLite and of libxml2 fails in turn. Each failure must come
// out as the standard exception (or, of the status file, as the XML service's), leave nothing
// behind, and leave an engine that answers rightly.
#include <gtest/gtest.h>
#include <libxml/xmlmemory.h>
#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "faults/fault_project.h"
#include "filter_trees/category_tree.h"
#include "filter_trees/floor_tree.h"
#include "filter_trees/sys_code_tree.h"
#include "host/report_catalog.h"
#include "host/report_requests.h"
#include "platform/db_operator.h"
#include "platform/portable/utf8_text.h"
#include "platform/xml_service.h"
#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"
#include "report_model/cell_block.h"
#include "result_store/tally_data_mng.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

/// What stands between the program and malloc. No memory is needed to count.
struct SMemory {
  std::int64_t untilFailure = 0;  ///< 0: nothing fails
  std::int64_t held = 0;          ///< blocks
  bool failed = false;
};
SMemory memory;

bool Fails() {
  if (memory.untilFailure == 0 || --memory.untilFailure > 0) {
    return false;
  }
  memory.failed = true;
  return true;
}

void* Allocate(std::size_t size) {
  void* const block = Fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
  memory.held += block == nullptr ? 0 : 1;
  return block;
}

void Free(void* block) {
  memory.held -= block == nullptr ? 0 : 1;
  std::free(block);
}

void* Reallocate(void* block, std::size_t size) {
  if (block == nullptr) {
    return Allocate(size);
  }
  return Fails() ? nullptr : std::realloc(block, size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size) {
  if (void* const block = Allocate(size)) {
    return block;
  }
  throw std::bad_alloc();
}

char* CopyText(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  void* const copy = Allocate(size);
  return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

sqlite3_mem_methods sqliteMemory;

// SQLite asks for the size of its blocks, which its own methods know; these only count and fail.
void CountSqlite() {
  static sqlite3_mem_methods counted;
  sqlite3_config(SQLITE_CONFIG_GETMALLOC, &sqliteMemory);
  counted = sqliteMemory;
  counted.xMalloc = [](int size) -> void* {
    void* const block = Fails() ? nullptr : sqliteMemory.xMalloc(size);
    memory.held += block == nullptr ? 0 : 1;
    return block;
  };
  counted.xRealloc = [](void* block, int size) -> void* {
    return Fails() ? nullptr : sqliteMemory.xRealloc(block, size);
  };
  counted.xFree = [](void* block) {
    --memory.held;
    sqliteMemory.xFree(block);
  };
  sqlite3_config(SQLITE_CONFIG_MALLOC, &counted);
}

}  // namespace

void* operator new(std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void operator delete(void* block) noexcept {
  Free(block);
}
void operator delete[](void* block) noexcept {
  Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  Free(block);
}

namespace {

/// The libraries' memory has to be taken over before their first use.
class CCountedLibraries : public testing::Environment {
 public:
  void SetUp() override {
    CountSqlite();
    ASSERT_EQ(xmlMemSetup(Free, std::malloc, Reallocate, CopyText), 0);
    ASSERT_EQ(xmlMemSetup(Free, Allocate, Reallocate, CopyText), 0);
  }
};
[[maybe_unused]] testing::Environment* const countedLibraries =
    testing::AddGlobalTestEnvironment(new CCountedLibraries);

class FailingAllocations : public testing::Test {
 protected:
  FailingAllocations() {
    tally_test::CreateProjectDatabase(folder_ / "fault.tally", kFaultProject);
    CDbOperator::Install(CDbOperator::MakePortable());
    CTallyDataMng::Instance();
    CReportMng::Instance();
  }

  ~FailingAllocations() override { Close(); }

  std::wstring Project() const { return (folder_ / "fault.tally").wstring(); }
  std::wstring Status() const { return (folder_ / "status.xml").wstring(); }

  static void Close() {
    CReportStatusMng::Instance()->ReadReportStatus(L"");
    CTallyDataMng::Instance()->InitData(L"none", false);
    CTallyDataMng::Instance()->InitData(L"", true);
  }

  void Open(bool isQdMode = true) const {
    CTallyDataMng::Instance()->InitData(Project(), isQdMode);
  }

  /// Runs `work` after `prepare` once for each of its allocations, which fails. After each failure
  /// and `recover` it runs again and must answer what it answered at first.
  void FailEach(
      const std::function<void()>& prepare, const std::function<std::string()>& work,
      const std::function<void()>& recover = [] {}) {
    std::string expected;
    for (int warmUp = 0; warmUp < 2; ++warmUp) {
      prepare();
      expected = work();
      Close();
    }
    ASSERT_NE(expected, "");
    const std::int64_t held = memory.held;
    std::int64_t failures = 0;
    for (std::int64_t n = 1;; ++n) {
      prepare();
      const bool isDone = !Fail(n, work);
      if (isDone) {
        EXPECT_GT(failures, 0);
        return;
      }
      ++failures;
      recover();
      if (work() != expected) {
        FAIL() << "another answer after allocation " << n << " failed";
      }
      Close();
      if (memory.held != held) {
        FAIL() << memory.held - held << " blocks more after allocation " << n << " failed";
      }
    }
  }

 private:
  /// Whether the n-th allocation came.
  static bool Fail(std::int64_t n, const std::function<std::string()>& work) {
    memory.failed = false;
    memory.untilFailure = n;
    try {
      work();
    } catch (const std::bad_alloc&) {
    } catch (const CXmlError&) {
    }
    memory.untilFailure = 0;
    return memory.failed;
  }

 protected:
  tally_test::CTempFolder folder_;
};

std::string Joined(const Report::CellArray& cells) {
  std::string text;
  for (const std::wstring& cell : cells) {
    text += Utf8FromWide(cell);
    text += '\n';
  }
  return text;
}

TEST_F(FailingAllocations, WhileAProjectIsOpened) {
  FailEach([] {},
           [this] {
             CTallyDataMng* data = CTallyDataMng::Instance();
             if (!data->CheckMdbVertion(Project())) {
               return std::string("refused");
             }
             data->InitData(L"none", true);
             Open();
             std::string answer;
             for (const auto& kind : data->GetSmallIndexTree()) {
               answer += Utf8FromWide(kind.spec) + "\n";
             }
             return answer + Joined(data->GetSgdNameTree());
           });
}

TEST_F(FailingAllocations, WhileAFilterTreeIsBuilt) {
  FailEach(
      [this] { Open(); },
      [] {
        CReportMng* reports = CReportMng::Instance();
        std::string answer;
        for (const auto type : {Report::TreeFloor, Report::TreeSysCode, Report::TreeCategory}) {
          answer += reports->GetTreeData(type) == nullptr ? "none" : "tree";
        }
        return answer;
      });
}

TEST_F(FailingAllocations, WhileABlockIsWrittenLeaveTheOutputAsItWas) {
  FailEach([] {},
           [] {
             CCellBlock block;
             for (int row = 0; row < 3; ++row) {
               block.AddCells(L"@A", L"a text that needs memory of its own", 123456.0 + row);
             }
             Report::CellArray out{L"before"};
             try {
               block.MoveTo(out);
             } catch (const std::bad_alloc&) {
               EXPECT_EQ(out, Report::CellArray{L"before"});
               throw;
             }
             return Joined(out);
           });
}

class FailingAllocationsIn : public FailingAllocations,
                             public testing::WithParamInterface<Report::EReportType> {};

TEST_P(FailingAllocationsIn, AResultSetThatIsRead) {
  FailEach([this] { Open(); },
           [] {
             Report::CellArray specs;
             CTallyDataMng::Instance()->GetReportSpecAry(specs, GetParam());
             return Joined(specs);
           });
}

INSTANTIATE_TEST_SUITE_P(EverySet, FailingAllocationsIn,
                         testing::Values(Report::ReportXhlHz, Report::ReportXhlGl,
                                         Report::ReportXhlCgHz, Report::ReportPjHz,
                                         Report::ReportSysJss, Report::ReportQdDeHz));

class FailingAllocationsOf : public FailingAllocations,
                             public testing::WithParamInterface<std::size_t> {};

TEST_P(FailingAllocationsOf, WhileAReportIsFoldedAndAsked) {
  const SCatalogReport& report = ReportCatalog()[GetParam()];
  const auto prepare = [&] {
    Open(report.type != Report::ReportDeHz);  // quotas are summed up without bill items
    Report::CellArray specs;
    CTallyDataMng::Instance()->GetReportSpecAry(specs, report.type);
  };
  FailEach(prepare, [&] {
    std::string answer;
    SRowRequest request;
    request.totalType = report.type;
    request.level = report.DeepestLevel();
    IReport& folded = *CReportMng::Instance()->GetReportData(report.type, report.variant);
    for (const wchar_t* spec : {L"给排水", L"暖通"}) {
      request.spec = spec;
      Report::CellArray cells;
      report.appendRows(folded, request, cells);
      answer += Joined(cells);
    }
    return answer;
  });
}

INSTANTIATE_TEST_SUITE_P(EveryReport, FailingAllocationsOf,
                         testing::Range(std::size_t{0}, ReportCatalog().size()),
                         [](const auto& parameter) {
                           std::string name =
                               tally_test::FullName(ReportCatalog()[parameter.param]);
                           std::erase(name, '-');
                           return name;
                         });

// What was read before a failure stays, and goes to the file with the next save: the host decides
// whether it reads again. The file itself is whole at any time.
TEST_F(FailingAllocations, WhileAStatusIsReadAndSaved) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  const CReportStatusMng fresh = *status;
  status->ReadReportStatus(Status());
  status->SetReportExpand(L"消耗量汇总表", 3);
  status->SetReportColStatus(L"消耗量汇总表", {{L"工程量", true}, {L"单位", false}});
  status->SetDispSgd({L"一区", L"二区"});
  status->SaveReportStatus();
  const auto file = [this] { return tally_test::ReadBytes(folder_ / "status.xml"); };
  const std::string whole = file();
  const auto forget = [status, &fresh] { *status = fresh; };
  FailEach(
      forget,
      [&] {
        const bool isRead = status->ReadReportStatus(Status());
        status->SaveReportStatus();
        return isRead ? file() : "not read";
      },
      [&] {
        forget();
        ASSERT_EQ(file(), whole);
      });
}

}  // namespace
