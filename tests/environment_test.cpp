// Every test process starts with the tables built for this machine.
#include <gtest/gtest.h>

#include "pixora/frame.h"

namespace {

class PixoraEnvironment : public ::testing::Environment {
public:
    void SetUp() override { pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE); }
};

[[maybe_unused]] ::testing::Environment* const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new PixoraEnvironment);

}  // namespace
