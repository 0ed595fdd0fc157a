#pragma once
#include <cstdio>
#include <functional>

#include "reader/BoardFileLoad.h"

/// The part of a root that the load of a board file works on. Without other callables the forms go nowhere.
struct LoadRoot {
  std::FILE* pLogFile = nullptr;
  CProgressCtrl* pProgress = nullptr;
  int bInQuote = 0;
  int nComponents = 0;
  int nLayers = 0;
  laminate::LoadStatus status = {};

  std::function<int(CECadCls*)> others = [](CECadCls*) { return 0; };
  std::function<void(CECadClsLvl*)> component = [](CECadClsLvl*) {};
  std::function<void(CECadClsLvl*)> layer = [](CECadClsLvl*) {};

  void Load(const CString& sPath) {
    laminate::BoardFileLoad load{sPath,   pLogFile, pProgress, bInQuote,  nComponents,
                                 nLayers, status,   others,    component, layer};
    laminate::LoadBoardFile(load);
  }
};
