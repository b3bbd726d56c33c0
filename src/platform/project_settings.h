// The current project's bill and quota settings, and the marks of its bill items.
#ifndef TALLY_PLATFORM_PROJECT_SETTINGS_H_
#define TALLY_PLATFORM_PROJECT_SETTINGS_H_

#include <memory>
#include <string>
#include <vector>

#include "platform/export.h"
#include "platform/replaceable.h"

struct SQdDeInfo {
  /// How quotas are chosen; the engine tells zero and non-zero apart.
  enum EQdDeMode : int {};
};

/// Where the settings come from. A setting that the project lacks is empty, the mode 0.
class TALLY_API IProjectSettings : public CReplaceable<IProjectSettings> {
 public:
  /// The settings of the project that the portable CDbOperator read last.
  static std::shared_ptr<IProjectSettings> MakePortable();

  virtual ~IProjectSettings() = default;
  virtual std::wstring GetDeCode() = 0;
  virtual std::wstring GetDeLocal() = 0;
  virtual std::wstring GetDeYear() = 0;
  virtual std::wstring GetQdCode() = 0;
  virtual std::wstring GetQdLocal() = 0;
  virtual std::wstring GetQdDeCode() = 0;
  virtual std::wstring GetQdDeLocal() = 0;
  virtual std::wstring GetQdDeYear() = 0;
  virtual SQdDeInfo::EQdDeMode GetQdDeMode() = 0;
  /// Appends the marks of a bill item, three cells each: name, value, and one more that the engine
  /// skips. False where the item has none or they could not be read.
  virtual bool GetQdMarkInfo(const std::wstring& code, std::vector<std::wstring>& cells) = 0;
};

/// The settings of the current project; a value made on the spot answers for it.
class CAtt {
 public:
  /// Code, region and year of the quota library of a project in quota mode.
  std::wstring GetDeCode() const { return IProjectSettings::Instance()->GetDeCode(); }
  std::wstring GetDeLocal() const { return IProjectSettings::Instance()->GetDeLocal(); }
  std::wstring GetDeYear() const { return IProjectSettings::Instance()->GetDeYear(); }
  /// Code and region of the bill library.
  std::wstring GetQdCode() const { return IProjectSettings::Instance()->GetQdCode(); }
  std::wstring GetQdLocal() const { return IProjectSettings::Instance()->GetQdLocal(); }
  /// Code, region and year of the quota library that goes with the bill.
  std::wstring GetQdDeCode() const { return IProjectSettings::Instance()->GetQdDeCode(); }
  std::wstring GetQdDeLocal() const { return IProjectSettings::Instance()->GetQdDeLocal(); }
  std::wstring GetQdDeYear() const { return IProjectSettings::Instance()->GetQdDeYear(); }
  SQdDeInfo::EQdDeMode GetQdDeMode() const { return IProjectSettings::Instance()->GetQdDeMode(); }
};

/// The marks of bill items.
class CAttMarkMng {
 public:
  /// As IProjectSettings::GetQdMarkInfo.
  bool GetQdMarkInfo(const std::wstring& code, std::vector<std::wstring>& cells) const {
    return IProjectSettings::Instance()->GetQdMarkInfo(code, cells);
  }
};

#endif  // TALLY_PLATFORM_PROJECT_SETTINGS_H_
