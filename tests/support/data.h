// For tests that read tables: see cases.h and expect.h.
#pragma once

#include "tests/support/expect.h"
