#include "save/FormText.h"

namespace laminate {

FormText::FormText(TextOut& out, SaveLosses& losses, const FormStyle& style)
    : m_out(out), m_losses(losses), m_style(style) {}

void FormText::Refuse(std::string_view sField, std::string_view sReason, std::string sValue) {
  std::string sObject;
  for (const Step::Place& place : m_path) {
    if (!sObject.empty()) sObject += '.';
    sObject += place.sField;
    if (place.nIndex < 0) continue;
    sObject += '[';
    sObject += place.sName.empty() ? std::to_string(place.nIndex) : std::string(place.sName);
    sObject += ']';
  }
  m_losses.Tell({std::move(sObject), std::string(sField), std::string(sReason), std::move(sValue)});
}

}  // namespace laminate
