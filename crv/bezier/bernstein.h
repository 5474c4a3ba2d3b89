// Bernstein weights and what they are made of.
#pragma once

#include "crv/export.h"

/// ln(n!), to five digits or better; 0.0 for n <= 1. Method: log-gamma by Lanczos's series with
/// shortened coefficients.
CRV_API double factln(int n);

/// The binomial coefficient C(n, k), a whole number: exact up to n = 22, infinite where it is
/// beyond the range of double, from n = 1030 on. Outside 0 <= k <= n a number that means nothing.
CRV_API double bico(int n, int k);

/// The Bernstein weight B(i, n) at any t, where 0 to the power 0 is 1. For i outside 0 .. n a
/// number that means nothing, NaN at some t.
CRV_API double blendValue(double t, int i, unsigned short n);

/// A new table of n + 1 rows of the four cubic weights, at 0, 1/n, 2/n, ..., 1 by accumulated
/// steps; one row, at 0, for n = 0. Rows and the array of rows are made with new[] and are the
/// caller's to delete[]. Null when memory runs out; rows made until then are not freed.
CRV_API double** initBlendArray(unsigned short n);
