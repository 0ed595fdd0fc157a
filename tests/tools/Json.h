#pragma once
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

// Keys in the order of the text, so that it can be tested too.
using Json = nlohmann::ordered_json;

/// A facade of design data as an archive's image brings it back: what the image leaves out is as in a new record.
inline Json WithoutWhatNoImageHolds(Json data) {
  for (Json& part : data["m_pPrfPartArray"]) part["m_pPortArray"] = part["m_pGateDefArray"] = Json::array();
  for (Json& layer : data["m_pStackup"]["m_pLayerArray"]) layer["m_dLossTangent"] = 0.0;
  for (Json& net : data["m_pElectricalNetArray"]) net["m_bPair"] = 0;
  return data;
}

/// The first place where two documents differ by value, numbers by more than 1e-9 of their size; empty if nowhere. The
/// order of keys counts.
inline std::string FirstDifference(const Json& a, const Json& b, const std::string& sPath = "$") {
  if (a.is_number() && b.is_number()) {
    const double x = a.get<double>();
    const double y = b.get<double>();
    return std::abs(x - y) <= 1e-9 * std::max({1.0, std::abs(x), std::abs(y)})
               ? ""
               : sPath + ": " + a.dump() + " and " + b.dump();
  }
  if (a.type() != b.type() || a.size() != b.size()) {
    return sPath + ": " + a.dump().substr(0, 80) + " and " + b.dump().substr(0, 80);
  }
  if (a.is_object()) {
    auto itB = b.begin();
    for (auto it = a.begin(); it != a.end(); ++it, ++itB) {
      if (it.key() != itB.key()) return sPath + ": key " + it.key() + " and " + itB.key();
      if (std::string s = FirstDifference(it.value(), itB.value(), sPath + "." + it.key()); !s.empty()) return s;
    }
    return "";
  }
  if (a.is_array()) {
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (std::string s = FirstDifference(a[i], b[i], sPath + "[" + std::to_string(i) + "]"); !s.empty()) return s;
    }
    return "";
  }
  return a == b ? "" : sPath + ": " + a.dump() + " and " + b.dump();
}
