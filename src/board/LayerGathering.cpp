#include "board/LayerGathering.h"

#include <array>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "base/CException.h"

namespace laminate {

namespace {

using Index = std::uint32_t;
constexpr Index kNone = 0xFFFFFFFF;

// Numbers the keys that it meets, from 0. Before the map stands a small direct table, since layers are few. An ordered
// map, for a file may choose its layers so that the keys of a hash table collide.
template <class Key, class SlotOf>
class KeyIds {
 public:
  explicit KeyIds(SlotOf slotOf) : m_slotOf(slotOf) {}
  Index Of(const Key& key) {
    Recent& recent = m_recent[m_slotOf(key) % m_recent.size()];
    if (recent.id != kNone && recent.key == key) return recent.id;
    const Index id = m_ids.try_emplace(key, static_cast<Index>(m_ids.size())).first->second;
    recent = {key, id};
    return id;
  }
  std::size_t Count() const { return m_ids.size(); }

 private:
  struct Recent {
    Key key{};
    Index id = kNone;
  };
  SlotOf m_slotOf;
  std::array<Recent, 256> m_recent;
  std::map<Key, Index> m_ids;
};

std::size_t SlotOfNumber(int n) { return static_cast<std::size_t>(static_cast<unsigned>(n)); }
std::size_t SlotOfName(std::string_view s) {
  if (s.empty()) return 0;
  const auto byte = [s](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(s[i])); };
  return s.size() + 31 * byte(0) + 7 * byte(s.size() - 1) + 3 * byte(s.size() / 2);
}

// One pass of the gathering: the order in which the elements come out. `keys` numbers each element's key,
// `mayLead(element)` tells which may start a run, and `lastHead` is the key that counts as gathered at the start.
//
// The element that directly follows a gathered run is put out unexamined. Since a run takes all elements of its key
// that are still there, each key's chain is walked once.
template <class MayLead>
std::vector<Index> Gather(const std::vector<Index>& keys, std::size_t nKeys, MayLead mayLead, Index lastHead) {
  const std::size_t nCount = keys.size();
  std::vector<Index> firstOf(nKeys, kNone);
  std::vector<Index> nextOf(nCount);
  for (std::size_t i = nCount; i-- != 0;) nextOf[i] = std::exchange(firstOf[keys[i]], static_cast<Index>(i));

  std::vector<bool> done(nCount, false);
  std::vector<Index> order;
  order.reserve(nCount);
  std::size_t nCursor = 0;
  const auto putOut = [&](std::size_t i) {
    done[i] = true;
    order.push_back(static_cast<Index>(i));
  };
  const auto skipDone = [&] {
    while (nCursor != nCount && done[nCursor]) ++nCursor;
    return nCursor != nCount;
  };
  while (skipDone()) {
    const std::size_t nHead = nCursor;
    putOut(nHead);
    if (!mayLead(nHead) || keys[nHead] == lastHead) continue;
    lastHead = keys[nHead];
    for (Index i = nextOf[nHead]; i != kNone; i = nextOf[i]) {
      if (!done[i]) putOut(i);
    }
    if (skipDone()) putOut(nCursor);
  }
  return order;
}

// What the passes need of the shapes, in their order: they lie far apart, so each is looked at once.
class ShapeKeys {
 public:
  explicit ShapeKeys(const CBDdrawObjArray& array) {
    const auto nShapes = static_cast<std::size_t>(array.GetSize());
    m_slots.reserve(nShapes);
    m_numberKeys.reserve(nShapes);
    m_nameKeys.reserve(nShapes);
    m_isNumberless.reserve(nShapes);
    for (INT_PTR i = 0; i < array.GetSize(); ++i) {
      const CBDdrawObj* const p = array.GetAt(i);
      // While one shape is looked at, a later one comes into the cache.
      if (const CBDdrawObj* const pLater = array.GetAt(i + 16)) {
        __builtin_prefetch(&pLater->m_sLayerName);
        __builtin_prefetch(&pLater->m_nLayerNumber);
      }
      if (p == nullptr) continue;
      m_slots.push_back(i);
      m_numberKeys.push_back(m_numbers.Of(p->m_nLayerNumber));
      m_nameKeys.push_back(m_names.Of(p->m_sLayerName.View()));
      m_isNumberless.push_back(p->m_nLayerNumber == 0);
    }
  }

  std::vector<INT_PTR> GatheredSlots() const {
    // By number, from -1: every shape may lead.
    std::vector<Index> order = Gather(
        m_numberKeys, m_numbers.Count(), [](std::size_t) { return true; }, m_noNumber);
    // By name, from the empty one: shapes of number 0 may lead, and take those of any number along.
    const std::vector<Index> nameKeys = Picked(m_nameKeys, order);
    const auto mayLead = [&](std::size_t i) { return m_isNumberless[order[i]]; };
    return Picked(m_slots, Picked(order, Gather(nameKeys, m_names.Count(), mayLead, m_noName)));
  }

 private:
  template <class T>
  static std::vector<T> Picked(const std::vector<T>& elements, const std::vector<Index>& order) {
    std::vector<T> result;
    result.reserve(order.size());
    for (const Index i : order) result.push_back(elements[i]);
    return result;
  }

  KeyIds<int, decltype(&SlotOfNumber)> m_numbers{&SlotOfNumber};
  KeyIds<std::string_view, decltype(&SlotOfName)> m_names{&SlotOfName};
  const Index m_noNumber = m_numbers.Of(-1);
  const Index m_noName = m_names.Of({});
  std::vector<INT_PTR> m_slots;
  std::vector<Index> m_numberKeys;
  std::vector<Index> m_nameKeys;
  std::vector<bool> m_isNumberless;
};

}  // namespace

std::vector<INT_PTR> GatheredSlots(const CBDdrawObjArray& array) {
  return WithPlatformFailures([&array] { return ShapeKeys(array).GatheredSlots(); });
}

void GatherByLayer(CBDdrawObjArray& array) {
  const std::vector<CBDdrawObj*> shapes = WithPlatformFailures([&array] {
    std::vector<CBDdrawObj*> gathered;
    gathered.reserve(static_cast<std::size_t>(array.GetSize()));
    for (const INT_PTR nSlot : GatheredSlots(array)) gathered.push_back(array.GetAt(nSlot));
    return gathered;
  });
  auto it = shapes.begin();
  for (CBDdrawObj*& p : array) {
    if (p != nullptr) p = *it++;
  }
}

}  // namespace laminate
