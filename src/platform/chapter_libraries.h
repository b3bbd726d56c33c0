// Chapter look-ups for quota and bill codes.
#ifndef TALLY_PLATFORM_CHAPTER_LIBRARIES_H_
#define TALLY_PLATFORM_CHAPTER_LIBRARIES_H_

#include <memory>
#include <string>
#include <vector>

#include "platform/export.h"
#include "platform/replaceable.h"

/// A quota library of the current project.
class TALLY_API IQuotaLibrary : public CReplaceable<IQuotaLibrary> {
 public:
  static std::shared_ptr<IQuotaLibrary> MakePortable();
  virtual ~IQuotaLibrary() = default;
  virtual void Open(const std::wstring& code, const std::wstring& local,
                    const std::wstring& year) = 0;
  virtual void Close() = 0;
  /// Appends the chapter path of `code` ("chapter\section\...") as one cell and sets `number`.
  /// Leaves both alone where the chapter is unknown or no library is open.
  virtual void GetZhangJ(const std::wstring& code, std::vector<std::wstring>& cells,
                         int& number) = 0;
};

/// A bill library of the current project.
class TALLY_API IBillLibrary : public CReplaceable<IBillLibrary> {
 public:
  static std::shared_ptr<IBillLibrary> MakePortable();
  virtual ~IBillLibrary() = default;
  virtual void Open(const std::wstring& code, const std::wstring& local) = 0;
  virtual void Close() = 0;
  /// The chapter name of `code`, and its number in `number`. Empty, with `number` left alone, where
  /// the chapter is unknown or no library is open.
  virtual std::wstring GetZhangName(const std::wstring& code, int& number) = 0;
};

/// The quota library in force.
class CInterDeAnalyze {
 public:
  static void InitialDeDB(const std::wstring& code, const std::wstring& local,
                          const std::wstring& year) {
    IQuotaLibrary::Instance()->Open(code, local, year);
  }
  static void CloseDeDB() { IQuotaLibrary::Instance()->Close(); }
  static void GetZhangJ(const std::wstring& code, std::vector<std::wstring>& cells, int& number) {
    IQuotaLibrary::Instance()->GetZhangJ(code, cells, number);
  }
};

/// The bill library in force.
class CInterKorQdDek {
 public:
  static void InitialDeDB(const std::wstring& code, const std::wstring& local) {
    IBillLibrary::Instance()->Open(code, local);
  }
  static void CloseDeDB() { IBillLibrary::Instance()->Close(); }
  static std::wstring GetZhangName(const std::wstring& code, int& number) {
    return IBillLibrary::Instance()->GetZhangName(code, number);
  }
};

#endif  // TALLY_PLATFORM_CHAPTER_LIBRARIES_H_
