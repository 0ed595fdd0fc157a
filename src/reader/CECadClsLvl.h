#pragma once
#include <cstddef>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "reader/TreeMemory.h"

class CECadClsLvl;

/// Nodes of one level. Whoever holds the array owns them.
class CECadClsLvlArray : public laminate::NamedArray<CECadClsLvl> {
 public:
  CECadClsLvlArray();
  ~CECadClsLvlArray() override;
  /// The first element of that name (exact, case-sensitive), or null.
  CECadClsLvl* pFindByName(CString sName) const { return pFind(sName.View()); }
  /// Appends every element of that name to `arrResult`. The pointers stay here too: size the result to 0 before it
  /// dies.
  void vFindAllByName(CString sName, CECadClsLvlArray& arrResult) const;
  CECadClsLvl* pFind(std::string_view sName) const;
};

/// A node of the tree that a text file becomes: one form in brackets. Values and nested forms are kept apart; numbers
/// stay text until a translator converts them.
class CECadClsLvl {
 public:
  CECadClsLvl() noexcept;
  /// Deletes `m_pChildren` and with it the whole subtree.
  virtual ~CECadClsLvl();
  CECadClsLvl(const CECadClsLvl&) = delete;
  CECadClsLvl& operator=(const CECadClsLvl&) = delete;
  static void* operator new(std::size_t nBytes) { return laminate::TreeAllocate(nBytes); }
  static void* operator new(std::size_t, void* p) noexcept { return p; }
  static void operator delete(void* p) noexcept { laminate::TreeFree(p); }
  static void operator delete(void*, void*) noexcept {}

  CECadClsLvlArray* m_pChildren;  ///< nested forms in file order; owned, never null
  CStringArray m_arrValues;       ///< every token after the first, in file order
  CString m_sName;                ///< the first token, usually the keyword
  int m_nLevel = 0;               ///< a top-level form has level 1
  int m_nLine = 0;                ///< line of the opening bracket in the text that was parsed, from 1

 private:
  CECadClsLvlArray m_ownChildren;  // what `m_pChildren` points to, unless somebody put another array there
};
