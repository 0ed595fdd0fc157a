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

// One pass of the gathering: the order in which the elements come out. `keys` numbers each element's key, `mayLead`
// tells which elements may start a run, and `lastHead` is the key that counts as gathered at the start, or `kNone`.
//
// The element that directly follows a gathered run is put out unexamined. Since a run takes all elements of its key
// that are still there, each key's chain is walked once.
std::vector<Index> Gather(const std::vector<Index>& keys, std::size_t nKeys, const std::vector<bool>& mayLead,
                          Index lastHead) {
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
    if (!mayLead[nHead] || keys[nHead] == lastHead) continue;
    lastHead = keys[nHead];
    for (Index i = nextOf[nHead]; i != kNone; i = nextOf[i]) {
      if (!done[i]) putOut(i);
    }
    if (skipDone()) putOut(nCursor);
  }
  return order;
}

using Shapes = std::vector<const CBDdrawObj*>;

template <class T>
std::vector<T> Ordered(const std::vector<T>& elements, const std::vector<Index>& order) {
  std::vector<T> result;
  result.reserve(elements.size());
  for (const Index i : order) result.push_back(elements[i]);
  return result;
}

// By number, from -1: every shape may lead.
std::vector<Index> OrderByNumber(const Shapes& shapes) {
  KeyIds<int, decltype(&SlotOfNumber)> ids(&SlotOfNumber);
  const Index start = ids.Of(-1);
  std::vector<Index> keys;
  keys.reserve(shapes.size());
  for (const CBDdrawObj* p : shapes) keys.push_back(ids.Of(p->m_nLayerNumber));
  return Gather(keys, ids.Count(), std::vector<bool>(shapes.size(), true), start);
}

// By name, from the empty one: shapes of number 0 may lead, and take those of any number along.
std::vector<Index> OrderByName(const Shapes& shapes) {
  KeyIds<std::string_view, decltype(&SlotOfName)> ids(&SlotOfName);
  const Index start = ids.Of({});
  std::vector<Index> keys;
  std::vector<bool> mayLead;
  keys.reserve(shapes.size());
  mayLead.reserve(shapes.size());
  for (const CBDdrawObj* p : shapes) {
    keys.push_back(ids.Of(p->m_sLayerName.View()));
    mayLead.push_back(p->m_nLayerNumber == 0);
  }
  return Gather(keys, ids.Count(), mayLead, start);
}

}  // namespace

std::vector<INT_PTR> GatheredSlots(const CBDdrawObjArray& array) {
  return WithPlatformFailures([&array] {
    Shapes shapes;
    std::vector<INT_PTR> slots;
    shapes.reserve(static_cast<std::size_t>(array.GetSize()));
    slots.reserve(shapes.capacity());
    for (INT_PTR i = 0; i < array.GetSize(); ++i) {
      if (array.GetAt(i) == nullptr) continue;
      shapes.push_back(array.GetAt(i));
      slots.push_back(i);
    }
    const std::vector<Index> byNumber = OrderByNumber(shapes);
    shapes = Ordered(shapes, byNumber);
    return Ordered(Ordered(slots, byNumber), OrderByName(shapes));
  });
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
