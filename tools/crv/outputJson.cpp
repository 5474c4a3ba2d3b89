#include "tools/crv/output.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(Point const& p) { return {p.xval(), p.yval()}; }

Json jsonOf(Points const& points) {
  Json list = Json::array();
  for (Point const& p : points) list.push_back(jsonOf(p));
  return list;
}

Json jsonOf(Curve const& curve) {
  Json segments = Json::array();
  for (crv::Segment const& s : curve) segments.push_back(jsonOf(Points{s[0], s[1], s[2], s[3]}));
  return {{"closed", curve.strictIsClosed() != 0}, {"segments", segments}};
}

template <class T>
Json listOf(std::vector<T> const& all) {
  Json list = Json::array();
  for (T const& one : all) list.push_back(jsonOf(one));
  return list;
}

Json jsonOf(Table const& table) {
  Json rows = Json::array();
  for (auto const& row : table.rows) {
    Json object = Json::object();
    for (std::size_t i = 0; i < row.size(); ++i) {
      std::visit([&](auto const& cell) { object[table.columns[i]] = cell; }, row[i]);
    }
    rows.push_back(object);
  }
  return rows;
}

}  // namespace

std::string jsonOf(Result const& result) {
  Json json = Json::object();
  if (result.table) {
    json[result.table->name] = jsonOf(*result.table);
  } else if (!result.polylines.empty()) {
    json["polylines"] = listOf(result.polylines);
  } else {
    json["curves"] = listOf(result.curves);
  }
  // Text that is not UTF-8 can come from a file's name only; it is written with marks in its place.
  return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace tool
