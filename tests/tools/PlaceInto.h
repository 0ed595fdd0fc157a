#pragma once
// What `place --into` makes of a board, held against the component that it prints.
#include <string>
#include <string_view>

#include "CommandRunner.h"
#include "Json.h"

inline std::string BytesOf(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in) << path;
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

/// The names in the "footprint" forms of a library.
inline std::vector<std::string> FootprintNames(std::string_view library) {
  constexpr std::string_view kForm = "(footprint ";
  std::vector<std::string> names;
  for (std::size_t n = library.find(kForm); n != std::string_view::npos; n = library.find(kForm, n)) {
    n += kForm.size();
    const bool bQuoted = library[n] == '"';
    if (bQuoted) ++n;
    names.emplace_back(library.substr(n, library.find_first_of(bQuoted ? "\"" : " \t\r\n()", n) - n));
  }
  return names;
}

/// Shapes without the fields that they take over from where they stand in a board's file.
inline Json WithoutPlace(Json shapes) {
  for (Json& shape : shapes) {
    for (const char* szField : {"m_bRefer", "m_sLayerName", "m_sLayerType", "m_nLayerNumber", "m_sSection", "m_bArea",
                                "m_pHole", "m_pShapes"}) {
      shape.erase(szField);
    }
  }
  return shapes;
}

/// The shapes of a board's component stand on layers, and are those that were placed.
inline void ExpectPlacedShapes(const Json& saved, const Json& placed) {
  EXPECT_EQ(FirstDifference(WithoutPlace(saved), WithoutPlace(placed)), "");
  for (std::size_t i = 0; i < saved.size(); ++i) {
    EXPECT_NE(saved[i]["m_sLayerType"], "");
    const std::string sPlaced = placed[i]["m_sLayerName"];
    if (sPlaced == "FPADSTACK") {
      EXPECT_EQ(saved[i]["m_sLayerName"], "PADSTACK");
      EXPECT_EQ(saved[i]["m_sLayerType"], "systemLayer");
    } else {
      EXPECT_NE(saved[i]["m_sLayerName"], "");
    }
    if (saved[i].contains("m_pShapes")) {
      EXPECT_EQ(saved[i]["m_pShapes"].size(), placed[i]["m_pShapes"].size());
    }
  }
}

/// Places a footprint into a copy of a board, which must then hold it and be as it was otherwise. Gives the number of
/// shapes that were added.
inline std::size_t ExpectPlacedInto(const TestFolder& folder, const CommandRunner& run, const std::string& sStem,
                                    const std::string& sFootprint, const std::string& sSide) {
  SCOPED_TRACE(sFootprint + " on " + sSide);
  const std::vector<std::string> place{"place",        sFootprint,    "--pcf", sStem + ".pcf", "--ftf",
                                       sStem + ".ftf", "--side",      sSide,   "--angle",      "30",
                                       "--at=12.5,-3", "--reference", "NEW-1", "--json"};
  std::vector<std::string> placeInto = place;
  placeInto.insert(placeInto.end(), {"--into", "out"});
  const CommandResult result = run(placeInto);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, run(place).out);
  if (result.status != 0) return 0;

  const std::string sBoard = BytesOf(sStem + ".pcf");
  const std::string sSaved = folder.Read("out.pcf");
  EXPECT_EQ(folder.Read("out.ftf"), BytesOf(sStem + ".ftf"));
  const auto nSame = static_cast<std::size_t>(
      std::mismatch(sBoard.begin(), sBoard.end(), sSaved.begin(), sSaved.end()).first - sBoard.begin());
  EXPECT_GT(sSaved.size(), sBoard.size());
  EXPECT_TRUE(sSaved.ends_with(std::string_view(sBoard).substr(nSame)));

  const CommandResult dump = run({"dump", "out.pcf", "--ftf", "out.ftf"});
  EXPECT_EQ(dump.status, 0) << dump.err;
  const std::size_t nReference = dump.out.find(R"("m_sReference": "NEW-1")");
  EXPECT_NE(nReference, std::string::npos);
  if (nReference == std::string::npos) return 0;
  std::istringstream component(dump.out.substr(dump.out.rfind('{', nReference)));
  Json saved;
  component >> saved;
  const Json placed = Json::parse(result.out);
  EXPECT_EQ(saved["m_sFootprint"], sFootprint);
  ExpectPlacedShapes(saved["m_pDrawObjArray"], placed["m_pDrawObjArray"]);
  std::size_t nShapes = saved["m_pDrawObjArray"].size();
  EXPECT_EQ(saved["m_pPinArray"].size(), placed["m_pPinArray"].size());
  for (std::size_t i = 0; i < saved["m_pPinArray"].size(); ++i) {
    const Json& pin = saved["m_pPinArray"][i];
    EXPECT_EQ(pin["m_sName"], placed["m_pPinArray"][i]["m_sName"]);
    EXPECT_EQ(FirstDifference(pin["m_ptLocation"], placed["m_pPinArray"][i]["m_ptLocation"]), "");
    ExpectPlacedShapes(pin["m_pDrawObjArray"], placed["m_pPinArray"][i]["m_pDrawObjArray"]);
    nShapes += pin["m_pDrawObjArray"].size();
  }
  return nShapes;
}
