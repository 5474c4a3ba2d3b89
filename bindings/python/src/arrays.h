// What Python hands in and gets: points and numbers as arrays, results as records, failures as
// exceptions.
#pragma once

#include "crv/crv.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

namespace py = pybind11;

namespace python {

using crv::Curve;
using crv::Point;
using crv::Position;
using crv::Segment;
using crv::Vector;
using Points = std::vector<Point>;
using Numbers = std::vector<double>;
using Array = py::array_t<double, py::array::c_style | py::array::forcecast>;

/// Any sequence as an array of doubles; an array without elements where it is none.
inline Array arrayOf(py::handle source) {
  Array array = Array::ensure(source);
  if (!array) PyErr_Clear();
  return array;
}

/// An operation that refused: crv.Error in Python.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Throws for the code of an operation that failed.
inline void require(int code, char const* why) {
  if (code == crv::Outcome::failed) throw Failure(why);
}

/// The value, or None.
template <class T>
std::optional<T> onlyIf(bool found, T const& value) {
  return found ? std::optional<T>(value) : std::nullopt;
}

/// Names and describes the fields of a result, which are read only, and shows them.
template <class T>
class Record : public py::class_<T> {
 public:
  using py::class_<T>::class_;

  template <class Member>
  Record& field(char const* name, Member T::*member, char const* doc) {
    this->def_readonly(name, member, doc);
    names_.emplace_back(name);
    return *this;
  }

  template <class Getter>
  Record& value(char const* name, Getter const& getter, char const* doc) {
    this->def_property_readonly(name, getter, doc);
    names_.emplace_back(name);
    return *this;
  }

  void shown() {
    this->def("__repr__", [names = names_](py::object const& self) {
      std::string text = py::str(py::type::of(self).attr("__name__"));
      for (std::size_t i = 0; i < names.size(); ++i) {
        text += (i == 0 ? "(" : ", ") + names[i] + "=" +
                std::string(py::repr(self.attr(names[i].c_str())));
      }
      return text + ")";
    });
  }

 private:
  std::vector<std::string> names_;
};

// ---- Each adds what its file binds --------------------------------------------------------------
void bindFoundation(py::module_& m);
void bindSegment(py::module_& m);
void bindPosition(py::module_& m);
void bindCurve(py::module_& m);
void bindMaps(py::module_& m);
void bindPredicates(py::module_& m);
void bindMeasures(py::module_& m);
void bindContacts(py::module_& m);
void bindEdits(py::module_& m);
void bindRegions(py::module_& m);
void bindSvg(py::module_& m);

}  // namespace python

// ---- Points, vectors and lists of them and of numbers, as arrays --------------------------------

namespace pybind11::detail {

/// A pair of numbers.
template <class Pair>
struct PairCaster {
  bool load(handle source, bool) {
    python::Array const array = python::arrayOf(source);
    if (!array || array.ndim() != 1 || array.shape(0) != 2) return false;
    value = Pair(array.at(0), array.at(1));
    return true;
  }
  static handle cast(Pair const& pair, return_value_policy, handle) {
    python::Array array(2);
    array.mutable_at(0) = pair.xval(), array.mutable_at(1) = pair.yval();
    return array.release();
  }
  PYBIND11_TYPE_CASTER(Pair, const_name("Point"));
};

template <>
struct type_caster<GxCoord<double>> : PairCaster<GxCoord<double>> {};
template <>
struct type_caster<GxVector<double>> : PairCaster<GxVector<double>> {};

/// Many pairs of numbers.
template <class Pair>
struct PairsCaster {
  bool load(handle source, bool) {
    python::Array const array = python::arrayOf(source);
    bool const isEmpty = array && array.size() == 0;
    if (!array || (!isEmpty && (array.ndim() != 2 || array.shape(1) != 2))) return false;
    value.clear();
    for (ssize_t i = 0; i < array.size(); i += 2) {
      value.emplace_back(array.data()[i], array.data()[i + 1]);
    }
    return true;
  }
  static handle cast(std::vector<Pair> const& pairs, return_value_policy, handle) {
    python::Array array({pairs.size(), std::size_t{2}});
    double* to = array.mutable_data();
    for (Pair const& pair : pairs) *to++ = pair.xval(), *to++ = pair.yval();
    return array.release();
  }
  PYBIND11_TYPE_CASTER(std::vector<Pair>, const_name("Points"));
};

template <>
struct type_caster<std::vector<GxCoord<double>>> : PairsCaster<GxCoord<double>> {};
template <>
struct type_caster<std::vector<GxVector<double>>> : PairsCaster<GxVector<double>> {};

template <>
struct type_caster<std::vector<double>> {
  bool load(handle source, bool) {
    python::Array const array = python::arrayOf(source);
    if (!array || array.ndim() != 1) return false;
    value.assign(array.data(), array.data() + array.size());
    return true;
  }
  static handle cast(std::vector<double> const& numbers, return_value_policy, handle) {
    return python::Array(static_cast<ssize_t>(numbers.size()), numbers.data()).release();
  }
  PYBIND11_TYPE_CASTER(std::vector<double>, const_name("Numbers"));
};

}  // namespace pybind11::detail
