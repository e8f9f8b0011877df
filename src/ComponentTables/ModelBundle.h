#pragma once

#include "ComponentTables/Global_CentrifugalPump.h"
#include "ComponentTables/Global_Diesel.h"
#include "ComponentTables/Global_ElectricMotor.h"
#include "ComponentTables/Global_GasTurbine.h"
#include "ComponentTables/Global_GeislingerCoupling.h"
#include "ComponentTables/Global_Generator.h"
#include "ComponentTables/Global_LinearCoupling.h"
#include "ComponentTables/Global_LoadCase.h"
#include "ComponentTables/Global_LoadCaseGenset.h"
#include "ComponentTables/Global_Mass.h"
#include "ComponentTables/Global_ProgressiveCoupling.h"
#include "ComponentTables/Global_Propeller.h"
#include "ComponentTables/Global_ReciprocatingPump.h"
#include "ComponentTables/Global_RubberDamper.h"
#include "ComponentTables/Global_Shaft.h"
#include "ComponentTables/Global_SteamTurbine.h"
#include "ComponentTables/Global_SteelSpringDamper.h"
#include "ComponentTables/Global_ViscousDamper.h"

namespace verenwick {

/// The model of one run: its twenty tables in their fixed order. Every step of a run takes it by
/// reference; a table that the input file doesn't need stays unallocated.
struct ModelBundle {
  MASS_TABLE mass;
  SHAFT_TABLE shaft;
  VISCOUSDAMPER_TABLE viscousDamper;
  RUBBERDAMPER_TABLE rubberDamper;
  STEELSPRINGDAMPER_TABLE steelSpringDamper;
  LINEARCOUPLING_TABLE linearCoupling;
  PROGRESSIVECOUPLING_TABLE progressiveCoupling;
  GEISLINGERCOUPLING_TABLE geislingerCoupling;
  DIESEL_TABLE diesel;
  ELECTRICMOTOR_TABLE electricMotor;
  GASTURBINE_TABLE gasTurbine;
  STEAMTURBINE_TABLE steamTurbine;
  PROPELLER_TABLE propeller;
  GENERATOR_TABLE generator;
  CENTRIFUGALPUMP_TABLE centrifugalPump;
  RECIPROCATINGPUMP_TABLE reciprocatingPump;
  LOADCASE_TABLE loadCase;
  LOADCASE_SPEED loadCaseSpeed;
  LOADCASE_POWER loadCasePower;
  LOADCASEGENSET_TABLE loadCaseGenset;
};

/// Position of a component in the table of its kind; 0 if it isn't there.
std::int32_t componentPosition(const ModelBundle& model, ComponentType kind, std::int32_t id);

/// Position of the component that a load case column is of; 0 for a column that is unused, names a
/// component that isn't there or names one a second time.
std::int32_t componentOfColumn(const ModelBundle& model, std::int32_t column);

/// Frees every table that is allocated.
inline void releaseTables(ModelBundle& model) { model = ModelBundle{}; }

}  // namespace verenwick
