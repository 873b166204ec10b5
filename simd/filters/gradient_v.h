// Vector (kind 1) implementations of the linear filters: Sobel magnitude, Sobel derivatives and image gradients.
#pragma once

#include "imgproc/filters/gradient.h"
