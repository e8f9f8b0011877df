#include "Matrices/MassStffnessAndDampingMatrix.h"

#include <string>

#include "Matrices/RowComponents.h"
#include "RunControl/Positions.h"
#include "RunControl/RunStopped.h"

namespace verenwick {
namespace {

/// Damping of one inertia to ground: by the engine's formula, absolute, or by magnifier.
void addMassDamping(const ModelBundle& model, std::int32_t row, double excitationOrder,
                    ShaftLineMatrices& system) {
  const double ratio = GET_MASS_RPMRATIO(model.mass, row);
  const double magnifier = GET_MASS_DYNMAGNIFIER(model.mass, row);
  if (const std::int32_t iDiesel = cylinderFormulaEngine(model, row); iDiesel > 0) {
    system.CA[index(row)] =
        CALCULATE_DIESEL_DAMPING_CYLINDER(model.diesel, iDiesel, excitationOrder) * (ratio * ratio);
  } else if (magnifier == 0.0) {
    system.CA[index(row)] = GET_MASS_ABSDAMPING(model.mass, row) * (ratio * ratio);
  } else {
    system.CAR[index(row)] =
        (GET_MASS_INERTIAEFFECTIVE(model.mass, row) / magnifier) * (ratio * ratio);
  }
}

void BUILDMASSANDMASSDAMPINGMATRIX(bool IsFreeVibration, const ModelBundle& model,
                                   double excitationOrder, ShaftLineMatrices& system) {
  const auto order = static_cast<std::size_t>(system.N);
  system.D.assign(order, 0.0);
  system.M.assign(order, 0.0);
  system.CA.assign(order, 0.0);
  system.CAR.assign(order, 0.0);
  std::int32_t n = 0;
  for (std::int32_t row = 1; row <= model.mass.number(); ++row) {
    if (IsFreeVibration && GET_MASS_MASSTYPE(model.mass, row) == MassType::viscousDamperRing) {
      continue;
    }
    ++n;
    const double ratio = GET_MASS_RPMRATIO(model.mass, row);
    system.M[index(n)] = GET_MASS_INERTIAEFFECTIVE(model.mass, row) * (ratio * ratio);
    if (!IsFreeVibration) {
      addMassDamping(model, row, excitationOrder, system);
    }
  }
}

/// Stiffness and damping of one shaft at an excitation order.
struct ShaftValues {
  double stiffness;
  double damping;
  double magnifier;
};

/// The free problem takes the values of the row. In the forced problem those of some shafts go with
/// the excitation frequency; a shaft whose component isn't in its table keeps the values of its
/// row.
ShaftValues shaftValues(bool IsFreeVibration, const ModelBundle& model, std::int32_t row,
                        double excitationOrder) {
  ShaftValues shaft{GET_SHAFT_STIFFNESSDYNAMIC(model.shaft, row),
                    GET_SHAFT_ABSDAMPING(model.shaft, row),
                    GET_SHAFT_DYNMAGNIFIER(model.shaft, row)};
  if (IsFreeVibration) {
    return shaft;
  }
  if (const std::int32_t coupling = geislingerCouplingOfShaft(model, row); coupling > 0) {
    const GEISLINGERCOUPLING_TABLE& table = model.geislingerCoupling;
    shaft.stiffness =
        CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(table, coupling, excitationOrder);
    shaft.damping =
        CALCULATE_GEISLINGERCOUPLING_DAMPING(table, coupling, shaft.magnifier, excitationOrder);
  }
  if (const std::int32_t iDiesel = crankThrowFormulaEngine(model, row); iDiesel > 0) {
    shaft.damping = CALCULATE_DIESEL_DAMPING_CRANKTHROW(model.diesel, iDiesel, excitationOrder);
  }
  if (const std::int32_t damper = customViscousDamper(model, row); damper > 0) {
    const VISCOUSDAMPER_TABLE& table = model.viscousDamper;
    shaft.damping = CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(table, damper, excitationOrder);
    if (GET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(table, damper)) {
      shaft.stiffness = CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(table, damper, excitationOrder);
    }
  }
  return shaft;
}

void BUILDSTIFFNESSANDSTIFFNESSDAMPINGMATRIX(bool IsFreeVibration, const ModelBundle& model,
                                             double excitationOrder, ShaftLineMatrices& system) {
  const auto order = static_cast<std::size_t>(system.N);
  const auto entries = static_cast<std::size_t>(system.NNZ);
  system.V.assign(IsFreeVibration ? order * order : 0, 0.0);
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
    return IsFreeVibration ? GET_MASS_NNOTVISCOUSDAMPERRINGSHAFT(model.mass, node)
                           : GET_MASS_IMASS(model.mass, node);
  };
  std::size_t pair = order;
  for (std::int32_t row = 1; row <= model.shaft.number(); ++row) {
    if (IsFreeVibration && GET_SHAFT_SHAFTTYPE(model.shaft, row) == ShaftType::viscousDamperLink) {
      continue;
    }
    const std::int32_t i = degreeOfFreedom(GET_SHAFT_ORGNODE(model.shaft, row));
    const std::int32_t j = degreeOfFreedom(GET_SHAFT_DESNODE(model.shaft, row));
    if (i < 1 || j < 1 || pair + 2 > entries) {
      throw RunStopped("** The shafts do not join the inertias to a tree");
    }
    const ShaftValues shaft = shaftValues(IsFreeVibration, model, row, excitationOrder);
    const double ratio = GET_SHAFT_RPMRATIO(model.shaft, row);
    const auto enter = [&](std::vector<double>& values, double value) {
      values[index(i)] += value;
      values[index(j)] += value;
      values[pair] = -value;
      values[pair + 1] = -value;
    };
    enter(system.K, shaft.stiffness * (ratio * ratio));
    if (!IsFreeVibration && shaft.magnifier == 0.0) {
      enter(system.CR, shaft.damping * (ratio * ratio));
    } else if (!IsFreeVibration) {
      enter(system.CRR, (shaft.stiffness / shaft.magnifier) * (ratio * ratio));
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
void preparePropellers(bool IsFreeVibration, ModelBundle& model, std::int32_t loadCase) {
  PROPELLER_TABLE& propeller = model.propeller;
  for (std::int32_t p = 1; p <= propeller.number(); ++p) {
    CALCULATE_PROPELLER_INERTIATOTAL(IsFreeVibration, propeller, p, loadCase);
    if (!IsFreeVibration) {
      CALCULATE_PROPELLER_ABSDAMPING(propeller, p);
    }
    const std::int32_t row = GET_MASS_IMASS(model.mass, GET_PROPELLER_PROPELLERNODE(propeller, p));
    if (row == 0) {
      continue;
    }
    SET_MASS_INERTIAEFFECTIVE(model.mass, row, GET_PROPELLER_INERTIATOTAL(propeller, p));
    const double damping = GET_PROPELLER_ABSDAMPING(propeller, p);
    const double magnifier = GET_PROPELLER_DYNMAGNIFIER(propeller, p);
    if (!IsFreeVibration && (damping > 0.0 || magnifier > 0.0)) {
      SET_MASS_ABSDAMPING(model.mass, row, damping);
      SET_MASS_DYNMAGNIFIER(model.mass, row, magnifier);
    }
  }
}

}  // namespace

void MASSANDSHAFTTABLEPREPARATION(bool IsFreeVibration, ModelBundle& model, std::int32_t loadCase) {
  for (std::int32_t i = 1; i <= model.mass.number(); ++i) {
    SET_MASS_INERTIAEFFECTIVE(model.mass, i, GET_MASS_INERTIA(model.mass, i));
  }
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    SET_SHAFT_STIFFNESSDYNAMIC(model.shaft, s, GET_SHAFT_STIFFNESS(model.shaft, s));
  }
  if (IsFreeVibration) {
    prepareViscousDampers(model);
  } else {
    prepareCouplings(model);
  }
  preparePropellers(IsFreeVibration, model, loadCase);
}

void CALCUALTEMASSSTIFFNESSMATRIXDIMENSION(bool IsFreeVibration, const MASS_TABLE& mass,
                                           std::int32_t& N, std::int32_t& NNZ) {
  N = IsFreeVibration ? GET_MASS_NUMBERNONEVISCOUSDAMPERRINGMASS(mass) : GET_MASS_NUMBER(mass);
  NNZ = 3 * N - 2;
}

void BUILDMASSSTIFFNESSANDDAMPINGMATRIX(bool IsFreeVibration, const ModelBundle& model,
                                        double excitationOrder, ShaftLineMatrices& system) {
  CALCUALTEMASSSTIFFNESSMATRIXDIMENSION(IsFreeVibration, model.mass, system.N, system.NNZ);
  if (system.N < 1) {
    throw RunStopped("** The model has no inertia to calculate with");
  }
  if (IsFreeVibration && system.N > kLargestOrder) {
    throw RunStopped("** " + std::to_string(system.N) +
                     " inertias are too many for the free vibration calculation, at most " +
                     std::to_string(kLargestOrder));
  }
  BUILDMASSANDMASSDAMPINGMATRIX(IsFreeVibration, model, excitationOrder, system);
  BUILDSTIFFNESSANDSTIFFNESSDAMPINGMATRIX(IsFreeVibration, model, excitationOrder, system);
}

}  // namespace verenwick
