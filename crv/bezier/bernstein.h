// Bernstein weights and what they are made of.
#pragma once

#include "crv/export.h"

/// ln(n!); 0.0 for n <= 1. Method: log-gamma by Lanczos's series with shortened coefficients, good
/// to five digits, which the rounding in bico absorbs.
CRV_API double factln(int n);

/// The binomial coefficient C(n, k), 0 <= k <= n, rounded to a whole number.
CRV_API double bico(int n, int k);

/// The Bernstein weight B(i, n) at t, any t; 0 to the power 0 is 1.
CRV_API double blendValue(double t, int i, unsigned short n);

/// A new table of n + 1 rows of the four cubic weights, at 0, 1/n, 2/n, ..., 1 by accumulated
/// steps; one row, at 0, for n = 0. Rows and the array of rows are made with new[] and are the
/// caller's to delete[]. Null when memory runs out; rows made until then are not freed.
CRV_API double** initBlendArray(unsigned short n);
