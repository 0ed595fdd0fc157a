#include "save/SaveTestSupport.h"

#include "base/BKUtility.h"
#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "base/TestFolder.h"
#include "board/ComponentTranslator.h"
#include "board/LayerTranslator.h"
#include "board/OthersTranslator.h"
#include "reader/BoardFileLoad.h"
#include "reader/CECadCls.h"
#include "save/FieldsBoard.h"
#include "save/FieldsDrawObj.h"
#include "save/FieldsTechnology.h"
#include "technology/FootprintFileLoad.h"

namespace laminate::test {

SavedDesign Design::Saved() const {
  return {&sVersion, &technology, &ftfTechnology, &footprints, &board, &parameter, &entities, nLayers};
}

bool Load(const std::string& sBoardPath, const std::string& sFootprintPath, Design& design) {
  try {
    if (!sFootprintPath.empty()) {
      FootprintFileTarget target{design.ftfTechnology, design.footprints, [&] { return design.board.m_pDrawObjArray; },
                                 nullptr, design.status};
      LoadFootprintFile(CString(std::string_view(sFootprintPath)), target);
    }
    if (!sBoardPath.empty()) {
      std::FILE* pLog = nullptr;
      CProgressCtrl* pProgress = nullptr;
      BoardFileLoad load{CString(std::string_view(sBoardPath)),
                         pLog,
                         pProgress,
                         design.bInQuote,
                         design.nComponents,
                         design.nLayers,
                         design.status,
                         [&design](CECadCls* pReader) {
                           OthersTarget target{design.sVersion, &design.technology, &design.board, &design.parameter,
                                               &design.entities};
                           return ReadOthers(pReader, target);
                         },
                         [&design](CECadClsLvl* pNode) { ReadComponent(pNode, design.board); },
                         [&design](CECadClsLvl* pNode) { ReadBoardLayer(pNode, design.board); }};
      LoadBoardFile(load);
    }
  } catch (const CInvalidArgException&) {
    return false;
  }
  return design.status.IsOk();
}

bool Load(const DesignTexts& texts, Design& design) {
  const TestFolder folder;
  BKUtility::GetInstance()->SetDataPath(CString(std::string_view(folder / "data")));
  const bool bLoaded =
      Load(folder.Write("design.pcf", texts.sBoard), folder.Write("design.ftf", texts.sFootprints), design);
  BKUtility::GetInstance()->SetDataPath(CString());
  return bLoaded;
}

DesignTexts FreshTexts(const Design& design, SaveLosses& losses) {
  DesignTexts texts;
  const auto put = [&](std::string& sText, void (*write)(FormText&, const SavedDesign&)) {
    TextOut out(sText);
    FormText text(out, losses);
    write(text, design.Saved());
    out.Flush();
  };
  put(texts.sBoard, PutBoardFile);
  put(texts.sFootprints, PutFootprintFile);
  return texts;
}

namespace {

class Dumper {
 public:
  std::string s;

  void Value(int n) { Line(std::to_string(n)); }
  void Value(long long n) { Line(std::to_string(n)); }
  void Value(long n) { Line(std::to_string(n)); }
  void Value(double d) { Line(Number(d)); }
  void Value(const CString& text) { Line("'" + std::string(text.View()) + "'"); }
  void Value(const CPointD& pt) { Line(Number(pt.x) + " " + Number(pt.y)); }
  void Value(const CRectD& rc) {
    Line(Number(rc.x) + " " + Number(rc.y) + " " + Number(rc.width) + " " + Number(rc.height));
  }
  void Value(const CGProperty& property) {
    Value(property.m_sItem);
    Value(property.m_sComment);
  }
  void Value(const CLProperty& property) {
    Value(property.m_sKind);
    Value(property.m_sItem);
    Value(property.m_sComment);
  }
  template <class TYPE, class ARG_TYPE>
  void Value(const CArray<TYPE, ARG_TYPE>& array) {
    Line("[" + std::to_string(array.GetSize()));
    for (const auto& element : array) Value(element);
  }
  template <HasFields T>
  void Value(const T& object) {
    Line(std::string(ClassName<T>()));
    ForEachField<T>([&](std::string_view sName, auto pMember) {
      s += sName;
      s += ' ';
      Value(object.*pMember);
    });
  }
  void Value(CBDdrawObj* const& p) {
    if (p == nullptr) return Line("null");
    AsItsClass(*p, ShapeClasses(), [this](const auto& shape) { Value(shape); });
  }
  void Value(CBDvertex* const& p) {
    if (p == nullptr) return Line("null");
    AsItsClass(*p, VertexClasses(), [this](const auto& vertex) { Value(vertex); });
  }
  template <class X>
  void Value(X* const& p) {
    if (p == nullptr) {
      Line("null");
    } else {
      Value(*p);
    }
  }

 private:
  void Line(const std::string& sLine) {
    s += sLine;
    s += '\n';
  }
  static std::string Number(double d) {
    char buffer[kMaxNumberLength];
    return std::string(buffer, FormatShortest(buffer, d));
  }
};

}  // namespace

std::string Dump(const Design& design) {
  Dumper dumper;
  dumper.Value(design.sVersion);
  dumper.Value(design.technology);
  dumper.Value(design.ftfTechnology);
  dumper.Value(design.footprints);
  dumper.Value(design.board);
  dumper.Value(design.parameter);
  dumper.Value(design.entities);
  return std::move(dumper.s);
}

}  // namespace laminate::test
