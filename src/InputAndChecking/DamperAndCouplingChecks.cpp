#include <algorithm>

#include "InputAndChecking/CheckList.h"

namespace verenwick {
namespace {

/// Whether a damper's free member hangs on to something else than the member that carries it.
bool isLinkedToOthers(const MASS_TABLE& mass, const ADJNODE& graph, std::int32_t freeNode,
                      std::int32_t carryingNode) {
  const std::int32_t freeMember = GET_MASS_IMASS(mass, freeNode);
  const std::int32_t carrier = GET_MASS_IMASS(mass, carryingNode);
  const auto& neighbours = graph.from(freeMember);
  return std::any_of(neighbours.begin(), neighbours.end(), [&](std::int32_t neighbour) {
    return neighbour != freeMember && neighbour != carrier;
  });
}

/// Whether a shaft was marked as this component's own, and kept the mark.
bool isOwn(const SHAFT_TABLE& shaft, std::int32_t position, ShaftType type, ComponentType owner,
           std::int32_t ownerId) {
  const SHAFT_RECORD& record = shaft.at(position);
  return record.SHAFTTYPE == type && record.COMPONENTTYPE == owner && record.COMPONENTID == ownerId;
}

constexpr std::string_view kLinkNotOwn = " has a link not marked as its own, Shaft (";

/// Warns of a damper whose link another component or a later SHAFT line took from it.
void warnOfLostLink(const SHAFT_TABLE& shaft, std::int32_t link, RecordChecks& it, ShaftType type,
                    ComponentType owner) {
  if (link > 0) {
    it.warning(!isOwn(shaft, link, type, owner, it.id()), kLinkNotOwn, GET_SHAFT_ID(shaft, link));
  }
}

/// Warns of a coupling whose shaft another component or a later SHAFT line took from it: it then
/// counts as a plain shaft.
void warnOfLostShaft(const SHAFT_TABLE& shaft, RecordChecks& it, std::int32_t shaftId,
                     ShaftType type, ComponentType owner) {
  const std::int32_t position = GET_SHAFT_ISHAFT(shaft, shaftId);
  it.warning(position > 0 && !isOwn(shaft, position, type, owner, it.id()), kLinkNotOwn, shaftId);
}

}  // namespace

void checkViscousDampers(ModelBundle& model, const ADJNODE& graph, const ShaftsByNodes& shafts,
                         bool hasFreeProblem, CheckLog& log) {
  bool areFilesLoaded = false;
  checkRecords(log, "Viscous damper", model.viscousDamper, [&](RecordChecks& it, std::int32_t i) {
    const VISCOUSDAMPER_RECORD& damper = model.viscousDamper.at(i);
    const bool hasCasing = isInertia(model, damper.CASINGNODE);
    const bool hasRing = isInertia(model, damper.RINGNODE);
    it.error(!hasCasing, " has a casing node not listed in Inertia table (", damper.CASINGNODE);
    it.error(!hasRing, " has a ring node not listed in Inertia table (", damper.RINGNODE);
    it.error(damper.ABSDAMPING < 0.0, " has a negative AbsDamping (", damper.ABSDAMPING);

    const std::int32_t link = shafts.between(damper.CASINGNODE, damper.RINGNODE);
    const bool canBeLinked = hasCasing && hasRing && link > 0;
    if (link > 0 && GET_SHAFT_STIFFNESS(model.shaft, link) <= 0.0) {
      SET_SHAFT_STIFFNESS(model.shaft, link, kNearlyFreeLink);
      it.error(damper.ABSDAMPING == 0.0, " has zero AbsDamping and Stiffness");
    }
    if (canBeLinked) {
      it.error(isLinkedToOthers(model.mass, graph, damper.RINGNODE, damper.CASINGNODE),
               " has the ring linked to other inertia");
      const bool isRing =
          GET_MASS_MASSTYPE(model.mass, GET_MASS_IMASS(model.mass, damper.RINGNODE)) ==
          MassType::viscousDamperRing;
      const bool isLink = GET_SHAFT_SHAFTTYPE(model.shaft, link) == ShaftType::viscousDamperLink;
      // The free problem leaves out rings and their links by these marks: one without the other
      // breaks it.
      const bool isBroken = hasFreeProblem && isRing != isLink;
      it.errorOrWarning(isBroken,
                        !isOwn(model.shaft, link, ShaftType::viscousDamperLink,
                               ComponentType::viscousDamper, it.id()),
                        kLinkNotOwn, GET_SHAFT_ID(model.shaft, link));
      it.errorOrWarning(isBroken, !isRing, " has a ring not marked as such, Inertia (",
                        damper.RINGNODE);
    }
    // One call of the loader reads the files of all dampers.
    if (damper.ISCUSTOMDAMPING && !areFilesLoaded) {
      areFilesLoaded = true;
      log.load([&] { return LOADCUSTOMDAMPINGFILE(model.viscousDamper); });
    }
  });
}

void checkRubberDampers(const ModelBundle& model, const ADJNODE& graph, const ShaftsByNodes& shafts,
                        CheckLog& log) {
  checkRecords(log, "Rubber damper", model.rubberDamper, [&](RecordChecks& it, std::int32_t i) {
    const RUBBERDAMPER_RECORD& damper = model.rubberDamper.at(i);
    const bool hasMass = isInertia(model, damper.TURNINGMASSNODE);
    const bool hasPlate = isInertia(model, damper.DRIVEPLATENODE);
    it.error(!hasMass, " has a turning node not listed in Inertia table (", damper.TURNINGMASSNODE);
    it.error(!hasPlate, " has a drive plate node not listed in Inertia table (",
             damper.DRIVEPLATENODE);
    it.error(damper.ABSDAMPING < 0.0, " has a negative AbsDamping (", damper.ABSDAMPING);
    if (hasMass && hasPlate) {
      it.error(isLinkedToOthers(model.mass, graph, damper.TURNINGMASSNODE, damper.DRIVEPLATENODE),
               " has the turning mass linked to other inertia");
      warnOfLostLink(model.shaft, shafts.between(damper.DRIVEPLATENODE, damper.TURNINGMASSNODE), it,
                     ShaftType::rubberDamperLink, ComponentType::rubberDamper);
    }
  });
}

void checkSteelSpringDampers(const ModelBundle& model, const ADJNODE& graph,
                             const ShaftsByNodes& shafts, CheckLog& log) {
  checkRecords(
      log, "Steel spring damper", model.steelSpringDamper, [&](RecordChecks& it, std::int32_t i) {
        const STEELSPRINGDAMPER_RECORD& damper = model.steelSpringDamper.at(i);
        const bool hasOuter = isInertia(model, damper.OUTERMEMBERNODE);
        const bool hasInner = isInertia(model, damper.INNERMEMBERNODE);
        it.error(!hasOuter, " has a outer member node not listed in Inertia table (",
                 damper.OUTERMEMBERNODE);
        it.error(!hasInner, " has a inner member node not listed in Inertia table (",
                 damper.INNERMEMBERNODE);
        it.error(damper.ABSDAMPING < 0.0, " has a negative AbsDamping (", damper.ABSDAMPING);
        if (hasOuter && hasInner) {
          it.error(
              isLinkedToOthers(model.mass, graph, damper.OUTERMEMBERNODE, damper.INNERMEMBERNODE),
              " has the outer member linked to other inertia");
          warnOfLostLink(model.shaft,
                         shafts.between(damper.OUTERMEMBERNODE, damper.INNERMEMBERNODE), it,
                         ShaftType::steelSpringDamperLink, ComponentType::steelSpringDamper);
        }
      });
}

void checkLinearCouplings(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Linear coupling", model.linearCoupling, [&](RecordChecks& it, std::int32_t i) {
    const LINEARCOUPLING_RECORD& coupling = model.linearCoupling.at(i);
    it.error(!isShaft(model, coupling.SHAFTNODE), " has a shaft node not listed in Shaft table (",
             coupling.SHAFTNODE);
    it.error(coupling.NOMINALSTIFFNESS <= 0.0, " has a zero or negative nominal stiffness (",
             coupling.NOMINALSTIFFNESS);
    warnOfLostShaft(model.shaft, it, coupling.SHAFTNODE, ShaftType::linearCoupling,
                    ComponentType::linearCoupling);
  });
}

void checkProgressiveCouplings(const ModelBundle& model, CheckLog& log) {
  checkRecords(
      log, "Progressive coupling", model.progressiveCoupling,
      [&](RecordChecks& it, std::int32_t i) {
        const PROGRESSIVECOUPLING_RECORD& coupling = model.progressiveCoupling.at(i);
        // The last point lies at the nominal torque as read.
        const double nominalTorque = coupling.NOMINALTORQUE.back();
        const auto& stiffness = coupling.NOMINALSTIFFNESS;
        it.error(!isShaft(model, coupling.SHAFTNODE),
                 " has a shaft node not listed in Shaft table (", coupling.SHAFTNODE);
        it.error(nominalTorque <= 0.0, " has a zero or negative nominal torque (", nominalTorque);
        it.error(*std::min_element(stiffness.begin(), stiffness.end()) < 0.0,
                 " has a negative nominal stiffness");
        warnOfLostShaft(model.shaft, it, coupling.SHAFTNODE, ShaftType::progressiveCoupling,
                        ComponentType::progressiveCoupling);
      });
}

void checkGeislingerCouplings(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Geislinger coupling", model.geislingerCoupling,
               [&](RecordChecks& it, std::int32_t i) {
                 const GEISLINGERCOUPLING_RECORD& coupling = model.geislingerCoupling.at(i);
                 it.error(!isShaft(model, coupling.SHAFTNODE),
                          " has a shaft node not listed in Shaft table (", coupling.SHAFTNODE);
                 it.error(coupling.NOMINALTORQUE <= 0.0, " has a zero or negative nominal torque (",
                          coupling.NOMINALTORQUE);
                 it.error(coupling.STATICSTIFFNESS <= 0.0,
                          " has a zero or negative Static Stiffness (", coupling.STATICSTIFFNESS);
                 it.error(coupling.CHARACTERISTICFREQUENCY <= 0.0,
                          " has a zero or negative Characteristic Frequency (",
                          coupling.CHARACTERISTICFREQUENCY);
                 it.error(coupling.OILVISCOSITY <= 0.0, " has a zero or negative Oil Viscosity (",
                          coupling.OILVISCOSITY);
                 warnOfLostShaft(model.shaft, it, coupling.SHAFTNODE, ShaftType::geislingerCoupling,
                                 ComponentType::geislingerCoupling);
               });
}

}  // namespace verenwick
