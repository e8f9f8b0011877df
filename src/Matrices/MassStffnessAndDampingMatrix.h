#pragma once

#include <cstdint>
#include <vector>

#include "ComponentTables/ModelBundle.h"
#include "RunControl/CalculationMode.h"

/// From the component tables to the arrays that the solvers work on.
namespace verenwick {

/// Largest order of the free problem, where three arrays of this order squared take 600 MB, and of
/// the forced one, whose complex matrix takes 400 MB.
inline constexpr std::int32_t kLargestOrder = 5000;

/// The assembled system, referred to the reference speed: inertia, stiffness and damping are
/// multiplied by the square of the row's RPMRATIO. The coordinate arrays hold the diagonal first,
/// entry i at (i, i), then two entries a shaft, (origin, destination) and its transpose.
struct ShaftLineMatrices {
  std::int32_t N = 0;                ///< degrees of freedom
  std::int32_t NNZ = 0;              ///< coordinate entries, 3 N - 2
  std::vector<double> D;             ///< N, zero: room for eigenvalues
  std::vector<double> V;             ///< N x N in the free problem, zero: room for mode shapes
  std::vector<double> M;             ///< N, inertia, kg m2
  std::vector<double> CA;            ///< N, absolute damping, N m s/rad
  std::vector<double> CAR;           ///< N, inertia over magnifier, kg m2
  std::vector<std::int32_t> ROWIND;  ///< NNZ, row of each entry, from 1
  std::vector<std::int32_t> COLIND;  ///< NNZ, column of each entry, from 1
  std::vector<double> K;             ///< NNZ, stiffness, N m/rad
  std::vector<double> CR;            ///< NNZ, relative damping, N m s/rad
  std::vector<double> CRR;           ///< NNZ, stiffness over magnifier, N m/rad
};

/// Fills INERTIAEFFECTIVE and STIFFNESSDYNAMIC of the inertias and shafts.
/// @param loadCase selects the propellers' entrained water; 1 in the free problem
void MASSANDSHAFTTABLEPREPARATION(Vibration vibration, ModelBundle& model, std::int32_t loadCase);

/// Order of the system and number of its entries. It is spelled so, and so is this unit.
void CALCUALTEMASSSTIFFNESSMATRIXDIMENSION(Vibration vibration, const MASS_TABLE& mass,
                                           std::int32_t& N, std::int32_t& NNZ);

/// Assembles the system anew. The free problem drops the rings of viscous dampers and has no
/// damping; the forced problem keeps all rows.
/// @param excitationOrder harmonic order at which stiffness and damping that depend on it are taken
/// Throws RunStopped when the shafts make no tree, or the free problem is too large to be solved.
void BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration vibration, const ModelBundle& model,
                                        double excitationOrder, ShaftLineMatrices& system);

}  // namespace verenwick
