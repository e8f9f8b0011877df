#include "FreeVibration/FreeVibration.h"

#include "ComputationsSrc/FreeUndampedVibrations.h"
#include "FreeVibration/FrequencyWarnings.h"
#include "FreeVibration/RelativeModes.h"
#include "FreeVibration/VectorSums.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "RunControl/Files.h"

namespace verenwick {

void FREEVIBRATIONCALCULATION(ModelBundle& model) {
  MASSANDSHAFTTABLEPREPARATION(Vibration::free, model, 1);
  ShaftLineMatrices system;
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::free, model, 1.0, system);
  const std::int32_t error = FREEUNDAMPEDVIBRATIONS(system.N, system.D, system.V, system.ROWIND,
                                                    system.COLIND, system.K, system.M, 0);
  // The rigid-body mode: whatever rounding left there is no frequency.
  system.D.front() = 0.0;
  DirectAccessFile frequencies(results::resultFile("NaturalFrequency.bin"));
  frequencies.write(1, system.D);
  frequencies.close();
  warnOfUncertainFrequencies(model, system, error);
  const std::vector<double> deflection = RELATIVEINERTIADEFLECTION(model, system.N, system.V);
  RELATIVEINERTIATORQUE(model, system.N, deflection);
  if (model.diesel.isAllocated()) {
    VECTORSUMS(model.mass, model.diesel, system.N, system.D, deflection);
  }
}

}  // namespace verenwick
