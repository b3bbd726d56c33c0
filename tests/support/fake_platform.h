// Fakes of the platform services: they answer from memory and keep what they were asked. A test
// puts them in force with TInstalled, or takes the fixture of tally_test_fixture.h.
#ifndef TALLY_TESTS_SUPPORT_FAKE_PLATFORM_H_
#define TALLY_TESTS_SUPPORT_FAKE_PLATFORM_H_

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/app_profile.h"
#include "platform/chapter_libraries.h"
#include "platform/db_operator.h"
#include "platform/message_box.h"
#include "platform/private_profile.h"
#include "platform/project_settings.h"
#include "result_store/db_records.h"

namespace tally_test {

/// Puts a new TFake in force as TService, and in its destructor the service that was there before.
/// Use it as a pointer to the fake.
template <class TService, class TFake>
class TInstalled {
 public:
  TInstalled() : fake_(std::make_shared<TFake>()), before_(TService::Install(fake_)) {}
  ~TInstalled() { TService::Install(before_); }
  TInstalled(const TInstalled&) = delete;
  TInstalled& operator=(const TInstalled&) = delete;

  TFake* operator->() const { return fake_.get(); }
  TFake& operator*() const { return *fake_; }

 private:
  std::shared_ptr<TFake> fake_;
  std::shared_ptr<TService> before_;
};

/// All that a project database holds.
struct SProjectRecords {
  std::vector<KorDMRec::SKorDMAllSmallIndexRec> smallIndex;
  std::vector<KorDMRec::SKorDMAllSysCodeRec> sysCodes;
  std::vector<KorDMRec::SKorDMFloorRec> floors;
  std::vector<std::wstring> sgdNames;
  KorDMRec::SKorDMResultData hz;
  KorDMRec::SKorDMResultData gl;
  KorDMRec::SKorDMResultData cg;
  KorDMRec::SKorDMDetailResultData detail;
  KorDMRec::SKorDMPjResultData pj;
  KorDMRec::SKorDMQdDeResultData qdDe;
};

/// The operations of CDbOperator; ReadXhlData counts as Hz or Gl.
enum class EDbRead { Version, Category, SysCode, Floor, SgdAtt, Hz, Gl, Cg, Detail, Pj, QdDe };

/// The same records for every path. Reads append, as the interface asks.
class CFakeDb final : public CDbOperator {
 public:
  SProjectRecords records;
  int version = 9;
  std::set<EDbRead> failing;  ///< these answer false and append nothing
  std::set<EDbRead> raising;  ///< these throw std::bad_alloc

  // What was asked, in the order of the calls.
  std::vector<EDbRead> reads;
  std::vector<std::wstring> paths;
  std::vector<bool> qdModes;  ///< the flag of each ReadQdDeData

  /// How often one operation was called.
  std::ptrdiff_t Count(EDbRead read) const { return std::count(reads.begin(), reads.end(), read); }
  /// Forgets what was asked.
  void ForgetReads() {
    reads.clear();
    paths.clear();
    qdModes.clear();
  }

  int GetMdbVertion(const std::wstring& path) override {
    return Answers(EDbRead::Version, path) ? version : 0;
  }
  bool ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& out,
                        const std::wstring& path) override {
    return AppendRecords(EDbRead::Category, out, records.smallIndex, path);
  }
  bool ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& out,
                       const std::wstring& path) override {
    return AppendRecords(EDbRead::SysCode, out, records.sysCodes, path);
  }
  bool ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& out,
                     const std::wstring& path) override {
    return AppendRecords(EDbRead::Floor, out, records.floors, path);
  }
  bool ReadSgdAttData(std::vector<std::wstring>& out, const std::wstring& path) override {
    return AppendRecords(EDbRead::SgdAtt, out, records.sgdNames, path);
  }
  bool ReadXhlData(KorDMRec::SKorDMResultData& out, const std::wstring& path,
                   bool summary) override {
    return summary ? AppendSet(EDbRead::Hz, out, records.hz, path)
                   : AppendSet(EDbRead::Gl, out, records.gl, path);
  }
  bool ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& out, const std::wstring& path) override {
    return AppendSet(EDbRead::Detail, out, records.detail, path);
  }
  bool ReadCgData(KorDMRec::SKorDMResultData& out, const std::wstring& path) override {
    return AppendSet(EDbRead::Cg, out, records.cg, path);
  }
  bool ReadPjData(KorDMRec::SKorDMPjResultData& out, const std::wstring& path) override {
    return AppendSet(EDbRead::Pj, out, records.pj, path);
  }
  bool ReadQdDeData(KorDMRec::SKorDMQdDeResultData& out, const std::wstring& path,
                    bool isQdMode) override {
    qdModes.push_back(isQdMode);
    if (!AppendSet(EDbRead::QdDe, out, records.qdDe, path)) {
      return false;
    }
    Append(out.qdItems, records.qdDe.qdItems);
    Append(out.deItems, records.qdDe.deItems);
    return true;
  }

 private:
  bool Answers(EDbRead read, const std::wstring& path) {
    reads.push_back(read);
    paths.push_back(path);
    if (raising.contains(read)) {
      throw std::bad_alloc();
    }
    return !failing.contains(read);
  }

  template <class TRecord>
  static void Append(std::vector<TRecord>& out, const std::vector<TRecord>& from) {
    out.insert(out.end(), from.begin(), from.end());
  }

  template <class TRecord>
  bool AppendRecords(EDbRead read, std::vector<TRecord>& out, const std::vector<TRecord>& from,
                     const std::wstring& path) {
    if (!Answers(read, path)) {
      return false;
    }
    Append(out, from);
    return true;
  }

  template <class TData>
  bool AppendSet(EDbRead read, TData& out, const TData& from, const std::wstring& path) {
    if (!Answers(read, path)) {
      return false;
    }
    Append(out.sgds, from.sgds);
    Append(out.floors, from.floors);
    Append(out.specs, from.specs);
    Append(out.categories, from.categories);
    Append(out.attrs, from.attrs);
    Append(out.sysCodes, from.sysCodes);
    Append(out.components, from.components);
    Append(out.calItems, from.calItems);
    Append(out.rows, from.rows);
    return true;
  }
};

/// The settings are plain fields. Marks by bill code, three cells for each mark.
class CFakeSettings final : public IProjectSettings {
 public:
  std::wstring deCode, deLocal, deYear;
  std::wstring qdCode, qdLocal;
  std::wstring qdDeCode, qdDeLocal, qdDeYear;
  int qdDeMode = 0;
  std::map<std::wstring, std::vector<std::wstring>> marks;

  std::vector<std::wstring> markRequests;  ///< the code of each GetQdMarkInfo

  std::wstring GetDeCode() override { return deCode; }
  std::wstring GetDeLocal() override { return deLocal; }
  std::wstring GetDeYear() override { return deYear; }
  std::wstring GetQdCode() override { return qdCode; }
  std::wstring GetQdLocal() override { return qdLocal; }
  std::wstring GetQdDeCode() override { return qdDeCode; }
  std::wstring GetQdDeLocal() override { return qdDeLocal; }
  std::wstring GetQdDeYear() override { return qdDeYear; }
  SQdDeInfo::EQdDeMode GetQdDeMode() override {
    return static_cast<SQdDeInfo::EQdDeMode>(qdDeMode);
  }
  bool GetQdMarkInfo(const std::wstring& code, std::vector<std::wstring>& cells) override {
    markRequests.push_back(code);
    const auto at = marks.find(code);
    if (at == marks.end()) {
      return false;
    }
    cells.insert(cells.end(), at->second.begin(), at->second.end());
    return true;
  }
};

/// A chapter as a library gives it: without a number the caller's number stays.
struct SFakeChapter {
  std::optional<int> number;
  std::wstring text;  ///< quota library: "chapter\section"; bill library: the chapter's name
};

/// What the two fake libraries have in common: chapters by code, and what was asked. A chapter is
/// known only while the library is open.
struct SFakeLibrary {
  std::map<std::wstring, SFakeChapter> chapters;

  bool isOpen = false;
  int closes = 0;                                   ///< calls of Close
  std::vector<std::vector<std::wstring>> openings;  ///< the arguments of each Open
  std::vector<std::wstring> requests;               ///< the code of each look-up

  /// The chapter of `code`, with its number in `number`; null where it is unknown.
  const SFakeChapter* LookUp(const std::wstring& code, int& number) {
    requests.push_back(code);
    const auto at = chapters.find(code);
    if (!isOpen || at == chapters.end()) {
      return nullptr;
    }
    number = at->second.number.value_or(number);
    return &at->second;
  }
};

class CFakeQuotaLibrary final : public IQuotaLibrary, public SFakeLibrary {
 public:
  void Open(const std::wstring& code, const std::wstring& local,
            const std::wstring& year) override {
    isOpen = true;
    openings.push_back({code, local, year});
  }
  void Close() override {
    isOpen = false;
    ++closes;
  }
  void GetZhangJ(const std::wstring& code, std::vector<std::wstring>& cells, int& number) override {
    if (const SFakeChapter* chapter = LookUp(code, number)) {
      cells.push_back(chapter->text);
    }
  }
};

class CFakeBillLibrary final : public IBillLibrary, public SFakeLibrary {
 public:
  void Open(const std::wstring& code, const std::wstring& local) override {
    isOpen = true;
    openings.push_back({code, local});
  }
  void Close() override {
    isOpen = false;
    ++closes;
  }
  std::wstring GetZhangName(const std::wstring& code, int& number) override {
    const SFakeChapter* chapter = LookUp(code, number);
    return chapter == nullptr ? std::wstring() : chapter->text;
  }
};

class CFakeProfile final : public IKorAppProfile {
 public:
  std::wstring folder = L"C:\\config";
  std::wstring version = L"16.2.0";

  std::wstring GetConfigFolder() override { return folder; }
  CKorVersion GetVersion() override { return CKorVersion(version); }
};

/// Values by file, section and key, all compared exactly.
class CFakePrivateProfile final : public IPrivateProfile {
 public:
  using Place = std::tuple<std::wstring, std::wstring, std::wstring>;  ///< file, section, key
  std::map<Place, std::wstring> values;
  bool writesFail = false;
  int reads = 0;
  int writes = 0;

  std::wstring GetString(const std::wstring& section, const std::wstring& key,
                         const std::wstring& fallback, const std::wstring& path) override {
    ++reads;
    const auto at = values.find({path, section, key});
    return at == values.end() ? fallback : at->second;
  }
  bool WriteString(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                   const std::wstring& path) override {
    ++writes;
    if (!writesFail) {
      values[{path, section, key}] = value;
    }
    return !writesFail;
  }
};

class CFakeMessageBox final : public IMessageBox {
 public:
  struct SShown {
    std::wstring text;
    std::wstring caption;
    unsigned flags = 0;
  };
  std::vector<SShown> shown;

  void Show(const std::wstring& text, const std::wstring& caption, unsigned flags) override {
    shown.push_back({text, caption, flags});
  }
};

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_FAKE_PLATFORM_H_
