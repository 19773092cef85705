#pragma once
// An airfoil as one line, so that read cases can stand in a table beside the
// text they read: "name | set: Re r Ma m 'polar' (alfa cl cd cm tu tl su sl, ...) ...",
// "?" for an unknown Re, Ma, alfa or cl; other unknown values are left out.

#include <charconv>
#include <string>

#include "model/airfoil.h"

namespace tavilo::testing {

// Builds a set of `polars`, and an airfoil of `sets`, in one expression.
inline ConfigurationPtr SetOf(const std::string& name, std::initializer_list<PolarPtr> polars) {
  auto set = std::make_shared<Configuration>();
  set->Name = name;
  for (const PolarPtr& polar : polars) set->AddPolar(polar);
  return set;
}

inline Airfoil AirfoilOf(const std::string& name, std::initializer_list<ConfigurationPtr> sets) {
  Airfoil airfoil;
  airfoil.Name = name;
  for (const ConfigurationPtr& set : sets) airfoil.AddConfiguration(set);
  return airfoil;
}

inline std::string NumberOf(double value) {
  if (value == kNoValue) return "?";
  char buffer[32];
  return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr};
}

inline std::string Summary(const Airfoil& airfoil) {
  std::string text = airfoil.Name;
  for (const ConfigurationPtr& set : airfoil.Configurations()) {
    text += " | " + set->Name + ":";
    for (const PolarPtr& polar : set->Polars()) {
      text += " Re " + NumberOf(polar->ReynoldsNumber) + " Ma " + NumberOf(polar->MachNumber);
      if (!polar->Name.empty()) text += " '" + polar->Name + "'";
      text += " (";
      for (const PolarPoint& p : polar->Points()) {
        if (text.back() != '(') text += ", ";
        text += NumberOf(p.Alfa) + " " + NumberOf(p.Cl);
        for (double value : {p.Cd, p.Cm, p.TU, p.TL, p.SU, p.SL})
          if (value != kNoValue) text += " " + NumberOf(value);
      }
      text += ")";
    }
  }
  return text;
}

}  // namespace tavilo::testing
