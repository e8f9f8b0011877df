#include "ComputationsSrc/ForcedDampedVibrationsFc.h"

#include <complex>
#include <vector>

#include "ComputationsSrc/DiagnosticFile.h"
#include "RunControl/Constants.h"

namespace verenwick {

void FORCEDDAMPEDVIBRATIONSFC(const ForcedVibrationSolver::SystemArrays& system,
                              const ForcedVibrationSolver::ArraysOfOrder& arraysOfOrder,
                              double omega, const FourierExcitation& excitation,
                              const ForcedVibrationSolver::Response& response,
                              std::int32_t diagnosticLevel) {
  std::vector<std::complex<double>> coefficients;
  coefficients.reserve(excitation.FORE.size());
  for (std::size_t n = 0; n < excitation.FORE.size(); ++n) {
    coefficients.emplace_back(excitation.FORE[n], excitation.FOIM[n]);
  }
  DiagnosticFile diagnostics("ZBTQ_Forced.txt", diagnosticLevel > 1);
  diagnostics.write("=== Test Forced damped vibrations Codes ===");
  diagnostics.write("Mass moment of inertia", system.MDY);
  diagnostics.write("Stifness matrix", system.KDY);
  diagnostics.write("Absolute damping", system.CA);
  diagnostics.write("Absolute damping, prescirbed with magnifiers", system.CAR);
  diagnostics.write("Relative damping", system.CR);
  diagnostics.write("Relative damping, prescribed with magnifiers", system.CRR);
  diagnostics.write("Excitation Fourier Coefficients", coefficients);
  std::unique_ptr<ForcedVibrationSolver::ForcedSolverRecord> record;
  ForcedVibrationSolver::INITIALIZE(record, system, 1);
  ForcedVibrationSolver::SOLVEFORCED(
      record, omega, {excitation.EXFO, coefficients, excitation.phase, excitation.dof}, response,
      arraysOfOrder);
  if (diagnosticLevel > 1) {
    std::vector<double> degrees(response.XANGLE.begin(), response.XANGLE.end());
    for (double& angle : degrees) {
      angle = angle * 180 / kPi;
    }
    diagnostics.write("Forced vibration Fourier coefficients");
    diagnostics.write("Amplitude", response.XAMP);
    diagnostics.write("Angle, rad", response.XANGLE);
    diagnostics.write("Angle, deg", degrees);
    diagnostics.write("Real", response.XRE);
    diagnostics.write("Imaginary", response.XIM);
  }
  ForcedVibrationSolver::DESTROY(record);
}

}  // namespace verenwick
