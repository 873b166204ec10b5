// Reference implementations of the linear filters: Sobel magnitude, Sobel derivatives and image gradients.
#pragma once

#include <cstdint>

#include "frame/registry.h"
