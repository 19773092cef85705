#include "model/airfoil.h"

namespace tavilo {

void Airfoil::DeleteConfiguration(int index) {
  ConfigurationPtr config = Configuration(index);
  if (!config) throw SubscriptError(std::to_string(index));
  const int polarCount = config->PolarCount();
  for (int i = 0; i < polarCount; ++i) config->DeletePolar(1);
  configurations_.Delete(index);
}

void Airfoil::Delete() {
  for (int i = ConfigCount(); i >= 1; --i) DeleteConfiguration(i);
}

}  // namespace tavilo
