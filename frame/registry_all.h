// Every family's row registrations. Included by the table builder only
// (and by the entry points of each family, through the family's own header).
#pragma once

#include "imgproc/filters/filters.h"
#include "simd/filters/filters_v.h"
