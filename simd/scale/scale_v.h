// Vector (kind 1) implementations: scaling and pyramids.
#pragma once

#include "imgproc/scale/scale.h"
