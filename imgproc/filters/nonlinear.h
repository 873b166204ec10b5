// Reference implementations: non-linear filters: median, bilateral, morphology and thresholds.
#pragma once

#include <cstdint>

#include "frame/registry.h"
