#include "save/WrittenForms.h"

#include <map>
#include <tuple>

namespace laminate {

void TellNewLosses(const SaveLosses& before, const SaveLosses& now, SaveLosses& losses) {
  std::map<std::tuple<std::string_view, std::string_view, std::string_view>, int> known;
  for (const auto* pList : {&before.Refused(), &before.Allowed()}) {
    for (const SaveLoss& loss : *pList) ++known[{loss.name, loss.reason, loss.value}];
  }
  for (const auto* pList : {&now.Refused(), &now.Allowed()}) {
    for (const SaveLoss& loss : *pList) {
      const auto it = known.find({loss.name, loss.reason, loss.value});
      if (it == known.end() || it->second == 0) {
        losses.Tell(loss);
      } else {
        --it->second;
      }
    }
  }
}

}  // namespace laminate
