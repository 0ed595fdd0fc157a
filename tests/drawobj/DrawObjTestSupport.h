#pragma once
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "base/HostInterface.h"
#include "drawobj/DrawObjReader.h"
#include "reader/CECadCls.h"
#include "reader/MemoryFileSystem.h"

/// A text as a tree, by the reader itself.
class Tree {
 public:
  explicit Tree(const std::string& text) {
    MemoryFileSystem memory;
    laminate::FileSystemScope files(memory);
    memory.files["text"] = text;
    m_reader.m_sFileName = "text";
    m_result = m_reader.nParseFile(0);
    if (m_result != 0) ADD_FAILURE() << "not well formed: " << text;
  }
  const CECadClsLvl& Node() const { return *m_reader.m_pRootArray->GetAt(0); }
  const CECadClsLvlArray& Roots() const { return *m_reader.m_pRootArray; }

 private:
  CECadCls m_reader;
  int m_result = 0;
};

/// Keeps the texts of the boxes that are shown while it lives.
class Boxes : public CHostInterface {
 public:
  Boxes() : m_scope(*this) {}
  int OnAfxMessageBox(const CString& sText, UINT nType, UINT nIDHelp) override {
    texts.emplace_back(sText.View());
    allPlain = allPlain && nType == MB_OK && nIDHelp == 0;
    return IDOK;
  }
  std::vector<std::string> texts;
  bool allPlain = true;

 private:
  CHostInterfaceScope m_scope;
};

inline laminate::ShapeContext OnLayer3() {
  laminate::ShapeContext context;
  context.nLayerNumber = 3;
  context.sLayerName = "three";
  context.sLayerType = "conductive";
  context.bRefer = 1;
  return context;
}

inline std::unique_ptr<CBDdrawObj> ReadAny(const std::string& text,
                                           const laminate::ShapeContext& context = OnLayer3()) {
  const Tree tree(text);
  return laminate::ReadDrawObj(tree.Node(), context);
}

/// Whether the object is a T itself and of no class derived from it.
template <class T, class Base>
bool IsExactly(const Base& object) {
  return typeid(object) == typeid(T);
}

/// The shape that a text yields, which must be of class T.
template <class T>
std::unique_ptr<T> Read(const std::string& text, const laminate::ShapeContext& context = OnLayer3()) {
  auto shape = ReadAny(text, context);
  EXPECT_NE(shape, nullptr) << text;
  if (shape == nullptr) return nullptr;
  EXPECT_TRUE(IsExactly<T>(*shape)) << text;
  if (dynamic_cast<T*>(shape.get()) == nullptr) return nullptr;
  return std::unique_ptr<T>(static_cast<T*>(shape.release()));
}

inline void ExpectRaises(const std::string& text) { EXPECT_THROW(ReadAny(text), CInvalidArgException) << text; }

/// What a writer hands to its stream.
template <class Function>
std::string Printed(Function function) {
  char* p = nullptr;
  std::size_t n = 0;
  std::FILE* fp = open_memstream(&p, &n);
  function(fp);
  std::fclose(fp);
  std::string s(p, n);
  std::free(p);
  return s;
}

/// What the family's entry point writes of a shape; its net name changes by it.
inline std::string Print(CBDdrawObj& shape, int nMode) {
  return Printed([&](std::FILE* fp) { EXPECT_EQ(shape.nPrint2File(fp, nMode), 0); });
}
