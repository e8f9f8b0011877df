#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "RunControl/Positions.h"

/// The pattern of all component tables.
namespace verenwick {

/// Positions from 1 by a key that each of them has and several may share; every key is Key{} until
/// it is set. The keys are kept beside an ordered index of them, so that a search stays fast among
/// many thousand positions; as long as no key is set there is no index.
template <class Key>
class PositionIndex {
 public:
  void allocate(std::int32_t count) {
    keys_.assign(asSize(std::max(count, 0)), Key{});
    index_.clear();
    isIndexed_ = false;
  }
  void append() {
    keys_.push_back(Key{});
    if (isIndexed_) {
      index_.emplace(Key{}, number());
    }
  }
  std::int32_t number() const { return static_cast<std::int32_t>(keys_.size()); }
  const Key& at(std::int32_t position) const { return keys_[index(position)]; }
  void set(std::int32_t position, const Key& key) {
    if (!isIndexed_) {
      makeIndex();
    }
    index_.erase({keys_[index(position)], position});
    keys_[index(position)] = key;
    index_.emplace(key, position);
  }
  /// First position with this key; 0 if there is none.
  std::int32_t first(const Key& key) const {
    if (!isIndexed_) {
      return key == Key{} && number() > 0 ? 1 : 0;
    }
    const auto found = index_.lower_bound({key, 0});
    return found != index_.end() && found->first == key ? found->second : 0;
  }

 private:
  void makeIndex() {
    for (std::int32_t position = 1; position <= number(); ++position) {
      index_.emplace_hint(index_.end(), Key{}, position);
    }
    isIndexed_ = true;
  }

  std::vector<Key> keys_;
  std::set<std::pair<Key, std::int32_t>> index_;
  bool isIndexed_ = false;
};

/// Records numbered from 1, each with the id that the input file gave it. An unallocated table and
/// an empty one are different things.
template <class Record>
class ComponentTable {
 public:
  void allocate(std::int32_t count) {
    records_.emplace(asSize(std::max(count, 0)));
    ids_.allocate(count);
  }
  /// Adds one record at the end of an allocated table.
  void append() {
    records_->emplace_back();
    ids_.append();
  }
  void deallocate() {
    records_.reset();
    ids_.allocate(0);
  }
  bool isAllocated() const { return records_.has_value(); }
  std::int32_t number() const { return records_ ? static_cast<std::int32_t>(records_->size()) : 0; }

  /// The record at a position from 1 to number(); the position is not checked.
  Record& at(std::int32_t position) { return (*records_)[index(position)]; }
  const Record& at(std::int32_t position) const { return (*records_)[index(position)]; }

  std::int32_t id(std::int32_t position) const { return ids_.at(position); }
  void setId(std::int32_t position, std::int32_t id) { ids_.set(position, id); }
  /// First position with this id; 0 if there is none or the table isn't allocated.
  std::int32_t positionOf(std::int32_t id) const { return ids_.first(id); }

 private:
  std::optional<std::vector<Record>> records_;
  PositionIndex<std::int32_t> ids_;
};

/// First position from 1 at which a condition holds; 0 if there is none.
template <class Table, class Condition>
std::int32_t firstPosition(const Table& table, Condition holds) {
  for (std::int32_t position = 1; position <= table.number(); ++position) {
    if (holds(position)) {
      return position;
    }
  }
  return 0;
}

/// How an accessor hands out a field: numbers by value, texts and arrays by reference.
template <class Value>
using FieldValue = std::conditional_t<std::is_scalar_v<Value>, Value, const Value&>;

}  // namespace verenwick

// A field list names each field once, one line a field with its meaning and unit; the list is read
// twice, for the members of the record and for the SET_x_f and GET_x_f pair.
//   VALUE(X, type, name, default, meaning)   one value
//   ARRAY(X, type, name, count, meaning)     a fixed number of values, from 1, default zero
//   LIST(X, type, name, meaning)             values from 1, as many as were loaded

#define VERENWICK_MEMBER_VALUE(X, type, name, initial, meaning) type name = initial;
#define VERENWICK_MEMBER_ARRAY(X, type, name, count, meaning) std::array<type, count> name{};
#define VERENWICK_MEMBER_LIST(X, type, name, meaning) std::vector<type> name{};

#define VERENWICK_ACCESS_VALUE(X, type, name, initial, meaning)                             \
  inline void SET_##X##_##name(X##_TABLE& table, std::int32_t position, type value) {       \
    table.at(position).name = std::move(value);                                             \
  }                                                                                         \
  inline FieldValue<type> GET_##X##_##name(const X##_TABLE& table, std::int32_t position) { \
    return table.at(position).name;                                                         \
  }
#define VERENWICK_ACCESS_ELEMENT(X, type, name)                                           \
  inline void SET_##X##_##name(X##_TABLE& table, std::int32_t position, std::int32_t i,   \
                               type value) {                                              \
    table.at(position).name[index(i)] = std::move(value);                                 \
  }                                                                                       \
  inline FieldValue<type> GET_##X##_##name(const X##_TABLE& table, std::int32_t position, \
                                           std::int32_t i) {                              \
    return table.at(position).name[index(i)];                                             \
  }
#define VERENWICK_ACCESS_ARRAY(X, type, name, count, meaning) \
  VERENWICK_ACCESS_ELEMENT(X, type, name)
#define VERENWICK_ACCESS_LIST(X, type, name, meaning) VERENWICK_ACCESS_ELEMENT(X, type, name)

/// The record, the table and the accessors of component kind X from its field list.
#define VERENWICK_TABLE(X, FIELDS)                                                        \
  struct X##_RECORD {                                                                     \
    FIELDS(VERENWICK_MEMBER_VALUE, VERENWICK_MEMBER_ARRAY, VERENWICK_MEMBER_LIST, X)      \
  };                                                                                      \
  using X##_TABLE = ComponentTable<X##_RECORD>;                                           \
  inline void ALLOCATE_##X##_TABLE(X##_TABLE& table, std::int32_t count) {                \
    table.allocate(count);                                                                \
  }                                                                                       \
  inline void DEALLOCATE_##X##_TABLE(X##_TABLE& table) { table.deallocate(); }            \
  inline std::int32_t GET_##X##_NUMBER(const X##_TABLE& table) { return table.number(); } \
  FIELDS(VERENWICK_ACCESS_VALUE, VERENWICK_ACCESS_ARRAY, VERENWICK_ACCESS_LIST, X)

/// The id of kind X, the number that the input file gave a record, and the search GET_X_LOOKUP
/// for its first position, 0 if there is none.
#define VERENWICK_TABLE_ID(X, LOOKUP) VERENWICK_TABLE_ID_NAMED(X, ID, LOOKUP)

/// The same where the id is another kind's and has its name.
#define VERENWICK_TABLE_ID_NAMED(X, NAME, LOOKUP)                                          \
  inline void SET_##X##_##NAME(X##_TABLE& table, std::int32_t position, std::int32_t id) { \
    table.setId(position, id);                                                             \
  }                                                                                        \
  inline std::int32_t GET_##X##_##NAME(const X##_TABLE& table, std::int32_t position) {    \
    return table.id(position);                                                             \
  }                                                                                        \
  inline std::int32_t GET_##X##_##LOOKUP(const X##_TABLE& table, std::int32_t id) {        \
    return table.positionOf(id);                                                           \
  }
