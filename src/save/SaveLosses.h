#pragma once
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace laminate {

/// A value that the files of a design cannot hold.
struct SaveLoss {
  std::string object;  ///< where it is, in the names of the database: "m_pBoardContainer.m_pNetArray[GND]"
  std::string name;    ///< class and field, "CBDnet.m_sName": the name by which the loss is allowed
  std::string reason;
  std::string value;  ///< what is lost, as text
};

/// What a save finds that it cannot say. A loss that was allowed by name is left out of what is written; any other one
/// is a refusal, and then nothing may be written.
class SaveLosses {
 public:
  /// Allows the loss of a field by its name, such as "CBDnet.m_sName".
  void Allow(std::string_view sName) { m_allowedNames.emplace(sName); }
  void Tell(SaveLoss loss) {
    auto& losses = m_allowedNames.find(loss.name) == m_allowedNames.end() ? m_refused : m_allowed;
    losses.push_back(std::move(loss));
  }
  bool IsRefused() const { return !m_refused.empty(); }
  const std::vector<SaveLoss>& Refused() const { return m_refused; }
  const std::vector<SaveLoss>& Allowed() const { return m_allowed; }

 private:
  std::set<std::string, std::less<>> m_allowedNames;
  std::vector<SaveLoss> m_refused;
  std::vector<SaveLoss> m_allowed;
};

}  // namespace laminate
