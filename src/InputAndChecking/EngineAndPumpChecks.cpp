#include <algorithm>
#include <cmath>

#include "InputAndChecking/CheckList.h"
#include "RunControl/Constants.h"
#include "RunControl/Files.h"
#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

/// Fraction that must be above zero and at most one.
bool isNoFraction(double value) { return value <= 0.0 || value > 1.0; }

bool isUnreadable(std::string_view path) { return !isBlank(path) && !isReadableFile(path); }

/// Whether a cylinder of the engine has a firing status.
bool hasStatus(const DIESEL_RECORD& engine, std::int32_t status) {
  for (std::int32_t i = 0; i < engine.NCYLINDER; ++i) {
    const auto c = static_cast<std::size_t>(i);
    if (engine.FIRINGSTATUSA[c] == status ||
        (engine.ISVENGINE && engine.FIRINGSTATUSB[c] == status)) {
      return true;
    }
  }
  return false;
}

/// Warns of bank B firing angles that don't lie behind bank A by the bank angle, or by that and a
/// turn of the crank.
void checkBankAngles(const DIESEL_RECORD& engine, RecordChecks& it) {
  constexpr double kTolerance = single(0.1F);  // rad
  const auto isOff = [](double offset, double degrees) {
    return std::abs(offset - radians(degrees)) > kTolerance;
  };
  for (std::int32_t i = 1; engine.ISVENGINE && i <= engine.NCYLINDER; ++i) {
    const std::size_t c = index(i);
    const double offset = engine.FIRINGANGLEA[c] - engine.FIRINGANGLEB[c];
    const bool isNotNext = isOff(offset, engine.VANGLE);
    const bool isNotTurnLater = isOff(offset, engine.VANGLE + 360.0);
    const auto warn = [&](bool isWrong, std::string_view words) {
      if (isWrong) {
        it.log().warning("Bank B of Diesel", it.id(), " Cylinder No.", i, words);
      }
    };
    if (engine.VEEFIRINGTYPE == VeeFiringType::consecutive) {
      warn(isNotNext, " doesn't fire consecutively after Bank A");
    } else if (engine.VEEFIRINGTYPE == VeeFiringType::nonConsecutive) {
      warn(isNotTurnLater, " doesn't fire non-consecutively after Bank A");
    } else {
      warn(isNotNext && isNotTurnLater,
           " neither fire consecutively nor non-consecutively after Bank A");
    }
  }
}

/// Every row of cylinders must sit on an inertia.
template <class Machine>
void checkCylinderNodes(const ModelBundle& model, const Machine& machine, RecordChecks& it) {
  for (std::int32_t i = 0; i < machine.NCYLINDER; ++i) {
    const std::int32_t node = machine.CYLINDERS[static_cast<std::size_t>(i)];
    it.error(!isInertia(model, node), " has cylinder node not listed in Inertia table (", node);
  }
}

/// Warns of a row of cylinders on the inertia of an earlier row: both rows excite it.
void checkSharedCylinderNodes(const DIESEL_RECORD& engine, RecordChecks& it) {
  for (std::int32_t i = 1; i < engine.NCYLINDER; ++i) {
    const auto row = engine.CYLINDERS.begin() + i;
    it.warning(std::find(engine.CYLINDERS.begin(), row, *row) != row,
               " has more than one cylinder row on Inertia (", *row);
  }
}

void checkHarmonicFiles(const DIESEL_RECORD& engine, RecordChecks& it) {
  const std::string_view normal = trimmed(engine.NORMALHARMONICFILE);
  const std::string_view misfiring = trimmed(engine.MISHARMONICFILE);
  it.error(isBlank(normal) && hasStatus(engine, normalFiring),
           " must specify the address of harmonic component file for normal firing cylinders");
  it.error(isUnreadable(normal), " has a normal firing harmonic file unaccessable (", normal);
  it.error(isBlank(misfiring) && hasStatus(engine, onlyCompression),
           " must specify the address of harmonic component file for misfiring cylinders");
  it.error(isUnreadable(misfiring), " has a misfiring harmonic file unaccessable (", misfiring);
}

void checkPressureModel(const DIESEL_RECORD& engine, RecordChecks& it) {
  const double exhaustStart = std::trunc(engine.ANGLEEXHAUSTSTART);
  it.error(!(engine.PMAX > engine.PCOMP),
           " has a maximum pressure no greater than compression pressure (", engine.PMAX,
           "<=", engine.PCOMP);
  it.error(engine.PCOMP < 0.0, " has a negative compression pressure (", engine.PCOMP);
  it.error(engine.COMPRATIO < 1.0, " has a no greater than 1.0 compression ratio (",
           engine.COMPRATIO);
  it.error(engine.PCHARGEAIR < 0.0, " has a negative charge air pressure (", engine.PCHARGEAIR);
  it.error(isNoFraction(engine.TE),
           " has a zero, negative or larger than 100% thermal efficiency (", engine.TE);
  it.error(exhaustStart < 91.0 || exhaustStart > 179.0,
           " has a exhaust start angle no greater than 90 or no less than 180(",
           engine.ANGLEEXHAUSTSTART);
}

}  // namespace

void checkDiesels(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Diesel", model.diesel, [&](RecordChecks& it, std::int32_t i) {
    const DIESEL_RECORD& engine = model.diesel.at(i);
    checkBankAngles(engine, it);
    it.error(engine.NSTROKE != 2 && engine.NSTROKE != 4,
             " has a number of stroke not equal to 2 or 4 (", engine.NSTROKE);
    it.error(engine.MCRPOWER <= 0.0, " has a zero or negative mcr power (", engine.MCRPOWER);
    it.error(engine.MCRSPEED <= 0.0, " has a zero or negative mcr speed (", engine.MCRSPEED);
    it.error(engine.NCYLINDER < 1, " has a zero or negative number of cylinders (",
             engine.NCYLINDER);
    checkCylinderNodes(model, engine, it);
    it.error(engine.BORE <= 0.0, " has a zero or negative cylinder diameter (", engine.BORE);
    it.error(engine.STROKE <= 0.0, " has a zero or negative stroke length (", engine.STROKE);
    it.error(isNoFraction(engine.CONRODRATIO),
             " has a non-positive or no less than 1.0 connecting rod ratio (", engine.CONRODRATIO);
    it.error(engine.RECIPMASS < 0.0, " has a negative reciprocating mass (", engine.RECIPMASS);
    it.error(isNoFraction(engine.ME),
             " has a zero, negative or larger than 100% mechanical efficiency (", engine.ME);
    it.error(!hasStatus(engine, normalFiring), " has no normal firing cylinders");
    checkSharedCylinderNodes(engine, it);
    if (engine.ISTHEORETICALPRESURE) {
      checkPressureModel(engine, it);
    } else {
      checkHarmonicFiles(engine, it);
    }
  });
}

void checkReciprocatingPumps(const ModelBundle& model, CheckLog& log) {
  checkRecords(
      log, "ReciprocatingPump", model.reciprocatingPump, [&](RecordChecks& rating, std::int32_t i) {
        const RECIPROCATINGPUMP_RECORD& pump = model.reciprocatingPump.at(i);
        rating.error(pump.MCRPOWER <= 0.0, " has a zero or negative mcr power (", pump.MCRPOWER);
        rating.error(pump.MCRSPEED <= 0.0, " has a zero or negative mcr speed (", pump.MCRSPEED);

        RecordChecks it(log, "Reciprocating pump", rating.id());
        it.error(pump.NCYLINDER < 1, " has a zero or negative number of cylinders (",
                 pump.NCYLINDER);
        checkCylinderNodes(model, pump, it);
        it.error(pump.BORE <= 0.0, " has a zero or negative cylinder diameter (", pump.BORE);
        it.error(pump.STROKELENGTH <= 0.0, " has a zero or negative stroke length (",
                 pump.STROKELENGTH);
        it.error(isNoFraction(pump.CONRODRATIO),
                 " has a non-positive or no less than 1.0 connecting rod ratio (",
                 pump.CONRODRATIO);
        it.error(pump.RECIPMASS < 0.0, " has a negative reciprocating mass (", pump.RECIPMASS);
        warnOfNegativeCount(pump.ISSIMPLIFIEDPRESSURE ? pump.RECIPROCATINGPUMPORDERNUMBER : 0, it);
        const std::string_view file = trimmed(pump.PUMPHARMONICFILE);
        it.error(!pump.ISSIMPLIFIEDPRESSURE && isBlank(file),
                 " must specify the address of harmonic component file");
        it.error(!pump.ISSIMPLIFIEDPRESSURE && !isReadableFile(file),
                 " has a harmonic file unaccessable (", file);
      });
}

}  // namespace verenwick
