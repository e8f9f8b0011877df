#include <fmt/format.h>
#include <hdf5.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "host/WholeFile.h"
#include "host/export/Export.h"
#include "host/run/ChildProcess.h"

namespace verenwick::host {
namespace {

using results::Axis;
using results::Column;
using results::Layout;
using results::ResultDirectory;
using results::ResultFile;
using results::ResultValues;

/// Values that are copied at once.
constexpr std::int64_t kChunkValues = 1 << 20;

/// A call of the library failed.
struct Hdf5Failure {};

/// An identifier of the library, closed in the end.
class Handle {
 public:
  Handle(hid_t id, herr_t (*closer)(hid_t)) : id_(id), close_(closer) {
    if (id_ < 0) {
      throw Hdf5Failure();
    }
  }
  Handle(Handle&& other) noexcept
      : id_(std::exchange(other.id_, H5I_INVALID_HID)), close_(other.close_) {}
  Handle& operator=(Handle&&) = delete;
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (id_ >= 0) {
      close_(id_);
    }
  }
  operator hid_t() const { return id_; }

  /// Closes now, and tells if that fails: the last data are written then.
  void close() { check(close_(std::exchange(id_, H5I_INVALID_HID))); }

  static void check(herr_t status) {
    if (status < 0) {
      throw Hdf5Failure();
    }
  }

 private:
  hid_t id_;
  herr_t (*close_)(hid_t);
};

Handle space(const std::vector<hsize_t>& shape) {
  return shape.empty()
             ? Handle(H5Screate(H5S_SCALAR), H5Sclose)
             : Handle(H5Screate_simple(static_cast<int>(shape.size()), shape.data(), nullptr),
                      H5Sclose);
}

/// Texts of any length, in UTF-8.
Handle textType() {
  Handle type(H5Tcopy(H5T_C_S1), H5Tclose);
  Handle::check(H5Tset_size(type, H5T_VARIABLE));
  Handle::check(H5Tset_cset(type, H5T_CSET_UTF8));
  return type;
}

void writeAttribute(hid_t object, const char* name, const Handle& place, hid_t type,
                    const void* data) {
  Handle attribute(H5Acreate2(object, name, type, place, H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
  Handle::check(H5Awrite(attribute, type, data));
  attribute.close();
}

void attach(hid_t object, const char* name, std::string_view text) {
  const std::string copy(text);
  const char* data = copy.c_str();
  writeAttribute(object, name, space({}), textType(), &data);
}

void attach(hid_t object, const char* name, const std::vector<std::string>& texts) {
  std::vector<const char*> data;
  data.reserve(texts.size());
  for (const std::string& text : texts) {
    data.push_back(text.c_str());
  }
  writeAttribute(object, name, space({data.size()}), textType(), data.data());
}

void attach(hid_t object, const char* name, const std::vector<std::int64_t>& numbers) {
  writeAttribute(object, name, space({numbers.size()}), H5T_NATIVE_INT64, numbers.data());
}

/// What must be said of the results, if anything.
void attachRemark(hid_t object, const std::string& remark) {
  if (!remark.empty()) {
    attach(object, "remark", remark);
  }
}

Handle dataSet(hid_t file, const std::string& name, hid_t type, const Handle& place) {
  const Handle properties(H5Pcreate(H5P_DATASET_CREATE), H5Pclose);
  Handle::check(H5Pset_obj_track_times(properties, false));  // the same bytes at any time
  return {H5Dcreate2(file, name.c_str(), type, place, H5P_DEFAULT, properties, H5P_DEFAULT),
          H5Dclose};
}

template <class Number>
void writeList(hid_t file, const std::string& name, hid_t stored, hid_t native,
               const std::vector<Number>& values, std::string_view unit) {
  Handle set = dataSet(file, name, stored, space({values.size()}));
  Handle::check(H5Dwrite(set, native, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()));
  attach(set, "unit", unit);
  set.close();
}

/// The records of the file, in their order: the last index is the fastest in both.
void copyRecords(ResultValues& values, const Handle& set, const std::vector<hsize_t>& shape) {
  if (values.records() == 0) {
    return;
  }
  // Slices along the first axis, as many at once as a block takes.
  const auto slice = values.records() / static_cast<std::int64_t>(shape[0]);
  const auto atOnce = std::max<std::int64_t>(1, kChunkValues / slice);
  const Handle whole(H5Dget_space(set), H5Sclose);
  std::vector<double> block;
  std::vector<hsize_t> start(shape.size());
  std::vector<hsize_t> count = shape;
  while (start[0] < shape[0]) {
    count[0] = std::min(static_cast<hsize_t>(atOnce), shape[0] - start[0]);
    block.resize(static_cast<std::size_t>(count[0]) * static_cast<std::size_t>(slice));
    values.read(static_cast<std::int64_t>(start[0]) * slice + 1, block);
    Handle::check(
        H5Sselect_hyperslab(whole, H5S_SELECT_SET, start.data(), nullptr, count.data(), nullptr));
    const Handle memory = space(count);
    Handle::check(H5Dwrite(set, H5T_NATIVE_DOUBLE, memory, whole, H5P_DEFAULT, block.data()));
    start[0] += count[0];
  }
}

std::string stem(const ResultFile& file) {
  return std::filesystem::path(file.name).stem().string();
}

void writeValues(hid_t file, ResultValues values, const std::string& remark) {
  std::vector<hsize_t> shape;
  std::vector<std::string> axes;
  std::vector<std::int64_t> first;
  for (const Axis& axis : values.axes()) {
    shape.push_back(static_cast<hsize_t>(axis.size()));
    axes.emplace_back(axis.name);
    first.push_back(axis.first);
  }
  if (values.columns().size() > 1) {
    shape.push_back(values.columns().size());
    axes.emplace_back("component");
    first.push_back(1);
  }
  Handle set = dataSet(file, stem(values.file()), H5T_IEEE_F64LE, space(shape));
  copyRecords(values, set, shape);
  attach(set, "description", values.file().holds);
  attachRemark(set, remark);
  attach(set, "unit", values.file().unit);
  attach(set, "axes", axes);
  attach(set, "first", first);
  if (values.columns().size() > 1) {
    std::vector<std::string> components;
    std::vector<std::string> units;
    for (const Column& column : values.columns()) {
      components.emplace_back(column.name);
      units.emplace_back(column.unit);
    }
    attach(set, "components", components);
    attach(set, "component units", units);
  }
  if (values.file().layout == Layout::systemInfo) {
    attach(set, "counts",
           std::vector<std::string>(results::kSystemCountNames.begin(),
                                    results::kSystemCountNames.end()));
  }
  set.close();
}

void writeText(hid_t file, const ResultFile& which, const std::string& text,
               const std::string& remark) {
  // Of a fixed length: not every program reads data sets of texts of any length.
  const Handle type(H5Tcopy(H5T_C_S1), H5Tclose);
  Handle::check(H5Tset_size(type, text.size() + 1));
  Handle set = dataSet(file, stem(which), type, space({}));
  Handle::check(H5Dwrite(set, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, text.c_str()));
  attach(set, "description", which.holds);
  attachRemark(set, remark);
  set.close();
}

void writeNames(hid_t file, const ShaftLine& line) {
  std::vector<std::int32_t> inertias;
  std::vector<std::int32_t> shafts;
  for (const Inertia& each : line.inertias) {
    inertias.push_back(each.id);
  }
  for (const Shaft& each : line.shafts) {
    shafts.push_back(each.id);
  }
  writeList(file, "InertiaIds", H5T_STD_I32LE, H5T_NATIVE_INT32, inertias, "1");
  writeList(file, "ShaftIds", H5T_STD_I32LE, H5T_NATIVE_INT32, shafts, "1");
  writeList(file, "LoadCaseSpeeds", H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, line.loadCaseSpeeds, "rpm");
}

void writeAll(const OpenedResults& opened, const Names& names, const std::filesystem::path& path) {
  Handle file(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT), H5Fclose);
  const ResultDirectory& directory = opened.directory;
  attachRemark(file, opened.remark);
  for (const ResultFile* each : binaryFiles(directory)) {
    writeValues(file, directory.open(*each), opened.remark);
  }
  for (const ResultFile& each : results::kResultFiles) {
    if (each.layout == Layout::text && directory.has(each)) {
      writeText(file, each, directory.text(each), opened.remark);
    }
  }
  if (names) {
    writeNames(file, *names);
  }
  file.close();
}

}  // namespace

void exportHdf5(const OpenedResults& opened, const Names& names,
                const std::filesystem::path& output) {
  WholeFile target(output);
  target.close();
  workApart([&] {
    // The library would write once more what it could not, when the program ends, and crash.
    H5dont_atexit();
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);  // failures are told by exceptions
    try {
      writeAll(opened, names, target.temporary());
    } catch (const Hdf5Failure&) {
      target.fail();
    }
  });
  target.finish();
}

}  // namespace verenwick::host
