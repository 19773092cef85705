#include "model/snapshot.h"

namespace tavilo {

AirfoilSnapshot TakeSnapshot(const Airfoil& airfoil) {
  AirfoilSnapshot snapshot{airfoil.Name, airfoil.ConfigCount(), {}};
  for (const ConfigurationPtr& set : airfoil.Configurations()) {
    AirfoilSnapshot::SetState state;
    state.set = set;
    if (set) {
      state.name = set->Name;
      state.origin = set->Origin;
      state.description2 = set->Description2;
      state.polarCount = set->PolarCount();
      for (const PolarPtr& polar : set->Polars()) {
        if (polar)
          state.polars.push_back({polar, polar->Name, polar->ReynoldsNumber, polar->MachNumber, polar->Selected});
        else
          state.polars.push_back({});
      }
    }
    snapshot.sets.push_back(std::move(state));
  }
  return snapshot;
}

void RestoreSnapshot(Airfoil& airfoil, const AirfoilSnapshot& snapshot) {
  airfoil.Name = snapshot.name;
  airfoil.ResetConfigurations(snapshot.setCount);
  int index = 0;
  for (const AirfoilSnapshot::SetState& state : snapshot.sets) {
    airfoil.SetConfiguration(++index, state.set);
    if (!state.set) continue;
    Configuration& set = *state.set;
    set.Name = state.name;
    set.Origin = state.origin;
    set.Description2 = state.description2;
    std::vector<PolarPtr> polars;
    for (const AirfoilSnapshot::PolarState& polarState : state.polars) {
      polars.push_back(polarState.polar);
      if (!polarState.polar) continue;
      Polar& polar = *polarState.polar;
      polar.Name = polarState.name;
      polar.ReynoldsNumber = polarState.reynolds;
      polar.MachNumber = polarState.mach;
      polar.Selected = polarState.selected;
    }
    set.ResetPolars(state.polarCount, polars);
  }
}

}  // namespace tavilo
