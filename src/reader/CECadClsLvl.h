#pragma once
#include <cstddef>
#include <new>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "reader/TreeMemory.h"

class CECadClsLvl;
namespace laminate {
class TreeBuilder;
}

/// Nodes of one level. Whoever holds the array owns them.
class CECadClsLvlArray : public laminate::NamedArray<CECadClsLvl> {
 public:
  CECadClsLvlArray() = default;
  ~CECadClsLvlArray() override;
  /// The first element of that name (exact, case-sensitive), or null.
  CECadClsLvl* pFindByName(CString sName) const { return pFind(sName.View()); }
  /// Appends every element of that name to `arrResult`. The pointers stay here too: size the result to 0 before it
  /// dies.
  void vFindAllByName(CString sName, CECadClsLvlArray& arrResult) const;
  /// As `pFindByName`, for text at hand.
  CECadClsLvl* pFind(std::string_view sName) const;
};

/// A node of the tree that a text file becomes: one form in brackets. Values and nested forms are kept apart; numbers
/// stay text until a translator converts them. It is no base for other classes, since it frees its own memory.
class CECadClsLvl final {
 public:
  CECadClsLvl() noexcept : m_pChildren(&m_ownChildren) {}
  /// Deletes `m_pChildren` and with it the whole subtree.
  virtual ~CECadClsLvl();
  CECadClsLvl(const CECadClsLvl&) = delete;
  CECadClsLvl& operator=(const CECadClsLvl&) = delete;
  static void* operator new(std::size_t nBytes) { return laminate::TreeMemory::OfThisThread().Allocate(nBytes); }
  static void* operator new(std::size_t, void* p) noexcept { return p; }
  /// Destroys the node too. A node that is as a parse made it holds nothing but children and long texts; its fields are
  /// not written to once more only to be thrown away, which makes the end of a large tree cheap.
  static void operator delete(CECadClsLvl* p, std::destroying_delete_t) noexcept;
  static void operator delete(void* p) noexcept { laminate::TreeMemory::OfThisThread().Free(p); }
  static void operator delete(void*, void*) noexcept {}

  /// Nested forms in file order; never null. The array that a node is made with is a part of the node: move its
  /// elements, but neither delete it nor give it to another holder. An array of the host's put here instead is owned.
  CECadClsLvlArray* m_pChildren;
  CStringArray m_arrValues;  ///< every token after the first, in file order
  CString m_sName;           ///< the first token, usually the keyword
  int m_nLevel = 0;          ///< a top-level form has level 1
  int m_nLine = 0;           ///< line of the opening bracket in the text that was parsed, from 1

 private:
  friend class CECadClsLvlArray;
  friend class laminate::TreeBuilder;

  // `sName` lies in padded text.
  CECadClsLvl(std::string_view sName, int nLevel, int nLine)
      : m_pChildren(&m_ownChildren), m_sName(CString::FromPadded(), sName), m_nLevel(nLevel), m_nLine(nLine) {}
  bool IsAsParsed() const noexcept;
  static void Delete(CECadClsLvl* p, laminate::TreeMemory& memory) noexcept;

  CECadClsLvlArray m_ownChildren;  // what `m_pChildren` points to, unless somebody put another array there
};
