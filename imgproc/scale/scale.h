// Reference implementations: scaling and pyramids.
#pragma once

#include <cstdint>

#include "frame/registry.h"
