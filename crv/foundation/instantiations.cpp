// Compiles the foundation's templates once, for double.
#include "crv/foundation/Gx2DMatrix.h"
#include "crv/foundation/GxCoord.h"
#include "crv/foundation/GxList.h"
#include "crv/foundation/GxVector.h"

template class GxVector<double>;
template class GxCoord<double>;
template class GxMatrix<double>;
template class Gx2DMatrix<double>;
template class GxList<double>;
template class GxList<GxCoord<double>>;
