#include <gtest/gtest.h>

#include "Matrices/MassStffnessAndDampingMatrix.h"

namespace verenwick {
namespace {

/// Two cylinders of engine 7 and a flywheel on one line, every row at half the reference speed.
ModelBundle line() {
  ModelBundle model;
  ALLOCATE_MASS_TABLE(model.mass, 3);
  ALLOCATE_SHAFT_TABLE(model.shaft, 2);
  ALLOCATE_DIESEL_TABLE(model.diesel, 1);
  SET_DIESEL_ID(model.diesel, 1, 7);
  model.diesel.at(1).ISFORMULADAMPING = true;
  model.diesel.at(1).SPEED = 50.0;
  model.diesel.at(1).CYLABSDAMPING = 2.0;
  model.diesel.at(1).EXPCYLABSDAMPING = 1.0;
  model.diesel.at(1).CRANKRELDAMPING = 3.0;
  model.diesel.at(1).EXPCRANKRELDAMPING = 2.0;
  for (std::int32_t i = 1; i <= 3; ++i) {
    SET_MASS_ID(model.mass, i, i);
    MASS_RECORD& row = model.mass.at(i);
    row.RPMRATIO = 0.5;
    row.INERTIA = 10.0;
    row.ABSDAMPING = 1000.0;
    row.DYNMAGNIFIER = i == 2 ? 40.0 : 0.0;
    if (i <= 2) {
      row.MASSTYPE = MassType::dieselCylinder;
      row.COMPONENTTYPE = ComponentType::diesel;
      row.COMPONENTID = 7;
    }
  }
  for (std::int32_t i = 1; i <= 2; ++i) {
    SET_SHAFT_ID(model.shaft, i, i);
    SHAFT_RECORD& row = model.shaft.at(i);
    row.ORGNODE = i;
    row.DESNODE = i + 1;
    row.RPMRATIO = 0.5;
    row.STIFFNESS = 1e6;
    row.ABSDAMPING = 600.0;
    if (i == 1) {
      row.SHAFTTYPE = ShaftType::crankThrow;
      row.COMPONENTTYPE = ComponentType::diesel;
      row.COMPONENTID = 7;
    }
  }
  return model;
}

ShaftLineMatrices assembled(ModelBundle& model, bool isFree, double order) {
  ShaftLineMatrices system;
  MASSANDSHAFTTABLEPREPARATION(isFree, model, 1);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(isFree, model, order, system);
  return system;
}

TEST(FormulaDamping, ActsOnCylindersAndCrankThrowsByOrder) {
  ModelBundle model = line();
  for (const double order : {1.0, 4.5}) {
    const ShaftLineMatrices system = assembled(model, false, order);
    const double cylinder = 2.0 * (order * 50.0) * 0.25;
    const double crankThrow = 3.0 * (order * 50.0) * (order * 50.0) * 0.25;
    const double shaft = 600.0 * 0.25;
    // The formula also stands before the magnifier of cylinder 2.
    EXPECT_EQ(system.CA, (std::vector{cylinder, cylinder, 250.0}));
    EXPECT_EQ(system.CAR, (std::vector{0.0, 0.0, 0.0}));
    EXPECT_EQ(system.CR, (std::vector{crankThrow, crankThrow + shaft, shaft, -crankThrow,
                                      -crankThrow, -shaft, -shaft}));
  }
  const ShaftLineMatrices free = assembled(model, true, 1.0);
  EXPECT_EQ(free.CA, std::vector<double>(3)) << "the free problem has no damping";
  EXPECT_EQ(free.CR, std::vector<double>(7));
}

TEST(FormulaDamping, WithoutItTheRowsKeepTheirOwn) {
  for (const bool isKnown : {true, false}) {
    ModelBundle model = line();
    model.diesel.at(1).ISFORMULADAMPING = !isKnown;
    if (!isKnown) {
      SET_DIESEL_ID(model.diesel, 1, 8);  // nobody's engine
    }
    const ShaftLineMatrices system = assembled(model, false, 4.5);
    EXPECT_EQ(system.CA, (std::vector{250.0, 0.0, 250.0}));
    EXPECT_EQ(system.CAR, (std::vector{0.0, 10.0 / 40.0 * 0.25, 0.0}));
    EXPECT_EQ(system.CR[0], 150.0);
  }
}

TEST(FormulaDamping, OfAThrowYieldsToItsMagnifier) {
  ModelBundle model = line();
  model.shaft.at(1).DYNMAGNIFIER = 50.0;
  const ShaftLineMatrices system = assembled(model, false, 4.5);
  EXPECT_EQ(system.CR[0], 0.0);
  EXPECT_EQ(system.CRR[0], 1e6 / 50.0 * 0.25);
}

}  // namespace
}  // namespace verenwick
