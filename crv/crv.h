// Everything that callers may use, in one include. No file of the library includes it.
#pragma once

#include "crv/bezier/GxBezier.h"
#include "crv/bezier/GxBezierPolylineCondition.h"
#include "crv/bezier/bernstein.h"
#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/curve/GxBezierCurvePositionConstructor.h"
#include "crv/export.h"
#include "crv/foundation/Gx2DMatrix.h"
#include "crv/foundation/Gx2DRotate.h"
#include "crv/foundation/GxCoord.h"
#include "crv/foundation/GxList.h"
#include "crv/foundation/GxRefCount.h"
#include "crv/foundation/GxVector.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/solvers.h"
#include "crv/foundation/tolerance.h"
