#include "Matrices/MassStffnessAndDampingMatrix.h"

#include <string>

#include "Matrices/ShaftAtOrder.h"
#include "RunControl/Positions.h"
#include "RunControl/RunStopped.h"

namespace verenwick {
namespace {

/// Damping of one inertia to ground: by the engine's formula, absolute, or by magnifier.
void addMassDamping(const ModelBundle& model, std::int32_t row, double excitationOrder,
                    ShaftLineMatrices& system) {
  const MASS_RECORD& mass = model.mass.at(row);
  const double ratio = mass.RPMRATIO;
  if (const std::int32_t iDiesel = cylinderFormulaEngine(model, row); iDiesel > 0) {
    system.CA[index(row)] =
        CALCULATE_DIESEL_DAMPING_CYLINDER(model.diesel, iDiesel, excitationOrder) * (ratio * ratio);
  } else if (mass.DYNMAGNIFIER == 0.0) {
    system.CA[index(row)] = mass.ABSDAMPING * (ratio * ratio);
  } else {
    system.CAR[index(row)] = (mass.INERTIAEFFECTIVE / mass.DYNMAGNIFIER) * (ratio * ratio);
  }
}

void BUILDMASSANDMASSDAMPINGMATRIX(Vibration vibration, const ModelBundle& model,
                                   double excitationOrder, ShaftLineMatrices& system) {
  const auto order = static_cast<std::size_t>(system.N);
  const bool isFree = vibration == Vibration::free;
  system.D.assign(order, 0.0);
  system.M.assign(order, 0.0);
  system.CA.assign(order, 0.0);
  system.CAR.assign(order, 0.0);
  std::int32_t n = 0;
  for (std::int32_t row = 1; row <= model.mass.number(); ++row) {
    const MASS_RECORD& mass = model.mass.at(row);
    if (isFree && mass.MASSTYPE == MassType::viscousDamperRing) {
      continue;
    }
    ++n;
    system.M[index(n)] = mass.INERTIAEFFECTIVE * (mass.RPMRATIO * mass.RPMRATIO);
    if (!isFree) {
      addMassDamping(model, row, excitationOrder, system);
    }
  }
}

void BUILDSTIFFNESSANDSTIFFNESSDAMPINGMATRIX(Vibration vibration, const ModelBundle& model,
                                             double excitationOrder, ShaftLineMatrices& system) {
  const auto order = static_cast<std::size_t>(system.N);
  const auto entries = static_cast<std::size_t>(system.NNZ);
  const bool isFree = vibration == Vibration::free;
  system.V.assign(isFree ? order * order : 0, 0.0);
  for (auto* values : {&system.K, &system.CR, &system.CRR}) {
    values->assign(entries, 0.0);
  }
  for (auto* indices : {&system.ROWIND, &system.COLIND}) {
    indices->assign(entries, 0);
    for (std::int32_t i = 1; i <= system.N; ++i) {
      (*indices)[index(i)] = i;
    }
  }
  const auto degreeOfFreedom = [&](std::int32_t node) {
    return isFree ? GET_MASS_NNOTVISCOUSDAMPERRINGSHAFT(model.mass, node)
                  : GET_MASS_IMASS(model.mass, node);
  };
  std::size_t pair = order;
  for (std::int32_t row = 1; row <= model.shaft.number(); ++row) {
    const SHAFT_RECORD& shaft = model.shaft.at(row);
    if (isFree && shaft.SHAFTTYPE == ShaftType::viscousDamperLink) {
      continue;
    }
    const std::int32_t i = degreeOfFreedom(shaft.ORGNODE);
    const std::int32_t j = degreeOfFreedom(shaft.DESNODE);
    if (i < 1 || j < 1 || pair + 2 > entries) {
      throw RunStopped("** The shafts do not join the inertias to a tree");
    }
    const double ratio = shaft.RPMRATIO;
    const auto enter = [&](std::vector<double>& values, double value) {
      values[index(i)] += value;
      values[index(j)] += value;
      values[pair] = -value;
      values[pair + 1] = -value;
    };
    if (isFree) {
      enter(system.K, shaft.STIFFNESSDYNAMIC * (ratio * ratio));
    } else {
      const ShaftAtOrder atOrder(model, row);
      const double stiffness = atOrder.stiffness(excitationOrder);
      enter(system.K, stiffness * (ratio * ratio));
      if (atOrder.magnifier() == 0.0) {
        enter(system.CR, atOrder.damping(excitationOrder) * (ratio * ratio));
      } else {
        enter(system.CRR, (stiffness / atOrder.magnifier()) * (ratio * ratio));
      }
    }
    system.ROWIND[pair] = system.COLIND[pair + 1] = i;
    system.COLIND[pair] = system.ROWIND[pair + 1] = j;
    pair += 2;
  }
  if (pair != entries) {
    throw RunStopped("** The shafts do not join the inertias to a tree");
  }
}

/// The free problem leaves out the rings of viscous dampers: half of a ring rides on its casing.
void prepareViscousDampers(ModelBundle& model) {
  for (std::int32_t d = 1; d <= model.viscousDamper.number(); ++d) {
    const std::int32_t casing =
        GET_MASS_IMASS(model.mass, GET_VISCOUSDAMPER_CASINGNODE(model.viscousDamper, d));
    const std::int32_t ring =
        GET_MASS_IMASS(model.mass, GET_VISCOUSDAMPER_RINGNODE(model.viscousDamper, d));
    if (casing > 0 && ring > 0) {
      SET_MASS_INERTIAEFFECTIVE(
          model.mass, casing,
          0.5 * GET_MASS_INERTIA(model.mass, ring) + GET_MASS_INERTIA(model.mass, casing));
    }
  }
}

/// Linear and progressive couplings are as stiff as the load makes them; the free problem keeps the
/// stiffness of the shaft.
void prepareCouplings(ModelBundle& model) {
  const auto setStiffness = [&](std::int32_t shaftId, double stiffness) {
    const std::int32_t row = GET_SHAFT_ISHAFT(model.shaft, shaftId);
    if (row > 0) {
      SET_SHAFT_STIFFNESSDYNAMIC(model.shaft, row, stiffness);
    }
  };
  const auto& linear = model.linearCoupling;
  for (std::int32_t i = 1; i <= linear.number(); ++i) {
    setStiffness(GET_LINEARCOUPLING_SHAFTNODE(linear, i),
                 GET_LINEARCOUPLING_STIFFNESSDYNAMIC(linear, i));
  }
  const auto& progressive = model.progressiveCoupling;
  for (std::int32_t i = 1; i <= progressive.number(); ++i) {
    setStiffness(GET_PROGRESSIVECOUPLING_SHAFTNODE(progressive, i),
                 GET_PROGRESSIVECOUPLING_STIFFNESSDYNAMIC(
                     progressive, i, GET_PROGRESSIVECOUPLING_TORQUE(progressive, i)));
  }
}

/// A propeller's inertia with its entrained water replaces that of the row, and in the forced
/// problem its damping too where it has any. The damping stays on the row for later load cases.
void preparePropellers(Vibration vibration, ModelBundle& model, std::int32_t loadCase) {
  PROPELLER_TABLE& table = model.propeller;
  for (std::int32_t p = 1; p <= table.number(); ++p) {
    CALCULATE_PROPELLER_INERTIATOTAL(vibration, table, p, loadCase);
    if (vibration == Vibration::forced) {
      CALCULATE_PROPELLER_ABSDAMPING(table, p);
    }
    const PROPELLER_RECORD& propeller = table.at(p);
    const std::int32_t row = GET_MASS_IMASS(model.mass, propeller.PROPELLERNODE);
    if (row == 0) {
      continue;
    }
    MASS_RECORD& mass = model.mass.at(row);
    mass.INERTIAEFFECTIVE = propeller.INERTIATOTAL;
    if (vibration == Vibration::forced &&
        (propeller.ABSDAMPING > 0.0 || propeller.DYNMAGNIFIER > 0.0)) {
      mass.ABSDAMPING = propeller.ABSDAMPING;
      mass.DYNMAGNIFIER = propeller.DYNMAGNIFIER;
    }
  }
}

}  // namespace

void MASSANDSHAFTTABLEPREPARATION(Vibration vibration, ModelBundle& model, std::int32_t loadCase) {
  for (std::int32_t i = 1; i <= model.mass.number(); ++i) {
    SET_MASS_INERTIAEFFECTIVE(model.mass, i, GET_MASS_INERTIA(model.mass, i));
  }
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    SET_SHAFT_STIFFNESSDYNAMIC(model.shaft, s, GET_SHAFT_STIFFNESS(model.shaft, s));
  }
  if (vibration == Vibration::free) {
    prepareViscousDampers(model);
  } else {
    prepareCouplings(model);
  }
  preparePropellers(vibration, model, loadCase);
}

void CALCUALTEMASSSTIFFNESSMATRIXDIMENSION(Vibration vibration, const MASS_TABLE& mass,
                                           std::int32_t& N, std::int32_t& NNZ) {
  N = vibration == Vibration::free ? GET_MASS_NUMBERNONEVISCOUSDAMPERRINGMASS(mass)
                                   : GET_MASS_NUMBER(mass);
  NNZ = 3 * N - 2;
}

void BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration vibration, const ModelBundle& model,
                                        double excitationOrder, ShaftLineMatrices& system) {
  CALCUALTEMASSSTIFFNESSMATRIXDIMENSION(vibration, model.mass, system.N, system.NNZ);
  if (system.N < 1) {
    throw RunStopped("** The model has no inertia to calculate with");
  }
  if (vibration == Vibration::free && system.N > kLargestOrder) {
    throw RunStopped("** " + std::to_string(system.N) +
                     " inertias are too many for the free vibration calculation, at most " +
                     std::to_string(kLargestOrder));
  }
  BUILDMASSANDMASSDAMPINGMATRIX(vibration, model, excitationOrder, system);
  BUILDSTIFFNESSANDSTIFFNESSDAMPINGMATRIX(vibration, model, excitationOrder, system);
}

}  // namespace verenwick
