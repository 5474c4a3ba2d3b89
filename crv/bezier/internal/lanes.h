// Two doubles computed side by side, for inner loops that compilers do not vectorise by themselves.
// Each lane has the same bits as a computation with single doubles.
#pragma once

#include "crv/foundation/tolerance.h"

namespace crv::internal {

#if defined(__GNUC__)  // gcc and clang: one instruction for both lanes

using Lanes = double __attribute__((vector_size(16)));

/// The result of a comparison: non-zero in each lane where it is true.
using LaneMask = decltype(Lanes{} < Lanes{});

inline Lanes minOf(Lanes a, Lanes b) { return b < a ? b : a; }
inline Lanes maxOf(Lanes a, Lanes b) { return a < b ? b : a; }

#else

template <class T>
struct TwoOf {
  T v[2];
  T operator[](int i) const { return v[i]; }
};
using Lanes = TwoOf<double>;
using LaneMask = TwoOf<bool>;

inline Lanes operator-(Lanes a, Lanes b) { return {a[0] - b[0], a[1] - b[1]}; }
inline Lanes operator+(Lanes a, Lanes b) { return {a[0] + b[0], a[1] + b[1]}; }
inline Lanes operator*(Lanes a, Lanes b) { return {a[0] * b[0], a[1] * b[1]}; }
inline LaneMask operator<(Lanes a, Lanes b) { return {a[0] < b[0], a[1] < b[1]}; }
inline LaneMask operator>(Lanes a, Lanes b) { return b < a; }
inline LaneMask operator&(LaneMask a, LaneMask b) { return {a[0] && b[0], a[1] && b[1]}; }
inline LaneMask operator|(LaneMask a, LaneMask b) { return {a[0] || b[0], a[1] || b[1]}; }
inline Lanes minOf(Lanes a, Lanes b) { return {::min(a[0], b[0]), ::min(a[1], b[1])}; }
inline Lanes maxOf(Lanes a, Lanes b) { return {::max(a[0], b[0]), ::max(a[1], b[1])}; }

#endif

inline Lanes inBothLanes(double x) { return Lanes{x, x}; }

inline bool holdsInAny(LaneMask m) { return (m[0] | m[1]) != 0; }

}  // namespace crv::internal
