// The faces of an arrangement and their winding numbers.
#include "crv/accurate/internal/windings.h"

#include "crv/accurate/internal/disjointSets.h"
#include "crv/accurate/internal/edgeRays.h"
#include "crv/accurate/internal/segmentArea.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/curve/internal/boxTree.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace crv::internal {

namespace {

// In units of the resolution: faces narrower than this on average may be artefacts of moved ends.
constexpr double kThin = 16.0;

// The number of edges of a face beside which rays start to confirm its winding number.
constexpr std::size_t kMostAsked = 8;

/// A connected set of edges.
struct Component {
  std::size_t beginEdge = 0, endEdge = 0;  // among the edges in order of their components
  std::size_t outerFace = kNone;
  double outerArea = 0.0;
  long nodes = 0, edges = 0, faces = 0;
  std::optional<EdgeRays> rays;  // made when first used
};

class Faces {
 public:
  Faces(Cutting& cutting, Turns const& turns, double resolution)
      : cutting_(cutting), turns_(turns), resolution_(resolution) {}

  bool find();

 private:
  Edge const& edgeAt(std::size_t halfEdge) const { return cutting_.edges[edgeOf(halfEdge)]; }
  Cubic const& shapeOf(std::size_t stretch) const { return cutting_.stretches[stretch].c; }
  std::size_t endOf(std::size_t halfEdge) const { return startOf(cutting_.edges, twin(halfEdge)); }
  std::size_t componentOf(std::size_t halfEdge) const {
    return componentOfNode_[startOf(cutting_.edges, halfEdge)];
  }
  void findComponents();
  void walkFaces();
  double twiceAreaOverChordOf(Edge const& edge) const;
  double walkFace(std::size_t start, std::size_t face);
  void spread(std::size_t component, Counts const& outside);
  Box boxOf(Component const& component) const;
  EdgeRays raysAmong(std::size_t beginEdge, std::size_t endEdge) const;
  Counts windingOf(Component& component, Point const& p) const;
  std::vector<Counts> outerWindings();
  void setWindingsByFaces();
  void setWindingsByRays();
  double lengthOf(Edge const& edge) const;
  bool isConfirmed(std::size_t face, EdgeRays const& all);
  bool areConfirmed();

  Cutting& cutting_;
  Turns const& turns_;
  double const resolution_;
  std::vector<std::size_t> componentOfNode_;
  std::vector<Component> components_;
  std::vector<std::size_t> edgesByComponent_;
  std::vector<double> twiceAreas_;   // by edge: between the edge and its chord
  std::vector<std::size_t> faceOf_;  // by half-edge: the face on its left
  std::vector<std::size_t> faceAt_;  // by face: one of its half-edges
  std::vector<Counts> windings_;     // by face
  std::vector<char> isKnown_;        // whether they are, by face
};

void Faces::findComponents() {
  DisjointSets sets(cutting_.nodes.size());
  for (Edge const& e : cutting_.edges) {
    if (e.first != kNone) sets.unite(e.from, e.to);
  }
  componentOfNode_.assign(cutting_.nodes.size(), kNone);
  for (std::size_t node = 0; node < cutting_.nodes.size(); ++node) {
    bool const isUsed = turns_.begins[node] < turns_.begins[node + 1];
    if (!isUsed) continue;
    std::size_t const root = sets.find(node);
    if (root == node) {
      componentOfNode_[node] = components_.size();
      components_.emplace_back();
    }
    componentOfNode_[node] = componentOfNode_[root];
    ++components_[componentOfNode_[node]].nodes;
  }
  for (Edge const& e : cutting_.edges) {
    if (e.first != kNone) ++components_[componentOfNode_[e.from]].edges;
  }
  std::size_t total = 0;
  for (Component& c : components_) {
    c.beginEdge = c.endEdge = total;
    total += static_cast<std::size_t>(c.edges);
  }
  edgesByComponent_.resize(total);
  for (std::size_t i = 0; i < cutting_.edges.size(); ++i) {
    Edge const& e = cutting_.edges[i];
    if (e.first != kNone) edgesByComponent_[components_[componentOfNode_[e.from]].endEdge++] = i;
  }
}

/// Twice the signed area between an edge and the chord of its ends.
double Faces::twiceAreaOverChordOf(Edge const& edge) const {
  if (edge.first == kNone) return 0.0;
  Point const origin = cutting_.nodes[edge.from];
  double twiceArea = 0.0;
  for (std::size_t s = edge.first; s <= edge.last; ++s) {
    Cubic const& c = shapeOf(s);
    twiceArea += cross(c.p[0] - origin, c.p[3] - origin) + twiceAreaOverChord(c);
  }
  return twiceArea;
}

/// Assigns the half-edges around a face to it, and returns twice its signed area.
double Faces::walkFace(std::size_t start, std::size_t face) {
  Point const origin = cutting_.nodes[startOf(cutting_.edges, start)];
  double twiceArea = 0.0;
  std::size_t h = start;
  do {
    faceOf_[h] = face;
    Edge const& edge = edgeAt(h);
    Point const from = cutting_.nodes[edge.from] - origin, to = cutting_.nodes[edge.to] - origin;
    double const along = cross(from, to) + twiceAreas_[edgeOf(h)];
    twiceArea += isAlong(h) ? along : -along;
    h = turns_.next(h, isAlong(h) ? edge.to : edge.from);
  } while (h != start);
  return twiceArea;
}

/// Finds all faces. The outer face of a component is the only one whose signed area is negative,
/// because its boundary runs clockwise.
void Faces::walkFaces() {
  twiceAreas_.reserve(cutting_.edges.size());
  for (Edge const& e : cutting_.edges) twiceAreas_.push_back(twiceAreaOverChordOf(e));
  faceOf_.assign(2 * cutting_.edges.size(), kNone);
  for (std::size_t const h : turns_.halfEdges) {
    if (faceOf_[h] != kNone) continue;
    std::size_t const face = faceAt_.size();
    double const area = walkFace(h, face);
    faceAt_.push_back(h);
    Component& component = components_[componentOf(h)];
    ++component.faces;
    if (component.outerFace != kNone && area >= component.outerArea) continue;
    component.outerFace = face;
    component.outerArea = area;
  }
}

/// Computes the winding numbers of all faces of a component, starting from the outer face.
void Faces::spread(std::size_t component, Counts const& outside) {
  std::vector<std::size_t> waiting = {components_[component].outerFace};
  windings_[waiting[0]] = outside;
  isKnown_[waiting[0]] = 1;
  while (!waiting.empty()) {
    std::size_t const face = waiting.back();
    waiting.pop_back();
    std::size_t const start = faceAt_[face];
    std::size_t h = start;
    do {
      std::size_t const beyond = faceOf_[twin(h)];
      if (!isKnown_[beyond]) {
        isKnown_[beyond] = 1;
        windings_[beyond] = sum(windings_[face], edgeAt(h).count, isAlong(h) ? -1 : 1);
        waiting.push_back(beyond);
      }
      h = turns_.next(h, endOf(h));
    } while (h != start);
  }
}

/// The stretches of some of the edges, which are in order of their components.
EdgeRays Faces::raysAmong(std::size_t beginEdge, std::size_t endEdge) const {
  std::vector<std::size_t> stretches;
  for (std::size_t i = beginEdge; i < endEdge; ++i) {
    Edge const& edge = cutting_.edges[edgesByComponent_[i]];
    for (std::size_t s = edge.first; s <= edge.last; ++s) stretches.push_back(s);
  }
  return {cutting_, std::move(stretches)};
}

Counts Faces::windingOf(Component& component, Point const& p) const {
  if (!component.rays) component.rays.emplace(raysAmong(component.beginEdge, component.endEdge));
  return component.rays->windingOf(p);
}

Box Faces::boxOf(Component const& component) const {
  Box box = shapeOf(cutting_.edges[edgesByComponent_[component.beginEdge]].first).hull();
  for (std::size_t i = component.beginEdge; i < component.endEdge; ++i) {
    Edge const& edge = cutting_.edges[edgesByComponent_[i]];
    for (std::size_t s = edge.first; s <= edge.last; ++s) box = united(box, shapeOf(s).hull());
  }
  return box;
}

/// For each component, the winding number of all other components around it. Only components whose
/// box contains the start of its first edge can contribute.
std::vector<Counts> Faces::outerWindings() {
  std::vector<Counts> windings(components_.size(), Counts{0, 0});
  if (components_.size() == 1) return windings;
  std::vector<Box> boxes;
  for (Component const& c : components_) boxes.push_back(boxOf(c));
  BoxTree const tree(std::move(boxes));
  for (std::size_t i = 0; i < components_.size(); ++i) {
    Point const p =
        cutting_.nodes[cutting_.edges[edgesByComponent_[components_[i].beginEdge]].from];
    tree.visit(
        [&](Box const& box) {
          return overlap(box, {p.x, p.y, p.x, p.y});
        },
        [&](std::size_t k) {
          if (k != i) windings[i] = sum(windings[i], windingOf(components_[k], p), 1);
        });
  }
  return windings;
}

/// Sets the winding numbers of edges to those of the faces.
void Faces::setWindingsByFaces() {
  windings_.assign(faceAt_.size(), Counts{0, 0});
  isKnown_.assign(faceAt_.size(), 0);
  std::vector<Counts> const outside = outerWindings();
  for (std::size_t i = 0; i < components_.size(); ++i) spread(i, outside[i]);
  for (std::size_t i = 0; i < cutting_.edges.size(); ++i) {
    Edge& edge = cutting_.edges[i];
    if (edge.first == kNone) continue;
    edge.left = windings_[faceOf_[2 * i]];
    edge.right = windings_[faceOf_[2 * i + 1]];
  }
}

/// Sets the winding numbers of each edge by rays from either side of it.
void Faces::setWindingsByRays() {
  EdgeRays const all = raysAmong(0, edgesByComponent_.size());
  for (std::size_t const i : edgesByComponent_) {
    Edge& edge = cutting_.edges[i];
    std::optional<Sides> const sides = all.sidesOf(edge);
    if (!sides) continue;
    edge.left = sides->left;
    edge.right = sides->right;
  }
}

double Faces::lengthOf(Edge const& edge) const {
  double length = 0.0;
  for (std::size_t s = edge.first; s <= edge.last; ++s) {
    Cubic const& c = shapeOf(s);
    for (int i = 0; i < 3; ++i) length += distance(c.p[i], c.p[i + 1]);
  }
  return length;
}

/// Whether rays from the longest edges of a face confirm its winding number. A face that is hardly
/// wider than the resolution counts as confirmed.
bool Faces::isConfirmed(std::size_t face, EdgeRays const& all) {
  struct Side {
    double length;
    std::size_t halfEdge;
  };
  std::vector<Side> sides;
  double total = 0.0;
  std::size_t h = faceAt_[face];
  do {
    sides.push_back({lengthOf(edgeAt(h)), h});
    total += sides.back().length;
    h = turns_.next(h, endOf(h));
  } while (h != faceAt_[face]);
  double const twiceArea = walkFace(h, face);
  if (std::fabs(twiceArea) <= kThin * resolution_ * total) return true;
  if (twiceArea < 0.0 && face != components_[componentOf(h)].outerFace) return false;
  auto const lastAsked = sides.begin() + std::ptrdiff_t(std::min(sides.size(), kMostAsked));
  std::partial_sort(sides.begin(), lastAsked, sides.end(), [](Side const& a, Side const& b) {
    return a.length != b.length ? a.length > b.length : a.halfEdge < b.halfEdge;
  });
  double balance = 0.0;
  for (auto side = sides.begin(); side != lastAsked; ++side) {
    std::optional<Sides> const found = all.sidesOf(edgeAt(side->halfEdge));
    if (!found) continue;
    Counts const& winding = isAlong(side->halfEdge) ? found->left : found->right;
    balance += winding == windings_[face] ? side->length : -side->length;
  }
  return balance >= 0.0;
}

/// Checks by rays the winding numbers of the faces around nodes at which the order of the edges may
/// be wrong. Returns whether all are right.
bool Faces::areConfirmed() {
  if (turns_.doubtful.empty()) return true;
  EdgeRays const all = raysAmong(0, edgesByComponent_.size());
  std::vector<char> isAsked(faceAt_.size(), 0);
  for (std::size_t const node : turns_.doubtful) {
    for (std::size_t i = turns_.begins[node]; i < turns_.begins[node + 1]; ++i) {
      std::size_t const face = faceOf_[turns_.halfEdges[i]];
      if (!isAsked[face] && !isConfirmed(face, all)) return false;
      isAsked[face] = 1;
    }
  }
  return true;
}

bool Faces::find() {
  findComponents();
  walkFaces();
  // A component is planar exactly if Euler's formula holds.
  bool const isPlane = std::all_of(components_.begin(), components_.end(), [](Component const& c) {
    return c.nodes - c.edges + c.faces == 2;
  });
  if (isPlane) setWindingsByFaces();
  if (!isPlane || !areConfirmed()) setWindingsByRays();
  return isPlane;
}

}  // namespace

bool findWindings(Cutting& cutting, Turns const& turns, double resolution) {
  return Faces(cutting, turns, resolution).find();
}

}  // namespace crv::internal
