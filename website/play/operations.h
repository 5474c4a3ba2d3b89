// The operations of the page, in the order in which it numbers them.
#pragma once

#include "website/play/numbers.h"

namespace play {

/// The text of an SVG path: where reading ended, or -1, and why; then the curves.
void path(Input& in, Output& out);
/// A stroke fitted with a stated accuracy.
void fit(Input& in, Output& out);
/// A stroke fitted by the plain rooms.
void plainFit(Input& in, Output& out);
/// How far the samples of a stroke lie from a curve at worst, and which one.
void distanceOfSamples(Input& in, Output& out);
/// The parallels on both sides of a curve.
void offset(Input& in, Output& out);
/// The vertices of both polylines of a curve.
void flatten(Input& in, Output& out);
/// Where two curves meet.
void contacts(Input& in, Output& out);
/// The nearest place of a curve, by both searches.
void nearest(Input& in, Output& out);
/// Even steps along a curve.
void walk(Input& in, Output& out);
/// A stretch of a curve, and where marks lie on it.
void copy(Input& in, Output& out);
/// The pieces of a curve, and where marks lie on them.
void cut(Input& in, Output& out);
/// A curve run the other way, and where marks lie on it.
void reverse(Input& in, Output& out);
/// Two areas made one.
void weld(Input& in, Output& out);
/// The points at positions of a curve, and the directions there.
void places(Input& in, Output& out);
/// The hash of an operation's answers to random questions: in, the operation and how many
/// questions; out, the upper and the lower half of the hash.
void bits(Input& in, Output& out);

using Operation = void (*)(Input&, Output&);

constexpr Operation kOperations[] = {
    path, fit,  plainFit, distanceOfSamples, offset, flatten, contacts, nearest,
    walk, copy, cut,      reverse,           weld,   places,  bits};

}  // namespace play
