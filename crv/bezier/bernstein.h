// Bernstein weights, and the binomial coefficients and factorials from which they are computed.
#pragma once

#include "crv/export.h"

/// ln(n!), to five digits or better; 0.0 for n <= 1. Method: the log-gamma function by Lanczos's
/// series with shortened coefficients.
CRV_API double factln(int n);

/// The binomial coefficient C(n, k) as a whole number. It is exact up to n = 22, and infinite where
/// it exceeds the range of double, which begins at n = 1030. Outside 0 <= k <= n the result is
/// meaningless.
CRV_API double bico(int n, int k);

/// The Bernstein weight B(i, n) at any t, with 0^0 = 1. For i outside 0..n the result is
/// meaningless, and NaN at some t.
CRV_API double blendValue(double t, int i, unsigned short n);

/// Returns a new table of n + 1 rows of the four cubic weights, at 0, 1/n, 2/n, ..., 1, where each
/// t is the sum of the one before it and 1/n; for n = 0 it has one row, at 0. The caller deletes
/// each row and then the array of rows with delete[]. Returns null when memory runs out; the rows
/// made until then are not freed.
CRV_API double** initBlendArray(unsigned short n);
