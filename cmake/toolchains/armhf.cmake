# 32-bit ARM (armv7-a, NEON, hard float) with Debian's arm-linux-gnueabihf
# cross compiler. Libraries come from the armhf multiarch packages
# (/usr/lib/arm-linux-gnueabihf, installed by tools/setup-armhf.sh); test
# binaries run under qemu-arm.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7-a)

set(PIXORA_ARMHF_TRIPLE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER ${PIXORA_ARMHF_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${PIXORA_ARMHF_TRIPLE}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${PIXORA_ARMHF_TRIPLE})

# NEON with fused multiply-add (Cortex-A7 and later). Highway's NEON target
# needs the FPU named explicitly on 32-bit ARM, and its half-float lane type
# (__fp16) exists in GCC only with an fp16 format chosen.
set(PIXORA_ARMHF_FLAGS "-march=armv7-a -mfpu=neon-vfpv4 -mfloat-abi=hard -mfp16-format=ieee")
set(CMAKE_C_FLAGS_INIT "${PIXORA_ARMHF_FLAGS}")
set(CMAKE_CXX_FLAGS_INIT "${PIXORA_ARMHF_FLAGS}")

# Headers and libraries: the cross libc under /usr/arm-linux-gnueabihf and the
# multiarch packages under /usr (their config files live in
# /usr/lib/arm-linux-gnueabihf/cmake). The host's own libraries are never
# candidates.
set(CMAKE_FIND_ROOT_PATH /usr/${PIXORA_ARMHF_TRIPLE} /)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_IGNORE_PATH
    /usr/lib/x86_64-linux-gnu /lib/x86_64-linux-gnu /usr/include/x86_64-linux-gnu
    /usr/lib/x86_64-linux-gnu/cmake)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/${PIXORA_ARMHF_TRIPLE}/pkgconfig:/usr/share/pkgconfig)

# ctest and gtest_discover_tests run the test binaries through the emulator.
# The loader and libc come from the armhf multiarch libc6 (a dependency of
# libhwy1:armhf) under the real root, "-L /". The cross libc under
# /usr/arm-linux-gnueabihf is only for linking: its loader is a different
# build from the multiarch libc.so.6 the binaries then load, and that mix
# crashes in fork() (death tests).
find_program(PIXORA_QEMU_ARM NAMES qemu-arm qemu-arm-static REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${PIXORA_QEMU_ARM} -L /)
