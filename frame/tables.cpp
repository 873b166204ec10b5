// The function and implementation tables and the fillers that (re)build them.
#include "frame/tables.h"

#include "frame/mode_lists.h"
#include "frame/registry.h"
#include "frame/registry_all.h"
#include "frame/state.h"
#include "platform/platform.h"

namespace {

template <class P> constexpr uintptr_t addr(P p) { return reinterpret_cast<uintptr_t>(p); }

// Per-row implementation addresses, statically initialised from the registry.
#define PXR_ROW_ID(id, name) addr(pxr::RowRef<id>::impl),
const uintptr_t kRef[] = {
#include "frame/rows.def"
};
#undef PXR_ROW_ID
#define PXR_ROW_ID(id, name) addr(pxr::RowVec<id>::impl),
const uintptr_t kVec[] = {
#include "frame/rows.def"
};
#undef PXR_ROW_ID
#define PXR_ROW_ID(id, name) addr(pxr::RowGpu<id>::impl),
const uintptr_t kGpu[] = {
#include "frame/rows.def"
};
#undef PXR_ROW_ID
#define PXR_ROW_ID(id, name) {addr(pxr::RowDsp<id>::k), addr(pxr::RowDsp<id>::ka), \
                              addr(pxr::RowDsp<id>::kc), addr(pxr::RowDsp<id>::km)},
const uintptr_t kDsp[][4] = {
#include "frame/rows.def"
};
#undef PXR_ROW_ID
#define PXR_IROW_ID(id, name) addr(pxr::IRowRef<id>::impl),
const uintptr_t kIRef[] = {
#include "frame/internal_rows.def"
};
#undef PXR_IROW_ID
#define PXR_IROW_ID(id, name) addr(pxr::IRowVec<id>::impl),
const uintptr_t kIVec[] = {
#include "frame/internal_rows.def"
};
#undef PXR_IROW_ID
#define PXR_IROW_ID(id, name) {addr(pxr::IRowDsp<id>::k), addr(pxr::IRowDsp<id>::ka), \
                               addr(pxr::IRowDsp<id>::kc), addr(pxr::IRowDsp<id>::km)},
const uintptr_t kIDsp[][4] = {
#include "frame/internal_rows.def"
};
#undef PXR_IROW_ID

static_assert(sizeof kRef / sizeof kRef[0] == pxr::kNumFunctions);
static_assert(sizeof kIRef / sizeof kIRef[0] == pxr::kNumInternal);

PXR_FUNC_MANAGER gManager;
PXR_FUNC_MANAGER* gMaster = nullptr;

uint32_t functionBound() { return gMaster ? gMaster->numFunctions : pxr::kNumFunctions; }
uint32_t internalBound() { return gMaster ? gMaster->numInternalFunctions : pxr::kNumInternal; }

// Writes column `kind` from `src`; with onlyPresent, rows without an
// implementation keep what they hold. Stops at the descriptor's bounds.
void fillColumn(uintptr_t* table, uint32_t bound, const uintptr_t* src, uint32_t rows,
                uint32_t kind, bool onlyPresent, size_t srcStride = 1, size_t srcOffset = 0) {
    for (uint32_t id = 0; id < rows && id < bound; ++id) {
        uintptr_t fn = src[id * srcStride + srcOffset];
        if (fn || !onlyPresent) table[id * pxr::kNumKinds + kind] = fn;
    }
}

int checkManager(const PXR_FUNC_MANAGER* m, uint32_t kind) {
    if (!m) return pxr::kNoManager;
    if (!m->funcTable || !m->implTable) return pxr::kNoTable;
    if (m->numKinds <= kind) return pxr::kTooFewKinds;
    return 0;
}

// Fills one DSP domain's column (slot 0 K, 1 Ka, 2 Kc, 3 Km) of both tables.
int fillDsp(PXR_FUNC_MANAGER* m, uint32_t kind, size_t slot) {
    if (int rc = checkManager(m, kind)) return rc;
    fillColumn(m->funcTable, m->numFunctions, &kDsp[0][0], pxr::kNumFunctions, kind, true, 4, slot);
    if (m->internalFuncTable)
        fillColumn(m->internalFuncTable, m->numInternalFunctions, &kIDsp[0][0], pxr::kNumInternal,
                   kind, true, 4, slot);
    return 0;
}

// Chooses `kind` for every row whose entry in `present` is non-zero.
void choose(PXR_FUNC_MANAGER* m, const uintptr_t* present, size_t stride, size_t offset,
            const uintptr_t* ipresent, uint32_t kind) {
    for (uint32_t id = 0; id < pxr::kNumFunctions && id < m->numFunctions; ++id)
        if (present[id * stride + offset]) m->implTable[id] = kind;
    if (!ipresent || !m->internalImplTable) return;
    for (uint32_t id = 0; id < pxr::kNumInternal && id < m->numInternalFunctions; ++id)
        if (ipresent[id * stride + offset]) m->internalImplTable[id] = kind;
}

template <size_t N>
void chooseList(PXR_FUNC_MANAGER* m, const uint32_t (&ids)[N], uint32_t kind) {
    for (uint32_t id : ids) {
        if (id >= m->numFunctions) break;
        m->implTable[id] = kind;
    }
}

void chooseInternalDsp(PXR_FUNC_MANAGER* m, uint32_t kind) {
    if (!m->internalImplTable) return;
    for (uint32_t id : pxr::modes::kInternalDsp)
        if (id < m->numInternalFunctions) m->internalImplTable[id] = kind;
}

int checkModeManager(const PXR_FUNC_MANAGER* m) {
    if (!m) return pxr::kNoManager;
    if (!m->funcTable || !m->implTable) return pxr::kNoTable;
    if (m->numKinds < 6) return pxr::kTooFewKinds;
    return 0;
}

}  // namespace

extern "C" {

// Static content: the reference implementation in columns 0..3.
#define PXR_ROW_ID(id, name)                                                        \
    addr(pxr::RowRef<id>::impl), addr(pxr::RowRef<id>::impl), addr(pxr::RowRef<id>::impl), \
        addr(pxr::RowRef<id>::impl), 0, 0, 0,
PXR_API uintptr_t pxrFuncTable[PIXORA_NUM_FUNCTIONS * PIXORA_NUM_KINDS] = {
#include "frame/rows.def"
};
#undef PXR_ROW_ID
#define PXR_IROW_ID(id, name)                                                           \
    addr(pxr::IRowRef<id>::impl), addr(pxr::IRowRef<id>::impl), addr(pxr::IRowRef<id>::impl), \
        addr(pxr::IRowRef<id>::impl), 0, 0, 0,
PXR_API uintptr_t pxrInternalFuncTable[PIXORA_NUM_INTERNAL_FUNCTIONS * PIXORA_NUM_KINDS] = {
#include "frame/internal_rows.def"
};
#undef PXR_IROW_ID
PXR_API uint32_t pxrImplTable[PIXORA_NUM_FUNCTIONS] = {};
PXR_API uint32_t pxrInternalImplTable[PIXORA_NUM_INTERNAL_FUNCTIONS] = {};

#define PXR_REMOTE(name, row) PXR_API uintptr_t name = 0;
#include "frame/remote_pointers.def"
#undef PXR_REMOTE

PXR_API int pxrInitializeMasterFuncManager(PXR_FUNC_MANAGER* manager) {
    if (!manager || !manager->funcTable || !manager->implTable || !manager->internalFuncTable ||
        !manager->internalImplTable)
        return 1;
    gMaster = manager;
    return 0;
}

int uCTable(uint32_t kind) {
    if (kind >= pxr::kNumKinds) return pxr::kTooFewKinds;
    fillColumn(pxrFuncTable, functionBound(), kRef, pxr::kNumFunctions, kind, false);
    fillColumn(pxrInternalFuncTable, internalBound(), kIRef, pxr::kNumInternal, kind, false);
    return 0;
}

int uVTable(uint32_t kind) {
    if (kind >= pxr::kNumKinds) return pxr::kTooFewKinds;
    fillColumn(pxrFuncTable, functionBound(), kVec, pxr::kNumFunctions, kind, true);
    fillColumn(pxrInternalFuncTable, internalBound(), kIVec, pxr::kNumInternal, kind, true);
    return 0;
}

int uGTable(PXR_FUNC_MANAGER* m, uint32_t kind) {
    if (int rc = checkManager(m, kind)) return rc;
    fillColumn(m->funcTable, m->numFunctions, kGpu, pxr::kNumFunctions, kind, true);
    return 0;
}

int uKTable(PXR_FUNC_MANAGER* m, uint32_t kind) { return fillDsp(m, kind, 0); }
int uKaTable(PXR_FUNC_MANAGER* m, uint32_t kind) { return fillDsp(m, kind, 1); }
int uKcTable(PXR_FUNC_MANAGER* m, uint32_t kind) { return fillDsp(m, kind, 2); }
int uKmTable(PXR_FUNC_MANAGER* m, uint32_t kind) { return fillDsp(m, kind, 3); }

int uVIndex(void) {
    PXR_FUNC_MANAGER* m = gMaster ? gMaster : &pxr::defaultManager();
    if (int rc = checkManager(m, PIXORA_KIND_SIMDX)) return rc;
    choose(m, kVec, 1, 0, kIVec, PIXORA_KIND_SIMDX);
    return 0;
}

int uKIndex(PXR_FUNC_MANAGER* m) {
    if (int rc = checkManager(m, PIXORA_KIND_KDSP)) return rc;
    choose(m, &kDsp[0][0], 4, 0, &kIDsp[0][0], PIXORA_KIND_KDSP);
    return 0;
}

int uGIndex(PXR_FUNC_MANAGER* m) {
    if (int rc = checkManager(m, PIXORA_KIND_GPU)) return rc;
    choose(m, kGpu, 1, 0, nullptr, PIXORA_KIND_GPU);
    return 0;
}

int uKacmIndex(PXR_FUNC_MANAGER* m, uint32_t kind) {
    if (int rc = checkManager(m, kind)) return rc;
    if (kind < PIXORA_KIND_ADSP) return pxr::kTooFewKinds;
    choose(m, &kDsp[0][0], 4, kind - PIXORA_KIND_ADSP + 1, &kIDsp[0][0], kind);
    return 0;
}

int uHWLowPowerModeTable(PXR_FUNC_MANAGER* m) {
    if (int rc = checkModeManager(m)) return rc;
    if (KDSP_initflag) {
        chooseList(m, pxr::modes::kLowPowerDsp, PIXORA_KIND_CDSP);
        chooseInternalDsp(m, PIXORA_KIND_CDSP);
    }
    return 0;
}

int uHWPerformanceModeTable(PXR_FUNC_MANAGER* m) {
    if (int rc = checkModeManager(m)) return rc;
    if (KDSP_initflag) {
        chooseList(m, pxr::modes::kPerformanceDsp, PIXORA_KIND_CDSP);
        chooseInternalDsp(m, PIXORA_KIND_CDSP);
    }
    if (GPU_initflag) chooseList(m, pxr::modes::kPerformanceGpu, PIXORA_KIND_GPU);
    return 0;
}

int uKCpuOffloadModeTable(PXR_FUNC_MANAGER* m) {
    if (int rc = checkModeManager(m)) return rc;
    if (KDSP_initflag) {
        chooseList(m, pxr::modes::kCpuOffloadDsp, PIXORA_KIND_CDSP);
        chooseInternalDsp(m, PIXORA_KIND_CDSP);
    }
    return 0;
}

void uCHelper(void) {
#define PXR_HELPER(ptr, ref, vec) ptr = ref;
#include "frame/helpers.def"
#undef PXR_HELPER
}

void uVHelper(void) {
#define PXR_HELPER(ptr, ref, vec) ptr = vec;
#include "frame/helpers.def"
#undef PXR_HELPER
}

void uRNull(void) {
#define PXR_REMOTE(name, row) name = 0;
#include "frame/remote_pointers.def"
#undef PXR_REMOTE
}

int pxrTableHWInit(uintptr_t* funcTable, uintptr_t* internalFuncTable, uint32_t dspPresent,
                   uint32_t gpuPresent) {
    using pxr::platform::log;
    if (!funcTable || !internalFuncTable) return 1;
    PXR_FUNC_MANAGER m = {1, pxrImplTable, functionBound(), funcTable, pxrInternalImplTable,
                          internalBound(), internalFuncTable, pxr::kNumKinds};
    int rc = 0;
    if (dspPresent) {
        switch (defaultDSP) {
            case 2:
                log(3, pxr::platform::kLibTag, "MDSP is available");
                rc += uKmTable(&m, PIXORA_KIND_MDSP);
                break;
            case 1:
                log(3, pxr::platform::kLibTag, "CDSP is available");
                rc += uKcTable(&m, PIXORA_KIND_CDSP);
                break;
            case 0:
                log(3, pxr::platform::kLibTag, "ADSP is available");
                rc += uKaTable(&m, PIXORA_KIND_ADSP);
                break;
            default:
                log(6, pxr::platform::kLibTag,
                    "defaultDSP flag is not set. Hence unable to set memory pointers for PIXORA "
                    "function");
        }
    }
    if (gpuPresent) {
        log(3, pxr::platform::kLibTag, "GPU is available");
        rc += uGTable(&m, PIXORA_KIND_GPU);
    }
    return rc;
}

}  // extern "C"

namespace pxr {

PXR_FUNC_MANAGER* masterManager() { return gMaster; }
PXR_FUNC_MANAGER& defaultManager() { return gManager; }

uintptr_t staticFuncEntry(uint32_t id, uint32_t kind) {
    return (id < kNumFunctions && kind < 4) ? kRef[id] : 0;
}

bool hasAccelerator(uint32_t id, uint32_t kind) {
    if (id >= kNumFunctions) return false;
    if (kind == PIXORA_KIND_GPU) return kGpu[id] != 0;
    if (kind == PIXORA_KIND_KDSP) return kDsp[id][0] != 0;
    if (kind >= PIXORA_KIND_ADSP && kind < kNumKinds) return kDsp[id][kind - PIXORA_KIND_ADSP + 1] != 0;
    return false;
}

RegistryCounts registryCounts() {
    RegistryCounts c{};
    for (uint32_t i = 0; i < kNumFunctions; ++i) {
        c.reference += kRef[i] != 0;
        c.vector += kVec[i] != 0;
        c.gpu += kGpu[i] != 0;
        c.dsp += (kDsp[i][0] | kDsp[i][1] | kDsp[i][2] | kDsp[i][3]) != 0;
    }
    for (uint32_t i = 0; i < kNumInternal; ++i) {
        c.internalReference += kIRef[i] != 0;
        c.internalVector += kIVec[i] != 0;
    }
    return c;
}

}  // namespace pxr

namespace pxr {

void buildTables(bool vectorUnit, bool dspPresent, bool gpuPresent) {
    PXR_FUNC_MANAGER& m = gManager;
    if (!m.initialised) {
        for (uint32_t kind = 0; kind <= PIXORA_KIND_GPU; ++kind) uCTable(kind);
        if (vectorUnit)
            for (uint32_t kind = PIXORA_KIND_SIMDX; kind <= PIXORA_KIND_GPU; ++kind) uVTable(kind);
        m = PXR_FUNC_MANAGER{0,           pxrImplTable,         kNumFunctions, pxrFuncTable,
                             pxrInternalImplTable, kNumInternal, pxrInternalFuncTable, kNumKinds};
        if (pxrInitializeMasterFuncManager(&m))
            platform::log(platform::kError, platform::kLibTag, "pxrInitializeMasterFuncManager is failed");
        pxrTableHWInit(pxrFuncTable, pxrInternalFuncTable, dspPresent, gpuPresent);
        m.initialised = 1;
        return;
    }
    if (vectorUnit)
        uVTable(PIXORA_KIND_KDSP);
    else
        uCTable(PIXORA_KIND_KDSP);
    pxrTableHWInit(pxrFuncTable, pxrInternalFuncTable, dspPresent, gpuPresent);
}

void resetChoices() {
    uCHelper();
    for (uint32_t id = 0; id < kNumInternal; ++id)
        if (id != PXR_IROW_RegisterBuf) pxrInternalImplTable[id] = PIXORA_KIND_CPU;
    for (uint32_t id = 0; id < kNumFunctions; ++id)
        if (id != PXR_ROW_Reserved362 && id != PXR_ROW_Reserved363) pxrImplTable[id] = PIXORA_KIND_CPU;
}

}  // namespace pxr
