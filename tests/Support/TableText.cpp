#include "Support/TableText.h"

#include <sstream>

#include "RunControl/NumberText.h"

namespace verenwick::test {
namespace {

std::string valueText(const std::string& value) { return std::string("\"").append(value) + "\""; }
std::string valueText(std::int32_t value) { return std::to_string(value); }
std::string valueText(double value) { return shortestText(value); }
template <class Kind>
requires std::is_enum_v<Kind> std::string valueText(Kind value) {
  return std::to_string(static_cast<std::int32_t>(value));
}
template <class Value, std::size_t N>
requires std::is_arithmetic_v<Value> std::string valueText(const std::array<Value, N>& values) {
  std::size_t count = N;
  while (count > 0 && values[count - 1] == Value{}) {
    --count;
  }
  std::ostringstream text;
  for (std::size_t i = 0; i < count; ++i) {
    text << (i > 0 ? "," : "") << valueText(values[i]);
  }
  return text.str();
}

template <class Value>
concept Showable = requires(const Value& value) {
  valueText(value);
};

/// Writes a line for each record.
/// @param fieldsOf calls the function it is given with name and value of each field of a record,
///                 and the value of a new record
template <class Record, class FieldsOf>
void showTable(std::ostream& out, const char* kind, const ComponentTable<Record>& table,
               Fields wanted, FieldsOf fieldsOf) {
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    out << kind << ' ' << table.id(i);
    fieldsOf(table.at(i), Record{}, [&](const char* name, const auto& value, const auto& plain) {
      if constexpr (Showable<decltype(value)>) {
        if (wanted == Fields::all || value != plain) {
          out << ' ' << name << '=' << valueText(value);
        }
      }
    });
    out << '\n';
  }
}

void showLoadCases(std::ostream& out, const ModelBundle& model) {
  for (std::int32_t column = 1; column <= model.loadCase.number(); ++column) {
    out << "COLUMN " << column
        << " TYPE=" << valueText(GET_LOADCASE_COMPONENTTYPE(model.loadCase, column))
        << " ID=" << GET_LOADCASE_COMPONENTID(model.loadCase, column) << '\n';
  }
  for (std::int32_t loadCase = 1; loadCase <= model.loadCaseSpeed.number(); ++loadCase) {
    out << "LOADCASE " << loadCase << " SPEED=" << shortestText(model.loadCaseSpeed.at(loadCase))
        << " POWER=";
    for (std::int32_t column = 1; column <= model.loadCase.number(); ++column) {
      out << (column > 1 ? "," : "") << shortestText(model.loadCasePower.at(column, loadCase));
    }
    out << '\n';
  }
}

}  // namespace

std::string tableText(const ModelBundle& model, Fields fields) {
  std::ostringstream out;
#define SHOW_FIELD(X, type, name, ...) show(#name, record.name, plain.name);
#define SHOW_TABLE(X, table)                                                   \
  showTable(out, #X, model.table, fields,                                      \
            [](const X##_RECORD& record, const X##_RECORD& plain, auto show) { \
              X##_FIELDS(SHOW_FIELD, SHOW_FIELD, SHOW_FIELD, X)                \
            });
  SHOW_TABLE(MASS, mass)
  SHOW_TABLE(SHAFT, shaft)
  SHOW_TABLE(VISCOUSDAMPER, viscousDamper)
  SHOW_TABLE(RUBBERDAMPER, rubberDamper)
  SHOW_TABLE(STEELSPRINGDAMPER, steelSpringDamper)
  SHOW_TABLE(LINEARCOUPLING, linearCoupling)
  SHOW_TABLE(PROGRESSIVECOUPLING, progressiveCoupling)
  SHOW_TABLE(GEISLINGERCOUPLING, geislingerCoupling)
  SHOW_TABLE(DIESEL, diesel)
  SHOW_TABLE(ELECTRICMOTOR, electricMotor)
  SHOW_TABLE(GASTURBINE, gasTurbine)
  SHOW_TABLE(STEAMTURBINE, steamTurbine)
  SHOW_TABLE(PROPELLER, propeller)
  SHOW_TABLE(GENERATOR, generator)
  SHOW_TABLE(CENTRIFUGALPUMP, centrifugalPump)
  SHOW_TABLE(RECIPROCATINGPUMP, reciprocatingPump)
#undef SHOW_TABLE
#undef SHOW_FIELD
  showLoadCases(out, model);
  return out.str();
}

}  // namespace verenwick::test
