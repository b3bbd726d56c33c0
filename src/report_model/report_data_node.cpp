#include "report_model/report_data_node.h"

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"

std::wstring CReportSysCode::GetKey() const {
  return IntText(sortId);
}

std::wstring SResultIdentity::GetComponentText() const {
  std::wstring text;
  text.reserve(ComponentTextSize());
  AppendComponentText(text);
  return text;
}

void SResultIdentity::AppendComponentText(std::wstring& text) const {
  for (const std::wstring& component : components) {
    if (!component.empty()) {
      text += component;
      text += L'$';
    }
  }
}

std::size_t SResultIdentity::ComponentTextSize() const {
  std::size_t size = 0;
  for (const std::wstring& component : components) {
    size += component.empty() ? 0 : component.size() + 1;
  }
  return size;
}

std::wstring SResultIdentity::GetRepeatFormula() const {
  return components.size() < 2
             ? std::wstring(expression)
             : MultipliedInBrackets(expression, static_cast<int>(components.size()), L"件");
}

namespace {

std::wstring ResultKey(const SResultIdentity& result, double quantity) {
  std::wstring key;
  key += result.sgdName;
  key += result.expression;
  key += L'@';
  key += result.floorText;
  key += L'@';
  AppendNumber(key, quantity);
  return key;
}

}  // namespace

std::wstring CReportResult::GetKey() const {
  return ResultKey(*this, quantity);
}

std::wstring CReportResultDetail::GetKey() const {
  return ResultKey(*this, quantity1);
}

std::wstring CReportBrushPaint::GetKey() const {
  return IntText(number1) + text2 + IntText(number2);
}

std::wstring CReportChapter::GetKey() const {
  return IntText(number) + L"@" + name;
}

std::wstring CReportQdDeItem::GetKey() const {
  return code + L"@" + name + L"@" + feature + L"@" + unit;
}
